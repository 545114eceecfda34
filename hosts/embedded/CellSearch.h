#pragma once

#include "engine/model/Sheet.h"
#include "src/host/Constants.h"

namespace tolvane::embedded {

// Where Ctrl and an arrow key lead from a cell: to the end of the filled stretch that it is in, else to the next filled
// cell, else to the edge of the sheet. Hidden rows and columns count like others.
engine::CellPos EndOfStretch(const engine::Sheet& sheet, engine::CellPos from, host::Direction direction);

// The block around a cell that empty rows and columns bound, within the used cells.
engine::Rect CurrentRegion(const engine::Sheet& sheet, engine::CellPos from);

}  // namespace tolvane::embedded
