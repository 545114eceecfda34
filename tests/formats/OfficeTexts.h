#pragma once

#include <string>
#include <vector>

#include "tests/formats/FormatCases.h"

namespace tolvane::formatstest {

bool IsOfficeInstalled();

// What LibreOffice Calc shows for each case: a workbook is written with one cell each, and Calc, with a profile of its
// own, saves it as a text file with the contents as shown. Throws std::runtime_error when it does not.
std::vector<std::string> ShownByOffice(const std::vector<FormatCase>& cases);

}  // namespace tolvane::formatstest
