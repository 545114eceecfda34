#pragma once

#include <istream>
#include <ostream>
#include <string>

namespace tolvane::app {

// `tolvane table FILE`: types a tab-separated table into a new workbook, calculates it and prints what the cells show,
// in aligned columns. "-" reads `input`. Returns the exit status: 0, or 1 when a cell shows an error value. Throws
// std::exception with a text for the user when the file cannot be read or a formula does not parse.
int RunTable(const std::string& file, std::istream& input, std::ostream& output);

}  // namespace tolvane::app
