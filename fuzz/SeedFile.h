#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tolvane::fuzz {

// The bytes of "504b 0304"; blanks and line ends between them do not matter.
std::string FromHex(std::string_view text);

// The content of a seed: that of the file, or, where its name ends with .hex, the bytes that it spells.
std::string ReadSeed(const std::filesystem::path& file);

}  // namespace tolvane::fuzz
