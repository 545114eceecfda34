#include "engine/formula/RectIndex.h"

#include <cmath>
#include <utility>

namespace tolvane::engine {
namespace {

Rect BoxAround(const Rect& a, const Rect& b) {
  return {std::min(a.top, b.top), std::min(a.left, b.left), std::max(a.bottom, b.bottom), std::max(a.right, b.right)};
}

}  // namespace

void RectIndex::SortIn() {
  std::vector<Entry> entries = std::exchange(waiting_, {});
  while (!trees_.empty() && trees_.back().entries.size() <= 2 * entries.size()) {
    entries.insert(entries.end(), trees_.back().entries.begin(), trees_.back().entries.end());
    trees_.pop_back();
  }
  trees_.push_back(Pack(std::move(entries)));
}

// Tiles: strips of columns, within each the rows in order, so that each box bounds neighbours.
RectIndex::Tree RectIndex::Pack(std::vector<Entry> entries) {
  std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) { return a.rect.left < b.rect.left; });
  const auto leaves = static_cast<double>((entries.size() + kFanOut - 1) / kFanOut);
  const std::size_t strip = kFanOut * static_cast<std::size_t>(std::ceil(std::sqrt(leaves)));
  for (std::size_t from = 0; from < entries.size(); from += strip) {
    const auto begin = entries.begin() + static_cast<std::ptrdiff_t>(from);
    const auto end = entries.begin() + static_cast<std::ptrdiff_t>(std::min(from + strip, entries.size()));
    std::sort(begin, end, [](const Entry& a, const Entry& b) { return a.rect.top < b.rect.top; });
  }
  Tree tree{std::move(entries), {}};
  std::vector<Rect> below(tree.entries.size());
  std::transform(tree.entries.begin(), tree.entries.end(), below.begin(),
                 [](const Entry& entry) { return entry.rect; });
  do {
    std::vector<Rect> boxes;
    for (std::size_t from = 0; from < below.size(); from += kFanOut) {
      Rect box = below[from];
      for (std::size_t i = from + 1; i < std::min(from + kFanOut, below.size()); ++i) box = BoxAround(box, below[i]);
      boxes.push_back(box);
    }
    tree.levels.push_back(boxes);
    below = std::move(boxes);
  } while (below.size() > 1);
  return tree;
}

}  // namespace tolvane::engine
