// What the sheets of the books are: their order, identity, protection, styles and the shape of their tables.
#include <algorithm>
#include <set>
#include <span>

#include "tests/books/OpenBooks.h"

namespace tolvane::books {
namespace {

using host::SheetVisibility;

enum class Protected { No, Report, Table };
struct Expected {
  std::string_view codeName;
  SheetVisibility visible;
  Protected protection;
  int frozenRows;
};

constexpr Expected kAccountsBook[] = {
    {"wksAccounts", SheetVisibility::Visible, Protected::Report, 5},
    {"wksIncomeStatement", SheetVisibility::Visible, Protected::Report, 4},
    {"wksBudgets", SheetVisibility::Visible, Protected::Report, 5},
    {"wksBalanceSheet", SheetVisibility::Visible, Protected::Report, 4},
    {"wksAdjustments", SheetVisibility::Visible, Protected::Table, 6},
    {"wksLists", SheetVisibility::VeryHidden, Protected::Report, 4},
    {"wksTechnical", SheetVisibility::VeryHidden, Protected::No, 0},
    {"wksSheetTemplate", SheetVisibility::VeryHidden, Protected::Table, 8},
};
// One sheet that can be seen and one that never can: the program numbers breakdowns by what is there.
constexpr Expected kBreakdown[] = {
    {"wksAbout", SheetVisibility::Visible, Protected::No, 0},
    {"wksBreakdown", SheetVisibility::VeryHidden, Protected::Table, 7},
};

bool IsEmpty(const host::Range& cells) {
  const host::CellBlock block = cells.Value();
  const auto values = block.cells();
  return std::all_of(values.begin(), values.end(), [](const host::CellValue& value) { return value.isEmpty(); });
}

class BookSheets : public OpenBooks {
 protected:
  void ExpectSheets(const host::Workbook& book, std::span<const Expected> expected) {
    ASSERT_EQ(book.Worksheets().Count(), static_cast<int>(expected.size()));
    EXPECT_EQ(book.ActiveSheet().CodeName(), expected.front().codeName);
    EXPECT_FALSE(book.ProtectStructure());
    for (std::size_t i = 0; i < expected.size(); ++i) {
      const host::Worksheet sheet = book.Worksheets().Item(static_cast<int>(i) + 1);
      SCOPED_TRACE(sheet.Name());
      EXPECT_EQ(sheet.CodeName(), expected[i].codeName);
      EXPECT_EQ(sheet.Visible(), expected[i].visible);
      EXPECT_EQ(sheet.ProtectContents(), expected[i].protection != Protected::No);
      if (sheet.ProtectContents()) {
        const bool isTable = expected[i].protection == Protected::Table;
        host::Protection allowed;
        allowed.allowFormattingColumns = allowed.allowFormattingRows = true;
        allowed.allowSorting = allowed.allowFiltering = isTable;
        EXPECT_TRUE(sheet.Protection() == allowed);
        sheet.Unprotect();  // there is no password
      }
      sheet.SetVisible(SheetVisibility::Visible);
      sheet.Activate();
      EXPECT_EQ(application().ActiveWindow().SplitRow(), expected[i].frozenRows);
      EXPECT_EQ(application().ActiveWindow().FreezePanes(), expected[i].frozenRows > 0);
    }
  }

  // The headers of a table, which must stand side by side from the left, in one row.
  static void ExpectColumns(const host::Worksheet& sheet, const std::vector<std::string_view>& names) {
    for (std::size_t i = 0; i < names.size(); ++i) {
      SCOPED_TRACE(names[i]);
      EXPECT_EQ(RowOf(sheet, names[i]), RowOf(sheet, names.front()));
      EXPECT_EQ(ColumnOf(sheet, names[i]), ColumnOf(sheet, names.front()) + static_cast<int>(i));
      EXPECT_FALSE(TextOf(sheet.Range(names[i])).empty());
    }
    const int right = ColumnOf(sheet, names.back()) + 1;
    EXPECT_TRUE(sheet.Cells(RowOf(sheet, names.front()), right).Value().single().isEmpty());
  }

  static void ExpectNothingBelow(const host::Worksheet& sheet, std::string_view header) {
    const host::Range below = sheet.Range(header).EntireRow().Offset(1, 0).Resize(200, 60);
    EXPECT_TRUE(IsEmpty(below));
  }

