#include "src/core/StoredSelection.h"

#include <utility>

#include "src/core/MGlobals.h"

namespace tolvane::accounts {

void StoreSelection(TStoredSelection& udtSel) {
  const host::Selection selection = gxlApp().Selection();
  if (!selection.IsRange()) return;
  const host::Range range = selection.Range();
  if (range.IsNothing()) return;
  udtSel.bStored = true;
  udtSel.wksSheet = range.Parent();
  udtSel.sAddress = range.Address();
}

void StoreSelectionOn(TStoredSelection& udtSel, const host::Worksheet& wksSheet) {
  const host::Worksheet wksPrevious = gxlApp().ActiveSheet();
  if (wksPrevious != wksSheet) {
    wksSheet.Activate();
    udtSel.wksPrevious = wksPrevious;
  }
  StoreSelection(udtSel);
}

void RestoreSelection(TStoredSelection& udtSel) {
  const TStoredSelection stored = std::exchange(udtSel, TStoredSelection{});
  if (!stored.bStored) return;
  if (gxlApp().ActiveSheet() != stored.wksSheet) stored.wksSheet.Activate();
  stored.wksSheet.Range(stored.sAddress).Select();
}

void RestoreSelectionAndSheet(TStoredSelection& udtSel) {
  const host::Worksheet wksPrevious = udtSel.wksPrevious;
  RestoreSelection(udtSel);
  if (!wksPrevious.IsNothing()) wksPrevious.Activate();
}

}  // namespace tolvane::accounts
