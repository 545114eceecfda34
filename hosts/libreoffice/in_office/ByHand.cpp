// What the user does in Calc by hand, past the host: books opened, made, saved and closed, sheets and names deleted.
#include <gmock/gmock.h>

#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/sheet/XNamedRanges.hpp>

#include "hosts/libreoffice/in_office/OfficeCase.h"

namespace tolvane::libreoffice {

namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kNewBook = "private:factory/scalc";
constexpr const char* kXlsx = "Calc MS Excel 2007 XML";

std::string SavedBook(OfficeUnderTest& office, std::string_view name) {
  const host::Workbook book = office.application().Workbooks().Add();
  book.Worksheets().Item(1).Range("A1").SetValue("kept");
  const std::string path = office.PathFor(name);
  book.SaveAs(path);
  book.Close(false);
  office.TakeEvents();
  return path;
}

void OpenedBooksAreAdopted(OfficeUnderTest& office) {
  const std::string path = SavedBook(office, "One.xlsx");
  const auto model = office.OpenByHand(path);
  EXPECT_THAT(office.TakeEvents(), ElementsAre("open One.xlsx", "activate One.xlsx"));
  const host::Workbook book = office.application().Workbooks().Item("one.xlsx");
  EXPECT_EQ(book.FullName(), path);
  EXPECT_TRUE(book.Saved());
  EXPECT_EQ(book, office.application().ActiveWorkbook());
  EXPECT_EQ(book.Worksheets().Item(1).Range("A1").Value().single(), host::CellValue("kept"));
  office.CloseByHand(model);
}

void NewBooksAreAdopted(OfficeUnderTest& office) {
  const auto model = office.OpenByHand(kNewBook);
  EXPECT_THAT(office.TakeEvents(), ElementsAre("activate Book1"));
  const host::Workbook book = office.application().ActiveWorkbook();
  EXPECT_EQ(book.Name(), "Book1");
  EXPECT_EQ(book.Path(), "");
  EXPECT_EQ(office.application().Workbooks().Add().Name(), "Book2");
  office.CloseByHand(model);
}

void BooksThatWereOpenBeforeAreAdopted(OfficeUnderTest& office) {
  const auto model = office.OpenByHand(kNewBook);
  testing::ScriptedDesk desk;
  CalcHost later(office.context(), desk, {});
  EXPECT_EQ(later.application().Workbooks().Count(), 1);
  // Both hosts hold it now; the first that ends closes it.
}

void TheBookThatTheUserGoesToIsTheActiveOne(OfficeUnderTest& office) {
  const host::Workbook first = office.application().Workbooks().Add();
  const host::Workbook second = office.application().Workbooks().Add();
  ASSERT_EQ(office.application().ActiveWorkbook(), second);
  office.TakeEvents();
  office.ModelOf(first)->getCurrentController()->getFrame()->activate();
  EXPECT_EQ(office.application().ActiveWorkbook(), first);
  EXPECT_THAT(office.TakeEvents(), ElementsAre("activate " + first.Name()));
}

void AClosedBooksHandlesAreDead(OfficeUnderTest& office) {
  const host::Workbook book = office.application().Workbooks().Add();
  const host::Worksheet sheet = book.Worksheets().Item(1);
  const host::Range range = sheet.Range("A1:B2");
  const host::Name name = book.Names().Add("rate", "=0.19");
  const host::Window window = office.application().ActiveWindow();
  office.CloseByHand(office.ModelOf(book));
  const auto dead = host::ErrorNumber::ObjectRequired;
  EXPECT_TRUE(Fails(dead, "", [&] { book.Name(); }));
  EXPECT_TRUE(Fails(dead, "", [&] { book.Save(); }));
  EXPECT_TRUE(Fails(dead, "", [&] { sheet.Name(); }));
  EXPECT_TRUE(Fails(dead, "", [&] { sheet.Range("A1"); }));
  EXPECT_TRUE(Fails(dead, "", [&] { range.SetValue(1); }));
  EXPECT_TRUE(Fails(dead, "", [&] { range.Value(); }));
  EXPECT_TRUE(Fails(dead, "", [&] { name.RefersTo(); }));
  EXPECT_TRUE(Fails(dead, "", [&] { window.ActiveCell(); }));
  EXPECT_EQ(office.application().Workbooks().Count(), 0);
  EXPECT_TRUE(office.application().ActiveWorkbook().IsNothing());
}

void ABookClosedWhileItsCellsAreCopiedEndsCopying(OfficeUnderTest& office) {
  const host::Workbook other = office.application().Workbooks().Add();
  const host::Workbook book = office.application().Workbooks().Add();
  book.Worksheets().Item(1).Range("A1").Copy();
  office.CloseByHand(office.ModelOf(book));
  EXPECT_EQ(office.application().CutCopyMode(), host::CutCopyMode::None);
  EXPECT_EQ(office.application().ActiveWorkbook(), other);
}

void ADeletedSheetsHandlesAreDead(OfficeUnderTest& office) {
  const host::Workbook book = office.application().Workbooks().Add();
  const host::Worksheet kept = book.Worksheets().Item(1);
  const host::Worksheet sheet = book.Worksheets().Add();
  const host::Range range = sheet.Range("A1");
  const std::string name = sheet.Name();
  const Reference<css::sheet::XSpreadsheetDocument> document(office.ModelOf(book), UNO_QUERY_THROW);
  document->getSheets()->removeByName(ToUno(name));
  EXPECT_TRUE(Fails(host::ErrorNumber::ObjectRequired, "", [&] { sheet.Name(); }));
  EXPECT_TRUE(Fails(host::ErrorNumber::ObjectRequired, "", [&] { range.Value(); }));
  EXPECT_EQ(book.Worksheets().Count(), 1);
  EXPECT_EQ(office.application().ActiveSheet(), kept);
  EXPECT_TRUE(Fails(host::ErrorNumber::SubscriptOutOfRange, "", [&] { book.Worksheets().Item(name); }));
}

void ADeletedNamesHandleIsDead(OfficeUnderTest& office) {
  const host::Workbook book = office.application().Workbooks().Add();
  const host::Name name = book.Names().Add("rate", "=0.19");
  Reference<css::sheet::XNamedRanges> names;
  GetAny(office.ModelOf(book), "NamedRanges") >>= names;
  names->removeByName("rate");
  EXPECT_TRUE(Fails(host::ErrorNumber::ObjectRequired, "", [&] { name.RefersTo(); }));
  EXPECT_TRUE(Fails(host::ErrorNumber::ApplicationDefined, "", [&] { book.Names().Item("rate"); }));
  EXPECT_THAT(book.Names().All(), IsEmpty());
}

void ARenamedSheetKeepsItsHandle(OfficeUnderTest& office) {
  const host::Workbook book = office.application().Workbooks().Add();
  const host::Worksheet sheet = book.Worksheets().Item(1);
  const Reference<css::sheet::XSpreadsheetDocument> document(office.ModelOf(book), UNO_QUERY_THROW);
  const Reference<css::container::XNamed> object(document->getSheets()->getByName(ToUno(sheet.Name())),
                                                 UNO_QUERY_THROW);
  object->setName("By hand");
  EXPECT_EQ(sheet.Name(), "By hand");
  EXPECT_EQ(book.Worksheets().Item("by HAND"), sheet);
}

void ABookSavedByHandCarriesWhatCalcCannotHold(OfficeUnderTest& office) {
  const host::Workbook book = office.application().Workbooks().Add();
  const host::Worksheet hidden = book.Worksheets().Add();
  hidden.SetCodeName("wksSecret");
  hidden.SetVisible(host::SheetVisibility::VeryHidden);
  book.Names().Add("secret", "=1", false);
  const std::string path = office.PathFor("ByHand.xlsx");
  office.StoreByHand(office.ModelOf(book), path, kXlsx);
  EXPECT_EQ(book.FullName(), path);
  EXPECT_TRUE(book.Saved());
  EXPECT_EQ(book.Names().All().size(), 1u) << "what is carried is there only while the file is written";
  book.Close(false);
  const host::Workbook again = office.application().Workbooks().Open(path);
  EXPECT_EQ(again.Worksheets().Item(2).CodeName(), "wksSecret");
  EXPECT_EQ(again.Worksheets().Item(2).Visible(), host::SheetVisibility::VeryHidden);
  EXPECT_FALSE(again.Names().Item("secret").Visible());
}

}  // namespace

