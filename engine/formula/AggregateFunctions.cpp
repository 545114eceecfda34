#include <cmath>

#include "engine/formula/Aggregates.h"
#include "engine/formula/Arithmetic.h"

namespace tolvane::engine {

Value Summary::Variance(bool ofSample, bool squareRoot) const {
  const std::int64_t divisor = ofSample ? count_ - 1 : count_;
  if (divisor <= 0) return ErrorCode::Div0;
  const double variance = squares_ / static_cast<double>(divisor);
  return FiniteOr(squareRoot ? std::sqrt(variance) : variance);
}

namespace {

Operand Sum(FunctionCall& call) {
  if (call.count() == 1 && call.Argument(0).isReference() && call.Argument(0).areas().size() == 1) {
    if (const auto sum = call.evaluator.GrowingSum(call.Argument(0).areas()[0])) return FiniteOr(*sum);
  }
  double sum = 0;
  ForEachNumber(call, 0, [&](double number) { sum += number; });
  return FiniteOr(sum);
}

Operand Product(FunctionCall& call) {
  double product = 1;
  bool any = false;
  ForEachNumber(call, 0, [&](double number) {
    product *= number;
    any = true;
  });
  return any ? FiniteOr(product) : Value(0.0);
}

Operand SumOfSquares(FunctionCall& call) {
  double sum = 0;
  ForEachNumber(call, 0, [&](double number) { sum += number * number; });
  return FiniteOr(sum);
}

Summary Summarize(FunctionCall& call) {
  Summary summary;
  ForEachNumber(call, 0, [&](double number) { summary.Add(number); });
  return summary;
}

Operand Average(FunctionCall& call) {
  return Summarize(call).Average();
}
Operand Max(FunctionCall& call) {
  return Summarize(call).Greatest();
}
Operand Min(FunctionCall& call) {
  return Summarize(call).Least();
}
Operand StDev(FunctionCall& call) {
  return Summarize(call).Variance(true, true);
}
Operand StDevP(FunctionCall& call) {
  return Summarize(call).Variance(false, true);
}
Operand Var(FunctionCall& call) {
  return Summarize(call).Variance(true, false);
}
Operand VarP(FunctionCall& call) {
  return Summarize(call).Variance(false, false);
}

// Counts what `counts` accepts among the contents of references and arrays, and `countsDirectly` among given values.
template <class Accept, class AcceptDirectly>
double CountWhere(FunctionCall& call, Accept counts, AcceptDirectly countsDirectly) {
  std::int64_t count = 0;
  for (std::size_t i = 0; i < call.count(); ++i) {
    const Operand& argument = call.Argument(i);
    if (argument.isReference()) {
      const AreaList& areas = argument.areas();
      for (std::size_t area = 0; area < areas.size(); ++area) {
        call.evaluator.ForEachContent(areas[area],
                                      [&](CellPos, const Value& value) { count += counts(value) ? 1 : 0; });
      }
    } else if (argument.isArray()) {
      for (const Value& value : argument.array().values) count += counts(value) ? 1 : 0;
    } else {
      count += argument.isOmitted() || countsDirectly(argument.value()) ? 1 : 0;
    }
  }
  return static_cast<double>(count);
}

Operand Count(FunctionCall& call) {
  return CountWhere(
      call, [](const Value& value) { return value.isNumber(); },
      [](const Value& value) { return !value.isError() && !ToNumber(value).error; });
}

Operand CountA(FunctionCall& call) {
  return CountWhere(
      call, [](const Value& value) { return !value.isEmpty(); }, [](const Value&) { return true; });
}

// Texts without characters, which formulas give, count as blank.
Operand CountBlank(FunctionCall& call) {
  const Area& area = call.AreaAt(0);
  std::int64_t filled = 0;
  call.evaluator.ForEachContent(area, [&](CellPos, const Value& value) {
    filled += value.isEmpty() || (value.isText() && value.text().empty()) ? 0 : 1;
  });
  return static_cast<double>(area.rect.cells() - filled);
}

// Multiplies the arrays element by element; what is no number counts as 0.
Operand SumProduct(FunctionCall& call) {
  std::vector<ArrayPtr> arrays;
  for (std::size_t i = 0; i < call.count(); ++i) {
    const Operand& argument = call.Argument(i);
    if (argument.isValue() && argument.value().isError()) return argument.value();
    ArrayPtr array = call.evaluator.ToArray(argument);
    if (array == nullptr) return ErrorCode::Value;
    if (!arrays.empty() && (array->rows != arrays[0]->rows || array->columns != arrays[0]->columns)) {
      return ErrorCode::Value;
    }
    arrays.push_back(std::move(array));
  }
  double sum = 0;
  for (std::size_t element = 0; element < arrays[0]->values.size(); ++element) {
    double product = 1;
    for (const ArrayPtr& array : arrays) {
      const Value& value = array->values[element];
      if (value.isError()) return value;
      product *= value.isNumber() ? value.number() : 0;
    }
    sum += product;
  }
  return FiniteOr(sum);
}

constexpr Function kFunctions[] = {
    {"AVERAGE", 1, kMostArguments, "R", Average},
    {"COUNT", 1, kMostArguments, "R", Count},
    {"COUNTA", 1, kMostArguments, "R", CountA},
    {"COUNTBLANK", 1, 1, "R", CountBlank},
    {"MAX", 1, kMostArguments, "R", Max},
    {"MIN", 1, kMostArguments, "R", Min},
    {"PRODUCT", 1, kMostArguments, "R", Product},
    {"STDEV", 1, kMostArguments, "R", StDev},
    {"STDEV.P", 1, kMostArguments, "R", StDevP},
    {"STDEV.S", 1, kMostArguments, "R", StDev},
    {"STDEVP", 1, kMostArguments, "R", StDevP},
    {"SUM", 1, kMostArguments, "R", Sum},
    {"SUMPRODUCT", 1, kMostArguments, "A", SumProduct},
    {"SUMSQ", 1, kMostArguments, "R", SumOfSquares},
    {"VAR", 1, kMostArguments, "R", Var},
    {"VAR.P", 1, kMostArguments, "R", VarP},
    {"VAR.S", 1, kMostArguments, "R", Var},
    {"VARP", 1, kMostArguments, "R", VarP},
};

}  // namespace

std::span<const Function> AggregateFunctions() {
  return kFunctions;
}

}  // namespace tolvane::engine
