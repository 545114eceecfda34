#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "engine/model/Value.h"

namespace tolvane::engine {

// A value as a cell with this number format shows it: up to four sections with conditions, digits, thousands, percent,
// exponents, fractions, dates and times (with names in the language of a locale such as [$-407]), literals. What pads a
// cell's width (_x) is one blank, what fills it (*x) is left out, since a text has no width. What cannot be shown (a
// date before the calendar begins, a negative duration) comes out as number signs.
struct ShownText {
  std::string text;
  std::optional<std::uint32_t> colour;  // 0xRRGGBB, where the section that was chosen names one
};
ShownText ShowValue(const Value& value, std::string_view numberFormat, bool date1904 = false);

// The text alone.
std::string FormatValue(const Value& value, std::string_view numberFormat, bool date1904 = false);

// The same, with nothing for what cannot be shown.
std::optional<std::string> TryFormatValue(const Value& value, std::string_view numberFormat, bool date1904 = false);

}  // namespace tolvane::engine
