#pragma once

#include <functional>

#include "engine/model/Sheet.h"

namespace tolvane::embedded {

// Cuts an area into rectangles of one format each (the one that counts: cell's, row's or column's) and visits them.
// Costs the cells that have a format of their own, and the stretches of rows and columns; not the cells of the area.
// Every default format is given as kDefaultFormat.
void ForEachFormatRun(const engine::Sheet& sheet, const engine::Rect& area,
                      const std::function<void(const engine::Rect&, engine::FormatId)>& visit);

}  // namespace tolvane::embedded
