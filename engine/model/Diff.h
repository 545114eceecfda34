#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "engine/model/Workbook.h"

namespace tolvane::engine {

// One place where two workbooks differ: where ("Sheet1!B7", "name lstPeriods"), in what ("value", "formula", "style",
// "format", "validation", ...), and both sides as text.
struct Difference {
  std::string where;
  std::string what;
  std::string left;
  std::string right;
};

struct DiffOptions {
  std::size_t most = 1000;  // stop after so many
  bool views = true;        // selections, scroll positions, zoom
  bool results = true;      // the stored results of formulas
};

// Every difference between two workbooks that a user or a program could notice. Sheets are paired by name.
std::vector<Difference> Diff(const Workbook& left, const Workbook& right, const DiffOptions& options = {});

}  // namespace tolvane::engine
