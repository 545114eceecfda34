#pragma once

#include <cstdint>
#include <functional>

#include "engine/model/Expression.h"
#include "engine/model/Geometry.h"
#include "engine/model/Reference.h"

namespace tolvane::engine {

class Sheet;
class Workbook;
struct FormulaCell;

// What holds an expression, and where: its sheet (kOwnSheet for a name of the workbook) and the cell that its relative
// references count from.
struct ExpressionHolder {
  enum class Kind : std::uint8_t { Cell, Name, Validation, Attachment };
  Kind kind = Kind::Cell;
  SheetId sheet = kOwnSheet;
  CellPos home;
  FormulaCell* cell = nullptr;  // of a Cell
};

using ExpressionVisitor = std::function<void(const ExpressionHolder&, ExpressionPtr&)>;

// The one walk over all expressions of a sheet or of a workbook: formulas of cells, names of both levels, both formulas
// of validations, those of attachments. None of them is null.
void ForEachExpression(Sheet& sheet, const ExpressionVisitor& visit);
void ForEachExpression(Workbook& book, const ExpressionVisitor& visit);

}  // namespace tolvane::engine
