#include <cmath>
#include <numeric>

#include "engine/formula/Aggregates.h"

// Rounding to multiples, and whole numbers that divide and multiply.

namespace tolvane::engine {
namespace {

// How often `step` goes into `number`; within the noise of the division a whole number is one.
double Quotient(double number, double step) {
  const double quotient = number / step;
  const double nearest = std::round(quotient);
  return std::fabs(quotient - nearest) <= 4e-16 * std::fabs(quotient) ? nearest : quotient;
}

Operand Ceiling(FunctionCall& call) {
  const double number = call.Number(0);
  const double step = call.Number(1);
  if (number == 0 || step == 0) return 0.0;
  if (number > 0 && step < 0) return ErrorCode::Num;
  return FiniteOr(std::ceil(Quotient(number, step)) * step);
}

Operand Floor(FunctionCall& call) {
  const double number = call.Number(0);
  const double step = call.Number(1);
  if (number == 0) return 0.0;
  if (step == 0) return ErrorCode::Div0;
  if (number > 0 && step < 0) return ErrorCode::Num;
  return FiniteOr(std::floor(Quotient(number, step)) * step);
}

double StepAt(FunctionCall& call, std::size_t i) {
  return call.Has(i) ? std::fabs(call.Number(i)) : 1;
}

// Of negative numbers towards zero, unless a mode is given.
Operand CeilingMath(FunctionCall& call) {
  const double number = call.Number(0);
  const double step = StepAt(call, 1);
  const bool away = call.Number(2, 0) != 0 && number < 0;
  if (number == 0 || step == 0) return 0.0;
  const double quotient = Quotient(number, step);
  return FiniteOr((away ? std::floor(quotient) : std::ceil(quotient)) * step);
}

Operand FloorMath(FunctionCall& call) {
  const double number = call.Number(0);
  const double step = StepAt(call, 1);
  const bool towards = call.Number(2, 0) != 0 && number < 0;
  if (number == 0 || step == 0) return 0.0;
  const double quotient = Quotient(number, step);
  return FiniteOr((towards ? std::ceil(quotient) : std::floor(quotient)) * step);
}

Operand MRound(FunctionCall& call) {
  const double number = call.Number(0);
  const double step = call.Number(1);
  if (number == 0 || step == 0) return 0.0;
  if ((number < 0) != (step < 0)) return ErrorCode::Num;
  return FiniteOr(std::round(Quotient(number, step)) * step);
}

// Away from zero.
Operand Even(FunctionCall& call) {
  const double number = call.Number(0);
  return std::copysign(std::ceil(std::fabs(number) / 2) * 2, number) + 0.0;
}
Operand Odd(FunctionCall& call) {
  const double number = call.Number(0);
  const double magnitude = std::ceil((std::fabs(number) - 1) / 2) * 2 + 1;
  return std::copysign(std::max(magnitude, 1.0), number);
}

Operand WholeQuotient(FunctionCall& call) {
  const double number = call.Number(0);
  const double divisor = call.Number(1);
  if (divisor == 0) return ErrorCode::Div0;
  return FiniteOr(std::trunc(number / divisor));
}

double Factorial(double number) {
  double product = 1;
  for (double factor = 2; factor <= number; ++factor) product *= factor;
  return product;
}

Operand Fact(FunctionCall& call) {
  constexpr double kLargest = 170;
  const double number = std::trunc(call.Number(0));
  if (number < 0 || number > kLargest) return ErrorCode::Num;
  return Factorial(number);
}

Operand Combin(FunctionCall& call) {
  const double all = std::trunc(call.Number(0));
  const double chosen = std::trunc(call.Number(1));
  if (all < 0 || chosen < 0 || chosen > all) return ErrorCode::Num;
  constexpr double kMostFactors = 1e6;  // of these the result has long left the range of numbers
  const double factors = std::min(chosen, all - chosen);
  if (factors > kMostFactors) return ErrorCode::Num;
  double result = 1;
  for (double i = 1; i <= factors && std::isfinite(result); ++i) result = result * (all - factors + i) / i;
  return FiniteOr(std::round(result));
}

// The whole numbers among the arguments.
template <class Combine>
Operand CombineWhole(FunctionCall& call, std::int64_t start, Combine combine) {
  constexpr double kEnd = 9007199254740992.0;  // 2^53: beyond, whole numbers have gaps
  double result = static_cast<double>(start);
  ForEachNumber(call, 0, [&](double number) {
    number = std::trunc(number);
    if (number < 0 || number >= kEnd) throw FunctionError{ErrorCode::Num};
    result = combine(result, number);
    if (result >= kEnd) throw FunctionError{ErrorCode::Num};
  });
  return result;
}

double GreatestDivisor(double a, double b) {
  return static_cast<double>(std::gcd(static_cast<std::int64_t>(a), static_cast<std::int64_t>(b)));
}

Operand Gcd(FunctionCall& call) {
  return CombineWhole(call, 0, GreatestDivisor);
}
Operand Lcm(FunctionCall& call) {
  return CombineWhole(call, 1, [](double a, double b) { return a == 0 || b == 0 ? 0 : a / GreatestDivisor(a, b) * b; });
}

constexpr Function kFunctions[] = {
    {"CEILING", 2, 2, "V", Ceiling},
    {"CEILING.MATH", 1, 3, "V", CeilingMath},
    {"COMBIN", 2, 2, "V", Combin},
    {"EVEN", 1, 1, "V", Even},
    {"FACT", 1, 1, "V", Fact},
    {"FLOOR", 2, 2, "V", Floor},
    {"FLOOR.MATH", 1, 3, "V", FloorMath},
    {"GCD", 1, kMostArguments, "R", Gcd},
    {"LCM", 1, kMostArguments, "R", Lcm},
    {"MROUND", 2, 2, "V", MRound},
    {"ODD", 1, 1, "V", Odd},
    {"QUOTIENT", 2, 2, "V", WholeQuotient},
};

}  // namespace

std::span<const Function> MultipleFunctions() {
  return kFunctions;
}

}  // namespace tolvane::engine
