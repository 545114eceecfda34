#include "engine/model/SheetReferences.h"

#include <algorithm>
#include <utility>

#include "engine/model/ExpressionRewriter.h"
#include "engine/model/ReferenceHolders.h"
#include "engine/model/Workbook.h"

namespace tolvane::engine {

namespace {

std::size_t PositionIn(const SheetOrder& order, SheetId sheet) {
  return static_cast<std::size_t>(std::find(order.begin(), order.end(), sheet) - order.begin());
}

// Takes an end of a reference over several sheets to the next sheet inside it.
void StepInside(Reference& reference, SheetId end, const SheetOrder& order) {
  const std::size_t first = PositionIn(order, reference.sheet);
  const std::size_t last = PositionIn(order, reference.lastSheet);
  const std::size_t from = PositionIn(order, end);
  const std::size_t other = reference.sheet == end ? last : first;
  if (from >= order.size() || other >= order.size() || from == other) return;
  const SheetId neighbour = order[from < other ? from + 1 : from - 1];
  (reference.sheet == end ? reference.sheet : reference.lastSheet) = neighbour;
  if (reference.sheet == reference.lastSheet) reference.lastSheet = kOwnSheet;
}

template <class Edit>
void RewriteAll(Workbook& book, Edit edit) {
  ExpressionRewriter rewriter(edit);
  ForEachExpression(book, [&](const ExpressionHolder& holder, ExpressionPtr& expression) {
    ExpressionPtr rewritten = rewriter.Rewrite(expression);
    if (rewritten == expression) return;
    expression = std::move(rewritten);
    if (holder.cell != nullptr) holder.cell->dirty = true;
  });
}

}  // namespace

SheetOrder OrderOf(const Workbook& book) {
  SheetOrder order;
  for (std::size_t i = 0; i < book.sheetCount(); ++i) order.push_back(book.sheetAt(i).id());
  return order;
}

void FollowSheetDeletion(Workbook& book, SheetId deleted, const SheetOrder& before) {
  RewriteAll(book, [&](Expression& expression) {
    bool changed = false;
    for (Reference& reference : expression.references) {
      if (reference.isThreeD() && (reference.sheet == deleted || reference.lastSheet == deleted)) {
        StepInside(reference, deleted, before);
        changed = true;
      } else if (reference.sheet == deleted) {
        reference = Reference{};
        reference.shape = Reference::Shape::Broken;
        changed = true;
      }
    }
    for (Node& node : expression.nodes.Own()) {
      if (node.kind != Node::Kind::Name || expression.names[node.index].sheet != deleted) continue;
      // A name of the deleted sheet: nothing is left that it could mean.
      Reference broken;
      broken.shape = Reference::Shape::Broken;
      expression.references.push_back(broken);
      node.kind = Node::Kind::Reference;
      node.index = static_cast<std::uint32_t>(expression.references.size() - 1);
      changed = true;
    }
    if (changed) DropUnused(expression);
    return changed;
  });
}

void FollowSheetMove(Workbook& book, SheetId moved, const SheetOrder& before) {
  const SheetOrder after = OrderOf(book);
  RewriteAll(book, [&](Expression& expression) {
    bool changed = false;
    for (Reference& reference : expression.references) {
      if (!reference.isThreeD() || (reference.sheet != moved && reference.lastSheet != moved)) continue;
      const bool wasInOrder = PositionIn(before, reference.sheet) < PositionIn(before, reference.lastSheet);
      const bool isInOrder = PositionIn(after, reference.sheet) < PositionIn(after, reference.lastSheet);
      if (wasInOrder == isInOrder) continue;
      StepInside(reference, moved, before);
      changed = true;
    }
    return changed;
  });
}

}  // namespace tolvane::engine
