// The part of EmbeddedRange that changes the shape of its sheet: inserting and deleting, copying and pasting, merging,
// sorting.
#include <algorithm>
#include <string>
#include <utility>

#include "hosts/embedded/EmbeddedRange.h"
#include "hosts/embedded/Pasting.h"
#include "hosts/embedded/Refusal.h"
#include "hosts/embedded/SheetGuard.h"
#include "hosts/embedded/Sorting.h"

namespace tolvane::embedded {

using engine::Axis;
using engine::Rect;
using engine::Run;

namespace {

// Whole rows or columns of all areas in order.
std::vector<Run> RunsOf(const std::vector<Rect>& areas, Axis axis) {
  std::vector<Run> runs;
  runs.reserve(areas.size());
  for (const Rect& area : areas) {
    runs.push_back(axis == Axis::Rows ? Run{area.top, area.rows()} : Run{area.left, area.columns()});
  }
  std::sort(runs.begin(), runs.end());
  return runs;
}

void RequireApart(const std::vector<Run>& runs) {
  for (std::size_t i = 1; i < runs.size(); ++i) {
    if (runs[i].first <= runs[i - 1].last()) Refuse("The areas overlap; cells cannot be inserted twice.");
  }
}

// Overlapping and touching runs as one each: what is to be deleted is deleted once.
std::vector<Run> Joined(const std::vector<Run>& runs) {
  std::vector<Run> joined;
  for (const Run& run : runs) {
    if (!joined.empty() && run.first <= joined.back().last() + 1) {
      joined.back().count = std::max(joined.back().last(), run.last()) - joined.back().first + 1;
    } else {
      joined.push_back(run);
    }
  }
  return joined;
}

std::optional<Axis> WholeAxis(const std::vector<Rect>& areas) {
  if (std::all_of(areas.begin(), areas.end(), [](const Rect& area) { return area.isWholeRows(); })) return Axis::Rows;
  if (std::all_of(areas.begin(), areas.end(), [](const Rect& area) { return area.isWholeColumns(); })) {
    return Axis::Columns;
  }
  return std::nullopt;
}

// Along which axis the cells give way: as asked for, else by the shape of the first area as Excel does.
Axis ShiftAxis(std::optional<host::Shift> shift, const Rect& first, host::Shift alongRows, host::Shift alongColumns) {
  if (!shift) return first.rows() > first.columns() ? Axis::Columns : Axis::Rows;
  if (*shift == alongRows) return Axis::Rows;
  if (*shift == alongColumns) return Axis::Columns;
  Refuse("Cells cannot be shifted that way here.");
}

// Rows that a filter hides are not copied.
std::vector<Run> ShownRows(const engine::Sheet& sheet, const Run& rows) {
  std::vector<Run> shown;
  sheet.rows.ForEachStretch(rows.first, rows.last(), [&](int first, int last, const engine::Band& band) {
    if (band.filtered) return;
    if (!shown.empty() && shown.back().last() + 1 == first) {
      shown.back().count += last - first + 1;
    } else {
      shown.push_back({first, last - first + 1});
    }
  });
  return shown;
}

// A merge takes in the merges that it touches.
Rect WithTouchedMerges(const engine::Sheet& sheet, Rect area) {
  for (bool grown = true; grown;) {
    grown = false;
    for (const Rect& merge : sheet.merges) {
      if (!merge.intersects(area) || area.contains(merge)) continue;
      area = {std::min(area.top, merge.top), std::min(area.left, merge.left), std::max(area.bottom, merge.bottom),
              std::max(area.right, merge.right)};
      grown = true;
    }
  }
  return area;
}

}  // namespace

void EmbeddedRange::Delete(std::optional<host::Shift> shift) {
  const auto sheet = sheet_;
  const std::vector<Rect> deleted = areas();
  if (const auto whole = WholeAxis(deleted)) {
    sheet->DeleteRuns(*whole, Joined(RunsOf(deleted, *whole)));
    return;
  }
  sheet->DeleteCells(deleted, ShiftAxis(shift, deleted.front(), host::Shift::Up, host::Shift::Left));
}

void EmbeddedRange::Insert(std::optional<host::Shift> shift) {
  const auto sheet = sheet_;
  const std::vector<Rect> places = areas();
  if (const auto whole = WholeAxis(places)) {
    std::vector<Run> runs = RunsOf(places, *whole);
    RequireApart(runs);
    // The areas count in the numbering before.
    int inserted = 0;
    for (Run& run : runs) {
      run.first += inserted;
      inserted += run.count;
    }
    sheet->InsertRuns(*whole, runs);
    return;
  }
  sheet->InsertCells(places, ShiftAxis(shift, places.front(), host::Shift::Down, host::Shift::Right));
}

void EmbeddedRange::PutOnClipboard(host::CutCopyMode mode) {
  Clipboard::Cells copied;
  copied.sheet = sheet_;
  const Rect& one = first();
  const auto sameRows = [&](const Rect& area) { return area.top == one.top && area.bottom == one.bottom; };
  const auto sameColumns = [&](const Rect& area) { return area.left == one.left && area.right == one.right; };
  if (areas().size() > 1 && mode == host::CutCopyMode::Cut) Refuse("Several areas cannot be cut at once.");
  if (std::all_of(areas().begin(), areas().end(), sameColumns)) {
    copied.rows = RunsOf(areas(), Axis::Rows);
    copied.columns = {{one.left, one.columns()}};
  } else if (std::all_of(areas().begin(), areas().end(), sameRows)) {
    copied.rows = {{one.top, one.rows()}};
    copied.columns = RunsOf(areas(), Axis::Columns);
  } else {
    Refuse("Several areas can only be copied at once when they share their rows or their columns.");
  }
  RequireApart(copied.rows);
  RequireApart(copied.columns);
  if (mode == host::CutCopyMode::Copy && cells().autoFilter) {
    std::vector<Run> shown;
    for (const Run& run : copied.rows) {
      const std::vector<Run> part = ShownRows(cells(), run);
      shown.insert(shown.end(), part.begin(), part.end());
    }
    if (!shown.empty()) copied.rows = std::move(shown);
  }
  program().clipboard.Put(std::move(copied), mode);
}

void EmbeddedRange::Copy() {
  PutOnClipboard(host::CutCopyMode::Copy);
}

void EmbeddedRange::Cut() {
  PutOnClipboard(host::CutCopyMode::Cut);
}

void EmbeddedRange::PasteSpecial(host::PasteType type) {
  const auto sheet = sheet_;
  PasteCells(program(), *sheet, std::vector<Rect>(areas()), type);
}

void EmbeddedRange::Merge() {
  const auto sheet = sheet_;
  RequireAllowed(cells(), &engine::SheetProtection::formatCells, "merging cells");
  std::vector<Rect> merged;
  for (const Rect& area : areas()) merged.push_back(WithTouchedMerges(cells(), area));
  RequireUnlocked(cells(), merged);
  for (const Rect& area : merged) RequireWhole(area);
  for (const Rect& area : merged) {
    if (area.isCell()) continue;
    // Only the first cell keeps what it holds, and all take on its look.
    const Rect beside{area.top, area.left + 1, area.top, area.right};
    const Rect below{area.top + 1, area.left, area.bottom, area.right};
    const engine::FormatId format = cells().FormatAt(area.topLeft());
    Refusing([&] {
      for (const Rect& part : {beside, below}) {
        if (!part.isValid()) continue;
        cells().ClearContents(part);
        cells().ChangeFormat(part, [format](engine::FormatId) {
          return format == engine::kPlainFormat ? engine::kDefaultFormat : format;
        });
      }
    });
    std::erase_if(cells().merges, [&](const Rect& merge) { return merge.intersects(area); });
    cells().merges.push_back(area);
  }
  program().BookEdited(sheet->book());
}

void EmbeddedRange::UnMerge() {
  RequireAllowed(cells(), &engine::SheetProtection::formatCells, "splitting merged cells");
  for (const Rect& area : areas()) {
    std::erase_if(cells().merges, [&](const Rect& merge) { return merge.intersects(area); });
  }
  program().BookEdited(sheet_->book());
}

std::optional<bool> EmbeddedRange::MergeCells() const {
  std::int64_t merged = 0;
  for (const Rect& area : areas()) {
    for (const Rect& merge : cells().merges) {
      if (const auto both = merge.intersection(area)) merged += both->cells();
    }
  }
  if (merged == 0) return false;
  if (merged == Count()) return true;
  return std::nullopt;
}

void EmbeddedRange::Sort(const host::SortKey& key) {
  if (areas().size() > 1) Refuse("Several areas cannot be sorted at once.");
  SortRows(*sheet_, first(), key);
}

}  // namespace tolvane::embedded
