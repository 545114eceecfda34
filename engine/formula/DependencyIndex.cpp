#include "engine/formula/DependencyIndex.h"

#include "engine/model/Workbook.h"

namespace tolvane::engine {

// The memory stays: what is cleared is soon built anew.
void DependencyIndex::Clear() {
  formulas_.clear();
  byCell_.Clear();
  for (auto& [sheet, index] : sheets_) {
    index.cells.Clear();
    index.areas.clear();
    index.rects.Clear();
  }
  links_.clear();
  sharedAreas_.clear();
  for (std::vector<FormulaId>* list : {&volatiles_, &outsiders_, &nameUsers_, &subtotals_}) list->clear();
  search_ = 0;
  dead_ = 0;
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
      Prepend(index.cells.At({area.sheet, area.rect.topLeft()}, kEnd), id);
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
  byCell_.At(at, id) = id;
  return id;
}

void DependencyIndex::Remove(FormulaId id) {
  Formula& formula = formulas_[id];
  formula.alive = false;
  formula.cell.expression.reset();
  ++dead_;
}

DependencyIndex::Formula* DependencyIndex::Find(const CellAddress& at) {
  const FormulaId* found = byCell_.Find(at);
  return found == nullptr || !formulas_[*found].alive ? nullptr : &formulas_[*found];
}

std::vector<DependencyIndex::FormulaId> DependencyIndex::In(SheetId sheet, const Rect& area) const {
  std::vector<FormulaId> found;
  const auto take = [&](FormulaId id) {
    if (formulas_[id].alive) found.push_back(id);
  };
  if (area.cells() <= static_cast<std::int64_t>(byCell_.size())) {
    for (int column = area.left; column <= area.right; ++column) {
      for (int row = area.top; row <= area.bottom; ++row) {
        if (const FormulaId* id = byCell_.Find({sheet, {row, column}})) take(*id);
      }
    }
  } else {
    byCell_.ForEach([&](const CellAddress& at, FormulaId id) {
      if (at.sheet == sheet && area.contains(at.cell)) take(id);
    });
  }
  return found;
}

}  // namespace tolvane::engine
