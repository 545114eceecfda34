#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "platform/TemporaryFolder.h"

namespace tolvane::xlsxtest {

// Kinds of file that LibreOffice converts to.
inline constexpr const char* kSofficeXlsx = "xlsx:\"Calc MS Excel 2007 XML\"";
// A file for each sheet, NAME-SHEET.csv: commas, quotes where need be, UTF-8, values as they are shown.
inline constexpr const char* kSofficeCsv =
    "csv:\"Text - txt - csv (StarCalc):44,34,76,1,,0,false,true,false,false,false,-1\"";

// LibreOffice without a window, with a profile and files of its own.
class Soffice {
 public:
  static bool IsThere();

  // Lets LibreOffice open files and save them as another kind; the folder with what came of it.
  std::filesystem::path ConvertAll(const std::vector<std::filesystem::path>& files, const std::string& kind);
  // The same with one file; the new one.
  std::filesystem::path Convert(const std::filesystem::path& file, const std::string& kind);

  // Lets LibreOffice open a file, do something with it that is told in Basic (the document is `book`), and save it.
  std::filesystem::path ConvertChanged(const std::filesystem::path& file, const std::string& basic);

  std::filesystem::path Folder() const { return folder_.Path(); }

 private:
  void Run(const std::string& arguments);
  std::filesystem::path NewFolder();

  platform::TemporaryFolder folder_;
  int conversions_ = 0;
};

}  // namespace tolvane::xlsxtest
