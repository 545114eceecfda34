#include "hosts/embedded/Entering.h"

#include <algorithm>
#include <string>
#include <utility>

#include "engine/formula/Evaluator.h"
#include "engine/formula/NumberFormat.h"
#include "engine/formula/Parser.h"
#include "engine/model/Workbook.h"
#include "hosts/embedded/CellReference.h"
#include "hosts/embedded/Refusal.h"
#include "hosts/embedded/SheetGuard.h"
#include "hosts/embedded/Typing.h"
#include "hosts/embedded/Values.h"
#include "platform/Text.h"

namespace tolvane::embedded {

using engine::CellPos;
using engine::Rect;
using engine::Value;

namespace {

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// A list that stands in the rule itself, "a,b,c": entries are compared as they are written.
bool IsInTypedList(std::string_view list, std::string_view shown) {
  while (true) {
    const std::size_t comma = list.find(',');
    if (Trimmed(list.substr(0, comma)) == shown) return true;
    if (comma == std::string_view::npos) return false;
    list.remove_prefix(comma + 1);
  }
}

bool SameEntry(const Value& entry, const Value& typed) {
  if (entry.isText() && typed.isText()) {
    return platform::EqualIgnoringCase(entry.text().view(), typed.text().view());
  }
  return entry == typed;
}

// Whether a list validation lets a value through; one whose source means nothing lets all through, as Excel does.
bool IsInList(const EmbeddedWorksheet& sheet, const engine::Validation& rule, const Value& typed, CellPos at) {
  if (rule.formula1 == nullptr) return true;
  const engine::Node& root = rule.formula1->nodes[rule.formula1->root];
  if (root.kind == engine::Node::Kind::Constant) {
    const Value& list = rule.formula1->constants[root.index];
    return !list.isText() || IsInTypedList(list.text().view(), engine::FormatValue(typed, "General"));
  }
  const auto source = CellsOf(sheet, *rule.formula1, at);
  if (!source) return true;
  for (const Rect& area : source->areas) {
    bool found = false;
    bool anyBlank = false;
    std::int64_t visited = 0;
    source->sheet->sheet().cells().ForEachContent(area, [&](CellPos, const Value& entry, const engine::FormulaCell*) {
      ++visited;
      found = found || SameEntry(entry, typed);
    });
    anyBlank = visited < area.cells();
    // A blank in a list that may be left blank lets everything through.
    if (found || (anyBlank && rule.ignoreBlank && root.kind == engine::Node::Kind::Name)) return true;
  }
  return false;
}

void RequireValid(const EmbeddedWorksheet& sheet, CellPos at, const Value& typed) {
  const engine::Validation* rule = sheet.sheet().ValidationAt(at);
  if (rule == nullptr || rule->kind != engine::Validation::Kind::List) return;
  if (rule->alert != engine::Validation::Alert::Stop || !rule->showError) return;
  if (typed.isEmpty() && rule->ignoreBlank) return;
  if (IsInList(sheet, *rule, typed, at)) return;
  Refuse(rule->errorMessage.empty()
             ? "The value is not in the list that the cell " + sheet.PlaceOf(Rect::Cell(at)) + " is restricted to."
             : rule->errorMessage);
}

}  // namespace

void EnterText(EmbeddedWorksheet& sheet, CellPos cell, std::string_view text, bool asText) {
  engine::Sheet& cells = sheet.sheet();
  if (const auto merge = cells.MergeAt(cell)) cell = merge->topLeft();
  const Rect target = Rect::Cell(cell);
  RequireUnlocked(cells, {target});
  if (cells.cells().CutsArray(target)) {
    Refuse("The cell " + sheet.PlaceOf(target) + " is part of an array formula, which can only be changed as a whole.");
  }
  engine::FormatTable& formats = sheet.book().book().formats;
  const std::string numberFormat = formats.At(cells.FormatAt(cell)).format.numberFormat;
  const bool keepsText = asText || numberFormat == "@";
  if (!keepsText && text.size() > 1 && text.front() == '=') {
    const engine::ExpressionPtr formula = Refusing([&] {
      return sheet.book().Parse(text, engine::Notation::A1, {cells.id(), cell});
    });
    const Value result = sheet.book().calculator().Evaluate(*formula, {cells.id(), cell});
    RequireValid(sheet, cell, result);
    Refusing([&] { cells.SetFormula(cell, formula); });
  } else {
    Recognised recognised;
    if (keepsText) {
      recognised.value = ToEngine(host::CellValue(text));
    } else if (!text.empty()) {
      recognised = Recognise(text);
      if (recognised.value.isText()) recognised.value = ToEngine(host::CellValue(recognised.value.text().view()));
    }
    if (text.empty()) recognised.value = {};
    RequireValid(sheet, cell, recognised.value);
    Refusing([&] { cells.SetValue(cell, recognised.value); });
    if (recognised.numberFormat && numberFormat == "General") {
      Refusing([&] {
        cells.ChangeFormat(target, [&](engine::FormatId from) {
          return formats.With(from, engine::FormatGroup::Number,
                              [&](engine::Format& f) { f.numberFormat = *recognised.numberFormat; });
        });
      });
    }
  }
  sheet.program().FormulasEntered(sheet, {target});
}

}  // namespace tolvane::embedded
