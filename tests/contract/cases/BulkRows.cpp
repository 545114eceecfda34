#include "tests/contract/cases/CaseFiles.h"

namespace tolvane::contract {
namespace {

using host::CellBlock;
using host::CellValue;
using host::RowRun;

}  // namespace

std::vector<ContractCase> BulkRowsCases() {
  Cases cases("BulkRows");

  cases.Add("DeletionCountsInTheOldNumbering", {"Worksheet.DeleteRows"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1:A6").SetValue(CellBlock{{1}, {2}, {3}, {4}, {5}, {6}});
    s.DeleteRows(std::vector<RowRun>{{1, 1}, {3, 2}});
    EXPECT_EQ(s("A1:A4").Value(), (CellBlock{{2}, {5}, {6}, {CellValue()}}));
  });

  cases.Add("InsertionCountsInTheNewNumbering", {"Worksheet.InsertRows"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1:A3").SetValue(CellBlock{{2}, {5}, {6}});
    s.InsertRows(std::vector<RowRun>{{1, 1}, {3, 2}});
    EXPECT_EQ(s("A1:A6").Value(), (CellBlock{{CellValue()}, {2}, {CellValue()}, {CellValue()}, {5}, {6}}));
  });

  cases.Add("RunsOutOfOrderOrOutOfTheSheetAreRefused", {"Worksheet.DeleteRows", "Worksheet.InsertRows"}, kPort,
            [](HostUnderTest& t) {
              const Sheet s = t.NewSheet();
              s("A1:A3").SetValue(CellBlock{{1}, {2}, {3}});
              const int rows = s.Rows().Count();
              for (const std::vector<RowRun>& runs :
                   {std::vector<RowRun>{{3, 1}, {1, 1}}, std::vector<RowRun>{{1, 2}, {2, 1}},
                    std::vector<RowRun>{{0, 1}}, std::vector<RowRun>{{1, 0}}, std::vector<RowRun>{{rows, 2}}}) {
                EXPECT_TRUE(Refused([&] { s.DeleteRows(runs); }));
                EXPECT_TRUE(Refused([&] { s.InsertRows(runs); }));
              }
              s.DeleteRows({});
              s.InsertRows({});
              EXPECT_EQ(s("A1:A3").Value(), (CellBlock{{1}, {2}, {3}}));
            });

  return std::move(cases).Take();
}

}  // namespace tolvane::contract
