#include "tests/contract/cases/CaseFiles.h"

namespace tolvane::contract {
namespace {

using host::AddressOptions;
using host::CellBlock;
using host::CellValue;
using host::Direction;
using host::Range;
using host::ReferenceStyle;

constexpr std::string_view kAddressPage = "learn.microsoft.com: Range.Address property (Excel)";
constexpr std::string_view kEndPage = "learn.microsoft.com: Range.End property (Excel)";
constexpr std::string_view kOffsetPage = "learn.microsoft.com: Range.Offset property (Excel)";
constexpr std::string_view kResizePage = "learn.microsoft.com: Range.Resize property (Excel)";

}  // namespace

std::vector<ContractCase> RangePlaceCases() {
  Cases cases("RangePlace");

  cases.Add("RowAndColumnAreThoseOfTheFirstArea", {"Range.Row", "Range.Column"},
            "learn.microsoft.com: Range.Row property (Excel)", [](HostUnderTest& t) {
              const Sheet s = t.NewSheet();
              EXPECT_EQ(s("C5:D9").Row(), 5);
              EXPECT_EQ(s("C5:D9").Column(), 3);
              EXPECT_EQ(s("F8,A1").Row(), 8);
              EXPECT_EQ(s("F8,A1").Column(), 6);
            });

  cases.Add("CountsOfCellsRowsAndColumns", {"Range.Count", "Range.Rows.Count", "Range.Columns.Count"}, kMemory,
            [](HostUnderTest& t) {
              const Sheet s = t.NewSheet();
              EXPECT_EQ(s("B2:D5").Count(), 12);
              EXPECT_EQ(s("B2:D5").Rows().Count(), 4);
              EXPECT_EQ(s("B2:D5").Columns().Count(), 3);
              EXPECT_EQ(s("A1:A2,C1:D1").Count(), 4);
              EXPECT_EQ(s("A1:A2,C1:D1").Rows().Count(), 2);
              EXPECT_EQ(s("5:9").Columns().Count(), s.Columns().Count());
              EXPECT_EQ(s.Cells().Count(), std::int64_t{s.Rows().Count()} * s.Columns().Count());
            });

  cases.Add("RowsAndColumnsOfARangeAreAsWideAndGoOnBeyond", {"Range.Rows.Item", "Range.Columns.Item"}, kPort,
            [](HostUnderTest& t) {
              const Sheet s = t.NewSheet();
              EXPECT_EQ(s("B2:D5").Rows().Item(2).Address(), "$B$3:$D$3");
              EXPECT_EQ(s("B2:D5").Rows().Item(6).Address(), "$B$7:$D$7");
              EXPECT_EQ(s("B2:D5").Columns().Item(3).Address(), "$D$2:$D$5");
              EXPECT_TRUE(Refused([&] { s("A1:B2").Rows().Item(-1); }));
              EXPECT_TRUE(Refused([&] { s("A1:B2").Columns().Item(0); }));
            });

  cases.Add("AddressIsAbsoluteByDefault", {"Range.Address"}, kAddressPage, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    EXPECT_EQ(s("B7").Address(), "$B$7");
    EXPECT_EQ(s("b7:c9,$B11").Address(), "$B$7:$C$9,$B$11");
    EXPECT_EQ(s("C9:B7").Address(), "$B$7:$C$9");
  });

  cases.Add("AddressOfWholeRowsAndColumns", {"Range.Address"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    AddressOptions r1c1;
    r1c1.style = ReferenceStyle::R1C1;
    EXPECT_EQ(s("5:9").Address(), "$5:$9");
    EXPECT_EQ(s("5:5").Address(), "$5:$5");
    EXPECT_EQ(s("B:C").Address(), "$B:$C");
    EXPECT_EQ(s("5:9").Address(r1c1), "R5:R9");
    EXPECT_EQ(s("5:5").Address(r1c1), "R5");
    EXPECT_EQ(s("B:C").Address(r1c1), "C2:C3");
  });

