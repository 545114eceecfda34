#include "tests/contract/cases/CaseFiles.h"

namespace tolvane::contract {
namespace {

using host::CellBlock;
using host::CellError;
using host::CellValue;
using host::ErrorNumber;
using host::SheetVisibility;
using host::Workbook;
using host::Worksheet;

constexpr std::string_view kCopyPage = "learn.microsoft.com: Worksheet.Copy method (Excel)";
constexpr std::string_view kMovePage = "learn.microsoft.com: Worksheet.Move method (Excel)";

// A book with the sheets A, B and C in front of whatever else it was made with.
Workbook BookABC(HostUnderTest& t) {
  t.application().SetDisplayAlerts(false);
  const Workbook book = t.NewBook();
  for (const char* name : {"A", "B", "C"}) book.Worksheets().Add().SetName(name);
  while (book.Worksheets().Count() > 3) book.Worksheets().Item(1).Delete();
  return book;
}

Sheet Named(const Workbook& book, std::string_view name) {
  return Sheet(book.Worksheets().Item(name));
}

std::string Tabs(const Workbook& book) {
  std::string tabs;
  for (const Worksheet& sheet : book.Worksheets().All()) tabs += (tabs.empty() ? "" : "|") + sheet.Name();
  return tabs;
}

}  // namespace

std::vector<ContractCase> SheetsCases() {
  Cases cases("Sheets");

  cases.Add("AddedBehindTheLastAndInFront", {"Worksheets.Add", "Worksheets.Count", "Worksheets.All", "Worksheet.Index"},
            kPort, [](HostUnderTest& t) {
              const Workbook book = BookABC(t);
              const Worksheet added = book.Worksheets().Add();
              EXPECT_EQ(book.Worksheets().Count(), 4);
              EXPECT_EQ(added.Index(), 4);
              EXPECT_TRUE(book.ActiveSheet() == added);
              EXPECT_EQ(Tabs(book), "A|B|C|" + added.Name());
            });

  cases.Add("ItemByNumberAndByName", {"Worksheets.Item"}, kPort, [](HostUnderTest& t) {
    const Workbook book = BookABC(t);
    EXPECT_EQ(book.Worksheets().Item(2).Name(), "B");
    EXPECT_EQ(book.Worksheets().Item("c").Index(), 3);
    for (const int index : {0, -1, 4}) {
      EXPECT_TRUE(Raises(ErrorNumber::SubscriptOutOfRange, [&] { book.Worksheets().Item(index); }));
    }
    EXPECT_TRUE(Raises(ErrorNumber::SubscriptOutOfRange, [&] { book.Worksheets().Item("D"); }));
    EXPECT_TRUE(Raises(ErrorNumber::SubscriptOutOfRange, [&] { book.Worksheets().Item(""); }));
  });

  cases.Add("IdentityOutlivesNamesAndPlaces", {"Worksheet.Name", "Worksheet.Move", "Worksheet.Parent"}, kPort,
            [](HostUnderTest& t) {
              const Workbook book = BookABC(t);
              const Sheet a = Named(book, "A");
              a.SetName("Renamed");
              a.MoveAfter(Named(book, "C"));
              EXPECT_TRUE(Named(book, "renamed") == a);
              EXPECT_FALSE(Named(book, "B") == a);
              EXPECT_TRUE(a.Parent() == book);
            });

  cases.Add("NamesOfUpTo31Characters", {"Worksheet.Name"}, "support.microsoft.com: Rename a worksheet",
            [](HostUnderTest& t) {
              const Sheet a = Named(BookABC(t), "A");
              const std::string longest(31, 'x');
              a.SetName(longest);
              EXPECT_EQ(a.Name(), longest);
              EXPECT_TRUE(Refused([&] { a.SetName(longest + "x"); }));
              a.SetName("Übersicht été 東京");
              EXPECT_EQ(a.Name(), "Übersicht été 東京");
            });

  cases.Add("BadNamesAreRefused", {"Worksheet.Name"}, kPort, [](HostUnderTest& t) {
    const Sheet a = Named(BookABC(t), "A");
    for (const char* name : {"", "a:b", "a\\b", "a/b", "a?b", "a*b", "a[b", "a]b", "B", "b"}) {
      EXPECT_TRUE(Refused([&] { a.SetName(name); })) << name;
    }
    EXPECT_EQ(a.Name(), "A");
    a.SetName("a");
    EXPECT_EQ(a.Name(), "a");
  });

  cases.Add("FormulasFollowARename", {"Worksheet.Name"}, kMemory, [](HostUnderTest& t) {
    const Workbook book = BookABC(t);
    const Sheet a = Named(book, "A"), b = Named(book, "B");
    a("A1").SetValue(CellValue(5));
    b.Put("A1", "=A!A1+1");
    b("A2").Validation().Add(ListRule("=A!$A$1:$A$3"));
    a.SetName("My Sheet");
    EXPECT_EQ(b.Formula("A1"), "='My Sheet'!A1+1");
    EXPECT_EQ(b("A2").Validation().Rule()->source, "='My Sheet'!$A$1:$A$3");
    a.SetName("Joe's");
    EXPECT_EQ(b.Formula("A1"), "='Joe''s'!A1+1");
    EXPECT_EQ(b.Value("A1"), 6);
  });

  cases.Add("CodeNamesAreKept", {"Worksheet.CodeName"}, kPort, [](HostUnderTest& t) {
    const Workbook book = BookABC(t);
    const Sheet a = Named(book, "A");
    a.SetCodeName("wksAccounts");
    a.SetName("Renamed");
    EXPECT_EQ(a.CodeName(), "wksAccounts");
    EXPECT_TRUE(Refused([&] { Named(book, "B").SetCodeName("wksAccounts"); }));
    const Workbook other = t.NewBook();
    other.Worksheets().Item(1).SetCodeName("wksAccounts");
    EXPECT_EQ(other.Worksheets().Item(1).CodeName(), "wksAccounts");
  });

  cases.Add("Visibility", {"Worksheet.Visible"}, kMemory, [](HostUnderTest& t) {
    const Workbook book = BookABC(t);
    const Sheet a = Named(book, "A"), b = Named(book, "B"), c = Named(book, "C");
    EXPECT_EQ(a.Visible(), SheetVisibility::Visible);
    a.Activate();
    a.SetVisible(SheetVisibility::Hidden);
    EXPECT_EQ(a.Visible(), SheetVisibility::Hidden);
    EXPECT_FALSE(book.ActiveSheet() == a);
    b.SetVisible(SheetVisibility::VeryHidden);
    EXPECT_EQ(b.Visible(), SheetVisibility::VeryHidden);
    EXPECT_TRUE(book.ActiveSheet() == c);
    EXPECT_TRUE(Refused([&] { c.SetVisible(SheetVisibility::Hidden); }));
    EXPECT_EQ(c.Visible(), SheetVisibility::Visible);
    a.SetVisible(SheetVisibility::Visible);
    c.SetVisible(SheetVisibility::Hidden);
    EXPECT_TRUE(book.ActiveSheet() == a);
  });

  cases.Add("AHiddenSheetCannotComeToTheFront", {"Worksheet.Activate"}, kMemory, [](HostUnderTest& t) {
    const Workbook book = BookABC(t);
    const Sheet a = Named(book, "A"), b = Named(book, "B");
    b.Activate();
    EXPECT_TRUE(book.ActiveSheet() == b);
    a.SetVisible(SheetVisibility::Hidden);
    EXPECT_TRUE(Refused([&] { a.Activate(); }));
    EXPECT_TRUE(book.ActiveSheet() == b);
  });

  cases.Add("ColourOfTheTab", {"Tab.ColorIndex"}, "learn.microsoft.com: Tab.ColorIndex property (Excel)",
            [](HostUnderTest& t) {
              const Sheet a = Named(BookABC(t), "A");
              EXPECT_EQ(a.Tab().ColorIndex(), host::kColorIndexNone);
              a.Tab().SetColorIndex(3);
              EXPECT_EQ(a.Tab().ColorIndex(), 3);
              a.Tab().SetColorIndex(host::kColorIndexNone);
              EXPECT_EQ(a.Tab().ColorIndex(), host::kColorIndexNone);
            });

  cases.Add("APageIsSetUp", {"Worksheet.PageSetup"}, "learn.microsoft.com: PageSetup object (Excel)",
            [](HostUnderTest& t) {
              const Workbook book = BookABC(t);
              const Sheet a = Named(book, "A");
              EXPECT_EQ(a.PageSetup(), host::PageSetup{});
              const host::PageSetup wide{.landscape = true, .fitToPagesWide = 1, .fitToPagesTall = {}};
              a.SetPageSetup(wide);
              EXPECT_EQ(a.PageSetup(), wide);
              EXPECT_EQ(Named(book, "B").PageSetup(), host::PageSetup{});
              EXPECT_TRUE(Refused([&] { a.SetPageSetup({.fitToPagesWide = 0}); }));
              EXPECT_EQ(a.PageSetup(), wide);
              a.CopyAfter(a);
              EXPECT_EQ(Named(book, "A (2)").PageSetup(), wide);
              a.SetPageSetup({});
              EXPECT_EQ(a.PageSetup(), host::PageSetup{});
            });

  cases.Add("MovedBeforeAndAfter", {"Worksheet.Move"}, kMovePage, [](HostUnderTest& t) {
    const Workbook book = BookABC(t);
    const Sheet a = Named(book, "A"), b = Named(book, "B"), c = Named(book, "C");
    b.Put("A1", "=A!A1");
    a.MoveAfter(c);
    EXPECT_EQ(Tabs(book), "B|C|A");
    c.MoveBefore(b);
    EXPECT_EQ(Tabs(book), "C|B|A");
    a.MoveBefore(a);
    EXPECT_EQ(Tabs(book), "C|B|A");
    EXPECT_EQ(a.Index(), 3);
    EXPECT_EQ(b.Formula("A1"), "=A!A1");
  });

  cases.Add("CopiedWithAllThatLiesOnIt", {"Worksheet.Copy"}, kMemory, [](HostUnderTest& t) {
    const Workbook book = BookABC(t);
    const Sheet a = Named(book, "A");
    a.SetCodeName("wksOriginal");
    a.Put("A1:A2", CellBlock{{7}, {"=A1+A!A1+B!A1"}});
    a("A1").Font().SetBold(true);
    a("B1").Validation().Add(ListRule("=$A$1:$A$2"));
    a("C1:D1").Merge();
    a("5:5").SetHidden(true);
    host::Protection allowed;
    allowed.allowSorting = true;
    a.Protect(allowed);
    a.CopyAfter(Named(book, "B"));
    EXPECT_EQ(Tabs(book), "A|B|A (2)|C");
    const Sheet copy = Named(book, "A (2)");
    EXPECT_TRUE(book.ActiveSheet() == copy);
    EXPECT_NE(copy.CodeName(), "wksOriginal");
    EXPECT_NE(copy.CodeName(), "");
    EXPECT_EQ(a.CodeName(), "wksOriginal");
    EXPECT_EQ(copy.Formula("A2"), "=A1+'A (2)'!A1+B!A1");
    EXPECT_EQ(copy.Value("A2"), 14);
    EXPECT_EQ(copy("A1").Font().Bold(), true);
    EXPECT_EQ(copy("B1").Validation().Rule()->source, "=$A$1:$A$2");
    EXPECT_EQ(copy("C1:D1").MergeCells(), true);
    EXPECT_EQ(copy("5:5").Hidden(), true);
    EXPECT_TRUE(copy.ProtectContents());
    EXPECT_EQ(copy.Protection(), allowed);
    a.CopyBefore(a);
    EXPECT_EQ(Tabs(book), "A (3)|A|B|A (2)|C");
  });

  cases.Add("CopiedWithItsNames", {"Worksheet.Copy", "Worksheet.Names"}, kMemory, [](HostUnderTest& t) {
    const Workbook book = BookABC(t);
    const Sheet a = Named(book, "A");
    a.Names().Add("rngAmount", "=A!$C$5:$C$9", false);
    a.Names().Add("setCodeName", "=\"kind\"");
    a.CopyAfter(a);
    const Sheet copy = Named(book, "A (2)");
    EXPECT_EQ(copy.Names().All().size(), 2u);
    EXPECT_EQ(copy.Names().Item("rngAmount").RefersTo(), "='A (2)'!$C$5:$C$9");
    EXPECT_FALSE(copy.Names().Item("rngAmount").Visible());
    EXPECT_EQ(copy.Names().Item("setCodeName").RefersTo(), "=\"kind\"");
    EXPECT_EQ(a.Names().Item("rngAmount").RefersTo(), "=A!$C$5:$C$9");
  });

  cases.Add("CopiedIntoAnotherBook", {"Worksheet.Copy"}, kCopyPage, [](HostUnderTest& t) {
    const Workbook from = BookABC(t);
    const Sheet a = Named(from, "A");
    a.Put("A1:A2", CellBlock{{3}, {"=A1*2"}});
    const Workbook to = t.NewBook();
    a.CopyBefore(to.Worksheets().Item(1));
    const Sheet copy(to.Worksheets().Item(1));
    EXPECT_EQ(copy.Name(), "A");
    EXPECT_EQ(copy.Value("A2"), 6);
    EXPECT_TRUE(copy.Parent() == to);
    EXPECT_EQ(from.Worksheets().Count(), 3);
  });

  cases.Add("DeletedSheetsLeaveBrokenReferences", {"Worksheet.Delete"}, kMemory, [](HostUnderTest& t) {
    const Workbook book = BookABC(t);
    const Sheet a = Named(book, "A"), b = Named(book, "B");
    a.Names().Add("own", "=A!$A$1");
    book.Names().Add("range", "=A!$A$1");
    b.Put("A1:A2", CellBlock{{"=A!A1"}, {"=SUM(A!A1:A3)+1"}});
    const host::Range cell = a("A1");
    const host::Name own = a.Names().Item("own");
    a.Delete();
    EXPECT_FALSE(a.IsAlive());
    EXPECT_FALSE(cell.IsAlive());
    EXPECT_FALSE(own.IsAlive());
    EXPECT_EQ(Tabs(book), "B|C");
    EXPECT_NE(b.Formula("A1").find("#REF!"), std::string::npos);
    EXPECT_EQ(b.Value("A1"), CellError::Ref);
    EXPECT_EQ(b.Value("A2"), CellError::Ref);
    EXPECT_NE(book.Names().Item("range").RefersTo().find("#REF!"), std::string::npos);
  });

  cases.Add("TheLastVisibleSheetStays", {}, kMemory, [](HostUnderTest& t) {
    const Workbook book = BookABC(t);
    Named(book, "A").Delete();
    Named(book, "B").SetVisible(SheetVisibility::Hidden);
    EXPECT_TRUE(Refused([&] { Named(book, "C").Delete(); }));
    EXPECT_EQ(Tabs(book), "B|C");
  });

  cases.Add("DeletingTheActiveSheetBringsAnotherToTheFront", {"Worksheet.Delete", "Workbook.ActiveSheet"}, kMemory,
            [](HostUnderTest& t) {
              const Workbook book = BookABC(t);
              Named(book, "B").Activate();
              Named(book, "B").Delete();
              EXPECT_TRUE(book.ActiveSheet().IsAlive());
              EXPECT_TRUE(t.application().ActiveSheet() == book.ActiveSheet());
            });

  cases.Add("AProtectedStructureKeepsItsSheets", {"Workbook.ProtectStructure"},
            "learn.microsoft.com: Workbook.Protect method (Excel)", [](HostUnderTest& t) {
              const Workbook book = BookABC(t);
              const Sheet a = Named(book, "A"), b = Named(book, "B");
              EXPECT_FALSE(book.ProtectStructure());
              book.SetProtectStructure(true);
              EXPECT_TRUE(book.ProtectStructure());
              EXPECT_TRUE(Refused([&] { book.Worksheets().Add(); }));
              EXPECT_TRUE(Refused([&] { a.Delete(); }));
              EXPECT_TRUE(Refused([&] { a.MoveAfter(b); }));
              EXPECT_TRUE(Refused([&] { a.CopyAfter(b); }));
              EXPECT_TRUE(Refused([&] { a.SetName("X"); }));
              EXPECT_TRUE(Refused([&] { a.SetVisible(SheetVisibility::Hidden); }));
              EXPECT_EQ(Tabs(book), "A|B|C");
              a("A1").SetValue(CellValue(1));
              EXPECT_EQ(a.Value("A1"), 1);
              book.SetProtectStructure(false);
              a.SetName("X");
              EXPECT_EQ(Tabs(book), "X|B|C");
            });

  return std::move(cases).Take();
}

}  // namespace tolvane::contract
