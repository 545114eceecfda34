// What the model does not know goes out as it came in, and follows its cells.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/formula/Parser.h"
#include "engine/xlsx/Xlsx.h"
#include "tests/xlsx/TestFile.h"

namespace tolvane::xlsxtest {
namespace {

using namespace engine;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr FileKind kBook{BookKind::Book, false};

std::string Save(const XlsxBook& book, FileKind kind = kBook) {
  return WriteXlsx(*book.workbook, book.package, kind);
}

void InsertRows(XlsxBook& book, int first, int count) {
  const engine::Run run{first, count};
  book.workbook->InsertRuns(book.workbook->sheetAt(0).id(), Axis::Rows, {&run, 1});
}

TEST(Kept, UnknownPartsAreCopiedByteForByte) {
  TestFile file("<sheetData><row r=\"1\"><c r=\"A1\"><v>1</v></c></row></sheetData><drawing r:id=\"rId1\"/>");
  file.Link(std::string(kSheetPath), {"rId1 drawing ../drawings/drawing1.xml", "rId2 printerSettings ../p.bin"});
  file.Set("xl/drawings/drawing1.xml", "<d:wsDr xmlns:d=\"x\"><d:absoluteAnchor/>  <!-- as it is --></d:wsDr>");
  file.Set("xl/p.bin", std::string("\x00\x01\x02", 3));
  file.Set("customXml/item1.xml", "<any  thing = 'odd'/>");
  const std::string bytes = file.Bytes();
  XlsxBook book = ReadXlsx(bytes);
  book.workbook->sheetAt(0).SetValue({1, 1}, 2);
  const std::string saved = Save(book);
  for (const char* part : {"xl/drawings/drawing1.xml", "xl/p.bin", "customXml/item1.xml"}) {
    EXPECT_EQ(PackedPartOf(saved, part), PackedPartOf(bytes, part)) << part;
  }
  EXPECT_THAT(PartOf(saved, kSheetPath), HasSubstr("<drawing r:id=\"rId1\"/>"));
  EXPECT_THAT(PartOf(saved, "xl/worksheets/_rels/sheet1.xml.rels"), HasSubstr("../p.bin"));
}

TEST(Kept, ASheetThatNobodyTouchedIsCopiedThoughAnotherChanged) {
  TestFile file("<sheetData><row r=\"1\" spans=\"1:1\"><c r=\"A1\"   ><v>1</v></c></row></sheetData>");
  file.Link("xl/workbook.xml", {"rId2 worksheet worksheets/sheet2.xml", "rId3 sharedStrings s.xml"});
  file.Set(
      "xl/s.xml",
      "<sst xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" count=\"9\"><si><t>one</t></si></sst>");
  file.Set("xl/worksheets/sheet2.xml",
           Worksheet("<sheetData><row r=\"1\"><c r=\"A1\" t=\"s\"><v>0</v></c></row></sheetData>"));
  file.Set(
      "xl/workbook.xml",
      "<workbook xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" "
      "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\"><sheets><sheet name=\"Data\" "
      "sheetId=\"1\" r:id=\"rId1\"/><sheet name=\"More\" sheetId=\"7\" r:id=\"rId2\"/></sheets></workbook>");
  const std::string bytes = file.Bytes();
  XlsxBook book = ReadXlsx(bytes);
  book.workbook->sheetAt(1).SetValue({2, 1}, "two");
  const std::string saved = Save(book);
  EXPECT_EQ(PackedPartOf(saved, kSheetPath), PackedPartOf(bytes, kSheetPath));
  EXPECT_NE(PackedPartOf(saved, "xl/worksheets/sheet2.xml"), PackedPartOf(bytes, "xl/worksheets/sheet2.xml"));
  EXPECT_EQ(ReadXlsx(saved).workbook->sheetAt(1).ValueAt({2, 1}), Value("two"));
  EXPECT_EQ(ReadXlsx(saved).workbook->sheetAt(1).ValueAt({1, 1}), Value("one"));
}

TEST(Kept, UnknownElementsAndAttributesOfASheetStay) {
  TestFile file(
      "<sheetPr filterMode=\"1\"><outlinePr summaryBelow=\"0\"/></sheetPr><sheetViews><sheetView showZeros=\"0\" "
      "workbookViewId=\"0\"/></sheetViews><sheetFormatPr defaultRowHeight=\"15\" zeroHeight=\"1\"/>"
      "<sheetData><row r=\"1\"><c r=\"A1\" vm=\"3\"><v>1</v></c></row></sheetData>"
      "<phoneticPr fontId=\"1\"/><madeUp a=\"1\"><b/></madeUp><pageMargins left=\"0.7\"/>"
      "<extLst><ext uri=\"{X}\"/></extLst>");
  XlsxBook book = ReadXlsx(file.Bytes());
  book.workbook->sheetAt(0).SetValue({5, 1}, 2);
  const std::string sheet = PartOf(Save(book), kSheetPath);
  for (const char* part :
       {"filterMode=\"1\"", "<outlinePr summaryBelow=\"0\"/>", "showZeros=\"0\"", "zeroHeight=\"1\"", "vm=\"3\"",
        "</sheetData><phoneticPr fontId=\"1\"/><madeUp a=\"1\"><b/></madeUp><pageMargins left=\"0.7\"/><extLst><ext "
        "uri=\"{X}\"/></extLst>"}) {
    EXPECT_THAT(sheet, HasSubstr(part));
  }
}

TEST(Kept, ConditionalFormatsFollowTheirCells) {
  TestFile file(
      "<sheetData/><conditionalFormatting sqref=\"B2:B9 D4\"><cfRule type=\"expression\" dxfId=\"0\" priority=\"1\">"
      "<formula>$A2&gt;Data!$C$5</formula></cfRule></conditionalFormatting>"
      "<conditionalFormatting sqref=\"A20\"><cfRule type=\"duplicateValues\"/></conditionalFormatting>");
  XlsxBook book = ReadXlsx(file.Bytes());
  InsertRows(book, 4, 2);
  const engine::Run gone{22, 1};
  book.workbook->DeleteRuns(book.workbook->sheetAt(0).id(), Axis::Rows, {&gone, 1});
  const std::string sheet = PartOf(Save(book), kSheetPath);
  EXPECT_THAT(sheet, HasSubstr("sqref=\"B2:B11 D6\""));
  EXPECT_THAT(sheet, HasSubstr("<formula>$A2&gt;Data!$C$7</formula>"));
  EXPECT_THAT(sheet, HasSubstr("dxfId=\"0\""));
  EXPECT_THAT(sheet, Not(HasSubstr("duplicateValues"))) << "its cell is gone";
}

TEST(Kept, ACopiedSheetHasTheConditionalFormatsToo) {
  TestFile file("<sheetData/><conditionalFormatting sqref=\"B2:B9\"><cfRule type=\"top10\"/></conditionalFormatting>");
  XlsxBook book = ReadXlsx(file.Bytes());
  const Sheet& copy = book.workbook->CopySheet(book.workbook->sheetAt(0).id(), 1);
  EXPECT_EQ(copy.name(), "Data (2)");
  const std::string saved = Save(book);
  EXPECT_EQ(PackedPartOf(saved, kSheetPath), PackedPartOf(file.Bytes(), kSheetPath));
  EXPECT_THAT(PartOf(saved, "xl/worksheets/sheet2.xml"), HasSubstr("sqref=\"B2:B9\"><cfRule type=\"top10\"/>"));
}

TEST(Kept, CommentsPicturesAndTablesFollowTheirCells) {
  TestFile file(
      "<sheetData><row r=\"3\"><c r=\"A3\" t=\"inlineStr\"><is><t>Name</t></is></c><c r=\"B3\" t=\"inlineStr\">"
      "<is><t>Sum</t></is></c></row></sheetData><tableParts count=\"1\"><tablePart r:id=\"rId4\"/></tableParts>");
  file.Link(std::string(kSheetPath), {"rId1 comments ../comments1.xml", "rId2 vmlDrawing ../v.vml",
                                      "rId3 drawing ../drawings/d.xml", "rId4 table ../tables/table1.xml"});
  file.Set("xl/comments1.xml",
           "<comments><authors/><commentList><comment ref=\"B2\"/><comment ref=\"C9\"/></commentList></comments>");
  file.Set(
      "xl/v.vml",
      "<xml xmlns:v=\"v\" xmlns:x=\"x\"><v:shape id=\"a\"><x:ClientData><x:Anchor>1, 15, 8, 2, 3, 31, 12, 9</x:Anchor>"
      "<x:Row>8</x:Row><x:Column>2</x:Column></x:ClientData></v:shape></xml>");
  file.Set(
      "xl/drawings/d.xml",
      "<d:wsDr xmlns:d=\"d\"><d:twoCellAnchor><d:from><d:col>1</d:col><d:row>5</d:row></d:from><d:to><d:col>4</d:col>"
      "<d:row>9</d:row></d:to></d:twoCellAnchor></d:wsDr>");
  file.Set("xl/tables/table1.xml",
           "<table ref=\"A3:B9\" name=\"T\"><autoFilter ref=\"A3:B9\"/><tableColumns count=\"2\"><tableColumn id=\"1\" "
           "name=\"Name\"/><tableColumn id=\"2\" "
           "name=\"Sum\"><totalsRowFormula>1</totalsRowFormula></tableColumn></tableColumns></table>");
  const std::string bytes = file.Bytes();
  XlsxBook book = ReadXlsx(bytes);
  InsertRows(book, 4, 3);
  book.workbook->sheetAt(0).SetValue({3, 1}, "Title");
  const std::string saved = Save(book);
  EXPECT_THAT(PartOf(saved, "xl/comments1.xml"), HasSubstr("<comment ref=\"B2\"/><comment ref=\"C12\"/>"));
  EXPECT_THAT(PartOf(saved, "xl/v.vml"), HasSubstr("1, 15, 11, 2, 3, 31, 15, 9</x:Anchor><x:Row>11</x:Row>"));
  EXPECT_THAT(PartOf(saved, "xl/drawings/d.xml"), HasSubstr("<d:row>8</d:row></d:from>"));
  EXPECT_THAT(PartOf(saved, "xl/drawings/d.xml"), HasSubstr("<d:row>12</d:row></d:to>"));
  EXPECT_THAT(PartOf(saved, "xl/tables/table1.xml"), HasSubstr("<table ref=\"A3:B12\""));
  EXPECT_THAT(PartOf(saved, "xl/tables/table1.xml"), HasSubstr("name=\"Title\""));

  // A column into the table, the commented row away.
  const engine::Run column{2, 1}, row{12, 1};
  book.workbook->InsertRuns(book.workbook->sheetAt(0).id(), Axis::Columns, {&column, 1});
  book.workbook->DeleteRuns(book.workbook->sheetAt(0).id(), Axis::Rows, {&row, 1});
  const std::string later = Save(book);
  EXPECT_THAT(PartOf(later, "xl/comments1.xml"), Not(HasSubstr("C1")));
  EXPECT_THAT(PartOf(later, "xl/tables/table1.xml"), HasSubstr("tableColumns count=\"3\""));
  EXPECT_THAT(PartOf(later, "xl/tables/table1.xml"), HasSubstr("name=\"Sum\"><totalsRowFormula>"));

  const engine::Run table{3, 12};
  book.workbook->DeleteRuns(book.workbook->sheetAt(0).id(), Axis::Rows, {&table, 1});
  const std::string last = Save(book);
  EXPECT_THAT(PartNamesOf(last), Not(Contains("xl/tables/table1.xml")));
  EXPECT_THAT(PartOf(last, kSheetPath), Not(HasSubstr("tablePart")));
}

TEST(Kept, RunsOfATextStayWithItsCellWhereverItGoes) {
  constexpr std::string_view rich = "<si><r><t>bold</t></r><r><rPr><b/></rPr><t> word</t></r></si>";
  TestFile file(
      "<sheetData><row r=\"1\"><c r=\"A1\" t=\"s\"><v>0</v></c><c r=\"B1\" t=\"s\"><v>1</v></c>"
      "<c r=\"C1\" t=\"inlineStr\"><is><r><rPr><i/></rPr><t>slanted</t></r></is></c></row></sheetData>");
  file.Link("xl/workbook.xml", {"rId3 sharedStrings sharedStrings.xml"});
  file.Set("xl/sharedStrings.xml", "<sst xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">" +
                                       std::string(rich) + "<si><t>bold word</t></si></sst>");
  XlsxBook book = ReadXlsx(file.Bytes());
  Sheet& sheet = book.workbook->sheetAt(0);
  EXPECT_EQ(sheet.ValueAt({1, 1}), Value("bold word"));
  InsertRows(book, 1, 1);
  sheet.SetValue({9, 1}, "bold word");
  const std::string saved = Save(book);
  const std::string strings = PartOf(saved, "xl/sharedStrings.xml"), cells = PartOf(saved, kSheetPath);
  EXPECT_THAT(strings, HasSubstr(rich));
  EXPECT_THAT(strings, HasSubstr("<si><r><rPr><i/></rPr><t>slanted</t></r></si>"));
  EXPECT_THAT(cells, HasSubstr("<c r=\"A2\" t=\"s\"><v>0</v>"));
  EXPECT_THAT(cells, HasSubstr("<c r=\"B2\" t=\"s\"><v>1</v>"));
  EXPECT_THAT(cells, HasSubstr("<c r=\"A9\" t=\"s\"><v>1</v>")) << "typed, it is a plain text";
}

TEST(Kept, FormulasThatTheGrammarDoesNotKnowKeepTextAndResult) {
  TestFile file(
      "<sheetData><row r=\"1\"><c r=\"A1\"><f>SUM(T[[#This Row],[a b]])+[@x]+B2 !</f><v>7</v></c>"
      "<c r=\"B1\"><f t=\"shared\" ref=\"B1:B2\" si=\"0\">T[x]{C1+$D$1</f><v>1</v></c></row>"
      "<row r=\"2\"><c r=\"A2\"><f t=\"dataTable\" ref=\"A2:A3\" dt2D=\"0\" r1=\"Z1\"/><v>3</v></c>"
      "<c r=\"B2\"><f t=\"shared\" si=\"0\"/><v>2</v></c></row></sheetData>");
  XlsxBook book = ReadXlsx(file.Bytes());
  Sheet& sheet = book.workbook->sheetAt(0);
  EXPECT_EQ(sheet.ValueAt({1, 1}), Value(7));
  ASSERT_NE(sheet.FormulaAt({1, 1}), nullptr);
  EXPECT_EQ(sheet.FormulaAt({1, 1})->rawText.view(), "=SUM(T[[#This Row],[a b]])+[@x]+B2 !");
  sheet.SetValue({9, 9}, 1);
  const std::string cells = PartOf(Save(book), kSheetPath);
  EXPECT_THAT(cells, HasSubstr("<f>SUM(T[[#This Row],[a b]])+[@x]+B2 !</f><v>7</v>"));
  EXPECT_THAT(cells, HasSubstr("<f t=\"dataTable\" ref=\"A2:A3\" dt2D=\"0\" r1=\"Z1\"/><v>3</v>"));
  EXPECT_THAT(cells, HasSubstr("<f>T[x]{C2+$D$1</f><v>2</v>")) << "the shared formula as it is one row further down";
}

// Programs that read strictly refuse a part with two.
TEST(Kept, PartsThatAreWrittenAgainHaveOneDeclaration) {
  constexpr std::string_view declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n";
  TestFile file("<sheetData><row r=\"1\"><c r=\"A1\" s=\"0\"><v>1</v></c></row></sheetData>");
  file.Link("xl/workbook.xml", {"rId2 styles styles.xml"}).Link(std::string(kSheetPath), {"rId1 comments ../c.xml"});
  const std::string space = " xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"";
  file.Set("xl/styles.xml",
           std::string(declaration) + "<styleSheet" + space + "><cellXfs><xf/></cellXfs></styleSheet>");
  file.Set("xl/c.xml", std::string(declaration) + "<comments" + space +
                           "><commentList><comment ref=\"A1\"/></commentList></comments>");
  file.Set("xl/workbook.xml", std::string(declaration) + "<workbook" + space +
                                  " xmlns:r=\"r\"><sheets><sheet name=\"Data\" r:id=\"rId1\"/></sheets></workbook>");
  XlsxBook book = ReadXlsx(file.Bytes());
  InsertRows(book, 1, 1);
  book.workbook->sheetAt(0).ChangeFormat({1, 1, 1, 1}, [&](FormatId id) {
    return book.workbook->formats.With(id, FormatGroup::Font, [](Format& format) { format.font.bold = true; });
  });
  const std::string saved = Save(book);
  for (const std::string& part : {std::string("xl/styles.xml"), std::string("xl/c.xml"), std::string("xl/workbook.xml"),
                                  std::string(kSheetPath), std::string("[Content_Types].xml")}) {
    const std::string xml = PartOf(saved, part);
    EXPECT_TRUE(xml.starts_with("<?xml")) << part;
    EXPECT_EQ(xml.rfind("<?xml"), 0u) << part;
  }
}

TEST(Kept, SheetsWithoutCellsKeepTheirPlace) {
  TestFile file;
  file.Link("xl/workbook.xml", {"rId2 chartsheet chartsheets/sheet1.xml", "rId3 worksheet worksheets/sheet3.xml"});
  file.Set("xl/chartsheets/sheet1.xml", "<chartsheet/>").Set("xl/worksheets/sheet3.xml", Worksheet("<sheetData/>"));
  file.Set("xl/workbook.xml",
           "<workbook xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" xmlns:r=\"r\"><sheets><sheet "
           "name=\"Data\" sheetId=\"1\" r:id=\"rId1\"/><sheet name=\"Chart\" sheetId=\"2\" r:id=\"rId2\"/><sheet "
           "name=\"Last\" sheetId=\"3\" r:id=\"rId3\"/></sheets><definedNames><definedName name=\"own\" "
           "localSheetId=\"2\">Last!$A$1</definedName></definedNames></workbook>");
  XlsxBook book = ReadXlsx(file.Bytes());
  ASSERT_EQ(book.workbook->sheetCount(), 2u);
  EXPECT_NE(book.workbook->FindSheet("Last")->names.Find("own"), nullptr);
  book.workbook->AddSheet("First", 0);
  const std::string saved = Save(book);
  const std::string part = PartOf(saved, "xl/workbook.xml");
  EXPECT_LT(part.find("\"First\""), part.find("\"Data\""));
  EXPECT_LT(part.find("\"Data\""), part.find("\"Chart\""));
  EXPECT_LT(part.find("\"Chart\""), part.find("\"Last\""));
  EXPECT_THAT(part, HasSubstr("name=\"own\" localSheetId=\"3\""));
  EXPECT_NE(ReadXlsx(saved).workbook->FindSheet("Last")->names.Find("own"), nullptr);

  // A deleted sheet takes along what only it had.
  book.workbook->DeleteSheet(book.workbook->FindSheet("Last")->id());
  EXPECT_THAT(PartNamesOf(Save(book)), Not(Contains("xl/worksheets/sheet3.xml")));
  EXPECT_THAT(PartNamesOf(Save(book)), Contains("xl/chartsheets/sheet1.xml"));
}

// Twice a declaration is no XML, and no other program opens it.
TEST(Kept, PartsThatAreWrittenAnewBeginWithOneDeclaration) {
  Workbook fresh;
  fresh.AddSheet("Data", 0).SetValue({1, 1}, 1);
  XlsxBook book = ReadXlsx(WriteXlsx(fresh, Package(), kBook));
  book.workbook->AddSheet("More", 1).SetValue({1, 1}, "x");
  const std::string saved = Save(book);
  for (const std::string& part : PartNamesOf(saved)) {
    const std::string xml = PartOf(saved, part);
    EXPECT_EQ(xml.find("<?xml"), 0U) << part;
    EXPECT_EQ(xml.rfind("<?xml"), 0U) << part;
  }
}

TEST(Kept, ThePageKeepsWhatIsNotModelled) {
  TestFile file(
      "<sheetPr><pageSetUpPr autoPageBreaks=\"0\" fitToPage=\"1\"/></sheetPr><sheetData/>"
      "<pageSetup paperSize=\"9\" fitToHeight=\"0\" orientation=\"landscape\" copies=\"2\"/>");
  XlsxBook book = ReadXlsx(file.Bytes());
  Sheet& sheet = book.workbook->sheetAt(0);
  EXPECT_EQ(sheet.page, (PageSetup{true, 1, 0}));
  sheet.page = {false, 2, 0};
  std::string xml = PartOf(Save(book), kSheetPath);
  EXPECT_THAT(xml, HasSubstr("autoPageBreaks=\"0\""));
  EXPECT_THAT(xml, HasSubstr("paperSize=\"9\""));
  EXPECT_THAT(xml, HasSubstr("copies=\"2\""));
  EXPECT_THAT(xml, HasSubstr("orientation=\"portrait\""));
  EXPECT_THAT(xml, HasSubstr("fitToWidth=\"2\""));
  sheet.page = {};
  xml = PartOf(Save(book), kSheetPath);
  EXPECT_THAT(xml, Not(HasSubstr("fitToPage")));
  EXPECT_EQ(ReadXlsx(Save(book)).workbook->sheetAt(0).page, PageSetup{});
}

TEST(Kept, CodeNamesAreToldTwice) {
  TestFile file("<sheetPr codeName=\"wksAccounts\"/><sheetData/>");
  XlsxBook book = ReadXlsx(file.Bytes());
  EXPECT_EQ(book.workbook->sheetAt(0).codeName, "wksAccounts");
  book.workbook->sheetAt(0).SetValue({1, 1}, 1);
  const std::string part = PartOf(Save(book), "xl/workbook.xml");
  EXPECT_THAT(
      part,
      HasSubstr(
          "<definedName name=\"_Tolvane_Sheet\" localSheetId=\"0\" hidden=\"1\">\"code=wksAccounts;\"</definedName>"));
  // Another program has dropped the one, the other is there.
  file.Set(std::string(kSheetPath), Worksheet("<sheetData/>")).Set("xl/workbook.xml", part);
  const XlsxBook again = ReadXlsx(file.Bytes());
  EXPECT_EQ(again.workbook->sheetAt(0).codeName, "wksAccounts");
  EXPECT_EQ(again.workbook->sheetAt(0).names.byFoldedName().size(), 0u);
}

TEST(Kept, MacrosStayAndAreNotLostUnnoticed) {
  TestFile file;
  file.Link("xl/workbook.xml", {"rId9 vbaProject vbaProject.bin"}).Set("xl/vbaProject.bin", "macros");
  XlsxBook book = ReadXlsx(file.Bytes());
  EXPECT_TRUE(book.package.hasMacros());
  book.workbook->sheetAt(0).SetValue({1, 1}, 1);
  EXPECT_THROW(Save(book), XlsxError);
  for (const BookKind kind : {BookKind::Book, BookKind::Template, BookKind::Addin}) {
    const std::string saved = Save(book, {kind, true});
    EXPECT_EQ(PartOf(saved, "xl/vbaProject.bin"), "macros");
    EXPECT_EQ(ReadXlsx(saved).package.kind(), (FileKind{kind, true}));
  }
}

TEST(Kept, NamesThatTheGrammarDoesNotKnowStay) {
  TestFile file;
  file.Set(
      "xl/workbook.xml",
      "<workbook xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" xmlns:r=\"r\"><fileVersion "
      "appName=\"xl\"/><sheets><sheet name=\"Data\" sheetId=\"1\" r:id=\"rId1\"/></sheets><definedNames><definedName "
      "name=\"odd\">T[x]</definedName><definedName name=\"plain\" comment=\"mine\">Data!$A$1</definedName>"
      "</definedNames><calcPr calcId=\"1\" calcMode=\"manual\"/></workbook>");
  XlsxBook book = ReadXlsx(file.Bytes());
  InsertRows(book, 1, 1);
  const std::string part = PartOf(Save(book), "xl/workbook.xml");
  EXPECT_THAT(part, HasSubstr("<definedName name=\"odd\">T[x]</definedName>"));
  EXPECT_THAT(part, HasSubstr("<definedName name=\"plain\" comment=\"mine\">Data!$A$2</definedName>"));
  EXPECT_THAT(part, HasSubstr("<fileVersion appName=\"xl\"/>"));
  EXPECT_THAT(part, HasSubstr("calcMode=\"manual\""));
}

TEST(Kept, StyleRecordsKeepWhatTheModelDoesNotKnow) {
  TestFile file(
      "<sheetData><row r=\"1\"><c r=\"A1\" s=\"1\"><v>1</v></c><c r=\"B1\" s=\"2\"><v>1</v></c></row></sheetData>");
  file.Link("xl/workbook.xml", {"rId2 styles styles.xml"});
  file.Set(
      "xl/styles.xml",
      "<styleSheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"><fonts count=\"2\"><font><sz "
      "val=\"11\"/><name val=\"Calibri\"/></font><font><sz val=\"11\"/><color theme=\"4\" tint=\"0.4\"/><name "
      "val=\"Calibri\"/>"
      "<scheme val=\"minor\"/></font></fonts><fills count=\"1\"><fill><patternFill "
      "patternType=\"none\"/></fill></fills>"
      "<borders count=\"1\"><border/></borders><cellXfs count=\"3\"><xf fontId=\"0\"/><xf fontId=\"1\" "
      "quotePrefix=\"1\"/><xf fontId=\"1\"/></cellXfs><dxfs count=\"1\"><dxf/></dxfs></styleSheet>");
  XlsxBook book = ReadXlsx(file.Bytes());
  Workbook& workbook = *book.workbook;
  Sheet& sheet = workbook.sheetAt(0);
  EXPECT_NE(sheet.FormatAt({1, 1}), sheet.FormatAt({1, 2})) << "one of them has a quote prefix";
  EXPECT_EQ(workbook.formats.At(sheet.FormatAt({1, 1})).format.font.colour, Colour(0x95B3D7));
  sheet.ChangeFormat({1, 1, 1, 1}, [&](FormatId id) {
    return workbook.formats.With(id, FormatGroup::Font, [](Format& format) { format.font.bold = true; });
  });
  const std::string saved = Save(book);
  const std::string styles = PartOf(saved, "xl/styles.xml");
  EXPECT_THAT(
      styles,
      HasSubstr("<b/><sz val=\"11\"/><color theme=\"4\" tint=\"0.4\"/><name val=\"Calibri\"/><scheme val=\"minor\"/>"));
  EXPECT_THAT(styles, HasSubstr("<xf fontId=\"2\" quotePrefix=\"1\""));
  EXPECT_THAT(styles, HasSubstr("<xf fontId=\"1\"/>")) << "the record of B1 as it was";
  EXPECT_THAT(styles, HasSubstr("<dxf/>"));
}

// Records that tell no font, fill or border mean the first, and unknown elements have no number.
TEST(Kept, StylesWithoutListsOrWithUnknownElements) {
  TestFile file(
      "<sheetData><row r=\"1\"><c r=\"A1\" s=\"0\"><v>1</v></c><c r=\"B1\" s=\"1\"><v>1</v></c></row></sheetData>");
  file.Link("xl/workbook.xml", {"rId2 styles styles.xml"});
  file.Set(
      "xl/styles.xml",
      "<styleSheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"><cellXfs><unknown/><xf/><xf "
      "numFmtId=\"164\"/></cellXfs></styleSheet>");
  XlsxBook book = ReadXlsx(file.Bytes());
  Workbook& workbook = *book.workbook;
  Sheet& sheet = workbook.sheetAt(0);
  sheet.ChangeFormat({1, 1, 1, 1}, [&](FormatId id) {
    return workbook.formats.With(id, FormatGroup::Font, [](Format& format) {
      format.font.bold = true;
      format.numberFormat = "0.000";
      format.fill = {FillPattern::Solid, 0xFF0000};
      format.border[0] = {LineStyle::Thick, 0x00FF00};
    });
  });
  const XlsxBook again = ReadXlsx(Save(book));
  const auto formatIn = [&](int column) {
    return again.workbook->formats.At(again.workbook->sheetAt(0).FormatAt({1, column})).format;
  };
  EXPECT_TRUE(formatIn(1).font.bold);
  EXPECT_EQ(formatIn(1).numberFormat, "0.000");
  EXPECT_EQ(formatIn(1).border[0].style, LineStyle::Thick);
  EXPECT_EQ(formatIn(2), Format()) << "its number format is one that nothing defines";
}

TEST(Kept, ChangedStylesReachSheetsThatAreCopied) {
  TestFile file("<sheetData><row r=\"1\"><c r=\"A1\" s=\"1\"><v>1</v></c></row></sheetData>");
  file.Link("xl/workbook.xml", {"rId2 styles styles.xml"});
  file.Set(
      "xl/styles.xml",
      "<styleSheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"><fonts><font/></fonts><fills>"
      "<fill/></fills><borders><border/></borders><cellStyleXfs><xf/><xf/></cellStyleXfs><cellXfs><xf/><xf xfId=\"1\"/>"
      "</cellXfs><cellStyles><cellStyle name=\"Normal\" xfId=\"0\" builtinId=\"0\"/><cellStyle name=\"Mine\" "
      "xfId=\"1\"/></cellStyles></styleSheet>");
  const std::string bytes = file.Bytes();
  XlsxBook book = ReadXlsx(bytes);
  FormatTable& formats = book.workbook->formats;
  NamedStyle mine = formats.StyleAt(*formats.FindStyle("Mine"));
  mine.format.fill = {FillPattern::Solid, 0xFF0000};
  formats.ChangeStyle(*formats.FindStyle("Mine"), mine);
  const std::string saved = Save(book);
  EXPECT_EQ(PackedPartOf(saved, kSheetPath), PackedPartOf(bytes, kSheetPath));
  const XlsxBook again = ReadXlsx(saved);
  const CellFormat& format = again.workbook->formats.At(again.workbook->sheetAt(0).FormatAt({1, 1}));
  EXPECT_EQ(format.format.fill, (Fill{FillPattern::Solid, 0xFF0000}));
  EXPECT_EQ(format.direct, 0);
}

}  // namespace
}  // namespace tolvane::xlsxtest
