#include "engine/xlsx/Formulas.h"

#include <algorithm>
#include <utility>

#include "engine/formula/FunctionTable.h"
#include "engine/formula/Parser.h"
#include "engine/formula/Printer.h"
#include "engine/formula/ReferenceText.h"
#include "platform/Text.h"

namespace tolvane::engine::xlsx {

namespace {

// Calls change(name) for the function names of an expression that need another spelling; null when none does.
template <class Change>
ExpressionPtr WithFunctionNames(const Expression& formula, Change&& change) {
  std::shared_ptr<Expression> copy;
  for (const Node& node : formula.nodes) {
    if (node.kind != Node::Kind::Function) continue;
    std::string name = change(formula.names[node.index].name);
    if (name.empty()) continue;
    if (copy == nullptr) copy = std::make_shared<Expression>(formula);
    copy->names.Own()[node.index].name = std::move(name);
  }
  return copy;
}

// Empty: it stays as it is. Prefixed functions that nobody here knows are in upper case, as all are; files have the
// prefix in lower case.
std::string NameInFile(std::string_view name) {
  constexpr std::string_view unknown = "_XLFN.";
  if (name.starts_with(unknown)) return platform::LowerCase(unknown) + std::string(name.substr(unknown.size()));
  const std::string_view prefix = FilePrefixOf(name);
  return prefix.empty() ? std::string() : std::string(prefix) + std::string(name);
}

}  // namespace

ExpressionPtr ParseFileFormula(std::string_view text, const FormulaHome& home, const Workbook& book) {
  try {
    return ParseFormula(text, Notation::A1, home, book);
  } catch (const ParseError&) {
    return nullptr;
  }
}

std::string PrintFileFormula(const Expression& formula, const FormulaHome& home, const Workbook& book) {
  const ExpressionPtr renamed = WithFunctionNames(formula, NameInFile);
  std::string text = PrintFormula(renamed == nullptr ? formula : *renamed, Notation::A1, home, book);
  if (text.starts_with('=')) text.erase(0, 1);
  return text;
}

std::string ShiftFileFormula(std::string_view text, CellPos from, CellPos to) {
  std::string shifted;
  int brackets = 0;  // columns of tables stand in them
  for (std::size_t at = 0; at < text.size();) {
    const char c = text[at];
    std::size_t size = 1;
    if (c == '"' || c == '\'') {
      size = std::min(text.find(c, at + 1), text.size() - 1) - at + 1;
    } else if (IsWordByte(c) || c == '$') {
      const auto reference = brackets == 0 ? ScanReference(text, at, Notation::A1, from) : std::nullopt;
      if (reference) {
        AppendReference(shifted, reference->reference, Notation::A1, to);
        at += reference->length;
        continue;
      }
      while (at + size < text.size() && (IsWordByte(text[at + size]) || text[at + size] == '$')) ++size;
    } else if (c == '[') {
      ++brackets;
    } else if (c == ']') {
      --brackets;
    }
    shifted += text.substr(at, size);
    at += size;
  }
  return shifted;
}

std::uint64_t CostOf(const ExpressionPtr& formula) {
  if (formula == nullptr) return 0;
  constexpr std::size_t allocation = 16;
  const auto list = [](const auto& items) {
    constexpr std::size_t counted = 32;  // what a shared list has in front of its elements
    return items.empty() ? 0 : items.capacity() * sizeof(items[0]) + counted + 2 * allocation;
  };
  std::uint64_t cost = sizeof(Expression) + 2 * allocation;
  cost += list(formula->nodes) + list(formula->children) + list(formula->constants) + list(formula->references) +
          list(formula->externals) + list(formula->names) + list(formula->arrays);
  for (const Value& constant : formula->constants) cost += constant.isText() ? constant.text().view().size() : 0;
  for (const ArrayConstant& array : formula->arrays) cost += list(array.values);
  return cost;
}

ExpressionPtr ConstantFormula(Value value) {
  auto formula = std::make_shared<Expression>();
  formula->constants.push_back(std::move(value));
  formula->nodes.push_back({.kind = Node::Kind::Constant});
  return formula;
}

}  // namespace tolvane::engine::xlsx
