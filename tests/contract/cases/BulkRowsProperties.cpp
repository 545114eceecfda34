#include <rapidcheck.h>

#include <algorithm>

#include "tests/contract/Property.h"
#include "tests/contract/cases/CaseFiles.h"

namespace tolvane::contract {
namespace {

using host::CellBlock;
using host::CellValue;
using host::RowRun;

constexpr int kRows = 30;

// Numbers, a look, a hidden row, names, formulas and a merge that all have to follow.
Sheet Prepared(const host::Workbook& book) {
  const Sheet s(book.Worksheets().Add());
  CellBlock numbers(kRows, 1);
  for (int row = 1; row <= kRows; ++row) numbers.at(row, 1) = row;
  s("A1:A30").SetValue(numbers);
  s("B1:B30").SetFormulaR1C1(CellValue("=RC[-1]+R15C1"));
  s("C40").SetFormula(CellValue("=SUM(A3:A20)"));
  s("A7:B9").Font().SetBold(true);
  s("12:13").SetHidden(true);
  s("D10:D16").Merge();
  s("D10").SetValue(CellValue("merged"));
  s("E5:E25").Validation().Add(ListRule("=$A$1:$A$5"));
  s.Names().Add("rows", "='" + s.Name() + "'!$5:$22");
  return s;
}

struct Picture {
  CellBlock formulas;
  std::vector<std::string> rest;
  bool operator==(const Picture&) const = default;
};

Picture Of(const Sheet& s) {
  Picture picture{s("A1:D60").FormulaR1C1(), {}};
  const std::string name = s.Names().Item("rows").RefersToR1C1();
  picture.rest.push_back(name.substr(name.find('!') + 1));
  for (int row = 1; row <= 60; ++row) {
    std::string text;
    text += s.Cells(row, 1).Font().Bold() == true ? 'b' : '-';
    text += s.Rows().Item(row).Hidden() == true ? 'h' : '-';
    text += s.Cells(row, 4).MergeCells() == true ? 'm' : '-';
    text += s.Cells(row, 5).Validation().Rule().has_value() ? 'v' : '-';
    picture.rest.push_back(text);
  }
  return picture;
}

rc::Gen<std::vector<RowRun>> AnyRuns() {
  return rc::gen::map(rc::gen::nonEmpty(rc::gen::container<std::vector<std::pair<int, int>>>(
                          rc::gen::pair(rc::gen::inRange(1, 6), rc::gen::inRange(1, 4)))),
                      [](const std::vector<std::pair<int, int>>& steps) {
                        std::vector<RowRun> runs;
                        int next = 0;
                        for (const auto& [gap, count] : steps) {
                          next += gap;
                          if (next + count > kRows) break;
                          runs.push_back({next, count});
                          next += count;
                        }
                        return runs;
                      });
}

constexpr int kExamples = 12;

}  // namespace

std::vector<ContractCase> BulkRowsPropertyCases() {
  Cases cases("BulkRows");

  cases.Add("TheSameAsDeletingOneByOne", {"Worksheet.DeleteRows"}, kPort, [](HostUnderTest& t) {
    const host::Workbook book = t.NewBook();
    EXPECT_TRUE(Holds("deletion in one call is deletion from the bottom up", kExamples, [&] {
      const auto runs = *AnyRuns();
      const Sheet bulk = Prepared(book);
      const Sheet single = Prepared(book);
      bulk.DeleteRows(runs);
      for (auto run = runs.rbegin(); run != runs.rend(); ++run) {
        single.Cells(run->first, 1).Resize(run->count, 1).EntireRow().Delete();
      }
      RC_ASSERT(Of(bulk) == Of(single));
    }));
  });

  cases.Add("TheSameAsInsertingOneByOne", {"Worksheet.InsertRows"}, kPort, [](HostUnderTest& t) {
    const host::Workbook book = t.NewBook();
    EXPECT_TRUE(Holds("insertion in one call is insertion from the top down", kExamples, [&] {
      const auto runs = *AnyRuns();
      const Sheet bulk = Prepared(book);
      const Sheet single = Prepared(book);
      bulk.InsertRows(runs);
      for (const RowRun& run : runs) single.Cells(run.first, 1).Resize(run.count, 1).EntireRow().Insert();
      RC_ASSERT(Of(bulk) == Of(single));
    }));
  });

  cases.Add("DeletingWhatWasInsertedUndoesIt", {"Worksheet.InsertRows", "Worksheet.DeleteRows"}, kPort,
            [](HostUnderTest& t) {
              const host::Workbook book = t.NewBook();
              EXPECT_TRUE(Holds("deletion undoes insertion", kExamples, [&] {
                const auto runs = *AnyRuns();
                const Sheet s = Prepared(book);
                const Picture before = Of(s);
                s.InsertRows(runs);
                s.DeleteRows(runs);
                RC_ASSERT(Of(s) == before);
              }));
            });

  cases.Add("InsertingWhereRowsWereDeletedPutsTheOthersBack", {"Worksheet.InsertRows", "Worksheet.DeleteRows"}, kPort,
            [](HostUnderTest& t) {
              const host::Workbook book = t.NewBook();
              EXPECT_TRUE(Holds("insertion puts the surviving rows back", kExamples, [&] {
                const auto runs = *AnyRuns();
                const Sheet s(book.Worksheets().Add());
                CellBlock numbers(kRows, 1);
                for (int row = 1; row <= kRows; ++row) numbers.at(row, 1) = row;
                s("A1:A30").SetValue(numbers);
                s.DeleteRows(runs);
                s.InsertRows(runs);
                for (const RowRun& run : runs) {
                  for (int row = run.first; row < run.first + run.count; ++row) numbers.at(row, 1) = CellValue();
                }
                RC_ASSERT(s("A1:A30").Value() == numbers);
              }));
            });

  return std::move(cases).Take();
}

}  // namespace tolvane::contract
