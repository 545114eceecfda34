// The part of ExcelRange that reads and writes contents.
#include <string>

#include "hosts/excel/ExcelRange.h"

namespace tolvane::excel {

namespace {

bool BeginsWith(std::string_view text, char c) {
  return !text.empty() && text.front() == c;
}

// The program recognises what is written to it as if it were typed: "00123" would become a number. One apostrophe in
// front, which it takes away again, keeps a text a text.
host::CellValue Marked(std::string_view text) {
  if (text.empty()) return {};
  std::string marked(1, '\'');
  return host::CellValue(marked.append(text));
}

}  // namespace

// Value2 gives dates and amounts of money as numbers.
host::CellBlock ExcelRange::Value() const {
  return object().Get("Value2").AsBlock();
}

void ExcelRange::SetValue(const host::CellBlock& block) {
  Write("Value2", block, false);
}

host::CellBlock ExcelRange::Formula() const {
  return ReadFormulas("Formula");
}
void ExcelRange::SetFormula(const host::CellBlock& block) {
  Write("Formula", block, true);
}
host::CellBlock ExcelRange::FormulaR1C1() const {
  return ReadFormulas("FormulaR1C1");
}
void ExcelRange::SetFormulaR1C1(const host::CellBlock& block) {
  Write("FormulaR1C1", block, true);
}

std::string ExcelRange::Text() const {
  return object().Get("Text").AsText();
}

void ExcelRange::Write(const char* member, const host::CellBlock& block, bool takesFormulas) {
  host::CellBlock written = block;
  for (host::CellValue& value : written.cells()) {
    if (!value.isText()) continue;
    const std::string_view text = value.text();
    if (takesFormulas && BeginsWith(text, '=')) continue;
    value = Marked(takesFormulas && BeginsWith(text, '\'') ? text.substr(1) : text);
  }
  object().Put(member, written);
}

// The program gives a constant's text as it would a formula's. What tells them apart is the value: only a text is the
// same as what was entered, "=" and all.
host::CellBlock ExcelRange::ReadFormulas(const char* member) const {
  host::CellBlock block = object().Get("Value2").AsBlock();
  const host::CellBlock formulas = object().Get(member).AsBlock();
  for (int row = 1; row <= block.rows(); ++row) {
    for (int column = 1; column <= block.columns(); ++column) {
      host::CellValue& value = block.at(row, column);
      const host::CellValue& formula = formulas.at(row, column);
      if (formula.isText() && BeginsWith(formula.text(), '=') && formula != value) {
        value = formula;
      } else if (value.isEmpty()) {
        value = host::CellValue("");
      } else if (value.isText() && (BeginsWith(value.text(), '=') || BeginsWith(value.text(), '\''))) {
        value = Marked(value.text());
      }
    }
  }
  return block;
}

}  // namespace tolvane::excel
