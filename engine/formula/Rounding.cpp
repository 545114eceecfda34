#include "engine/formula/Rounding.h"

#include <cmath>

namespace tolvane::engine {

double CutTo(double number, std::int64_t digits, Cut cut) {
  constexpr int kMostDigits = 300;  // beyond which a power of ten leaves the range of numbers
  if (number == 0 || digits > kMostDigits) return number;
  if (digits < -kMostDigits) return 0;
  const double power = std::pow(10.0, static_cast<double>(digits < 0 ? -digits : digits));
  const double magnitude = std::fabs(number);
  const double scaled = digits < 0 ? magnitude / power : magnitude * power;
  if (!std::isfinite(scaled)) return number;
  constexpr double kWholeFrom = 4503599627370496.0;  // 2^52: no fraction left
  if (scaled >= kWholeFrom) return number;

  // Within the noise of the scaling, the scaled number is what its 15 digits say.
  const double noise = scaled * 4e-16;
  double whole = std::floor(scaled);
  switch (cut) {
    case Cut::HalfAwayFromZero:
      whole = std::floor(scaled + 0.5 + noise);
      break;
    case Cut::AwayFromZero:
      if (scaled - whole > noise) whole += 1;
      break;
    case Cut::TowardsZero:
      if (whole + 1 - scaled <= noise) whole += 1;
      break;
  }
  return std::copysign(digits < 0 ? whole * power : whole / power, number);
}

}  // namespace tolvane::engine
