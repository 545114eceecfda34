#pragma once

#include <algorithm>
#include <compare>
#include <cstdint>
#include <optional>

namespace tolvane::engine {

// The grid of a sheet. Rows and columns count from 1.
inline constexpr int kMaxRow = 1048576;
inline constexpr int kMaxColumn = 16384;

enum class Axis : std::uint8_t { Rows, Columns };

inline constexpr int LimitOf(Axis axis) {
  return axis == Axis::Rows ? kMaxRow : kMaxColumn;
}

struct CellPos {
  int row = 1;
  int column = 1;
  auto operator<=>(const CellPos&) const = default;
};

// A run of `count` neighbouring rows or columns from `first` on.
struct Run {
  int first = 1;
  int count = 1;
  int last() const { return first + count - 1; }
  auto operator<=>(const Run&) const = default;
};

// A rectangle of cells; all four bounds belong to it.
struct Rect {
  int top = 1;
  int left = 1;
  int bottom = 1;
  int right = 1;

  static constexpr Rect Cell(CellPos at) { return {at.row, at.column, at.row, at.column}; }
  static constexpr Rect Rows(int first, int last) { return {first, 1, last, kMaxColumn}; }
  static constexpr Rect Columns(int first, int last) { return {1, first, kMaxRow, last}; }
  static constexpr Rect WholeSheet() { return {1, 1, kMaxRow, kMaxColumn}; }

  constexpr int rows() const { return bottom - top + 1; }
  constexpr int columns() const { return right - left + 1; }
  constexpr std::int64_t cells() const { return std::int64_t{rows()} * columns(); }
  constexpr CellPos topLeft() const { return {top, left}; }
  constexpr bool isCell() const { return top == bottom && left == right; }
  constexpr bool isWholeRows() const { return left == 1 && right == kMaxColumn; }
  constexpr bool isWholeColumns() const { return top == 1 && bottom == kMaxRow; }
  constexpr bool isValid() const {
    return 1 <= top && top <= bottom && bottom <= kMaxRow && 1 <= left && left <= right && right <= kMaxColumn;
  }
  constexpr bool contains(CellPos at) const {
    return top <= at.row && at.row <= bottom && left <= at.column && at.column <= right;
  }
  constexpr bool contains(const Rect& other) const {
    return top <= other.top && other.bottom <= bottom && left <= other.left && other.right <= right;
  }
  constexpr bool intersects(const Rect& other) const {
    return top <= other.bottom && other.top <= bottom && left <= other.right && other.left <= right;
  }
  constexpr std::optional<Rect> intersection(const Rect& other) const {
    if (!intersects(other)) return std::nullopt;
    return Rect{std::max(top, other.top), std::max(left, other.left), std::min(bottom, other.bottom),
                std::min(right, other.right)};
  }
  auto operator<=>(const Rect&) const = default;
};

}  // namespace tolvane::engine
