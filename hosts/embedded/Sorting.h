#pragma once

#include "engine/model/Geometry.h"
#include "hosts/embedded/EmbeddedWorksheet.h"
#include "src/host/Range.h"

namespace tolvane::embedded {

// Sorts the rows of an area by one of its columns; of a single cell, the block around it. Rows that compare equal keep
// their order, rows that a filter hides their place. Ascending: numbers, texts ignoring case, FALSE, TRUE, errors;
// descending the other way round; blanks always last. Formulas move like copies: what they refer to moves with them.
void SortRows(EmbeddedWorksheet& sheet, const engine::Rect& area, const host::SortKey& key);

}  // namespace tolvane::embedded
