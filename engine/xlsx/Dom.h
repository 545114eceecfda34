#pragma once

#include <pugixml.hpp>

#include <memory>
#include <string>
#include <string_view>

#include "engine/xlsx/Limits.h"

namespace tolvane::engine::xlsx {

// Small parts as trees, so that what is not understood in them stays. Elements are found by their names without prefix.

// Throws XlsxError for text that is not well-formed or nested too deeply.
std::unique_ptr<pugi::xml_document> ParseDom(std::string_view xml, const std::string& partName);
// The same for what a file tells: what the tree takes is spent first.
std::unique_ptr<pugi::xml_document> ParseDom(std::string_view xml, const std::string& partName, Budget& budget);
std::string PrintDom(const pugi::xml_node& node);

std::string_view LocalName(const pugi::xml_node& node);
pugi::xml_node ChildOf(const pugi::xml_node& parent, std::string_view local);
pugi::xml_node NextOf(const pugi::xml_node& node, std::string_view local);  // the next sibling of this name

// Calls visit(child) for the child elements of that name.
template <class Visit>
void ForEachChild(const pugi::xml_node& parent, std::string_view local, Visit&& visit) {
  for (pugi::xml_node child = ChildOf(parent, local); child; child = NextOf(child, local)) visit(child);
}

// With the prefix of its parent.
pugi::xml_node AddChild(pugi::xml_node parent, std::string_view local);
// The child, made if need be: in front of the first child that the list names.
pugi::xml_node ObtainChild(pugi::xml_node parent, std::string_view local,
                           std::initializer_list<std::string_view> before);
void RemoveChildren(pugi::xml_node parent, std::string_view local);

bool HasAttribute(const pugi::xml_node& node, const char* name);
std::string AttributeOf(const pugi::xml_node& node, const char* name);
bool FlagOf(const pugi::xml_node& node, const char* name, bool otherwise);
double NumberOf(const pugi::xml_node& node, const char* name, double otherwise);
// An integer within bounds; `otherwise` when there is none or it lies outside.
int WholeOf(const pugi::xml_node& node, const char* name, int otherwise, int lowest, int highest);
// The link of an element (r:id): an attribute "id" with a prefix.
std::string LinkIdOf(const pugi::xml_node& node);

void SetAttribute(pugi::xml_node node, const char* name, std::string_view value);
void SetNumber(pugi::xml_node node, const char* name, double value);
// Sets a flag, leaving out what is the default anyway.
void SetFlag(pugi::xml_node node, const char* name, bool value, bool byDefault);

}  // namespace tolvane::engine::xlsx
