#pragma once

#include <cstddef>

namespace tolvane::engine {

inline constexpr std::size_t kLongestText = 32767;  // characters that a cell can hold

}  // namespace tolvane::engine
