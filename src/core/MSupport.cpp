#include "src/core/MSupport.h"

#include <algorithm>

#include "src/core/AppState.h"
#include "src/core/MErrorHandler.h"
#include "src/core/MGlobals.h"
#include "src/core/StringTools.h"

namespace tolvane::accounts {

namespace {

constexpr std::string_view kModule = "MSupport";
constexpr int kBlockCells = 500;

struct Interval {
  int first;
  int last;
};

// Overlapping and touching intervals become one.
void MergeIntervals(std::vector<Interval>& intervals) {
  std::sort(intervals.begin(), intervals.end(), [](const Interval& a, const Interval& b) { return a.first < b.first; });
  std::vector<Interval> merged;
  for (const Interval& interval : intervals) {
    if (!merged.empty() && interval.first <= merged.back().last + 1) {
      merged.back().last = std::max(merged.back().last, interval.last);
    } else {
      merged.push_back(interval);
    }
  }
  intervals = std::move(merged);
}

// The rows that can be seen, by halving what is partly hidden: a few questions for whole stretches, not one a row.
void AddShown(const host::Worksheet& wksSheet, Interval rows, std::vector<Interval>& shown) {
  const auto hidden = wksSheet.Cells(rows.first, 1).Resize(rows.last - rows.first + 1, 1).EntireRow().Hidden();
  if (hidden == true) return;
  if (hidden == false) {
    shown.push_back(rows);
    return;
  }
  const int middle = rows.first + (rows.last - rows.first) / 2;
  AddShown(wksSheet, {rows.first, middle}, shown);
  AddShown(wksSheet, {middle + 1, rows.last}, shown);
}

std::vector<int> Positions(const std::vector<Interval>& intervals, int first) {
  std::vector<int> positions;
  for (const Interval& interval : intervals) {
    for (int at = interval.first; at <= interval.last; ++at) positions.push_back(at - first + 1);
  }
  return positions;
}

bool IsFilled(const host::CellValue& value) {
  return !value.isEmpty() && !(value.isText() && value.text().empty());
}

int LastUsedRowOf(const host::Worksheet& wksSheet, int column, int firstRow, int rowLimit, int lMaxBlanks) {
  int last = firstRow;
  int blanks = 0;
  for (int top = firstRow; top <= rowLimit; top += kBlockCells) {
    const int rows = std::min(kBlockCells, rowLimit - top + 1);
    const host::CellBlock block = wksSheet.Cells(top, column).Resize(rows, 1).Value();
    for (int i = 1; i <= rows; ++i) {
      if (IsFilled(block.at(i, 1))) {
        last = top + i - 1;
        blanks = 0;
      } else if (++blanks > lMaxBlanks) {
        return last;
      }
    }
  }
  return last;
}

}  // namespace

bool bGetSelectedRows(SelectedRows& selected, int lFirstRow, int lLastRow) {
  selected = {};
  return bGuarded(kModule, "bGetSelectedRows", [&] {
    const host::Application app = gxlApp();
    if (!app.Selection().IsRange()) return;
    const host::Range selection = app.Selection().Range();
    if (selection.IsNothing()) return;
    const host::Worksheet sheet = selection.Parent();
    const int lLast = lLastRow == 0 ? sheet.Rows().Count() : lLastRow;
    std::vector<Interval> wanted;
    for (const host::Range& area : selection.Areas()) {
      const int top = area.Row();
      const Interval rows{std::max(lFirstRow, top), std::min(lLast, top + area.Rows().Count() - 1)};
      if (rows.first <= rows.last) wanted.push_back(rows);
    }
    MergeIntervals(wanted);
    std::vector<Interval> shown;
    for (const Interval& rows : wanted) AddShown(sheet, rows, shown);
    MergeIntervals(shown);
    selected.aRows = Positions(shown, lFirstRow);
    std::vector<host::Range> runs;
    for (const Interval& rows : shown) {
      runs.push_back(sheet.Cells(rows.first, 1).Resize(rows.last - rows.first + 1, 1).EntireRow());
    }
    if (!runs.empty()) selected.rngFiltered = app.Union(runs);
  });
}

bool bGetSelectedColumns(SelectedColumns& selected, int lFirstColumn, int lLastColumn) {
  selected = {};
  const bool bSucceeded = bGuarded(kModule, "bGetSelectedColumns", [&] {
    const host::Application app = gxlApp();
    if (!app.Selection().IsRange()) return;
    const host::Range selection = app.Selection().Range();
    if (selection.IsNothing()) return;
    const host::Worksheet sheet = selection.Parent();
    const int lLast = lLastColumn == 0 ? sheet.Columns().Count() : lLastColumn;
    std::vector<Interval> wanted;
    for (const host::Range& area : selection.Areas()) {
      const int left = area.Column();
      const Interval columns{std::max(lFirstColumn, left), std::min(lLast, left + area.Columns().Count() - 1)};
      if (columns.first <= columns.last) wanted.push_back(columns);
    }
    MergeIntervals(wanted);
    selected.aColumns = Positions(wanted, lFirstColumn);
    std::vector<host::Range> runs;
    for (const Interval& columns : wanted) {
      runs.push_back(sheet.Cells(1, columns.first).Resize(1, columns.last - columns.first + 1).EntireColumn());
    }
    if (!runs.empty()) selected.rngOut = app.Union(runs);
    selected.lCount = static_cast<int>(selected.aColumns.size());
  });
  if (!bSucceeded) selected = {.aColumns = {}, .rngOut = {}, .lCount = -1};
  return bSucceeded;
}

bool bDeleteManyRows(std::span<const int> aRows, int lFirstRow, const host::Worksheet& wksSheet) {
  bool bScreen = true;
  bool bScreenSaved = false;
  return bGuarded(kModule, "bDeleteManyRows",
                  [&] {
                    gxlApp().SetStatusBar("Deleting a large number of rows...");
                    SaveScreenUpdating(bScreen);
                    bScreenSaved = true;
                    // From the end, so that the positions in front stay right; a thousand rows in one call between two
                    // looks at the Esc key.
                    std::size_t behind = aRows.size();
                    while (behind > 0) {
                      CheckUserInterrupt(kInterruptDeletion);
                      const std::size_t from = behind > kRowsBetweenPolls ? behind - kRowsBetweenPolls : 0;
                      std::vector<host::RowRun> runs;
                      for (std::size_t i = from; i < behind; ++i) {
                        const int row = lFirstRow + aRows[i] - 1;
                        if (!runs.empty() && runs.back().first + runs.back().count == row) {
                          ++runs.back().count;
                        } else {
                          runs.push_back({row, 1});
                        }
                      }
                      wksSheet.DeleteRows(runs);
                      behind = from;
                    }
                  },
                  {[&] {
                     if (bScreenSaved) RestoreScreenUpdating(bScreen);
                   },
                   [] { gxlApp().SetStatusBar(std::nullopt); }});
}

bool bIsConnected(const host::Workbook& wkb, bool bSilent) {
  const host::Application app = gxlApp();
  app.SetEnableCancelKey(host::CancelKey::Disabled);
  bool bConnected = false;
  Ignoring([&] {
    const host::CellValue answer = app.Run(sQuoted(wkb.Name()) + "!IsConnected");
    bConnected = answer.isBoolean() && answer.boolean();
  });
  if (!bConnected && !bSilent) {
    app.User().MsgBox("Spreadsheet " + wkb.Name() +
                          " appears to be an Tolvane Accounts Book, but it does not respond to macro requests. Please "
                          "ensure that macros are allowed to run in this spreadsheet.",
                      host::message::kCritical, kTitle);
  }
  app.SetEnableCancelKey(host::CancelKey::ErrorHandler);
  return bConnected;
}

int lLastUsedRow(const host::Range& rngColumns, int lMaxBlanks) {
  const host::Worksheet sheet = rngColumns.Parent();
  const int firstRow = rngColumns.Row();
  const int rows = rngColumns.Rows().Count();
  // A single header cell stands for the column below it.
  const int limit = rows > 1 ? firstRow + rows - 1 : sheet.Rows().Count();
  const int firstColumn = rngColumns.Column();
  int last = firstRow;
  for (int column = firstColumn; column < firstColumn + rngColumns.Columns().Count(); ++column) {
    last = std::max(last, LastUsedRowOf(sheet, column, firstRow, limit, lMaxBlanks));
  }
  return last;
}

int lLastUsedColumn(const host::Range& rngRows) {
  const host::Worksheet sheet = rngRows.Parent();
  const int firstColumn = rngRows.Column();
  const int lastColumn = sheet.Columns().Count();
  int last = firstColumn;
  for (int row = rngRows.Row(); row < rngRows.Row() + rngRows.Rows().Count(); ++row) {
    const host::CellBlock block = sheet.Cells(row, firstColumn).Resize(1, lastColumn - firstColumn + 1).Value();
    for (int column = block.columns(); column > last - firstColumn + 1; --column) {
      if (!IsFilled(block.at(1, column))) continue;
      last = firstColumn + column - 1;
      break;
    }
  }
  return last;
}

void ShowRow(const host::Worksheet& wksSheet, int lRow) {
  const host::Application app = gxlApp();
  const host::Worksheet before = app.ActiveSheet();
  if (before != wksSheet) wksSheet.Activate();
  const host::Window window = app.ActiveWindow();
  const host::Range visible = window.VisibleRange();
  if (lRow < visible.Row() || lRow > visible.Row() + visible.Rows().Count() - 1) {
    wksSheet.Cells(lRow, app.ActiveCell().Column()).Select();
  }
  window.SetScrollRow(std::max(window.SplitRow() + 1, lRow - 3));
  if (before != wksSheet) before.Activate();
}

}  // namespace tolvane::accounts
