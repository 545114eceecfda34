#include <cmath>

#include "engine/formula/Coercion.h"
#include "engine/formula/Evaluator.h"
#include "engine/formula/Rounding.h"

namespace tolvane::engine {
namespace {

Operand Round(FunctionCall& call) {
  return CutTo(call.Number(0), call.Whole(1), Cut::HalfAwayFromZero);
}
Operand RoundUp(FunctionCall& call) {
  return CutTo(call.Number(0), call.Whole(1), Cut::AwayFromZero);
}
Operand RoundDown(FunctionCall& call) {
  return CutTo(call.Number(0), call.Whole(1), Cut::TowardsZero);
}
Operand Trunc(FunctionCall& call) {
  return CutTo(call.Number(0), call.Whole(1, 0), Cut::TowardsZero);
}
Operand Int(FunctionCall& call) {
  return std::floor(call.Number(0));
}
Operand Abs(FunctionCall& call) {
  return std::fabs(call.Number(0));
}

Operand Sign(FunctionCall& call) {
  const double number = call.Number(0);
  return number > 0 ? 1.0 : number < 0 ? -1.0 : 0.0;
}

// The result has the sign of the divisor.
Operand Mod(FunctionCall& call) {
  const double number = call.Number(0);
  const double divisor = call.Number(1);
  if (divisor == 0) return ErrorCode::Div0;
  double rest = std::fmod(number, divisor);
  if (rest != 0 && (rest < 0) != (divisor < 0)) rest += divisor;
  return rest;
}

Operand Sqrt(FunctionCall& call) {
  const double number = call.Number(0);
  return number < 0 ? Operand(ErrorCode::Num) : Operand(std::sqrt(number));
}

Operand Power(FunctionCall& call) {
  const double base = call.Number(0);
  const double exponent = call.Number(1);
  if (base == 0 && exponent == 0) return ErrorCode::Num;
  if (base == 0 && exponent < 0) return ErrorCode::Div0;
  return FiniteOr(std::pow(base, exponent));
}

Operand Exp(FunctionCall& call) {
  return FiniteOr(std::exp(call.Number(0)));
}
Operand Pi(FunctionCall&) {
  return 3.14159265358979323846;
}

Operand Ln(FunctionCall& call) {
  const double number = call.Number(0);
  return number <= 0 ? Operand(ErrorCode::Num) : Operand(std::log(number));
}

Operand Log10(FunctionCall& call) {
  const double number = call.Number(0);
  return number <= 0 ? Operand(ErrorCode::Num) : Operand(std::log10(number));
}

Operand Log(FunctionCall& call) {
  const double number = call.Number(0);
  const double base = call.Number(1, 10);
  if (number <= 0 || base <= 0) return ErrorCode::Num;
  if (base == 1) return ErrorCode::Div0;
  return base == 10 ? std::log10(number) : std::log(number) / std::log(base);
}

Operand Rand(FunctionCall& call) {
  return call.evaluator.Random();
}

Operand RandBetween(FunctionCall& call) {
  const double least = std::ceil(call.Number(0));
  const double greatest = std::floor(call.Number(1));
  if (least > greatest) return ErrorCode::Num;
  return least + std::floor(call.evaluator.Random() * (greatest - least + 1));
}

constexpr Function kFunctions[] = {
    {"ABS", 1, 1, "V", Abs},
    {"EXP", 1, 1, "V", Exp},
    {"INT", 1, 1, "V", Int},
    {"LN", 1, 1, "V", Ln},
    {"LOG", 1, 2, "V", Log},
    {"LOG10", 1, 1, "V", Log10},
    {"MOD", 2, 2, "V", Mod},
    {"PI", 0, 0, "V", Pi},
    {"POWER", 2, 2, "V", Power},
    {"RAND", 0, 0, "V", Rand, true},
    {"RANDBETWEEN", 2, 2, "V", RandBetween, true},
    {"ROUND", 2, 2, "V", Round},
    {"ROUNDDOWN", 2, 2, "V", RoundDown},
    {"ROUNDUP", 2, 2, "V", RoundUp},
    {"SIGN", 1, 1, "V", Sign},
    {"SQRT", 1, 1, "V", Sqrt},
    {"TRUNC", 1, 2, "V", Trunc},
};

}  // namespace

std::span<const Function> MathFunctions() {
  return kFunctions;
}

}  // namespace tolvane::engine
