// Books that LibreOffice makes with what the model has no place for: charts, pictures, shapes, comments, conditional
// formats, pivot tables, print set-up. They are made from flat files of text when the test runs.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <regex>
#include <set>

#include "engine/xlsx/Xlsx.h"
#include "engine/xlsx/Zip.h"
#include "tests/xlsx/Soffice.h"
#include "tests/xlsx/TestFile.h"

namespace tolvane::xlsxtest {
namespace {

using namespace engine;
namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsSupersetOf;

std::string ContentOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(stream), {});
}

void Write(const fs::path& file, const std::string& content) {
  std::ofstream(file, std::ios::binary) << content;
}

// The parts whose packed bytes differ, or that only one of two files has.
std::set<std::string> PartsThatDiffer(const std::string& before, const std::string& after) {
  std::set<std::string> differing;
  for (const std::string* bytes : {&before, &after}) {
    for (const std::string& name : PartNamesOf(*bytes)) {
      if (PackedPartOf(before, name) != PackedPartOf(after, name)) differing.insert(name);
    }
  }
  return differing;
}

// The file with macros in it, as Excel puts them there. LibreOffice has none to give.
std::string WithMacros(const std::string& bytes) {
  const xlsx::ZipArchive archive(bytes);
  xlsx::Budget budget(bytes.size());
  xlsx::ZipWriter zip;
  const auto put = [](std::string text, std::string_view in_front_of, const std::string& added) {
    return text.insert(text.rfind(in_front_of), added);
  };
  for (const xlsx::ZipEntry& entry : archive.entries()) {
    std::string content = archive.Read(entry, budget);
    if (entry.name == "[Content_Types].xml") {
      content = put(content, "</Types>",
                    "<Override PartName=\"/xl/vbaProject.bin\" ContentType=\"application/vnd.ms-office.vbaProject\"/>");
      constexpr std::string_view plain = "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml";
      content.replace(content.find(plain), plain.size(), "application/vnd.ms-excel.sheet.macroEnabled.main+xml");
    } else if (entry.name == "xl/_rels/workbook.xml.rels") {
      content = put(content, "</Relationships>",
                    "<Relationship Id=\"rIdMacros\" Type=\"http://schemas.microsoft.com/office/2006/relationships/"
                    "vbaProject\" Target=\"vbaProject.bin\"/>");
    }
    zip.Add(entry.name, content);
  }
  zip.Add("xl/vbaProject.bin", std::string("\xD0\xCF\x11\xE0 not really", 15));
  return zip.Finish();
}

TEST(Pictures, AllThatOthersPutIntoABookStaysWhenOneCellIsChanged) {
  if (!Soffice::IsThere()) GTEST_SKIP() << "soffice is not installed: no book of LibreOffice's was checked";
  Soffice soffice;
  const fs::path made =
      soffice.Convert(fs::path(TOLVANE_SOURCE_DIR) / "tests/xlsx/samples/pictures.fods", kSofficeXlsx);
  const std::string before = ContentOf(made);
  EXPECT_THAT(PartNamesOf(before),
              IsSupersetOf({"xl/charts/chart1.xml", "xl/media/image1.png", "xl/comments1.xml",
                            "xl/drawings/drawing1.xml", "xl/drawings/vmlDrawing1.vml", "xl/pivotTables/pivotTable1.xml",
                            "xl/pivotCache/pivotCacheDefinition1.xml", "xl/pivotCache/pivotCacheRecords1.xml"}));
  const std::string data = PartOf(before, kSheetPath);
  for (const char* part : {"<conditionalFormatting", "<colorScale>", "<pageSetup", "<headerFooter", "landscape"}) {
    ASSERT_THAT(data, HasSubstr(part)) << "LibreOffice must have written what this test is about";
  }

  XlsxBook book = ReadXlsx(before);
  ASSERT_EQ(book.workbook->sheetAt(0).ValueAt({5, 4}), Value(4));
  book.workbook->sheetAt(0).SetValue({5, 4}, 77);
  const std::string after = WriteXlsx(*book.workbook, book.package, {BookKind::Book, false});
  EXPECT_THAT(PartsThatDiffer(before, after), ElementsAre("xl/workbook.xml", kSheetPath))
      << "the workbook part tells the code names";
  const std::string changed = PartOf(after, kSheetPath);
  for (const char* element :
       {"<conditionalFormatting", "<pageMargins", "<pageSetup", "<headerFooter", "<legacyDrawing"}) {
    const std::size_t from = data.find(element), to = data.find('>', from);
    EXPECT_THAT(changed, HasSubstr(data.substr(from, to - from))) << element;
  }

  // The same with macros.
  const std::string macros = WithMacros(before);
  XlsxBook withMacros = ReadXlsx(macros);
  EXPECT_TRUE(withMacros.package.hasMacros());
  withMacros.workbook->sheetAt(0).SetValue({5, 4}, 77);
  EXPECT_THAT(PartsThatDiffer(macros, WriteXlsx(*withMacros.workbook, withMacros.package, {BookKind::Book, true})),
              ElementsAre("xl/workbook.xml", kSheetPath));

  // LibreOffice sees the same values in all sheets, but for that one.
  Write(soffice.Folder() / "before.xlsx", before);
  Write(soffice.Folder() / "after.xlsx", after);
  const fs::path out =
      soffice.ConvertAll({soffice.Folder() / "before.xlsx", soffice.Folder() / "after.xlsx"}, kSofficeCsv);
  for (const char* sheet : {"Pictures", "Pivot"}) {
    const std::string values = ContentOf(out / (std::string("before-") + sheet + ".csv"));
    EXPECT_NE(values, "") << sheet;
    EXPECT_EQ(ContentOf(out / (std::string("after-") + sheet + ".csv")), values) << sheet;
  }
  std::string values = ContentOf(out / "before-Data.csv");
  EXPECT_THAT(values, HasSubstr("House,50,100,4\n"));
  values.replace(values.find("House,50,100,4\n"), 15, "House,50,100,77\n");
  EXPECT_EQ(ContentOf(out / "after-Data.csv"), values);
  // And the same of what is not a value.
  // (Each by itself: it numbers charts through all books that it has open.)
  // Axes of charts have numbers by chance.
  const auto withoutChance = [](const std::string& xml) {
    return std::regex_replace(xml, std::regex("(axId|crossAx) val=\"[0-9]+\""), "$1");
  };
  const std::string wanted = ContentOf(soffice.Convert(soffice.Folder() / "before.xlsx", kSofficeXlsx));
  const std::string got = ContentOf(soffice.Convert(soffice.Folder() / "after.xlsx", kSofficeXlsx));
  for (const char* part : {"xl/charts/chart1.xml", "xl/media/image1.png", "xl/comments1.xml",
                           "xl/pivotTables/pivotTable1.xml", "xl/drawings/drawing1.xml"}) {
    EXPECT_NE(PartOf(wanted, part), "") << part;
    EXPECT_EQ(withoutChance(PartOf(got, part)), withoutChance(PartOf(wanted, part))) << part;
  }
}

}  // namespace
}  // namespace tolvane::xlsxtest
