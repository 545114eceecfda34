#pragma once

#include <span>
#include <vector>

#include "src/host/Range.h"
#include "src/host/Workbook.h"
#include "src/host/Worksheet.h"

namespace tolvane::accounts {

// How an Accounts Book behaves as a set of tables: what is selected in them, how their rows are deleted, where they
// end.

// The selected rows of a table, as positions in it from 1, ascending and each once. Hidden rows are left out: what a
// filter hides is not meant.
struct SelectedRows {
  std::vector<int> aRows;
  host::Range rngFiltered;  // the same rows as cells; Nothing without any
  int lCount() const { return static_cast<int>(aRows.size()); }
  // So many that callers warn first and take the road that is meant for many.
  bool bLarge() const { return aRows.size() > 2000; }
};
// `lFirstRow`: the table's first row of data; `lLastRow`: its last, 0 for the sheet's. No rows when the selection is no
// range.
[[nodiscard]] bool bGetSelectedRows(SelectedRows& selected, int lFirstRow, int lLastRow);

// The selected columns of a table, as positions from 1, ascending and each once. -1 as the count: it failed.
struct SelectedColumns {
  std::vector<int> aColumns;
  host::Range rngOut;
  int lCount = 0;
};
[[nodiscard]] bool bGetSelectedColumns(SelectedColumns& selected, int lFirstColumn, int lLastColumn);

// Deletes rows of the sheet, given as ascending positions from `lFirstRow`, neighbours in one go. The user may break it
// off: what is gone stays gone.
[[nodiscard]] bool bDeleteManyRows(std::span<const int> aRows, int lFirstRow, const host::Worksheet& wksSheet);

// Whether the macros of an Accounts Book answer; a book whose macros are off is told of unless `bSilent`.
bool bIsConnected(const host::Workbook& wkb, bool bSilent);

inline constexpr int kMostBlanks = 5;  // blank cells in a row within a table, before it counts as ended
// The last row of a table: the lowest filled cell among the columns of the range, looked for from its row on until more
// than `lMaxBlanks` are blank. The range's row when there is none.
int lLastUsedRow(const host::Range& rngColumns, int lMaxBlanks = kMostBlanks);
// The last filled column among the rows of the range, never left of it.
int lLastUsedColumn(const host::Range& rngRows);

// Scrolls so that a row can be seen, three rows below the top; the sheet in front stays there.
void ShowRow(const host::Worksheet& wksSheet, int lRow);

}  // namespace tolvane::accounts
