// The part of CalcWorksheet that inserts and deletes cells.
#include <algorithm>
#include <com/sun/star/sheet/CellDeleteMode.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/CellInsertMode.hpp>
#include <com/sun/star/sheet/ValidationType.hpp>
#include <com/sun/star/sheet/XCalculatable.hpp>
#include <com/sun/star/sheet/XCellRangeMovement.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <com/sun/star/table/XTableColumns.hpp>
#include <com/sun/star/table/XTableRows.hpp>

#include "hosts/libreoffice/CalcRange.h"
#include "hosts/libreoffice/CalcWorksheet.h"
#include "hosts/libreoffice/Merges.h"
#include "hosts/libreoffice/SheetGuard.h"
#include "hosts/libreoffice/WithoutUndo.h"

namespace tolvane::libreoffice {

namespace {

int LimitOf(bool rows) {
  return rows ? kMaxRow : kMaxColumn;
}

void RequireRuns(bool rows, std::span<const host::RowRun> runs) {
  const std::string what = rows ? "rows" : "columns";
  int last = 0;
  for (const host::RowRun& run : runs) {
    if (run.count < 1 || run.first < 1 || run.count > LimitOf(rows) || run.first > LimitOf(rows) - run.count + 1) {
      Refuse("A sheet has no " + what + " " + std::to_string(run.first) + " and " + std::to_string(run.count - 1) +
             " further ones.");
    }
    if (run.first <= last) Refuse("The runs of " + what + " must be in ascending order and apart.");
    last = run.first + run.count - 1;
  }
}

Rects AreasOf(bool rows, std::span<const host::RowRun> runs) {
  Rects areas;
  for (const host::RowRun& run : runs) {
    const int last = run.first + run.count - 1;
    areas.push_back(rows ? Rect{run.first, 1, last, kMaxColumn} : Rect{1, run.first, kMaxRow, last});
  }
  return areas;
}

// Many changes of the shape are one to whoever looks: Calc neither paints nor calculates in between.
class AllAtOnce {
 public:
  explicit AllAtOnce(const CalcWorkbook& book)
      : withoutUndo_(book), model_(book.model()), calculatable_(book.model(), UNO_QUERY_THROW) {
    model_->lockControllers();
    automatic_ = calculatable_->isAutomaticCalculationEnabled();
    calculatable_->enableAutomaticCalculation(false);
  }
  ~AllAtOnce() {
    try {
      calculatable_->enableAutomaticCalculation(automatic_);
      model_->unlockControllers();
    } catch (const css::uno::Exception&) {
      // The document is gone; so are its views.
    }
  }
  AllAtOnce(const AllAtOnce&) = delete;
  AllAtOnce& operator=(const AllAtOnce&) = delete;

