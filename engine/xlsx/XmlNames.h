#pragma once

#include <string_view>

namespace tolvane::engine::xlsx {

// The format has two spellings of its namespaces: the usual one and the strict one of its standard.
inline constexpr std::string_view kMainSpace = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
inline constexpr std::string_view kStrictMainSpace = "http://purl.oclc.org/ooxml/spreadsheetml/main";
inline constexpr std::string_view kLinkSpace = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
inline constexpr std::string_view kStrictLinkSpace = "http://purl.oclc.org/ooxml/officeDocument/relationships";

inline constexpr std::string_view kXmlDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";

}  // namespace tolvane::engine::xlsx
