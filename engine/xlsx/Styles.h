#pragma once

#include <pugixml.hpp>

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "engine/model/Workbook.h"
#include "engine/xlsx/Colours.h"
#include "engine/xlsx/PackageData.h"

namespace tolvane::engine::xlsx {

// Reads the styles part into a workbook's formats, and into the package which record became which.
void ReadStyles(std::string_view xml, FormatTable& formats, PackageData& data, Budget& budget);

// Writes the styles part. Records that are there keep their numbers, since cells of sheets that are not written again
// use them; what changed is changed in place, what is new is added behind.
class StylesWriter {
 public:
  StylesWriter(const FormatTable& formats, const PackageData& data, Budget& budget);
  ~StylesWriter();

  // The number by which a cell tells its format.
  int XfOf(FormatId id);
  // Whether the part must be written; to be asked, as Finish, when all formats have been.
  bool isChanged() const { return document_ != nullptr; }
  std::string Finish();

 private:
  struct Collection;  // <fonts>, <fills> and so on

  void Load();
  void ChangeStyles();
  void ChangeRecords();
  int StyleXfOf(StyleId id);
  void AddStyle(StyleId id);
  void WriteXf(pugi::xml_node xf, const Format& to, const Format* from);
  void WriteGroups(pugi::xml_node xf, const CellFormat& to, const CellFormat* from);
  int NumberFormatIdOf(const std::string& format);
  int AddXf(const CellFormat& format);

  const FormatTable& formats_;
  const PackageData& data_;
  Budget& budget_;
  std::unique_ptr<pugi::xml_document> document_;
  std::unique_ptr<Collection> fonts_, fills_, borders_, styleXfs_, xfs_;
  std::unordered_map<std::string, int> numberFormats_;
  std::unordered_set<int> takenNumberFormats_;
  std::vector<int> xfOfFormat_;  // -1: not asked yet
  std::vector<int> styleXfOf_;   // by StyleId; -1: not written yet
  int nextNumberFormat_ = 0;
  int xfCount_ = 0;
};

}  // namespace tolvane::engine::xlsx
