#pragma once

#include <vector>

#include "engine/model/Geometry.h"
#include "hosts/embedded/Clipboard.h"
#include "hosts/embedded/EmbeddedWorksheet.h"
#include "src/host/Constants.h"

namespace tolvane::embedded {

// Pastes the cells in copy or cut mode into areas of a sheet; an area that is a multiple of what was copied is filled
// with repetitions. Nothing has changed when it fails. Copy mode stays on, cut mode ends.
void PasteCells(Program& program, EmbeddedWorksheet& to, const std::vector<engine::Rect>& areas, host::PasteType type);

// The rows or columns of a rectangle's side, put together from several.
int TotalOf(const std::vector<engine::Run>& runs);

}  // namespace tolvane::embedded
