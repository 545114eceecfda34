// The part of EmbeddedWorksheet that inserts, deletes and moves cells.
#include <algorithm>
#include <iterator>
#include <map>
#include <utility>

#include "engine/model/FollowChange.h"
#include "hosts/embedded/EmbeddedWorksheet.h"
#include "hosts/embedded/Refusal.h"
#include "hosts/embedded/SheetGuard.h"
#include "src/host/Range.h"

namespace tolvane::embedded {

using engine::Axis;
using engine::Rect;
using engine::Run;

namespace {

std::vector<Rect> AreasOf(Axis axis, std::span<const Run> runs) {
  std::vector<Rect> areas;
  areas.reserve(runs.size());
  for (const Run& run : runs) {
    areas.push_back(axis == Axis::Rows ? Rect::Rows(run.first, run.last()) : Rect::Columns(run.first, run.last()));
  }
  return areas;
}

void RequireRuns(Axis axis, std::span<const Run> runs) {
  const std::string what = axis == Axis::Rows ? "rows" : "columns";
  int last = 0;
  for (const Run& run : runs) {
    if (run.count < 1 || run.first < 1 || run.count > engine::LimitOf(axis) ||
        run.first > engine::LimitOf(axis) - run.count + 1) {
      Refuse("A sheet has no " + what + " " + std::to_string(run.first) + " and " + std::to_string(run.count - 1) +
             " further ones.");
    }
    if (run.first <= last) Refuse("The runs of " + what + " must be in ascending order and apart.");
    last = run.last();
  }
}

// Several areas change one after the other; what would stop a later one is looked for before the first.
void RequirePossible(const engine::Sheet& sheet, const std::vector<Rect>& areas, Axis shiftAlong,
                     engine::AxisShift::Kind kind) {
  if (areas.size() == 1) return;  // the engine looks itself
  std::int64_t moved = 0;
  for (const Rect& area : areas) {
    Refusing(
        [&] { engine::RequireNothingCut(sheet.book(), engine::RunShift::Cells(sheet.id(), area, shiftAlong, kind)); });
    moved += shiftAlong == Axis::Rows ? area.rows() : area.columns();
  }
  const auto used = sheet.UsedContents();
  if (kind == engine::AxisShift::Kind::Delete || !used) return;
  const int last = shiftAlong == Axis::Rows ? used->bottom : used->right;
  if (last + moved > engine::LimitOf(shiftAlong)) Refuse("The cells to be moved would leave the sheet.");
}

std::vector<Run> ToRuns(std::span<const host::RowRun> rows) {
  std::vector<Run> runs;
  runs.reserve(rows.size());
  for (const host::RowRun& run : rows) runs.push_back({run.first, run.count});
  return runs;
}

// A line that moves down the sheet over the areas, and knows those that it cuts by their columns.
void RequireNoOverlap(std::vector<Rect> areas) {
  std::sort(areas.begin(), areas.end());
  std::map<int, Rect> cut;       // by their left column; apart from each other
  std::multimap<int, int> ends;  // bottom row to left column
  for (const Rect& area : areas) {
    while (!ends.empty() && ends.begin()->first < area.top) {
      cut.erase(ends.begin()->second);
      ends.erase(ends.begin());
    }
    const auto right = cut.lower_bound(area.left);
    const bool meetsRight = right != cut.end() && right->second.left <= area.right;
    const bool meetsLeft = right != cut.begin() && std::prev(right)->second.right >= area.left;
    if (meetsRight || meetsLeft) Refuse("The areas overlap; cells cannot be inserted or deleted twice.");
    cut.emplace(area.left, area);
    ends.emplace(area.bottom, area.left);
  }
}

// Cells that close a gap or make room do so one after the other; from the far end on, none moves another.
std::vector<Rect> FromFarEnd(std::vector<Rect> areas, Axis shiftAlong) {
  RequireNoOverlap(areas);
  std::sort(areas.begin(), areas.end(), [shiftAlong](const Rect& a, const Rect& b) {
    return shiftAlong == Axis::Rows ? a.top > b.top : a.left > b.left;
  });
  return areas;
}

}  // namespace

void EmbeddedWorksheet::DeleteRuns(Axis axis, std::span<const Run> runs) {
  if (runs.empty()) return;
  RequireRuns(axis, runs);
  const std::vector<Rect> areas = AreasOf(axis, runs);
  if (axis == Axis::Rows) {
    RequireAllowed(*sheet_, &engine::SheetProtection::deleteRows, "deleting rows");
  } else {
    RequireAllowed(*sheet_, &engine::SheetProtection::deleteColumns, "deleting columns");
  }
  RequireUnlocked(*sheet_, areas);
  Refusing([&] { book_->book().DeleteRuns(sheet_->id(), axis, runs); });
  tracker_.DeleteRuns(axis, runs);
  program_->CellsEdited(*this, areas);
}

void EmbeddedWorksheet::InsertRuns(Axis axis, std::span<const Run> runs) {
  if (runs.empty()) return;
  RequireRuns(axis, runs);
  if (axis == Axis::Rows) {
    RequireAllowed(*sheet_, &engine::SheetProtection::insertRows, "inserting rows");
  } else {
    RequireAllowed(*sheet_, &engine::SheetProtection::insertColumns, "inserting columns");
  }
  Refusing([&] { book_->book().InsertRuns(sheet_->id(), axis, runs); });
  tracker_.InsertRuns(axis, runs);
  program_->CellsEdited(*this, AreasOf(axis, runs));
}

void EmbeddedWorksheet::DeleteCells(const std::vector<Rect>& areas, Axis shiftAlong) {
  const std::vector<Rect> ordered = FromFarEnd(areas, shiftAlong);
  RequireUnprotected(*sheet_, "deleting cells");
  RequirePossible(*sheet_, ordered, shiftAlong, engine::AxisShift::Kind::Delete);
  for (const Rect& area : ordered) {
    Refusing([&] { book_->book().DeleteCells(sheet_->id(), area, shiftAlong); });
    tracker_.DeleteCells(area, shiftAlong);
  }
  program_->CellsEdited(*this, areas);
}

void EmbeddedWorksheet::InsertCells(const std::vector<Rect>& areas, Axis shiftAlong) {
  const std::vector<Rect> ordered = FromFarEnd(areas, shiftAlong);
  RequireUnprotected(*sheet_, "inserting cells");
  RequirePossible(*sheet_, ordered, shiftAlong, engine::AxisShift::Kind::Insert);
  for (const Rect& area : ordered) {
    Refusing([&] { book_->book().InsertCells(sheet_->id(), area, shiftAlong); });
    tracker_.InsertCells(area, shiftAlong);
  }
  program_->CellsEdited(*this, areas);
}

void EmbeddedWorksheet::MoveCells(const Rect& area, EmbeddedWorksheet& to, engine::CellPos target) {
  const Rect moved{target.row, target.column, target.row + area.rows() - 1, target.column + area.columns() - 1};
  if (!moved.isValid()) Refuse("The cells " + PlaceOf(area) + " do not fit on the sheet at the place to paste them.");
  RequireUnlocked(*sheet_, {area});
  RequireUnlocked(to.sheet(), {moved});
  Refusing([&] { book_->book().MoveCells(sheet_->id(), area, to.sheet().id(), target); });
  tracker_.MoveCells(area, to, target);
  const auto receiver = to.Self();
  if (this != &to) {
    program_->CellsEdited(*this, {area});
    if (receiver->IsAlive()) program_->CellsEdited(*receiver, {moved});
  } else {
    program_->CellsEdited(*this, {area, moved});
  }
}

void EmbeddedWorksheet::DeleteRows(std::span<const host::RowRun> runs) {
  DeleteRuns(Axis::Rows, ToRuns(runs));
}

void EmbeddedWorksheet::InsertRows(std::span<const host::RowRun> runs) {
  InsertRuns(Axis::Rows, ToRuns(runs));
}

}  // namespace tolvane::embedded
