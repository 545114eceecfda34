#pragma once

#include <string>

namespace tolvane::accounts {

std::string sComponentVersion();     // major.minor.revision
std::string sComponentMajorMinor();  // major.minor
std::string sComponentRevision();

}  // namespace tolvane::accounts
