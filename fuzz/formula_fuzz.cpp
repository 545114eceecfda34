// Feeds texts to the parser of formulas. What it takes must print and read back as the same formula in both notations,
// and come to a result within bounds. The first byte chooses the notation and the cell. For libFuzzer: see the
// CMakeLists.txt.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>

#include "engine/formula/Calculator.h"
#include "engine/formula/Parser.h"
#include "engine/formula/Printer.h"
#include "engine/model/Workbook.h"

namespace tolvane::engine {
namespace {

class NoWorld : public CalculationWorld {
 public:
  double Now() const override { return 45000.5; }
  std::string BookName() const override { return "Book.xlsx"; }
  std::string BookFolder() const override { return "C:\\Files\\"; }
  const Workbook* FindBook(std::string_view) const override { return nullptr; }
};

void Require(bool holds, std::string_view what, std::string_view text) {
  if (holds) return;
  std::cerr << what << ": " << text << '\n';
  std::abort();
}

void Fill(Workbook& book) {
  Sheet& first = book.AddSheet("Sheet1", 0);
  Sheet& second = book.AddSheet("My Sheet", 1);
  book.AddSheet("R1C1", 2);
  const Value values[] = {Value(1),    Value(-2.5),    Value("text"), Value(true), Value(ErrorCode::NA),
                          Value("12"), Value(45366.75)};
  int row = 1;
  for (const Value& value : values) {
    first.SetValue({row, 1}, value);
    first.SetValue({row, 2}, row * 10);
    second.SetValue({row++, 1}, value);
  }
  const auto read = [&](std::string_view text, CellPos at) {
    return ParseFormula(text, Notation::A1, {first.id(), at}, book);
  };
  first.SetFormula({1, 3}, read("=SUM(A1:B2)", {1, 3}));
  first.SetFormula({2, 3}, read("=C3+1", {2, 3}));
  first.SetFormula({3, 3}, read("=C2", {3, 3}));
  book.SetName(kOwnSheet, {"total", read("=Sheet1!$B$1:$B$7", {}), false});
  book.SetName(kOwnSheet, {"round", read("=round+1", {}), false});
  book.SetName(first.id(), {"own", read("=A1*2", {}), false});
}

// The other notation may make a text longer than a formula may be.
bool IsTooLong(const std::string& text) {
  constexpr std::size_t kMostCharacters = 8192;
  return text.size() > kMostCharacters;
}

// Whole columns within arrays are worked out as well, but under the sanitizers that takes seconds each.
bool IsQuicklyWorkedOut(const Expression& formula, const FormulaHome& home) {
  constexpr std::int64_t kMostCells = 20000;
  std::int64_t cells = 0;
  for (const Reference& reference : formula.references) {
    if (const std::optional<Rect> rect = reference.At(home.cell)) cells += rect->cells();
  }
  return cells <= kMostCells;
}

// The printed text is the same formula, though perhaps with more parentheses or, in A1 notation, with an offset that
// left the grid on the grid's other side.
void PrintsAndReadsBack(const Expression& read, Notation notation, const FormulaHome& home, const Workbook& book,
                        Calculator& calculator) {
  const std::string printed = PrintFormula(read, notation, home, book);
  if (IsTooLong(printed)) return;
  try {
    // What a formula calls another workbook, with or without a file, is one.
    const IsOpenBook anyBook = [](std::string_view) { return true; };
    const ExpressionPtr again = ParseFormula(printed, notation, home, book, anyBook);
    Require(PrintFormula(*again, notation, home, book) == printed, "prints in another way when read back", printed);
    if (read.isVolatile || !IsQuicklyWorkedOut(read, home)) return;
    Require(calculator.Evaluate(*again, home) == calculator.Evaluate(read, home), "comes to another result", printed);
  } catch (const ParseError& error) {
    Require(false, error.what(), printed);
  }
}

void Check(std::uint8_t choice, std::string_view text) {
  Workbook book;
  Fill(book);
  constexpr CellPos kHomes[] = {{1, 1}, {8, 4}, {kMaxRow, kMaxColumn}, {3, 2}};
  const FormulaHome home{book.sheetAt(0).id(), kHomes[choice / 2 % std::size(kHomes)]};
  const Notation notation = choice % 2 == 0 ? Notation::A1 : Notation::R1C1;
  ExpressionPtr read;
  try {
    read = ParseFormula(text, notation, home, book);
  } catch (const ParseError& error) {
    Require(error.position <= text.size(), "the error lies behind the text", text);
    return;
  }
  const NoWorld world;
  Calculator calculator(book, world);
  calculator.Recalculate();
  PrintsAndReadsBack(*read, Notation::A1, home, book, calculator);
  PrintsAndReadsBack(*read, Notation::R1C1, home, book, calculator);

  if (!IsQuicklyWorkedOut(*read, home)) return;
  Sheet& sheet = book.sheetAt(0);
  if (choice & 0x80) {
    sheet.SetArrayFormula({20, 5, 22, 6}, read);
  } else {
    sheet.SetFormula({20, 5}, read);
  }
  calculator.Recalculate();
  Require(!calculator.HasStale(), "is stale after a calculation", text);
  book.InsertCells(sheet.id(), {2, 1, 2, kMaxColumn}, Axis::Rows);
  calculator.Recalculate();
}

}  // namespace
}  // namespace tolvane::engine

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  tolvane::engine::Check(data[0], std::string_view(reinterpret_cast<const char*>(data) + 1, size - 1));
  return 0;
}
