#include "platform/ReplaceFile.h"

#include <fcntl.h>

#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

#include "platform/Files.h"
#include "platform/SideFile.h"

namespace tolvane::platform {
namespace {

constexpr std::size_t kBlock = 64 * 1024;

FileStamp StampFrom(const struct stat& status) {
  return {status.st_dev, status.st_ino, static_cast<std::uint64_t>(status.st_size), status.st_mtim.tv_sec,
          status.st_mtim.tv_nsec};
}

std::string Reason(int error) {
  return std::generic_category().message(error);
}

std::string_view Advice(int error) {
  switch (error) {
    case ENOSPC:
    case EDQUOT:
      return "Make room on the disk, or choose a place on another one";
    case EACCES:
    case EPERM:
    case EROFS:
      return "You may not write there: choose another folder, or have the rights of the file and its folder changed";
    case ENOENT:
    case ENOTDIR:
      return "Make the folder first, or choose another one";
    case ENAMETOOLONG:
      return "Choose a shorter name";
    case EIO:
      return "The disk may be failing: choose a place on another one";
    case EFBIG:
      return "Files of that size may not be written there: choose another place";
    default:
      return "Try again, or choose another place";
  }
}

class Replacement {
 public:
  Replacement(const std::filesystem::path& path, const ReplaceOptions& options, FileCalls& calls)
      : path_(path), options_(options), calls_(calls) {}
  Replacement(const Replacement&) = delete;
  Replacement& operator=(const Replacement&) = delete;
  ~Replacement() {
    const int error = errno;
    if (!pending_.empty()) calls_.Unlink(pending_);
    errno = error;
  }

  std::optional<std::string> Run(std::string_view content) {
    target_ = AtEndOfLinks(path_, calls_);
    if (target_.empty()) Fail();
    RemoveLeftovers(target_, calls_);  // first: they may be what fills the disk
    struct stat old = {};
    const bool exists = FindOld(old);
    SideFile fresh(target_, calls_);
    if (!fresh.isOpen()) Fail();
    if (exists) TakeOver(fresh, old);
    if (!fresh.Write(content) || calls_.Sync(fresh.file()) != 0) Fail();
    struct stat written = {};
    if (calls_.Stat(fresh.name(), written) != 0) Fail();

    std::optional<std::string> warning;
    if (options_.backups > 0 && exists) warning = KeepOld(old);
    // Once more, since writing takes its time. What comes between this and the next call is lost.
    if (options_.seen != nullptr) FindOld(old);
    if (!fresh.RenameTo(target_)) Fail();
    if (options_.seen != nullptr) *options_.seen = StampFrom(written);
    const int syncError = SyncFolder();
    if (!pending_.empty()) {
      if (auto why = MoveUp(pending_)) warning = std::move(why);
      pending_.clear();
    }
    if (syncError != 0) {
      throw FileError("wrote " + PathToUtf8(path_) + ", but a power cut may still undo that: " + Reason(syncError) +
                      ". Save it again");
    }
    return warning;
  }

 private:
  [[noreturn]] void Fail() const {
    const int error = errno;
    throw FileError("cannot write " + PathToUtf8(path_) + ": " + Reason(error) + ". " + std::string(Advice(error)) +
                    ". What is there has not been changed");
  }

  std::filesystem::path Name(int backup) const { return target_.native() + ".bak" + std::to_string(backup); }

  bool FindOld(struct stat& old) {
    if (calls_.Stat(target_, old) != 0) {
      if (errno != ENOENT) Fail();
      return false;
    }
    if (!S_ISREG(old.st_mode)) {
      errno = S_ISDIR(old.st_mode) ? EISDIR : EINVAL;
      Fail();
    }
    if (calls_.AccessForWriting(target_) != 0) Fail();
    if (options_.seen != nullptr && *options_.seen != StampFrom(old)) {
      throw FileError("cannot write " + PathToUtf8(path_) +
                      ": another program has changed it since it was opened here. Save under another name, so that "
                      "both versions are there, and compare them. What is there has not been changed");
    }
    return true;
  }

