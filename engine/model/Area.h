#pragma once

#include <string>
#include <vector>

#include "engine/model/Geometry.h"

namespace tolvane::engine {

// The parts of `area` outside `hole`, at most four rectangles, added to `parts` from top to bottom.
void AddRest(const Rect& area, const Rect& hole, std::vector<Rect>& parts);

// Takes an area out of several rectangles. True when something changed.
bool Subtract(std::vector<Rect>& areas, const Rect& hole);

// "A" to "XFD", "B7" or "B7:C9", and "5:9" or "C:D" for bands; for messages.
std::string ColumnName(int column);
std::string AddressOf(const Rect& area);
std::string AddressOf(Axis axis, int first, int last);

}  // namespace tolvane::engine
