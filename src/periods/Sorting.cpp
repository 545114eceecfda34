#include "src/periods/Sorting.h"

#include "src/core/AddIn.h"
#include "src/core/CellConversions.h"

namespace tolvane::accounts {

int lSortOptionsFromCell(const host::CellValue& vCell) {
  constexpr int kAll = kSortAscending + kSortGroupDurations;
  const int lOptions = lCellLong(vCell, true);
  return lOptions < 0 || lOptions > kAll ? kAll : lOptions;
}

SortState& CurrentSort() {
  return AddIn::Current().StateOf<SortState>();
}

}  // namespace tolvane::accounts
