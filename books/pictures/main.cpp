// Makes what the pictures in docs/pictures show: the templates with every sheet in sight, and copies with a household
// in them. The rows are put in plainly, where the add-in would put them; scripts/pictures turns the books into
// pictures.
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "apps/tolvane/BatchDesk.h"
#include "engine/xlsx/BookLock.h"
#include "hosts/embedded/EmbeddedHost.h"
#include "hosts/files/XlsxFiles.h"
#include "platform/Files.h"
#include "src/host/Application.h"

namespace tolvane::books {
namespace {

namespace fs = std::filesystem;
using host::CellBlock;
using host::CellValue;
using host::Range;
using host::Worksheet;

struct Account {
  const char* name;
  const char* sheet;
  const char* number;
  const char* bank;
  const char* type;
  double opening;
};
constexpr Account kAccounts[] = {
    {"Current account", "Current", "00123456", "40-12-34", "Banking", 1250.4},
    {"Savings", "Savings", "00998877", "40-12-34", "Banking", 15200},
    {"Credit card", "Card", "4111 2222 3333 4444", "", "Credit card", -342.17},
    {"Purse", "Purse", "", "", "Manual", 60},
};

class Pictures {
 public:
  Pictures(std::string share, fs::path out) : share_(std::move(share)), out_(std::move(out)) {}

  void Make() {
    fs::create_directories(out_);
    for (const char* name : {"Accounts Book", "Breakdown"}) Save(Shown(Open(name)), name);
    Household();
    FilledBreakdown();
  }

 private:
  host::Workbook Open(const std::string& name) {
    return host_.application().Workbooks().Open(share_ + "/" + name + ".xltm");
  }
  static host::Workbook Shown(const host::Workbook& book) {
    for (const Worksheet& sheet : book.Worksheets().All()) sheet.SetVisible(host::SheetVisibility::Visible);
    return book;
  }
  void Save(const host::Workbook& book, const std::string& name) {
    book.SaveAs(platform::PathToUtf8(out_ / (name + ".xlsx")));
    book.Close(false);
  }
  static Worksheet SheetOf(const host::Workbook& book, std::string_view name) { return book.Worksheets().Item(name); }
  static Range Below(const Worksheet& sheet, std::string_view header, int rows, int columns) {
    return sheet.Range(header).Offset(1, 0).Resize(rows, columns);
  }
  static void SetName(const Worksheet& sheet, std::string_view name, const Range& range) {
    sheet.Names().Add(name, "='" + sheet.Name() + "'!" + range.Address(), false);
  }

  static void FillTable(const Worksheet& sheet, const CellBlock& rows, std::string_view start,
                        const std::vector<std::pair<const char*, const char*>>& ranges) {
    const Range cells = Below(sheet, start, rows.rows(), rows.columns());
    cells.SetStyle("TableCell");
    cells.Columns().Item(1).SetStyle("TableCell_Grey");
    cells.SetValue(rows);
    for (const auto& [name, header] : ranges) SetName(sheet, name, Below(sheet, header, rows.rows(), 1));
  }

  static void AddAccountSheet(const host::Workbook& book, const Account& account, const CellBlock& rows) {
    const Worksheet original = SheetOf(book, "Account Sheet");
    original.CopyBefore(SheetOf(book, "Adjustments"));
    const Worksheet sheet = SheetOf(book, "Account Sheet (2)");
    sheet.SetName(account.sheet);
    sheet.Unprotect();
    sheet.Tab().SetColorIndex(35);
    sheet.Range("ptrAccName").SetValue(account.name);
    sheet.Range("ptrAccType").SetValue(account.type);
    sheet.Range("ptrOpeningBalance").SetValue(account.opening);
    if (std::string_view(account.type) == "Manual") {
      sheet.Range("ptrTotalBankStat").Resize(2, 1).SetStyle("TableCell_Disabled");
    }
    FillTable(sheet, rows, "ptrTableStart",
              {{"rngType", "ptrColumnType"},
               {"rngAmount", "ptrColumnAmount"},
               {"rngPeriod", "ptrColumnPeriod"},
               {"rngCategory", "ptrColumnISCategory"}});
  }

