// Measurements inside of an office: whole blocks both ways, formulas over them, scattered rows, a sheet's layout.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

#include "hosts/libreoffice/CalcHost.h"
#include "hosts/libreoffice/office/Office.h"
#include "testing/ScriptedDesk.h"

namespace tolvane::libreoffice {
namespace {

// Calc with one book of a table of nine columns.
class BookOfSize {
 public:
  BookOfSize(const Reference<css::uno::XComponentContext>& context, int rows) : rows_(rows), host_(context, desk_, {}) {
    book_ = host_.application().Workbooks().Add();
    table_ = book_.Worksheets().Item(1);
  }
  const host::Worksheet& table() const { return table_; }
  host::Application application() { return host_.application(); }
  host::Range Cells() const { return table_.Cells(1, 1).Resize(rows_, 9); }

  host::CellBlock Block() const {
    host::CellBlock block(rows_, 9);
    for (int row = 1; row <= rows_; ++row) {
      block.at(row, 1) = "M20090315" + std::to_string(row);
      block.at(row, 2) = 39887 + row / 50;
      block.at(row, 3) = "Bank statement";
      block.at(row, 4) = "Payment to payee number " + std::to_string(row % 500);
      block.at(row, 5) = -12.5 - row % 90;
      block.at(row, 6) = "2009 Mar";
      block.at(row, 7) = row % 3 == 0 ? "Food" : "Household and garden";
      if (row % 10 == 0) block.at(row, 8) = "a comment that someone wrote";
    }
    return block;
  }
  // Three columns of formulas that look at the table, on a sheet of their own and beside it.
  void AddFormulas() {
    Cells().SetValue(Block());
    const host::Worksheet report = book_.Worksheets().Add();
    report.Cells(1, 1).Resize(rows_, 1).SetFormulaR1C1("=" + table_.Name() + "!RC5*2");
    report.Cells(1, 2).Resize(rows_, 1).SetFormulaR1C1("=RC1+1");
    table_.Cells(1, 10).Resize(rows_, 1).SetFormulaR1C1("=RC5+RC2");
  }
  std::vector<host::RowRun> ScatteredRuns(int count) const {
    std::vector<host::RowRun> runs;
    for (int i = 0; i < count; ++i) runs.push_back({5 + i * (rows_ / count), 1});
    return runs;
  }

 private:
  const int rows_;
  testing::ScriptedDesk desk_;
  CalcHost host_;
  host::Workbook book_;
  host::Worksheet table_;
};

using Context = Reference<css::uno::XComponentContext>;

void WriteValues(benchmark::State& state, const Context& context) {
  BookOfSize book(context, static_cast<int>(state.range(0)));
  const host::CellBlock block = book.Block();
  for (auto _ : state) book.Cells().SetValue(block);
}

void ReadValues(benchmark::State& state, const Context& context) {
  BookOfSize book(context, static_cast<int>(state.range(0)));
  book.Cells().SetValue(book.Block());
  for (auto _ : state) benchmark::DoNotOptimize(book.Cells().Value());
}

void WriteFormulaColumn(benchmark::State& state, const Context& context) {
  BookOfSize book(context, static_cast<int>(state.range(0)));
  book.Cells().SetValue(book.Block());
  const host::Range column = book.table().Cells(1, 10).Resize(static_cast<int>(state.range(0)), 1);
  for (auto _ : state) column.SetFormulaR1C1("=RC5*2+RC2");
}

void ReadFormulaColumn(benchmark::State& state, const Context& context) {
  BookOfSize book(context, static_cast<int>(state.range(0)));
  book.Cells().SetValue(book.Block());
  const host::Range column = book.table().Cells(1, 10).Resize(static_cast<int>(state.range(0)), 1);
  column.SetFormulaR1C1("=RC5*2+RC2");
  for (auto _ : state) benchmark::DoNotOptimize(column.FormulaR1C1());
}

// 20 runs of rows go and come back over three times as many formulas as there are rows; each half on its own.
template <bool kTimeDeletion>
void ScatteredRows(benchmark::State& state, const Context& context) {
  BookOfSize book(context, static_cast<int>(state.range(0)));
  book.AddFormulas();
  const std::vector<host::RowRun> runs = book.ScatteredRuns(20);
  for (auto _ : state) {
    if (!kTimeDeletion) state.PauseTiming();
    book.table().DeleteRows(runs);
    kTimeDeletion ? state.PauseTiming() : state.ResumeTiming();
    book.table().InsertRows(runs);
    if (kTimeDeletion) state.ResumeTiming();
  }
}

}  // namespace
}  // namespace tolvane::libreoffice

namespace tolvane::office {

int Run(const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context, int argc, char** argv) {
  using namespace libreoffice;
  using Measurement = void (*)(benchmark::State&, const Context&);
  const auto measure = [&](const char* name, Measurement work) {
    benchmark::RegisterBenchmark(name, [work, context](benchmark::State& state) { work(state, context); })
        ->Arg(25'000)
        ->Arg(50'000)
        ->Arg(100'000)
        ->Iterations(1)
        ->Unit(benchmark::kMillisecond);
  };
  measure("CalcWriteValues", WriteValues);
  measure("CalcReadValues", ReadValues);
  measure("CalcWriteFormulaColumn", WriteFormulaColumn);
  measure("CalcReadFormulaColumn", ReadFormulaColumn);
  measure("CalcDeleteScatteredRows", ScatteredRows<true>);
  measure("CalcInsertScatteredRows", ScatteredRows<false>);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}

}  // namespace tolvane::office
