#pragma once

#include <functional>
#include <span>
#include <vector>

#include "engine/model/Geometry.h"
#include "engine/model/SheetParts.h"

namespace tolvane::engine {

// Heights, widths, hidden states and formats of all rows or of all columns, as runs of equal neighbours.
class BandTable {
 public:
  explicit BandTable(Axis axis) : axis_(axis) {}

  const Band& At(int index) const;
  // Changes the bands of an interval; `change` is called once for each stretch of equal ones.
  void Change(int first, int last, const std::function<void(Band&)>& change);
  // As CellStore::DeleteRuns and InsertRuns; inserted bands take after the one in front of them (but no filter has seen
  // them yet), or are plain.
  void DeleteRuns(std::span<const Run> runs);
  void InsertRuns(std::span<const Run> runs, bool plain = false);

  struct Stretch {
    int first;
    int last;
    Band band;
    bool operator==(const Stretch&) const = default;
  };
  // Those that differ from the default, in order; neighbours differ.
  const std::vector<Stretch>& stretches() const { return stretches_; }
  // Walks an interval from front to back, stretches of default bands too.
  void ForEachStretch(int first, int last, const std::function<void(int, int, const Band&)>& visit) const;

 private:
  Axis axis_;
  std::vector<Stretch> stretches_;
};

}  // namespace tolvane::engine
