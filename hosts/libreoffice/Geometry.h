#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

namespace tolvane::libreoffice {

// What a sheet of Calc can hold.
inline constexpr int kMaxRow = 1048576;
inline constexpr int kMaxColumn = 16384;

// A rectangle of cells, counted from 1, both ends included.
struct Rect {
  int top = 1, left = 1, bottom = 1, right = 1;

  int rows() const { return bottom - top + 1; }
  int columns() const { return right - left + 1; }
  std::int64_t count() const { return static_cast<std::int64_t>(rows()) * columns(); }
  bool isValid() const {
    return top >= 1 && left >= 1 && bottom >= top && right >= left && bottom <= kMaxRow && right <= kMaxColumn;
  }
  bool isWholeRows() const { return left == 1 && right == kMaxColumn; }
  bool isWholeColumns() const { return top == 1 && bottom == kMaxRow; }
  bool intersects(const Rect& other) const {
    return top <= other.bottom && other.top <= bottom && left <= other.right && other.left <= right;
  }
  bool contains(const Rect& other) const {
    return top <= other.top && left <= other.left && other.bottom <= bottom && other.right <= right;
  }
  // Meaningful only where they intersect.
  Rect intersection(const Rect& other) const {
    return {std::max(top, other.top), std::max(left, other.left), std::min(bottom, other.bottom),
            std::min(right, other.right)};
  }
  friend bool operator==(const Rect&, const Rect&) = default;
};

using Rects = std::vector<Rect>;

}  // namespace tolvane::libreoffice
