// The part of EmbeddedRange that tells where it lies and leads to other ranges.
#include <algorithm>
#include <string>
#include <utility>

#include "engine/formula/Printer.h"
#include "engine/formula/SheetPrefix.h"
#include "hosts/embedded/CellSearch.h"
#include "hosts/embedded/EmbeddedRange.h"
#include "hosts/embedded/Refusal.h"

namespace tolvane::embedded {

using engine::Rect;

namespace {

void RequireOnSheet(std::int64_t top, std::int64_t left, std::int64_t bottom, std::int64_t right) {
  if (1 <= top && top <= bottom && bottom <= engine::kMaxRow && 1 <= left && left <= right &&
      right <= engine::kMaxColumn) {
    return;
  }
  Refuse("The cells from row " + std::to_string(top) + ", column " + std::to_string(left) + " to row " +
         std::to_string(bottom) + ", column " + std::to_string(right) + " are not on the sheet.");
}

}  // namespace

EmbeddedRange& BodyOf(const host::Range& range) {
  if (range.IsNothing()) throw host::HostError(host::ErrorNumber::ObjectNotSet, host::kObjectNotSetText);
  if (!range.IsAlive()) throw host::HostError(host::ErrorNumber::ObjectRequired, host::kObjectRequiredText);
  return static_cast<EmbeddedRange&>(*range.body());
}

EmbeddedRange::EmbeddedRange(std::shared_ptr<EmbeddedWorksheet> sheet, std::vector<Rect> areas)
    : TrackedAreas(sheet->tracker(), std::move(areas)), sheet_(std::move(sheet)) {}

EmbeddedRange::~EmbeddedRange() {
  Unlink();
}

void EmbeddedRange::MovedTo(EmbeddedWorksheet& sheet) {
  sheet_ = sheet.Self();
}

std::int64_t EmbeddedRange::Count() const {
  std::int64_t count = 0;
  for (const Rect& area : areas()) count += area.cells();
  return count;
}

std::string EmbeddedRange::Address(const host::AddressOptions& options) const {
  engine::AddressStyle style;
  style.notation = options.style == host::ReferenceStyle::R1C1 ? engine::Notation::R1C1 : engine::Notation::A1;
  style.absoluteRow = options.rowAbsolute;
  style.absoluteColumn = options.columnAbsolute;
  std::string text;
  if (options.external) {
    engine::AppendExternalPrefix(text, sheet_->book().BookName(), sheet_->Name());
  }
  for (std::size_t i = 0; i < areas().size(); ++i) {
    if (i > 0) text += ',';
    text += engine::PrintAddress(areas()[i], style);
  }
  return text;
}

host::Worksheet EmbeddedRange::Parent() const {
  return host::Worksheet(sheet_);
}

std::vector<host::Range> EmbeddedRange::Areas() const {
  std::vector<host::Range> ranges;
  ranges.reserve(areas().size());
  for (const Rect& area : areas()) ranges.push_back(sheet_->RangeOver(area));
  return ranges;
}

host::Range EmbeddedRange::EntireRow() const {
  std::vector<Rect> rows;
  for (const Rect& area : areas()) rows.push_back(Rect::Rows(area.top, area.bottom));
  return sheet_->RangeOver(std::move(rows));
}

host::Range EmbeddedRange::EntireColumn() const {
  std::vector<Rect> columns;
  for (const Rect& area : areas()) columns.push_back(Rect::Columns(area.left, area.right));
  return sheet_->RangeOver(std::move(columns));
}

host::Range EmbeddedRange::Offset(int rows, int columns) const {
  std::vector<Rect> moved;
  for (const Rect& area : areas()) {
    RequireOnSheet(std::int64_t{area.top} + rows, std::int64_t{area.left} + columns, std::int64_t{area.bottom} + rows,
                   std::int64_t{area.right} + columns);
    moved.push_back({area.top + rows, area.left + columns, area.bottom + rows, area.right + columns});
  }
  return sheet_->RangeOver(std::move(moved));
}

host::Range EmbeddedRange::Resize(int rows, int columns) const {
  const Rect& from = first();
  if (rows < 1 || columns < 1) {
    Refuse("A range cannot have " + std::to_string(rows) + " rows and " + std::to_string(columns) + " columns.");
  }
  RequireOnSheet(from.top, from.left, std::int64_t{from.top} + rows - 1, std::int64_t{from.left} + columns - 1);
  return sheet_->RangeOver(Rect{from.top, from.left, from.top + rows - 1, from.left + columns - 1});
}

host::Range EmbeddedRange::Cells(int row, int column) const {
  const std::int64_t atRow = std::int64_t{first().top} + row - 1;
  const std::int64_t atColumn = std::int64_t{first().left} + column - 1;
  RequireOnSheet(atRow, atColumn, atRow, atColumn);
  return sheet_->RangeOver(Rect::Cell({static_cast<int>(atRow), static_cast<int>(atColumn)}));
}

host::Range EmbeddedRange::End(host::Direction direction) const {
  return sheet_->RangeOver(Rect::Cell(EndOfStretch(cells(), first().topLeft(), direction)));
}

void EmbeddedRange::Select() {
  if (!sheet_->IsInFront()) {
    Refuse("The cells " + sheet_->PlaceOf(first()) + " cannot be selected: their sheet is not the active one.");
  }
  sheet_->Select(areas());
}

void EmbeddedRange::Activate() {
  if (!sheet_->IsInFront()) {
    Refuse("The cell " + sheet_->PlaceOf(first()) + " cannot be activated: its sheet is not the active one.");
  }
  const engine::CellPos cell = first().topLeft();
  const std::vector<Rect>& selection = cells().view.selection;
  const bool isSelected =
      std::any_of(selection.begin(), selection.end(), [cell](const Rect& area) { return area.contains(cell); });
  if (isSelected) {
    sheet_->Select(selection, cell);
  } else {
    sheet_->Select(areas());
  }
}

}  // namespace tolvane::embedded
