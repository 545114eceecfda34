#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "engine/model/Area.h"
#include "engine/model/DiffContext.h"
#include "engine/model/ExpressionText.h"

namespace tolvane::engine {

namespace {

std::string PlaceText(const Sheet& sheet, const std::string& address) {
  return std::string(sheet.name()).append(1, '!').append(address);
}

// One side of a pair of cells.
struct CellSide {
  const Workbook& book;
  const Value& value;
  const FormulaCell* formula;

  // Whether a formula stands here.
  bool hasFormula() const { return formula != nullptr && formula->expression != nullptr; }
  // Whether it belongs to an array formula that stands elsewhere.
  bool isArrayPart() const { return formula != nullptr && formula->expression == nullptr; }
};

std::string ContentText(const CellSide& side, CellPos at) {
  if (!side.hasFormula()) return DebugText(side.value);
  std::string text = std::string(1, '=').append(DebugText(*side.formula->expression, side.book, at));
  if (!side.formula->arrayArea) return text;
  return std::string(1, '{').append(text).append("} in ").append(AddressOf(*side.formula->arrayArea));
}

void CompareContents(DiffContext& context, const Sheet& sheet, CellPos at, const CellSide& a, const CellSide& b) {
  if (a.formula == nullptr && b.formula == nullptr && a.value == b.value) return;
  const std::string where = PlaceText(sheet, AddressOf(Rect::Cell(at)));
  if (a.hasFormula() || b.hasFormula()) {
    const bool both = a.hasFormula() && b.hasFormula();
    if (both && a.formula->arrayArea != b.formula->arrayArea) {
      context.Report(where, "array formula", ContentText(a, at), ContentText(b, at));
    } else if (!both || !context.SameFormula(a.formula->expression, b.formula->expression, at)) {
      context.Report(where, "formula", ContentText(a, at), ContentText(b, at));
    } else if (context.options().results && !(a.value == b.value)) {
      context.Report(where, "result", DebugText(a.value), DebugText(b.value));
    }
    return;
  }
  // The cell that holds the array formula tells that it differs; here only what stands beside it counts.
  if (a.isArrayPart() != b.isArrayPart() && (a.isArrayPart() ? b : a).value.isEmpty()) return;
  if (a.isArrayPart() && b.isArrayPart() && !context.options().results) return;
  if (!(a.value == b.value)) {
    context.Report(where, a.isArrayPart() && b.isArrayPart() ? "result" : "value", DebugText(a.value),
                   DebugText(b.value));
  }
}

void CompareBands(DiffContext& context, const Sheet& left, const Sheet& right, Axis axis) {
  struct Stretch {
    int last;
    Band band;
  };
  const auto stretchesOf = [axis](const BandTable& bands) {
    std::vector<Stretch> stretches;
    bands.ForEachStretch(1, LimitOf(axis), [&](int, int last, const Band& band) { stretches.push_back({last, band}); });
    return stretches;
  };
  const bool rows = axis == Axis::Rows;
  const std::vector<Stretch> a = stretchesOf(rows ? left.rows : left.columns);
  const std::vector<Stretch> b = stretchesOf(rows ? right.rows : right.columns);
  const auto sizeText = [](const Band& band) {
    return band.size ? std::to_string(*band.size) : std::string("default");
  };
  std::size_t i = 0;
  std::size_t j = 0;
  for (int first = 1; i < a.size() && j < b.size() && !context.isFull();) {
    const int last = std::min(a[i].last, b[j].last);
    const Band& x = a[i].band;
    const Band& y = b[j].band;
    if (!(x == y)) {
      const std::string where = PlaceText(left, AddressOf(axis, first, last));
      if (x.size != y.size) context.Report(where, rows ? "row height" : "column width", sizeText(x), sizeText(y));
      if (x.hidden != y.hidden) context.Report(where, "hidden", TextOf(x.hidden), TextOf(y.hidden));
      if (x.filtered != y.filtered) context.Report(where, "filtered", TextOf(x.filtered), TextOf(y.filtered));
      if (x.outline != y.outline) {
        context.Report(where, "outline level", std::to_string(x.outline), std::to_string(y.outline));
      }
      context.CompareFormats(where, x.format, y.format);
    }
    first = last + 1;
    if (a[i].last == last) ++i;
    if (b[j].last == last) ++j;
  }
}

void CompareCell(DiffContext& context, const Sheet& left, const Sheet& right, CellPos at) {
  const CellSide a{left.book(), left.ValueAt(at), left.FormulaAt(at)};
  const CellSide b{right.book(), right.ValueAt(at), right.FormulaAt(at)};
  CompareContents(context, left, at, a, b);
  // Where neither has a format of its own, rows and columns tell the difference.
  if (left.cells().FormatAt(at) == 0 && right.cells().FormatAt(at) == 0) return;
  const FormatId leftFormat = left.FormatAt(at);
  const FormatId rightFormat = right.FormatAt(at);
  if (!context.SameFormats(leftFormat, rightFormat)) {
    context.CompareFormats(PlaceText(left, AddressOf(Rect::Cell(at))), leftFormat, rightFormat);
  }
}

bool IsAbsent(const Sheet& sheet, CellPos at) {
  return sheet.ValueAt(at).isEmpty() && sheet.FormulaAt(at) == nullptr && sheet.cells().FormatAt(at) == 0;
}

}  // namespace

void CompareCells(DiffContext& context, const Sheet& left, const Sheet& right) {
  CompareBands(context, left, right, Axis::Rows);
  CompareBands(context, left, right, Axis::Columns);
  left.cells().ForEachCell(Rect::WholeSheet(), [&](CellPos at, const Value&, const FormulaCell*, FormatId) {
    if (!context.isFull()) CompareCell(context, left, right, at);
  });
  right.cells().ForEachCell(Rect::WholeSheet(), [&](CellPos at, const Value&, const FormulaCell*, FormatId) {
    if (!context.isFull() && IsAbsent(left, at)) CompareCell(context, left, right, at);
  });
}

}  // namespace tolvane::engine
