#include <algorithm>

#include "engine/formula/Aggregates.h"
#include "engine/formula/OrderStatistics.h"

namespace tolvane::engine {
namespace {

// What a subtotal leaves out besides other subtotals.
struct LeftOut {
  bool filteredRows = true;
  bool hiddenRows = false;
  bool errors = false;
  bool subtotals = true;
};

// The rows that are left out, in order.
std::vector<Run> SkippedRows(const Sheet& sheet, const LeftOut& leftOut) {
  std::vector<Run> skipped;
  for (const BandTable::Stretch& stretch : sheet.rows.stretches()) {
    if ((leftOut.filteredRows && stretch.band.filtered) || (leftOut.hiddenRows && stretch.band.hidden)) {
      skipped.push_back({stretch.first, stretch.last - stretch.first + 1});
    }
  }
  return skipped;
}

bool Contains(const std::vector<Run>& runs, int row) {
  const auto next =
      std::upper_bound(runs.begin(), runs.end(), row, [](int index, const Run& run) { return index < run.first; });
  return next != runs.begin() && std::prev(next)->last() >= row;
}

}  // namespace

bool HoldsSubtotal(const Expression& expression) {
  return std::any_of(expression.nodes.begin(), expression.nodes.end(), [&](const Node& node) {
    if (node.kind != Node::Kind::Function) return false;
    const std::string& name = expression.names[node.index].name;
    return name == "SUBTOTAL" || name == "AGGREGATE";
  });
}

namespace {

// The contents of an area that count.
template <class Visit>
void ForEachCounted(FunctionCall& call, const Area& area, const LeftOut& leftOut, Visit&& visit) {
  const std::vector<Run> skipped = SkippedRows(*area.sheet, leftOut);
  // Neighbouring formulas are mostly one and the same.
  const Expression* lastExpression = nullptr;
  bool lastHoldsSubtotal = false;
  call.evaluator.ForEachCell(area, [&](CellPos at, const Value& value, const FormulaCell* formula) {
    if (value.isEmpty() || (!skipped.empty() && Contains(skipped, at.row))) return;
    if (leftOut.errors && value.isError()) return;
    if (leftOut.subtotals && formula != nullptr && formula->expression != nullptr) {
      if (formula->expression.get() != lastExpression) {
        lastExpression = formula->expression.get();
        lastHoldsSubtotal = HoldsSubtotal(*lastExpression);
      }
      if (lastHoldsSubtotal) return;
    }
    visit(value);
  });
}

// The numbers among the contents, how many contents there are, and the first error.
struct Gathered {
  Summary summary;
  std::int64_t filled = 0;
  std::optional<ErrorCode> error;
};

Gathered Gather(FunctionCall& call, std::size_t first, const LeftOut& leftOut) {
  Gathered gathered;
  for (std::size_t i = first; i < call.count(); ++i) {
    const Operand& argument = call.Argument(i);
    if (argument.isValue() && argument.value().isError()) throw FunctionError{argument.value().error()};
    if (!argument.isReference()) throw FunctionError{ErrorCode::Value};
    for (std::size_t part = 0; part < argument.areas().size(); ++part) {
      ForEachCounted(call, argument.areas()[part], leftOut, [&](const Value& value) {
        ++gathered.filled;
        if (value.isNumber()) {
          gathered.summary.Add(value.number());
        } else if (value.isError() && !gathered.error) {
          gathered.error = value.error();
        }
      });
    }
  }
  return gathered;
}

// The functions 1 to 11, which SUBTOTAL and AGGREGATE have in common.
Operand Summarized(const Gathered& gathered, std::int64_t which) {
  constexpr std::int64_t kCount = 2;
  constexpr std::int64_t kCountA = 3;
  const Summary& summary = gathered.summary;
  if (gathered.error && which != kCount && which != kCountA) return *gathered.error;
  switch (which) {
    case 1:
      return summary.Average();
    case kCount:
      return static_cast<double>(summary.count());
    case kCountA:
      return static_cast<double>(gathered.filled);
    case 4:
      return summary.Greatest();
    case 5:
      return summary.Least();
    case 6:
      return summary.Product();
    case 7:
      return summary.Variance(true, true);
    case 8:
      return summary.Variance(false, true);
    case 9:
      return summary.Sum();
    case 10:
      return summary.Variance(true, false);
    default:
      return summary.Variance(false, false);
  }
}

Operand Subtotal(FunctionCall& call) {
  constexpr std::int64_t kWithoutHidden = 100;  // added to the number of a function: leave out rows hidden by hand too
  std::int64_t which = call.Whole(0);
  LeftOut leftOut;
  leftOut.hiddenRows = which > kWithoutHidden;
  if (leftOut.hiddenRows) which -= kWithoutHidden;
  if (which < 1 || which > 11) return ErrorCode::Value;
  return Summarized(Gather(call, 1, leftOut), which);
}

std::vector<double> NumbersOf(FunctionCall& call, std::size_t first, std::size_t end, const LeftOut& leftOut) {
  std::vector<double> numbers;
  std::optional<ErrorCode> error;
  const auto add = [&](const Value& value) {
    if (value.isNumber()) numbers.push_back(value.number());
    if (value.isError() && !leftOut.errors && !error) error = value.error();
  };
  for (std::size_t i = first; i < end; ++i) {
    const Operand& argument = call.Argument(i);
    if (argument.isReference()) {
      for (std::size_t part = 0; part < argument.areas().size(); ++part) {
        ForEachCounted(call, argument.areas()[part], leftOut, add);
      }
    } else if (argument.isArray()) {
      for (const Value& value : argument.array().values) add(value);
    } else if (argument.isValue()) {
      if (argument.value().isError() && !leftOut.errors) throw FunctionError{argument.value().error()};
      add(argument.value());
    }
  }
  if (error) throw FunctionError{*error};
  return numbers;
}

// 12 MEDIAN and 13 MODE.SNGL of references; the others of a reference or array and a number behind it.
Operand Aggregate(FunctionCall& call) {
  const std::int64_t which = call.Whole(0);
  const std::int64_t options = call.Has(1) ? call.Whole(1) : 0;
  if (which < 1 || which > 19 || options < 0 || options > 7) return ErrorCode::Value;
  LeftOut leftOut;
  leftOut.hiddenRows = leftOut.filteredRows = options % 2 == 1;
  leftOut.errors = options % 4 >= 2;
  leftOut.subtotals = options < 4;
  if (which <= 11) return Summarized(Gather(call, 2, leftOut), which);
  constexpr std::int64_t kMedian = 12;
  constexpr std::int64_t kMode = 13;
  if (which == kMedian || which == kMode) {
    for (std::size_t i = 2; i < call.count(); ++i) {
      if (call.Argument(i).isArray()) return ErrorCode::Value;
    }
    std::vector<double> numbers = NumbersOf(call, 2, call.count(), leftOut);
    return which == kMedian ? MedianOf(numbers) : ModeOf(numbers);
  }
  if (call.count() != 4) return ErrorCode::Value;
  const NumberResult k = ToNumber(call.evaluator.Single(call.frame, call.Argument(3)));
  if (k.error) return *k.error;
  std::vector<double> numbers = NumbersOf(call, 2, 3, leftOut);
  switch (which) {
    case 14:
      return LargestOf(numbers, k.number);
    case 15:
      return SmallestOf(numbers, k.number);
    case 16:
      return PercentileOf(numbers, k.number, false);
    case 17:
      return QuartileOf(numbers, k.number, false);
    case 18:
      return PercentileOf(numbers, k.number, true);
    default:
      return QuartileOf(numbers, k.number, true);
  }
}

constexpr Function kFunctions[] = {
    {"AGGREGATE", 3, kMostArguments, "VVA", Aggregate},
    {"SUBTOTAL", 2, kMostArguments, "VR", Subtotal},
};

}  // namespace

std::span<const Function> SubtotalFunctions() {
  return kFunctions;
}

}  // namespace tolvane::engine
