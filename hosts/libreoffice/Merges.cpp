#include "hosts/libreoffice/Merges.h"

#include <algorithm>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XSheetCellCursor.hpp>
#include <com/sun/star/util/XMergeable.hpp>

#include "hosts/libreoffice/CellWriting.h"
#include "hosts/libreoffice/FormatRuns.h"

namespace tolvane::libreoffice {

Rect WithTouchedMerges(const CalcWorksheet& sheet, const Rect& area) {
  return AtEdge([&] {
    const Reference<css::sheet::XSheetCellRange> range(sheet.Cells(area), UNO_QUERY_THROW);
    const auto cursor = sheet.object()->createCursorByRange(range);
    cursor->collapseToMergedArea();
    return ToRect(As<css::sheet::XCellRangeAddressable>(cursor)->getRangeAddress());
  });
}

Rects MergesAt(const CalcWorksheet& sheet, const Rect& area) {
  const Rect whole = WithTouchedMerges(sheet, area);
  Rects merges;
  AtEdge([&] {
    const auto isMerged = [&](const Rect& rect) {
      return bool(As<css::util::XMergeable>(sheet.Cells(rect))->getIsMerged());
    };
    if (!isMerged(whole)) return;
    // Cells that begin a merge look different from all but those that begin one of the same size.
    ForEachFormatRun(sheet, whole, [&](const Rect& run, const Reference<css::uno::XInterface>&) {
      if (!isMerged(run)) return;
      for (int row = run.top; row <= run.bottom; ++row) {
        for (int column = run.left; column <= run.right; ++column) {
          const Rect merge = WithTouchedMerges(sheet, {row, column, row, column});
          if (merge.count() > 1 && merge.intersects(area) &&
              std::find(merges.begin(), merges.end(), merge) == merges.end()) {
            merges.push_back(merge);
          }
        }
      }
    });
  });
  return merges;
}

void MergeCells(const CalcWorksheet& sheet, const Rect& area, bool merged) {
  AtEdge([&] { As<css::util::XMergeable>(sheet.Cells(area))->merge(merged); });
}

void ClearCovered(CalcWorksheet& sheet, const Rect& area) {
  for (const Rect& merge : MergesAt(sheet, area)) {
    const Rect beside{merge.top, merge.left + 1, merge.top, merge.right};
    const Rect below{merge.top + 1, merge.left, merge.bottom, merge.right};
    for (const Rect& part : {beside, below}) {
      if (part.isValid() && part.intersects(area)) ClearCells(sheet, part.intersection(area));
    }
  }
}

}  // namespace tolvane::libreoffice