  static void FillLists(const host::Workbook& book) {
    const Worksheet lists = SheetOf(book, "Lists");
    lists.Unprotect();
    const CellBlock months{{"2009 Mar"}, {"2009 Feb"}, {"2009 Jan"}};
    const CellBlock categories{{"Salary"}, {"Interest"}, {"Food"}, {"Rent"}, {"Transport"}, {"Unallocated"}};
    const Range monthCells = Below(lists, "ptrPeriods", 3, 1);
    monthCells.SetValue(months);
    const Range categoryCells = Below(lists, "ptrISCategories", 6, 1);
    categoryCells.SetValue(categories);
    const auto setName = [&](const char* name, const Range& cells) {
      book.Names().Add(name, "=Lists!" + cells.Address(), false);
    };
    setName("lstPeriods", monthCells);
    setName("lstISCategories", categoryCells.Resize(5, 1));
    setName("lstISCategoriesExt", categoryCells);
  }

  static void FillAccounts(const host::Workbook& book) {
    const Worksheet sheet = SheetOf(book, "Accounts");
    sheet.Unprotect();
    CellBlock rows(4, 6);
    for (int i = 0; i < 4; ++i) {
      const Account& account = kAccounts[i];
      int column = 0;
      for (const char* text : {account.name, account.sheet, account.number, account.bank, account.type}) {
        rows.at(i + 1, ++column) = text;
      }
    }
    rows.at(2, 6) = "for the roof, not before 2012";
    const Range cells = Below(sheet, "ptrColumnName", 4, 6);
    cells.SetStyle("TableCell");
    cells.SetValue(rows);
  }

  static void FillBalanceSheet(const host::Workbook& book) {
    const Worksheet sheet = SheetOf(book, "Balance Sheet");
    sheet.Unprotect();
    const int first = sheet.Range("ptrColumnAccount").Row() + 1;
    for (int i = 1; i < 4; ++i) sheet.Range("ptrRowAdjustments").EntireRow().Insert(host::Shift::Down);
    for (int i = 0; i < 4; ++i) {
      const int row = first + i;
      const bool isManual = i == 3;
      const auto at = [&](const char* column) { return sheet.Cells(row, sheet.Range(column).Column()); };
      const std::string prefix = std::string("='") + kAccounts[i].sheet + "'!";
      at("ptrColumnAccount").SetValue(kAccounts[i].name);
      at("ptrColumnUnallocated").SetFormula(prefix + "ptrUnallocated");
      at("ptrColumnOB").SetFormula(prefix + "ptrOpeningBalance");
      at("ptrColumnBankStatement").SetFormula(prefix + "ptrTotalBankStat");
      at("ptrColumnUncleared").SetFormula(prefix + "ptrTotalUncleared");
      at("ptrColumnAccruals").SetFormula(prefix + "ptrTotalAccruals");
      at("ptrColumnLastTransaction").SetFormula(prefix + "forLastTransaction");
      at("ptrColumnRealBalance").SetFormulaR1C1("=SUM(RC3,RC4,RC5,RC9)");
      at("ptrColumnDifference")
          .SetFormulaR1C1("=IF(AND(ISNUMBER(RC[-2]),ISNUMBER(RC[-1])),ROUND(RC[-2],)-ROUND(RC[-1],),\"\")");
      const char* const style = isManual ? "TableCell_Disabled" : "TableCell_Number";
      for (const char* column : {"ptrColumnBankStatement", "ptrColumnUncleared", "ptrColumnBank"}) {
        at(column).SetStyle(style);
      }
      if (!isManual) at("ptrColumnBank").SetFormulaR1C1("=SUM(RC3,RC4,RC5)");
    }
    sheet.Cells(first, sheet.Range("ptrColumnManEntered").Column()).SetValue(2771.6);
    sheet.Cells(first + 1, sheet.Range("ptrColumnManEntered").Column()).SetValue(15200);
    const int total = sheet.Range("ptrRowTotal").Row();
    sheet.Cells(total, 3).Resize(1, 9).SetFormulaR1C1("=SUM(R[-5]C:R[-1]C)");
    sheet.Cells(total, 12).SetFormulaR1C1("=MAX(R[-5]C:R[-1]C)");
  }

