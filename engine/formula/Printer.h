#pragma once

#include <string>
#include <string_view>

#include "engine/formula/Notation.h"
#include "engine/model/Expression.h"

namespace tolvane::engine {

class Workbook;

// The formula's text with its leading "=", as it stands in `home`. What the parser read comes out as it was typed, in
// canonical spelling (functions in upper case, references in the notation asked for).
std::string PrintFormula(const Expression& formula, Notation notation, const FormulaHome& home, const Workbook& book);

// Addresses: "$B$7:$C$9", "B7", "R7C2", "$5:$9", "C[-1]".
struct AddressStyle {
  Notation notation = Notation::A1;
  bool absoluteRow = true;
  bool absoluteColumn = true;
  CellPos relativeTo;  // for relative R1C1
};
std::string PrintAddress(const Rect& area, const AddressStyle& style);

// A sheet's name as it stands before "!": quoted, with apostrophes doubled, unless it is a plain word.
std::string QuoteSheetName(std::string_view name);

// "A" to "XFD".
std::string ColumnLetters(int column);

// The shortest decimal text that reads back as the same number, written as a spreadsheet does (15 digits where they
// suffice, "1E+20" for large magnitudes).
std::string NumberText(double number);

}  // namespace tolvane::engine
