#include "bench/TableBook.h"

#include <vector>

#include "bench/BookOfSize.h"

namespace tolvane::bench {

std::unique_ptr<engine::Workbook> TableBook(int rows) {
  auto book = std::make_unique<engine::Workbook>();
  engine::Sheet& sheet = book->AddSheet("Table", 0);
  const host::CellBlock table = BookOfSize::Table(rows);
  std::vector<engine::Value> values;
  values.reserve(static_cast<std::size_t>(rows) * 9);
  for (int row = 1; row <= rows; ++row) {
    for (int column = 1; column <= 9; ++column) {
      const host::CellValue& value = table.at(row, column);
      if (value.isNumber()) {
        values.emplace_back(value.number());
      } else if (value.isText()) {
        values.emplace_back(std::string_view(value.text()));
      } else {
        values.emplace_back();
      }
    }
  }
  sheet.SetValues({1, 1, rows, 9}, values);
  const auto show = [&](int column, const char* numberFormat) {
    sheet.ChangeFormat({1, column, rows, column}, [&](engine::FormatId id) {
      engine::CellFormat format = book->formats.At(id);
      format.format.numberFormat = numberFormat;
      return book->formats.Intern(format);
    });
  };
  show(2, "yyyy-mm-dd");
  show(5, "#,##0.00");
  return book;
}

}  // namespace tolvane::bench
