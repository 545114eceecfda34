#pragma once

#include <string>

#include "src/host/Worksheet.h"

namespace tolvane::accounts {

// A selection that a command must leave as it found it.
struct TStoredSelection {
  bool bStored = false;
  host::Worksheet wksSheet;
  host::Worksheet wksPrevious;  // the sheet that was left for wksSheet
  std::string sAddress;
};

// Remembers the selection when it is a range.
void StoreSelection(TStoredSelection& udtSel);
// The same, after bringing a sheet to the front.
void StoreSelectionOn(TStoredSelection& udtSel, const host::Worksheet& wksSheet);
// Selects what was stored, on its sheet, and forgets it.
void RestoreSelection(TStoredSelection& udtSel);
// The same, and then brings the sheet that was left back to the front.
void RestoreSelectionAndSheet(TStoredSelection& udtSel);

}  // namespace tolvane::accounts
