#pragma once

#include <filesystem>
#include <string>

#include "engine/xlsx/XlsxError.h"
#include "platform/Files.h"

namespace tolvane::engine {

// Somebody else has the book open.
class BookLocked : public XlsxError {
 public:
  using XlsxError::XlsxError;
};

// No lock can be written beside the book, as in a folder that may not be written to. Nobody has it open.
class LockNotWritten : public platform::FileError {
 public:
  using platform::FileError::FileError;
};

// Who holds a lock, as the lock file tells it.
struct LockHolder {
  std::string name;  // of the person; may be empty
  std::string systemUser;
  std::string host;
  std::string since;    // "05.03.2024 12:30"
  std::string program;  // where its settings are, for LibreOffice; for us, which process it is
};

// What a lock needs to know of the system that it runs on.
class LockWorld {
 public:
  virtual ~LockWorld() = default;
  virtual LockHolder Self() = 0;
  // Whether the process that holds the lock may still run; the holder is the same user on the same host. True where
  // that cannot be told.
  virtual bool IsRunning(const LockHolder& holder) = 0;
};

// This process on this machine. A process of ours tells its number, its start, the system's start and the space of its
// number; of LibreOffice it is enough that none runs, or that the system was started after the lock was written.
class SystemLockWorld : public LockWorld {
 public:
  LockHolder Self() override;
  bool IsRunning(const LockHolder& holder) override;
};

// Marks a book as open by a file beside it, ".~lock.NAME#", that LibreOffice writes and honours too; where the path is
// a symbolic link, beside the file that it leads to. It goes when this does. Throws BookLocked, telling who has the
// book open, since when, and how to go on; a lock whose holder, the same user on the same host, no longer runs is taken
// over. Throws LockNotWritten.
class BookLock {
 public:
  BookLock(const std::string& bookPath, LockWorld& world);
  ~BookLock();
  BookLock(const BookLock&) = delete;
  BookLock& operator=(const BookLock&) = delete;

 private:
  std::filesystem::path path_;
  std::string content_;
};

std::filesystem::path LockPathOf(const std::filesystem::path& book);
std::string LockText(const LockHolder& holder);
LockHolder ReadLockText(std::string_view text);

}  // namespace tolvane::engine
