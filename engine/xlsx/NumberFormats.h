#pragma once

#include <optional>
#include <string_view>

namespace tolvane::engine::xlsx {

// Number formats that every file has without telling them, by their numbers; as Excel shows them in the United States.
std::optional<std::string_view> BuiltInNumberFormat(int id);
std::optional<int> BuiltInNumberFormatId(std::string_view format);
inline constexpr int kFirstOwnNumberFormat = 164;

}  // namespace tolvane::engine::xlsx
