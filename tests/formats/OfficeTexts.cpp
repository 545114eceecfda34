#include "tests/formats/OfficeTexts.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "engine/xlsx/Xlsx.h"
#include "platform/TemporaryFolder.h"

namespace tolvane::formatstest {
namespace {

namespace fs = std::filesystem;

void WriteBook(const std::vector<FormatCase>& cases, const fs::path& file) {
  engine::Workbook book;
  engine::Sheet& sheet = book.AddSheet("Cases", 0);
  int row = 0;
  for (const FormatCase& one : cases) {
    ++row;
    sheet.SetValue({row, 1}, one.value);
    sheet.ChangeFormat({row, 1, row, 1}, [&](engine::FormatId id) {
      return book.formats.With(id, engine::FormatGroup::Number,
                               [&](engine::Format& format) { format.numberFormat = one.format; });
    });
  }
  engine::SaveXlsx(book, engine::Package(), file.string());
}

// Every field stands in quotation marks, quotation marks within it twice.
std::vector<std::string> ReadFields(const std::string& text) {
  std::vector<std::string> fields;
  for (std::size_t at = 0; at < text.size();) {
    std::string field;
    if (text[at] == '"') {
      for (++at; at < text.size(); ++at) {
        if (text[at] == '"' && (at + 1 == text.size() || text[at + 1] != '"')) break;
        if (text[at] == '"') ++at;
        field += text[at];
      }
      ++at;
    }
    while (at < text.size() && text[at] != '\n') field += text[at++];
    ++at;
    fields.push_back(std::move(field));
  }
  return fields;
}

}  // namespace

bool IsOfficeInstalled() {
  return std::system("command -v soffice >/dev/null 2>&1") == 0;
}

std::vector<std::string> ShownByOffice(const std::vector<FormatCase>& cases) {
  const platform::TemporaryFolder folder;
  const fs::path file = folder.Path() / "cases.xlsx";
  WriteBook(cases, file);
  // Comma, quotation mark, UTF-8, from line 1, no column kinds, language of the book, all texts in quotation marks,
  // contents as shown.
  const std::string filter = "csv:\"Text - txt - csv (StarCalc)\":44,34,76,1,,0,true,true";
  const std::string command = "LC_ALL=C.UTF-8 soffice -env:UserInstallation=file://" +
                              (folder.Path() / "profile").string() + " --headless --convert-to " + filter +
                              " --outdir " + folder.Path().string() + " " + file.string() + " >/dev/null 2>&1";
  const int status = std::system(command.c_str());
  std::ifstream made(folder.Path() / "cases.csv", std::ios::binary);
  if (status != 0 || !made) throw std::runtime_error("LibreOffice did not convert the cases: " + command);
  std::ostringstream text;
  text << made.rdbuf();
  std::vector<std::string> fields = ReadFields(text.str());
  fields.resize(cases.size());  // trailing cells that show nothing have no line
  return fields;
}

}  // namespace tolvane::formatstest
