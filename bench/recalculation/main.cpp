// recalculation_bench kinds              the kinds of formulas and how many there are of each
// recalculation_bench make KIND FILE     writes a workbook
// recalculation_bench calculate FILE N   opens it, works out all formulas N times, and prints the milliseconds of each
//                                        time, then for each column of results its number of texts and its sum
#include <chrono>
#include <iostream>
#include <string>

#include "bench/recalculation/BookOfFormulas.h"
#include "engine/formula/Calculator.h"
#include "engine/formula/Printer.h"
#include "engine/xlsx/Xlsx.h"

namespace tolvane::bench {
namespace {

using namespace engine;

class NoWorld : public CalculationWorld {
 public:
  double Now() const override { return 45000.5; }
  std::string BookName() const override { return "Book.xlsx"; }
  std::string BookFolder() const override { return ""; }
  const Workbook* FindBook(std::string_view) const override { return nullptr; }
};

void Make(const std::string& kind, const std::string& file) {
  const std::unique_ptr<Workbook> book = MakeBookOfFormulas(kind);
  const NoWorld world;
  Calculator(*book, world).Recalculate();
  SaveXlsx(*book, Package(), file);
}

void PrintResults(const Sheet& sheet) {
  constexpr int kFirst = 8;
  for (int column = kFirst; column <= sheet.UsedContents()->right; ++column) {
    int texts = 0;
    double sum = 0;
    for (int row = 2; row <= kDataRows + 1; ++row) {
      const Value value = sheet.ValueAt({row, column});
      if (value.isText()) ++texts;
      if (value.isNumber()) sum += value.number();
    }
    std::cout << texts << ' ' << NumberText(sum) << '\n';
  }
}

void Calculate(const std::string& file, int times) {
  const XlsxBook opened = OpenXlsx(file);
  for (int i = 0; i < times; ++i) {
    const NoWorld world;
    // A new calculator each time: the index of dependencies belongs to the work.
    Calculator calculator(*opened.workbook, world);
    calculator.InvalidateAll();
    const auto start = std::chrono::steady_clock::now();
    calculator.Recalculate();
    const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
    std::cout << taken.count() << '\n';
  }
  PrintResults(opened.workbook->sheetAt(0));
}

int Run(int count, char** words) {
  const std::string command = count > 1 ? words[1] : "";
  if (command == "kinds" && count == 2) {
    for (const FormulaKind& kind : FormulaKinds()) std::cout << kind.count << '\t' << kind.name << '\n';
  } else if (command == "make" && count == 4) {
    Make(words[2], words[3]);
  } else if (command == "calculate" && count == 4) {
    Calculate(words[2], std::stoi(words[3]));
  } else {
    std::cerr << "recalculation_bench kinds | make KIND FILE | calculate FILE TIMES\n";
    return 2;
  }
  return 0;
}

}  // namespace
}  // namespace tolvane::bench

int main(int count, char** words) {
  try {
    return tolvane::bench::Run(count, words);
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
