#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "platform/FileCalls.h"

namespace tolvane::platform {

// By what a file is known again: another one under its name, or other content, has another stamp.
struct FileStamp {
  std::uint64_t device = 0;
  std::uint64_t number = 0;
  std::uint64_t size = 0;
  std::int64_t seconds = 0;  // of the last change
  std::int64_t nanoseconds = 0;
  bool operator==(const FileStamp&) const = default;
};
// Nothing where no file is.
std::optional<FileStamp> StampOf(const std::filesystem::path& path);

struct ReplaceOptions {
  // Former versions that are kept: NAME.bak1 is the newest, NAME.bak2 the one before.
  int backups = 0;
  // As the file was last seen: when it is there and another, it is not replaced. Set to the new file's stamp as soon as
  // that has the name. Null: whatever is there is replaced.
  std::optional<FileStamp>* seen = nullptr;
};

// As ReplaceFile. The new file has the mode and, as far as the system lets us, the owner of the old one; a file that
// was not there is for its owner only. A file that may not be written to is not replaced. Other names of the same file
// (hard links) keep the old content.
//
// The order is such that the file is at every moment the old one or the new one: the new content is on the disk under
// another name, the old file gets a second name (NAME.bak0), the new one takes the name over, then the backups move up.
// A process that is killed may leave NAME.bak0, a former version, and a side file (SideFile.h); the next replacement
// puts both in order.
//
// Throws FileError where the file was not replaced, or where it is uncertain whether the disk knows. A text when it was
// replaced, but the former versions could not be moved up.
std::optional<std::string> ReplaceFileKeeping(const std::filesystem::path& path, std::string_view content,
                                              const ReplaceOptions& options, FileCalls& calls);

}  // namespace tolvane::platform
