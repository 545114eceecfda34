#pragma once

#include <cstdint>
#include <optional>

#include "src/host/Constants.h"

namespace tolvane::shell {

// Colours by their index in the default palette of 56, which every workbook of our hosts has.

// The colour of an index; none for kColorIndexNone and kColorIndexAutomatic. Any other index is ApplicationDefined.
std::optional<std::uint32_t> ColourOf(host::ColorIndex index);
// The index of the nearest colour of the palette. Ten colours stand there twice; theirs is the second index.
host::ColorIndex NearestIndex(std::uint32_t colour);

}  // namespace tolvane::shell
