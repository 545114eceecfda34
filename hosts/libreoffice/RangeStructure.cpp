// The part of CalcRange that changes the shape of its sheet: inserting and deleting, merging, sorting.
#include <algorithm>
#include <com/sun/star/table/TableSortField.hpp>
#include <com/sun/star/util/XSortable.hpp>
#include <utility>

#include "hosts/libreoffice/CalcRange.h"
#include "hosts/libreoffice/Merges.h"
#include "hosts/libreoffice/SheetGuard.h"

namespace tolvane::libreoffice {

namespace {

using Runs = std::vector<host::RowRun>;

int Last(const host::RowRun& run) {
  return run.first + run.count - 1;
}

// Whole rows or columns of all areas in order.
Runs RunsOf(const Rects& areas, bool rows) {
  Runs runs;
  for (const Rect& area : areas) {
    runs.push_back(rows ? host::RowRun{area.top, area.rows()} : host::RowRun{area.left, area.columns()});
  }
  std::sort(runs.begin(), runs.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  return runs;
}

// Overlapping and touching runs as one each: what is to be deleted is deleted once.
Runs Joined(const Runs& runs) {
  Runs joined;
  for (const host::RowRun& run : runs) {
    if (!joined.empty() && run.first <= Last(joined.back()) + 1) {
      joined.back().count = std::max(Last(joined.back()), Last(run)) - joined.back().first + 1;
    } else {
      joined.push_back(run);
    }
  }
  return joined;
}

// Whether all areas are whole rows (true) or whole columns (false).
std::optional<bool> WholeRows(const Rects& areas) {
  if (std::all_of(areas.begin(), areas.end(), [](const Rect& area) { return area.isWholeRows(); })) return true;
  if (std::all_of(areas.begin(), areas.end(), [](const Rect& area) { return area.isWholeColumns(); })) return false;
  return std::nullopt;
}

// Whether cells give way along the rows: as asked for, else by the shape of the first area as Excel does.
bool AlongRows(std::optional<host::Shift> shift, const Rect& first, host::Shift rows, host::Shift columns) {
  if (!shift) return first.rows() <= first.columns();
  if (*shift == rows) return true;
  if (*shift == columns) return false;
  Refuse("Cells cannot be shifted that way here.");
}

}  // namespace

void CalcRange::Delete(std::optional<host::Shift> shift) {
  const Rects deleted = areas();
  const auto sheet = sheet_;
  if (const auto rows = WholeRows(deleted)) {
    sheet->DeleteRuns(*rows, Joined(RunsOf(deleted, *rows)));
    return;
  }
  sheet->DeleteCells(deleted, AlongRows(shift, deleted.front(), host::Shift::Up, host::Shift::Left));
}

void CalcRange::Insert(std::optional<host::Shift> shift) {
  const Rects places = areas();
  const auto sheet = sheet_;
  if (const auto rows = WholeRows(places)) {
    Runs runs = RunsOf(places, *rows);
    for (std::size_t i = 1; i < runs.size(); ++i) {
      if (runs[i].first <= Last(runs[i - 1])) Refuse("The areas overlap; cells cannot be inserted twice.");
    }
    int inserted = 0;  // the areas count in the numbering before
    for (host::RowRun& run : runs) {
      run.first += inserted;
      inserted += run.count;
    }
    sheet->InsertRuns(*rows, runs);
    return;
  }
  sheet->InsertCells(places, AlongRows(shift, places.front(), host::Shift::Down, host::Shift::Right));
}

void CalcRange::Merge() {
  const Rects all = areas();
  RequireAllowed(*sheet_, &host::Protection::allowFormattingCells, "merging cells");
  Rects merged;
  for (const Rect& area : all) merged.push_back(WithTouchedMerges(*sheet_, area));
  RequireUnlocked(*sheet_, merged);
  {
    const CalcProgram::OwnEdit edit(program());
    const ProtectionLifted lifted(*sheet_);
    for (const Rect& area : merged) {
      libreoffice::MergeCells(*sheet_, area, false);
      if (area.count() == 1) continue;
      libreoffice::MergeCells(*sheet_, area, true);
      ClearCovered(*sheet_, area);
    }
  }
  program().BookEdited(book());
}

void CalcRange::UnMerge() {
  const Rects all = areas();
  RequireAllowed(*sheet_, &host::Protection::allowFormattingCells, "splitting merged cells");
  {
    const CalcProgram::OwnEdit edit(program());
    const ProtectionLifted lifted(*sheet_);
    for (const Rect& area : all) libreoffice::MergeCells(*sheet_, WithTouchedMerges(*sheet_, area), false);
  }
  program().BookEdited(book());
}

std::optional<bool> CalcRange::MergeCells() const {
  const Rects all = areas();
  std::int64_t merged = 0;
  for (const Rect& area : all) {
    for (const Rect& merge : MergesAt(*sheet_, area)) merged += merge.intersection(area).count();
  }
  if (merged == 0) return false;
  if (merged == Count()) return true;
  return std::nullopt;
}

void CalcRange::Sort(const host::SortKey& key) {
  const Rects all = areas();
  if (all.size() > 1) Refuse("Several areas cannot be sorted at once.");
  const auto sheet = sheet_;
  Rect area = all.front();
  const Rect used = sheet->UsedArea();
  if (key.column < 1 || key.column > area.columns()) {
    Refuse("The cells " + sheet->PlaceOf(area) + " have no column " + std::to_string(key.column) + " to sort by.");
  }
  RequireAllowed(*sheet, &host::Protection::allowSorting, "sorting");
  Rect body = area;
  if (key.hasHeader) ++body.top;
  if (body.top > body.bottom) return;
  RequireUnlocked(*sheet, {body});
  if (!area.intersects(used)) return;
  area.bottom = std::min(area.bottom, used.bottom);
  {
    const CalcProgram::OwnEdit edit(program());
    const ProtectionLifted lifted(*sheet);
    AtEdge([&] {
      css::table::TableSortField field;
      field.Field = key.column - 1;
      field.IsAscending = key.order == host::SortOrder::Ascending;
      field.IsCaseSensitive = false;
      const Sequence<css::table::TableSortField> fields(&field, 1);
      As<css::util::XSortable>(sheet->Cells(area))
          ->sort(ToSequence({{"SortFields", Any(fields)},
                             {"ContainsHeader", Any(key.hasHeader)},
                             {"IsSortColumns", Any(false)},
                             {"BindFormatsToContent", Any(true)}}));
    });
  }
  sheet->program().CellsEdited(*sheet, {body});
}

}  // namespace tolvane::libreoffice
