#include "engine/formula/Coercion.h"

#include <cmath>

#include "engine/formula/NumberText.h"
#include "platform/Text.h"

namespace tolvane::engine {
namespace {

int Order(double a, double b) {
  return a < b ? -1 : a > b ? 1 : 0;
}

// Two numbers that show the same 15 digits are equal.
int OrderAsSeen(double a, double b) {
  constexpr double kClose = 1e-14;
  if (a == b) return 0;
  if (std::fabs(a - b) <= kClose * std::fabs(a) && NumberAsText(a) == NumberAsText(b)) return 0;
  return Order(a, b);
}

int RankOf(const Value& value) {
  switch (value.kind()) {
    case Value::Kind::Empty:
      return 0;
    case Value::Kind::Number:
      return 1;
    case Value::Kind::Text:
      return 2;
    case Value::Kind::Boolean:
      return 3;
    case Value::Kind::Error:
      return 4;
  }
  return 4;
}

template <class OrderNumbers>
int CompareSameKind(const Value& a, const Value& b, OrderNumbers orderNumbers) {
  switch (a.kind()) {
    case Value::Kind::Number:
      return orderNumbers(a.number(), b.number());
    case Value::Kind::Text:
      return platform::CompareIgnoringCase(a.text().view(), b.text().view());
    case Value::Kind::Boolean:
      return static_cast<int>(a.boolean()) - static_cast<int>(b.boolean());
    case Value::Kind::Empty:
    case Value::Kind::Error:
      return 0;
  }
  return 0;
}

// What nothing stands for beside a value of another kind.
Value EmptyBeside(const Value& other) {
  switch (other.kind()) {
    case Value::Kind::Text:
      return Value(Text());
    case Value::Kind::Boolean:
      return Value(false);
    default:
      return Value(0.0);
  }
}

}  // namespace

NumberResult ToNumber(const Value& value) {
  switch (value.kind()) {
    case Value::Kind::Empty:
      return {0, {}};
    case Value::Kind::Boolean:
      return {value.boolean() ? 1.0 : 0.0, {}};
    case Value::Kind::Number:
      return {value.number(), {}};
    case Value::Kind::Error:
      return {0, value.error()};
    case Value::Kind::Text:
      break;
  }
  if (const std::optional<double> number = NumberFromText(value.text().view())) return {*number, {}};
  return {0, ErrorCode::Value};
}

BooleanResult ToBoolean(const Value& value) {
  switch (value.kind()) {
    case Value::Kind::Empty:
      return {false, {}};
    case Value::Kind::Boolean:
      return {value.boolean(), {}};
    case Value::Kind::Number:
      return {value.number() != 0, {}};
    case Value::Kind::Error:
      return {false, value.error()};
    case Value::Kind::Text:
      break;
  }
  if (platform::EqualIgnoringCase(value.text().view(), "TRUE")) return {true, {}};
  if (platform::EqualIgnoringCase(value.text().view(), "FALSE")) return {false, {}};
  return {false, ErrorCode::Value};
}

std::string ToText(const Value& value) {
  switch (value.kind()) {
    case Value::Kind::Empty:
      return {};
    case Value::Kind::Boolean:
      return value.boolean() ? "TRUE" : "FALSE";
    case Value::Kind::Number:
      return NumberAsText(value.number());
    case Value::Kind::Text:
      return std::string(value.text().view());
    case Value::Kind::Error:
      return std::string(TextOf(value.error()));
  }
  return {};
}

int CompareValues(const Value& a, const Value& b) {
  if (a.isEmpty() && b.isEmpty()) return 0;
  if (a.isEmpty()) return CompareValues(EmptyBeside(b), b);
  if (b.isEmpty()) return CompareValues(a, EmptyBeside(a));
  if (a.kind() != b.kind()) return RankOf(a) - RankOf(b);
  return CompareSameKind(a, b, OrderAsSeen);
}

int CompareExactly(const Value& a, const Value& b) {
  if (a.kind() != b.kind()) return RankOf(a) - RankOf(b);
  return CompareSameKind(a, b, Order);
}

Value FiniteOr(double number, ErrorCode error) {
  return std::isfinite(number) ? Value(number == 0 ? 0.0 : number) : Value(error);
}

}  // namespace tolvane::engine
