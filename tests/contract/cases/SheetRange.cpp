#include "tests/contract/cases/CaseFiles.h"

namespace tolvane::contract {
namespace {

using host::CellBlock;
using host::CellValue;
using host::Range;
using host::Workbook;

constexpr std::string_view kRangePage = "learn.microsoft.com: Worksheet.Range property (Excel)";

}  // namespace

// Worksheet.Range, Cells, Rows, Columns, and what Application makes of ranges.
std::vector<ContractCase> SheetRangeCases() {
  Cases cases("SheetRange");

  cases.Add("AddressesInA1Notation", {"Worksheet.Range"}, kRangePage, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    EXPECT_EQ(s("B7").Address(), "$B$7");
    EXPECT_EQ(s("$B$7:C9").Address(), "$B$7:$C$9");
    EXPECT_EQ(s("$5:$9").Address(), "$5:$9");
    EXPECT_EQ(s("A:C").Address(), "$A:$C");
    EXPECT_EQ(s("A1,C3").Address(), "$A$1,$C$3");
  });

  cases.Add("ListsOfAreasOfUpTo255CharactersAreTaken", {"Worksheet.Range"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    std::string address = "A1";
    std::size_t areas = 1;
    for (int row = 3; address.size() + 5 <= 255; row += 2, ++areas) address += ",A" + std::to_string(row);
    EXPECT_EQ(s(address).Areas().size(), areas);
  });

  cases.Add("WhatIsNoAddressIsRefused", {}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    for (const char* text :
         {"", "noSuchName", "A0", "A1:", "XFE1", "A1048577", "1:0", "$", "A1,,B2", "R1C1", "A1)", "=A1"}) {
      EXPECT_TRUE(Refused([&] { s(text); })) << text;
    }
  });

  cases.Add("ANameOfTheSheetComesFirstThenTheBooks", {"Worksheet.Range"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s.SetName("Data");
    s.Parent().Names().Add("total", "=Data!$A$1");
    EXPECT_EQ(s("total").Address(), "$A$1");
    s.Names().Add("total", "=Data!$B$2");
    EXPECT_EQ(s("TOTAL").Address(), "$B$2");
  });

  cases.Add("ABooksNameOnAnotherSheetIsRefused", {}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    const Sheet other(s.Parent().Worksheets().Add());
    other.SetName("Other");
    s.Parent().Names().Add("elsewhere", "=Other!$A$1");
    EXPECT_TRUE(Refused([&] { s("elsewhere"); }));
    EXPECT_EQ(other("elsewhere").Address(), "$A$1");
  });

  cases.Add("AnotherSheetsNameIsNotSeen", {}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    const Sheet other(s.Parent().Worksheets().Add());
    other.SetName("Other");
    other.Names().Add("own", "=Other!$A$1");
    EXPECT_TRUE(Refused([&] { s("own"); }));
  });

  cases.Add("NamesOfConstantsAreRefused", {}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s.Names().Add("rngSelectable", "=FALSE");
    EXPECT_TRUE(Refused([&] { s("rngSelectable"); }));
    s.Names().Add("version", "=\"2.1\"");
    EXPECT_TRUE(Refused([&] { s("version"); }));
  });

  cases.Add("ANameThatPointsAtAName", {"Worksheet.Range"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s.SetName("My Sheet");
    s.Names().Add("ptrLastAmount", "='My Sheet'!$C$9");
    s.Parent().Names().Add("lnkA1", "='My Sheet'!ptrLastAmount");
    EXPECT_EQ(s("lnkA1").Address(), "$C$9");
  });

  cases.Add("CellsRowsAndColumns",
            {"Worksheet.Cells", "Worksheet.Rows.Item", "Worksheet.Columns.Item", "Worksheet.Rows.Count",
             "Worksheet.Columns.Count"},
            kMemory, [](HostUnderTest& t) {
              const Sheet s = t.NewSheet();
              EXPECT_EQ(s.Cells(3, 2).Address(), "$B$3");
              EXPECT_EQ(s.Rows().Item(7).Address(), "$7:$7");
              EXPECT_EQ(s.Columns().Item(28).Address(), "$AB:$AB");
              EXPECT_EQ(s.Rows().Count(), 1048576);
              EXPECT_EQ(s.Columns().Count(), 16384);
              EXPECT_EQ(s.Cells().Rows().Count(), s.Rows().Count());
              EXPECT_EQ(s.Cells().Columns().Count(), s.Columns().Count());
              EXPECT_EQ(s.Cells(s.Rows().Count(), s.Columns().Count()).Address(), "$XFD$1048576");
            });

  cases.Add("CellsOutsideOfTheSheetAreRefused", {}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    EXPECT_TRUE(Refused([&] { s.Cells(0, 1); }));
    EXPECT_TRUE(Refused([&] { s.Cells(1, 0); }));
    EXPECT_TRUE(Refused([&] { s.Cells(s.Rows().Count() + 1, 1); }));
    EXPECT_TRUE(Refused([&] { s.Cells(1, s.Columns().Count() + 1); }));
    EXPECT_TRUE(Refused([&] { s.Rows().Item(0); }));
    EXPECT_TRUE(Refused([&] { s.Columns().Item(s.Columns().Count() + 1); }));
  });

  cases.Add("IntersectOfOverlappingRanges", {"Application.Intersect"},
            "learn.microsoft.com: Application.Intersect method (Excel)", [](HostUnderTest& t) {
              const Sheet s = t.NewSheet();
              const auto app = t.application();
              EXPECT_EQ(app.Intersect(s("A1:C3"), s("B2:D4")).Address(), "$B$2:$C$3");
              EXPECT_EQ(app.Intersect(s("5:9"), s("B:B")).Address(), "$B$5:$B$9");
              EXPECT_EQ(app.Intersect(s("A1:A2,C1:C2"), s("1:1")).Count(), 2);
              EXPECT_TRUE(app.Intersect(s("A1"), s("B2")).IsNothing());
            });

  cases.Add("IntersectAcrossSheetsIsNothing", {"Application.Intersect"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    const Sheet other(s.Parent().Worksheets().Add());
    EXPECT_TRUE(t.application().Intersect(s("A1"), other("A1")).IsNothing());
  });

  cases.Add("UnionJoinsCells", {"Application.Union"}, "learn.microsoft.com: Application.Union method (Excel)",
            [](HostUnderTest& t) {
              const Sheet s = t.NewSheet();
              const auto app = t.application();
              EXPECT_EQ(app.Union(s("A1"), s("C3:D4")).Address(), "$A$1,$C$3:$D$4");
              EXPECT_EQ(app.Union(s("A1:A2"), s("A3:A4")).Count(), 4);
              const std::vector<Range> many{s("2:2"), s("4:4"), s("6:7")};
              EXPECT_EQ(app.Union(many).Address(), "$2:$2,$4:$4,$6:$7");
            });

  cases.Add("UnionTakesNothingAsNoCells", {"Application.Union"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    const auto app = t.application();
    EXPECT_EQ(app.Union(Range(), s("B2")).Address(), "$B$2");
    EXPECT_EQ(app.Union(s("B2"), Range()).Address(), "$B$2");
    EXPECT_TRUE(app.Union(Range(), Range()).IsNothing());
  });

  cases.Add("UnionAcrossSheetsIsRefused", {}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    const Sheet other(s.Parent().Worksheets().Add());
    EXPECT_TRUE(Refused([&] { t.application().Union(s("A1"), other("A1")); }));
  });

  return std::move(cases).Take();
}

}  // namespace tolvane::contract
