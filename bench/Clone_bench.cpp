#include <benchmark/benchmark.h>

#include <string>

#include "engine/formula/Parser.h"
#include "engine/model/Workbook.h"

namespace tolvane::bench {
namespace {

// About what the template of an Accounts Book holds: 12 sheets with 200 cells, formulas, names, styles, validations.
void FillLikeATemplate(engine::Workbook& book) {
  for (int style = 0; style < 12; ++style) {
    engine::NamedStyle named;
    named.name = "Style " + std::to_string(style);
    named.format.font.size = 8 + style;
    book.formats.AddStyle(named);
  }
  for (std::size_t number = 0; number < 12; ++number) {
    engine::Sheet& sheet = book.AddSheet("Sheet " + std::to_string(number), number);
    for (int row = 1; row <= 40; ++row) {
      sheet.SetValue({row, 1}, engine::Value("Caption of row " + std::to_string(row)));
      sheet.SetValue({row, 2}, engine::Value(row * 1.5));
      sheet.SetValue({row, 3}, engine::Value("Food"));
      const engine::FormulaHome home{sheet.id(), {row, 4}};
      sheet.SetFormula({row, 4},
                       engine::ParseFormula("=SUM(B1:B" + std::to_string(row) + ")", engine::Notation::A1, home, book));
      sheet.ChangeFormat(engine::Rect{row, 1, row, 5}, [&book, row](engine::FormatId format) {
        return book.formats.WithStyle(format, static_cast<engine::StyleId>(1 + row % 12));
      });
    }
    for (int i = 0; i < 15; ++i) {
      const engine::FormulaHome home{sheet.id(), {1, 1}};
      const std::string target = "=$A$" + std::to_string(i + 1);
      book.SetName(sheet.id(), {"ptrName" + std::to_string(i),
                                engine::ParseFormula(target, engine::Notation::A1, home, book), true});
    }
    engine::Validation rule;
    rule.kind = engine::Validation::Kind::List;
    rule.ranges = {engine::Rect{1, 3, 40, 3}};
    rule.formula1 = engine::ParseFormula("=$C$1:$C$9", engine::Notation::A1, {sheet.id(), {1, 3}}, book);
    sheet.AddValidation(rule);
  }
}

void CloneATemplate(benchmark::State& state) {
  engine::Workbook book;
  FillLikeATemplate(book);
  for (auto _ : state) benchmark::DoNotOptimize(book.Clone());
}
BENCHMARK(CloneATemplate)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tolvane::bench
