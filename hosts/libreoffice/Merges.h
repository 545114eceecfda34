#pragma once

#include "hosts/libreoffice/CalcWorksheet.h"

namespace tolvane::libreoffice {

// An area that has taken in the merges that it touches.
Rect WithTouchedMerges(const CalcWorksheet& sheet, const Rect& area);
// The merges that touch an area.
Rects MergesAt(const CalcWorksheet& sheet, const Rect& area);
void MergeCells(const CalcWorksheet& sheet, const Rect& area, bool merged);
// Only the first cell of a merge holds anything: the others are emptied.
void ClearCovered(CalcWorksheet& sheet, const Rect& area);

}  // namespace tolvane::libreoffice
