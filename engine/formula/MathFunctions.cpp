#include <cmath>

#include "engine/formula/Coercion.h"
#include "engine/formula/Evaluator.h"

namespace tolvane::engine {
namespace {

constexpr int kMostDigits = 300;  // beyond which a power of ten leaves the range of numbers

// How a number is cut to a number of decimals.
enum class Cut : std::uint8_t { HalfAwayFromZero, AwayFromZero, TowardsZero };

// Works on the decimal digits that people see: 2.675 is just below the half in binary, but rounds to 2.68.
double CutTo(double number, std::int64_t digits, Cut cut) {
  if (number == 0 || digits > kMostDigits) return number;
  if (digits < -kMostDigits) return 0;
  const double power = std::pow(10.0, static_cast<double>(digits < 0 ? -digits : digits));
  const double magnitude = std::fabs(number);
  const double scaled = digits < 0 ? magnitude / power : magnitude * power;
  if (!std::isfinite(scaled)) return number;
  constexpr double kWholeFrom = 4503599627370496.0;  // 2^52: no fraction left
  if (scaled >= kWholeFrom) return number;

  // Within the noise of the scaling, the scaled number is what its 15 digits say.
  const double noise = scaled * 4e-16;
  double whole = std::floor(scaled);
  switch (cut) {
    case Cut::HalfAwayFromZero:
      whole = std::floor(scaled + 0.5 + noise);
      break;
    case Cut::AwayFromZero:
      if (scaled - whole > noise) whole += 1;
      break;
    case Cut::TowardsZero:
      if (whole + 1 - scaled <= noise) whole += 1;
      break;
  }
  return std::copysign(digits < 0 ? whole * power : whole / power, number);
}

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
