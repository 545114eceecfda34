#include "bench/recalculation/BookOfFormulas.h"

#include <stdexcept>
#include <string>
#include <vector>

#include "engine/formula/Parser.h"

namespace tolvane::bench {
namespace {

using namespace engine;

// Columns of the data: date, account, payee, amount, category, month (as yyyymm).
constexpr FormulaKind kKinds[] = {
    {"running total", "=R[-1]C+RC4", 20000},
    {"IF", "=IF(RC4<0,IF(RC4<-50,\"large\",\"small\"),\"income\")", 15000},
    {"ROUND and arithmetic", "=ROUND(RC4*1.19,2)-RC4/12+1", 10000},
    {"text", "=LEFT(RC3,5)&\" \"&UPPER(RC5)&LEN(RC2)", 8000},
    {"TEXT", "=TEXT(RC1,\"yyyy-mm-dd\")&TEXT(RC4,\"#,##0.00\")", 5000},
    {"dates", "=DATE(YEAR(RC1),MONTH(RC1)+1,0)-RC1+WEEKDAY(RC1)", 8000},
    {"VLOOKUP", "=VLOOKUP(RC5,Categories!R2C1:R201C3,3,FALSE)", 12000},
    {"INDEX and MATCH", "=IFERROR(INDEX(Categories!R2C2:R201C2,MATCH(RC5,Categories!R2C1:R201C1,0)),\"none\")", 8000},
    {"MATCH in all rows", "=MATCH(RC2,R2C2:R100001C2,0)", 2000},
    {"SUM of a window", "=SUM(RC4:R[99]C4)", 10000},
    {"SUM of all above", "=SUM(R2C4:RC4)", 1000},
    {"SUMIFS", "=SUMIFS(R2C4:R100001C4,R2C5:R100001C5,RC5,R2C6:R100001C6,RC6)", 500},
    {"SUMIF with comparison", "=SUMIF(R2C4:R100001C4,\">\"&RC4)", 200},
    {"COUNTIF", "=COUNTIF(R2C5:R100001C5,RC5)", 300},
};
constexpr int kFirstColumn = 8;

void FillData(Sheet& sheet) {
  const char* headers[] = {"Date", "Account", "Payee", "Amount", "Category", "Month"};
  for (int column = 1; column <= 6; ++column) sheet.SetValue({1, column}, headers[column - 1]);
  for (int i = 0; i < kDataRows; ++i) {
    const int row = i + 2;
    const int day = i / 40;
    sheet.SetValue({row, 1}, 40000 + day);
    sheet.SetValue({row, 2}, std::string_view("A" + std::to_string(100000 + i)));
    sheet.SetValue({row, 3}, std::string_view("Payee number " + std::to_string(i % 977)));
    sheet.SetValue({row, 4}, (i * 7919 % 20011 - 15000) / 100.0);
    sheet.SetValue({row, 5}, std::string_view("Category " + std::to_string(i * 31 % 200)));
    sheet.SetValue({row, 6}, 201000 + day / 30);
  }
}

void FillCategories(Sheet& sheet) {
  const char* headers[] = {"Category", "Group", "Budget"};
  for (int column = 1; column <= 3; ++column) sheet.SetValue({1, column}, headers[column - 1]);
  for (int i = 0; i < 200; ++i) {
    sheet.SetValue({i + 2, 1}, std::string_view("Category " + std::to_string(i)));
    sheet.SetValue({i + 2, 2}, std::string_view("Group " + std::to_string(i % 12)));
    sheet.SetValue({i + 2, 3}, 100 + i * 2.5);
  }
}

// Spread over all rows of the data, so that windows and lookups meet all of it; running totals have no gaps.
void AddFormulas(Sheet& sheet, const Workbook& book, const FormulaKind& kind, int column) {
  const CellPos first{2, column};
  const ExpressionPtr formula = ParseFormula(kind.formula, Notation::R1C1, {sheet.id(), first}, book);
  const bool leansOnAbove = kind.formula.starts_with("=R[-1]C");
  const int step = leansOnAbove ? 1 : kDataRows / kind.count;
  for (int i = 0; i < kind.count; ++i) sheet.SetFormula({2 + i * step, column}, formula);
}

}  // namespace

std::span<const FormulaKind> FormulaKinds() {
  return kKinds;
}

std::unique_ptr<Workbook> MakeBookOfFormulas(std::string_view wanted) {
  auto book = std::make_unique<Workbook>();
  Sheet& data = book->AddSheet("Data", 0);
  FillCategories(book->AddSheet("Categories", 1));
  FillData(data);
  int column = kFirstColumn;
  bool found = false;
  for (const FormulaKind& kind : kKinds) {
    if (wanted != "mixed" && wanted != kind.name) continue;
    AddFormulas(data, *book, kind, column++);
    found = true;
  }
  if (!found) throw std::runtime_error("There are no formulas of the kind " + std::string(wanted) + ".");
  return book;
}

}  // namespace tolvane::bench
