// Formulas that cannot be worked out here: they go out as they came in, what rests on them is known as out of date, and
// the next program that can is told to work everything out.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/formula/Calculator.h"
#include "engine/xlsx/Xlsx.h"
#include "tests/xlsx/TestFile.h"

namespace tolvane::xlsxtest {
namespace {

using namespace engine;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr FileKind kBook{BookKind::Book, false};
constexpr const char* kBookPath = "xl/workbook.xml";

class NoWorld : public CalculationWorld {
 public:
  double Now() const override { return 45000; }
  std::string BookName() const override { return "Book.xlsx"; }
  std::string BookFolder() const override { return ""; }
  const Workbook* FindBook(std::string_view) const override { return nullptr; }
};

struct Unknown {
  const char* name;
  const char* formula;  // as it stands in the file; uses A1
};
void PrintTo(const Unknown& unknown, std::ostream* out) {
  *out << unknown.name;
}

// B1 holds the formula with the result 42, C1 =B1+1, D1 =A1*2.
std::string BookWith(const std::string& formula) {
  TestFile file("<sheetData><row r=\"1\"><c r=\"A1\"><v>2</v></c><c r=\"B1\"><f>" + formula +
                "</f><v>42</v></c><c r=\"C1\"><f>B1+1</f><v>43</v></c><c r=\"D1\"><f>A1*2</f><v>4</v></c></row>"
                "</sheetData>");
  file.Set(kBookPath,
           "<workbook xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" "
           "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\"><sheets><sheet "
           "name=\"Data\" sheetId=\"1\" r:id=\"rId1\"/></sheets><definedNames><definedName "
           "name=\"column\">Table1[Amount]</definedName><definedName "
           "name=\"doubled\">_xlfn.LAMBDA(_xlpm.x,_xlpm.x*2)</definedName></definedNames><calcPr calcId=\"191029\" "
           "calcMode=\"manual\"/></workbook>");
  return file.Bytes();
}

class NotComputed : public ::testing::TestWithParam<Unknown> {};

TEST_P(NotComputed, KeepsTextAndResultThroughCalculationAndSaving) {
  const std::string formula = GetParam().formula;
  XlsxBook book = ReadXlsx(BookWith(formula));
  Sheet& sheet = book.workbook->sheetAt(0);
  const NoWorld world;
  Calculator calculator(*book.workbook, world);
  sheet.SetValue({1, 1}, 5);
  calculator.Recalculate();
  EXPECT_EQ(sheet.ValueAt({1, 2}), Value(42));
  EXPECT_EQ(sheet.ValueAt({1, 3}), Value(43));
  EXPECT_EQ(sheet.ValueAt({1, 4}), Value(10));
  EXPECT_TRUE(calculator.IsNotComputed(sheet.id(), {1, 2}));
  EXPECT_TRUE(calculator.IsNotComputed(sheet.id(), {1, 3}));
  EXPECT_FALSE(calculator.IsNotComputed(sheet.id(), {1, 4}));

  const std::string saved = WriteXlsx(*book.workbook, book.package, kBook);
  EXPECT_THAT(PartOf(saved, kSheetPath), HasSubstr("<f>" + formula + "</f><v>42</v>"));
  EXPECT_THAT(PartOf(saved, kBookPath),
              HasSubstr("<calcPr calcId=\"191029\" calcMode=\"manual\" fullCalcOnLoad=\"1\""));

  // Opened again it is the same: known as soon as something is worked out.
  XlsxBook again = ReadXlsx(saved);
  Sheet& reopened = again.workbook->sheetAt(0);
  Calculator second(*again.workbook, world);
  reopened.SetValue({1, 1}, 6);
  second.Recalculate();
  EXPECT_EQ(reopened.ValueAt({1, 2}), Value(42));
  EXPECT_TRUE(second.IsNotComputed(reopened.id(), {1, 2}));
  EXPECT_TRUE(second.IsNotComputed(reopened.id(), {1, 3}));
  EXPECT_EQ(reopened.ValueAt({1, 4}), Value(12));
  EXPECT_THAT(PartOf(WriteXlsx(*again.workbook, again.package, kBook), kSheetPath),
              HasSubstr("<f>" + formula + "</f><v>42</v>"));
}

INSTANTIATE_TEST_SUITE_P(
    Formulas, NotComputed,
    ::testing::Values(Unknown{"Let", "_xlfn.LET(_xlpm.x,A1,_xlpm.x*21)"},
                      Unknown{"Filter", "SUM(_xlfn._xlws.FILTER(A1:A9,A1:A9&gt;1))"},
                      Unknown{"OfTheUser", "MYRATE(A1,&quot;EUR&quot;)"}, Unknown{"OfAnotherBook", "[1]!MyRate(A1)"},
                      Unknown{"LambdaThatIsCalled", "_xlfn.LAMBDA(_xlpm.x,_xlpm.x*21)(A1)"},
                      Unknown{"LambdaWithAName", "DOUBLED(A1)"}, Unknown{"Spilled", "SUM(_xlfn.ANCHORARRAY(A1))"},
                      Unknown{"Table", "SUM(Table1[Amount])*A1"}, Unknown{"NameOfATable", "SUM(column)*A1"}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(NotComputedBooks, ASpreadsheetIsAskedOnlyWhereSomethingIsNotComputed) {
  TestFile file(
      "<sheetData><row r=\"1\"><c r=\"A1\"><v>2</v></c><c r=\"B1\"><f>A1+1</f><v>3</v></c></row></sheetData>");
  XlsxBook book = ReadXlsx(file.Bytes());
  book.workbook->sheetAt(0).SetValue({1, 1}, 5);
  EXPECT_THAT(PartOf(WriteXlsx(*book.workbook, book.package, kBook), kBookPath), Not(HasSubstr("fullCalcOnLoad")));
}

TEST(NotComputedBooks, ResultsOfABookThatNobodyChangedStayGood) {
  const XlsxBook book = ReadXlsx(BookWith("_xlfn.LET(_xlpm.x,A1,_xlpm.x*21)"));
  const std::string saved = WriteXlsx(*book.workbook, book.package, kBook);
  EXPECT_THAT(PartOf(saved, kBookPath), Not(HasSubstr("fullCalcOnLoad")));
}

}  // namespace
}  // namespace tolvane::xlsxtest
