#pragma once

#include <functional>
#include <optional>

namespace tolvane::engine {

// An interest rate above -1 at which a function is 0, the one near the guess if there are several. Nothing when none is
// found.
std::optional<double> FindRate(const std::function<double(double)>& function, double guess);

}  // namespace tolvane::engine
