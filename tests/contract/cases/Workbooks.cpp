#include <algorithm>

#include "tests/contract/cases/CaseFiles.h"

namespace tolvane::contract {
namespace {

using host::CellBlock;
using host::CellValue;
using host::ErrorNumber;
using host::Workbook;

constexpr std::string_view kOpenPage = "learn.microsoft.com: Workbooks.Open method (Excel)";
constexpr std::string_view kAddPage = "learn.microsoft.com: Workbooks.Add method (Excel)";

void FillAccounts(const Workbook& book) {
  const Sheet s(book.Worksheets().Item(1));
  s.SetName("Accounts");
  s.Put("A1:A2", CellBlock{{20}, {"=A1+1"}});
  book.Names().Add("setIsTolvaneAccountsBook", "=TRUE", false);
}

}  // namespace

std::vector<ContractCase> WorkbooksCases() {
  Cases cases("Workbooks");

  cases.Add("NothingIsInFrontWithoutABook",
            {"Application.ActiveWorkbook", "Application.ActiveSheet", "Application.ActiveCell",
             "Application.ActiveWindow", "Workbooks.Count", "Selection.Range"},
            kPort, [](HostUnderTest& t) {
              const auto app = t.application();
              EXPECT_TRUE(app.ActiveWorkbook().IsNothing());
              EXPECT_TRUE(app.ActiveSheet().IsNothing());
              EXPECT_TRUE(app.ActiveCell().IsNothing());
              EXPECT_TRUE(app.ActiveWindow().IsNothing());
              EXPECT_TRUE(app.Selection().Range().IsNothing());
              EXPECT_EQ(app.Workbooks().Count(), 0);
            });

  cases.Add("ANewBookComesToTheFront",
            {"Workbooks.Add", "Workbook.Path", "Workbook.FullName", "Workbook.Name", "Application.ActiveWorkbook"},
            kAddPage, [](HostUnderTest& t) {
              const auto app = t.application();
              const Workbook one = app.Workbooks().Add();
              const Workbook two = app.Workbooks().Add();
              EXPECT_TRUE(app.ActiveWorkbook() == two);
              EXPECT_TRUE(app.ActiveSheet() == two.Worksheets().Item(1));
              EXPECT_NE(one.Name(), two.Name());
              EXPECT_EQ(one.Path(), "");
              EXPECT_EQ(one.FullName(), one.Name());
              EXPECT_GE(one.Worksheets().Count(), 1);
            });

  cases.Add("OpenBooksByNumberAndName", {"Workbooks.Item", "Workbooks.All", "Workbooks.Count"}, kPort,
            [](HostUnderTest& t) {
              const auto books = t.application().Workbooks();
              const Workbook one = books.Add();
              const Workbook two = books.Add();
              EXPECT_EQ(books.Count(), 2);
              EXPECT_TRUE(books.Item(1) == one);
              std::string name = two.Name();
              std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return std::toupper(c); });
              EXPECT_TRUE(books.Item(name) == two);
              EXPECT_EQ(books.All().size(), 2u);
              for (const int index : {0, 3, -1}) {
                EXPECT_TRUE(Raises(ErrorNumber::SubscriptOutOfRange, [&] { books.Item(index); }));
              }
              EXPECT_TRUE(Raises(ErrorNumber::SubscriptOutOfRange, [&] { books.Item("no such book.xlsx"); }));
            });

  cases.Add("TheAddinIsFoundByNameOnly", {"Application.ThisWorkbook", "Workbook.IsAddin", "Workbooks.Item"}, kPort,
            [](HostUnderTest& t) {
              const auto app = t.application();
              t.NewBook();
              const Workbook addin = app.ThisWorkbook();
              EXPECT_TRUE(addin == t.addin());
              EXPECT_TRUE(addin.IsAddin());
              EXPECT_TRUE(app.Workbooks().Item(addin.Name()) == addin);
              for (const Workbook& book : app.Workbooks().All()) EXPECT_FALSE(book == addin);
              EXPECT_FALSE(app.ActiveWorkbook() == addin);
            });

  cases.Add("ABookMadeAnAddinLeavesTheWalk", {"Workbook.IsAddin", "Workbooks.All"}, kPort, [](HostUnderTest& t) {
    const auto app = t.application();
    const Workbook one = t.NewBook(), two = t.NewBook();
    EXPECT_FALSE(two.IsAddin());
    two.SetIsAddin(true);
    EXPECT_TRUE(two.IsAddin());
    EXPECT_EQ(app.Workbooks().All().size(), 1u);
    EXPECT_TRUE(app.ActiveWorkbook() == one);
    two.SetIsAddin(false);
    EXPECT_EQ(app.Workbooks().All().size(), 2u);
  });

  cases.Add("SavedTellsOfChanges", {"Workbook.Saved", "Workbook.SaveAs", "Workbook.Save"},
            "learn.microsoft.com: Workbook.Saved property (Excel)", [](HostUnderTest& t) {
              const Workbook book = t.NewBook();
              const Sheet s(book.Worksheets().Item(1));
              s("A1").SetValue(CellValue(1));
              EXPECT_FALSE(book.Saved());
              book.SetSaved(true);
              EXPECT_TRUE(book.Saved());
              s("A1").Font().SetBold(true);
              EXPECT_FALSE(book.Saved());
              book.SaveAs(t.PathFor("saved.xlsx"));
              EXPECT_TRUE(book.Saved());
              s("A1").SetValue(CellValue(2));
              EXPECT_FALSE(book.Saved());
              book.Save();
              EXPECT_TRUE(book.Saved());
              book.SetSaved(false);
              EXPECT_FALSE(book.Saved());
            });

  cases.Add("SavedBooksHaveAPlace", {"Workbook.SaveAs", "Workbook.Name", "Workbook.Path", "Workbook.FullName"}, kPort,
            [](HostUnderTest& t) {
              const Workbook book = t.NewBook();
              const std::string path = t.PathFor("My Accounts.xlsx");
              book.SaveAs(path);
              EXPECT_EQ(book.Name(), "My Accounts.xlsx");
              EXPECT_EQ(book.FullName(), path);
              EXPECT_EQ(path.substr(0, book.Path().size()), book.Path());
              EXPECT_EQ(path.size(), book.Path().size() + 1 + book.Name().size());
            });

  cases.Add("TwoOpenBooksNeverShareAName", {"Workbook.SaveAs"}, kPort, [](HostUnderTest& t) {
    const Workbook one = t.NewBook(), two = t.NewBook();
    one.SaveAs(t.PathFor("same.xlsx"));
    EXPECT_TRUE(Refused([&] { two.SaveAs(t.PathFor("same.xlsx")); }));
    EXPECT_EQ(two.Path(), "");
  });

  cases.Add("ClosedBooksAreGone", {"Workbook.Close"}, "learn.microsoft.com: Workbook.Close method (Excel)",
            [](HostUnderTest& t) {
              const auto app = t.application();
              const Workbook one = t.NewBook(), two = t.NewBook();
              const std::string name = two.Name();
              Sheet(two.Worksheets().Item(1)).Put("A1", 1);
              two.Close(false);
              EXPECT_FALSE(two.IsAlive());
              EXPECT_TRUE(app.ActiveWorkbook() == one);
              EXPECT_TRUE(Raises(ErrorNumber::SubscriptOutOfRange, [&] { app.Workbooks().Item(name); }));
              EXPECT_TRUE(t.asked().empty());
            });

  cases.Add("ClosingWithChangesSavesThem", {"Workbook.Close", "Workbooks.Open"}, kPort, [](HostUnderTest& t) {
    const std::string path = t.SavedBook("accounts.xlsx", FillAccounts);
    const auto books = t.application().Workbooks();
    Workbook book = books.Open(path);
    Sheet(book.Worksheets().Item(1)).Put("A1", 30);
    book.Close(true);
    book = books.Open(path);
    EXPECT_EQ(Sheet(book.Worksheets().Item(1)).Value("A2"), 31);
    Sheet(book.Worksheets().Item(1)).Put("A1", 40);
    book.Close(false);
    EXPECT_EQ(Sheet(books.Open(path).Worksheets().Item(1)).Value("A1"), 30);
  });

  cases.Add("OpenedBooksAreAsTheyWereSaved", {"Workbooks.Open"}, kOpenPage, [](HostUnderTest& t) {
    const std::string path = t.SavedBook("accounts.xlsx", FillAccounts);
    const Workbook book = t.application().Workbooks().Open(path);
    const Sheet s(book.Worksheets().Item("Accounts"));
    EXPECT_EQ(s.Formula("A2"), "=A1+1");
    EXPECT_EQ(s.Value("A2"), 21);
    EXPECT_FALSE(book.Names().Item("setIsTolvaneAccountsBook").Visible());
    EXPECT_EQ(book.FullName(), path);
    EXPECT_TRUE(book.Saved());
    EXPECT_TRUE(t.application().ActiveWorkbook() == book);
  });

  cases.Add("WhatCannotBeOpenedIsRefused", {}, kPort, [](HostUnderTest& t) {
    const auto books = t.application().Workbooks();
    EXPECT_TRUE(Refused([&] { books.Open(t.PathFor("missing.xlsx")); }));
    EXPECT_TRUE(Refused([&] { books.Add(t.PathFor("missing.xltx")); }));
    EXPECT_EQ(books.Count(), 0);
  });

  cases.Add("ATemplateOpensAsANewBook", {"Workbooks.Open"}, kPort, [](HostUnderTest& t) {
    const std::string path = t.SavedBook("Accounts.xltx", FillAccounts);
    const Workbook book = t.application().Workbooks().Open(path);
    EXPECT_EQ(book.Path(), "");
    EXPECT_EQ(book.Name(), "Accounts1");
    EXPECT_EQ(Sheet(book.Worksheets().Item("Accounts")).Value("A2"), 21);
    const Workbook second = t.application().Workbooks().Open(path);
    EXPECT_EQ(second.Name(), "Accounts2");
  });

  cases.Add("ANewBookFromATemplate", {"Workbooks.Add"}, kAddPage, [](HostUnderTest& t) {
    const std::string path = t.SavedBook("Breakdown.xltx", FillAccounts);
    const Workbook book = t.application().Workbooks().Add(path);
    EXPECT_EQ(book.Path(), "");
    EXPECT_EQ(book.Name(), "Breakdown1");
    EXPECT_EQ(Sheet(book.Worksheets().Item("Accounts")).Value("A2"), 21);
    EXPECT_TRUE(t.application().ActiveWorkbook() == book);
  });

  cases.Add("BooksComeToTheFront", {"Workbook.Activate", "Workbook.ActiveSheet", "Application.ActiveSheet"}, kMemory,
            [](HostUnderTest& t) {
              const auto app = t.application();
              const Workbook one = t.NewBook(), two = t.NewBook();
              const host::Worksheet sheet = one.Worksheets().Add();
              EXPECT_TRUE(one.ActiveSheet() == sheet);
              one.Activate();
              EXPECT_TRUE(app.ActiveWorkbook() == one);
              EXPECT_TRUE(app.ActiveSheet() == sheet);
              two.Activate();
              EXPECT_TRUE(one.ActiveSheet() == sheet);
              EXPECT_FALSE(app.ActiveSheet() == sheet);
            });

  cases.Add("ReferencesIntoAnotherBook", {"Range.Formula"}, kMemory, [](HostUnderTest& t) {
    const std::string path = t.SavedBook("accounts.xlsx", FillAccounts);
    const Workbook accounts = t.application().Workbooks().Open(path);
    const Sheet s = t.NewSheet();
    s.Put("A1", "=[accounts.xlsx]Accounts!$A$2");
    EXPECT_EQ(s.Value("A1"), 21);
    EXPECT_EQ(s.Formula("A1"), "=[accounts.xlsx]Accounts!$A$2");
  });

  return std::move(cases).Take();
}

}  // namespace tolvane::contract