  // The whole column below the header, so that rows added at the end have it too.
  static void ExpectColumnFormat(const host::Worksheet& sheet, std::string_view name, std::string_view format) {
    SCOPED_TRACE(name);
    EXPECT_EQ(sheet.Range(name).Offset(1, 0).Resize(5000, 1).NumberFormat(), format);
  }

  static void ExpectLinks(const host::Worksheet& sheet, const std::vector<std::string>& texts) {
    SCOPED_TRACE(sheet.Name());
    const host::Range start = sheet.Range("ptrHyperlinks");
    for (std::size_t i = 0; i < texts.size(); ++i) {
      const host::Range cell = start.Offset(static_cast<int>(i), 0);
      EXPECT_EQ(TextOf(cell), texts[i]);
      const std::vector<host::HyperlinkTarget> links = cell.Hyperlinks().Items();
      ASSERT_EQ(links.size(), 1U);
      const std::string place = texts[i].substr(std::string("Go to ").size());
      EXPECT_EQ(links.front().subAddress, "'" + place + "'!A1");
      EXPECT_EQ(links.front().screenTip, "Go to the " + place);
    }
  }
};

constexpr std::string_view kAmount = "#,##0.00_);(#,##0.00);\"-\"_)";

TEST_F(BookSheets, OfTheAccountsBook) {
  ExpectSheets(AccountsBook(), kAccountsBook);
}

TEST_F(BookSheets, OfTheBreakdown) {
  ExpectSheets(Breakdown(), kBreakdown);
}

TEST_F(BookSheets, BothNamesOfATemplateHoldTheSame) {
  const host::Workbook older = Open("Accounts Book.xlt");
  EXPECT_EQ(older.Path(), "");  // a new book, made from it
  ExpectSheets(older, kAccountsBook);
  ExpectSheets(Open("Breakdown.xlt"), kBreakdown);
}

TEST_F(BookSheets, StylesAreThere) {
  constexpr std::string_view needed[] = {"Normal",
                                         "TableCell",
                                         "TableCell_Grey",
                                         "TableCell_Number",
                                         "TableCell_Total",
                                         "TableCell_GreyNumber",
                                         "TableCell_TotalGrey",
                                         "TableCell_Disabled",
                                         "Header_Left",
                                         "Header_Middle",
                                         "Header_Right",
                                         "Font_Disabled",
                                         "Font_Normal"};
  for (const host::Workbook& book : {AccountsBook(), Breakdown()}) {
    const std::vector<std::string> names = book.StyleNames();
    for (const std::string_view name : needed) EXPECT_THAT(names, ::testing::Contains(name));
  }
}

// The program puts these styles over dates, months and unlocked cells; what it means to keep must outlive that.
TEST_F(BookSheets, TableStylesLeaveNumbersAlignmentAndLocksAlone) {
  const host::Workbook book = AccountsBook();
  const host::Worksheet sheet = book.Worksheets().Add();
  const host::Range cell = sheet.Range("B2");
  for (const char* style : {"TableCell", "TableCell_Grey", "TableCell_TotalGrey", "Header_Left", "Header_Middle",
                            "Header_Right", "TableCell_Disabled", "TableCell_Total"}) {
    SCOPED_TRACE(style);
    cell.SetStyle("Normal");
    cell.SetNumberFormat("dd mmm yyyy");
    cell.SetHorizontalAlignment(host::Alignment::Right);
    cell.SetLocked(false);
    cell.SetStyle(style);
    EXPECT_EQ(cell.Style(), style);
    EXPECT_EQ(cell.NumberFormat(), "dd mmm yyyy");
    EXPECT_EQ(cell.HorizontalAlignment(), host::Alignment::Right);
    EXPECT_EQ(cell.Locked(), false);
  }
}

TEST_F(BookSheets, LinksLeadToTheReports) {
  const host::Workbook book = AccountsBook();
  const std::string balance = "Go to Balance Sheet", income = "Go to Income Statement";
  ExpectLinks(SheetOf(book, "wksAccounts"), {balance, income});
  ExpectLinks(SheetOf(book, "wksIncomeStatement"), {balance});
  ExpectLinks(SheetOf(book, "wksBudgets"), {balance, income});
  ExpectLinks(SheetOf(book, "wksBalanceSheet"), {income});
  ExpectLinks(SheetOf(book, "wksAdjustments"), {balance, income});
  ExpectLinks(SheetOf(book, "wksSheetTemplate"), {balance, income});
}

TEST_F(BookSheets, Accounts) {
  const host::Worksheet sheet = SheetOf(AccountsBook(), "wksAccounts");
  ExpectColumns(sheet, {"ptrColumnName", "ptrColumnSheet", "ptrColumnNumber", "ptrColumnBankID", "ptrColumnType",
                        "ptrColumnComment"});
  ExpectNothingBelow(sheet, "ptrColumnName");
  for (const char* text : {"ptrColumnName", "ptrColumnNumber", "ptrColumnBankID", "ptrColumnType", "ptrColumnComment"})
    ExpectColumnFormat(sheet, text, "@");
  ExpectColumnFormat(sheet, "ptrColumnSheet", "General");  // it holds formulas
  const host::Range row = sheet.Range("ptrColumnName").Offset(1, 0).Resize(1, 6);
  EXPECT_EQ(row.Style(), "TableCell");
  EXPECT_EQ(row.Resize(1, 5).Locked(), true);
  EXPECT_EQ(sheet.Range("ptrColumnComment").Offset(1, 0).Locked(), false);
}

TEST_F(BookSheets, AccountTemplate) {
  const host::Worksheet sheet = SheetOf(AccountsBook(), "wksSheetTemplate");
  EXPECT_EQ(sheet.Range("ptrTableStart").Address(), sheet.Range("ptrColumnID").Address());
  ExpectColumns(sheet, {"ptrColumnID", "ptrColumnDate", "ptrColumnType", "ptrColumnDescription", "ptrColumnAmount",
                        "ptrColumnPeriod", "ptrColumnISCategory", "ptrColumnComments", "ptrColumnHighlighter"});
  ExpectNothingBelow(sheet, "ptrColumnID");
  ExpectColumnFormat(sheet, "ptrColumnDate", "dd mmm yyyy");
  ExpectColumnFormat(sheet, "ptrColumnAmount", kAmount);
  for (const char* text : {"ptrColumnID", "ptrColumnType", "ptrColumnDescription", "ptrColumnPeriod",
                           "ptrColumnISCategory", "ptrColumnComments", "ptrColumnHighlighter"})
    ExpectColumnFormat(sheet, text, "@");
  const host::Range id = sheet.Range("ptrColumnID").Offset(1, 0);
  EXPECT_EQ(id.Style(), "TableCell_Grey");
  EXPECT_EQ(id.Locked(), true);
  EXPECT_EQ(id.Offset(0, 1).Resize(1, 7).Style(), "TableCell");
  EXPECT_EQ(id.Offset(0, 1).Resize(1, 7).Locked(), false);
  EXPECT_EQ(id.Offset(0, 8).Locked(), true);
  EXPECT_EQ(sheet.Range("ptrOpeningBalance").Locked(), false);
  EXPECT_EQ(sheet.Range("ptrAccName").Locked(), true);
}

TEST_F(BookSheets, Adjustments) {
  const host::Worksheet sheet = SheetOf(AccountsBook(), "wksAdjustments");
  EXPECT_EQ(sheet.Range("ptrTableStart").Address(), sheet.Range("ptrColumnID").Address());
  ExpectColumns(sheet, {"ptrColumnID", "ptrColumnDate", "ptrColumnAmount", "ptrColumnPeriod", "ptrColumnCategoryMinus",
                        "ptrColumnCategoryPlus", "ptrColumnComments", "ptrColumnHighlighter"});
  ExpectNothingBelow(sheet, "ptrColumnID");
  ExpectColumnFormat(sheet, "ptrColumnDate", "dd mmm yyyy");
  ExpectColumnFormat(sheet, "ptrColumnAmount", kAmount);
  for (const char* text : {"ptrColumnID", "ptrColumnPeriod", "ptrColumnCategoryMinus", "ptrColumnCategoryPlus",
                           "ptrColumnComments", "ptrColumnHighlighter"})
    ExpectColumnFormat(sheet, text, "@");
  const host::Range id = sheet.Range("ptrColumnID").Offset(1, 0);
  EXPECT_EQ(id.Style(), "TableCell_Grey");
  EXPECT_EQ(id.Offset(0, 1).Resize(1, 6).Locked(), false);
  EXPECT_EQ(id.Offset(0, 7).Locked(), true);
}

TEST_F(BookSheets, IncomeStatement) {
  const host::Worksheet sheet = SheetOf(AccountsBook(), "wksIncomeStatement");
  const int header = RowOf(sheet, "ptrColumnCategories");
  const int column = ColumnOf(sheet, "ptrColumnCategories");
  EXPECT_EQ(RowOf(sheet, "ptrBeforePerDuration"), header - 1);
  EXPECT_EQ(RowOf(sheet, "ptrBeforeAccounts"), header - 2);
  EXPECT_EQ(header - column, 2);  // so that the program right-aligns just the three header rows
  EXPECT_EQ(RowOf(sheet, "ptrRowUnallocated"), header + 2);  // one blank row above it
  EXPECT_EQ(RowOf(sheet, "ptrRowNetSurplus"), header + 3);
  EXPECT_EQ(RowOf(sheet, "ptrRowBalanceBF"), header + 4);
  EXPECT_EQ(RowOf(sheet, "ptrRowBalanceCF"), header + 5);
  EXPECT_NE(RowOf(sheet, "ptrHyperlinks"), header);
  const char* const captions[] = {"", "Unallocated", "Net surplus", "Balance brought forward",
                                  "Balance carried forward"};
  for (int i = 0; i < 5; ++i) EXPECT_EQ(TextOf(sheet.Cells(header + 1 + i, column)), captions[i]);
  // One empty period column, nothing right of it.
  EXPECT_TRUE(IsEmpty(sheet.Cells(header, column + 1).Resize(1, 80)));
  const host::Range body = sheet.Cells(header + 1, column + 1).Resize(5, 1);
  EXPECT_EQ(body.NumberFormat(), kAmount);
  EXPECT_EQ(body.Locked(), true);
  EXPECT_EQ(sheet.Cells(header - 1, column + 1).NumberFormat(), "#,##0\" m to\";;;@");
  EXPECT_EQ(sheet.Cells(header, column + 1).NumberFormat(), "@");
  EXPECT_EQ(sheet.Cells(header + 1, column).Style(), "TableCell");
  EXPECT_EQ(sheet.Cells(header + 2, column).Resize(1, 2).Style(), "TableCell_Grey");
  EXPECT_EQ(sheet.Cells(header + 3, column).Resize(1, 2).Style(), "TableCell_TotalGrey");
}

TEST_F(BookSheets, Budgets) {
  const host::Worksheet sheet = SheetOf(AccountsBook(), "wksBudgets");
  const int header = RowOf(sheet, "ptrColumnCategories");
  const int column = ColumnOf(sheet, "ptrColumnCategories");
  EXPECT_EQ(RowOf(sheet, "ptrRowUpperHeader"), header - 1);
  EXPECT_EQ(RowOf(sheet, "ptrRowUnallocated"), header + 2);
  EXPECT_EQ(RowOf(sheet, "ptrRowNetSurplus"), header + 3);
  EXPECT_EQ(RowOf(sheet, "ptrRowBalanceBF"), header + 4);
  EXPECT_EQ(RowOf(sheet, "ptrRowBalanceCF"), header + 5);
  const char* const lower[] = {"Budget", "Actual", "Diff", ""};
  for (int i = 0; i < 4; ++i) EXPECT_EQ(TextOf(sheet.Cells(header, column + 1 + i)), lower[i]);
  const host::Range upper = sheet.Cells(header - 1, column + 1).Resize(1, 3);
  EXPECT_EQ(upper.MergeCells(), true);
  EXPECT_TRUE(IsEmpty(upper));
  EXPECT_TRUE(IsEmpty(sheet.Cells(header - 1, column)));
  const host::Range body = sheet.Cells(header + 1, column + 1).Resize(5, 3);
  EXPECT_EQ(body.NumberFormat(), "#,##0;(#,##0);-");
  EXPECT_EQ(body.Locked(), true);
  EXPECT_EQ(sheet.Cells(header + 1, column + 2).Resize(4, 2).Interior().ColorIndex(), 19);
  // Both reports show the same captions in the same order.
  const host::Worksheet income = SheetOf(sheet.Parent(), "wksIncomeStatement");
  const int incomeHeader = RowOf(income, "ptrColumnCategories");
  for (int i = 1; i <= 5; ++i)
    EXPECT_EQ(TextOf(sheet.Cells(header + i, column)), TextOf(income.Cells(incomeHeader + i, column)));
}

TEST_F(BookSheets, BalanceSheet) {
  const host::Worksheet sheet = SheetOf(AccountsBook(), "wksBalanceSheet");
  ExpectColumns(sheet, {"ptrColumnAccount", "ptrColumnOB", "ptrColumnBankStatement", "ptrColumnUncleared",
                        "ptrColumnBank", "ptrColumnManEntered", "ptrColumnDifference", "ptrColumnAccruals",
                        "ptrColumnRealBalance", "ptrColumnUnallocated", "ptrColumnLastTransaction"});
  const int header = RowOf(sheet, "ptrColumnAccount");
  EXPECT_EQ(RowOf(sheet, "ptrRowAdjustments"), header + 2);  // one account row, to take over its looks
  EXPECT_EQ(RowOf(sheet, "ptrRowTotal"), header + 3);
  const host::Range accountRow = sheet.Cells(header + 1, ColumnOf(sheet, "ptrColumnAccount")).Resize(1, 11);
  EXPECT_TRUE(IsEmpty(accountRow));
  EXPECT_EQ(sheet.Cells(header + 1, ColumnOf(sheet, "ptrColumnManEntered")).Locked(), false);
  EXPECT_EQ(sheet.Cells(header + 1, ColumnOf(sheet, "ptrColumnOB")).Locked(), true);
  EXPECT_EQ(sheet.Cells(header + 1, ColumnOf(sheet, "ptrColumnLastTransaction")).NumberFormat(), "dd mmm yyyy");
  EXPECT_EQ(sheet.Cells(header + 1, ColumnOf(sheet, "ptrColumnOB")).NumberFormat(), kAmount);
}

TEST_F(BookSheets, Lists) {
  const host::Workbook book = AccountsBook();
  const host::Worksheet sheet = SheetOf(book, "wksLists");
  const host::Range full = book.Names().Item("lstISCategoriesFull").RefersToRange();
  EXPECT_EQ(full.Value().single(), host::CellValue(2));
  EXPECT_EQ(full.Offset(1, 0).Resize(2, 2).Value(), (host::CellBlock{{{}, {}}, {"Unallocated", "Unallocated"}}));
  // The program wipes both columns from the count on.
  EXPECT_TRUE(full.Offset(0, 1).Value().single().isEmpty());
  const host::Range categories = sheet.Range("ptrISCategories");
  EXPECT_EQ(TextOf(categories.Offset(1, 0)), "Unallocated");
  EXPECT_EQ(book.Names().Item("lstISCategoriesExt").RefersToRange().Address(), categories.Offset(1, 0).Address());
  EXPECT_EQ(book.Names().Item("lstISCategories").RefersToRange().Address(), categories.Offset(2, 0).Address());
  EXPECT_EQ(book.Names().Item("lstPeriods").RefersToRange().Address(),
            sheet.Range("ptrPeriods").Offset(1, 0).Address());
  ExpectColumnFormat(sheet, "ptrPeriods", "@");
  ExpectColumnFormat(sheet, "ptrISCategories", "@");
  const std::set<int> columns = {full.Column(), full.Column() + 1, categories.Column(), ColumnOf(sheet, "ptrPeriods")};
  EXPECT_EQ(columns.size(), 4U);
  for (const char* list : {"valTrnTypes", "valAccTypes"}) {
    EXPECT_FALSE(columns.contains(book.Names().Item(list).RefersToRange().Column())) << list;
  }
}

TEST_F(BookSheets, FirstRowsHaveTheirLists) {
  const host::Workbook book = AccountsBook();
  struct Case {
    std::string_view sheet, column, source, message;
  };
  constexpr std::string_view type = "Please select a valid transaction type from the drop-down list.";
  constexpr std::string_view period =
      "Please select a valid period from the drop-down list.\r\n\r\nUse the Active Book > Set Time Range command to "
      "change the list.";
  constexpr std::string_view category =
      "Please select a valid transaction category from the drop-down list.\r\n\r\nUse the Add/Edit Categories command "
      "or add rows to the Income Statement to change the list.";
  const Case cases[] = {
      {"wksSheetTemplate", "ptrColumnType", "=forTrnTypeList", type},
      {"wksSheetTemplate", "ptrColumnPeriod", "=lstPeriods", period},
      {"wksSheetTemplate", "ptrColumnISCategory", "=lstISCategories", category},
      {"wksAdjustments", "ptrColumnPeriod", "=lstPeriods", period},
      {"wksAdjustments", "ptrColumnCategoryMinus", "=lstISCategories", category},
      {"wksAdjustments", "ptrColumnCategoryPlus", "=lstISCategories", category},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(std::string(each.sheet) + "!" + std::string(each.column));
    const auto rule = SheetOf(book, each.sheet).Range(each.column).Offset(1, 0).Validation().Rule();
    ASSERT_TRUE(rule.has_value());
    host::ValidationRule expected;
    expected.source = each.source;
    expected.showInput = false;
    expected.errorTitle = "Tolvane Accounts";
    expected.errorMessage = each.message;
    EXPECT_EQ(rule->source, expected.source);
    EXPECT_EQ(rule->errorMessage, expected.errorMessage);
    EXPECT_TRUE(*rule == expected);
  }
}

TEST_F(BookSheets, BreakdownTable) {
  const host::Workbook book = Breakdown();
  const host::Worksheet sheet = SheetOf(book, "wksBreakdown");
  ExpectColumns(sheet, {"ptrIDColumn", "ptrAccNameColumn", "ptrRelSheetColumn", "ptrSheetRowColumn", "ptrDateColumn",
                        "ptrTypeColumn", "ptrDescriptionColumn", "ptrAmountColumn", "ptrPeriodColumn",
                        "ptrCategoryColumn", "ptrCommentsColumn", "ptrHighlighter"});
  ExpectNothingBelow(sheet, "ptrIDColumn");
  ExpectColumnFormat(sheet, "ptrDateColumn", "dd mmm yyyy");
  ExpectColumnFormat(sheet, "ptrAmountColumn", kAmount);
  for (const char* text : {"ptrIDColumn", "ptrAccNameColumn", "ptrRelSheetColumn", "ptrTypeColumn",
                           "ptrDescriptionColumn", "ptrPeriodColumn", "ptrCategoryColumn", "ptrCommentsColumn"})
    ExpectColumnFormat(sheet, text, "@");
  for (const char* cell : {"ptrCategory", "ptrPeriod", "ptrDuration", "ptrAccount"})
    EXPECT_EQ(sheet.Range(cell).NumberFormat(), "@") << cell;
  EXPECT_EQ(sheet.Names().Item("setCodeName").RefersTo(), "=\"wksBreakdown\"");
  // As the program numbers them: one less than the sheets beside the template.
  sheet.SetVisible(SheetVisibility::Hidden);
  sheet.CopyAfter(sheet);
  EXPECT_EQ(book.Worksheets().Count() - 2, 1);
  EXPECT_EQ(book.Worksheets().Item("Breakdown (2)").Names().Item("setCodeName").RefersTo(), "=\"wksBreakdown\"");
}

// Every sheet: landscape, one page wide, with its headers on each page.
TEST_F(BookSheets, PrintedPages) {
  for (const host::Workbook& book : {AccountsBook(), Breakdown()}) {
    for (const host::Worksheet& sheet : book.Worksheets().All()) {
      SCOPED_TRACE(sheet.Name());
      EXPECT_EQ(sheet.PageSetup(), (host::PageSetup{.landscape = true, .fitToPagesWide = 1}));
      EXPECT_THAT(sheet.Names().Item("Print_Titles").RefersTo(), ::testing::ContainsRegex("!\\$[0-9]+:\\$[0-9]+$"));
    }
  }
}

}  // namespace
}  // namespace tolvane::books
