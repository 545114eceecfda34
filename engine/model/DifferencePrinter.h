#pragma once

// For the tests of this folder: how GoogleTest shows a difference between workbooks.

#include <ostream>

#include "engine/model/Diff.h"

namespace tolvane::engine {

inline void PrintTo(const Difference& difference, std::ostream* out) {
  *out << difference.where << " " << difference.what << ": " << difference.left << " | " << difference.right;
}

}  // namespace tolvane::engine
