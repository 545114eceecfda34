#include "platform/SettingsFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <system_error>
#include <thread>

#include "platform/Files.h"
#include "platform/Settings.h"
#include "platform/posix/FileDescriptor.h"

namespace tolvane::platform {
namespace {

constexpr std::chrono::milliseconds kLockPause(10);
constexpr int kLockAttempts = 500;

[[noreturn]] void FailToLock(const std::filesystem::path& folder, const std::string& reason) {
  throw FileError("cannot lock the settings folder " + PathToUtf8(folder) + ": " + reason);
}

}  // namespace

// The lock is on the folder since the file itself is another one after each change.
FolderLock::FolderLock(const std::filesystem::path& folder) {
  FileDescriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!opened.IsOpen()) FailToLock(folder, std::generic_category().message(errno));
  for (int attempt = 0; ::flock(opened.Get(), LOCK_EX | LOCK_NB) != 0; ++attempt) {
    if (errno != EWOULDBLOCK && errno != EINTR) FailToLock(folder, std::generic_category().message(errno));
    if (attempt == kLockAttempts) FailToLock(folder, "another program does not let go of it");
    std::this_thread::sleep_for(kLockPause);
  }
  handle_ = opened.Release();
}

FolderLock::~FolderLock() {
  ::close(static_cast<int>(handle_));
}

std::optional<FileVersion> VersionOf(const std::filesystem::path& file) {
  struct stat status = {};
  if (::stat(file.c_str(), &status) == 0) {
    return FileVersion{static_cast<std::uint64_t>(status.st_dev), static_cast<std::uint64_t>(status.st_ino),
                       static_cast<std::uint64_t>(status.st_size), static_cast<std::uint64_t>(status.st_mtim.tv_sec),
                       static_cast<std::uint64_t>(status.st_mtim.tv_nsec)};
  }
  if (errno == ENOENT || errno == ENOTDIR) return std::nullopt;
  throw FileError("cannot read " + PathToUtf8(file) + ": " + std::generic_category().message(errno));
}

std::filesystem::path UserSettingsFile() {
  const char* const configHome = std::getenv("XDG_CONFIG_HOME");
  const char* const home = std::getenv("HOME");
  std::filesystem::path folder;
  // The XDG base directory rules: a relative path there is to be ignored.
  if (configHome != nullptr && std::filesystem::path(configHome).is_absolute()) {
    folder = configHome;
  } else if (home != nullptr && std::filesystem::path(home).is_absolute()) {
    folder = std::filesystem::path(home) / ".config";
  } else {
    throw FileError("there is no place for settings: neither XDG_CONFIG_HOME nor HOME is an absolute path");
  }
  return folder / "tolvane" / "settings.ini";
}

}  // namespace tolvane::platform
