#pragma once

#include <string_view>

namespace tolvane::fuzz {

// What the fuzzers feed: each takes any bytes, reads them as a formula, a number format or one part of a workbook file,
// and checks what must hold of whatever was read. What must not be ends the process. Small parts of the reader stand
// alone here, so that no checksum and no other part keeps an input from reaching them.

void Package(std::string_view input);  // the archive, its links and content types
void Sheet(std::string_view input);    // a worksheet's XML
void Styles(std::string_view input);   // the XML of styles
void Strings(std::string_view input);  // the XML of shared texts

// The text of a formula, behind a byte that chooses the notation and the cell; and a number format, behind the eight
// bytes of a number.
void Formula(std::string_view input);
void NumberFormat(std::string_view input);

// A whole file. The first byte tells which part of a file the rest is; 255: the rest is the file.
void Book(std::string_view input);

}  // namespace tolvane::fuzz
