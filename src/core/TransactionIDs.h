#pragma once

#include <string>

namespace tolvane::accounts {

// Ids of rows that did not come from a bank: "M" (on a data sheet) or "A" (an adjustment), the date, and a counter of
// that day: M20090315000123. The book keeps the counter on its technical sheet.

// The counter to go on with for rows of that date: the stored one, unless the date is later than the stored date; then
// it begins again at 0.
int lNextIDCounter(int lDate);
// Stores the counter and its date, once at the end of a batch. The technical sheet stays unprotected.
void SetIDCounter(int lCounter, int lDate);
// The id with this counter, which goes up by one.
std::string sMakeID(int lDate, int& lCounter, bool bAdjustment);

}  // namespace tolvane::accounts
