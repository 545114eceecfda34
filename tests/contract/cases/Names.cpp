#include "src/host/Names.h"

#include "tests/contract/cases/CaseFiles.h"

namespace tolvane::contract {
namespace {

using host::CellBlock;
using host::CellValue;
using host::Name;
using host::Workbook;

constexpr std::string_view kAddPage = "learn.microsoft.com: Names.Add method (Excel)";
constexpr std::string_view kRefersToPage = "learn.microsoft.com: Name.RefersTo property (Excel)";

// A book's first sheet, called "Data".
Sheet DataSheet(HostUnderTest& t) {
  const Sheet s = t.NewSheet();
  s.SetName("Data");
  return s;
}

}  // namespace

std::vector<ContractCase> NamesCases() {
  Cases cases("Names");

  cases.Add("ANameOfTheBook", {"Names.Add", "Name.Name", "Name.RefersTo", "Workbook.Names", "Name.RefersToRange"},
            kAddPage, [](HostUnderTest& t) {
              const Sheet s = DataSheet(t);
              const Name name = s.Parent().Names().Add("lstPeriods", "=Data!$A$1:$A$12");
              EXPECT_EQ(name.NameText(), "lstPeriods");
              EXPECT_EQ(name.RefersTo(), "=Data!$A$1:$A$12");
              EXPECT_EQ(name.RefersToRange().Address(), "$A$1:$A$12");
              EXPECT_TRUE(name.RefersToRange().Parent() == s);
            });

  cases.Add("ANameOfASheetIsToldWithItsSheet", {"Worksheet.Names", "Name.Name"}, kPort, [](HostUnderTest& t) {
    const Sheet s = DataSheet(t);
    EXPECT_EQ(s.Names().Add("rngType", "=Data!$A$1").NameText(), "Data!rngType");
    s.SetName("My Sheet");
    EXPECT_EQ(s.Names().Item("rngType").NameText(), "'My Sheet'!rngType");
  });

  cases.Add("LookUpIgnoresCase", {"Names.Item"}, kPort, [](HostUnderTest& t) {
    const Sheet s = DataSheet(t);
    s.Parent().Names().Add("Total", "=Data!$A$1");
    EXPECT_EQ(s.Parent().Names().Item("tOTAL").NameText(), "Total");
  });

  cases.Add("NeitherLevelFallsBackOnTheOther", {"Names.Item"}, kPort, [](HostUnderTest& t) {
    const Sheet s = DataSheet(t);
    s.Parent().Names().Add("ofBook", "=1");
    s.Names().Add("ofSheet", "=2");
    EXPECT_TRUE(Refused([&] { s.Names().Item("ofBook"); }));
    EXPECT_TRUE(Refused([&] { s.Parent().Names().Item("ofSheet"); }));
    EXPECT_TRUE(Refused([&] { s.Parent().Names().Item("noSuchName"); }));
    EXPECT_EQ(s.Names().Item("ofSheet").RefersTo(), "=2");
  });

  cases.Add("TheSameNameOnBothLevels", {"Names.Add"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = DataSheet(t);
    const Sheet other(s.Parent().Worksheets().Add());
    s.Parent().Names().Add("rate", "=1");
    s.Names().Add("rate", "=2");
    EXPECT_EQ(s.Parent().Names().Item("rate").RefersTo(), "=1");
    s.Put("A1", "=rate");
    other.Put("A1:B1", CellBlock{{"=rate", "=Data!rate"}});
    EXPECT_EQ(s.Value("A1"), 2);
    EXPECT_EQ(other.Value("A1"), 1);
    EXPECT_EQ(other.Value("B1"), 2);
  });

  cases.Add("AllInAlphabeticalOrder", {"Names.All"}, kPort, [](HostUnderTest& t) {
    const Sheet s = DataSheet(t);
    const auto names = s.Parent().Names();
    for (const char* name : {"pear", "Apple", "cherry"}) names.Add(name, "=1");
    s.Names().Add("banana", "=1");
    std::vector<std::string> found;
    for (const Name& name : names.All()) found.push_back(name.NameText());
    EXPECT_EQ(found, (std::vector<std::string>{"Apple", "cherry", "pear"}));
    EXPECT_EQ(s.Names().All().size(), 1u);
  });

  cases.Add("AddingAgainReplaces", {"Names.Add"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = DataSheet(t);
    s.Put("C1", "=total");
    s.Parent().Names().Add("total", "=1");
    s.Parent().Names().Add("TOTAL", "=2");
    EXPECT_EQ(s.Parent().Names().All().size(), 1u);
    EXPECT_EQ(s.Value("C1"), 2);
  });

  cases.Add("HiddenNames", {"Names.Add", "Name.Visible"}, kAddPage, [](HostUnderTest& t) {
    const Sheet s = DataSheet(t);
    const Name name = s.Names().Add("setCodeName", "=\"Accounts\"", false);
    EXPECT_FALSE(name.Visible());
    name.SetVisible(true);
    EXPECT_TRUE(s.Names().Item("setCodeName").Visible());
    EXPECT_EQ(s.Names().Add("other", "=1").Visible(), true);
    EXPECT_EQ(s.Names().All().size(), 2u);
  });

  cases.Add("ConstantsAndTexts", {"Name.RefersTo", "Name.RefersToR1C1"}, kRefersToPage, [](HostUnderTest& t) {
    const Sheet s = DataSheet(t);
    const auto names = s.Parent().Names();
    EXPECT_EQ(names.Add("a", "=FALSE").RefersTo(), "=FALSE");
    EXPECT_EQ(names.Add("b", "=\"2.1 \"\"beta\"\"\"").RefersTo(), "=\"2.1 \"\"beta\"\"\"");
    EXPECT_EQ(names.Item("b").RefersToR1C1(), "=\"2.1 \"\"beta\"\"\"");
    s.Put("A1:B1", CellBlock{{"=a", "=b"}});
    EXPECT_EQ(s("A1:B1").Value(), (CellBlock{{false, "2.1 \"beta\""}}));
  });

  cases.Add("NoRangeBehindAConstantOrALostRange", {}, kPort, [](HostUnderTest& t) {
    const Sheet s = DataSheet(t);
    const auto names = s.Parent().Names();
    names.Add("constant", "=FALSE");
    names.Add("sum", "=SUM(Data!$A$1:$A$3)");
    names.Add("lost", "=Data!$C$3");
    s("3:3").Delete();
    for (const char* name : {"constant", "sum", "lost"}) {
      EXPECT_TRUE(Refused([&] { names.Item(name).RefersToRange(); })) << name;
    }
    EXPECT_EQ(names.Item("lost").RefersTo(), "=Data!#REF!");
  });

  cases.Add("R1C1Notation", {"Names.Add", "Name.RefersToR1C1", "Name.RefersTo"}, kAddPage, [](HostUnderTest& t) {
    const Sheet s = DataSheet(t);
    s.SetName("My Sheet");
    const Name rows = s.Names().AddR1C1("rngSelectable", "='My Sheet'!R5:R9", false);
    EXPECT_EQ(rows.RefersTo(), "='My Sheet'!$5:$9");
    EXPECT_EQ(rows.RefersToR1C1(), "='My Sheet'!R5:R9");
    EXPECT_FALSE(rows.Visible());
    const Name block = s.Names().AddR1C1("rngAmount", "='My Sheet'!R5C3:R9C3");
    EXPECT_EQ(block.RefersToRange().Address(), "$C$5:$C$9");
    block.SetRefersToR1C1("='My Sheet'!R6C3:R7C4");
    EXPECT_EQ(block.RefersTo(), "='My Sheet'!$C$6:$D$7");
    block.SetRefersTo("='My Sheet'!$A$1");
    EXPECT_EQ(block.RefersToR1C1(), "='My Sheet'!R1C1");
  });

  cases.Add("WhatDoesNotParseIsRefusedAndChangesNothing", {"Names.Add", "Name.RefersTo"}, kPort, [](HostUnderTest& t) {
    const Sheet s = DataSheet(t);
    const Name name = s.Names().Add("rngSelectable", "=Data!$A$1");
    for (const char* formula : {"=Data!", "='Data'!", "=(", "=SUM(", "=1+"}) {
      EXPECT_TRUE(Refused([&] { s.Names().Add("rngSelectable", formula); })) << formula;
      EXPECT_TRUE(Refused([&] { s.Names().AddR1C1("rngSelectable", formula); })) << formula;
      EXPECT_TRUE(Refused([&] { name.SetRefersTo(formula); })) << formula;
      EXPECT_TRUE(Refused([&] { name.SetRefersToR1C1(formula); })) << formula;
      EXPECT_TRUE(Refused([&] { s.Names().Add("another", formula); })) << formula;
    }
    EXPECT_EQ(name.RefersTo(), "=Data!$A$1");
    EXPECT_EQ(s.Names().All().size(), 1u);
  });

  cases.Add("WhatIsNoNameIsRefused", {}, "support.microsoft.com: Names in formulas", [](HostUnderTest& t) {
    const Sheet s = DataSheet(t);
    for (const std::string& name : {std::string("1st"), std::string("a b"), std::string("A1"), std::string("R1C1"),
                                    std::string(""), std::string("a-b"), std::string(256, 'a'), std::string("TRUE")}) {
      EXPECT_TRUE(Refused([&] { s.Parent().Names().Add(name, "=1"); })) << name;
    }
    EXPECT_TRUE(s.Parent().Names().All().empty());
  });

  cases.Add("ANameOfANameOfAnotherSheet", {"Name.RefersTo"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = DataSheet(t);
    s.SetName("My Sheet");
    s.Names().Add("ptrLastAmount", "='My Sheet'!$C$9");
    const Name link = s.Parent().Names().Add("lnkA1", "='My Sheet'!ptrLastAmount");
    EXPECT_EQ(link.RefersTo(), "='My Sheet'!ptrLastAmount");
    s("C9").SetValue(CellValue(42));
    const Sheet other(s.Parent().Worksheets().Add());
    other.Put("A1", "=lnkA1");
    EXPECT_EQ(other.Value("A1"), 42);
    s.Names().Add("ptrLastAmount", "='My Sheet'!$C$10");
    s("C10").SetValue(CellValue(43));
    EXPECT_EQ(other.Value("A1"), 43);
  });

  cases.Add("ANameOfAnotherBook", {"Names.Add"}, kMemory, [](HostUnderTest& t) {
    const Workbook accounts = t.NewBook();
    accounts.SaveAs(t.PathFor("accounts.xlsx"));
    const Sheet list(accounts.Worksheets().Item(1));
    list.SetName("Lists");
    list("A1").SetValue(CellValue("Food"));
    accounts.Names().Add("lstISCategories", "=Lists!$A$1");
    const Sheet s = t.NewSheet();
    const Name name = s.Parent().Names().Add("lstISCategories", "='accounts.xlsx'!lstISCategories");
    EXPECT_NE(name.RefersTo().find("accounts.xlsx"), std::string::npos);
    s.Put("A1", "=lstISCategories");
    EXPECT_EQ(s.Value("A1"), "Food");
  });

  cases.Add("DeletedNamesAreGone", {"Name.Delete"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = DataSheet(t);
    const Name name = s.Names().Add("rate", "=2");
    s.Put("A1", "=rate");
    name.Delete();
    EXPECT_FALSE(name.IsAlive());
    EXPECT_TRUE(Refused([&] { s.Names().Item("rate"); }));
    EXPECT_EQ(s.Value("A1"), host::CellError::Name);
  });

  cases.Add("RowsOfANameFollowInsertionsAndDeletions", {"Name.RefersTo"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = DataSheet(t);
    const Name rows = s.Names().Add("rngSelectable", "=Data!$5:$9");
    const Name column = s.Names().Add("rngAmount", "=Data!$C$5:$C$9");
    s("6:7").Insert();
    EXPECT_EQ(rows.RefersTo(), "=Data!$5:$11");
    EXPECT_EQ(column.RefersTo(), "=Data!$C$5:$C$11");
    s("1:1").Delete();
    EXPECT_EQ(rows.RefersTo(), "=Data!$4:$10");
    s("8:20").Delete();
    EXPECT_EQ(rows.RefersTo(), "=Data!$4:$7");
    s("A:A").Delete();
    EXPECT_EQ(column.RefersTo(), "=Data!$B$4:$B$7");
    s("4:7").Delete();
    EXPECT_EQ(column.RefersTo(), "=Data!#REF!");
    EXPECT_EQ(rows.RefersTo(), "=Data!#REF!");
  });

  cases.Add("NamesFollowARename", {"Name.RefersTo"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = DataSheet(t);
    const Name range = s.Parent().Names().Add("range", "=Data!$A$1");
    s.Names().Add("own", "=Data!$B$1");
    const Name link = s.Parent().Names().Add("link", "=Data!own");
    s.SetName("It's new");
    EXPECT_EQ(range.RefersTo(), "='It''s new'!$A$1");
    EXPECT_EQ(link.RefersTo(), "='It''s new'!own");
  });

  cases.Add("NamesFollowCutCells", {"Name.RefersTo", "Range.Cut"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = DataSheet(t);
    const Name name = s.Parent().Names().Add("range", "=Data!$A$1:$B$2");
    s("A1:B2").Cut();
    s("D5").PasteSpecial(host::PasteType::All);
    EXPECT_EQ(name.RefersTo(), "=Data!$D$5:$E$6");
  });

  return std::move(cases).Take();
}

}  // namespace tolvane::contract
