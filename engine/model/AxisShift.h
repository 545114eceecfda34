#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "engine/model/Geometry.h"

namespace tolvane::engine {

// Indices from `first` to `last`, both included.
struct Span {
  int first;
  int last;
  bool operator==(const Span&) const = default;
};

// How runs of rows or columns that are deleted or inserted renumber the others. The runs are in ascending order and do
// not overlap; deleted ones count in the numbering before, inserted ones in the numbering after.
class AxisShift {
 public:
  enum class Kind : std::uint8_t { Delete, Insert };

  AxisShift(Axis axis, Kind kind, std::span<const Run> runs);

  // The new number; nothing when it was deleted or has left the grid.
  std::optional<int> Map(int index) const;
  // The interval that holds what was in this one: deletion shrinks it, insertion inside it extends it. An interval over
  // the whole axis stays so.
  std::optional<Span> Map(Span span) const;
  // The old number of what is there now; of an inserted place, the old number of what comes behind the insertion.
  int Unmap(int index) const;

 private:
  // The number of runs that lie wholly before an index of the numbering before the change.
  std::size_t RunsBefore(int index) const;
  int CountBefore(std::size_t runs) const { return runs == 0 ? 0 : totals_[runs - 1]; }

  int limit_;
  Kind kind_;
  std::vector<int> starts_;            // in the numbering before: the first one deleted, or the one that is pushed on
  std::vector<int> totals_;            // rows or columns in the runs up to and with this one
  std::vector<std::size_t> runsUpTo_;  // runs that start before each stretch of the axis; empty when there are few
};

}  // namespace tolvane::engine
