#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "engine/xlsx/XlsxError.h"

namespace tolvane::engine {

// Somebody else has the book open.
class BookLocked : public XlsxError {
 public:
  using XlsxError::XlsxError;
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
  // Whether the process that a holder's `program` tells still runs on this host.
  virtual bool IsRunning(const LockHolder& holder) = 0;
};

// This process on this machine.
class SystemLockWorld : public LockWorld {
 public:
  LockHolder Self() override;
  bool IsRunning(const LockHolder& holder) override;
};

// Marks a book as open by a file beside it, ".~lock.NAME#", that LibreOffice writes and honours too. It goes when this
// does. Throws BookLocked, telling who has the book open; a lock whose holder, the same user on the same host, no
// longer runs is taken over. Throws platform::FileError where no lock can be written.
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
