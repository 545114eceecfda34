#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tolvane::engine {

// The colour, as 0xRRGGBB, that a number format names in brackets: Black, Blue, Cyan, Green, Magenta, Red, White,
// Yellow, or Color1 to Color56 of the default palette.
std::optional<std::uint32_t> ColourNamed(std::string_view name);

}  // namespace tolvane::engine