 private:
  WithoutUndo withoutUndo_;
  Reference<css::frame::XModel> model_;
  Reference<css::sheet::XCalculatable> calculatable_;
  bool automatic_ = true;
};

// Cells that close a gap or make room do so one after the other; from the far end on, none moves another.
Rects FromFarEnd(Rects areas, bool alongRows) {
  for (std::size_t i = 0; i < areas.size(); ++i) {
    for (std::size_t j = i + 1; j < areas.size(); ++j) {
      if (areas[i].intersects(areas[j])) Refuse("The areas overlap; cells cannot be inserted or deleted twice.");
    }
  }
  std::sort(areas.begin(), areas.end(),
            [alongRows](const Rect& a, const Rect& b) { return alongRows ? a.top > b.top : a.left > b.left; });
  return areas;
}

// Whether nothing would be pushed off the sheet.
void RequireEmpty(const CalcWorksheet& sheet, const Rect& end) {
  namespace flags = css::sheet::CellFlags;
  const Rect used = sheet.UsedArea();
  if (!end.intersects(used)) return;
  const auto contents = AtEdge([&] {
    return As<css::sheet::XCellRangesQuery>(sheet.Cells(end.intersection(used)))
        ->queryContentCells(flags::VALUE | flags::DATETIME | flags::STRING | flags::FORMULA)
        ->getRangeAddresses();
  });
  if (!contents.hasElements()) return;
  Refuse("Inserting would push the contents of " + sheet.PlaceOf(ToRect(contents[0])) + " off the sheet.");
}

// Cells can only be shifted where no merge reaches out of the strip that is shifted.
void RequireWholeMerges(const CalcWorksheet& sheet, const Rect& area, bool alongRows) {
  const Rect strip =
      alongRows ? Rect{area.top, area.left, kMaxRow, area.right} : Rect{area.top, area.left, area.bottom, kMaxColumn};
  for (const Rect& merge : MergesAt(sheet, strip)) {
    if (!strip.contains(merge)) Refuse("The merged cells " + sheet.PlaceOf(merge) + " cannot be shifted in part.");
  }
}

// New cells take on the look of their neighbours, which is to say their validation, too, in Calc.
void EndValidation(const CalcWorksheet& sheet, const Rects& areas) {
  AtEdge([&] {
    const auto cells = Collect(sheet, areas);
    const Reference<css::uno::XInterface> rule(GetAny(cells, "Validation"), UNO_QUERY);
    const auto none = css::sheet::ValidationType_ANY;
    if (!MayDiffer(cells, "Validation") && Get(rule, "Type", none) == none) return;
    Set(rule, "Type", none);
    SetAny(cells, "Validation", Any(rule));
  });
}

// New columns are as wide as the one beside them.
void TakeWidth(const CalcWorksheet& sheet, const host::RowRun& run) {
  const auto width = [&](int first, int last) {
    return As<css::table::XColumnRowRange>(sheet.Cells({1, first, 1, last}))->getColumns();
  };
  Set(width(run.first, run.first + run.count - 1), "Width",
      Get<sal_Int32>(width(run.first - 1, run.first - 1), "Width"));
}

// What is left of the merges that lose their first row or column, where they will be; Calc would split these.
Rects CutMerges(const CalcWorksheet& sheet, bool rows, std::span<const host::RowRun> runs) {
  Rects cut;
  const auto remaining = [&](int first, int last) {  // of an interval, and how many before it go
    int before = 0, within = 0;
    for (const host::RowRun& run : runs) {
      const int end = run.first + run.count - 1;
      before += std::max(0, std::min(end, first - 1) - run.first + 1);
      within += std::max(0, std::min(end, last) - std::max(run.first, first) + 1);
    }
    return std::pair(before, last - first + 1 - within);
  };
  const Rect touched = rows ? Rect{runs.front().first, 1, runs.back().first + runs.back().count - 1, kMaxColumn}
                            : Rect{1, runs.front().first, kMaxRow, runs.back().first + runs.back().count - 1};
  for (const Rect& merge : MergesAt(sheet, touched)) {
    const int first = rows ? merge.top : merge.left;
    const bool losesFirst = std::any_of(runs.begin(), runs.end(), [first](const host::RowRun& run) {
      return run.first <= first && first < run.first + run.count;
    });
    const auto [before, size] = remaining(first, rows ? merge.bottom : merge.right);
    if (!losesFirst || size < 1) continue;
    Rect left = merge;
    (rows ? left.top : left.left) = first - before;
    (rows ? left.bottom : left.right) = first - before + size - 1;
    if (left.count() > 1) cut.push_back(left);
  }
  return cut;
}

}  // namespace

void CalcWorksheet::DeleteRuns(bool rows, std::span<const host::RowRun> runs) {
  if (runs.empty()) return;
  RequireRuns(rows, runs);
  const Rects areas = AreasOf(rows, runs);
  if (rows) {
    RequireAllowed(*this, &host::Protection::allowDeletingRows, "deleting rows");
  } else {
    RequireAllowed(*this, &host::Protection::allowDeletingColumns, "deleting columns");
  }
  RequireUnlocked(*this, areas);
  {
    const CalcProgram::OwnEdit edit(*program_);
    const ProtectionLifted lifted(*this);
    AtEdge([&] {
      const AllAtOnce once(book());
      const auto bands = As<css::table::XColumnRowRange>(object());
      const Rects cut = CutMerges(*this, rows, runs);
      for (auto run = runs.rbegin(); run != runs.rend(); ++run) {
        if (rows) {
          bands->getRows()->removeByIndex(run->first - 1, run->count);
        } else {
          bands->getColumns()->removeByIndex(run->first - 1, run->count);
        }
      }
      for (const Rect& merge : cut) MergeCells(*this, merge, true);
    });
  }
  program_->CellsEdited(*this, areas);
}

void CalcWorksheet::InsertRuns(bool rows, std::span<const host::RowRun> runs) {
  if (runs.empty()) return;
  RequireRuns(rows, runs);
  if (rows) {
    RequireAllowed(*this, &host::Protection::allowInsertingRows, "inserting rows");
  } else {
    RequireAllowed(*this, &host::Protection::allowInsertingColumns, "inserting columns");
  }
  int inserted = 0;
  for (const host::RowRun& run : runs) inserted += run.count;
  const int keep = LimitOf(rows) - inserted;
  RequireEmpty(*this, rows ? Rect{keep + 1, 1, kMaxRow, kMaxColumn} : Rect{1, keep + 1, kMaxRow, kMaxColumn});
  const Rects areas = AreasOf(rows, runs);
  {
    const CalcProgram::OwnEdit edit(*program_);
    const ProtectionLifted lifted(*this);
    AtEdge([&] {
      const AllAtOnce once(book());
      const auto bands = As<css::table::XColumnRowRange>(object());
      for (const host::RowRun& run : runs) {
        if (rows) {
          bands->getRows()->insertByIndex(run.first - 1, run.count);
        } else {
          bands->getColumns()->insertByIndex(run.first - 1, run.count);
          if (run.first > 1) TakeWidth(*this, run);
        }
      }
    });
    EndValidation(*this, areas);
  }
  program_->CellsEdited(*this, areas);
}

void CalcWorksheet::DeleteCells(const Rects& areas, bool up) {
  const Rects ordered = FromFarEnd(areas, up);
  RequireUnprotected(*this, "deleting cells");
  for (const Rect& area : areas) RequireWholeMerges(*this, area, up);
  {
    const CalcProgram::OwnEdit edit(*program_);
    AtEdge([&] {
      const auto movement = As<css::sheet::XCellRangeMovement>(object());
      for (const Rect& area : ordered) {
        movement->removeRange(ToAddress(area, index()),
                              up ? css::sheet::CellDeleteMode_UP : css::sheet::CellDeleteMode_LEFT);
      }
    });
  }
  program_->CellsEdited(*this, areas);
}

void CalcWorksheet::InsertCells(const Rects& areas, bool down) {
  const Rects ordered = FromFarEnd(areas, down);
  RequireUnprotected(*this, "inserting cells");
  for (const Rect& area : areas) {
    RequireWholeMerges(*this, area, down);
    RequireEmpty(*this, down ? Rect{kMaxRow - area.rows() + 1, area.left, kMaxRow, area.right}
                             : Rect{area.top, kMaxColumn - area.columns() + 1, area.bottom, kMaxColumn});
  }
  {
    const CalcProgram::OwnEdit edit(*program_);
    AtEdge([&] {
      const auto movement = As<css::sheet::XCellRangeMovement>(object());
      for (const Rect& area : ordered) {
        movement->insertCells(ToAddress(area, index()),
                              down ? css::sheet::CellInsertMode_DOWN : css::sheet::CellInsertMode_RIGHT);
      }
    });
    EndValidation(*this, areas);
  }
  program_->CellsEdited(*this, areas);
}

}  // namespace tolvane::libreoffice
