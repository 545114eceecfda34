#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "engine/xlsx/SheetReader.h"

namespace tolvane::engine::xlsx {

// Other parts that tell where on a sheet they lie: comments with their boxes, drawings, tables. They stay as they are,
// but for the cells when those have moved.

// Puts what lies on the sheet there as attachments.
void ReadPartAnchors(SheetReading& reading);

// Where an element of a part lies now: empty when its cells are gone.
using AnchorsOfPart = std::map<std::size_t, std::optional<Rect>>;
// The parts of a sheet whose anchors have moved, and their elements by number.
std::map<std::string, AnchorsOfPart> MovedAnchors(const Sheet& sheet, std::size_t record, const PackageData& data);
// The part with its elements where they are now.
std::string MoveAnchors(std::string_view xml, const std::string& part, std::string_view linkKind,
                        const AnchorsOfPart& anchors);

// A table with its header texts as they stand in the cells. Empty when nothing differs.
std::string FollowTable(std::string_view xml, const std::string& part, const Sheet& sheet,
                        const std::optional<Rect>& moved);

}  // namespace tolvane::engine::xlsx
