// Files as other programs write them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/formula/Printer.h"
#include "engine/xlsx/Xlsx.h"
#include "tests/xlsx/TestFile.h"

namespace tolvane::xlsxtest {
namespace {

using namespace engine;
using ::testing::HasSubstr;

constexpr FileKind kBook{BookKind::Book, false};

std::string FormulaIn(const Workbook& book, CellPos at) {
  const Sheet& sheet = book.sheetAt(0);
  return PrintFormula(*sheet.FormulaAt(at)->expression, Notation::A1, {sheet.id(), at}, book);
}

TEST(Reader, ValuesOfEveryKind) {
  const XlsxBook book =
      ReadXlsx(TestFile("<sheetData><row r=\"1\">"
                        "<c r=\"A1\"><v> 1.5E3 </v></c><c r=\"B1\" t=\"b\"><v>1</v></c>"
                        "<c r=\"C1\" t=\"e\"><v>#DIV/0!</v></c><c r=\"D1\" t=\"str\"><v>a_x000D_&lt;b</v></c>"
                        "<c r=\"E1\" t=\"inlineStr\"><is><t xml:space=\"preserve\"> in </t></is></c>"
                        "<c r=\"F1\" t=\"d\"><v>2010-03-15T12:00:00Z</v></c><c r=\"G1\" t=\"d\"><v>2010-03-15</v></c>"
                        "<c r=\"H1\" t=\"d\"><v>06:00:00</v></c><c r=\"I1\" t=\"e\"><v>#SPILL!</v></c><c r=\"J1\"/>"
                        "</row><row><c><v>2</v></c></row></sheetData>")
                   .Bytes());
  const Sheet& sheet = book.workbook->sheetAt(0);
  const std::vector<Value> wanted{1500,  true, ErrorCode::Div0,  "a\r<b", " in ", 40252.5,
                                  40252, 0.25, ErrorCode::Value, Value()};
  for (int column = 1; column <= 10; ++column) {
    EXPECT_EQ(sheet.ValueAt({1, column}), wanted[static_cast<std::size_t>(column - 1)]) << column;
  }
  EXPECT_EQ(sheet.ValueAt({2, 1}), Value(2)) << "places need not be told";
}

TEST(Reader, FormulasOfEveryKind) {
  const XlsxBook book = ReadXlsx(
      TestFile(
          "<sheetData><row r=\"1\"><c r=\"A1\"><f>B1 + 1</f><v>4</v></c><c r=\"B1\"><f t=\"shared\" ref=\"B1:B3\" "
          "si=\"4\">A1*$A$1</f></c><c r=\"C1\" t=\"str\"><f t=\"array\" ref=\"C1:D2\">A1:B2&amp;\"\"</f><v>x</v></c>"
          "<c r=\"D1\"><v>9</v></c></row><row r=\"3\"><c r=\"B3\"><f t=\"shared\" si=\"4\"/><v>8</v></c>"
          "<c r=\"C3\"><f>_xlfn.CONCAT(A1)</f><v>1</v></c></row></sheetData>")
          .Bytes());
  const Workbook& workbook = *book.workbook;
  const Sheet& sheet = workbook.sheetAt(0);
  EXPECT_EQ(FormulaIn(workbook, {1, 1}), "=B1 + 1");
  EXPECT_EQ(FormulaIn(workbook, {3, 2}), "=A3*$A$1");
  EXPECT_EQ(FormulaIn(workbook, {3, 3}), "=CONCAT(A1)");
  EXPECT_TRUE(sheet.FormulaAt({1, 2})->dirty) << "it has no result";
  EXPECT_FALSE(sheet.FormulaAt({1, 1})->dirty);
  EXPECT_EQ(sheet.FormulaAt({2, 4})->arrayArea, (Rect{1, 3, 2, 4}));
  EXPECT_EQ(sheet.ValueAt({1, 4}), Value(9));
  EXPECT_NE(sheet.FormulaAt({1, 4}), nullptr) << "it is part of the array formula still";
  const std::string saved = PartOf(WriteXlsx(workbook, Package(), kBook), kSheetPath);
  EXPECT_THAT(saved, HasSubstr("<f>_xlfn.CONCAT(A1)</f>"));
}

// Characters that XML cannot hold stand as _xHHHH_, wherever a user's text does; "_x" itself may have to.
TEST(Reader, TextsThatXmlCannotHold) {
  TestFile file(
      "<sheetData><row r=\"1\"><c r=\"A1\" t=\"s\"><v>0</v></c><c r=\"B1\" t=\"inlineStr\"><is><t>_x0009_b_x005F_x0041_"
      "</t></is></c><c r=\"C1\" t=\"str\"><f>\"_x0007_\"</f><v>_x0007_</v></c><c r=\"D1\" t=\"str\"><v>_x00e9_ _x41_ "
      "_xZZZZ_"
      "</v></c></row></sheetData><hyperlinks><hyperlink ref=\"A1\" location=\"Data!A1\" "
      "tooltip=\"a_x000A_b\"/></hyperlinks>");
  file.Link("xl/workbook.xml", {"rId3 sharedStrings sharedStrings.xml"});
  file.Set(
      "xl/sharedStrings.xml",
      "<sst "
      "xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"><si><t>a_x0001__x000D_&#10;</t></si></sst>");
  XlsxBook book = ReadXlsx(file.Bytes());
  const auto expectTexts = [](const Workbook& workbook) {
    const Sheet& sheet = workbook.sheetAt(0);
    EXPECT_EQ(sheet.ValueAt({1, 1}), Value("a\x01\r\n"));
    EXPECT_EQ(sheet.ValueAt({1, 2}), Value("\tb_x0041_"));
    EXPECT_EQ(sheet.ValueAt({1, 3}), Value("\x07"));
    EXPECT_EQ(FormulaIn(workbook, {1, 3}), "=\"\x07\"");
    EXPECT_EQ(sheet.ValueAt({1, 4}), Value("\xC3\xA9 _x41_ _xZZZZ_"));
    ASSERT_EQ(sheet.hyperlinks.size(), 1u);
    EXPECT_EQ(sheet.hyperlinks[0].screenTip, "a\nb");
  };
  expectTexts(*book.workbook);
  book.workbook->sheetAt(0).SetValue({9, 9}, 1);
  expectTexts(*ReadXlsx(WriteXlsx(*book.workbook, book.package, kBook)).workbook);
}

// The values stay as they are; the flag says what day they mean. ISO dates are counted by it.
TEST(Reader, DatesThatBeginWith1904) {
  TestFile file(
      "<sheetData><row r=\"1\"><c r=\"A1\"><v>38790</v></c><c r=\"B1\" t=\"d\"><v>2010-03-15</v></c>"
      "<c r=\"C1\" t=\"d\"><v>1904-01-01T12:00:00</v></c></row></sheetData>");
  file.Set("xl/workbook.xml",
           "<workbook xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" xmlns:r=\"r\"><workbookPr "
           "date1904=\"1\"/><sheets><sheet name=\"Data\" sheetId=\"1\" r:id=\"rId1\"/></sheets></workbook>");
  XlsxBook book = ReadXlsx(file.Bytes());
  EXPECT_TRUE(book.workbook->date1904);
  EXPECT_EQ(book.workbook->sheetAt(0).ValueAt({1, 1}), Value(38790));
  EXPECT_EQ(book.workbook->sheetAt(0).ValueAt({1, 2}), Value(38790)) << "15 March 2010";
  EXPECT_EQ(book.workbook->sheetAt(0).ValueAt({1, 3}), Value(0.5));
  book.workbook->sheetAt(0).SetValue({2, 1}, 1);
  const XlsxBook again = ReadXlsx(WriteXlsx(*book.workbook, book.package, kBook));
  EXPECT_TRUE(again.workbook->date1904);
  EXPECT_EQ(again.workbook->sheetAt(0).ValueAt({1, 2}), Value(38790));
}

// Files name other books by the number of the part that keeps what is known of them.
TEST(Reader, LinksToOtherBooks) {
  TestFile file(
      "<sheetData><row r=\"1\"><c r=\"A1\"><f>[1]Data!$B$2+1</f><v>5</v></c><c r=\"B1\"><f>SUM('[1]My data'!A1:A9)</f>"
      "<v>7</v></c><c r=\"C1\"><f>[1]!rate</f><v>2</v></c></row></sheetData>");
  file.Link("xl/workbook.xml", {"rId5 externalLink externalLinks/externalLink1.xml"});
  file.Link("xl/externalLinks/externalLink1.xml", {"rId1 externalLinkPath other.xlsx external"});
  const std::string link =
      "<externalLink><externalBook r:id=\"rId1\" xmlns:r=\"r\"><sheetNames><sheetName val=\"Data\"/></sheetNames>"
      "</externalBook></externalLink>";
  file.Set("xl/externalLinks/externalLink1.xml", link);
  file.Set("xl/workbook.xml",
           "<workbook xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" xmlns:r=\"r\"><sheets><sheet "
           "name=\"Data\" sheetId=\"1\" r:id=\"rId1\"/></sheets><externalReferences><externalReference r:id=\"rId5\"/>"
           "</externalReferences></workbook>");
  const std::string bytes = file.Bytes();
  XlsxBook book = ReadXlsx(bytes);
  const Sheet& sheet = book.workbook->sheetAt(0);
  EXPECT_EQ(sheet.ValueAt({1, 1}), Value(5));
  EXPECT_FALSE(sheet.FormulaAt({1, 1})->dirty) << "what the other book gave last counts";
  const engine::Run run{1, 1};
  book.workbook->InsertRuns(sheet.id(), Axis::Rows, {&run, 1});
  const std::string saved = WriteXlsx(*book.workbook, book.package, kBook);
  EXPECT_THAT(PartOf(saved, kSheetPath), HasSubstr("<f>[1]Data!$B$2+1</f><v>5</v>"));
  EXPECT_THAT(PartOf(saved, kSheetPath), HasSubstr("<f>SUM(&apos;[1]My data&apos;!A1:A9)</f>"))
      << "cells of another book stay where they are";
  EXPECT_THAT(PartOf(saved, kSheetPath), HasSubstr("<f>[1]!rate</f><v>2</v>"));
  EXPECT_EQ(PackedPartOf(saved, "xl/externalLinks/externalLink1.xml"),
            PackedPartOf(bytes, "xl/externalLinks/externalLink1.xml"));
  EXPECT_EQ(PackedPartOf(saved, "xl/externalLinks/_rels/externalLink1.xml.rels"),
            PackedPartOf(bytes, "xl/externalLinks/_rels/externalLink1.xml.rels"));
  EXPECT_THAT(PartOf(saved, "xl/workbook.xml"), HasSubstr("<externalReference r:id=\"rId5\"/>"));
}

TEST(Reader, PrefixedAndStrictFiles) {
  TestFile file;
  constexpr std::string_view strict = "http://purl.oclc.org/ooxml/spreadsheetml/main";
  file.Set(std::string(kSheetPath),
           "<x:worksheet xmlns:x=\"" + std::string(strict) +
               "\"><x:sheetData><x:row r=\"2\"><x:c r=\"B2\"><x:f>1+1</x:f><x:v>2</x:v></x:c>"
               "<y:c r=\"Z9\" xmlns:y=\"other\"/></x:row></x:sheetData><x:pageMargins left=\"1\"/></x:worksheet>");
  file.Set("xl/workbook.xml",
           "<w:workbook xmlns:w=\"" + std::string(strict) +
               "\" xmlns:r=\"http://purl.oclc.org/ooxml/officeDocument/relationships\" conformance=\"strict\">"
               "<w:sheets><w:sheet name=\"Data\" sheetId=\"1\" r:id=\"rId1\"/></w:sheets></w:workbook>");
  XlsxBook book = ReadXlsx(file.Bytes());
  EXPECT_EQ(book.workbook->sheetAt(0).ValueAt({2, 2}), Value(2));
  book.workbook->sheetAt(0).SetValue({3, 3}, "new");
  book.workbook->AddSheet("More", 1).SetValue({1, 1}, 1);
  const std::string saved = WriteXlsx(*book.workbook, book.package, kBook);
  EXPECT_THAT(PartOf(saved, kSheetPath), HasSubstr("<x:pageMargins left=\"1\"/></worksheet>"));
  EXPECT_THAT(PartOf(saved, kSheetPath),
              HasSubstr("<worksheet xmlns:x=\"" + std::string(strict) + "\" xmlns=\"" + std::string(strict)));
  const XlsxBook again = ReadXlsx(saved);
  EXPECT_EQ(again.workbook->sheetAt(0).ValueAt({3, 3}), Value("new"));
  EXPECT_EQ(again.workbook->sheetAt(1).ValueAt({1, 1}), Value(1));
}

// In links and content types names are URIs; in the archive some programs write them so, some as they are.
TEST(Reader, NamesOfPartsAreUris) {
  for (const char* inArchive : {"xl/my sheet 100%.xml", "xl/my%20sheet%20100%25.xml"}) {
    TestFile file;
    file.Link("xl/workbook.xml", {"rId2 worksheet my%20sheet%20100%25.xml"})
        .Set(inArchive, Worksheet("<sheetData><row><c><v>5</v></c></row></sheetData>"))
        .Type("xl/my%20sheet%20100%25.xml", "application/x")
        .Set("xl/workbook.xml",
             "<workbook xmlns:r=\"r\"><sheets><sheet name=\"Data\" r:id=\"rId1\"/><sheet name=\"b\" r:id=\"rId2\"/>"
             "</sheets></workbook>");
    XlsxBook book = ReadXlsx(file.Bytes());
    EXPECT_EQ(book.workbook->sheetAt(1).ValueAt({1, 1}), Value(5));
    book.workbook->sheetAt(1).SetValue({1, 1}, 6);
    book.workbook->AddSheet("c", 2);
    const std::string saved = WriteXlsx(*book.workbook, book.package, kBook);
    EXPECT_EQ(ReadXlsx(saved).workbook->sheetAt(1).ValueAt({1, 1}), Value(6)) << inArchive;
    EXPECT_THAT(PartOf(saved, "[Content_Types].xml"),
                HasSubstr("PartName=\"/xl/my%20sheet%20100%25.xml\" ContentType=\"application/x\""));
  }
}

TEST(Reader, RowsAndColumnsAndWhatTheySay) {
  TestFile file(
      "<cols><col min=\"2\" max=\"3\" width=\"9.140625\" customWidth=\"1\"/><col min=\"4\" max=\"4\" "
      "width=\"20.7109375\" "
      "bestFit=\"1\"/></cols><sheetData><row r=\"2\" ht=\"30\"/><row r=\"3\" ht=\"30\" customHeight=\"1\" "
      "collapsed=\"1\"/><row r=\"5\" hidden=\"1\"/><row r=\"6\" hidden=\"1\"/></sheetData>"
      "<autoFilter ref=\"A4:B9\"><filterColumn colId=\"0\"><top10 val=\"3\"/></filterColumn></autoFilter>");
  XlsxBook book = ReadXlsx(file.Bytes());
  Sheet& sheet = book.workbook->sheetAt(0);
  EXPECT_EQ(sheet.columns.At(2).size, 8.43);
  EXPECT_EQ(sheet.columns.At(4).size, 20);
  EXPECT_EQ(sheet.rows.At(2).size, 30);
  EXPECT_TRUE(sheet.rows.At(5).filtered);
  EXPECT_FALSE(sheet.rows.At(5).hidden);
  sheet.SetValue({1, 1}, 1);
  sheet.rows.Change(2, 2, [](Band& band) { band.size = 31; });
  const std::string part = PartOf(WriteXlsx(*book.workbook, book.package, kBook), kSheetPath);
  EXPECT_THAT(part, HasSubstr("<row r=\"2\" ht=\"31\" customHeight=\"1\"/>")) << "its height was set";
  EXPECT_THAT(part, HasSubstr("<row r=\"3\" ht=\"30\" customHeight=\"1\" collapsed=\"1\"/>"));
  EXPECT_THAT(part, HasSubstr("<row r=\"5\" hidden=\"1\"/>"));
  EXPECT_THAT(part, HasSubstr("max=\"4\" width=\"20.7109375\" bestFit=\"1\"/>"));
  EXPECT_THAT(part, HasSubstr("<top10 val=\"3\"/>"));
}

}  // namespace
}  // namespace tolvane::xlsxtest
