#pragma once

#include <string_view>

#include "engine/model/Geometry.h"
#include "hosts/embedded/EmbeddedWorksheet.h"

namespace tolvane::embedded {

// A user types into a cell and presses Enter: the text is recognised for what it is (as it stands when `asText`),
// protection and list validation may refuse it, and nothing has changed then. A merged cell takes it in its first cell.
void EnterText(EmbeddedWorksheet& sheet, engine::CellPos cell, std::string_view text, bool asText);

}  // namespace tolvane::embedded
