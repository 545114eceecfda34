#include "platform/Xml.h"

#include <pugixml.hpp>

#include "platform/XmlWellFormed.h"

namespace tolvane::platform {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
// White space is content like any other. Comments and instructions are not wanted.
constexpr unsigned kParseOptions = pugi::parse_default | pugi::parse_ws_pcdata;

pugi::xml_node NodeOf(void* node) {
  return pugi::xml_node(static_cast<pugi::xml_node_struct*>(node));
}

pugi::xml_attribute AttributeOf(void* attribute) {
  return pugi::xml_attribute(static_cast<pugi::xml_attribute_struct*>(attribute));
}

pugi::xml_node NextElement(pugi::xml_node node) {
  while (node && node.type() != pugi::node_element) node = node.next_sibling();
  return node;
}

bool IsText(pugi::xml_node node) {
  return node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
}

// The node after `node` in document order, among those within `top`.
pugi::xml_node NextWithin(pugi::xml_node node, pugi::xml_node top) {
  if (node.first_child()) return node.first_child();
  while (node != top && !node.next_sibling()) node = node.parent();
  return node == top ? pugi::xml_node() : node.next_sibling();
}

std::string TextWithin(pugi::xml_node top) {
  if (IsText(top)) return top.value();
  std::string text;
  for (pugi::xml_node node = NextWithin(top, top); node; node = NextWithin(node, top)) {
    if (IsText(node)) text += node.value();
  }
  return text;
}

template <typename Evaluate>
auto Evaluated(std::string_view xpath, Evaluate evaluate) {
  const std::string expression(xpath);
  if (expression.find('\0') != std::string::npos) throw XPathError("the XPath holds a zero character");
  try {
    return evaluate(pugi::xpath_query(expression.c_str()));
  } catch (const pugi::xpath_exception& error) {
    const pugi::xpath_parse_result& result = error.result();
    throw XPathError("XPath \"" + expression + "\", character " + std::to_string(result.offset + 1) + ": " +
                     result.description());
  }
}

}  // namespace

XmlError::XmlError(std::size_t line, std::size_t column, std::string_view problem)
    : std::runtime_error("line " + std::to_string(line) + ", column " + std::to_string(column) + ": " +
                         std::string(problem)),
      line_(line),
      column_(column) {}

XmlNode ParseXml(std::string_view text) {
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  const std::string_view root = FindRootElement(text);
  auto document = std::make_shared<pugi::xml_document>();
  const pugi::xml_parse_result result =
      document->load_buffer(root.data(), root.size(), kParseOptions, pugi::encoding_utf8);
  if (result.status == pugi::status_out_of_memory) throw std::bad_alloc();
  // The text is well-formed by now, so this would be a fault of ours; a half-read document must not pass for a whole.
  if (!result) throw std::logic_error(std::string("well-formed XML was not understood: ") + result.description());
  void* const element = document->document_element().internal_object();
  return XmlNode(std::move(document), element, nullptr);
}

std::string XmlNode::Name() const {
  return attribute_ != nullptr ? AttributeOf(attribute_).name() : NodeOf(node_).name();
}

std::string XmlNode::Text() const {
  return attribute_ != nullptr ? AttributeOf(attribute_).value() : TextWithin(NodeOf(node_));
}

std::optional<std::string> XmlNode::Attribute(std::string_view name) const {
  if (attribute_ != nullptr) return std::nullopt;
  for (const pugi::xml_attribute attribute : NodeOf(node_).attributes()) {
    if (attribute.name() == name) return attribute.value();
  }
  return std::nullopt;
}

std::vector<XmlNode> XmlNode::Children() const {
  std::vector<XmlNode> children;
  if (attribute_ != nullptr) return children;
  for (pugi::xml_node child = NextElement(NodeOf(node_).first_child()); child;
       child = NextElement(child.next_sibling())) {
    children.push_back(XmlNode(document_, child.internal_object(), nullptr));
  }
  return children;
}

std::optional<XmlNode> XmlNode::NextSibling() const {
  if (attribute_ != nullptr) return std::nullopt;
  const pugi::xml_node next = NextElement(NodeOf(node_).next_sibling());
  if (!next) return std::nullopt;
  return XmlNode(document_, next.internal_object(), nullptr);
}

std::vector<XmlNode> XmlNode::Select(std::string_view xpath) const {
  const pugi::xpath_node context(attribute_ != nullptr ? pugi::xpath_node(AttributeOf(attribute_), NodeOf(node_))
                                                       : pugi::xpath_node(NodeOf(node_)));
  pugi::xpath_node_set found =
      Evaluated(xpath, [&](const pugi::xpath_query& query) { return query.evaluate_node_set(context); });
  found.sort();
  std::vector<XmlNode> nodes;
  nodes.reserve(found.size());
  for (const pugi::xpath_node& node : found) {
    const pugi::xml_node owner = node.attribute() ? node.parent() : node.node();
    nodes.push_back(XmlNode(document_, owner.internal_object(), node.attribute().internal_object()));
  }
  return nodes;
}

std::optional<XmlNode> XmlNode::SelectSingle(std::string_view xpath) const {
  std::vector<XmlNode> nodes = Select(xpath);
  if (nodes.empty()) return std::nullopt;
  return std::move(nodes.front());
}

}  // namespace tolvane::platform
