#include <benchmark/benchmark.h>

#include <string>

#include "bench/TableBook.h"
#include "engine/xlsx/Xlsx.h"

namespace tolvane::bench {
namespace {

constexpr engine::FileKind kBook{engine::BookKind::Book, false};

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
