#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "engine/formula/Notation.h"
#include "engine/model/Expression.h"
#include "engine/model/Workbook.h"

namespace tolvane::engine::xlsx {

// Formulas as they stand in the file: English, A1, without "=", with a prefix on functions that came after the format
// ("_xlfn.TEXTJOIN").

// Null when the grammar does not know it.
ExpressionPtr ParseFileFormula(std::string_view text, const FormulaHome& home, const Workbook& book);
std::string PrintFileFormula(const Expression& formula, const FormulaHome& home, const Workbook& book);

// A formula that the grammar does not know, as it is when it moves from one cell to another: its relative references
// count from there.
std::string ShiftFileFormula(std::string_view text, CellPos from, CellPos to);

// Bytes that a formula takes, as a budget counts them; 0 for none.
std::uint64_t CostOf(const ExpressionPtr& formula);

// A formula that stands for a value: what a cell calculates whose formula the grammar does not know.
ExpressionPtr ConstantFormula(Value value);

}  // namespace tolvane::engine::xlsx
