#pragma once

#include "hosts/libreoffice/CalcWorksheet.h"
#include "src/host/CellBlock.h"

namespace tolvane::libreoffice {

// Whole blocks in a few calls of Calc.
host::CellBlock ReadValues(const CalcWorksheet& sheet, const Rect& area);
// As the port's Formula and FormulaR1C1 give them.
host::CellBlock ReadFormulas(const CalcWorksheet& sheet, const Rect& area, Dialect dialect);

// Where constants 0 and 1 are truth values: Calc tells them from numbers by their format alone.
Rects TruthFormats(const CalcWorksheet& sheet, const Rect& area);

}  // namespace tolvane::libreoffice
