#pragma once

#include <functional>

#include "src/host/Range.h"
#include "src/host/Worksheet.h"

namespace tolvane::accounts {

// What the core calls in modules that stand above it. Who puts an add-in together connects them; one that is not
// connected does nothing, since the module that would have had work to do is not there.
struct Seams {
  std::function<void(const host::Worksheet& objSheet, const host::Range& rngTarget)> SelectionAction;
  std::function<bool(const host::Workbook& wkb)> IsAccountsBookConnected;
};

}  // namespace tolvane::accounts
