#pragma once

#include <cstddef>
#include <functional>
#include <unordered_map>
#include <vector>

#include "engine/model/Expression.h"

namespace tolvane::engine {

// Makes expressions with other references out of shared ones, so that the results are shared the same way: cells that
// held one expression and come to the same references hold one again. An expression whose references stay is given
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
    return changed ? WithMapped(expression) : expression;
  }

 private:
  static constexpr SheetId kElsewhere = UINT32_MAX;

  struct Rewritten {
    ExpressionPtr from;  // held, so that its address is not given to another one
    ExpressionPtr to;
  };
  ExpressionPtr WithMapped(const ExpressionPtr& expression);
  bool HoldsMapped(const Expression& expression) const;

  std::vector<Reference> mapped_;  // first the references, then those of the externals
  std::unordered_multimap<std::size_t, Rewritten> rewritten_;
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
