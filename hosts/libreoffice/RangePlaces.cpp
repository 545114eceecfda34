// The part of CalcRange that tells where it lies and leads to other ranges.
#include <algorithm>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <string>
#include <utility>
#include <vector>

#include "hosts/libreoffice/CalcRange.h"

namespace tolvane::libreoffice {

namespace {

void RequireOnSheet(std::int64_t top, std::int64_t left, std::int64_t bottom, std::int64_t right) {
  if (1 <= top && top <= bottom && bottom <= kMaxRow && 1 <= left && left <= right && right <= kMaxColumn) return;
  Refuse("The cells from row " + std::to_string(top) + ", column " + std::to_string(left) + " to row " +
         std::to_string(bottom) + ", column " + std::to_string(right) + " are not on the sheet.");
}

std::string AddressOf(const Rect& area, const host::AddressOptions& options) {
  CellReference reference;
  reference.first = {area.top, area.left, options.rowAbsolute, options.columnAbsolute};
  reference.last = {area.bottom, area.right, options.rowAbsolute, options.columnAbsolute};
  using Shape = CellReference::Shape;
  reference.shape = area.isWholeRows()      ? Shape::Rows
                    : area.isWholeColumns() ? Shape::Columns
                    : area.count() == 1     ? Shape::Cell
                                            : Shape::Area;
  const Dialect dialect = options.style == host::ReferenceStyle::R1C1 ? Dialect::ExcelR1C1 : Dialect::ExcelA1;
  return WriteReference(reference, dialect, {});
}

// The filled stretches of a row or column, in order, counted along it.
std::vector<std::pair<int, int>> FilledStretches(const CalcWorksheet& sheet, const Rect& line, bool down) {
  namespace flags = css::sheet::CellFlags;
  std::vector<std::pair<int, int>> result;
  const auto found = As<css::sheet::XCellRangesQuery>(sheet.Cells(line))
                         ->queryContentCells(flags::VALUE | flags::DATETIME | flags::STRING | flags::FORMULA);
  for (const auto& address : found->getRangeAddresses()) {
    const Rect rect = ToRect(address);
    if (!rect.intersects(line)) continue;
    result.emplace_back(down ? rect.top : rect.left, down ? rect.bottom : rect.right);
  }
  std::sort(result.begin(), result.end());
  std::size_t kept = 0;
  for (std::size_t i = 1; i < result.size(); ++i) {
    if (result[i].first <= result[kept].second + 1) {
      result[kept].second = std::max(result[kept].second, result[i].second);
    } else {
      result[++kept] = result[i];
    }
  }
  if (!result.empty()) result.resize(kept + 1);
  return result;
}

// Where Ctrl and an arrow key lead: to the end of the stretch, else to the next filled cell, else to the edge.
int EndAlong(const std::vector<std::pair<int, int>>& stretches, int from, bool forward, int edge) {
  if (forward) {
    for (const auto& [first, last] : stretches) {
      if (first <= from && from < last) return last;
      if (first > from) return first;
    }
  } else {
    for (auto stretch = stretches.rbegin(); stretch != stretches.rend(); ++stretch) {
      if (stretch->first < from && from <= stretch->second) return stretch->first;
      if (stretch->second < from) return stretch->second;
    }
  }
  return edge;
}

}  // namespace

std::int64_t CalcRange::Count() const {
  std::int64_t count = 0;
  for (const Rect& area : areas()) count += area.count();
  return count;
}

std::string CalcRange::Address(const host::AddressOptions& options) const {
  const Rects all = areas();
  std::string text;
  if (options.external) {
    text = QuotePlace(book().Name(), sheet_->Name()) + '!';
  }
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (i > 0) text += ',';
    text += AddressOf(all[i], options);
  }
  return text;
}

host::Worksheet CalcRange::Parent() const {
  areas();  // settles which sheet the cells are on now
  return host::Worksheet(sheet_);
}

std::vector<host::Range> CalcRange::Areas() const {
  std::vector<host::Range> ranges;
  for (const Rect& area : areas()) ranges.push_back(sheet_->RangeOver({area}));
  return ranges;
}

host::Range CalcRange::EntireRow() const {
  Rects rows = areas();
  for (Rect& area : rows) area = {area.top, 1, area.bottom, kMaxColumn};
  return sheet_->RangeOver(rows);
}

host::Range CalcRange::EntireColumn() const {
  Rects columns = areas();
  for (Rect& area : columns) area = {1, area.left, kMaxRow, area.right};
  return sheet_->RangeOver(columns);
}

host::Range CalcRange::Offset(int rows, int columns) const {
  Rects moved = areas();
  for (Rect& area : moved) {
    RequireOnSheet(std::int64_t{area.top} + rows, std::int64_t{area.left} + columns, std::int64_t{area.bottom} + rows,
                   std::int64_t{area.right} + columns);
    area = {area.top + rows, area.left + columns, area.bottom + rows, area.right + columns};
  }
  return sheet_->RangeOver(moved);
}

host::Range CalcRange::Resize(int rows, int columns) const {
  const Rect from = first();
  if (rows < 1 || columns < 1) {
    Refuse("A range cannot have " + std::to_string(rows) + " rows and " + std::to_string(columns) + " columns.");
  }
  RequireOnSheet(from.top, from.left, std::int64_t{from.top} + rows - 1, std::int64_t{from.left} + columns - 1);
  return sheet_->RangeOver({{from.top, from.left, from.top + rows - 1, from.left + columns - 1}});
}

host::Range CalcRange::Cells(int row, int column) const {
  const Rect from = first();
  const std::int64_t atRow = std::int64_t{from.top} + row - 1;
  const std::int64_t atColumn = std::int64_t{from.left} + column - 1;
  RequireOnSheet(atRow, atColumn, atRow, atColumn);
  const int top = static_cast<int>(atRow);
  const int left = static_cast<int>(atColumn);
  return sheet_->RangeOver({{top, left, top, left}});
}

host::Range CalcRange::End(host::Direction direction) const {
  const Rect from = first();
  const bool down = direction == host::Direction::Up || direction == host::Direction::Down;
  const bool forward = direction == host::Direction::Down || direction == host::Direction::Right;
  const Rect line = down ? Rect{1, from.left, kMaxRow, from.left} : Rect{from.top, 1, from.top, kMaxColumn};
  const int edge = !forward ? 1 : down ? kMaxRow : kMaxColumn;
  const int at = AtEdge(
      [&] { return EndAlong(FilledStretches(*sheet_, line, down), down ? from.top : from.left, forward, edge); });
  return sheet_->RangeOver({down ? Rect{at, from.left, at, from.left} : Rect{from.top, at, from.top, at}});
}

void CalcRange::Select() {
  const Rects all = areas();
  if (!sheet_->IsInFront()) {
    Refuse("The cells " + sheet_->PlaceOf(all.front()) + " cannot be selected: their sheet is not the active one.");
  }
  sheet_->Select(all);
}

void CalcRange::Activate() {
  const Rects all = areas();
  if (!sheet_->IsInFront()) {
    Refuse("The cell " + sheet_->PlaceOf(all.front()) + " cannot be activated: its sheet is not the active one.");
  }
  const Rect cell{all.front().top, all.front().left, all.front().top, all.front().left};
  const Rects selection = sheet_->Selected();
  const bool isSelected =
      std::any_of(selection.begin(), selection.end(), [&](const Rect& area) { return area.contains(cell); });
  if (isSelected) {
    sheet_->Select(selection, CellPos{cell.top, cell.left});
  } else {
    sheet_->Select(all);
  }
}

}  // namespace tolvane::libreoffice