  struct Category {
    const char* caption;
    int kind;  // 1 category, 2 header, 3 subtotal
    double january, february, march;
  };
  static constexpr Category kCategories[] = {
      {"Income", 2, 0, 0, 0},        {"Salary", 1, 2400, 2400, 2450},   {"Interest", 1, 0, 0, 38.2},
      {"Total income", 3, 0, 0, 0},  {"Household", 2, 0, 0, 0},         {"Food", 1, -310.4, -287.95, -402.1},
      {"Rent", 1, -950, -950, -950}, {"Transport", 1, -84.5, -84.5, 0}, {"Total household", 3, 0, 0, 0},
  };
  static constexpr int kRows = 9;

  // The look of a category row, as the program gives it.
  static void FormatRow(const Range& row, int kind) {
    row.SetStyle("TableCell");
    row.Font().SetBold(kind != 1);
    row.Font().SetItalic(kind == 2);
    row.Borders(host::BorderIndex::InsideVertical)
        .SetLineStyle(kind == 2 ? host::LineStyle::None : host::LineStyle::Continuous);
  }
  static void InsertCategories(const Worksheet& sheet, int columns) {
    const Range caption = sheet.Range("ptrColumnCategories");
    for (int i = 1; i < kRows; ++i) sheet.Range("ptrRowUnallocated").EntireRow().Insert(host::Shift::Down);
    for (int i = 0; i < kRows; ++i) {
      caption.Offset(i + 1, 0).SetValue(kCategories[i].caption);
      FormatRow(caption.Offset(i + 1, 0).Resize(1, columns + 1), kCategories[i].kind);
    }
  }
  static double FigureOf(const Category& category, int month) {
    return month == 0 ? category.january : month == 1 ? category.february : category.march;
  }
  // A column of figures, with the sums below and the balance that it begins with.
  static void FillColumn(const Worksheet& sheet, const Range& header, int firstMonth, int lastMonth, double opening) {
    const int top = header.Row();
    int group = 1;
    for (int i = 0; i < kRows; ++i) {
      const Range cell = header.Offset(i + 1, 0);
      if (kCategories[i].kind == 1) {
        double sum = 0;
        for (int month = firstMonth; month <= lastMonth; ++month) sum += FigureOf(kCategories[i], month);
        cell.SetValue(sum);
      } else if (kCategories[i].kind == 3) {
        cell.SetFormulaR1C1("=SUBTOTAL(9,R" + std::to_string(top + group) + "C:R[-1]C)");
        group = i + 2;
      }
    }
    header.Offset(kRows + 1, 0).SetValue(firstMonth == 1 ? -23.5 : 0);
    header.Offset(kRows + 2, 0).SetFormulaR1C1("=SUBTOTAL(9,R" + std::to_string(top + 1) + "C:R[-1]C)");
    header.Offset(kRows + 3, 0).SetValue(opening);
    header.Offset(kRows + 4, 0).SetFormulaR1C1("=R[-2]C+R[-1]C");
    static_cast<void>(sheet);
  }

