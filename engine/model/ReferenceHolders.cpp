#include "engine/model/ReferenceHolders.h"

#include "engine/model/Sheet.h"
#include "engine/model/Workbook.h"

namespace tolvane::engine {

namespace {

using Kind = ExpressionHolder::Kind;

void ForEachInNames(NameTable& names, SheetId scope, const ExpressionVisitor& visit) {
  for (auto& [folded, name] : names.byFoldedName()) {
    if (name.refersTo != nullptr) visit({Kind::Name, scope, {}, nullptr}, name.refersTo);
  }
}

}  // namespace

void ForEachExpression(Sheet& sheet, const ExpressionVisitor& visit) {
  sheet.cells().ForEachFormula(Rect::WholeSheet(), [&](CellPos at, FormulaCell& cell) {
    visit({Kind::Cell, sheet.id(), at, &cell}, cell.expression);
  });
  ForEachInNames(sheet.names, sheet.id(), visit);
  for (Validation& rule : sheet.validations) {
    const CellPos home = rule.ranges.empty() ? CellPos{} : rule.ranges.front().topLeft();
    const ExpressionHolder holder{Kind::Validation, sheet.id(), home, nullptr};
    if (rule.formula1 != nullptr) visit(holder, rule.formula1);
    if (rule.formula2 != nullptr) visit(holder, rule.formula2);
  }
  for (Attachment& attachment : sheet.attachments) {
    const CellPos home = attachment.ranges.empty() ? CellPos{} : attachment.ranges.front().topLeft();
    for (ExpressionPtr& formula : attachment.formulas) visit({Kind::Attachment, sheet.id(), home, nullptr}, formula);
  }
}

void ForEachExpression(Workbook& book, const ExpressionVisitor& visit) {
  ForEachInNames(book.names, kOwnSheet, visit);
  for (std::size_t i = 0; i < book.sheetCount(); ++i) ForEachExpression(book.sheetAt(i), visit);
}

}  // namespace tolvane::engine
