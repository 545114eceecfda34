#pragma once

#include <vector>

#include "engine/model/Reference.h"

namespace tolvane::engine {

class Workbook;

// References and names that mean whole sheets follow what happens to the sheets.

using SheetOrder = std::vector<SheetId>;
SheetOrder OrderOf(const Workbook& book);

// After a sheet has gone: references to it are broken; First:Last!A1 shrinks when an end goes.
void FollowSheetDeletion(Workbook& book, SheetId deleted, const SheetOrder& before);
// After a sheet has moved: an end of First:Last!A1 that has changed sides with the other end gives way to its former
// neighbour, as in Excel.
void FollowSheetMove(Workbook& book, SheetId moved, const SheetOrder& before);

}  // namespace tolvane::engine
