// The formulas of the templates: right and without an error, in the empty book and with rows in it.
#include "tests/books/OpenBooks.h"

namespace tolvane::books {
namespace {

using host::CellBlock;
using host::CellValue;

class BookFormulas : public OpenBooks {
 protected:
  static double NumberAt(const host::Range& cell) {
    const CellValue value = cell.Value().single();
    EXPECT_TRUE(value.isNumber()) << cell.Address() << " shows " << cell.Text();
    return value.isNumber() ? value.number() : 0;
  }
  static double NumberAt(const host::Worksheet& sheet, std::string_view name) { return NumberAt(sheet.Range(name)); }
  // The cell in the total row, or in another one, of a column of the Balance Sheet.
  static host::Range BalanceCell(const host::Worksheet& sheet, std::string_view row, std::string_view column) {
    return sheet.Cells(RowOf(sheet, row), ColumnOf(sheet, column));
  }

  static void ExpectNoErrors(const host::Workbook& book) {
    for (const host::Worksheet& sheet : book.Worksheets().All()) {
      const CellBlock block = sheet.Cells(1, 1).Resize(60, 16).Value();
      for (int row = 1; row <= block.rows(); ++row) {
        for (int column = 1; column <= block.columns(); ++column) {
          if (block.at(row, column).isError()) {
            ADD_FAILURE() << sheet.Name() << "!" << sheet.Cells(row, column).Address() << " shows "
                          << sheet.Cells(row, column).Text() << " for "
                          << sheet.Cells(row, column).Formula().single().text();
          }
        }
      }
    }
  }
};

TEST_F(BookFormulas, OfAnEmptyBook) {
  const host::Workbook book = AccountsBook();
  ExpectNoErrors(book);
  ExpectNoErrors(Breakdown());
  const host::Worksheet account = SheetOf(book, "wksSheetTemplate");
  for (const char* total : {"ptrTotalBankStat", "ptrTotalUncleared", "ptrTotalAccruals", "ptrUnallocated"})
    EXPECT_EQ(NumberAt(account, total), 0) << total;
  const host::Worksheet adjustments = SheetOf(book, "wksAdjustments");
  for (const char* total : {"ptrOB", "ptrCB", "ptrUnallocated"}) EXPECT_EQ(NumberAt(adjustments, total), 0) << total;
  const host::Worksheet balance = SheetOf(book, "wksBalanceSheet");
  EXPECT_EQ(NumberAt(BalanceCell(balance, "ptrRowTotal", "ptrColumnRealBalance")), 0);
  EXPECT_EQ(TextOf(BalanceCell(balance, "ptrRowTotal", "ptrColumnLastTransaction")), "NA");
  EXPECT_EQ(TextOf(BalanceCell(balance, "ptrRowAdjustments", "ptrColumnLastTransaction")), "");
  EXPECT_EQ(TextOf(SheetOf(book, "wksTechnical").Range("ptrDifference")), "");
}

TEST_F(BookFormulas, OfAnAccountsSheet) {
  const host::Workbook book = AccountsBook();
  SetCategories(book, {"Food", "Pay", "A*"});
  const host::Worksheet sheet = AccountSheet(book, "Ann's Bank");
  sheet.Range("ptrOpeningBalance").SetValue(100);
  PutRows(sheet,
          CellBlock{{"B1", 39814, "Bank statement", "Grocer", -20.25, "2009 Jan", "food", {}, {}},
                    {"B2", 39850, "Bank statement", "Employer", 1000, "2009 Feb", "Pay", {}, {}},
                    {"M1", 39832, "Uncleared", "Baker", -5, "2009 Jan", {}, {}, {}},
                    {"M2", {}, "Accrual", "Rent", -300, "2009 Feb", "Unallocated", {}, {}},
                    {"M3", 39833, "Uncleared", "Odd", -7, "2009 Jan", "No such", {}, {}},
                    {"M4", 39834, "Uncleared", "No amount", {}, "2009 Jan", {}, {}, {}}},
          kAccountRanges);
  EXPECT_EQ(NumberAt(sheet, "ptrTotalBankStat"), 979.75);
  EXPECT_EQ(NumberAt(sheet, "ptrTotalUncleared"), -12);
  EXPECT_EQ(NumberAt(sheet, "ptrTotalAccruals"), -300);
  // What is in no category, by name Unallocated, or in one that is none.
  EXPECT_EQ(NumberAt(sheet, "ptrUnallocated"), -312);
  const host::Range probe = sheet.Range("N1");
  probe.SetFormula("=forLastTransaction");
  EXPECT_EQ(NumberAt(probe), 39850);
  ExpectNoErrors(book);
  // A table of one row, and one that lost all of them.
  PutRows(sheet, CellBlock{{"B1", 39814, "Accrual", "Grocer", -20.25, "2009 Jan", {}, {}, {}}}, kAccountRanges);
  EXPECT_EQ(NumberAt(sheet, "ptrTotalAccruals"), -20.25);
  EXPECT_EQ(NumberAt(sheet, "ptrUnallocated"), -20.25);
  sheet.Range("ptrTableStart").Offset(1, 0).Resize(6, 9).ClearContents();
  EXPECT_EQ(NumberAt(sheet, "ptrUnallocated"), 0);
  ExpectNoErrors(book);
}

// Without a category at all, everything is unallocated.
TEST_F(BookFormulas, UnallocatedWithoutCategories) {
  const host::Workbook book = AccountsBook();
  const host::Worksheet sheet = AccountSheet(book, "Bank");
  PutRows(sheet,
          CellBlock{{"B1", 39814, "Bank statement", "Grocer", -20, "2009 Jan", "Food", {}, {}},
                    {"B2", 39814, "Bank statement", "Baker", -3, "2009 Jan", {}, {}, {}}},
          kAccountRanges);
  EXPECT_EQ(NumberAt(sheet, "ptrUnallocated"), -23);
}

TEST_F(BookFormulas, TypesThatAnAccountCanHave) {
  const host::Workbook book = AccountsBook();
  const host::Worksheet sheet = AccountSheet(book, "Bank");
  const host::Range probe = sheet.Range("N1");
  probe.SetFormula("=ROWS(forTrnTypeList)");
  EXPECT_EQ(NumberAt(probe), 3);
  sheet.Range("ptrAccType").SetValue("Manual");
  EXPECT_EQ(NumberAt(probe), 1);
  probe.SetFormula("=INDEX(forTrnTypeList,1)");
  EXPECT_EQ(TextOf(probe), "Accrual");
  const host::Range types = book.Names().Item("valTrnTypes").RefersToRange();
  EXPECT_EQ(types.Value(), (CellBlock{{"Bank statement"}, {"Uncleared"}, {"Accrual"}}));
  EXPECT_EQ(book.Names().Item("valAccTypes").RefersToRange().Value(),
            (CellBlock{{"Banking"}, {"Credit card"}, {"Manual"}}));
  EXPECT_EQ(Breakdown().Names().Item("valTrnTypes").RefersToRange().Value(), types.Value());
}

TEST_F(BookFormulas, OfTheAdjustments) {
  const host::Workbook book = AccountsBook();
  SetCategories(book, {"Food", "Pay"});
  const host::Worksheet lists = SheetOf(book, "wksLists");
  const host::Range months = lists.Range("ptrPeriods").Offset(1, 0).Resize(3, 1);
  months.SetValue(CellBlock{{"2009 Mar"}, {"2009 Feb"}, {"2009 Jan"}});
  book.Names().Add("lstPeriods", "='" + lists.Name() + "'!" + months.Address(), false);
  const host::Worksheet sheet = SheetOf(book, "wksAdjustments");
  sheet.Unprotect();
  PutRows(sheet,
          CellBlock{{"A1", 39814, 40, "2009 Feb", "Food", {}, {}, {}},
                    {"A2", 39820, 10, "2009 Mar", "Food", "Pay", {}, {}},
                    {"A3", 39800, 5, "2008 Dec", {}, "Pay", {}, {}},
                    {"A4", 39801, 3, "2008 Dec", "Food", "Pay", {}, {}},
                    {"A5", {}, 2, {}, {}, "No such", {}, {}},
                    {"A6", {}, {}, "2008 Nov", "Food", {}, {}, {}}},
          kAdjustmentRanges);
  EXPECT_EQ(NumberAt(sheet, "ptrOB"), 5);            // before the time range
  EXPECT_EQ(NumberAt(sheet, "ptrCB"), -40 + 5 + 2);  // of a row with both categories nothing
  EXPECT_EQ(NumberAt(sheet, "ptrUnallocated"), 2);
  const host::Worksheet balance = SheetOf(book, "wksBalanceSheet");
  EXPECT_EQ(NumberAt(BalanceCell(balance, "ptrRowAdjustments", "ptrColumnOB")), 5);
  EXPECT_EQ(NumberAt(BalanceCell(balance, "ptrRowAdjustments", "ptrColumnAccruals")), -38);
  EXPECT_EQ(NumberAt(BalanceCell(balance, "ptrRowAdjustments", "ptrColumnRealBalance")), -33);
  EXPECT_EQ(NumberAt(BalanceCell(balance, "ptrRowAdjustments", "ptrColumnUnallocated")), 2);
  EXPECT_EQ(NumberAt(BalanceCell(balance, "ptrRowAdjustments", "ptrColumnLastTransaction")), 39820);
  ExpectNoErrors(book);
}

// The total row takes up rows that are put in above the Adjustments row, and the comparison follows it.
TEST_F(BookFormulas, OfTheBalanceSheet) {
  const host::Workbook book = AccountsBook();
  const host::Worksheet balance = SheetOf(book, "wksBalanceSheet");
  balance.Unprotect();
  const int first = RowOf(balance, "ptrColumnAccount") + 1;
  balance.Range("ptrRowAdjustments").EntireRow().Insert(host::Shift::Down);
  for (int row = first; row < first + 2; ++row) {
    balance.Cells(row, ColumnOf(balance, "ptrColumnRealBalance")).SetValue(150.5);
    balance.Cells(row, ColumnOf(balance, "ptrColumnLastTransaction")).SetValue(39800 + row);
  }
  EXPECT_EQ(balance.Cells(first + 1, ColumnOf(balance, "ptrColumnManEntered")).Locked(), false);
  const int total = RowOf(balance, "ptrRowTotal");
  const host::Range sums = balance.Cells(total, ColumnOf(balance, "ptrColumnOB")).Resize(1, 9);
  sums.SetFormulaR1C1("=SUM(R[" + std::to_string(first - total) + "]C:R[-1]C)");
  EXPECT_EQ(NumberAt(BalanceCell(balance, "ptrRowTotal", "ptrColumnRealBalance")), 301);
  const host::Worksheet technical = SheetOf(book, "wksTechnical");
  technical.Range("ptrISBalance").SetValue(300);
  EXPECT_EQ(NumberAt(technical, "ptrDifference"), 1);
  const host::Range difference = balance.Cells(total + 3, ColumnOf(balance, "ptrColumnRealBalance"));
  EXPECT_EQ(NumberAt(difference.Offset(-1, 0)), 300);
  EXPECT_EQ(NumberAt(difference), 1);
  EXPECT_THAT(TextOf(balance.Cells(total + 4, 2)), ::testing::HasSubstr("time range"));
  technical.Range("ptrISBalance").SetValue(301);
  EXPECT_EQ(TextOf(balance.Cells(total + 4, 2)), "Both reports agree.");
}

TEST_F(BookFormulas, ABreakdownAddsUpWhatItShows) {
  const host::Workbook book = Breakdown();
  const host::Worksheet sheet = SheetOf(book, "wksBreakdown");
  sheet.Unprotect();
  sheet.Range("ptrAmountColumn").Offset(1, 0).Resize(3, 1).SetValue(CellBlock{{-1.25}, {10}, {1}});
  const host::Range total = sheet.Range("ptrAmountColumn").Offset(-2, 0);
  EXPECT_EQ(NumberAt(total), 9.75);
}

}  // namespace
}  // namespace tolvane::books
