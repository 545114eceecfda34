#pragma once

#include <string_view>

namespace tolvane::platform {

// The part of a document that is its root element, tags included. What is outside is well-formed and says nothing
// about the content. Throws XmlError where the document is not well-formed or nested deeper than kXmlMaxDepth.
//
// The tree is built by a parser made for speed, which lets pass two roots, text between them, a reference to the zero
// character that cuts a text short, and half a bank statement is worse than none. Declarations of a document type are
// read for their end only, and names may hold any character beyond ASCII.
std::string_view FindRootElement(std::string_view text);

}  // namespace tolvane::platform
