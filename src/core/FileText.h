#pragma once

#include <string>
#include <string_view>

namespace tolvane::accounts {

// A whole file as UTF-8, by its byte order mark: UTF-16 of either order, or the system's code page (UTF-8 where the
// bytes are valid UTF-8, else Windows-1252) with a UTF-8 mark skipped. Fails as User.ReadFile does.
std::string ReadTextFile(const std::string& sPath);
// The same for bytes in memory.
std::string DecodeText(std::string_view bytes);

}  // namespace tolvane::accounts
