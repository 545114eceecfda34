#include "apps/tolvane/TableCommand.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "apps/tolvane/BatchDesk.h"
#include "apps/tolvane/TextTable.h"
#include "hosts/embedded/EmbeddedHost.h"
#include "platform/Files.h"
#include "platform/Text.h"

namespace tolvane::app {
namespace {

// The workbooks of this command live in memory only.
class NoFiles final : public embedded::BookFiles {
 public:
  Opened Open(const std::string& path) override {
    throw host::HostError(host::ErrorNumber::ApplicationDefined, "Workbook files cannot be opened yet: " + path);
  }
  void Save(const engine::Workbook&, const std::string& path) override {
    throw host::HostError(host::ErrorNumber::ApplicationDefined, "Workbook files cannot be saved yet: " + path);
  }
};

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

}  // namespace

int RunTable(const std::string& file, std::istream& input, std::ostream& output) {
  const auto rows = SplitTable(ReadAll(file, input));
  if (rows.empty()) return 0;
  const std::size_t columns = std::max_element(rows.begin(), rows.end(), [](const auto& a, const auto& b) {
                                return a.size() < b.size();
                              })->size();

  BatchDesk desk;
  NoFiles files;
  embedded::EmbeddedHost spreadsheet(desk, files);
  const host::Application application = spreadsheet.application();
  const host::Worksheet sheet = application.Workbooks().Add().Worksheets().Item(1);
  // Formulas may point at cells that are typed after them: calculated once, at the end.
  application.SetCalculation(host::Calculation::Manual);
  TypeTable(rows, sheet, spreadsheet.userActions());
  application.SetCalculation(host::Calculation::Automatic);

  TextTable table;
  bool hasErrors = false;
  for (std::size_t row = 0; row < rows.size(); ++row) {
    std::vector<TextTable::Cell> cells;
    for (std::size_t column = 0; column < columns; ++column) {
      const host::Range cell = sheet.Cells(static_cast<int>(row) + 1, static_cast<int>(column) + 1);
      const host::CellValue value = cell.Value().single();
      hasErrors = hasErrors || value.isError();
      cells.push_back({cell.Text(), value.isNumber()});
    }
    table.AddRow(std::move(cells));
  }
  table.Print(output);
  return hasErrors ? 1 : 0;
}

}  // namespace tolvane::app
