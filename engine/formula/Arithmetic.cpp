#include "engine/formula/Arithmetic.h"

#include <algorithm>
#include <cmath>

#include "engine/formula/Coercion.h"

namespace tolvane::engine {
namespace {

constexpr std::size_t kLongestText = 32767;  // what a cell can hold

Value Power(double base, double exponent) {
  if (base == 0 && exponent == 0) return ErrorCode::Num;
  if (base == 0 && exponent < 0) return ErrorCode::Div0;
  return FiniteOr(std::pow(base, exponent));
}

Value Calculate(Operator op, double left, double right) {
  switch (op) {
    case Operator::Add:
      return FiniteOr(left + right);
    case Operator::Subtract:
      return FiniteOr(left - right);
    case Operator::Multiply:
      return FiniteOr(left * right);
    case Operator::Divide:
      return right == 0 ? Value(ErrorCode::Div0) : FiniteOr(left / right);
    default:
      return Power(left, right);
  }
}

bool Holds(Operator op, int order) {
  switch (op) {
    case Operator::Equal:
      return order == 0;
    case Operator::NotEqual:
      return order != 0;
    case Operator::Less:
      return order < 0;
    case Operator::LessEqual:
      return order <= 0;
    case Operator::Greater:
      return order > 0;
    default:
      return order >= 0;
  }
}

}  // namespace

Value ApplyOperator(Operator op, const Value& left, const Value& right) {
  if (left.isError()) return left;
  if (right.isError()) return right;
  switch (op) {
    case Operator::Add:
    case Operator::Subtract:
    case Operator::Multiply:
    case Operator::Divide:
    case Operator::Power: {
      if (left.isNumber() && right.isNumber()) return Calculate(op, left.number(), right.number());
      const NumberResult a = ToNumber(left);
      if (a.error) return *a.error;
      const NumberResult b = ToNumber(right);
      if (b.error) return *b.error;
      return Calculate(op, a.number, b.number);
    }
    case Operator::Concatenate: {
      const std::string text = ToText(left) + ToText(right);
      return text.size() > kLongestText ? Value(ErrorCode::Value) : Value(text);
    }
    default:
      return Value(Holds(op, CompareValues(left, right)));
  }
}

Value ApplyOperator(Operator op, const Value& operand) {
  if (op == Operator::Plus) return operand;
  const NumberResult result = ToNumber(operand);
  if (result.error) return *result.error;
  return op == Operator::Minus ? FiniteOr(-result.number) : FiniteOr(result.number / 100);
}

int RowsOf(const Operand& operand) {
  return operand.isArray() ? operand.array().rows : 1;
}
int ColumnsOf(const Operand& operand) {
  return operand.isArray() ? operand.array().columns : 1;
}

Value ElementOf(const Operand& operand, int row, int column) {
  if (operand.isOmitted()) return {};
  if (!operand.isArray()) return operand.value();
  const ValueArray& array = operand.array();
  if (array.rows == 1) row = 0;
  if (array.columns == 1) column = 0;
  if (row >= array.rows || column >= array.columns) return ErrorCode::NA;
  return array.At(row, column);
}

ArrayPtr CombineArrays(const Operand& left, const Operand& right,
                       const std::function<Value(const Value&, const Value&)>& combine) {
  auto result =
      std::make_shared<ValueArray>(std::max(RowsOf(left), RowsOf(right)), std::max(ColumnsOf(left), ColumnsOf(right)));
  for (int row = 0; row < result->rows; ++row) {
    for (int column = 0; column < result->columns; ++column) {
      result->At(row, column) = combine(ElementOf(left, row, column), ElementOf(right, row, column));
    }
  }
  return result;
}

}  // namespace tolvane::engine
