#pragma once

#include <cstdint>

#include "engine/model/Geometry.h"
#include "engine/model/Reference.h"

namespace tolvane::engine {

enum class Notation : std::uint8_t { A1, R1C1 };

// Where a formula stands: its sheet, and the cell that relative references count from.
struct FormulaHome {
  SheetId sheet = kOwnSheet;
  CellPos cell;
};

}  // namespace tolvane::engine
