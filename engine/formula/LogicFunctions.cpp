#include <algorithm>
#include <vector>

#include "engine/formula/Arithmetic.h"
#include "engine/formula/Coercion.h"
#include "engine/formula/Evaluator.h"

namespace tolvane::engine {
namespace {

// A branch of a condition that is not there at all gives FALSE, one left empty 0.
Operand Branch(FunctionCall& call, std::size_t i, Mode mode) {
  if (i >= call.count()) return Value(false);
  Operand result = call.Evaluate(i, mode);
  return result.isOmitted() ? Operand(0.0) : result;
}

Operand BranchValues(FunctionCall& call, std::size_t i) {
  return call.evaluator.Resolve(call.frame, Branch(call, i, Mode::Array), Mode::Array);
}

Operand If(FunctionCall& call) {
  const std::size_t staleBefore = call.evaluator.stale().size();
  const Operand condition = call.evaluator.Resolve(call.frame, call.Evaluate(0), call.mode);
  // Which branch to take is not known before the condition has been worked out.
  if (call.evaluator.stale().size() != staleBefore) return ErrorCode::NA;
  if (!condition.isArray()) {
    const BooleanResult chosen = ToBoolean(call.evaluator.Single(call.frame, condition));
    if (chosen.error) return *chosen.error;
    return Branch(call, chosen.boolean ? 1 : 2, call.mode);
  }
  const Operand whenTrue = BranchValues(call, 1);
  const Operand whenFalse = BranchValues(call, 2);
  auto result =
      std::make_shared<ValueArray>(std::max({RowsOf(condition), RowsOf(whenTrue), RowsOf(whenFalse)}),
                                   std::max({ColumnsOf(condition), ColumnsOf(whenTrue), ColumnsOf(whenFalse)}));
  for (int row = 0; row < result->rows; ++row) {
    for (int column = 0; column < result->columns; ++column) {
      const BooleanResult chosen = ToBoolean(ElementOf(condition, row, column));
      result->At(row, column) =
          chosen.error ? Value(*chosen.error) : ElementOf(chosen.boolean ? whenTrue : whenFalse, row, column);
    }
  }
  return ArrayPtr(std::move(result));
}

// The first argument, with the second in place of the errors that `replaces` accepts.
template <class Replaces>
Operand ReplaceErrors(FunctionCall& call, Replaces replaces) {
  const std::size_t staleBefore = call.evaluator.stale().size();
  const Operand tried = call.evaluator.Resolve(call.frame, call.Evaluate(0), call.mode);
  if (call.evaluator.stale().size() != staleBefore) return ErrorCode::NA;
  if (!tried.isArray()) {
    Value value = call.evaluator.Single(call.frame, tried);
    if (!value.isError() || !replaces(value.error())) return value;
    return Branch(call, 1, call.mode);
  }
  const Operand otherwise = BranchValues(call, 1);
  return CombineArrays(tried, otherwise, [&](const Value& value, const Value& replacement) {
    return value.isError() && replaces(value.error()) ? replacement : value;
  });
}

Operand IfError(FunctionCall& call) {
  return ReplaceErrors(call, [](ErrorCode) { return true; });
}
Operand IfNA(FunctionCall& call) {
  return ReplaceErrors(call, [](ErrorCode error) { return error == ErrorCode::NA; });
}

// Values of a branch whose place in the array of results is not known before.
struct Candidates {
  std::vector<Operand> operands;
  int rows = 1;
  int columns = 1;
  void Add(Operand operand) {
    rows = std::max(rows, RowsOf(operand));
    columns = std::max(columns, ColumnsOf(operand));
    operands.push_back(std::move(operand));
  }
};

// Picks a value for each element: `pick` gives the number of the operand, or an error.
template <class Pick>
Operand PickElements(const Candidates& candidates, Pick pick) {
  auto result = std::make_shared<ValueArray>(candidates.rows, candidates.columns);
  for (int row = 0; row < result->rows; ++row) {
    for (int column = 0; column < result->columns; ++column) result->At(row, column) = pick(row, column);
  }
  return ArrayPtr(std::move(result));
}

Operand IfsOverArrays(FunctionCall& call) {
  Candidates all;
  for (std::size_t i = 0; i < call.count(); ++i) all.Add(BranchValues(call, i));
  return PickElements(all, [&](int row, int column) -> Value {
    for (std::size_t i = 0; i + 1 < all.operands.size(); i += 2) {
      const BooleanResult holds = ToBoolean(ElementOf(all.operands[i], row, column));
      if (holds.error) return *holds.error;
      if (holds.boolean) return ElementOf(all.operands[i + 1], row, column);
    }
    return ErrorCode::NA;
  });
}

Operand Ifs(FunctionCall& call) {
  if (call.count() % 2 != 0) return ErrorCode::NA;
  const std::size_t staleBefore = call.evaluator.stale().size();
  for (std::size_t i = 0; i + 1 < call.count(); i += 2) {
    const Operand condition = call.evaluator.Resolve(call.frame, call.Evaluate(i), call.mode);
    if (call.evaluator.stale().size() != staleBefore) return ErrorCode::NA;
    if (condition.isArray()) return IfsOverArrays(call);
    const BooleanResult holds = ToBoolean(call.evaluator.Single(call.frame, condition));
    if (holds.error) return *holds.error;
    if (holds.boolean) return Branch(call, i + 1, call.mode);
  }
  return ErrorCode::NA;
}

// Pairs of a value and a result, and perhaps a result for all others.
bool AreEqual(const Value& a, const Value& b) {
  return (a.kind() == b.kind() || a.isEmpty() || b.isEmpty()) && CompareValues(a, b) == 0;
}

Operand SwitchOverArrays(FunctionCall& call) {
  Candidates all;
  for (std::size_t i = 0; i < call.count(); ++i) all.Add(BranchValues(call, i));
  const bool hasDefault = call.count() % 2 == 0;
  return PickElements(all, [&](int row, int column) -> Value {
    const Value chosen = ElementOf(all.operands[0], row, column);
    if (chosen.isError()) return chosen;
    for (std::size_t i = 1; i + 1 < all.operands.size(); i += 2) {
      const Value value = ElementOf(all.operands[i], row, column);
      if (value.isError()) return value;
      if (AreEqual(chosen, value)) return ElementOf(all.operands[i + 1], row, column);
    }
    return hasDefault ? ElementOf(all.operands.back(), row, column) : Value(ErrorCode::NA);
  });
}

Operand Switch(FunctionCall& call) {
  const std::size_t staleBefore = call.evaluator.stale().size();
  const Operand expression = call.evaluator.Resolve(call.frame, call.Evaluate(0), call.mode);
  if (call.evaluator.stale().size() != staleBefore) return ErrorCode::NA;
  if (expression.isArray()) return SwitchOverArrays(call);
  const Value chosen = call.evaluator.Single(call.frame, expression);
  if (chosen.isError()) return chosen;
  for (std::size_t i = 1; i + 1 < call.count(); i += 2) {
    const Operand candidate = call.evaluator.Resolve(call.frame, call.Evaluate(i), call.mode);
    if (call.evaluator.stale().size() != staleBefore) return ErrorCode::NA;
    if (candidate.isArray()) return SwitchOverArrays(call);
    const Value value = call.evaluator.Single(call.frame, candidate);
    if (value.isError()) return value;
    if (AreEqual(chosen, value)) return Branch(call, i + 1, call.mode);
  }
  return call.count() % 2 == 0 ? Branch(call, call.count() - 1, call.mode) : Operand(ErrorCode::NA);
}

// How many of the arguments' conditions hold. In references and arrays texts and blanks do not count; without a single
// condition there is no answer.
struct Tally {
  std::int64_t held = 0;
  std::int64_t all = 0;
};

Tally TallyConditions(FunctionCall& call) {
  Tally tally;
  std::optional<ErrorCode> error;
  const auto element = [&](const Value& value) {
    if (value.isError() && !error) error = value.error();
    if (!value.isNumber() && !value.isBoolean()) return;
    ++tally.all;
    tally.held += ToBoolean(value).boolean ? 1 : 0;
  };
  for (std::size_t i = 0; i < call.count(); ++i) {
    const Operand& argument = call.Argument(i);
    if (argument.isReference()) {
      for (std::size_t area = 0; area < argument.areas().size(); ++area) {
        call.evaluator.ForEachContent(argument.areas()[area], [&](CellPos, const Value& value) { element(value); });
      }
    } else if (argument.isArray()) {
      for (const Value& value : argument.array().values) element(value);
    } else {
      const BooleanResult result = ToBoolean(argument.isValue() ? argument.value() : Value());
      if (result.error && !error) error = result.error;
      ++tally.all;
      tally.held += result.boolean ? 1 : 0;
    }
  }
  if (error) throw FunctionError{*error};
  if (tally.all == 0) throw FunctionError{ErrorCode::Value};
  return tally;
}

Operand And(FunctionCall& call) {
  const Tally tally = TallyConditions(call);
  return Value(tally.held == tally.all);
}
Operand Or(FunctionCall& call) {
  return Value(TallyConditions(call).held > 0);
}
Operand Xor(FunctionCall& call) {
  return Value(TallyConditions(call).held % 2 == 1);
}
Operand Not(FunctionCall& call) {
  return Value(!call.Boolean(0));
}
Operand True(FunctionCall&) {
  return Value(true);
}
Operand False(FunctionCall&) {
  return Value(false);
}

constexpr Function kFunctions[] = {
    {"AND", 1, kMostArguments, "R", And},
    {"FALSE", 0, 0, "V", False},
    {"IF", 1, 3, "L", If},
    {"IFERROR", 2, 2, "L", IfError},
    {"IFNA", 2, 2, "L", IfNA},
    {"IFS", 2, kMostArguments, "L", Ifs},
    {"NOT", 1, 1, "V", Not},
    {"OR", 1, kMostArguments, "R", Or},
    {"SWITCH", 3, kMostArguments, "L", Switch},
    {"TRUE", 0, 0, "V", True},
    {"XOR", 1, kMostArguments, "R", Xor},
};

}  // namespace

std::span<const Function> LogicFunctions() {
  return kFunctions;
}

}  // namespace tolvane::engine
