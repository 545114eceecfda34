#pragma once

#include <cstdio>
#include <cstdlib>

namespace tolvane::fuzz {

// Ends the process where something does not hold, which a fuzzer takes for a finding.
inline void Check(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "Does not hold: %s\n", what);
  std::abort();
}

}  // namespace tolvane::fuzz
