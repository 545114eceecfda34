#pragma once

#include <optional>
#include <string>
#include <vector>

#include "hosts/libreoffice/CalcWorksheet.h"

namespace tolvane::libreoffice {

// Links on cells. On an area there is one link at most; a new one replaces those that it touches.
void AddLink(CalcWorksheet& sheet, const Rect& area, const host::HyperlinkTarget& target,
             const std::optional<std::string>& textToDisplay);
void DeleteLinks(CalcWorksheet& sheet, const Rect& area);
std::vector<host::HyperlinkTarget> ReadLinks(CalcWorksheet& sheet, const Rect& area);
// Takes up the links that a file or the user put into texts.
void FindLinks(CalcWorksheet& sheet);

}  // namespace tolvane::libreoffice