  // Only the superuser may give files away. Who cannot keeps the group at least, or, where that fails too, what the
  // file's own mode allows to all.
  void TakeOver(const SideFile& fresh, const struct stat& old) {
    struct stat now = {};
    mode_t mode = old.st_mode & 07777;
    if (calls_.Stat(fresh.name(), now) != 0) Fail();
    if (now.st_uid != old.st_uid || now.st_gid != old.st_gid) {
      if (calls_.ChangeOwner(fresh.file(), old.st_uid, old.st_gid) != 0) {
        if (errno != EPERM) Fail();
        if (calls_.ChangeOwner(fresh.file(), static_cast<uid_t>(-1), old.st_gid) != 0) {
          if (errno != EPERM) Fail();
          mode &= ~static_cast<mode_t>(S_IRWXG | S_ISUID | S_ISGID);
        }
      }
    }
    if (calls_.ChangeMode(fresh.file(), mode) != 0) Fail();
  }

  // The old file gets a second name; on disks that know no such thing, a copy.
  std::optional<std::string> KeepOld(const struct stat& old) {
    const std::filesystem::path pending = Name(0);
    struct stat there = {};
    if (calls_.Stat(pending, there) == 0) {
      // From a replacement that was cut off: this very version, or the one before.
      if (there.st_dev == old.st_dev && there.st_ino == old.st_ino) {
        pending_ = pending;
        return std::nullopt;
      }
      if (auto why = MoveUp(pending)) return why;
    }
    if (calls_.Link(target_, pending) != 0 && !Copy(old, pending)) Fail();
    pending_ = pending;
    return std::nullopt;
  }

  bool Copy(const struct stat& old, const std::filesystem::path& to) {
    SideFile copy(target_, calls_);
    if (!copy.isOpen()) return false;
    const int from = calls_.Open(target_, O_RDONLY);
    if (from < 0) return false;
    const bool isCopied = calls_.ChangeMode(copy.file(), old.st_mode & 0777) == 0 && CopyBytes(from, copy) &&
                          calls_.Sync(copy.file()) == 0 && copy.RenameTo(to);
    const int error = errno;
    calls_.Close(from);
    errno = error;
    return isCopied;
  }

  bool CopyBytes(int from, SideFile& to) {
    std::array<char, kBlock> block;
    for (;;) {
      const ssize_t count = calls_.Read(from, block.data(), block.size());
      if (count < 0 && errno == EINTR) continue;
      if (count <= 0) return count == 0;
      if (!to.Write({block.data(), static_cast<std::size_t>(count)})) return false;
    }
  }

  // Every backup takes the next number, and `newest` becomes the first.
  std::optional<std::string> MoveUp(const std::filesystem::path& newest) {
    for (int number = options_.backups - 1; number >= 1; --number) {
      if (calls_.Rename(Name(number), Name(number + 1)) != 0 && errno != ENOENT) return Warning();
    }
    if (calls_.Rename(newest, Name(1)) != 0) return Warning();
    return std::nullopt;
  }

  std::string Warning() const {
    return "saved " + PathToUtf8(path_) + ", but the former versions could not be moved up from " +
           PathToUtf8(Name(0)) + ": " + Reason(errno);
  }

  // The new name is an entry of the folder, which reaches the disk by itself. Nothing more can be done in a folder that
  // may not be read, or on a disk that syncs no folders.
  int SyncFolder() {
    const int folder = calls_.Open(target_.parent_path(), O_RDONLY | O_DIRECTORY);
    if (folder < 0) return errno == EACCES ? 0 : errno;
    const int error = calls_.Sync(folder) == 0 || errno == EINVAL ? 0 : errno;
    calls_.Close(folder);
    return error;
  }

  const std::filesystem::path& path_;
  const ReplaceOptions& options_;
  FileCalls& calls_;
  std::filesystem::path target_;
  std::string pending_;  // the former version, as long as a failure must take it away again
};

}  // namespace

std::optional<FileStamp> StampOf(const std::filesystem::path& path) {
  struct stat status = {};
  if (FileCalls().Stat(path, status) != 0) return std::nullopt;
  return StampFrom(status);
}

std::optional<std::string> ReplaceFileKeeping(const std::filesystem::path& path, std::string_view content,
                                              const ReplaceOptions& options, FileCalls& calls) {
  return Replacement(path, options, calls).Run(content);
}

void ReplaceFile(const std::filesystem::path& path, std::string_view content) {
  FileCalls calls;
  ReplaceFileKeeping(path, content, {}, calls);
}

}  // namespace tolvane::platform
