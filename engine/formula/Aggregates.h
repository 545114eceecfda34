#pragma once

#include "engine/formula/Coercion.h"
#include "engine/formula/Evaluator.h"

namespace tolvane::engine {

// Calls `visit` for each number among the arguments from `first` to before `end`. In references and arrays only numbers
// count and an error is thrown; a value given directly must be a number or read as one.
template <class Visit>
void ForEachNumber(FunctionCall& call, std::size_t first, std::size_t end, Visit&& visit) {
  const auto element = [&](const Value& value) {
    if (value.isNumber()) {
      visit(value.number());
    } else if (value.isError()) {
      throw FunctionError{value.error()};
    }
  };
  for (std::size_t i = first; i < end; ++i) {
    const Operand& argument = call.Argument(i);
    if (argument.isReference()) {
      // What is stale may be an error that is about to go; nothing is decided before it has been worked out.
      std::optional<ErrorCode> error;
      const AreaList& areas = argument.areas();
      for (std::size_t area = 0; area < areas.size(); ++area) {
        call.evaluator.ForEachContent(areas[area], [&](CellPos, const Value& value) {
          if (value.isNumber()) {
            visit(value.number());
          } else if (value.isError() && !error) {
            error = value.error();
          }
        });
      }
      if (error) throw FunctionError{*error};
    } else if (argument.isArray()) {
      for (const Value& value : argument.array().values) element(value);
    } else if (argument.isValue()) {
      const NumberResult result = ToNumber(argument.value());
      if (result.error) throw FunctionError{*result.error};
      visit(result.number);
    } else {
      visit(0.0);
    }
  }
}

template <class Visit>
void ForEachNumber(FunctionCall& call, std::size_t first, Visit&& visit) {
  ForEachNumber(call, first, call.count(), std::forward<Visit>(visit));
}

// What the aggregating functions make of numbers, gathered in one walk.
class Summary {
 public:
  void Add(double number) {
    ++count_;
    sum_ += number;
    product_ *= number;
    if (count_ == 1 || number < least_) least_ = number;
    if (count_ == 1 || number > greatest_) greatest_ = number;
    const double delta = number - mean_;
    mean_ += delta / static_cast<double>(count_);
    squares_ += delta * (number - mean_);
  }
  std::int64_t count() const { return count_; }
  Value Sum() const { return FiniteOr(sum_); }
  Value Product() const { return count_ == 0 ? Value(0.0) : FiniteOr(product_); }
  Value Average() const { return count_ == 0 ? Value(ErrorCode::Div0) : FiniteOr(sum_ / static_cast<double>(count_)); }
  Value Least() const { return least_; }
  Value Greatest() const { return greatest_; }
  // Of a sample one less is divided by; `squareRoot` makes a deviation of the variance.
  Value Variance(bool ofSample, bool squareRoot) const;

 private:
  std::int64_t count_ = 0;
  double sum_ = 0;
  double product_ = 1;
  double least_ = 0;
  double greatest_ = 0;
  double mean_ = 0;
  double squares_ = 0;  // of the distances from the mean
};

}  // namespace tolvane::engine
