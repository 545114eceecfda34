#include "src/core/StoredProtection.h"

#include <utility>

namespace tolvane::accounts {

void UnprotectStored(const host::Worksheet& wksSheet, TStoredProtection& udtProt) {
  udtProt = {.wksSheet = wksSheet, .objProtection = {}, .bStored = true, .bWasProtected = wksSheet.ProtectContents()};
  if (!udtProt.bWasProtected) return;
  udtProt.objProtection = wksSheet.Protection();
  wksSheet.Unprotect();
}

void ProtectStored(TStoredProtection& udtProt) {
  const TStoredProtection stored = std::exchange(udtProt, TStoredProtection{});
  if (stored.bStored && stored.bWasProtected) stored.wksSheet.Protect(stored.objProtection);
}

void ProtectSheet(const host::Worksheet& wksSheet, int lKind) {
  if (wksSheet.ProtectContents()) return;
  host::Protection allowed;
  allowed.allowFormattingColumns = allowed.allowFormattingRows = true;
  switch (lKind) {
    case kind::kAccounts:
    case kind::kBalanceSheet:
    case kind::kIncomeStatement:
    case kind::kLists:
    case kind::kBudgets:
      break;
    case kind::kAccountData:
    case kind::kAdjustments:
    case kind::kSheetTemplate:
    case kind::kBreakdown:
      allowed.allowSorting = allowed.allowFiltering = true;
      break;
    default:
      return;
  }
  wksSheet.Protect(allowed);
}

}  // namespace tolvane::accounts
