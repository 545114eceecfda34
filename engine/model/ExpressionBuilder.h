#pragma once

// For the tests of this folder: addresses and formulas as one reads them on a sheet. A formula here is a sum of
// references and names, which is all that the model looks at.

#include <cctype>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "engine/model/Expression.h"
#include "engine/model/ExpressionText.h"
#include "engine/model/Workbook.h"

namespace tolvane::engine::test {

using Runs = std::vector<Run>;  // within a test, Run by itself is GoogleTest's

struct BoundPair {
  std::optional<Coordinate> row;
  std::optional<Coordinate> column;
};

// "B7", "$B$7", "7" or "B"; what has no $ counts from `home`.
inline BoundPair ReadBounds(std::string_view text, CellPos home) {
  BoundPair bounds;
  std::size_t at = 0;
  const auto dollar = [&] { return at < text.size() && text[at] == '$' ? (++at, true) : false; };
  const bool firstFixed = dollar();
  int column = 0;
  while (at < text.size() && std::isupper(static_cast<unsigned char>(text[at])) != 0) {
    column = column * 26 + (text[at++] - 'A' + 1);
  }
  bool rowFixed = firstFixed;
  if (column > 0) {
    bounds.column = Coordinate{firstFixed ? column : column - home.column, !firstFixed};
    rowFixed = dollar();
  }
  int row = 0;
  while (at < text.size() && std::isdigit(static_cast<unsigned char>(text[at])) != 0)
    row = row * 10 + (text[at++] - '0');
  if (row > 0) bounds.row = Coordinate{rowFixed ? row : row - home.row, !rowFixed};
  if (at != text.size() || (!bounds.row && !bounds.column)) throw std::invalid_argument(std::string(text));
  return bounds;
}

inline CellPos At(std::string_view text) {
  const BoundPair bounds = ReadBounds(text, {0, 0});
  return {bounds.row.value().value, bounds.column.value().value};
}

// "B7", "B7:C9", "5:7", "B:C".
inline Rect Area(std::string_view text) {
  const auto colon = text.find(':');
  const BoundPair first = ReadBounds(text.substr(0, colon), {0, 0});
  const BoundPair last = colon == std::string_view::npos ? first : ReadBounds(text.substr(colon + 1), {0, 0});
  return {first.row ? first.row->value : 1, first.column ? first.column->value : 1,
          last.row ? last.row->value : kMaxRow, last.column ? last.column->value : kMaxColumn};
}

// As Area, with $ and relative bounds, after an optional "Sheet!" or "First:Last!".
inline Reference Ref(std::string_view text, CellPos home, const Workbook& book) {
  Reference reference;
  const auto sheetOf = [&](std::string_view name) {
    const Sheet* sheet = book.FindSheet(name);
    if (sheet == nullptr) throw std::invalid_argument("no sheet " + std::string(name));
    return sheet->id();
  };
  if (const auto mark = text.find('!'); mark != std::string_view::npos && !text.starts_with('#')) {
    const std::string_view sheets = text.substr(0, mark);
    const auto colon = sheets.find(':');
    reference.sheet = sheetOf(sheets.substr(0, colon));
    if (colon != std::string_view::npos) reference.lastSheet = sheetOf(sheets.substr(colon + 1));
    text.remove_prefix(mark + 1);
  }
  if (text == "#REF!") {
    reference.shape = Reference::Shape::Broken;
    return reference;
  }
  const auto colon = text.find(':');
  const BoundPair first = ReadBounds(text.substr(0, colon), home);
  const BoundPair last = colon == std::string_view::npos ? first : ReadBounds(text.substr(colon + 1), home);
  using Shape = Reference::Shape;
  reference.shape = !first.row                        ? Shape::WholeColumns
                    : !first.column                   ? Shape::WholeRows
                    : colon == std::string_view::npos ? Shape::Cell
                                                      : Shape::Area;
  if (first.row) {
    reference.firstRow = *first.row;
    reference.lastRow = last.row.value();
  }
  if (first.column) {
    reference.firstColumn = *first.column;
    reference.lastColumn = last.column.value();
  }
  return reference;
}

// =SUM(ref,ref,...)
inline ExpressionPtr SumOf(const std::vector<Reference>& references) {
  auto expression = std::make_shared<Expression>();
  Node sum;
  sum.kind = Node::Kind::Function;
  sum.childCount = static_cast<std::uint32_t>(references.size());
  expression->names.push_back({kOwnSheet, "SUM"});
  expression->nodes.push_back(sum);
  for (const Reference& reference : references) {
    Node node;
    node.kind = Node::Kind::Reference;
    node.index = static_cast<std::uint32_t>(expression->references.size());
    expression->references.push_back(reference);
    expression->children.push_back(static_cast<std::uint32_t>(expression->nodes.size()));
    expression->nodes.push_back(node);
  }
  return expression;
}

// "B2:B9,Data!$C$1" as =SUM(B2:B9,Data!$C$1)
inline ExpressionPtr Sum(std::string_view references, CellPos home, const Workbook& book) {
  std::vector<Reference> list;
  while (!references.empty()) {
    const auto comma = references.find(',');
    list.push_back(Ref(references.substr(0, comma), home, book));
    references.remove_prefix(comma == std::string_view::npos ? references.size() : comma + 1);
  }
  return SumOf(list);
}

// =name, or =Sheet!name
inline ExpressionPtr UseOfName(std::string name, SheetId sheet = kOwnSheet) {
  auto expression = std::make_shared<Expression>();
  Node node;
  node.kind = Node::Kind::Name;
  expression->nodes.push_back(node);
  expression->names.push_back({sheet, std::move(name)});
  return expression;
}

inline void PutSum(Sheet& sheet, std::string_view cell, std::string_view references) {
  sheet.SetFormula(At(cell), Sum(references, At(cell), sheet.book()));
}

// The formula in a cell as it reads there; "" when there is none.
inline std::string FormulaIn(const Sheet& sheet, std::string_view cell) {
  const FormulaCell* formula = sheet.FormulaAt(At(cell));
  return formula == nullptr || formula->expression == nullptr ? std::string()
                                                              : DebugText(*formula->expression, sheet.book(), At(cell));
}

// What a name refers to, as it reads in A1; "" when there is no such name.
inline std::string NameText(const Workbook& book, const NameTable& names, std::string_view name) {
  const Name* found = names.Find(name);
  return found == nullptr ? std::string() : DebugText(*found->refersTo, book, {1, 1});
}

}  // namespace tolvane::engine::test
