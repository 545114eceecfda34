#pragma once

#include "engine/model/Workbook.h"

namespace tolvane::engine::xlsx {

// Whether a workbook holds formulas, in cells or names, that cannot be worked out here: of functions that are not there
// or that the grammar does not know. Their results, and those of what depends on them, may be out of date as soon as
// any cell changes.
bool HoldsNotComputed(const Workbook& book);

}  // namespace tolvane::engine::xlsx
