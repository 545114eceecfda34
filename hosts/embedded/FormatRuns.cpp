#include "hosts/embedded/FormatRuns.h"

#include <vector>

namespace tolvane::embedded {

using engine::CellPos;
using engine::FormatId;
using engine::Rect;

namespace {

struct OwnRun {
  int column;
  int top;
  int bottom;
  FormatId format;
};

// The stretches of a column's cells that have a format of their own, column by column and downward.
std::vector<OwnRun> OwnRuns(const engine::Sheet& sheet, const Rect& area) {
  std::vector<OwnRun> runs;
  sheet.cells().ForEachCell(area, [&](CellPos at, const engine::Value&, const engine::FormulaCell*, FormatId format) {
    if (format == 0) return;
    if (!runs.empty()) {
      OwnRun& last = runs.back();
      if (last.column == at.column && last.bottom + 1 == at.row && last.format == format) {
        last.bottom = at.row;
        return;
      }
    }
    runs.push_back({at.column, at.row, at.row, format});
  });
  return runs;
}

FormatId Plain(FormatId format) {
  return format == engine::kPlainFormat ? engine::kDefaultFormat : format;
}

}  // namespace

void ForEachFormatRun(const engine::Sheet& sheet, const Rect& area,
                      const std::function<void(const Rect&, FormatId)>& visit) {
  // Cells without a format of their own: the row's, else the column's.
  const auto visitBare = [&](const Rect& bare) {
    if (bare.top > bare.bottom || bare.left > bare.right) return;
    sheet.rows.ForEachStretch(bare.top, bare.bottom, [&](int top, int bottom, const engine::Band& row) {
      if (row.format != 0) {
        visit({top, bare.left, bottom, bare.right}, Plain(row.format));
        return;
      }
      sheet.columns.ForEachStretch(bare.left, bare.right, [&](int left, int right, const engine::Band& column) {
        visit({top, left, bottom, right}, Plain(column.format));
      });
    });
  };
  int nextColumn = area.left;  // columns before it are done
  int nextRow = area.top;      // in the column of the last run, rows above it are done
  for (const OwnRun& run : OwnRuns(sheet, area)) {
    if (run.column >= nextColumn) {
      if (nextRow > area.top) {  // finish the column of the run before
        visitBare({nextRow, nextColumn - 1, area.bottom, nextColumn - 1});
      }
      visitBare({area.top, nextColumn, area.bottom, run.column - 1});
      nextColumn = run.column + 1;
      nextRow = area.top;
    }
    visitBare({nextRow, run.column, run.top - 1, run.column});
    visit({run.top, run.column, run.bottom, run.column}, Plain(run.format));
    nextRow = run.bottom + 1;
  }
  if (nextRow > area.top) visitBare({nextRow, nextColumn - 1, area.bottom, nextColumn - 1});
  visitBare({area.top, nextColumn, area.bottom, area.right});
}

}  // namespace tolvane::embedded
