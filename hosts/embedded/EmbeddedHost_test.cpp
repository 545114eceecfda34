#include "hosts/embedded/EmbeddedHost.h"

#include <gtest/gtest.h>

#include <memory>

#include "testing/MemoryBookFiles.h"
#include "testing/ScriptedDesk.h"

namespace tolvane::embedded {
namespace {

struct EmbeddedHostTest : ::testing::Test {
  testing::ScriptedDesk desk;
  testing::MemoryBookFiles files;
  std::unique_ptr<EmbeddedHost> host = std::make_unique<EmbeddedHost>(desk, files);
  host::Application app() { return host->application(); }
};

TEST_F(EmbeddedHostTest, HandlesOutliveTheHostAndAreDead) {
  const host::Workbook book = app().Workbooks().Add();
  const host::Worksheet sheet = book.Worksheets().Item(1);
  const host::Range range = sheet.Range("A1:B2");
  const host::Name name = book.Names().Add("rate", "=2");
  const host::Names names = sheet.Names();
  const host::Window window = app().ActiveWindow();
  const host::Application application = app();
  const host::User user = app().User();
  host.reset();
  for (const bool alive : {book.IsAlive(), sheet.IsAlive(), range.IsAlive(), name.IsAlive(), names.IsAlive(),
                           window.IsAlive(), application.IsAlive(), user.IsAlive()}) {
    EXPECT_FALSE(alive);
  }
  EXPECT_THROW(range.Value(), host::HostError);
  EXPECT_THROW(application.Version(), host::HostError);
  EXPECT_THROW(user.Now(), host::HostError);
}

TEST_F(EmbeddedHostTest, FormulasOfACopiedColumnShareOneExpression) {
  const host::Workbook book = app().Workbooks().Add();
  const host::Worksheet sheet = book.Worksheets().Item(1);
  host::CellBlock block(3, 1);
  for (int row = 1; row <= 3; ++row) block.at(row, 1) = host::CellValue("=A" + std::to_string(row) + "*2");
  sheet.Range("B1:B3").SetFormula(block);
  const engine::Sheet& cells = host->BookOf(book).sheetAt(0);
  EXPECT_EQ(cells.FormulaAt({1, 2})->expression, cells.FormulaAt({3, 2})->expression);
}

TEST_F(EmbeddedHostTest, FormulasPastedInAnotherBookStillMeanTheFirst) {
  const host::Workbook first = app().Workbooks().Add();
  const host::Worksheet sheet = first.Worksheets().Item(1);
  first.Worksheets().Add().Range("A1").SetValue(host::CellValue(7));
  sheet.Range("A1").SetFormula(host::CellBlock("=Sheet2!A1+B1"));
  const host::Workbook second = app().Workbooks().Add();
  sheet.Range("A1").Copy();
  const host::Range pasted = second.Worksheets().Item(1).Range("A1");
  pasted.PasteSpecial(host::PasteType::All);
  EXPECT_EQ(pasted.Formula(), host::CellBlock("=[Book1]Sheet2!A1+B1"));
  EXPECT_EQ(pasted.Value(), host::CellBlock(7));
}

TEST_F(EmbeddedHostTest, AFilledRowIsPastedOverManyRowsWithItsLook) {
  const host::Worksheet sheet = app().Workbooks().Add().Worksheets().Item(1);
  sheet.Range("A1").SetFormulaR1C1(host::CellBlock("=RC[1]+1"));
  sheet.Range("B1:C1").Interior().SetColorIndex(36);
  sheet.Rows().Item(1).Copy();
  sheet.Range("5:1004").PasteSpecial(host::PasteType::All);
  EXPECT_EQ(sheet.Range("A1004").FormulaR1C1(), host::CellBlock("=RC[1]+1"));
  EXPECT_EQ(sheet.Range("B5:C1004").Interior().ColorIndex(), 36);
  EXPECT_EQ(sheet.Range("D5:XFD1004").Interior().ColorIndex(), host::kColorIndexNone);
  EXPECT_EQ(app().CutCopyMode(), host::CutCopyMode::Copy);
}

TEST_F(EmbeddedHostTest, SeveralAreasOfCellsAreDeletedAllOrNone) {
  const host::Worksheet sheet = app().Workbooks().Add().Worksheets().Item(1);
  sheet.Range("A1:C9").SetFormula(host::CellBlock("=ROW()"));
  sheet.Range("A1:C9").SetValue(sheet.Range("A1:C9").Value());
  sheet.Range("B8:C8").Merge();
  EXPECT_THROW(sheet.Range("A2,C4").Delete(host::Shift::Up), host::HostError);
  EXPECT_EQ(sheet.Range("A2").Value(), host::CellBlock(2));
  sheet.Range("A2:A3,A6").Delete(host::Shift::Up);
  EXPECT_EQ(sheet.Range("A1:A6").Value(), (host::CellBlock{{1}, {4}, {5}, {7}, {8}, {9}}));
  EXPECT_THROW(sheet.Range("A2:B3,B3:C3").Delete(host::Shift::Up), host::HostError);
}

TEST_F(EmbeddedHostTest, ABorderIsSharedByNeighbours) {
  const host::Worksheet sheet = app().Workbooks().Add().Worksheets().Item(1);
  const host::Border right = sheet.Range("A1").Borders(host::BorderIndex::EdgeRight);
  const host::Border left = sheet.Range("B1").Borders(host::BorderIndex::EdgeLeft);
  left.SetColorIndex(15);
  EXPECT_EQ(right.LineStyle(), host::LineStyle::Continuous);
  EXPECT_EQ(right.ColorIndex(), 15);
  right.SetLineStyle(host::LineStyle::None);
  EXPECT_EQ(left.LineStyle(), host::LineStyle::None);
}

TEST_F(EmbeddedHostTest, KeysThatAMacroSendsArriveWhenItIsDone) {
  const host::Workbook book = app().Workbooks().Add();
  std::string log;
  host->OfferMacro(book, "Key", [&] {
    log += "key ";
    return host::CellValue();
  });
  host->OfferMacro(book, "Sender", [&] {
    app().SendKeys("^q^q");
    log += "sent ";
    return host::CellValue();
  });
  app().OnKey("^q", "Key");
  app().Run("Sender");
  EXPECT_EQ(log, "sent key key ");
}

TEST_F(EmbeddedHostTest, ATemplateOpensAsANewBook) {
  engine::Workbook book;
  book.AddSheet("Data", 0);
  files.Put("/t/Accounts.xltx", book, testing::MemoryBookFiles::Kind::Template);
  files.Put("/t/Plain.xlsx", book);
  const host::Workbook first = app().Workbooks().Open("/t/Accounts.xltx");
  const host::Workbook second = app().Workbooks().Add("/t/Accounts.xltx");
  EXPECT_EQ(first.Name(), "Accounts1");
  EXPECT_EQ(second.Name(), "Accounts2");
  EXPECT_EQ(first.Path(), "");
  const host::Workbook plain = app().Workbooks().Open("/t/Plain.xlsx");
  EXPECT_EQ(plain.FullName(), "/t/Plain.xlsx");
  EXPECT_EQ(plain.Path(), "/t");
  EXPECT_TRUE(plain.Saved());
  EXPECT_THROW(app().Workbooks().Open("/t/Plain.xlsx"), host::HostError);
}

}  // namespace
}  // namespace tolvane::embedded
