#include "bench/BookOfSize.h"

#include <string>

namespace tolvane::bench {

BookOfSize::BookOfSize(int rows) : rows_(rows) {
  const host::Application app = application();
  app.SetCalculation(host::Calculation::Manual);
  book_ = app.Workbooks().Add();
  table_ = book_.Worksheets().Item(1);
  tableRange().SetValue(Table(rows));
}

host::CellBlock BookOfSize::Table(int rows) {
  host::CellBlock block(rows, 9);
  for (int row = 1; row <= rows; ++row) {
    const std::string number = std::to_string(row);
    block.at(row, 1) = "M20090315" + std::string(6 - std::min<std::size_t>(6, number.size()), '0') + number;
    block.at(row, 2) = 39887 + row / 50;
    block.at(row, 3) = "Bank statement";
    block.at(row, 4) = "Payment to payee number " + std::to_string(row % 500);
    block.at(row, 5) = -12.5 - row % 90;
    block.at(row, 6) = "2009 Mar";
    block.at(row, 7) = row % 3 == 0 ? "Food" : "Household and garden";
    if (row % 10 == 0) block.at(row, 8) = "a comment that someone wrote";
  }
  return block;
}

void BookOfSize::AddFormulasNamesAndValidations() {
  const std::string table = table_.Name();
  const host::Worksheet report = book_.Worksheets().Add();
  report.Cells(1, 1).Resize(rows_, 1).SetFormulaR1C1("=" + table + "!RC5*2");
  const int names = rows_ / 100;
  const host::Names bookNames = book_.Names();
  for (int i = 1; i <= names; ++i) {
    const std::string from = std::to_string(i * 90), to = std::to_string(i * 90 + 40);
    bookNames.Add("area" + std::to_string(i) + "_", "=" + table + "!$A$" + from + ":$I$" + to);
    host::ValidationRule rule;
    rule.source = "=" + table + "!$G$" + from + ":$G$" + to;
    report.Cells(i * 90, 3).Resize(10, 1).Validation().Add(rule);
  }
}

std::vector<host::RowRun> BookOfSize::ScatteredRows() const {
  std::vector<host::RowRun> runs;
  for (int row = 5; row <= rows_; row += 10) runs.push_back({row, 1});
  return runs;
}

}  // namespace tolvane::bench
