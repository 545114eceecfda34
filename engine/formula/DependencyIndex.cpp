#include "engine/formula/DependencyIndex.h"

#include "engine/model/Workbook.h"

namespace tolvane::engine {

void DependencyIndex::Clear() {
  *this = DependencyIndex();
}

void DependencyIndex::Prepend(std::uint32_t& list, FormulaId formula) {
  links_.push_back({formula, list});
  list = static_cast<std::uint32_t>(links_.size() - 1);
}

DependencyIndex::FormulaId DependencyIndex::Add(const CellAddress& at, const FormulaCell& cell, const Workbook& book) {
  const auto id = static_cast<FormulaId>(formulas_.size());
  Precedents precedents = PrecedentsOf(*cell.expression, at, book);
  for (const Precedents::Area& area : precedents.areas) {
    SheetIndex& index = sheets_[area.sheet];
    if (area.rect.isCell()) {
      const auto [place, isNew] = index.cells.try_emplace({area.sheet, area.rect.topLeft()}, kEnd);
      Prepend(place->second, id);
      continue;
    }
    const auto [place, isNew] = index.areas.try_emplace(area.rect, static_cast<std::uint32_t>(sharedAreas_.size()));
    if (isNew) {
      index.rects.Add(area.rect, place->second);
      sharedAreas_.emplace_back();
    }
    Prepend(sharedAreas_[place->second].list, id);
  }
  if (precedents.isVolatile) volatiles_.push_back(id);
  if (!precedents.books.empty()) outsiders_.push_back(id);
  if (precedents.usesNames) nameUsers_.push_back(id);
  if (precedents.isSubtotal) subtotals_.push_back(id);
  formulas_.push_back({at, cell, std::move(precedents.books), precedents.isVolatile, precedents.usesNames,
                       precedents.isSubtotal, true});
  byCell_[at] = id;
  return id;
}

void DependencyIndex::Remove(FormulaId id) {
  Formula& formula = formulas_[id];
  formula.alive = false;
  formula.cell.expression.reset();
  byCell_.erase(formula.at);
  ++dead_;
}

DependencyIndex::Formula* DependencyIndex::Find(const CellAddress& at) {
  const auto found = byCell_.find(at);
  return found == byCell_.end() ? nullptr : &formulas_[found->second];
}

std::vector<DependencyIndex::FormulaId> DependencyIndex::In(SheetId sheet, const Rect& area) const {
  std::vector<FormulaId> found;
  if (area.cells() <= static_cast<std::int64_t>(byCell_.size())) {
    for (int column = area.left; column <= area.right; ++column) {
      for (int row = area.top; row <= area.bottom; ++row) {
        const auto at = byCell_.find({sheet, {row, column}});
        if (at != byCell_.end()) found.push_back(at->second);
      }
    }
  } else {
    for (const auto& [at, id] : byCell_) {
      if (at.sheet == sheet && area.contains(at.cell)) found.push_back(id);
    }
  }
  return found;
}

}  // namespace tolvane::engine
