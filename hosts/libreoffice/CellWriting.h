#pragma once

#include <string>
#include <vector>

#include "hosts/libreoffice/CalcWorksheet.h"
#include "src/host/CellBlock.h"

namespace tolvane::libreoffice {

// What goes into an area, made ready before anything is written, so that a formula that does not parse changes nothing.
struct Contents {
  host::CellBlock constants;  // as large as the area, or a single value for all of it
  // The same formula, relative to each cell, in neighbouring cells of one column. Rows and columns count from 1 within
  // the area.
  struct Run {
    int row = 1, column = 1, rows = 1;
    std::string r1c1;  // without "="
  };
  std::vector<Run> formulas;
  bool isFilled() const { return constants.isSingle(); }
};

// The cells of a block that reach into an area: repeated, cut and filled up with #N/A as the port's SetValue says.
class Spread {
 public:
  Spread(const host::CellBlock& block, const Rect& area) : block_(block), area_(area) {}
  const host::CellValue& At(int row, int column) const;

 private:
  const host::CellBlock& block_;
  const Rect area_;
  const host::CellValue missing_ = host::CellError::NA;
};

Contents PrepareValues(const host::CellBlock& block, const Rect& area);
Contents PrepareFormulas(CalcWorkbook& book, const host::CellBlock& block, const Rect& area, Dialect dialect);
void WriteContents(CalcWorksheet& sheet, const Rect& area, const Contents& contents);
// Contents go, looks stay.
void ClearCells(CalcWorksheet& sheet, const Rect& area);

}  // namespace tolvane::libreoffice
