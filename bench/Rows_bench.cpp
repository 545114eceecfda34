#include <benchmark/benchmark.h>

#include "bench/BookOfSize.h"

namespace tolvane::bench {
namespace {

// A tenth of the rows goes and comes back; each half is timed on its own.
template <bool kTimeDeletion>
void ScatteredRows(benchmark::State& state) {
  BookOfSize book(static_cast<int>(state.range(0)));
  book.AddFormulasNamesAndValidations();
  const std::vector<host::RowRun> runs = book.ScatteredRows();
  for (auto _ : state) {
    if (!kTimeDeletion) state.PauseTiming();
    book.table().DeleteRows(runs);
    kTimeDeletion ? state.PauseTiming() : state.ResumeTiming();
    book.table().InsertRows(runs);
    if (kTimeDeletion) state.ResumeTiming();
  }
}
void DeleteScatteredRows(benchmark::State& state) {
  ScatteredRows<true>(state);
}
void InsertScatteredRows(benchmark::State& state) {
  ScatteredRows<false>(state);
}

void CalculateAll(benchmark::State& state) {
  BookOfSize book(static_cast<int>(state.range(0)));
  book.AddFormulasNamesAndValidations();
  const host::Application application = book.application();
  const host::Range amounts = book.table().Cells(1, 5).Resize(book.rows(), 1);
  const host::CellBlock values = amounts.Value();
  for (auto _ : state) {
    amounts.SetValue(values);
    application.SetCalculation(host::Calculation::Automatic);
    application.SetCalculation(host::Calculation::Manual);
  }
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(12500)->Arg(25000)->Arg(50000)->Arg(100000)->Unit(benchmark::kMillisecond);
}
// From where a book no longer fits into a processor's own cache; below that, growth measures the cache.
void LargeSizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(50000)->Arg(100000)->Arg(200000)->Arg(400000)->Unit(benchmark::kMillisecond);
}
BENCHMARK(DeleteScatteredRows)->Apply(LargeSizes);
BENCHMARK(InsertScatteredRows)->Apply(LargeSizes);
BENCHMARK(CalculateAll)->Apply(Sizes);

}  // namespace
}  // namespace tolvane::bench
