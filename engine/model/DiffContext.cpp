#include "engine/model/DiffContext.h"

#include <set>

#include "platform/Text.h"

namespace tolvane::engine {

DiffContext::DiffContext(const Workbook& left, const Workbook& right, const DiffOptions& options)
    : left_(left), right_(right), options_(options) {
  std::set<const Sheet*> paired;
  const auto pair = [&](const Sheet& a, const Sheet& b) {
    pairs_.emplace_back(&a, &b);
    rightOf_[a.id()] = b.id();
    paired.insert(&a);
    paired.insert(&b);
  };
  for (std::size_t i = 0; i < left.sheetCount(); ++i) {
    if (const Sheet* same = right.FindSheet(left.sheetAt(i).name())) pair(left.sheetAt(i), *same);
  }
  for (std::size_t i = 0; i < left.sheetCount(); ++i) {
    const Sheet& sheet = left.sheetAt(i);
    if (paired.contains(&sheet) || sheet.codeName.empty()) continue;
    for (std::size_t j = 0; j < right.sheetCount(); ++j) {
      const Sheet& candidate = right.sheetAt(j);
      if (paired.contains(&candidate) || !platform::EqualIgnoringCase(candidate.codeName, sheet.codeName)) continue;
      pair(sheet, candidate);
      break;
    }
  }
}

void DiffContext::Report(std::string where, std::string what, std::string leftText, std::string rightText) {
  if (isFull()) return;
  found_.push_back({std::move(where), std::move(what), std::move(leftText), std::move(rightText)});
}

bool DiffContext::SameSheet(SheetId leftId, SheetId rightId) const {
  if (leftId == kOwnSheet || rightId == kOwnSheet) return leftId == rightId;
  const auto found = rightOf_.find(leftId);
  return found != rightOf_.end() && found->second == rightId;
}

bool DiffContext::SameReference(const Reference& a, const Reference& b, CellPos home) const {
  if (a.shape != b.shape || !SameSheet(a.sheet, b.sheet) || a.isThreeD() != b.isThreeD()) return false;
  if (a.isThreeD() && !SameSheet(a.lastSheet, b.lastSheet)) return false;
  Reference there = b;
  there.sheet = a.sheet;
  there.lastSheet = a.lastSheet;
  if (a == there) return true;
  // Offsets that wrap around the grid have two spellings for the same place.
  const auto sameBound = [](const Coordinate& x, const Coordinate& y, int at, Axis axis) {
    return x.relative == y.relative && WrapIndex(x.From(at), axis) == WrapIndex(y.From(at), axis);
  };
  Reference respelt = there;
  const auto respell = [&](Coordinate Reference::*bound, int at, Axis axis) {
    if (sameBound(a.*bound, there.*bound, at, axis)) respelt.*bound = a.*bound;
  };
  respell(&Reference::firstRow, home.row, Axis::Rows);
  respell(&Reference::lastRow, home.row, Axis::Rows);
  respell(&Reference::firstColumn, home.column, Axis::Columns);
  respell(&Reference::lastColumn, home.column, Axis::Columns);
  return a == respelt;
}

bool DiffContext::SameNode(const Expression& a, const Node& nodeA, const Expression& b, const Node& nodeB,
                           CellPos home) const {
  if (nodeA.kind != nodeB.kind || nodeA.childCount != nodeB.childCount || nodeA.spacesBefore != nodeB.spacesBefore) {
    return false;
  }
  switch (nodeA.kind) {
    case Node::Kind::Constant:
      return a.constants[nodeA.index] == b.constants[nodeB.index];
    case Node::Kind::Reference:
      return SameReference(a.references[nodeA.index], b.references[nodeB.index], home);
    case Node::Kind::ExternalRef:
      return a.externals[nodeA.index] == b.externals[nodeB.index];
    case Node::Kind::Name:
    case Node::Kind::Function: {
      const NameUse& useA = a.names[nodeA.index];
      const NameUse& useB = b.names[nodeB.index];
      return useA.name == useB.name && SameSheet(useA.sheet, useB.sheet);
    }
    case Node::Kind::Binary:
    case Node::Kind::Unary:
      return nodeA.op == nodeB.op;
    case Node::Kind::Array:
      return a.arrays[nodeA.index] == b.arrays[nodeB.index];
    case Node::Kind::Parenthesis:
    case Node::Kind::Missing:
      break;
  }
  return true;
}

bool DiffContext::SameFormula(const ExpressionPtr& a, const ExpressionPtr& b, CellPos home) const {
  if (a == nullptr || b == nullptr) return a == b;
  if (a->nodes.empty() || b->nodes.empty()) return a->nodes.empty() == b->nodes.empty();
  std::vector<std::pair<std::uint32_t, std::uint32_t>> waiting{{a->root, b->root}};
  while (!waiting.empty()) {
    const Node& nodeA = a->nodes[waiting.back().first];
    const Node& nodeB = b->nodes[waiting.back().second];
    waiting.pop_back();
    if (!SameNode(*a, nodeA, *b, nodeB, home)) return false;
    for (std::uint32_t i = 0; i < nodeA.childCount; ++i) {
      waiting.emplace_back(a->children[nodeA.firstChild + i], b->children[nodeB.firstChild + i]);
    }
  }
  return true;
}

bool DiffContext::SameFormats(FormatId leftFormat, FormatId rightFormat) {
  const auto [known, isNew] = sameFormats_.try_emplace(std::uint64_t{leftFormat} << 32 | rightFormat, false);
  if (isNew) {
    const CellFormat& a = left_.formats.At(leftFormat);
    const CellFormat& b = right_.formats.At(rightFormat);
    known->second = a.format == b.format && platform::EqualIgnoringCase(left_.formats.StyleAt(a.style).name,
                                                                        right_.formats.StyleAt(b.style).name);
  }
  return known->second;
}

void DiffContext::CompareFormats(const std::string& where, FormatId leftFormat, FormatId rightFormat) {
  if (SameFormats(leftFormat, rightFormat)) return;
  const CellFormat& a = left_.formats.At(leftFormat);
  const CellFormat& b = right_.formats.At(rightFormat);
  const std::string& styleA = left_.formats.StyleAt(a.style).name;
  const std::string& styleB = right_.formats.StyleAt(b.style).name;
  if (!platform::EqualIgnoringCase(styleA, styleB)) Report(where, "style", styleA, styleB);
  CompareFormat(*this, where, a.format, b.format);
}

}  // namespace tolvane::engine
