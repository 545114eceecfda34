#pragma once

#include <string>
#include <string_view>

namespace tolvane::engine {

class Workbook;

// The name of a copy: "Costs (2)", "Costs (3)" and so on, the first one that is free; the number of "Costs (2)" itself
// gives way to a higher one. Shortened where it would get too long.
std::string NameForCopy(const Workbook& book, std::string_view name);

// The code name with the lowest number that is free: "Sheet1", "Sheet2", ...
std::string FreeCodeName(const Workbook& book);

}  // namespace tolvane::engine
