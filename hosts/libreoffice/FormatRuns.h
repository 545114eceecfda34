#pragma once

#include <functional>
#include <vector>

#include "hosts/libreoffice/CalcWorksheet.h"

namespace tolvane::libreoffice {

// Splits an area into rectangles within which all cells look the same.
void ForEachFormatRun(const CalcWorksheet& sheet, const Rect& area,
                      const std::function<void(const Rect&, const Reference<css::uno::XInterface>&)>& work);

// One for each look that occurs: where, and a collection to read and set it through.
struct Look {
  Rects areas;
  Reference<css::uno::XInterface> cells;
};
std::vector<Look> LooksOf(const CalcWorksheet& sheet, const Rect& area);

// Number formats, which every document numbers in its own way.
bool IsTruthFormat(const CalcWorkbook& book, std::int32_t key);
std::int32_t NumberFormatKey(CalcWorkbook& book, std::string_view calcCode);
std::string NumberFormatCode(const CalcWorkbook& book, std::int32_t key);

}  // namespace tolvane::libreoffice
