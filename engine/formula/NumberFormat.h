#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "engine/model/Value.h"

namespace tolvane::engine {

// A value as a cell with this number format shows it: up to four sections with conditions, digits, thousands, percent,
// exponents, dates and times, literals. Colours are left out, what fills or pads a cell's width (*x, _x) is not
// repeated and a blank. What cannot be shown (a date before 1900) comes out as number signs.
std::string FormatValue(const Value& value, std::string_view numberFormat);

// The same, with nothing for what cannot be shown.
std::optional<std::string> TryFormatValue(const Value& value, std::string_view numberFormat);

}  // namespace tolvane::engine
