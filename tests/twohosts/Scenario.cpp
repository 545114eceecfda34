#include "tests/twohosts/Scenario.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "src/host/Range.h"
#include "src/host/Workbook.h"
#include "src/host/Worksheet.h"

namespace tolvane::twohosts {

namespace {

std::string TextOf(const host::CellValue& value) {
  switch (value.kind()) {
    case host::CellValue::Kind::Empty:
      return "empty";
    case host::CellValue::Kind::Boolean:
      return value.boolean() ? "truth" : "lie";
    case host::CellValue::Kind::Number: {
      std::array<char, 40> digits;
      // Excel's fifteen digits: beyond them the hosts may add up in another order.
      std::snprintf(digits.data(), digits.size(), "number %.15g", value.number());
      return digits.data();
    }
    case host::CellValue::Kind::Text:
      return "text '" + std::string(value.text()) + "'";
    case host::CellValue::Kind::Error:
      return "error " + std::string(host::TextOf(value.error()));
  }
  return "nothing";
}

void TellSheet(std::ostream& out, const host::Worksheet& sheet) {
  constexpr int kRows = 40, kColumns = 8;
  out << "sheet " << sheet.Name() << " code " << sheet.CodeName() << " protected " << sheet.ProtectContents()
      << " inserting " << sheet.Protection().allowInsertingRows << " deleting " << sheet.Protection().allowDeletingRows
      << '\n';
  const host::Range area = sheet.Cells(1, 1).Resize(kRows, kColumns);
  const host::CellBlock values = area.Value();
  const host::CellBlock formulas = area.Formula();
  for (int row = 1; row <= kRows; ++row) {
    for (int column = 1; column <= kColumns; ++column) {
      const host::CellValue& value = values.at(row, column);
      const host::CellValue& formula = formulas.at(row, column);
      if (value.isEmpty() && formula == host::CellValue("")) continue;
      const host::Range cell = sheet.Cells(row, column);
      out << cell.Address() << ' ' << TextOf(value) << " formula " << TextOf(formula) << " format "
          << cell.NumberFormat().value_or("mixed") << " locked " << cell.Locked().value_or(false) << '\n';
    }
  }
}

std::string Tell(const host::Workbook& book) {
  std::ostringstream out;
  for (const host::Name& name : book.Names().All()) {
    out << "name " << name.NameText() << ' ' << name.RefersTo() << " visible " << name.Visible() << '\n';
  }
  for (const host::Worksheet& sheet : book.Worksheets().All()) TellSheet(out, sheet);
  return out.str();
}

}  // namespace

void MakeInput(const host::Application& application, const std::string& path) {
  const host::Workbook book = application.Workbooks().Add();
  const host::Worksheet sheet = book.Worksheets().Item(1);
  sheet.SetName("Account");
  sheet.SetCodeName("wksAccount");
  sheet.Range("A1:E1").SetValue(host::CellBlock{{"Date", "Payee", "Amount", "Category", "Cleared"}});
  constexpr int kRows = 12;
  host::CellBlock table(kRows, 5);
  for (int row = 1; row <= kRows; ++row) {
    table.at(row, 1) = 39887 + row;
    table.at(row, 2) = row % 4 == 0 ? host::CellValue("=not a formula") : "Payee " + std::to_string(row % 3);
    table.at(row, 3) = -12.25 * row;
    table.at(row, 4) = row % 2 == 0 ? "Food" : "Größe & \"mehr\"";
    table.at(row, 5) = row % 3 == 0;
  }
  sheet.Range("A2:E13").SetValue(table);
  sheet.Range("A2:A13").SetNumberFormat("yyyy-mm-dd");
  sheet.Range("C2:C13").SetNumberFormat("#,##0.00");
  sheet.Range("G1").SetFormula("=SUM(C2:C13)");
  sheet.Range("G2").SetFormula("=COUNTIF(D2:D13,\"Food\")");
  sheet.Range("G3").SetFormula("=C3+C5");
  book.Names().Add("amounts", "=Account!$C$2:$C$13");
  book.SaveAs(path);
  book.Close(false);
}

std::string Work(const host::Application& application, const std::string& input, const std::string& output) {
  const host::Workbook book = application.Workbooks().Open(input);
  const host::Worksheet sheet = book.Worksheets().Item("account");
  const host::CellBlock read = sheet.Range("A2:E13").Value();

  const std::vector<host::RowRun> inserted = {{4, 2}, {9, 1}};
  const std::vector<host::RowRun> deleted = {{5, 1}};
  sheet.InsertRows(inserted);
  sheet.DeleteRows(deleted);
  sheet.Range("A4:E4").SetValue(host::CellBlock{{39999, "New \"payee\"", 99.5, "Food", true}});

  const host::Worksheet report = book.Worksheets().Add();
  report.SetName("The report");
  report.SetCodeName("wksReport");
  host::CellBlock block(read.rows(), 4);
  for (int row = 1; row <= read.rows(); ++row) {
    block.at(row, 1) =
        read.at(row, 2).isText() ? host::CellValue("'" + std::string(read.at(row, 2).text())) : read.at(row, 2);
    block.at(row, 2) = read.at(row, 3);
    block.at(row, 3) = "=B" + std::to_string(row) + "*2+Account!$C$2";
    block.at(row, 4) = "=IF(C" + std::to_string(row) + "<-100,NA(),SUM(B$1:B" + std::to_string(row) + "))";
  }
  report.Range("A1:A12").SetNumberFormat("@");  // for texts that look like formulas, which Calc would choose itself
  report.Range("A1:D12").SetFormula(block);
  report.Range("F1:F12").SetFormulaR1C1("=ROUND(RC2/3,2)&\"/\"&R1C2");
  report.Range("G1").SetFormula("=IFERROR(VLOOKUP(\"New \"\"payee\"\"\",Account!B:D,2,FALSE),\"none\")");
  report.Range("G2").SetFormula("=SUM(amounts)");
  report.Range("G3").SetFormula("=INDEX(amounts,2)=Account!C3");
  book.Names().Add("results", "='The report'!$C$1:$D$12");
  book.Names().Add("rate", "=0.19", false);
  report.Range("B1:B12").SetLocked(false);
  host::Protection allowed;
  allowed.allowInsertingRows = true;
  report.Protect(allowed);

  const std::string told = Tell(book);
  book.SaveAs(output);
  book.Close(false);
  return told;
}

std::string Read(const host::Application& application, const std::string& path) {
  const host::Workbook book = application.Workbooks().Open(path);
  const std::string told = Tell(book);
  book.Close(false);
  return told;
}

void Run(const host::Application& application, int argc, char** argv) {
  const std::vector<std::string> words(argv + 1, argv + argc);
  const auto write = [](const std::string& path, const std::string& told) {
    std::ofstream file(path, std::ios::binary);
    file << told;
    if (!file.flush()) throw std::runtime_error("Cannot write " + path + ".");
  };
  if (words.size() == 2 && words[0] == "input") return MakeInput(application, words[1]);
  if (words.size() == 4 && words[0] == "work") return write(words[3], Work(application, words[1], words[2]));
  if (words.size() == 3 && words[0] == "read") return write(words[2], Read(application, words[1]));
  throw std::invalid_argument("Expected: input FILE | work INPUT OUTPUT TOLD | read FILE TOLD");
}

}  // namespace tolvane::twohosts
