#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "engine/formula/Operand.h"

namespace tolvane::engine {

// Cells counted from the top left of an area, down the columns: the order in which contents are walked.
using CellOffset = std::uint64_t;

inline CellOffset OffsetIn(const Rect& area, CellPos at) {
  return (static_cast<CellOffset>(at.column - area.left) << 32) | static_cast<CellOffset>(at.row - area.top);
}
inline CellPos CellAtOffset(const Rect& area, CellOffset offset) {
  return {area.top + static_cast<int>(offset & 0xFFFFFFFF), area.left + static_cast<int>(offset >> 32)};
}

// When two values count as equal.
enum class Equality : std::uint8_t {
  Exactly,  // of one kind; numbers exactly, texts ignoring case: what looking up goes by
  AsSeen,   // numbers by 15 digits and equal to texts that read as them: what the conditions of SUMIF go by
};

// Where the values of an area stand, so that ten thousand lookups in ten thousand rows do not walk them all each.
// Blanks are not listed.
class RangeIndex {
 public:
  explicit RangeIndex(Equality equality) : equality_(equality) {}
  void Add(CellOffset at, const Value& value);
  // In the order in which contents are walked.
  const std::vector<CellOffset>& Find(const Value& wanted) const;

  // What the evaluations that use it must know of the cells in it.
  bool usedStale = false;
  bool restsOnKept = false;

 private:
  std::string KeyOf(const Value& value) const;

  Equality equality_;
  std::unordered_map<std::string, std::vector<CellOffset>> places_;
};

// The indexes of one calculation, in which no value changes once it has been read.
class RangeIndexes {
 public:
  struct Entry {
    int asked = 0;
    std::unique_ptr<RangeIndex> index;
  };
  Entry& At(const Area& area, Equality equality) { return entries_[{area, equality}]; }
  void Clear() { entries_.clear(); }

 private:
  struct Key {
    Area area;
    Equality equality;
    bool operator==(const Key&) const = default;
  };
  struct KeyHash {
    std::size_t operator()(const Key& key) const;
  };
  std::unordered_map<Key, Entry, KeyHash> entries_;
};

}  // namespace tolvane::engine