  cases.Add("AddressRelativeInParts", {"Range.Address"}, kAddressPage, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    AddressOptions options;
    options.rowAbsolute = false;
    EXPECT_EQ(s("B7:C9").Address(options), "$B7:$C9");
    options.columnAbsolute = false;
    EXPECT_EQ(s("B7:C9,A5").Address(options), "B7:C9,A5");
    EXPECT_EQ(s("5:9").Address(options), "5:9");
    options.rowAbsolute = true;
    EXPECT_EQ(s("B7").Address(options), "B$7");
  });

  cases.Add("AddressInR1C1", {"Range.Address"}, kAddressPage, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    AddressOptions options;
    options.style = ReferenceStyle::R1C1;
    EXPECT_EQ(s("B7").Address(options), "R7C2");
    EXPECT_EQ(s("B7:C9,A1").Address(options), "R7C2:R9C3,R1C1");
  });

  cases.Add("ExternalAddressNamesBookAndSheetQuotedWhereNeeded", {"Range.Address"}, kAddressPage, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    const std::string book = s.Parent().Name();
    AddressOptions external;
    external.external = true;
    s.SetName("Plain");
    EXPECT_EQ(s("A1").Address(external), "[" + book + "]Plain!$A$1");
    s.SetName("My Sheet");
    EXPECT_EQ(s("A1:B2").Address(external), "'[" + book + "]My Sheet'!$A$1:$B$2");
    s.SetName("Joe's");
    EXPECT_EQ(s("A1").Address(external), "'[" + book + "]Joe''s'!$A$1");
    external.style = ReferenceStyle::R1C1;
    EXPECT_EQ(s("A1").Address(external), "'[" + book + "]Joe''s'!R1C1");
  });

  cases.Add("ParentIsTheSheet", {"Range.Parent"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    EXPECT_TRUE(s("C3").Parent() == s);
  });

  cases.Add("AreasInTheOrderTheyWereNamed", {"Range.Areas"}, "learn.microsoft.com: Range.Areas property (Excel)",
            [](HostUnderTest& t) {
              const Sheet s = t.NewSheet();
              const auto areas = s("D4:E5,A1").Areas();
              ASSERT_EQ(areas.size(), 2u);
              EXPECT_EQ(areas[0].Address(), "$D$4:$E$5");
              EXPECT_EQ(areas[1].Address(), "$A$1");
              EXPECT_EQ(s("A1:B2").Areas().size(), 1u);
            });

  cases.Add("EntireRowsAndColumnsOfEveryArea", {"Range.EntireRow", "Range.EntireColumn"}, kMemory,
            [](HostUnderTest& t) {
              const Sheet s = t.NewSheet();
              EXPECT_EQ(s("B2:C3").EntireRow().Address(), "$2:$3");
              EXPECT_EQ(s("B2:C3").EntireColumn().Address(), "$B:$C");
              EXPECT_EQ(s("B2,D5:E6").EntireRow().Address(), "$2:$2,$5:$6");
              EXPECT_EQ(s("B2,D5:E6").EntireColumn().Address(), "$B:$B,$D:$E");
            });

  cases.Add("OffsetKeepsTheSize", {"Range.Offset"}, kOffsetPage, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    EXPECT_EQ(s("B2:C3").Offset(1, 2).Address(), "$D$3:$E$4");
    EXPECT_EQ(s("B2:C3").Offset(-1, -1).Address(), "$A$1:$B$2");
    EXPECT_EQ(s("5:6").Offset(1, 0).Address(), "$6:$7");
  });

  cases.Add("OffsetOutOfTheSheetIsRefused", {"Range.Offset"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    EXPECT_TRUE(Refused([&] { s("A1").Offset(-1, 0); }));
    EXPECT_TRUE(Refused([&] { s("A1").Offset(0, -1); }));
    EXPECT_TRUE(Refused([&] { s("A1:A5").Offset(s.Rows().Count() - 2, 0); }));
    EXPECT_TRUE(Refused([&] { s("A1").Offset(0, s.Columns().Count()); }));
    EXPECT_EQ(s("A1").Offset(0, 0).Address(), "$A$1");
  });

  cases.Add("ResizeFromTheFirstCell", {"Range.Resize"}, kResizePage, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    EXPECT_EQ(s("B2:C3").Resize(5, 1).Address(), "$B$2:$B$6");
    EXPECT_EQ(s("B2").Resize(1, 3).Address(), "$B$2:$D$2");
  });

  cases.Add("ResizeBelowOneOrOutOfTheSheetIsRefused", {"Range.Resize"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    EXPECT_TRUE(Refused([&] { s("B2").Resize(0, 1); }));
    EXPECT_TRUE(Refused([&] { s("B2").Resize(1, 0); }));
    EXPECT_TRUE(Refused([&] { s("B2").Resize(-1, 1); }));
    EXPECT_TRUE(Refused([&] { s("B2").Resize(s.Rows().Count(), 1); }));
    EXPECT_EQ(s("B2").Resize(s.Rows().Count() - 1, 1).Rows().Count(), s.Rows().Count() - 1);
  });

  cases.Add("CellsCountFromTheFirstAndMayLieOutside", {"Range.Cells"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    EXPECT_EQ(s("B2:C3").Cells(1, 1).Address(), "$B$2");
    EXPECT_EQ(s("B2:C3").Cells(4, 5).Address(), "$F$5");
    EXPECT_EQ(s("B2:C3").Cells(0, 0).Address(), "$A$1");
    EXPECT_TRUE(Refused([&] { s("B2").Cells(-1, 1); }));
  });

  cases.Add("EndGoesToTheEndOfABlock", {"Range.End"}, kEndPage, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("B2:D5").SetValue(CellValue(1));
    EXPECT_EQ(s("B2").End(Direction::Down).Address(), "$B$5");
    EXPECT_EQ(s("B2").End(Direction::Right).Address(), "$D$2");
    EXPECT_EQ(s("D5").End(Direction::Up).Address(), "$D$2");
    EXPECT_EQ(s("D5").End(Direction::Left).Address(), "$B$5");
  });

  cases.Add("EndGoesFromEmptyCellsToTheNextContents", {"Range.End"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("B2").SetValue(CellValue(1));
    s("H2").SetValue(CellValue(""));
    s("F2").SetValue(CellValue("x"));
    EXPECT_EQ(s.Cells(2, s.Columns().Count()).End(Direction::Left).Address(), "$F$2");
    EXPECT_EQ(s.Cells(s.Rows().Count(), 2).End(Direction::Up).Address(), "$B$2");
    EXPECT_EQ(s("B2").End(Direction::Right).Address(), "$F$2");
    EXPECT_EQ(s("A2").End(Direction::Right).Address(), "$B$2");
  });

  cases.Add("EndWithoutContentsIsTheEdgeOfTheSheet", {"Range.End"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    EXPECT_EQ(s("C3").End(Direction::Up).Address(), "$C$1");
    EXPECT_EQ(s("C3").End(Direction::Left).Address(), "$A$3");
    EXPECT_EQ(s("C3").End(Direction::Down).Row(), s.Rows().Count());
    EXPECT_EQ(s("C3").End(Direction::Right).Column(), s.Columns().Count());
  });

  cases.Add("EndCountsAFormulaWithAnEmptyResultAsContents", {"Range.End"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s.Put("A1:A3", CellBlock{{1}, {"=\"\""}, {2}});
    EXPECT_EQ(s("A1").End(Direction::Down).Address(), "$A$3");
    EXPECT_EQ(s("A5").End(Direction::Up).Address(), "$A$3");
  });

  cases.Add("TextIsWhatTheFirstCellShows", {"Range.Text"}, "learn.microsoft.com: Range.Text property (Excel)",
            [](HostUnderTest& t) {
              const Sheet s = t.NewSheet();
              s.Columns().Item(1).SetColumnWidth(30);
              s("A1").SetValue(CellValue(1234.5));
              EXPECT_EQ(s("A1").Text(), "1234.5");
              s("A1").SetNumberFormat("#,##0.00");
              EXPECT_EQ(s("A1").Text(), "1,234.50");
              s("A1").SetNumberFormat("#,##0;(#,##0);-");
              EXPECT_EQ(s("A1").Text(), "1,235");
              s("A1").SetValue(CellValue(-7));
              EXPECT_EQ(s("A1").Text(), "(7)");
              s("A1").SetValue(CellValue(0));
              EXPECT_EQ(s("A1").Text(), "-");
              s("A2").SetNumberFormat("yyyy-mm-dd");
              s("A2").SetValue(CellValue(39887));
              EXPECT_EQ(s("A2").Text(), "2009-03-15");
              s("A3").SetNumberFormat("0\" m to\"");
              s("A3").SetValue(CellValue(12));
              EXPECT_EQ(s("A3").Text(), "12 m to");
              s.Put("A4:A7", CellBlock{{true}, {"=1/0"}, {CellValue()}, {"text"}});
              EXPECT_EQ(s("A4").Text(), "TRUE");
              EXPECT_EQ(s("A5").Text(), "#DIV/0!");
              EXPECT_EQ(s("A6").Text(), "");
              EXPECT_EQ(s("A7").Text(), "text");
              EXPECT_EQ(s("A1:A3").Areas().size(), 1u);
            });

  return std::move(cases).Take();
}

}  // namespace tolvane::contract
