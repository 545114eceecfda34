#include "tests/contract/cases/CaseFiles.h"

namespace tolvane::contract {
namespace {

using host::CellBlock;
using host::CellError;
using host::CellValue;
using host::Range;
using host::Shift;

constexpr std::string_view kDeletePage = "learn.microsoft.com: Range.Delete method (Excel)";
constexpr std::string_view kInsertPage = "learn.microsoft.com: Range.Insert method (Excel)";

// 1 to `count` down column A.
Sheet Numbered(HostUnderTest& t, int count) {
  const Sheet s = t.NewSheet();
  CellBlock numbers(count, 1);
  for (int row = 1; row <= count; ++row) numbers.at(row, 1) = row;
  s("A1").Resize(count, 1).SetValue(numbers);
  return s;
}

}  // namespace

// Deleting, inserting and clearing cells, and how ranges, formulas and names follow.
std::vector<ContractCase> RangeEditCases() {
  Cases cases("RangeEdit");

  cases.Add("ClearContentsKeepsTheLook", {"Range.ClearContents"},
            "learn.microsoft.com: Range.ClearContents method (Excel)", [](HostUnderTest& t) {
              const Sheet s = Numbered(t, 2);
              s("A1").Font().SetBold(true);
              s("A1:A2").ClearContents();
              EXPECT_EQ(s("A1:A2").Value(), CellBlock(2, 1));
              EXPECT_EQ(s("A1").Font().Bold(), true);
            });

  cases.Add("ClearTakesTheLookToo", {"Range.Clear"}, "learn.microsoft.com: Range.Clear method (Excel)",
            [](HostUnderTest& t) {
              const Sheet s = Numbered(t, 1);
              s("A1").Font().SetBold(true);
              s("A1").SetLocked(false);
              s("A1").Clear();
              EXPECT_TRUE(s.Value("A1").isEmpty());
              EXPECT_EQ(s("A1").Font().Bold(), false);
              EXPECT_EQ(s("A1").Locked(), true);
            });

  cases.Add("DeletingRowsMovesTheRestUp", {"Range.Delete"}, kDeletePage, [](HostUnderTest& t) {
    const Sheet s = Numbered(t, 6);
    s("2:3").Delete();
    EXPECT_EQ(s("A1:A5").Value(), (CellBlock{{1}, {4}, {5}, {6}, {CellValue()}}));
  });

  cases.Add("DeletingRowsOfSeveralAreasAtOnce", {"Range.Delete"}, kPort, [](HostUnderTest& t) {
    const Sheet s = Numbered(t, 7);
    s("2:2,4:5,7:7").Delete(Shift::Up);
    EXPECT_EQ(s("A1:A4").Value(), (CellBlock{{1}, {3}, {6}, {CellValue()}}));
  });

  cases.Add("DeletingColumnsOfSeveralAreasAtOnce", {"Range.Delete"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1:F1").SetValue(CellBlock{{1, 2, 3, 4, 5, 6}});
    s.Put("G1", "=SUM(A1:F1)");
    s("B:B,D:E").Delete(Shift::Left);
    EXPECT_EQ(s("A1:C1").Value(), (CellBlock{{1, 3, 6}}));
    EXPECT_EQ(s.Formula("D1"), "=SUM(A1:C1)");
    EXPECT_EQ(s.Value("D1"), 10);
  });

  cases.Add("DeletingCellsShiftsTheirNeighboursOnly", {"Range.Delete"}, kDeletePage, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1:C3").SetValue(CellBlock{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
    s("B1").Delete(Shift::Up);
    EXPECT_EQ(s("A1:C3").Value(), (CellBlock{{1, 5, 3}, {4, 8, 6}, {7, CellValue(), 9}}));
    s("A1").Delete(Shift::Left);
    EXPECT_EQ(s("A1:C1").Value(), (CellBlock{{5, 3, CellValue()}}));
  });

  cases.Add("WithoutAShiftTheShapeDecides", {"Range.Delete", "Range.Insert"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1:C3").SetValue(CellBlock{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
    s("A1:B1").Delete();  // wider than high: what is below moves up
    EXPECT_EQ(s("A1:C1").Value(), (CellBlock{{4, 5, 3}}));
    s("A1:A2").Delete();  // higher than wide: what is to the right moves left
    EXPECT_EQ(s("A1:C2").Value(), (CellBlock{{5, 3, CellValue()}, {8, 6, CellValue()}}));
    s("A1:B1").Insert();
    EXPECT_EQ(s("A1:B2").Value(), (CellBlock{{CellValue(), CellValue()}, {5, 3}}));
  });

  cases.Add("InsertingRowsMakesRoom", {"Range.Insert"}, kInsertPage, [](HostUnderTest& t) {
    const Sheet s = Numbered(t, 3);
    s("2:3").Insert(Shift::Down);
    EXPECT_EQ(s("A1:A5").Value(), (CellBlock{{1}, {CellValue()}, {CellValue()}, {2}, {3}}));
  });

  cases.Add("InsertedRowsLookLikeTheOneAbove", {"Range.Insert"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = Numbered(t, 3);
    s("A1").Font().SetBold(true);
    s("A2").Font().SetItalic(true);
    s("2:2").Insert();
    EXPECT_EQ(s("A2").Font().Bold(), true);
    EXPECT_EQ(s("A2").Font().Italic(), false);
    s("B:B").SetColumnWidth(20);
    s("C:C").Insert();
    EXPECT_EQ(s("C:C").ColumnWidth(), 20);
  });

