#include "hosts/embedded/CellSearch.h"

#include <algorithm>
#include <vector>

namespace tolvane::embedded {

using engine::CellPos;
using engine::Rect;

namespace {

// The cells of one row or column seen from one of them: the filled ones in the order in which they are met.
class Ray {
 public:
  Ray(const engine::Sheet& sheet, CellPos from, host::Direction direction) : from_(from) {
    vertical_ = direction == host::Direction::Up || direction == host::Direction::Down;
    forward_ = direction == host::Direction::Down || direction == host::Direction::Right;
    const int limit = vertical_ ? engine::kMaxRow : engine::kMaxColumn;
    edge_ = forward_ ? limit : 1;
    const int start = vertical_ ? from.row : from.column;
    if (start == edge_) return;
    Rect area = Rect::Cell(from);
    if (direction == host::Direction::Down) area.bottom = engine::kMaxRow;
    if (direction == host::Direction::Up) area.top = 1;
    if (direction == host::Direction::Right) area.right = engine::kMaxColumn;
    if (direction == host::Direction::Left) area.left = 1;
    sheet.cells().ForEachContent(area, [this](CellPos at, const engine::Value&, const engine::FormulaCell*) {
      filled_.push_back(vertical_ ? at.row : at.column);
    });
    if (!forward_) std::reverse(filled_.begin(), filled_.end());
  }

  CellPos End() const {
    const int step = forward_ ? 1 : -1;
    const int start = vertical_ ? from_.row : from_.column;
    const bool startFilled = !filled_.empty() && filled_.front() == start;
    if (startFilled && filled_.size() > 1 && filled_[1] == start + step) {
      std::size_t last = 1;
      while (last + 1 < filled_.size() && filled_[last + 1] == filled_[last] + step) ++last;
      return At(filled_[last]);
    }
    const std::size_t next = startFilled ? 1 : 0;
    return At(next < filled_.size() ? filled_[next] : edge_);
  }

 private:
  CellPos At(int index) const { return vertical_ ? CellPos{index, from_.column} : CellPos{from_.row, index}; }

  CellPos from_;
  bool vertical_ = true;
  bool forward_ = true;
  int edge_ = 1;
  std::vector<int> filled_;
};

bool HasContent(const engine::Sheet& sheet, const Rect& area) {
  bool found = false;
  sheet.cells().ForEachContent(area,
                               [&found](CellPos, const engine::Value&, const engine::FormulaCell*) { found = true; });
  return found;
}

}  // namespace

CellPos EndOfStretch(const engine::Sheet& sheet, CellPos from, host::Direction direction) {
  return Ray(sheet, from, direction).End();
}

Rect CurrentRegion(const engine::Sheet& sheet, CellPos from) {
  Rect region = Rect::Cell(from);
  const auto used = sheet.UsedContents();
  if (!used) return region;
  for (bool grown = true; grown;) {
    grown = false;
    const int left = std::max(region.left - 1, 1);
    const int right = std::min(region.right + 1, engine::kMaxColumn);
    while (region.bottom < used->bottom && HasContent(sheet, {region.bottom + 1, left, region.bottom + 1, right})) {
      ++region.bottom;
      grown = true;
    }
    while (region.top > std::max(used->top, 1) && HasContent(sheet, {region.top - 1, left, region.top - 1, right})) {
      --region.top;
      grown = true;
    }
    const int top = std::max(region.top - 1, 1);
    const int bottom = std::min(region.bottom + 1, engine::kMaxRow);
    while (region.right < used->right && HasContent(sheet, {top, region.right + 1, bottom, region.right + 1})) {
      ++region.right;
      grown = true;
    }
    while (region.left > std::max(used->left, 1) &&
           HasContent(sheet, {top, region.left - 1, bottom, region.left - 1})) {
      --region.left;
      grown = true;
    }
  }
  return region;
}

}  // namespace tolvane::embedded
