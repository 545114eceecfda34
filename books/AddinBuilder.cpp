#include <charconv>
#include <optional>

#include "books/BookBuilder.h"
#include "src/host/CellBlock.h"

namespace tolvane::books {

namespace {

// Yes and no are Booleans, whole numbers numbers, all else texts.
host::CellValue CellOf(const std::string& text) {
  if (text.empty()) return {};
  if (text == "yes" || text == "no") return text == "yes";
  int number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, problem] = std::from_chars(text.data(), end, number);
  if (problem == std::errc() && stop == end) return number;
  return text;
}

// The table from a cell on, without its headings; the range that it fills.
host::Range PutRows(const host::Range& topLeft, const Table& table) {
  const int rows = static_cast<int>(table.rows().size());
  const int columns = static_cast<int>(table.columns().size());
  host::CellBlock block(rows, columns);
  for (int row = 1; row <= rows; ++row) {
    for (int column = 1; column <= columns; ++column) {
      block.at(row, column) =
          CellOf(table.rows()[static_cast<std::size_t>(row - 1)].At(static_cast<std::size_t>(column - 1)));
    }
  }
  const host::Range range = topLeft.Resize(rows, columns);
  range.SetValue(block);
  return range;
}

void PutHeadings(const host::Range& topLeft, const Table& table) {
  host::CellBlock headings(1, static_cast<int>(table.columns().size()));
  for (int column = 1; column <= headings.columns(); ++column) {
    headings.at(1, column) = table.columns()[static_cast<std::size_t>(column - 1)];
  }
  const host::Range range = topLeft.Resize(1, headings.columns());
  range.SetValue(headings);
  range.Font().SetBold(true);
}

void NameRange(const host::Worksheet& sheet, const std::string& name, const host::Range& range) {
  sheet.Names().Add(name, "='" + sheet.Name() + "'!" + range.Address(), false);
}

// Bars stand in the first column, their controls in the second, the controls of menus in the third; the columns after
// these are found by the names of their headings.
void PutBars(const host::Worksheet& sheet, const Table& bars) {
  constexpr std::size_t kNested = 3;
  const host::Range start = sheet.Cells(1, 1);
  PutHeadings(start, bars);
  PutRows(start.Offset(1, 0), bars);
  NameRange(sheet, "TableStart", start);
  for (std::size_t i = kNested; i < bars.columns().size(); ++i) {
    NameRange(sheet, bars.columns()[i], start.Offset(0, static_cast<int>(i)));
  }
}

void PutTable(const host::Worksheet& sheet, int row, const std::string& name, const Table& table) {
  PutHeadings(sheet.Cells(row, 1), table);
  NameRange(sheet, name, PutRows(sheet.Cells(row + 1, 1), table));
}

}  // namespace

host::Workbook BuildAddin(const host::Application& application, const BookTables& tables) {
  const host::Workbook book = application.Workbooks().Add();
  const host::Worksheet bars = book.Worksheets().Item(1);
  bars.SetName("wksCommandBars");
  bars.SetCodeName("wksCommandBars");
  PutBars(bars, tables.Of("addin", "bars"));

  const host::Worksheet data = book.Worksheets().Add();
  data.SetName("wksData");
  data.SetCodeName("wksData");
  const Table& sheets = tables.Of("addin", "sheets");
  PutTable(data, 1, "rngBookSheetsData", sheets);
  PutTable(data, static_cast<int>(sheets.rows().size()) + 3, "rngCC", tables.Of("addin", "commands"));
  book.SetIsAddin(true);
  return book;
}

}  // namespace tolvane::books
