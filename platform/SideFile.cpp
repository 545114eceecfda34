#include "platform/SideFile.h"

#include <fcntl.h>

#include <array>
#include <cerrno>
#include <climits>
#include <system_error>

namespace tolvane::platform {
namespace {

constexpr int kMostLinks = 40;  // as the system itself

std::string PrefixOf(const std::filesystem::path& target) {
  return ".~save." + target.filename().native() + "#";
}

}  // namespace

SideFile::SideFile(const std::filesystem::path& target, FileCalls& calls)
    : calls_(calls), name_((target.parent_path() / PrefixOf(target)).native() + "XXXXXX") {
  file_ = calls_.MakeTemporary(name_);
  hasName_ = file_ >= 0;
  // Where the disk knows no locks the file cannot be told from a leftover, and no leftover is removed.
  if (hasName_) calls_.TryLock(file_);
}

SideFile::~SideFile() {
  const int error = errno;
  if (hasName_) calls_.Unlink(name_);
  if (file_ >= 0) calls_.Close(file_);
  errno = error;
}

bool SideFile::Write(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = calls_.Write(file_, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

bool SideFile::RenameTo(const std::filesystem::path& name) {
  if (calls_.Rename(name_, name) != 0) return false;
  hasName_ = false;
  return true;
}

void RemoveLeftovers(const std::filesystem::path& target, FileCalls& calls) {
  const std::string prefix = PrefixOf(target);
  std::error_code error;
  std::filesystem::directory_iterator entry(target.parent_path(), error);
  for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
    std::error_code ignored;
    if (!entry->path().filename().native().starts_with(prefix) || !entry->is_regular_file(ignored)) continue;
    const int file = calls.Open(entry->path(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK);
    if (file < 0) continue;
    if (calls.TryLock(file) == 0) calls.Unlink(entry->path());
    calls.Close(file);
  }
}

std::filesystem::path AtEndOfLinks(const std::filesystem::path& path, FileCalls& calls) {
  std::error_code error;
  std::filesystem::path target = std::filesystem::absolute(path, error);
  if (error) {
    errno = error.value();
    return {};
  }
  for (int links = 0;; ++links) {
    std::array<char, PATH_MAX> aim;
    const ssize_t size = calls.ReadLink(target, aim.data(), aim.size());
    if (size < 0) return errno == EINVAL || errno == ENOENT ? target : std::filesystem::path();  // no link
    if (links == kMostLinks) {
      errno = ELOOP;
      return {};
    }
    target = target.parent_path() / std::string(aim.data(), static_cast<std::size_t>(size));
  }
}

}  // namespace tolvane::platform
