#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "src/host/CellValue.h"

namespace tolvane::accounts {

// How a value of a cell becomes a typed value, and back. None of this ever fails: a stray text in a column of amounts
// reads as 0 instead of stopping a run.

// What stands for a blank cell, so that a blank one stays blank and a 0 stays 0 when a table is written back.
inline constexpr int kBlankLong = -999999997;  // dates, months, counts
inline constexpr double kBlankAmount = -999999997.99;

// Empty for an error or a blank cell; numbers with a point and no grouping, as short as they read back the same.
std::string sCellText(const host::CellValue& vCell);
// 0 for an error and for a text that is no number; a blank cell gives the sentinel if that is asked for, else 0.
double dCellAmount(const host::CellValue& vCell, bool bBlankSentinel);
// The same for whole numbers, rounded half to even.
int lCellLong(const host::CellValue& vCell, bool bBlankSentinel);

host::CellValue vAmountCell(double dValue);          // blank for the sentinel
host::CellValue vTextCell(std::string_view sValue);  // blank for the empty text
host::CellValue vLongCell(int lValue);               // blank for the sentinel

// A number as text, as sCellText gives it.
std::string sNumberText(double dValue);

// Rounded to two places, half to even: of amounts that are compared or summed for a cell.
double dRoundAmount(double dValue);

}  // namespace tolvane::accounts
