#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::platform {

// How many elements may lie within each other. Documents that people and programs exchange stay below a hundred.
inline constexpr std::size_t kXmlMaxDepth = 1000;

// A text that is no well-formed XML: "line 3, column 7: </B> closes <A> (line 2, column 1)". Lines and columns count
// from 1, columns in characters.
class XmlError : public std::runtime_error {
 public:
  XmlError(std::size_t line, std::size_t column, std::string_view problem);
  std::size_t Line() const { return line_; }
  std::size_t Column() const { return column_; }

 private:
  std::size_t line_;
  std::size_t column_;
};

// An expression that is no XPath 1.0 or that does not select nodes.
class XPathError : public std::invalid_argument {
 public:
  using std::invalid_argument::invalid_argument;
};

// A node of a document: an element or, where an XPath asks for it, an attribute, a text or the document itself. The
// handle keeps its document alive. Documents never change, so any number of threads may read them.
class XmlNode {
 public:
  // Of an element or attribute, as written: with the namespace prefix. Empty for other nodes.
  std::string Name() const;
  // All text within the node, in document order and with all its white space; of an attribute its value.
  std::string Text() const;
  std::optional<std::string> Attribute(std::string_view name) const;

  // Elements only.
  std::vector<XmlNode> Children() const;
  std::optional<XmlNode> NextSibling() const;

  // The nodes an XPath 1.0 expression selects, starting at this one, in document order; the first of them. Prefixes are
  // part of the names. Throws XPathError, also where the expression is nested deeper than about a thousand levels.
  std::vector<XmlNode> Select(std::string_view xpath) const;
  std::optional<XmlNode> SelectSingle(std::string_view xpath) const;

  friend bool operator==(const XmlNode&, const XmlNode&) = default;

 private:
  friend XmlNode ParseXml(std::string_view text);
  XmlNode(std::shared_ptr<const void> document, void* node, void* attribute)
      : document_(std::move(document)), node_(node), attribute_(attribute) {}

  std::shared_ptr<const void> document_;
  void* node_;       // of an attribute: the element it belongs to
  void* attribute_;  // null for all but attributes
};

// The root element of a document in UTF-8, whatever encoding its declaration names. Entities that the document type
// declares are not expanded: such references stay in the text as they are. Throws XmlError.
XmlNode ParseXml(std::string_view text);

// The text as content of an element or of a quoted attribute. Characters that no XML document can hold are written as
// _xHHHH_ by their number, and what would look like that in the text as _x005F_xHHHH_.
std::string EscapeXml(std::string_view text);
// Undoes the _xHHHH_ in the text of a node; the rest of what EscapeXml does is undone by ParseXml. A pair of surrogates
// is one character, half a pair stays as written.
std::string UnescapeXml(std::string_view text);

}  // namespace tolvane::platform
