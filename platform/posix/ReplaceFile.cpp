#include "platform/ReplaceFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <system_error>
#include <utility>

#include "platform/Files.h"

namespace tolvane::platform {
namespace {

constexpr std::size_t kBlock = 64 * 1024;
constexpr int kMostLinks = 40;  // as the system itself

class Replacement {
 public:
  Replacement(const std::filesystem::path& path, FileCalls& calls) : path_(path), calls_(calls) {}
  Replacement(const Replacement&) = delete;
  Replacement& operator=(const Replacement&) = delete;
  ~Replacement() {
    if (file_ >= 0) calls_.Close(file_);
    if (!temporary_.empty()) calls_.Unlink(temporary_);
    if (!pending_.empty()) calls_.Unlink(pending_);
  }

  std::optional<std::string> Run(std::string_view content, int backups) {
    FollowLinks();
    struct stat old = {};
    const bool exists = calls_.Stat(target_, old) == 0;
    if (!exists && errno != ENOENT) Fail();
    WriteTemporary(content, exists ? &old : nullptr);
    // A pending name that is there already is from a save that was cut off: it is the version before this one.
    std::optional<std::string> warning;
    if (backups > 0 && exists) {
      warning = MoveUp(backups, Name(0));
      KeepOld(old);
    }
    if (calls_.Rename(temporary_, target_) != 0) Fail();
    temporary_.clear();
    const bool isSynced = SyncFolder();
    const int syncError = errno;
    if (!pending_.empty()) {
      if (auto why = MoveUp(backups, pending_)) {
        warning = std::move(why);
      } else {
        pending_.clear();
      }
    }
    if (!isSynced) {
      errno = syncError;
      Fail();
    }
    return warning;
  }

 private:
  [[noreturn]] void Fail() const {
    throw FileError("cannot write " + PathToUtf8(path_) + ": " + std::generic_category().message(errno));
  }

  std::filesystem::path Name(int backup) const { return target_.native() + ".bak" + std::to_string(backup); }

  // A link keeps pointing where it does, even to a file that is not there yet.
  void FollowLinks() {
    std::error_code error;
    target_ = std::filesystem::absolute(path_, error);
    if (error) throw FileError("cannot write " + PathToUtf8(path_) + ": " + error.message());
    for (int links = 0;; ++links) {
      std::array<char, PATH_MAX> aim;
      const ssize_t size = calls_.ReadLink(target_, aim.data(), aim.size());
      if (size < 0 && (errno == EINVAL || errno == ENOENT)) return;  // no link
      if (links == kMostLinks) errno = ELOOP;
      if (size < 0 || links == kMostLinks) Fail();
      target_ = target_.parent_path() / std::string(aim.data(), static_cast<std::size_t>(size));
    }
  }

  bool WriteAll(std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t written = calls_.Write(file_, bytes.data(), bytes.size());
      if (written < 0 && errno == EINTR) continue;
      if (written < 0) return false;
      bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
  }

  bool CloseFile() { return calls_.Close(std::exchange(file_, -1)) == 0; }

  void WriteTemporary(std::string_view content, const struct stat* old) {
    std::string name = target_.native() + ".XXXXXX";
    file_ = calls_.MakeTemporary(name);
    if (file_ < 0) Fail();
    temporary_ = name;
    if (old != nullptr) TakeOver(*old);
    if (!WriteAll(content) || calls_.Sync(file_) != 0 || !CloseFile()) Fail();
  }

  // Only the superuser may give files away. Who cannot keeps the group at least, or, where that fails too, what the
  // file's own mode allows to all.
  void TakeOver(const struct stat& old) {
    struct stat now = {};
    mode_t mode = old.st_mode & 07777;
    if (calls_.Stat(temporary_, now) != 0) Fail();
    if (now.st_uid != old.st_uid || now.st_gid != old.st_gid) {
      if (calls_.ChangeOwner(file_, old.st_uid, old.st_gid) != 0) {
        if (errno != EPERM) Fail();
        if (calls_.ChangeOwner(file_, static_cast<uid_t>(-1), old.st_gid) != 0) {
          if (errno != EPERM) Fail();
          mode &= ~static_cast<mode_t>(S_IRWXG | S_ISUID | S_ISGID);
        }
      }
    }
    if (calls_.ChangeMode(file_, mode) != 0) Fail();
  }

  // The old file gets a second name; on disks that know no such thing, a copy.
  void KeepOld(const struct stat& old) {
    const std::filesystem::path pending = Name(0);
    if (calls_.Link(target_, pending) == 0) {
      pending_ = pending;
      return;
    }
    if (errno == EEXIST) return;  // it could not be moved up, and MoveUp has told
    const int from = calls_.Open(target_, O_RDONLY);
    if (from < 0) Fail();
    file_ = calls_.OpenNew(pending);
    const int openError = errno;
    if (file_ >= 0) pending_ = pending;
    bool isCopied = file_ >= 0 && calls_.ChangeMode(file_, old.st_mode & 0777) == 0;
    int copyError = file_ < 0 ? openError : errno;
    std::array<char, kBlock> block;
    while (isCopied) {
      const ssize_t count = calls_.Read(from, block.data(), block.size());
      if (count < 0 && errno == EINTR) continue;
      if (count == 0) break;
      isCopied = count > 0 && WriteAll({block.data(), static_cast<std::size_t>(count)});
      copyError = errno;
    }
    if (isCopied) {
      isCopied = calls_.Sync(file_) == 0 && CloseFile();
      copyError = errno;
    }
    calls_.Close(from);
    if (isCopied) return;
    errno = copyError;
    Fail();
  }

  // Every backup takes the next number, and `newest`, where it is there, becomes the first.
  std::optional<std::string> MoveUp(int backups, const std::filesystem::path& newest) {
    struct stat status = {};
    if (calls_.Stat(newest, status) != 0) {
      if (errno == ENOENT) return std::nullopt;
      return Warning();
    }
    for (int number = backups - 1; number >= 1; --number) {
      if (calls_.Rename(Name(number), Name(number + 1)) != 0 && errno != ENOENT) return Warning();
    }
    if (calls_.Rename(newest, Name(1)) != 0) return Warning();
    return std::nullopt;
  }

  std::string Warning() const {
    return "saved " + PathToUtf8(path_) +
           ", but its former version could not be kept: " + std::generic_category().message(errno);
  }

  // The new name is an entry of the folder, which reaches the disk by itself.
  bool SyncFolder() {
    const int folder = calls_.Open(target_.parent_path(), O_RDONLY | O_DIRECTORY);
    if (folder < 0) return false;
    const bool isSynced = calls_.Sync(folder) == 0;
    const int error = errno;
    calls_.Close(folder);
    errno = error;
    return isSynced;
  }

  const std::filesystem::path& path_;
  FileCalls& calls_;
  std::filesystem::path target_;
  std::string temporary_;          // not yet renamed
  std::filesystem::path pending_;  // not yet moved up
  int file_ = -1;
};

}  // namespace

std::optional<std::string> ReplaceFileKeeping(const std::filesystem::path& path, std::string_view content, int backups,
                                              FileCalls& calls) {
  return Replacement(path, calls).Run(content, backups);
}

void ReplaceFile(const std::filesystem::path& path, std::string_view content) {
  FileCalls calls;
  ReplaceFileKeeping(path, content, 0, calls);
}

}  // namespace tolvane::platform
