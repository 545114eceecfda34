#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "platform/FileCalls.h"

namespace tolvane::platform {

// As ReplaceFile, and keeps the former versions: NAME.bak1 is the newest, NAME.bak2 the one before, up to `backups`.
// The new file has the mode and, as far as the system lets us, the owner of the old one; a file that was not there is
// for its owner only. Other names of the same file (hard links) keep the old content.
//
// The order is such that the file is at every moment the old one or the new one: the new content is on the disk under
// another name, the old file gets a second name (NAME.bak0), the new one takes the name over, then the backups move up.
//
// Throws FileError where the file was not replaced, or where it is uncertain whether the disk knows. A text when it was
// replaced, but its former version could not be kept.
std::optional<std::string> ReplaceFileKeeping(const std::filesystem::path& path, std::string_view content, int backups,
                                              FileCalls& calls);

}  // namespace tolvane::platform
