#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::xlsxtest {

// A workbook file put together part by part.
class TestFile {
 public:
  // A book with one sheet, "Data", whose <worksheet> holds `sheetContent`.
  explicit TestFile(std::string_view sheetContent = "<sheetData/>");

  // Sets the content of a part; empty removes it.
  TestFile& Set(const std::string& path, std::string content);
  // Appends links to a part's file of links, each as "id kind target"; " external" may follow.
  TestFile& Link(const std::string& source, const std::vector<std::string>& links);
  TestFile& Type(const std::string& part, const std::string& type);
  std::string Bytes() const;

 private:
  std::map<std::string, std::string> parts_;
  std::map<std::string, std::string> links_;
  std::string types_;
};

inline constexpr std::string_view kSheetPath = "xl/worksheets/sheet1.xml";

std::string Worksheet(std::string_view content);
// A part of a file, unpacked; empty when it is not there.
std::string PartOf(const std::string& bytes, std::string_view path);
// Its bytes as they are packed.
std::string PackedPartOf(const std::string& bytes, std::string_view path);
std::vector<std::string> PartNamesOf(const std::string& bytes);

}  // namespace tolvane::xlsxtest