  static void FillIncomeStatement(const host::Workbook& book) {
    const Worksheet sheet = SheetOf(book, "Income Statement");
    sheet.Unprotect();
    constexpr int kColumns = 5;
    const Range caption = sheet.Range("ptrColumnCategories");
    for (int i = 1; i < kColumns; ++i) sheet.Columns().Item(caption.Column() + 2).Insert(host::Shift::Right);
    InsertCategories(sheet, kColumns);
    const char* const months[] = {"2009 Mar", "2009 Jan", "2009 Feb", "2009 Mar", "2009 Mar"};
    const int first[] = {0, 0, 1, 2, 2}, last[] = {2, 0, 1, 2, 2};
    const double opening[] = {16168.23, 16168.23, 17223.33, 18277.38, 15200};
    const Range header = caption.Offset(0, 1);
    header.Resize(1, kColumns).Offset(-1, 0).SetStyle("Header_Middle");
    header.Resize(1, kColumns).SetStyle("Header_Middle");
    header.Offset(-1, kColumns - 1).Resize(2, 1).SetStyle("Header_Right");
    header.Offset(-1, 0)
        .Resize(2, kColumns)
        .Borders(host::BorderIndex::InsideHorizontal)
        .SetLineStyle(host::LineStyle::None);
    for (int i = 0; i < kColumns; ++i) {
      header.Offset(0, i).SetValue(months[i]);
      FillColumn(sheet, header.Offset(0, i), first[i], last[i], opening[i]);
    }
    header.Offset(-1, 0).SetValue(3);
    // The last column is that of one account.
    const Range account = header.Offset(-2, kColumns - 1);
    account.SetStyle("TableCell");
    account.SetValue("Current account");
    account.SetWrapText(true);
    account.Resize(3, 1).SetHorizontalAlignment(host::Alignment::Right);
    header.Offset(-1, kColumns - 1).Resize(2, 1).Interior().SetColorIndex(28);
  }

  static void FillBudgets(const host::Workbook& book) {
    const Worksheet sheet = SheetOf(book, "Budgets");
    sheet.Unprotect();
    const Range caption = sheet.Range("ptrColumnCategories");
    InsertCategories(sheet, 3);
    const int rows = kRows + 5;
    sheet.Range("ptrRowUpperHeader").Offset(0, 1).SetValue("3m to 2009 Mar");
    sheet.Range("ptrRowUpperHeader").Offset(0, 1).Resize(1, 3).Font().SetBold(true);
    FillColumn(sheet, caption.Offset(0, 1), 0, 1, 16168.23);
    FillColumn(sheet, caption.Offset(0, 2), 0, 2, 16168.23);
    caption.Offset(1, 3).Resize(rows - 1, 1).SetFormulaR1C1("=RC[-1]-RC[-2]");
    caption.Offset(1, 1).Resize(rows, 3).SetNumberFormat("#,##0;(#,##0);-");
    caption.Offset(1, 2).Resize(kRows + 1, 2).Interior().SetColorIndex(19);
    caption.Offset(0, 3).Resize(rows, 1).SetNumberFormat("#,##0;[Red](#,##0);-");
    caption.Offset(0, 3).Resize(rows, 1).Font().SetItalic(true);
    for (int i = 0; i < kRows; ++i) {
      if (kCategories[i].kind != 2) continue;
      caption.Offset(i + 1, 1).Resize(1, 3).ClearContents();
      caption.Offset(i + 1, 1).Resize(1, 3).Interior().SetColorIndex(host::kColorIndexNone);
    }
  }

  static void FillAdjustments(const host::Workbook& book) {
    const Worksheet sheet = SheetOf(book, "Adjustments");
    sheet.Unprotect();
    FillTable(sheet,
              {{"A20090131000001", 39844, 120, "2009 Jan", "Food", "Transport", "Paid together at the garage", {}},
               {"A20090228000001", 39872, 45.5, "2009 Feb", "Rent", {}, "Deposit that came back", "•"}},
              "ptrTableStart",
              {{"rngAmount", "ptrColumnAmount"},
               {"rngPeriod", "ptrColumnPeriod"},
               {"rngCategoryMinus", "ptrColumnCategoryMinus"},
               {"rngCategoryPlus", "ptrColumnCategoryPlus"}});
  }

