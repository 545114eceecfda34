#pragma once

#include <string>
#include <string_view>

namespace tolvane::libreoffice {

// Calc writes the words of a number format in capitals ("YYYY-MM-DD", "[RED]"); this is how Excel writes them.
std::string ExcelNumberFormat(std::string_view calcCode);

}  // namespace tolvane::libreoffice
