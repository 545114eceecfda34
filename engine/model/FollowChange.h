#pragma once

#include "engine/model/StructuralChange.h"

namespace tolvane::engine {

class Workbook;

// Throws std::invalid_argument when a change would take a merged area or an array formula apart.
void RequireNothingCut(const Workbook& book, const StructuralChange& change);

// Lets everything in the workbook that holds a reference follow a change; to be called before the cells themselves
// move. Views stay as they are: a selection is a place in the window, which Excel leaves where it is too.
void Follow(Workbook& book, const RunShift& change);
void Follow(Workbook& book, const BlockMove& change);

}  // namespace tolvane::engine
