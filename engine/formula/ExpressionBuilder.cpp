#include "engine/formula/ExpressionBuilder.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "engine/formula/FunctionTable.h"

namespace tolvane::engine {

ExpressionBuilder::NodeId ExpressionBuilder::Add(Node node, int spaces, std::span<const NodeId> children) {
  node.spacesBefore = static_cast<std::uint16_t>(std::clamp<int>(spaces, 0, std::numeric_limits<std::uint16_t>::max()));
  node.firstChild = children.empty() ? 0 : static_cast<std::uint32_t>(expression_.children.size());
  node.childCount = static_cast<std::uint32_t>(children.size());
  for (const NodeId child : children) expression_.children.push_back(child);
  expression_.nodes.push_back(node);
  return static_cast<NodeId>(expression_.nodes.size() - 1);
}

ExpressionBuilder::NodeId ExpressionBuilder::Constant(Value value, int spaces) {
  Node node{.kind = Node::Kind::Constant, .index = static_cast<std::uint32_t>(expression_.constants.size())};
  expression_.constants.push_back(std::move(value));
  return Add(node, spaces);
}

ExpressionBuilder::NodeId ExpressionBuilder::Refer(const Reference& reference, int spaces) {
  Node node{.kind = Node::Kind::Reference, .index = static_cast<std::uint32_t>(expression_.references.size())};
  expression_.references.push_back(reference);
  return Add(node, spaces);
}

ExpressionBuilder::NodeId ExpressionBuilder::ReferOutside(ExternalReference reference, int spaces) {
  Node node{.kind = Node::Kind::ExternalRef, .index = static_cast<std::uint32_t>(expression_.externals.size())};
  expression_.externals.push_back(std::move(reference));
  return Add(node, spaces);
}

ExpressionBuilder::NodeId ExpressionBuilder::UseName(NameUse name, int spaces) {
  Node node{.kind = Node::Kind::Name, .index = static_cast<std::uint32_t>(expression_.names.size())};
  expression_.names.push_back(std::move(name));
  return Add(node, spaces);
}

ExpressionBuilder::NodeId ExpressionBuilder::Call(std::string function, std::span<const NodeId> arguments, int spaces) {
  const Function* known = FindFunction(function);
  if (known != nullptr && known->isVolatile) expression_.isVolatile = true;
  Node node{.kind = Node::Kind::Function, .index = static_cast<std::uint32_t>(expression_.names.size())};
  expression_.names.push_back({kOwnSheet, std::move(function)});
  return Add(node, spaces, arguments);
}

ExpressionBuilder::NodeId ExpressionBuilder::Binary(Operator op, NodeId left, NodeId right, int spaces) {
  const NodeId children[] = {left, right};
  return Add({.kind = Node::Kind::Binary, .op = op}, spaces, children);
}

ExpressionBuilder::NodeId ExpressionBuilder::Unary(Operator op, NodeId operand, int spaces) {
  return Add({.kind = Node::Kind::Unary, .op = op}, spaces, {&operand, 1});
}

ExpressionBuilder::NodeId ExpressionBuilder::Parenthesis(NodeId inner, int spaces) {
  return Add({.kind = Node::Kind::Parenthesis}, spaces, {&inner, 1});
}

ExpressionBuilder::NodeId ExpressionBuilder::Missing(int spaces) {
  return Add({.kind = Node::Kind::Missing}, spaces);
}

ExpressionBuilder::NodeId ExpressionBuilder::Array(ArrayConstant array, int spaces) {
  Node node{.kind = Node::Kind::Array, .index = static_cast<std::uint32_t>(expression_.arrays.size())};
  expression_.arrays.push_back(std::move(array));
  return Add(node, spaces);
}

ExpressionPtr ExpressionBuilder::Finish(NodeId root) {
  expression_.root = root;
  return std::make_shared<const Expression>(std::exchange(expression_, {}));
}

}  // namespace tolvane::engine
