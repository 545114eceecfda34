#pragma once

#include <cstdint>

namespace tolvane::engine {

// How a number is cut to a number of decimals.
enum class Cut : std::uint8_t { HalfAwayFromZero, AwayFromZero, TowardsZero };

// Works on the decimal digits that people see: 2.675 is just below the half in binary, but rounds to 2.68. Negative
// digits count before the decimal point.
double CutTo(double number, std::int64_t digits, Cut cut);

}  // namespace tolvane::engine