  void Household() {
    const host::Workbook book = Shown(Open("Accounts Book"));
    FillLists(book);
    AddAccountSheet(
        book, kAccounts[0],
        {{"B2009011500017", 39828, "Bank statement", "ACME LTD SALARY JAN", 2400, "2009 Jan", "Salary", {}, {}},
         {"B2009011600018", 39829, "Bank statement", "SUPERMARKET 1187 LONDON", -84.35, "2009 Jan", "Food", {}, {}},
         {"B2009012800021", 39841, "Bank statement", "STANDING ORDER RENT", -950, "2009 Jan", "Rent", {}, "•"},
         {"B2009020300034", 39847, "Bank statement", "CASH MACHINE", -60, "2009 Feb", {}, "to the purse", {}},
         {"M20090302000001", 39874, "Uncleared", "Cheque to the dentist", -123.5, "2009 Mar", "Food", {}, {}},
         {"M20090331000001", 39903, "Accrual", "Gas and electricity", -210, "2009 Mar", "Rent", "quarter's bill", {}}});
    AddAccountSheet(book, kAccounts[1],
                    {{"B2009033100001", 39903, "Bank statement", "INTEREST", 38.2, "2009 Mar", "Interest", {}, {}}});
    AddAccountSheet(
        book, kAccounts[2],
        {{"B2009021100002", 39855, "Bank statement", "RAIL TICKETS", -84.5, "2009 Feb", "Transport", {}, {}}});
    AddAccountSheet(book, kAccounts[3],
                    {{"M20090214000001", 39858, "Accrual", "Market", -12.8, "2009 Feb", "Food", {}, {}}});
    FillAccounts(book);
    FillAdjustments(book);
    FillBalanceSheet(book);
    FillIncomeStatement(book);
    FillBudgets(book);
    SheetOf(book, "Technical").Range("ptrISBalance").SetValue(17000);
    for (const char* hidden : {"Lists", "Technical", "Account Sheet"}) {
      SheetOf(book, hidden).SetVisible(host::SheetVisibility::VeryHidden);
    }
    Save(book, "Household");
  }

  void FilledBreakdown() {
    const host::Workbook book = Open("Breakdown");
    const Worksheet original = SheetOf(book, "Breakdown");
    original.SetVisible(host::SheetVisibility::Visible);
    original.CopyAfter(original);
    const Worksheet sheet = SheetOf(book, "Breakdown (2)");
    original.SetVisible(host::SheetVisibility::VeryHidden);
    sheet.SetName("Breakdown1");
    sheet.Unprotect();
    sheet.Range("ptrCategory").SetValue("Food");
    sheet.Range("ptrPeriod").SetValue("2009 Mar");
    sheet.Range("ptrDuration").SetValue("3 months");
    sheet.Range("ptrAccount").SetValue("All");
    const Range cells = Below(sheet, "ptrIDColumn", 3, 12);
    cells.SetStyle("TableCell");
    cells.Resize(3, 4).SetStyle("TableCell_Grey");
    cells.SetValue({{"B2009011600018",
                     "Current account",
                     "Current",
                     9,
                     39829,
                     "Bank statement",
                     "SUPERMARKET 1187 LONDON",
                     -84.35,
                     "2009 Jan",
                     "Food",
                     {},
                     {}},
                    {"M20090302000001", "Current account", "Current", 12, 39874, "Uncleared", "Cheque to the dentist",
                     -123.5, "2009 Mar", "Food", "wrong category?", "•"},
                    {"A20090131000001",
                     "<Adj>",
                     "Adjustments",
                     6,
                     39844,
                     "Accrual",
                     "Paid together at the garage",
                     -120,
                     "2009 Jan",
                     "Food",
                     {},
                     {}}});
    Save(book, "Filled breakdown");
  }

  std::string share_;
  fs::path out_;
  app::BatchDesk desk_;
  engine::SystemLockWorld locks_;
  files::XlsxFiles files_{locks_, {.backups = 0}};
  embedded::EmbeddedHost host_{desk_, files_};
};

}  // namespace
}  // namespace tolvane::books

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "picture_books SHARE OUT: the folder of the made workbooks, the folder to write to\n";
    return 2;
  }
  try {
    tolvane::books::Pictures(argv[1], tolvane::platform::PathFromUtf8(argv[2])).Make();
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "picture_books: " << error.what() << '\n';
    return 2;
  }
}
