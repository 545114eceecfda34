#include "tests/contract/cases/CaseFiles.h"

namespace tolvane::contract {
namespace {

using host::CellBlock;
using host::CellError;
using host::CellValue;
using host::Shift;
using host::SortKey;
using host::SortOrder;

constexpr std::string_view kMergePage = "learn.microsoft.com: Range.Merge method (Excel)";
constexpr std::string_view kSortPage = "support.microsoft.com: Sort data in a range or table";

Sheet Merged(HostUnderTest& t) {
  t.application().SetDisplayAlerts(false);
  const Sheet s = t.NewSheet();
  s("B2:D4").Merge();
  s("B2").SetValue(CellValue("title"));
  return s;
}

}  // namespace

std::vector<ContractCase> MergeSortCases() {
  Cases cases("MergeSort");

  cases.Add("MergingKeepsTheFirstCellOnly", {"Range.Merge", "Range.MergeCells"}, kMergePage, [](HostUnderTest& t) {
    t.application().SetDisplayAlerts(false);
    const Sheet s = t.NewSheet();
    s("A1:B2").SetValue(CellBlock{{1, 2}, {3, 4}});
    s("A1:B2").Merge();
    EXPECT_EQ(s("A1:B2").Value(), (CellBlock{{1, CellValue()}, {CellValue(), CellValue()}}));
    EXPECT_EQ(s("A1:B2").MergeCells(), true);
    EXPECT_EQ(s("B2").MergeCells(), true);
    EXPECT_EQ(s("C3").MergeCells(), false);
    EXPECT_FALSE(s("B2:C2").MergeCells().has_value());
  });

  cases.Add("UnmergingSetsTheCellsFree", {"Range.UnMerge"}, "learn.microsoft.com: Range.UnMerge method (Excel)",
            [](HostUnderTest& t) {
              const Sheet s = Merged(t);
              s("C3").UnMerge();
              EXPECT_EQ(s("B2:D4").MergeCells(), false);
              EXPECT_EQ(s.Value("B2"), "title");
              EXPECT_TRUE(s.Value("C3").isEmpty());
              s("A1:F9").UnMerge();
              EXPECT_EQ(s("A1:F9").MergeCells(), false);
            });

  cases.Add("WritingIntoAMergeReachesItsFirstCellOnly", {"Range.Value", "Range.Formula"}, kPort, [](HostUnderTest& t) {
    const Sheet s = Merged(t);
    s("C3").SetValue(CellValue("lost"));
    EXPECT_TRUE(s.Value("C3").isEmpty());
    s("B2:D4").SetValue(CellBlock{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
    EXPECT_EQ(s.Value("B2"), 1);
    EXPECT_TRUE(s.Value("D4").isEmpty());
    s.Put("B2:D4", "=1+1");
    EXPECT_EQ(s.Value("B2"), 2);
    s("B2:D4").UnMerge();
    EXPECT_TRUE(s.Value("C3").isEmpty());
  });

  cases.Add("MergesFollowInsertionsAndDeletions", {"Range.Insert", "Range.Delete", "Range.MergeCells"}, kMemory,
            [](HostUnderTest& t) {
              const Sheet s = Merged(t);
              s("1:1").Insert();
              EXPECT_EQ(s("B3:D5").MergeCells(), true);
              EXPECT_EQ(s("B2:D2").MergeCells(), false);
              s("4:4").Insert();  // through the merge: it grows
              EXPECT_EQ(s("B3:D6").MergeCells(), true);
              EXPECT_EQ(s.Value("B3"), "title");
              s("4:5").Delete();
              EXPECT_EQ(s("B3:D4").MergeCells(), true);
              EXPECT_EQ(s("B5").MergeCells(), false);
              s("C:C").Delete();
              EXPECT_EQ(s("B3:C4").MergeCells(), true);
              s("3:4").Delete();
              EXPECT_EQ(s("A1:F9").MergeCells(), false);
            });

  cases.Add("DeletingTheFirstRowOfAMergeTakesItsContents", {"Range.Delete"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = Merged(t);
    s("2:2").Delete();
    EXPECT_EQ(s("B2:D3").MergeCells(), true);
  });

  cases.Add("ShiftingPartOfAMergeIsRefused", {}, kMemory, [](HostUnderTest& t) {
    const Sheet s = Merged(t);
    s("B6").SetValue(CellValue(1));
    EXPECT_TRUE(Refused([&] { s("B1").Insert(Shift::Down); }));
    EXPECT_TRUE(Refused([&] { s("B1").Delete(Shift::Up); }));
    EXPECT_EQ(s("B2:D4").MergeCells(), true);
    EXPECT_EQ(s.Value("B6"), 1);
  });

  cases.Add("AMergeSwallowsSmallerOnes", {"Range.Merge"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = Merged(t);
    s("A1:E5").Merge();
    EXPECT_EQ(s("A1:E5").MergeCells(), true);
    EXPECT_TRUE(s.Value("B2").isEmpty());
    s("A1").UnMerge();
    EXPECT_EQ(s("A1:E5").MergeCells(), false);
  });

  cases.Add("SortedByAColumn", {"Range.Sort"}, "learn.microsoft.com: Range.Sort method (Excel)", [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1:B4").SetValue(CellBlock{{3, "c"}, {1, "a"}, {4, "d"}, {2, "b"}});
    s("A1:B4").Sort({.column = 1});
    EXPECT_EQ(s("A1:B4").Value(), (CellBlock{{1, "a"}, {2, "b"}, {3, "c"}, {4, "d"}}));
    s("A1:B4").Sort({.column = 2, .order = SortOrder::Descending});
    EXPECT_EQ(s("A1:B4").Value(), (CellBlock{{4, "d"}, {3, "c"}, {2, "b"}, {1, "a"}}));
  });

  cases.Add("AHeaderStays", {"Range.Sort"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1:A4").SetValue(CellBlock{{"Z"}, {"b"}, {"a"}, {"c"}});
    s("A1:A4").Sort({.column = 1, .hasHeader = true});
    EXPECT_EQ(s("A1:A4").Value(), (CellBlock{{"Z"}, {"a"}, {"b"}, {"c"}}));
  });

  cases.Add("KindsInTheirOrderAndEmptyCellsLast", {"Range.Sort"}, kSortPage, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    const CellBlock mixed{{CellValue()}, {CellError::NA}, {true}, {"b"}, {"A"}, {false}, {-1}, {10}, {"10"}};
    s("A1:A9").SetValue(mixed);
    s("A1:A9").Sort({.column = 1});
    EXPECT_EQ(s("A1:A9").Value(),
              (CellBlock{{-1}, {10}, {"10"}, {"A"}, {"b"}, {false}, {true}, {CellError::NA}, {CellValue()}}));
    s("A1:A9").Sort({.column = 1, .order = SortOrder::Descending});
    EXPECT_EQ(s("A1:A9").Value(),
              (CellBlock{{CellError::NA}, {true}, {false}, {"b"}, {"A"}, {"10"}, {10}, {-1}, {CellValue()}}));
  });

  cases.Add("EqualRowsKeepTheirOrder", {"Range.Sort"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1:B5").SetValue(CellBlock{{"x", 1}, {"a", 2}, {"X", 3}, {"A", 4}, {"x", 5}});
    s("A1:B5").Sort({.column = 1});
    EXPECT_EQ(s("B1:B5").Value(), (CellBlock{{2}, {4}, {1}, {3}, {5}}));
  });

  cases.Add("AColumnOutsideOfTheRangeIsRefused", {}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1:A2").SetValue(CellBlock{{2}, {1}});
    EXPECT_TRUE(Refused([&] { s("A1:A2").Sort({.column = 2}); }));
    EXPECT_TRUE(Refused([&] { s("A1:A2").Sort({.column = 0}); }));
    EXPECT_EQ(s.Value("A1"), 2);
  });

  return std::move(cases).Take();
}

}  // namespace tolvane::contract
