#include "engine/xlsx/NotComputed.h"

#include <algorithm>

#include "engine/formula/FunctionTable.h"

namespace tolvane::engine::xlsx {

namespace {

bool CallsUnknown(const Expression& formula) {
  return std::any_of(formula.nodes.begin(), formula.nodes.end(), [&](const Node& node) {
    return node.kind == Node::Kind::Function && FindFunction(formula.names[node.index].name) == nullptr;
  });
}

bool HoldsUnknown(const NameTable& names) {
  if (!names.unread.empty()) return true;
  return std::any_of(names.byFoldedName().begin(), names.byFoldedName().end(), [](const auto& entry) {
    const ExpressionPtr& refersTo = entry.second.refersTo;
    return refersTo != nullptr && CallsUnknown(*refersTo);
  });
}

}  // namespace

bool HoldsNotComputed(const Workbook& book) {
  if (HoldsUnknown(book.names)) return true;
  for (std::size_t i = 0; i < book.sheetCount(); ++i) {
    const Sheet& sheet = book.sheetAt(i);
    if (HoldsUnknown(sheet.names)) return true;
    bool found = false;
    const Expression* last = nullptr;  // a filled column holds one expression
    const std::function<void(CellPos, const FormulaCell&)> look = [&](CellPos, const FormulaCell& formula) {
      if (found || (formula.rawText.empty() && formula.expression.get() == last)) return;
      last = formula.expression.get();
      found = !formula.rawText.empty() || (last != nullptr && CallsUnknown(*last));
    };
    sheet.cells().ForEachFormula(Rect::WholeSheet(), look);
    if (found) return true;
  }
  return false;
}

}  // namespace tolvane::engine::xlsx