std::vector<OfficeCase> ByHandCases() {
  return {
      {"ByHand", "OpenedBooksAreAdopted", OpenedBooksAreAdopted},
      {"ByHand", "NewBooksAreAdopted", NewBooksAreAdopted},
      {"ByHand", "BooksThatWereOpenBeforeAreAdopted", BooksThatWereOpenBeforeAreAdopted},
      {"ByHand", "TheBookThatTheUserGoesToIsTheActiveOne", TheBookThatTheUserGoesToIsTheActiveOne},
      {"ByHand", "AClosedBooksHandlesAreDead", AClosedBooksHandlesAreDead},
      {"ByHand", "ABookClosedWhileItsCellsAreCopiedEndsCopying", ABookClosedWhileItsCellsAreCopiedEndsCopying},
      {"ByHand", "ADeletedSheetsHandlesAreDead", ADeletedSheetsHandlesAreDead},
      {"ByHand", "ADeletedNamesHandleIsDead", ADeletedNamesHandleIsDead},
      {"ByHand", "ARenamedSheetKeepsItsHandle", ARenamedSheetKeepsItsHandle},
      {"ByHand", "ABookSavedByHandCarriesWhatCalcCannotHold", ABookSavedByHandCarriesWhatCalcCannotHold},
  };
}

}  // namespace tolvane::libreoffice
