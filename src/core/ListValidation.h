#pragma once

#include <string>
#include <string_view>

#include "src/host/Range.h"

namespace tolvane::accounts {

// Lets cells take only what stands in a list; replaces what validation they had.
void SetListValidation(const host::Range& rngCells, std::string_view sListName, std::string_view sErrorMessage);

}  // namespace tolvane::accounts
