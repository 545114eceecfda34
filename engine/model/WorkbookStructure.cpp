// The part of Workbook that inserts, deletes and moves cells.
#include <algorithm>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "engine/model/Area.h"
#include "engine/model/FollowChange.h"
#include "engine/model/StructuralChange.h"
#include "engine/model/Workbook.h"

namespace tolvane::engine {

namespace {

void RequireRuns(std::span<const Run> runs, Axis axis) {
  int next = 1;
  for (const Run& run : runs) {
    if (run.count < 1 || run.first < next || run.count > LimitOf(axis) - run.first + 1) {
      throw std::invalid_argument("The rows or columns from " + std::to_string(run.first) + ", " +
                                  std::to_string(run.count) + " of them, do not lie on the sheet or not in order");
    }
    next = run.last() + 1;
  }
}

void RequireOnSheet(const Rect& area, const Sheet& sheet) {
  if (!area.isValid()) throw std::invalid_argument("The cells are not on the sheet " + sheet.name());
}

// `edge`: the cells that lie as near to the end of the grid as is inserted.
void RequireRoom(const Sheet& sheet, const Rect& edge, const RunShift& shift) {
  std::optional<CellPos> lost;
  sheet.cells().ForEachContent(edge, [&](CellPos at, const Value&, const FormulaCell*) {
    if (!lost && !shift.Map(Place{sheet.id(), at})) lost = at;
  });
  if (lost) {
    throw std::invalid_argument("Inserting would push " + sheet.name() + "!" + AddressOf(Rect::Cell(*lost)) +
                                ", which is not empty, off the sheet");
  }
}

// The last so many rows or columns of the grid.
Rect EdgeOf(Axis axis, std::int64_t count) {
  const int limit = LimitOf(axis);
  const int first = static_cast<int>(std::max<std::int64_t>(1, limit - count + 1));
  return axis == Axis::Rows ? Rect::Rows(first, limit) : Rect::Columns(first, limit);
}

void MoveArrayAreas(Sheet& sheet, const StructuralChange& change) {
  sheet.cells().ChangeArrayAreas([&](const Rect& area) {
    const auto mapped = change.Map(SheetArea{sheet.id(), area});
    return mapped ? mapped->area : area;
  });
}

}  // namespace

void Workbook::DeleteRuns(SheetId id, Axis axis, std::span<const Run> runs) {
  Sheet& sheet = RequireSheet(id);
  RequireRuns(runs, axis);
  if (runs.empty()) return;
  const RunShift change = RunShift::Runs(id, axis, AxisShift::Kind::Delete, runs);
  RequireNothingCut(*this, change);
  Follow(*this, change);
  sheet.cells_.DeleteRuns(axis, runs);
  MoveArrayAreas(sheet, change);
  (axis == Axis::Rows ? sheet.rows : sheet.columns).DeleteRuns(runs);
  TellStructureChanged();
}

void Workbook::InsertRuns(SheetId id, Axis axis, std::span<const Run> runs, bool plain) {
  Sheet& sheet = RequireSheet(id);
  RequireRuns(runs, axis);
  if (runs.empty()) return;
  const RunShift change = RunShift::Runs(id, axis, AxisShift::Kind::Insert, runs);
  std::int64_t total = 0;
  for (const Run& run : runs) total += run.count;
  RequireRoom(sheet, EdgeOf(axis, total), change);
  RequireNothingCut(*this, change);
  Follow(*this, change);
  sheet.cells_.InsertRuns(axis, runs);
  MoveArrayAreas(sheet, change);
  (axis == Axis::Rows ? sheet.rows : sheet.columns).InsertRuns(runs, plain);
  const Axis other = axis == Axis::Rows ? Axis::Columns : Axis::Rows;
  if (!plain) sheet.cells_.CarryFormats(axis, runs, {1, LimitOf(other)});
  TellStructureChanged();
}

void Workbook::DeleteCells(SheetId id, const Rect& area, Axis shiftAlong) {
  Sheet& sheet = RequireSheet(id);
  RequireOnSheet(area, sheet);
  const RunShift change = RunShift::Cells(id, area, shiftAlong, AxisShift::Kind::Delete);
  RequireNothingCut(*this, change);
  Follow(*this, change);
  sheet.cells_.DeleteCells(area, shiftAlong);
  MoveArrayAreas(sheet, change);
  TellStructureChanged();
}

void Workbook::InsertCells(SheetId id, const Rect& area, Axis shiftAlong) {
  Sheet& sheet = RequireSheet(id);
  RequireOnSheet(area, sheet);
  const bool rows = shiftAlong == Axis::Rows;
  const RunShift change = RunShift::Cells(id, area, shiftAlong, AxisShift::Kind::Insert);
  const Rect across = rows ? Rect::Columns(area.left, area.right) : Rect::Rows(area.top, area.bottom);
  RequireRoom(sheet, *EdgeOf(shiftAlong, rows ? area.rows() : area.columns()).intersection(across), change);
  RequireNothingCut(*this, change);
  Follow(*this, change);
  sheet.cells_.InsertCells(area, shiftAlong);
  MoveArrayAreas(sheet, change);
  const Run run = rows ? Run{area.top, area.rows()} : Run{area.left, area.columns()};
  sheet.cells_.CarryFormats(shiftAlong, {&run, 1}, rows ? Run{area.left, area.columns()} : Run{area.top, area.rows()});
  TellStructureChanged();
}

namespace {

struct ShownFormat {
  CellPos at;
  FormatId format;
};

// What the cells of a block show that have no format of their own but their row's or column's.
std::vector<ShownFormat> BorrowedFormats(const Sheet& sheet, const Rect& area) {
  std::vector<ShownFormat> formats;
  sheet.cells().ForEachCell(area, [&](CellPos at, const Value&, const FormulaCell*, FormatId own) {
    if (own == 0) formats.push_back({at, sheet.FormatAt(at)});
  });
  return formats;
}

// Whole rows or columns take their sizes and formats along.
void MoveBands(BandTable& from, Run run, BandTable& to, int target) {
  std::vector<BandTable::Stretch> taken;
  from.ForEachStretch(run.first, run.last(), [&](int first, int last, const Band& band) {
    taken.push_back({first, last, band});
  });
  from.Change(run.first, run.last(), [](Band& band) { band = Band{}; });
  for (const BandTable::Stretch& stretch : taken) {
    to.Change(stretch.first - run.first + target, stretch.last - run.first + target,
              [&](Band& band) { band = stretch.band; });
  }
}

}  // namespace

void Workbook::MoveCells(SheetId fromId, const Rect& area, SheetId toId, CellPos target) {
  Sheet& from = RequireSheet(fromId);
  Sheet& to = RequireSheet(toId);
  RequireOnSheet(area, from);
  const Rect there{target.row, target.column, target.row + area.rows() - 1, target.column + area.columns() - 1};
  RequireOnSheet(there, to);
  if (fromId == toId && there == area) return;
  const BlockMove change(fromId, area, toId, target);
  RequireNothingCut(*this, change);
  Follow(*this, change);
  const std::vector<ShownFormat> borrowed = BorrowedFormats(from, area);
  from.cells_.MoveBlock(area, to.cells_, target);
  if (area.isWholeColumns()) MoveBands(from.columns, {area.left, area.columns()}, to.columns, target.column);
  if (area.isWholeRows()) MoveBands(from.rows, {area.top, area.rows()}, to.rows, target.row);
  for (const ShownFormat& shown : borrowed) {
    const CellPos at{shown.at.row - area.top + target.row, shown.at.column - area.left + target.column};
    if (to.FormatAt(at) != shown.format) {
      to.cells_.SetFormat(at, shown.format == kDefaultFormat ? kPlainFormat : shown.format);
    }
  }
  TellStructureChanged();
}

}  // namespace tolvane::engine
