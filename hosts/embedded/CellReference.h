#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "engine/model/Expression.h"
#include "engine/model/Geometry.h"
#include "hosts/embedded/EmbeddedWorksheet.h"

namespace tolvane::embedded {

// Cells that a name or an address means: one rectangle or several, all on one sheet.
struct CellReference {
  std::shared_ptr<EmbeddedWorksheet> sheet;
  std::vector<engine::Rect> areas;
};

// What an expression refers to, evaluated as if it stood in a cell of `home`; nothing when that is no reference to
// cells of one sheet of an open workbook.
std::optional<CellReference> CellsOf(const EmbeddedWorksheet& home, const engine::Expression& expression,
                                     engine::CellPos at = {});

// What Worksheet.Range means by a text; nothing when it means nothing on this sheet.
std::optional<std::vector<engine::Rect>> FindCells(const EmbeddedWorksheet& sheet, std::string_view nameOrAddress);

}  // namespace tolvane::embedded
