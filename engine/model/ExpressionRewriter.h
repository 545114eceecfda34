#pragma once

#include <cstddef>
#include <functional>
#include <unordered_map>
#include <vector>

#include "engine/model/Expression.h"

namespace tolvane::engine {

// Makes expressions with other references out of shared ones, so that the results are shared as far as they can be:
// cells whose formulas come to the same references hold one expression. An expression whose references stay is given
// back.
class ReferenceRewriter {
 public:
  // map(reference) is the new reference. References into other books are asked for as ones to a sheet that is not here:
  // their relative bounds count from the formula's own place, which may have moved.
  template <class Map>
  ExpressionPtr Rewrite(const ExpressionPtr& expression, Map&& map) {
    if (expression == nullptr || (expression->references.empty() && expression->externals.empty())) return expression;
    mapped_.clear();
    bool changed = false;
    for (const Reference& reference : expression->references) {
      mapped_.push_back(map(reference));
      changed = changed || !(mapped_.back() == reference);
    }
    for (const ExternalReference& external : expression->externals) {
      Reference elsewhere = external.reference;
      elsewhere.sheet = kElsewhere;
      mapped_.push_back(external.isName ? external.reference : map(elsewhere));
      mapped_.back().sheet = external.reference.sheet;
      changed = changed || !(mapped_.back() == external.reference);
    }
    return changed ? WithMapped(*expression) : expression;
  }

 private:
  static constexpr SheetId kElsewhere = UINT32_MAX;

  struct Slot {
    std::size_t hash = 0;
    ExpressionPtr expression;  // null: free
  };
  ExpressionPtr WithMapped(const Expression& expression);
  // Whether an expression is this one with the mapped references.
  bool IsMapped(const Expression& known, const Expression& from) const;
  template <class IsWanted>
  Slot& SlotFor(std::size_t hash, IsWanted&& isWanted);
  void Grow();

  std::vector<Reference> mapped_;  // first the references, then those of the externals
  // A hash table with open slots: a change of structure fills it with as many expressions as there are runs of rows.
  std::vector<Slot> rewritten_;
  std::size_t count_ = 0;
  ExpressionPtr last_;  // neighbours are mostly alike
};

// The same for changes that do not depend on where the formula stands, of any part of it.
class ExpressionRewriter {
 public:
  // edit(expression): true when it has changed something.
  explicit ExpressionRewriter(std::function<bool(Expression&)> edit) : edit_(std::move(edit)) {}
  ExpressionPtr Rewrite(const ExpressionPtr& expression);

 private:
  struct Rewritten {
    ExpressionPtr from;
    ExpressionPtr to;
  };
  std::function<bool(Expression&)> edit_;
  std::unordered_map<const Expression*, Rewritten> rewritten_;
};

// Takes out the references, external references and names that no node uses any more.
void DropUnused(Expression& expression);

}  // namespace tolvane::engine
