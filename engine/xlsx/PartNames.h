#pragma once

#include <string>
#include <string_view>

namespace tolvane::engine::xlsx {

// Names of parts are URIs in links and content types: "a%20b.xml" is "a b.xml". In the archive some programs write the
// one, some the other.
std::string WithoutPercent(std::string_view name);
std::string WithPercent(std::string_view name);

// By this, a part is found: without percents and the case of ASCII letters.
std::string PartKeyOf(std::string_view name);

}  // namespace tolvane::engine::xlsx
