#pragma once

#include <memory>
#include <string>
#include <vector>

#include "engine/model/Workbook.h"
#include "tests/formulas/differential/KnownDifferences.h"

namespace tolvane::formulacases {

// A formula cell that both programs work out.
struct ComparedCell {
  engine::SheetId sheet;
  std::string sheetName;
  engine::CellPos at;
  std::string theCase;  // as known differences name it
  std::string where;    // for people: the line of a written case, the text of a made formula
};

struct ComparedBook {
  std::unique_ptr<engine::Workbook> book;
  std::vector<ComparedCell> cells;
  int leftOut = 0;  // written cases that no file can hold, as their formula is not one
};

// The book as it goes to Calc: with one sheet more, on which Calc tells the number of the error of each cell.
std::unique_ptr<engine::Workbook> WithErrorNumbers(const ComparedBook& compared);
// What Calc came to in the given cell, counted from 0, of such a book.
CalcResult ResultOf(const engine::Workbook& recalculated, const ComparedBook& compared, std::size_t cell);

// The written cases, each group on a sheet of its own.
ComparedBook WrittenCases();
// Formulas by chance.
ComparedBook MadeCases(int count, std::uint64_t seed);

}  // namespace tolvane::formulacases
