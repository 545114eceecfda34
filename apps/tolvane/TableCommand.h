#pragma once

#include <istream>
#include <ostream>
#include <string>

namespace tolvane::app {

struct TableRequest {
  std::string file;         // a workbook by its extension, else a tab-separated table; "-" reads `input`
  std::string sheet = {};   // of a workbook; empty for the first that is visible
  std::string saveAs = {};  // a workbook file; empty to print
};

// `tolvane table FILE`: opens the workbook, or types the table into a new one, calculates it and prints what the cells
// of one sheet show, in aligned columns, or saves it. Returns the exit status: 0, or 1 when a cell of the sheet shows
// an error value. Throws std::exception with a text for the user when a file cannot be read or written, or a formula
// does not parse.
int RunTable(const TableRequest& request, std::istream& input, std::ostream& output);

}  // namespace tolvane::app
