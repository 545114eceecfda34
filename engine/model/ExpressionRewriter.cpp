#include "engine/model/ExpressionRewriter.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <memory>
#include <utility>

namespace tolvane::engine {

namespace {

std::size_t Mix(std::size_t hash, std::size_t value) {
  return (hash ^ value) * 0x9E3779B97F4A7C15u + (hash >> 31);
}

std::size_t HashOf(const Coordinate& bound) {
  return std::size_t{static_cast<std::uint32_t>(bound.value)} << 1 | std::size_t{bound.relative};
}

// Of the bounds that count whatever the shape; equality looks at the rest.
std::size_t HashOf(const Reference& reference) {
  std::size_t hash = static_cast<std::size_t>(reference.shape);
  hash = Mix(hash, reference.sheet);
  if (reference.shape == Reference::Shape::Broken) return hash;
  if (reference.shape != Reference::Shape::WholeColumns) hash = Mix(hash, HashOf(reference.firstRow));
  if (reference.shape != Reference::Shape::WholeRows) hash = Mix(hash, HashOf(reference.firstColumn));
  if (reference.shape == Reference::Shape::Area)
    hash = Mix(Mix(hash, HashOf(reference.lastRow)), HashOf(reference.lastColumn));
  return hash;
}

}  // namespace

bool ReferenceRewriter::HoldsMapped(const Expression& expression) const {
  const auto externals = mapped_.begin() + std::ssize(expression.references);
  return std::equal(expression.references.begin(), expression.references.end(), mapped_.begin(), externals) &&
         std::equal(
             expression.externals.begin(), expression.externals.end(), externals, mapped_.end(),
             [](const ExternalReference& external, const Reference& mapped) { return external.reference == mapped; });
}

ExpressionPtr ReferenceRewriter::WithMapped(const ExpressionPtr& expression) {
  std::size_t hash = reinterpret_cast<std::uintptr_t>(expression.get());
  for (const Reference& reference : mapped_) hash = Mix(hash, HashOf(reference));
  hash ^= hash >> 32;
  const auto [first, last] = rewritten_.equal_range(hash);
  for (auto it = first; it != last; ++it) {
    if (it->second.from == expression && HoldsMapped(*it->second.to)) return it->second.to;
  }
  auto copy = std::make_shared<Expression>(*expression);
  const auto externals = mapped_.begin() + std::ssize(copy->references);
  copy->references.assign(mapped_.begin(), externals);
  for (std::size_t i = 0; i < copy->externals.size(); ++i) {
    copy->externals[i].reference = externals[static_cast<std::ptrdiff_t>(i)];
  }
  rewritten_.emplace(hash, Rewritten{expression, copy});
  return copy;
}

ExpressionPtr ExpressionRewriter::Rewrite(const ExpressionPtr& expression) {
  if (expression == nullptr) return expression;
  const auto known = rewritten_.find(expression.get());
  if (known != rewritten_.end()) return known->second.to;
  auto copy = std::make_shared<Expression>(*expression);
  ExpressionPtr result = edit_(*copy) ? ExpressionPtr(std::move(copy)) : expression;
  rewritten_.emplace(expression.get(), Rewritten{expression, result});
  return result;
}

namespace {

// Keeps the elements of a table that nodes of some kinds use, and renumbers them.
template <class Element, class Uses>
void KeepUsed(std::vector<Node>& nodes, std::vector<Element>& table, Uses&& uses) {
  constexpr std::uint32_t kUnused = UINT32_MAX;
  std::vector<std::uint32_t> places(table.size(), kUnused);
  std::vector<Element> kept;
  for (Node& node : nodes) {
    if (!uses(node.kind)) continue;
    std::uint32_t& place = places[node.index];
    if (place == kUnused) {
      place = static_cast<std::uint32_t>(kept.size());
      kept.push_back(std::move(table[node.index]));
    }
    node.index = place;
  }
  table = std::move(kept);
}

}  // namespace

void DropUnused(Expression& expression) {
  using Kind = Node::Kind;
  KeepUsed(expression.nodes, expression.references, [](Kind kind) { return kind == Kind::Reference; });
  KeepUsed(expression.nodes, expression.externals, [](Kind kind) { return kind == Kind::ExternalRef; });
  KeepUsed(expression.nodes, expression.names, [](Kind kind) { return kind == Kind::Name || kind == Kind::Function; });
}

}  // namespace tolvane::engine
