#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "engine/model/Geometry.h"

namespace tolvane::engine {

// Finds the rectangles that meet a rectangle, in logarithmic time for each one found. Adding is cheap: new rectangles
// wait in a list and are sorted into packed trees of growing sizes when a search finds the list long.
class RectIndex {
 public:
  void Add(const Rect& rect, std::uint32_t id) { waiting_.push_back({rect, id}); }
  void Clear() {
    waiting_.clear();
    trees_.clear();
  }

  // Calls visit(id) for each.
  template <class Visit>
  void ForEachMeeting(const Rect& area, Visit&& visit) {
    if (waiting_.size() > kLongestWaiting) SortIn();
    for (const Entry& entry : waiting_) {
      if (entry.rect.intersects(area)) visit(entry.id);
    }
    for (const Tree& tree : trees_) Search(tree, tree.levels.size(), 0, area, visit);
  }

 private:
  static constexpr std::size_t kLongestWaiting = 64;
  static constexpr std::size_t kFanOut = 16;

  struct Entry {
    Rect rect;
    std::uint32_t id;
  };
  // Level 0 bounds kFanOut entries each, every further level kFanOut boxes of the one below; the last has one box.
  struct Tree {
    std::vector<Entry> entries;
    std::vector<std::vector<Rect>> levels;
  };

  // `level`: the height of a box, 0 for the entries themselves.
  template <class Visit>
  static void Search(const Tree& tree, std::size_t level, std::size_t first, const Rect& area, Visit&& visit) {
    if (level == 0) {
      const std::size_t end = std::min(first + kFanOut, tree.entries.size());
      for (std::size_t i = first; i < end; ++i) {
        if (tree.entries[i].rect.intersects(area)) visit(tree.entries[i].id);
      }
      return;
    }
    const std::vector<Rect>& boxes = tree.levels[level - 1];
    const std::size_t end = std::min(first + kFanOut, boxes.size());
    for (std::size_t i = first; i < end; ++i) {
      if (boxes[i].intersects(area)) Search(tree, level - 1, i * kFanOut, area, visit);
    }
  }

  void SortIn();
  static Tree Pack(std::vector<Entry> entries);

  std::vector<Entry> waiting_;
  std::vector<Tree> trees_;  // each more than twice as large as the next
};

}  // namespace tolvane::engine
