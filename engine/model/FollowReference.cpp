#include "engine/model/FollowReference.h"

#include <utility>

namespace tolvane::engine {

namespace {

using Shape = Reference::Shape;

bool HasRows(Shape shape) {
  return shape == Shape::Cell || shape == Shape::Area || shape == Shape::WholeRows;
}
bool HasColumns(Shape shape) {
  return shape == Shape::Cell || shape == Shape::Area || shape == Shape::WholeColumns;
}

// Lets a bound mean an index. What already means it stays as it is, wrapped or not.
void Point(Coordinate& bound, int index, int home, Axis axis) {
  if (WrapIndex(bound.From(home), axis) != index) bound.value = bound.relative ? index - home : index;
}

// Lets both bounds mean an interval; `homeBefore` tells which of them was the lower one.
void Point(Coordinate& first, Coordinate& last, Span span, int homeBefore, int homeAfter, Axis axis) {
  if (WrapIndex(first.From(homeBefore), axis) > WrapIndex(last.From(homeBefore), axis))
    std::swap(span.first, span.last);
  Point(first, span.first, homeAfter, axis);
  Point(last, span.last, homeAfter, axis);
}

}  // namespace

Reference Follow(const Reference& reference, const Place& before, const Place& after, const StructuralChange& change) {
  const auto area = reference.At(before.cell);
  if (!area) return reference;
  const SheetId sheet = reference.sheet == kOwnSheet ? before.sheet : reference.sheet;
  std::optional<SheetArea> mapped = SheetArea{sheet, *area};
  if (!reference.isThreeD()) mapped = change.Map(*mapped);
  Reference result = reference;
  if (!mapped) {
    result.shape = Shape::Broken;
    return result;
  }
  const bool staysOwn = reference.sheet == kOwnSheet && mapped->sheet == after.sheet;
  if (!reference.isThreeD() && !staysOwn) {
    result.sheet = mapped->sheet;
    result.lastSheet = kOwnSheet;
  }
  const Rect& to = mapped->area;
  if (reference.shape == Shape::Cell) {
    Point(result.firstRow, to.top, after.cell.row, Axis::Rows);
    Point(result.firstColumn, to.left, after.cell.column, Axis::Columns);
    result.lastRow = result.firstRow;
    result.lastColumn = result.firstColumn;
    return result;
  }
  if (HasRows(reference.shape)) {
    Point(result.firstRow, result.lastRow, {to.top, to.bottom}, before.cell.row, after.cell.row, Axis::Rows);
  }
  if (HasColumns(reference.shape)) {
    Point(result.firstColumn, result.lastColumn, {to.left, to.right}, before.cell.column, after.cell.column,
          Axis::Columns);
  }
  return result;
}

namespace {

// How much of a name's reference is fixed along one axis.
enum class Fixed : std::uint8_t { Both, First, Last, None };

Fixed FixedOf(const Coordinate& first, const Coordinate& last) {
  if (first.relative) return last.relative ? Fixed::None : Fixed::Last;
  return last.relative ? Fixed::First : Fixed::Both;
}

// What of the axis can concern the reference: its interval, its one fixed bound, or anything.
void Narrow(Fixed fixed, const Coordinate& first, const Coordinate& last, Axis axis, int& low, int& high) {
  if (fixed == Fixed::Both) return;
  low = fixed == Fixed::None ? 1 : fixed == Fixed::First ? first.value : last.value;
  high = fixed == Fixed::None ? LimitOf(axis) : low;
}

void PointFixed(Fixed fixed, Coordinate& first, Coordinate& last, Span span, Axis axis) {
  constexpr int kHome = 1;
  if (fixed == Fixed::Both) Point(first, last, span, kHome, kHome, axis);
  if (fixed == Fixed::First) first.value = span.first;
  if (fixed == Fixed::Last) last.value = span.first;
}

}  // namespace

Reference FollowInName(const Reference& reference, SheetId scope, const StructuralChange& change) {
  const SheetId sheet = reference.sheet == kOwnSheet ? scope : reference.sheet;
  const auto area = reference.At({1, 1});
  if (!area || sheet == kOwnSheet || reference.isThreeD() || !change.Touches(sheet)) return reference;

  Reference result = reference;
  if (reference.shape == Shape::Cell) {
    result.lastRow = result.firstRow;
    result.lastColumn = result.firstColumn;
  }
  Fixed rows = HasRows(reference.shape) ? FixedOf(result.firstRow, result.lastRow) : Fixed::Both;
  Fixed columns = HasColumns(reference.shape) ? FixedOf(result.firstColumn, result.lastColumn) : Fixed::Both;
  const auto map = [&] {
    SheetArea wanted{sheet, *area};
    Narrow(rows, result.firstRow, result.lastRow, Axis::Rows, wanted.area.top, wanted.area.bottom);
    Narrow(columns, result.firstColumn, result.lastColumn, Axis::Columns, wanted.area.left, wanted.area.right);
    return change.Map(wanted);
  };
  auto mapped = map();
  if (!mapped && (rows == Fixed::First || rows == Fixed::Last || columns == Fixed::First || columns == Fixed::Last)) {
    // One bound's row or column is gone; the other bound still reaches somewhere.
    if (rows != Fixed::Both) rows = Fixed::None;
    if (columns != Fixed::Both) columns = Fixed::None;
    mapped = map();
  }
  if (!mapped) {
    result.shape = Shape::Broken;
    return result;
  }
  if (reference.sheet != kOwnSheet || mapped->sheet != scope) {
    result.sheet = mapped->sheet;
    result.lastSheet = kOwnSheet;
  }
  const Rect& to = mapped->area;
  if (HasRows(reference.shape)) PointFixed(rows, result.firstRow, result.lastRow, {to.top, to.bottom}, Axis::Rows);
  if (HasColumns(reference.shape)) {
    PointFixed(columns, result.firstColumn, result.lastColumn, {to.left, to.right}, Axis::Columns);
  }
  return result;
}

}  // namespace tolvane::engine
