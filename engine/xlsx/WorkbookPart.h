#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/model/Workbook.h"
#include "engine/xlsx/PackageData.h"

namespace tolvane::engine::xlsx {

// Names that the format itself gives a meaning to are written with this prefix; in the model they go without.
inline constexpr std::string_view kBuiltInPrefix = "_xlnm.";
bool IsBuiltInName(std::string_view name);

// Reads the workbook part: adds the sheets, empty, and the names. `facts`: what their keepsakes tell, by the place of
// the sheet's record.
void ReadWorkbookPart(std::string_view xml, Workbook& book, PackageData& data, std::vector<Facts>& facts);

// What the workbook part needs to know of the file that is written.
struct SheetEntry {
  SheetId id = kOwnSheet;               // kOwnSheet: one without cells
  const SheetRecord* record = nullptr;  // null: a new one
  std::string linkId;
};
// `recalculates`: programs that open the file shall work out all formulas.
std::string WriteWorkbookPart(std::string_view xml, const Workbook& book, const PackageData& data,
                              const std::vector<SheetEntry>& sheets, std::optional<SheetId> activeSheet,
                              bool recalculates);

}  // namespace tolvane::engine::xlsx
