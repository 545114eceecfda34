#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "bench/BookOfSize.h"
#include "engine/xlsx/Xlsx.h"

namespace tolvane::bench {
namespace {

constexpr engine::FileKind kBook{engine::BookKind::Book, false};

// The table of an account, without the host around it.
std::unique_ptr<engine::Workbook> TableBook(int rows) {
  auto book = std::make_unique<engine::Workbook>();
  engine::Sheet& sheet = book->AddSheet("Table", 0);
  const host::CellBlock table = BookOfSize::Table(rows);
  std::vector<engine::Value> values;
  for (int row = 1; row <= rows; ++row) {
    for (int column = 1; column <= 9; ++column) {
      const host::CellValue& value = table.at(row, column);
      if (value.isNumber()) {
        values.emplace_back(value.number());
      } else if (value.isText()) {
        values.emplace_back(std::string_view(value.text()));
      } else {
        values.emplace_back();
      }
    }
  }
  sheet.SetValues({1, 1, rows, 9}, values);
  return book;
}

void OpenBook(benchmark::State& state) {
  const std::string bytes = engine::WriteXlsx(*TableBook(static_cast<int>(state.range(0))), engine::Package(), kBook);
  for (auto _ : state) benchmark::DoNotOptimize(engine::ReadXlsx(bytes));
}

void SaveNewBook(benchmark::State& state) {
  const auto book = TableBook(static_cast<int>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(engine::WriteXlsx(*book, engine::Package(), kBook));
}

// One cell of a big book was changed.
void SaveChangedBook(benchmark::State& state) {
  engine::XlsxBook book =
      engine::ReadXlsx(engine::WriteXlsx(*TableBook(static_cast<int>(state.range(0))), engine::Package(), kBook));
  book.workbook->sheetAt(0).SetValue({5, 5}, 1.5);
  for (auto _ : state) benchmark::DoNotOptimize(engine::WriteXlsx(*book.workbook, book.package, kBook));
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(12500)->Arg(25000)->Arg(50000)->Arg(100000)->Unit(benchmark::kMillisecond);
}
BENCHMARK(OpenBook)->Apply(Sizes);
BENCHMARK(SaveNewBook)->Apply(Sizes);
BENCHMARK(SaveChangedBook)->Apply(Sizes);

}  // namespace
}  // namespace tolvane::bench
