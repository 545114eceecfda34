#include <cmath>

#include "engine/formula/Coercion.h"
#include "engine/formula/Evaluator.h"

namespace tolvane::engine {
namespace {

constexpr double kPi = 3.14159265358979323846;

// Angles beyond have too few digits left behind the point.
double AngleAt(FunctionCall& call) {
  constexpr double kLargestAngle = 134217728;  // 2^27
  const double angle = call.Number(0);
  if (std::fabs(angle) >= kLargestAngle) throw FunctionError{ErrorCode::Num};
  return angle;
}

template <double (*Of)(double)>
Operand OfAngle(FunctionCall& call) {
  return FiniteOr(Of(AngleAt(call)));
}

// Outside of its domain a function gives no number, which is #NUM!.
template <double (*Of)(double)>
Operand OfNumber(FunctionCall& call) {
  return FiniteOr(Of(call.Number(0)));
}

// 1 / f, which has poles.
template <double (*Of)(double)>
Operand Reciprocal(FunctionCall& call) {
  const double divisor = Of(AngleAt(call));
  return divisor == 0 ? Operand(ErrorCode::Div0) : Operand(FiniteOr(1 / divisor));
}

Operand ArcTangentOf(FunctionCall& call) {
  const double x = call.Number(0);
  const double y = call.Number(1);
  return x == 0 && y == 0 ? Operand(ErrorCode::Div0) : Operand(std::atan2(y, x));
}

Operand ArcCotangent(FunctionCall& call) {
  return kPi / 2 - std::atan(call.Number(0));
}

Operand Degrees(FunctionCall& call) {
  return FiniteOr(call.Number(0) / kPi * 180);
}
Operand Radians(FunctionCall& call) {
  return call.Number(0) / 180 * kPi;
}

constexpr Function kFunctions[] = {
    {"ACOS", 1, 1, "V", OfNumber<std::acos>},
    {"ACOSH", 1, 1, "V", OfNumber<std::acosh>},
    {"ACOT", 1, 1, "V", ArcCotangent},
    {"ASIN", 1, 1, "V", OfNumber<std::asin>},
    {"ASINH", 1, 1, "V", OfNumber<std::asinh>},
    {"ATAN", 1, 1, "V", OfNumber<std::atan>},
    {"ATAN2", 2, 2, "V", ArcTangentOf},
    {"ATANH", 1, 1, "V", OfNumber<std::atanh>},
    {"COS", 1, 1, "V", OfAngle<std::cos>},
    {"COSH", 1, 1, "V", OfNumber<std::cosh>},
    {"COT", 1, 1, "V", Reciprocal<std::tan>},
    {"CSC", 1, 1, "V", Reciprocal<std::sin>},
    {"DEGREES", 1, 1, "V", Degrees},
    {"RADIANS", 1, 1, "V", Radians},
    {"SEC", 1, 1, "V", Reciprocal<std::cos>},
    {"SIN", 1, 1, "V", OfAngle<std::sin>},
    {"SINH", 1, 1, "V", OfNumber<std::sinh>},
    {"TAN", 1, 1, "V", OfAngle<std::tan>},
    {"TANH", 1, 1, "V", OfNumber<std::tanh>},
};

}  // namespace

std::span<const Function> TrigonometricFunctions() {
  return kFunctions;
}

}  // namespace tolvane::engine
