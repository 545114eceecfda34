#include "engine/formula/Precedents.h"

#include <algorithm>
#include <set>
#include <utility>

#include "engine/formula/FunctionTable.h"
#include "engine/model/Workbook.h"

namespace tolvane::engine {
namespace {

class Collector {
 public:
  Collector(const CellAddress& home, const Workbook& book) : home_(home), book_(book) {}

  void Collect(const Expression& formula) {
    found_.isVolatile = found_.isVolatile || formula.isVolatile;
    found_.isSubtotal = found_.isSubtotal || HoldsSubtotal(formula);
    for (const Reference& reference : formula.references) AddReference(reference);
    for (const ExternalReference& reference : formula.externals) found_.books.push_back(reference.book);
    for (const Node& node : formula.nodes) {
      if (node.kind == Node::Kind::Name) AddName(formula.names[node.index]);
      if (node.kind == Node::Kind::Binary && node.op == Operator::Range) AddSpan(formula, node);
    }
  }
  Precedents Take() { return std::move(found_); }

 private:
  void AddReference(const Reference& reference) {
    const std::optional<Rect> rect = reference.At(home_.cell);
    if (!rect) return;
    if (!reference.isThreeD()) {
      found_.areas.push_back({reference.sheet == kOwnSheet ? home_.sheet : reference.sheet, *rect});
      return;
    }
    if (book_.FindSheet(reference.sheet) == nullptr || book_.FindSheet(reference.lastSheet) == nullptr) return;
    std::size_t from = book_.PositionOf(reference.sheet);
    std::size_t to = book_.PositionOf(reference.lastSheet);
    if (from > to) std::swap(from, to);
    for (std::size_t position = from; position <= to; ++position) {
      found_.areas.push_back({book_.sheetAt(position).id(), *rect});
    }
  }

  void AddName(const NameUse& use) {
    found_.usesNames = true;
    const Name* name = book_.ResolveName(use.sheet == kOwnSheet ? home_.sheet : use.sheet, use.name);
    if (name != nullptr && name->refersTo != nullptr && seen_.insert(name).second) Collect(*name->refersTo);
  }

  // A1:INDEX(C:C,5) reaches over cells that neither side names: whatever lies between all areas of both sides.
  void AddSpan(const Expression& formula, const Node& range) {
    const std::size_t before = found_.areas.size();
    std::vector<const Node*> open{&range};
    while (!open.empty()) {
      const Node& node = *open.back();
      open.pop_back();
      for (std::uint32_t i = 0; i < node.childCount; ++i) {
        open.push_back(&formula.nodes[formula.children[node.firstChild + i]]);
      }
      if (node.kind == Node::Kind::Reference) AddReference(formula.references[node.index]);
      if (node.kind == Node::Kind::Name) {
        const NameUse& use = formula.names[node.index];
        const Name* name = book_.ResolveName(use.sheet == kOwnSheet ? home_.sheet : use.sheet, use.name);
        if (name == nullptr || name->refersTo == nullptr) continue;
        for (const Reference& reference : name->refersTo->references) AddReference(reference);
      }
    }
    std::vector<Precedents::Area> boxes;
    for (std::size_t i = before; i < found_.areas.size(); ++i) {
      const Precedents::Area& area = found_.areas[i];
      const auto same = std::find_if(boxes.begin(), boxes.end(),
                                     [&](const Precedents::Area& box) { return box.sheet == area.sheet; });
      if (same == boxes.end()) {
        boxes.push_back(area);
      } else {
        same->rect = {std::min(same->rect.top, area.rect.top), std::min(same->rect.left, area.rect.left),
                      std::max(same->rect.bottom, area.rect.bottom), std::max(same->rect.right, area.rect.right)};
      }
    }
    found_.areas.resize(before);
    found_.areas.insert(found_.areas.end(), boxes.begin(), boxes.end());
  }

  const CellAddress& home_;
  const Workbook& book_;
  Precedents found_;
  std::set<const Name*> seen_;  // names that refer to each other end here
};

}  // namespace

Precedents PrecedentsOf(const Expression& formula, const CellAddress& home, const Workbook& book) {
  Collector collector(home, book);
  collector.Collect(formula);
  return collector.Take();
}

}  // namespace tolvane::engine
