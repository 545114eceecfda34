#pragma once

#include <cstdint>
#include <optional>

#include "engine/model/Geometry.h"

namespace tolvane::engine {

// A sheet's number within its workbook: given once, never again, kept through renames and moves.
using SheetId = std::uint32_t;
inline constexpr SheetId kOwnSheet = 0;  // in a reference: the sheet that the formula stands on

// One bound of a reference on one axis: an index, or an offset from the cell that holds the formula.
struct Coordinate {
  int value = 1;
  bool relative = false;
  int From(int home) const { return relative ? home + value : value; }
  auto operator<=>(const Coordinate&) const = default;
};

// What a formula points at: a cell, an area, whole rows or whole columns, here or on another sheet of the book, or what
// is left of one whose cells were deleted (#REF!). Relative bounds make one formula serve a whole column of cells;
// bounds that leave the grid wrap to its other end, as they do in the programs that people know.
struct Reference {
  enum class Shape : std::uint8_t { Cell, Area, WholeRows, WholeColumns, Broken };

  // Which bounds count depends on the shape: of a Cell the first ones, of WholeRows the rows, of WholeColumns the
  // columns, of Broken none. The others mean nothing, in comparisons either.
  Shape shape = Shape::Cell;
  SheetId sheet = kOwnSheet;
  SheetId lastSheet = kOwnSheet;  // another sheet than `sheet` only for First:Last!A1
  Coordinate firstRow, lastRow, firstColumn, lastColumn;

  // The cells meant by the formula in `home`; nothing when broken. The bounds come out in order.
  std::optional<Rect> At(CellPos home) const;
  // Whether it spans several sheets, as First:Last!A1.
  bool isThreeD() const { return lastSheet != kOwnSheet && lastSheet != sheet; }
  friend bool operator==(const Reference& a, const Reference& b);
};

// An index that may have left the grid, brought back from its other end.
int WrapIndex(int index, Axis axis);

}  // namespace tolvane::engine
