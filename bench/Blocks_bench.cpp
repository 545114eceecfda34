#include <benchmark/benchmark.h>

#include "bench/BookOfSize.h"

namespace tolvane::bench {
namespace {

void ReadValue(benchmark::State& state) {
  BookOfSize book(static_cast<int>(state.range(0)));
  const host::Range range = book.tableRange();
  for (auto _ : state) benchmark::DoNotOptimize(range.Value());
}

void WriteValue(benchmark::State& state) {
  BookOfSize book(static_cast<int>(state.range(0)));
  const host::CellBlock block = BookOfSize::Table(book.rows());
  const host::Range range = book.tableRange();
  for (auto _ : state) range.SetValue(block);
}

void FillFormulaR1C1(benchmark::State& state) {
  BookOfSize book(static_cast<int>(state.range(0)));
  const host::Range column = book.table().Cells(1, 12).Resize(book.rows(), 1);
  for (auto _ : state) column.SetFormulaR1C1("=RC5*2+R[1]C5");
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(12500)->Arg(25000)->Arg(50000)->Arg(100000)->Unit(benchmark::kMillisecond);
}
BENCHMARK(ReadValue)->Apply(Sizes);
BENCHMARK(WriteValue)->Apply(Sizes);
BENCHMARK(FillFormulaR1C1)->Apply(Sizes);

}  // namespace
}  // namespace tolvane::bench
