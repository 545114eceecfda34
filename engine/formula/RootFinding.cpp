#include "engine/formula/RootFinding.h"

#include <algorithm>
#include <cmath>

namespace tolvane::engine {
namespace {

constexpr double kLeastRate = -0.9999999;
constexpr double kGreatestRate = 1e7;

// Newton's method with a slope from neighbouring values.
std::optional<double> Approach(const std::function<double(double)>& function, double rate) {
  constexpr int kMostSteps = 60;
  constexpr double kCloseEnough = 1e-15;
  double before = INFINITY;
  for (int step = 0; step < kMostSteps; ++step) {
    const double value = function(rate);
    if (value == 0) return rate;
    const double width = std::max(std::fabs(rate), 1e-3) * 1e-6;
    const double slope = (function(rate + width) - function(rate - width)) / (2 * width);
    const double next = rate - value / slope;
    if (!std::isfinite(next) || next <= kLeastRate || next > kGreatestRate) return std::nullopt;
    const double change = std::fabs(next - rate);
    const bool noCloser = change < 1e-9 && change >= before;  // only the noise of the function is left
    if (change <= kCloseEnough * std::max(1.0, std::fabs(next)) || noCloser) return next;
    before = change;
    rate = next;
  }
  return std::nullopt;
}

double Halve(const std::function<double(double)>& function, double low, double high) {
  constexpr int kMostHalvings = 200;
  const bool rises = function(high) > 0;
  for (int i = 0; i < kMostHalvings; ++i) {
    const double middle = low + (high - low) / 2;
    if (middle == low || middle == high) break;
    ((function(middle) > 0) == rises ? high : low) = middle;
  }
  return low + (high - low) / 2;
}

}  // namespace

std::optional<double> FindRate(const std::function<double(double)>& function, double guess) {
  if (const auto rate = Approach(function, guess)) return rate;
  // The change of sign that is nearest to the guess, in steps that grow with the distance.
  double low = guess;
  double high = guess;
  double valueLow = function(low);
  double valueHigh = valueLow;
  for (double step = 0.01; low > kLeastRate || high < kGreatestRate; step *= 1.3) {
    if (high < kGreatestRate) {
      const double next = std::min(high + step, kGreatestRate);
      const double value = function(next);
      if (std::isfinite(value) && (value > 0) != (valueHigh > 0)) return Halve(function, high, next);
      high = next;
      valueHigh = value;
    }
    if (low > kLeastRate) {
      const double next = std::max(low - std::min(step, (low + 1) / 2), kLeastRate);
      const double value = function(next);
      if (std::isfinite(value) && (value > 0) != (valueLow > 0)) return Halve(function, next, low);
      low = next - kLeastRate < 1e-7 ? kLeastRate : next;
      valueLow = value;
    }
  }
  return std::nullopt;
}

}  // namespace tolvane::engine
