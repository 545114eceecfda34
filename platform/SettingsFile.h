#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>

namespace tolvane::platform {

// What FileSettings needs of the system. For the sources of this folder only.

// Keeps other programs from changing the settings file of a folder between our reading and our writing. Waits up to
// five seconds for them, since writing takes milliseconds; throws FileError.
class FolderLock {
 public:
  explicit FolderLock(const std::filesystem::path& folder);
  ~FolderLock();
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

 private:
  std::intptr_t handle_;  // closing it gives the lock back
};

// Tells one content of the file from another: each change makes a new file.
using FileVersion = std::array<std::uint64_t, 5>;

// Nothing where there is no file. Throws FileError.
std::optional<FileVersion> VersionOf(const std::filesystem::path& file);

}  // namespace tolvane::platform
