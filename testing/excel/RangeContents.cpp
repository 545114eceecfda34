// Contents as Excel takes and gives them: what is written is recognised as if it were typed, and what is read tells
// nothing of the apostrophe that kept a text a text.
#include "hosts/embedded/Typing.h"
#include "hosts/embedded/Values.h"
#include "testing/excel/RangeObject.h"

namespace tolvane::testing::excel {

using host::CellBlock;
using host::CellValue;

namespace {

bool BeginsWith(std::string_view text, char c) {
  return !text.empty() && text.front() == c;
}

// The port's way to write a text that is none of a formula's.
CellValue Quoted(const CellValue& value) {
  if (!value.isText()) return value;
  std::string quoted(1, '\'');
  return CellValue(quoted.append(value.text()));
}

CellBlock Typed(const Variant& value) {
  CellBlock block = value.AsBlock();
  for (CellValue& cell : block.cells()) {
    if (!cell.isText() || BeginsWith(cell.text(), '=')) continue;
    cell = cell.text().empty() ? CellValue() : Quoted(embedded::ToHost(embedded::Recognise(cell.text()).value));
  }
  return block;
}

Variant Shown(CellBlock formulas) {
  for (CellValue& cell : formulas.cells()) {
    if (cell.isText() && BeginsWith(cell.text(), '\'')) cell = CellValue(cell.text().substr(1));
  }
  return Variant(formulas);
}

}  // namespace

Variant RangeValue(RangeObject& range, const Call& call) {
  if (!call.isPut()) return Variant(range.handle.Value());
  range.handle.SetFormula(Typed(call.value()));
  return {};
}

Variant RangeFormula(RangeObject& range, const Call& call) {
  if (!call.isPut()) return Shown(range.handle.Formula());
  range.handle.SetFormula(Typed(call.value()));
  return {};
}

Variant RangeFormulaR1C1(RangeObject& range, const Call& call) {
  if (!call.isPut()) return Shown(range.handle.FormulaR1C1());
  range.handle.SetFormulaR1C1(Typed(call.value()));
  return {};
}

}  // namespace tolvane::testing::excel
