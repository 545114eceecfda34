#pragma once

#include <memory>
#include <span>
#include <string_view>

#include "engine/model/Workbook.h"

namespace tolvane::bench {

inline constexpr int kDataRows = 100000;

// Formulas of one kind, as people write them beside a table of bookings.
struct FormulaKind {
  std::string_view name;
  std::string_view formula;  // in R1C1 notation, for column 8 and below of the data's sheet, from row 2 on
  int count;                 // how many of the 100,000 formulas of the mixed book are of this kind
};
std::span<const FormulaKind> FormulaKinds();

// The data (100,000 rows of date, account, payee, amount and category), a table of 200 categories and the formulas of
// one kind; "mixed" has all kinds, each in a column of its own.
std::unique_ptr<engine::Workbook> MakeBookOfFormulas(std::string_view kind);

}  // namespace tolvane::bench
