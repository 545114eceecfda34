#include "src/core/TransactionIDs.h"

#include <fmt/format.h>

#include "src/core/CellConversions.h"
#include "src/core/Dates.h"
#include "src/core/MGlobals.h"

namespace tolvane::accounts {

int lNextIDCounter(int lDate) {
  const host::Worksheet& technical = Globals().gwksTechnical;
  if (lCellLong(technical.Range("techIDDate").Value().single(), false) >= lDate) {
    return lCellLong(technical.Range("techIDCounter").Value().single(), false);
  }
  SetIDCounter(0, lDate);
  return 0;
}

void SetIDCounter(int lCounter, int lDate) {
  const host::Worksheet& technical = Globals().gwksTechnical;
  if (technical.ProtectContents()) technical.Unprotect();
  technical.Range("techIDCounter").SetValue(lCounter);
  technical.Range("techIDDate").SetValue(lDate);
}

std::string sMakeID(int lDate, int& lCounter, bool bAdjustment) {
  const CalendarDay day = DayOfSerial(lDate);
  return fmt::format("{}{:04}{:02}{:02}{:06}", bAdjustment ? 'A' : 'M', day.year, day.month, day.day, lCounter++);
}

}  // namespace tolvane::accounts