  cases.Add("InsertedRowsHaveNoValidation", {"Range.Insert"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = Numbered(t, 3);
    s("A1").Validation().Add(ListRule("=$C$1:$C$3"));
    s("2:2").Insert();
    EXPECT_FALSE(s("A2").Validation().Rule().has_value());
  });

  cases.Add("InsertingCellsShiftsTheirNeighboursOnly", {"Range.Insert"}, kInsertPage, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1:B2").SetValue(CellBlock{{1, 2}, {3, 4}});
    s("A1").Insert(Shift::Right);
    EXPECT_EQ(s("A1:C2").Value(), (CellBlock{{CellValue(), 1, 2}, {3, 4, CellValue()}}));
    s("A1").Insert(Shift::Down);
    EXPECT_EQ(s("A1:A3").Value(), (CellBlock{{CellValue()}, {CellValue()}, {3}}));
  });

  cases.Add("InsertionThatPushesContentsOffTheSheetIsRefused", {}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s.Cells(s.Rows().Count(), 1).SetValue(CellValue("last"));
    EXPECT_TRUE(Refused([&] { s("2:2").Insert(); }));
    EXPECT_TRUE(Refused([&] { s("A2").Insert(Shift::Down); }));
    EXPECT_EQ(s.Cells(s.Rows().Count(), 1).Value().single(), "last");
  });

  cases.Add("ARangeFollowsWhatIsInsertedAboveAndInside", {"Range.Address"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    const Range range = s("B4:C6");
    s("1:2").Insert();
    EXPECT_EQ(range.Address(), "$B$6:$C$8");
    s("7:7").Insert();
    EXPECT_EQ(range.Address(), "$B$6:$C$9");
    s("A:A").Insert();
    EXPECT_EQ(range.Address(), "$C$6:$D$9");
    s("10:10").Insert();
    EXPECT_EQ(range.Address(), "$C$6:$D$9");
  });

  cases.Add("ARangeFollowsDeletionAndDiesWithItsLastCell", {"Range.Delete"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    const Range range = s("B4:C6");
    s("1:1").Delete();
    EXPECT_EQ(range.Address(), "$B$3:$C$5");
    s("3:3").Delete();
    EXPECT_EQ(range.Address(), "$B$3:$C$4");
    s("A:B").Delete();
    EXPECT_EQ(range.Address(), "$A$3:$A$4");
    s("3:4").Delete();
    EXPECT_FALSE(range.IsAlive());
    EXPECT_TRUE(Raises(host::ErrorNumber::ObjectRequired, [&] { range.Address(); }));
  });

  cases.Add("OfSeveralAreasTheLivingOnesStay", {"Range.Delete"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    const Range range = s("A2,A5");
    s("2:2").Delete();
    EXPECT_EQ(range.Address(), "$A$4");
  });

  cases.Add("ARangeFollowsShiftedCells", {"Range.Delete", "Range.Insert"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    const Range below = s("A5");
    const Range beside = s("B5");
    s("A1").Insert(Shift::Down);
    EXPECT_EQ(below.Address(), "$A$6");
    EXPECT_EQ(beside.Address(), "$B$5");
    s("A2:A3").Delete(Shift::Up);
    EXPECT_EQ(below.Address(), "$A$4");
  });

  cases.Add("FormulasFollowInsertionsAndDeletions", {"Range.Insert", "Range.Delete"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = Numbered(t, 4);
    const Sheet other(s.Parent().Worksheets().Add());
    s.SetName("Data");
    other.Put("A1:A3", CellBlock{{"=SUM(Data!A1:A4)"}, {"=Data!A3"}, {"=SUM(Data!$2:$3)"}});
    s("2:2").Insert();
    EXPECT_EQ(other.Formula("A1"), "=SUM(Data!A1:A5)");
    EXPECT_EQ(other.Formula("A2"), "=Data!A4");
    EXPECT_EQ(other.Formula("A3"), "=SUM(Data!$3:$4)");
    s("4:4").Delete();
    EXPECT_EQ(other.Formula("A1"), "=SUM(Data!A1:A4)");
    EXPECT_EQ(other.Value("A1"), 7);
    EXPECT_EQ(other.Formula("A2"), "=Data!#REF!");
    EXPECT_EQ(other.Value("A2"), CellError::Ref);
    EXPECT_EQ(other.Formula("A3"), "=SUM(Data!$3:$3)");
  });

  cases.Add("DeletingAnEdgeShrinksAReference", {"Range.Delete"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = Numbered(t, 4);
    s.Put("C9", "=SUM(A2:A4)");
    s("4:5").Delete();
    EXPECT_EQ(s.Formula("C7"), "=SUM(A2:A3)");
    s("1:2").Delete();
    EXPECT_EQ(s.Formula("C5"), "=SUM(A1:A1)");
    EXPECT_EQ(s.Value("C5"), 3);
  });

  cases.Add("RelativeFormulasKeepTheirDistanceWhenBothMove", {"Range.FormulaR1C1", "Range.Insert"}, kMemory,
            [](HostUnderTest& t) {
              const Sheet s = Numbered(t, 3);
              s("B1:B3").SetFormulaR1C1(CellValue("=RC[-1]*2"));
              s("2:2").Insert();
              EXPECT_EQ(s("B3").FormulaR1C1(), CellBlock("=RC[-1]*2"));
              EXPECT_EQ(s.Value("B4"), 6);
            });

  return std::move(cases).Take();
}

}  // namespace tolvane::contract
