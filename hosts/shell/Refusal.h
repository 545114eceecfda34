#pragma once

#include <string>

#include "src/host/Errors.h"

namespace tolvane::shell {

// What the spreadsheet itself refuses.
[[noreturn]] inline void Refuse(const std::string& text) {
  throw host::HostError(host::ErrorNumber::ApplicationDefined, text);
}

}  // namespace tolvane::shell
