#include "src/core/MGlobals.h"

#include "src/core/AddIn.h"

namespace tolvane::accounts {

MGlobals& Globals() {
  return AddIn::Current().globals;
}

}  // namespace tolvane::accounts
