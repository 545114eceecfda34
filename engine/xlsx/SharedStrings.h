#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "engine/model/Workbook.h"
#include "engine/xlsx/PackageData.h"
#include "engine/xlsx/XmlReader.h"

namespace tolvane::engine::xlsx {

// The text of an <si> or <is> element at whose Start the reader stands; goes to its End. `isPlain`: that is all there
// is to it, no runs with fonts of their own, no readings.
std::string ReadStringItem(XmlReader& reader, bool& isPlain);

// The part of shared texts. `richXml`, `strings` of the package are filled.
void ReadSharedStrings(XmlReader& reader, Budget& budget, PackageData& data);

// Gives the texts of cells their numbers. A text that came out of the file is known by its bytes in memory, so that a
// cell which nobody touched keeps its runs, wherever it went.
class SharedStringsWriter {
 public:
  SharedStringsWriter(const Workbook& workbook, const PackageData& data);

  std::size_t NumberOf(const Text& text);
  // Whether the part must be written; to be asked, as Write, when all texts have been.
  bool isChanged() const { return isChanged_; }
  void Write(ZipWriter& zip) const;

 private:
  void MarkUsed(const Text& text);
  std::size_t Add(const Text& text);
  void AppendItem(std::string& xml, std::size_t number) const;

  const PackageData& data_;
  std::unordered_map<const char*, std::size_t> byBytes_;
  std::unordered_multimap<std::string_view, std::size_t> byContent_;
  std::unordered_map<const char*, const std::string*> inlineRich_;
  std::vector<Text> strings_;
  std::vector<const std::string*> rich_;  // null: plain
  std::vector<bool> isUsed_;
  std::size_t nextFree_ = 0;
  bool isChanged_ = false;
};

}  // namespace tolvane::engine::xlsx
