#pragma once

#include <functional>

#include "engine/formula/Operand.h"
#include "engine/model/Expression.h"

namespace tolvane::engine {

// The operators on two values and on one. Errors in the operands are the result, the left one first.
Value ApplyOperator(Operator op, const Value& left, const Value& right);
Value ApplyOperator(Operator op, const Value& operand);

// Does something for each pair of elements. Values, single rows and single columns are repeated as far as the other
// side reaches; what lies outside of the shorter side is #N/A.
ArrayPtr CombineArrays(const Operand& left, const Operand& right,
                       const std::function<Value(const Value&, const Value&)>& combine);

// The element of a value or an array, repeated as CombineArrays does. Neither a reference nor omitted.
Value ElementOf(const Operand& operand, int row, int column);
int RowsOf(const Operand& operand);
int ColumnsOf(const Operand& operand);

}  // namespace tolvane::engine
