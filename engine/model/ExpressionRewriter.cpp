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

// All but the references is the same.
bool SameButReferences(const ExternalReference& a, const ExternalReference& b) {
  return a.book == b.book && a.sheet == b.sheet && a.isName == b.isName && a.name == b.name;
}

bool SameButReferences(const Expression& a, const Expression& b) {
  return a.nodes == b.nodes && a.children == b.children && a.root == b.root && a.constants == b.constants &&
         a.names == b.names && a.arrays == b.arrays && a.isVolatile == b.isVolatile &&
         a.references.size() == b.references.size() &&
         std::equal(a.externals.begin(), a.externals.end(), b.externals.begin(), b.externals.end(),
                    [](const ExternalReference& x, const ExternalReference& y) { return SameButReferences(x, y); });
}

}  // namespace

bool ReferenceRewriter::IsMapped(const Expression& known, const Expression& from) const {
  const auto externals = mapped_.begin() + std::ssize(from.references);
  return SameButReferences(known, from) &&
         std::equal(known.references.begin(), known.references.end(), mapped_.begin(), externals) &&
         std::equal(
             known.externals.begin(), known.externals.end(), externals, mapped_.end(),
             [](const ExternalReference& external, const Reference& mapped) { return external.reference == mapped; });
}

ExpressionPtr ReferenceRewriter::WithMapped(const Expression& expression) {
  const auto isWanted = [&](const Expression& known) { return IsMapped(known, expression); };
  if (last_ != nullptr && isWanted(*last_)) return last_;
  // Expressions that came of one share its nodes.
  auto hash = reinterpret_cast<std::uintptr_t>(expression.nodes.begin());
  for (const Reference& reference : mapped_) hash = Mix(hash, HashOf(reference));
  hash ^= hash >> 32;
  if (rewritten_.size() < 2 * (count_ + 1)) Grow();
  Slot& slot = SlotFor(hash, isWanted);
  if (slot.expression == nullptr) {
    auto copy = std::make_shared<Expression>(expression);
    const auto externals = mapped_.begin() + std::ssize(copy->references);
    copy->references.assign(mapped_.begin(), externals);
    if (!copy->externals.empty()) {
      std::vector<ExternalReference>& own = copy->externals.Own();
      for (std::size_t i = 0; i < own.size(); ++i) own[i].reference = externals[static_cast<std::ptrdiff_t>(i)];
    }
    slot = {hash, std::move(copy)};
    ++count_;
  }
  last_ = slot.expression;
  return last_;
}

// The slot of the expression that `isWanted` accepts, or the empty one where it would stand.
template <class IsWanted>
ReferenceRewriter::Slot& ReferenceRewriter::SlotFor(std::size_t hash, IsWanted&& isWanted) {
  std::size_t at = hash % rewritten_.size();
  while (rewritten_[at].expression != nullptr &&
         !(rewritten_[at].hash == hash && isWanted(*rewritten_[at].expression))) {
    at = (at + 1) % rewritten_.size();
  }
  return rewritten_[at];
}

void ReferenceRewriter::Grow() {
  std::vector<Slot> old(std::max<std::size_t>(64, rewritten_.size() * 2));
  old.swap(rewritten_);
  for (Slot& slot : old) {
    if (slot.expression == nullptr) continue;
    SlotFor(slot.hash, [](const Expression&) { return false; }) = std::move(slot);
  }
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
  std::vector<Node>& nodes = expression.nodes.Own();
  KeepUsed(nodes, expression.references, [](Kind kind) { return kind == Kind::Reference; });
  KeepUsed(nodes, expression.externals.Own(), [](Kind kind) { return kind == Kind::ExternalRef; });
  KeepUsed(nodes, expression.names.Own(), [](Kind kind) { return kind == Kind::Name || kind == Kind::Function; });
}

}  // namespace tolvane::engine
