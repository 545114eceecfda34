#pragma once

#include <string>

#include "engine/formula/FormatSections.h"

namespace tolvane::engine {

// A magnitude in a section with a fraction, such as "# ?/?", "# ??/16" or "?/?". Parts that ? leaves open are blanks.
std::string FormatFraction(const FormatSection& section, double magnitude);

}  // namespace tolvane::engine
