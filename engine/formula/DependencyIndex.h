#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "engine/formula/CellAddress.h"
#include "engine/formula/CellTable.h"
#include "engine/formula/Precedents.h"
#include "engine/formula/RectIndex.h"
#include "engine/model/CellStore.h"

namespace tolvane::engine {

// Which formulas refer to which cells. Single cells stand in a hash table, areas in a rectangle index, equal areas
// once. Removed formulas are only crossed out; when they prevail the index asks to be built anew.
class DependencyIndex {
 public:
  using FormulaId = std::uint32_t;

  struct Formula {
    CellAddress at;
    FormulaCell cell;  // as it was when it was added
    std::vector<std::string> books;
    bool isVolatile = false;
    bool usesNames = false;
    bool isSubtotal = false;
    bool alive = true;
  };

  void Clear();
  FormulaId Add(const CellAddress& at, const FormulaCell& cell, const Workbook& book);
  void Remove(FormulaId id);
  bool isWorn() const { return dead_ > kFewDead && dead_ > formulas_.size() / 2; }

  Formula& At(FormulaId id) { return formulas_[id]; }
  // The formula that stands in a cell; of an array formula, in its top left one.
  Formula* Find(const CellAddress& at);
  // Those that stand in an area.
  std::vector<FormulaId> In(SheetId sheet, const Rect& area) const;
  // Crossed out ones among them.
  const std::vector<FormulaId>& volatiles() const { return volatiles_; }
  const std::vector<FormulaId>& outsiders() const { return outsiders_; }  // refer to other workbooks
  const std::vector<FormulaId>& nameUsers() const { return nameUsers_; }
  const std::vector<FormulaId>& subtotals() const { return subtotals_; }

  // Begins a search for dependents: equal areas that many formulas refer to are looked through once in a search.
  void BeginSearch() { ++search_; }
  // Calls visit(id) for the formulas that refer to a cell of the area.
  template <class Visit>
  void ForEachDependent(SheetId sheet, const Rect& area, Visit&& visit) {
    const auto found = sheets_.find(sheet);
    if (found == sheets_.end()) return;
    SheetIndex& index = found->second;
    if (area.cells() <= static_cast<std::int64_t>(index.cells.size())) {
      for (int column = area.left; column <= area.right; ++column) {
        for (int row = area.top; row <= area.bottom; ++row) {
          if (const std::uint32_t* list = index.cells.Find({sheet, {row, column}})) Walk(*list, visit);
        }
      }
    } else {
      index.cells.ForEach([&](const CellAddress& cell, std::uint32_t list) {
        if (area.contains(cell.cell)) Walk(list, visit);
      });
    }
    index.rects.ForEachMeeting(area, [&](std::uint32_t shared) {
      SharedArea& entry = sharedAreas_[shared];
      if (entry.search == search_) return;
      entry.search = search_;
      Walk(entry.list, visit);
    });
  }

 private:
  static constexpr std::size_t kFewDead = 1024;
  static constexpr std::uint32_t kEnd = 0xFFFFFFFF;

  struct Link {
    FormulaId formula;
    std::uint32_t next;
  };
  struct SharedArea {
    std::uint32_t list = kEnd;
    std::uint64_t search = 0;
  };
  struct RectHash {
    std::size_t operator()(const Rect& rect) const {
      const CellAddressHash hash;
      return hash({0, rect.topLeft()}) * 31 + hash({0, {rect.bottom, rect.right}});
    }
  };
  struct SheetIndex {
    CellTable cells;                                          // to their lists
    std::unordered_map<Rect, std::uint32_t, RectHash> areas;  // to their shared areas
    RectIndex rects;
  };

  template <class Visit>
  void Walk(std::uint32_t list, Visit&& visit) {
    for (; list != kEnd; list = links_[list].next) {
      if (formulas_[links_[list].formula].alive) visit(links_[list].formula);
    }
  }
  void Prepend(std::uint32_t& list, FormulaId formula);

  std::vector<Formula> formulas_;
  CellTable byCell_;  // to the formula that stands there, or last stood there
  std::map<SheetId, SheetIndex> sheets_;
  std::vector<Link> links_;
  std::vector<SharedArea> sharedAreas_;
  std::vector<FormulaId> volatiles_, outsiders_, nameUsers_, subtotals_;
  std::uint64_t search_ = 0;
  std::size_t dead_ = 0;
};

}  // namespace tolvane::engine
