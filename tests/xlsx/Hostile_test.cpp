// Files that were damaged or made to do harm end in an error that says what is wrong, soon and in little memory.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>

#include "engine/xlsx/Xlsx.h"
#include "engine/xlsx/Zip.h"
#include "platform/TemporaryFolder.h"
#include "tests/xlsx/Confined.h"
#include "tests/xlsx/HostileFiles.h"
#include "tests/xlsx/Mutation.h"
#include "tests/xlsx/TestFile.h"

namespace tolvane::xlsxtest {
namespace {

using namespace engine;
namespace fs = std::filesystem;
using ::testing::HasSubstr;

std::string ProblemWith(const std::string& bytes) {
  try {
    ReadXlsx(bytes);
    return "none";
  } catch (const XlsxError& error) {
    return error.what();
  }
}

std::string ProblemWithSheet(std::string_view content) {
  return ProblemWith(TestFile(content).Bytes());
}

std::string Repeated(std::string_view text, int times) {
  std::string all;
  for (int i = 0; i < times; ++i) all += text;
  return all;
}

TEST(Hostile, NoArchives) {
  EXPECT_THAT(ProblemWith(""), HasSubstr("empty"));
  EXPECT_THAT(ProblemWith("hello"), HasSubstr("too short"));
  EXPECT_THAT(ProblemWith(std::string(100000, 'x')), HasSubstr("no directory"));
  EXPECT_THAT(ProblemWith(std::string("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1") + std::string(600, '\0')),
              HasSubstr("password"));
}

TEST(Hostile, FilesCutOffAnywhere) {
  const std::string bytes = TestFile("<sheetData><row><c><v>1</v></c></row></sheetData>").Bytes();
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    EXPECT_NE(ProblemWith(bytes.substr(0, size)), "none") << size;
  }
}

TEST(Hostile, NamesOfParts) {
  for (const char* name : {"../evil", "/etc/passwd", "a\\b", "xl/./x", "xl/../../x"}) {
    EXPECT_THAT(ProblemWith(TestFile().Set(name, "x").Bytes()), HasSubstr("has the name")) << name;
  }
  EXPECT_THAT(ProblemWith(TestFile().Set("XL/Workbook.xml", "x").Bytes()), HasSubstr("two parts"));
}

// Lets two entries of a directory tell the same data.
TEST(Hostile, PartsThatOverlap) {
  std::string bytes = TestFile().Set("xl/a", "same size").Set("xl/b", "same size").Bytes();
  const std::size_t end = bytes.size() - 22;
  const auto directory = static_cast<unsigned char>(bytes[end + 16]) | static_cast<unsigned char>(bytes[end + 17]) << 8;
  const std::size_t first = bytes.find("xl/a", static_cast<std::size_t>(directory)), second = bytes.find("xl/b", first);
  bytes.replace(second - 4, 8, bytes.substr(first - 4, 8));  // the offset and the name
  EXPECT_NE(ProblemWith(bytes), "none");
}

TEST(Hostile, Entities) {
  TestFile file;
  file.Set(std::string(kSheetPath), "<!DOCTYPE a [<!ENTITY b \"bbbbbbbb\">]>" + Worksheet("<sheetData/>"));
  EXPECT_THAT(ProblemWith(file.Bytes()), HasSubstr("document type"));
  file.Set("xl/workbook.xml", "<!DOCTYPE a SYSTEM \"file:///etc/passwd\"><workbook/>");
  EXPECT_THAT(ProblemWith(file.Bytes()), HasSubstr("document type"));
  EXPECT_THAT(ProblemWithSheet("<sheetData><row><c t=\"str\"><v>&b;</v></c></row></sheetData>"),
              HasSubstr("entity &b;"));
  EXPECT_THAT(ProblemWithSheet("<sheetData><row><c t=\"str\"><v>&#0;</v></c></row></sheetData>"), HasSubstr("entity"));
}

TEST(Hostile, PlacesBeyondTheGrid) {
  EXPECT_THAT(ProblemWithSheet("<sheetData><row r=\"1048577\"/></sheetData>"), HasSubstr("row 1048577"));
  EXPECT_THAT(ProblemWithSheet("<sheetData><row r=\"0\"/></sheetData>"), HasSubstr("not on the grid"));
  EXPECT_THAT(ProblemWithSheet("<sheetData><row r=\"-3\"/></sheetData>"), HasSubstr("not on the grid"));
  EXPECT_THAT(ProblemWithSheet("<sheetData><row r=\"1\"><c r=\"XFE1\"/></row></sheetData>"), HasSubstr("cell XFE1"));
  EXPECT_THAT(ProblemWithSheet("<sheetData><row r=\"1\"><c r=\"A2\"/></row></sheetData>"),
              HasSubstr("cell A2 in row 1"));
  EXPECT_THAT(ProblemWithSheet("<sheetData><row r=\"1048576\"/><row/></sheetData>"), HasSubstr("not on the grid"));
  EXPECT_THAT(ProblemWithSheet("<sheetData><row>" + Repeated("<c/>", 16385) + "</row></sheetData>"),
              HasSubstr("more cells"));
  EXPECT_THAT(
      ProblemWithSheet(
          "<sheetData><row r=\"1\"><c r=\"A1\"><f t=\"array\" ref=\"A1:XFD1048576\">1</f></c></row></sheetData>"),
      HasSubstr("impossible area"));
  EXPECT_THAT(ProblemWithSheet("<cols><col min=\"1\" max=\"99999999\"/></cols><sheetData/>"), HasSubstr("impossible"));
  EXPECT_THAT(ProblemWithSheet("<cols>" + Repeated("<col min=\"1\" max=\"1\"/>", 100000) + "</cols><sheetData/>"),
              HasSubstr("impossible"));
}

TEST(Hostile, NumbersThatLie) {
  EXPECT_THAT(ProblemWithSheet("<sheetData><row><c s=\"5\"/></row></sheetData>"), HasSubstr("format 5"));
  EXPECT_THAT(ProblemWithSheet("<sheetData><row><c s=\"-1\"/></row></sheetData>"), HasSubstr("format"));
  EXPECT_THAT(ProblemWithSheet("<sheetData><row><c t=\"s\"><v>3</v></c></row></sheetData>"),
              HasSubstr("shared text 3"));
  EXPECT_THAT(ProblemWithSheet("<sheetData><row><c><v>many</v></c></row></sheetData>"),
              HasSubstr("\"many\" for a number"));
  TestFile file;
  file.Link("xl/workbook.xml", {"rId2 sharedStrings s.xml", "rId3 styles styles.xml"});
  file.Set("xl/s.xml",
           "<sst xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" count=\"4000000000\" "
           "uniqueCount=\"4000000000\"><si><t>one</t></si></sst>");
  EXPECT_EQ(ProblemWith(file.Bytes()), "none") << "a count is no more than a hint";
  file.Set("xl/styles.xml", "<styleSheet><fonts><font/></fonts><cellXfs><xf fontId=\"99\"/></cellXfs></styleSheet>");
  EXPECT_THAT(ProblemWith(file.Bytes()), HasSubstr("fontId 99"));
  file.Set("xl/styles.xml", "<styleSheet><cellXfs>" + Repeated("<xf/>", 70000) + "</cellXfs></styleSheet>");
  EXPECT_THAT(ProblemWith(file.Bytes()), HasSubstr("too many"));
}

TEST(Hostile, PartsThatAreNotThere) {
  EXPECT_THAT(ProblemWith(TestFile().Set("xl/workbook.xml", "").Bytes()), HasSubstr("xl/workbook.xml is missing"));
  EXPECT_THAT(ProblemWith(TestFile().Set(std::string(kSheetPath), "").Bytes()), HasSubstr("part is missing"));
  TestFile twice;
  twice.Set("xl/workbook.xml",
            "<workbook xmlns:r=\"r\"><sheets><sheet name=\"a\" r:id=\"rId1\"/><sheet name=\"b\" "
            "r:id=\"rId1\"/></sheets></workbook>");
  EXPECT_THAT(ProblemWith(twice.Bytes()), HasSubstr("two sheets in one part"));
  twice.Set("xl/workbook.xml", "<workbook xmlns:r=\"r\"><sheets/></workbook>");
  EXPECT_THAT(ProblemWith(twice.Bytes()), HasSubstr("no sheet"));
  EXPECT_THAT(ProblemWithSheet("<sheetData/><hyperlinks><hyperlink ref=\"A1\" r:id=\"rId77\"/></hyperlinks>"),
              HasSubstr("rId77"));
  TestFile wrong;
  wrong.Set(std::string(kSheetPath), "<workbook/>");
  EXPECT_THAT(ProblemWith(wrong.Bytes()), HasSubstr("does not hold a worksheet"));
}

TEST(Hostile, ALinkThatLeadsNowhereDoesNotHideTheNewPart) {
  TestFile file;
  file.Link("xl/workbook.xml", {"rId2 sharedStrings gone.xml", "rId3 styles gone.xml"});
  XlsxBook book = ReadXlsx(file.Bytes());
  book.workbook->sheetAt(0).SetValue({1, 1}, "text");
  const XlsxBook again = ReadXlsx(WriteXlsx(*book.workbook, book.package, {BookKind::Book, false}));
  EXPECT_EQ(again.workbook->sheetAt(0).ValueAt({1, 1}), Value("text"));
}

TEST(Hostile, LinksThatGoInCircles) {
  TestFile file;
  file.Link(std::string(kSheetPath), {"rId1 drawing ../d.xml"})
      .Link("xl/d.xml", {"rId1 chart d.xml", "rId2 back worksheets/sheet1.xml"});
  file.Set("xl/d.xml", "<d/>");
  XlsxBook book = ReadXlsx(file.Bytes());
  book.workbook->AddSheet("Other", 1);
  book.workbook->DeleteSheet(book.workbook->sheetAt(0).id());
  EXPECT_EQ(PartOf(WriteXlsx(*book.workbook, book.package, {BookKind::Book, false}), "xl/d.xml"), "");
}

TEST(Hostile, DeepNesting) {
  EXPECT_THAT(ProblemWithSheet("<sheetData/>" + Repeated("<a>", 100000)), HasSubstr("deep"));
  EXPECT_THAT(ProblemWithSheet("<sheetData>" + Repeated("<row>", 100000)), HasSubstr("deep"));
  TestFile file;
  file.Set("xl/workbook.xml", "<workbook>" + Repeated("<a>", 100000));
  EXPECT_THAT(ProblemWith(file.Bytes()), HasSubstr("deep"));
  const std::string formula = Repeated("(", 8000) + "1" + Repeated(")", 8000);
  EXPECT_EQ(ProblemWithSheet("<sheetData><row><c><f>" + formula + "</f><v>1</v></c></row></sheetData>"), "none")
      << "a formula that is too deep is one that the grammar does not know";
}

// Whatever a damaged file still means, it is opened and saved, or refused.
TEST(Hostile, MutatedFilesAreRefusedOrRead) {
  int opened = 0;
  for (std::uint32_t seed = 0; seed < 500; ++seed) {
    const std::string bytes = MutatedFile(seed);
    if (OpensOrRefuses(bytes)) ++opened;
  }
  EXPECT_GT(opened, 30) << "most mutations must get as far as being read";
  EXPECT_LT(opened, 470) << "many mutations must matter";
}

// --- files made to do harm, opened in little memory ------------------------------------------------------------------

constexpr std::size_t kMostMemory = std::size_t{256} << 20;

class HostileBook : public ::testing::TestWithParam<HostileFile> {};

std::set<std::string> FilesIn(const fs::path& folder) {
  std::set<std::string> names;
  for (const auto& file : fs::directory_iterator(folder)) names.insert(file.path().filename().string());
  return names;
}

TEST_P(HostileBook, EndsInOneErrorThatSaysWhereAndWhy) {
  const platform::TemporaryFolder folder;
  const std::string path = (folder.Path() / "hostile.xlsx").string();
  // Made elsewhere, so that this process stays small.
  const std::string made = InProcessOfItsOwn(0, [&] {
    const std::string bytes = GetParam().make();
    std::ofstream(path, std::ios::binary) << bytes;
    return std::string(bytes.size() < (std::size_t{1} << 20) ? "small" : "large");
  });
  ASSERT_EQ(made, "small") << "what little a file may take depends on its size";
  const std::string problem = InProcessOfItsOwn(kMostMemory, [&]() -> std::string {
    try {
      OpenXlsx(path);
      return "opened";
    } catch (const XlsxError& error) {
      return error.what();
    }
  });
  EXPECT_THAT(problem, ::testing::StartsWith("Cannot open " + path + ". "));
  for (const std::string& says : GetParam().says) EXPECT_THAT(problem, HasSubstr(says));
  EXPECT_THAT(FilesIn(folder.Path()), ::testing::ElementsAre("hostile.xlsx")) << "nothing is written";
}

std::string NameOfCase(const ::testing::TestParamInfo<HostileFile>& info) {
  std::string name;
  for (const char c : info.param.name) name.push_back(c == ' ' ? '_' : c);
  return name;
}

INSTANTIATE_TEST_SUITE_P(Files, HostileBook, ::testing::ValuesIn(HostileFiles()), NameOfCase);

// The limit is one: who asks for more is told.
TEST(Confined, MemoryIsLimited) {
  const auto take = [] {
    const std::string much(2 * kMostMemory, 'x');
    return std::to_string(much.size());
  };
  EXPECT_EQ(InProcessOfItsOwn(0, take), std::to_string(2 * kMostMemory));
  EXPECT_EQ(InProcessOfItsOwn(4 * kMostMemory, take), std::to_string(2 * kMostMemory));
#if !defined(__SANITIZE_ADDRESS__)
  EXPECT_EQ(InProcessOfItsOwn(kMostMemory, take), "out of memory");
#endif
}

}  // namespace
}  // namespace tolvane::xlsxtest
