#pragma once

#include <initializer_list>
#include <span>
#include <string>

#include "engine/model/Expression.h"

namespace tolvane::engine {

// Puts an expression together from its leaves up; each call adds one node and returns its number. Nodes stand in the
// order of the calls, so whoever builds the same tree in the same order (operands from left to right, then the
// operator) gets an equal expression. `spaces` are the blanks in front of the node's token.
class ExpressionBuilder {
 public:
  using NodeId = std::uint32_t;

  NodeId Constant(Value value, int spaces = 0);
  NodeId Refer(const Reference& reference, int spaces = 0);
  NodeId ReferOutside(ExternalReference reference, int spaces = 0);
  NodeId UseName(NameUse name, int spaces = 0);
  // The name in upper case. Marks the expression volatile when the function is.
  NodeId Call(std::string function, std::span<const NodeId> arguments, int spaces = 0);
  NodeId Binary(Operator op, NodeId left, NodeId right, int spaces = 0);
  NodeId Unary(Operator op, NodeId operand, int spaces = 0);
  NodeId Parenthesis(NodeId inner, int spaces = 0);
  NodeId Missing(int spaces = 0);
  NodeId Array(ArrayConstant array, int spaces = 0);

  const Node& At(NodeId id) const { return expression_.nodes[id]; }
  NodeId ChildOf(NodeId id, std::uint32_t child) const {
    return expression_.children[expression_.nodes[id].firstChild + child];
  }

  // Hands over what was built; the builder is empty afterwards.
  ExpressionPtr Finish(NodeId root);

 private:
  NodeId Add(Node node, int spaces, std::span<const NodeId> children = {});

  Expression expression_;
};

}  // namespace tolvane::engine
