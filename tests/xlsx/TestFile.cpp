#include "tests/xlsx/TestFile.h"

#include <sstream>

#include "engine/xlsx/Links.h"
#include "engine/xlsx/Zip.h"

namespace tolvane::xlsxtest {

using namespace engine::xlsx;

namespace {

constexpr std::string_view kMain = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
constexpr std::string_view kLinks = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";

}  // namespace

std::string Worksheet(std::string_view content) {
  return "<worksheet xmlns=\"" + std::string(kMain) + "\" xmlns:r=\"" + std::string(kLinks) + "\">" +
         std::string(content) + "</worksheet>";
}

TestFile::TestFile(std::string_view sheetContent) {
  Type("xl/workbook.xml", "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml");
  Link("", {"rId1 officeDocument xl/workbook.xml"});
  Link("xl/workbook.xml", {"rId1 worksheet worksheets/sheet1.xml"});
  Set("xl/workbook.xml", "<workbook xmlns=\"" + std::string(kMain) + "\" xmlns:r=\"" + std::string(kLinks) +
                             "\"><sheets><sheet name=\"Data\" sheetId=\"1\" r:id=\"rId1\"/></sheets></workbook>");
  Set(std::string(kSheetPath), Worksheet(sheetContent));
}

TestFile& TestFile::Set(const std::string& path, std::string content) {
  if (content.empty()) {
    parts_.erase(path);
  } else {
    parts_[path] = std::move(content);
  }
  return *this;
}

TestFile& TestFile::Link(const std::string& source, const std::vector<std::string>& links) {
  for (const std::string& link : links) {
    std::istringstream words(link);
    std::string id, kind, target, mode;
    words >> id >> kind >> target >> mode;
    links_[source] += "<Relationship Id=\"" + id + "\" Type=\"" + std::string(kLinks) + "/" + kind + "\" Target=\"" +
                      target + "\"" + (mode.empty() ? "" : " TargetMode=\"External\"") + "/>";
  }
  return *this;
}

TestFile& TestFile::Type(const std::string& part, const std::string& type) {
  types_ += "<Override PartName=\"/" + part + "\" ContentType=\"" + type + "\"/>";
  return *this;
}

std::string TestFile::Bytes() const {
  ZipWriter zip;
  zip.Add("[Content_Types].xml",
          "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\"><Default Extension=\"rels\" "
          "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/><Default Extension=\"xml\" "
          "ContentType=\"application/xml\"/>" +
              types_ + "</Types>");
  for (const auto& [source, links] : links_) {
    zip.Add(LinksPathOf(source),
            "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">" + links +
                "</Relationships>");
  }
  for (const auto& [path, content] : parts_) zip.Add(path, content);
  return zip.Finish();
}

std::string PartOf(const std::string& bytes, std::string_view path) {
  const ZipArchive archive(bytes);
  const ZipEntry* entry = archive.Find(path);
  Budget budget(bytes.size());
  return entry == nullptr ? std::string() : archive.Read(*entry, budget);
}

std::string PackedPartOf(const std::string& bytes, std::string_view path) {
  const ZipArchive archive(bytes);
  const ZipEntry* entry = archive.Find(path);
  return entry == nullptr ? std::string() : std::string(archive.CompressedBytes(*entry));
}

std::vector<std::string> PartNamesOf(const std::string& bytes) {
  std::vector<std::string> names;
  const ZipArchive archive(bytes);
  for (const ZipEntry& entry : archive.entries()) names.push_back(entry.name);
  return names;
}

}  // namespace tolvane::xlsxtest
