#include "src/core/ComponentVersion.h"

namespace tolvane::accounts {

std::string sComponentVersion() {
  return TOLVANE_VERSION;
}

std::string sComponentMajorMinor() {
  const std::string version = sComponentVersion();
  return version.substr(0, version.rfind('.'));
}

std::string sComponentRevision() {
  const std::string version = sComponentVersion();
  return version.substr(version.rfind('.') + 1);
}

}  // namespace tolvane::accounts
