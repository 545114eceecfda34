#pragma once

#include <string_view>

#include "hosts/libreoffice/CalcWorksheet.h"

namespace tolvane::libreoffice {

// Writes a text into cells from `at` on: a line a row, a tab between columns. Numbers and dates are recognised as Calc
// recognises them when they are typed; what begins with "=" stays a text.
void PasteText(CalcWorksheet& sheet, CellPos at, std::string_view text);

// What the program makes of a typed text: a number with the format that it suggests, a truth value, or the text itself.
struct Recognised {
  host::CellValue value;
  std::optional<std::int32_t> format;
};
Recognised Recognise(CalcWorkbook& book, std::string_view text);

}  // namespace tolvane::libreoffice
