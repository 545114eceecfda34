#include "apps/tolvane/TableCommand.h"

#include <cstdint>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "apps/tolvane/BatchDesk.h"
#include "apps/tolvane/TextTable.h"
#include "engine/xlsx/Xlsx.h"
#include "hosts/embedded/EmbeddedHost.h"
#include "hosts/files/XlsxFiles.h"
#include "platform/Files.h"
#include "platform/Text.h"

namespace tolvane::app {
namespace {

// More would not be looked at, and one stray cell at the end of the grid would fill the memory.
constexpr std::int64_t kMostCells = 5'000'000;

std::string ReadAll(const std::string& file, std::istream& input) {
  const std::string bytes = file == "-" ? std::string(std::istreambuf_iterator<char>(input), {})
                                        : platform::ReadFile(platform::PathFromUtf8(file));
  return platform::FromSystemCodePage(bytes);
}

std::vector<std::vector<std::string>> SplitTable(std::string_view text) {
  std::vector<std::vector<std::string>> rows;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    std::vector<std::string>& cells = rows.emplace_back();
    for (std::size_t tab = line.find('\t'); tab != std::string_view::npos; tab = line.find('\t')) {
      cells.emplace_back(line.substr(0, tab));
      line = line.substr(tab + 1);
    }
    cells.emplace_back(line);
  }
  return rows;
}

void TypeTable(const std::vector<std::vector<std::string>>& rows, const host::Worksheet& sheet,
               host::UserActions& user) {
  for (std::size_t row = 0; row < rows.size(); ++row) {
    for (std::size_t column = 0; column < rows[row].size(); ++column) {
      const std::string& text = rows[row][column];
      if (text.empty()) continue;
      const host::Range cell = sheet.Cells(static_cast<int>(row) + 1, static_cast<int>(column) + 1);
      try {
        user.Type(cell, text);
      } catch (const host::HostError& error) {
        throw std::runtime_error("Cell " + cell.Address({.rowAbsolute = false, .columnAbsolute = false}) + ", " +
                                 VisibleText(text) + ": " + error.what());
      }
    }
  }
}

host::Worksheet SheetOf(const host::Workbook& book, const std::string& name) {
  const host::Worksheets sheets = book.Worksheets();
  std::string names;
  for (int i = 1; i <= sheets.Count(); ++i) {
    const host::Worksheet sheet = sheets.Item(i);
    if (name.empty() ? sheet.Visible() == host::SheetVisibility::Visible : sheet.Name() == name) return sheet;
    names += (i == 1 ? "" : ", ") + sheet.Name();
  }
  throw std::runtime_error("There is no sheet \"" + name + "\" in the workbook. It has: " + names);
}

// What the cells of the sheet show, as far as there is anything; whether one shows an error value.
bool Fill(TextTable& table, const host::Worksheet& sheet, const engine::Workbook& book) {
  const auto used = book.FindSheet(sheet.Name())->UsedContents();
  if (!used) return false;
  if (used->cells() > kMostCells) {
    throw std::runtime_error("The sheet \"" + sheet.Name() + "\" reaches over " + std::to_string(used->cells()) +
                             " cells, too many to be shown as a table");
  }
  bool hasErrors = false;
  for (int row = used->top; row <= used->bottom; ++row) {
    std::vector<TextTable::Cell> cells;
    for (int column = used->left; column <= used->right; ++column) {
      const host::Range cell = sheet.Cells(row, column);
      const host::CellValue value = cell.Value().single();
      hasErrors = hasErrors || value.isError();
      cells.push_back({cell.Text(), value.isNumber()});
    }
    table.AddRow(std::move(cells));
  }
  return hasErrors;
}

}  // namespace

int RunTable(const TableRequest& request, std::istream& input, std::ostream& output) {
  const bool isBook = engine::FileKindOf(request.file).has_value();
  if (!isBook && !request.sheet.empty()) {
    throw std::runtime_error("--sheet is for workbook files; " + request.file + " is a table of one sheet");
  }
  BatchDesk desk;
  engine::SystemLockWorld world;
  // What is only looked at may be open elsewhere.
  files::XlsxFiles files(world, {.onlyReads = true, .warn = [](const std::string& text) {
                                   std::cerr << "tolvane: " << VisibleText(text) << '\n';
                                 }});
  embedded::EmbeddedHost spreadsheet(desk, files);
  const host::Application application = spreadsheet.application();
  host::Workbook book;
  if (isBook) {
    book = application.Workbooks().Open(std::filesystem::absolute(platform::PathFromUtf8(request.file)).string());
  } else {
    const auto rows = SplitTable(ReadAll(request.file, input));
    book = application.Workbooks().Add();
    // Formulas may point at cells that are typed after them: calculated once, at the end.
    application.SetCalculation(host::Calculation::Manual);
    TypeTable(rows, book.Worksheets().Item(1), spreadsheet.userActions());
    application.SetCalculation(host::Calculation::Automatic);
  }
  const host::Worksheet sheet = SheetOf(book, request.sheet);
  TextTable table;
  const bool hasErrors = Fill(table, sheet, spreadsheet.BookOf(book));
  if (request.saveAs.empty()) {
    table.Print(output);
  } else {
    book.SaveAs(std::filesystem::absolute(platform::PathFromUtf8(request.saveAs)).string());
    output << "Saved " << VisibleText(request.saveAs) << '\n';
  }
  return hasErrors ? 1 : 0;
}

}  // namespace tolvane::app
