#include "src/core/ListValidation.h"

#include "src/core/MGlobals.h"

namespace tolvane::accounts {

void SetListValidation(const host::Range& rngCells, std::string_view sListName, std::string_view sErrorMessage) {
  host::ValidationRule rule;
  rule.source = "=" + std::string(sListName);
  rule.showInput = false;
  rule.errorTitle = kTitle;
  rule.errorMessage = sErrorMessage;
  rngCells.Validation().Delete();
  rngCells.Validation().Add(rule);
}

}  // namespace tolvane::accounts
