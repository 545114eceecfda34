#pragma once

#include <string>
#include <vector>

#include "engine/formula/CellAddress.h"
#include "engine/model/Expression.h"

namespace tolvane::engine {

class Workbook;

// What a formula depends on, as far as its text tells it. What OFFSET and INDIRECT point at is not among the areas;
// formulas with them are volatile.
struct Precedents {
  struct Area {
    SheetId sheet;
    Rect rect;
  };
  std::vector<Area> areas;
  std::vector<std::string> books;  // other workbooks
  bool isVolatile = false;
  bool usesNames = false;
  bool isSubtotal = false;  // depends on which rows are hidden
};

Precedents PrecedentsOf(const Expression& formula, const CellAddress& home, const Workbook& book);

}  // namespace tolvane::engine
