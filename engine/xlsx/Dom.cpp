#include "engine/xlsx/Dom.h"

#include "engine/xlsx/XmlReader.h"
#include "engine/xlsx/XmlText.h"

namespace tolvane::engine::xlsx {

std::unique_ptr<pugi::xml_document> ParseDom(std::string_view xml, const std::string& partName) {
  // Our own reader first: it knows limits, and refuses what the tree's parser lets pass.
  XmlReader reader(xml, partName);
  while (reader.Next() != XmlReader::Event::Eof) {
  }
  auto document = std::make_unique<pugi::xml_document>();
  // All but the declaration: PrintDom writes one.
  constexpr unsigned kKeepAll = pugi::parse_default | pugi::parse_pi | pugi::parse_comments | pugi::parse_ws_pcdata;
  const auto result = document->load_buffer(xml.data(), xml.size(), kKeepAll, pugi::encoding_utf8);
  if (!result) throw XlsxError("The part " + partName + " of the file cannot be read: " + result.description());
  return document;
}

std::string PrintDom(const pugi::xml_node& node) {
  struct Writer : pugi::xml_writer {
    std::string text;
    void write(const void* data, std::size_t size) override { text.append(static_cast<const char*>(data), size); }
  } writer;
  node.print(writer, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
  if (node.type() != pugi::node_document) return std::move(writer.text);
  return std::string("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n") + writer.text;
}

std::string_view LocalName(const pugi::xml_node& node) {
  const std::string_view name = node.name();
  const std::size_t colon = name.find(':');
  return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

pugi::xml_node ChildOf(const pugi::xml_node& parent, std::string_view local) {
  for (const pugi::xml_node& child : parent.children()) {
    if (LocalName(child) == local) return child;
  }
  return {};
}

pugi::xml_node NextOf(const pugi::xml_node& node, std::string_view local) {
  for (pugi::xml_node next = node.next_sibling(); next; next = next.next_sibling()) {
    if (LocalName(next) == local) return next;
  }
  return {};
}

namespace {

std::string NameIn(const pugi::xml_node& parent, std::string_view local) {
  const std::string_view name = parent.name();
  const std::size_t colon = name.find(':');
  return colon == std::string_view::npos ? std::string(local)
                                         : std::string(name.substr(0, colon + 1)) + std::string(local);
}

}  // namespace

pugi::xml_node AddChild(pugi::xml_node parent, std::string_view local) {
  return parent.append_child(NameIn(parent, local).c_str());
}

pugi::xml_node ObtainChild(pugi::xml_node parent, std::string_view local,
                           std::initializer_list<std::string_view> before) {
  if (const pugi::xml_node child = ChildOf(parent, local)) return child;
  for (const pugi::xml_node& child : parent.children()) {
    for (const std::string_view name : before) {
      if (LocalName(child) == name) return parent.insert_child_before(NameIn(parent, local).c_str(), child);
    }
  }
  return AddChild(parent, local);
}

void RemoveChildren(pugi::xml_node parent, std::string_view local) {
  while (const pugi::xml_node child = ChildOf(parent, local)) parent.remove_child(child);
}

bool HasAttribute(const pugi::xml_node& node, const char* name) {
  return !node.attribute(name).empty();
}
std::string AttributeOf(const pugi::xml_node& node, const char* name) {
  return node.attribute(name).value();
}

bool FlagOf(const pugi::xml_node& node, const char* name, bool otherwise) {
  const pugi::xml_attribute attribute = node.attribute(name);
  return attribute ? IsTrue(attribute.value()) : otherwise;
}

double NumberOf(const pugi::xml_node& node, const char* name, double otherwise) {
  const pugi::xml_attribute attribute = node.attribute(name);
  return attribute ? NumberOf(std::string_view(attribute.value())).value_or(otherwise) : otherwise;
}

int WholeOf(const pugi::xml_node& node, const char* name, int otherwise, int lowest, int highest) {
  const double number = NumberOf(node, name, otherwise);
  return number >= lowest && number <= highest ? static_cast<int>(number) : otherwise;
}

std::string LinkIdOf(const pugi::xml_node& node) {
  for (const pugi::xml_attribute& attribute : node.attributes()) {
    if (std::string_view(attribute.name()).ends_with(":id")) return attribute.value();
  }
  return {};
}

void SetAttribute(pugi::xml_node node, const char* name, std::string_view value) {
  pugi::xml_attribute attribute = node.attribute(name);
  if (!attribute) attribute = node.append_attribute(name);
  attribute.set_value(std::string(value).c_str());
}

void SetNumber(pugi::xml_node node, const char* name, double value) {
  std::string text;
  AppendNumber(text, value);
  SetAttribute(node, name, text);
}

void SetFlag(pugi::xml_node node, const char* name, bool value, bool byDefault) {
  if (value == byDefault) {
    node.remove_attribute(name);
  } else {
    SetAttribute(node, name, value ? "1" : "0");
  }
}

}  // namespace tolvane::engine::xlsx
