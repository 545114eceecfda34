#include "engine/model/Reference.h"

#include <algorithm>

namespace tolvane::engine {

int WrapIndex(int index, Axis axis) {
  const int limit = LimitOf(axis);
  const int fromZero = (index - 1) % limit;
  return (fromZero < 0 ? fromZero + limit : fromZero) + 1;
}

namespace {

struct Bounds {
  int low;
  int high;
};

Bounds BoundsAt(const Coordinate& first, const Coordinate& last, int home, Axis axis) {
  const int a = WrapIndex(first.From(home), axis);
  const int b = WrapIndex(last.From(home), axis);
  return {std::min(a, b), std::max(a, b)};
}

}  // namespace

std::optional<Rect> Reference::At(CellPos home) const {
  switch (shape) {
    case Shape::Cell: {
      const CellPos at{WrapIndex(firstRow.From(home.row), Axis::Rows),
                       WrapIndex(firstColumn.From(home.column), Axis::Columns)};
      return Rect::Cell(at);
    }
    case Shape::Area: {
      const Bounds rows = BoundsAt(firstRow, lastRow, home.row, Axis::Rows);
      const Bounds columns = BoundsAt(firstColumn, lastColumn, home.column, Axis::Columns);
      return Rect{rows.low, columns.low, rows.high, columns.high};
    }
    case Shape::WholeRows: {
      const Bounds rows = BoundsAt(firstRow, lastRow, home.row, Axis::Rows);
      return Rect::Rows(rows.low, rows.high);
    }
    case Shape::WholeColumns: {
      const Bounds columns = BoundsAt(firstColumn, lastColumn, home.column, Axis::Columns);
      return Rect::Columns(columns.low, columns.high);
    }
    case Shape::Broken:
      break;
  }
  return std::nullopt;
}

bool operator==(const Reference& a, const Reference& b) {
  if (a.shape != b.shape || a.sheet != b.sheet || a.isThreeD() != b.isThreeD()) return false;
  if (a.isThreeD() && a.lastSheet != b.lastSheet) return false;
  const bool sameRows = a.firstRow == b.firstRow && a.lastRow == b.lastRow;
  const bool sameColumns = a.firstColumn == b.firstColumn && a.lastColumn == b.lastColumn;
  switch (a.shape) {
    case Reference::Shape::Cell:
      return a.firstRow == b.firstRow && a.firstColumn == b.firstColumn;
    case Reference::Shape::Area:
      return sameRows && sameColumns;
    case Reference::Shape::WholeRows:
      return sameRows;
    case Reference::Shape::WholeColumns:
      return sameColumns;
    case Reference::Shape::Broken:
      break;
  }
  return true;
}

}  // namespace tolvane::engine
