#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>
#include <filesystem>
#include <string>

namespace tolvane::platform {

// The system calls by which a file is replaced, so that a test can let each of them fail. They behave as the system's:
// a negative result with errno set. For POSIX systems only.
class FileCalls {
 public:
  virtual ~FileCalls() = default;
  virtual ssize_t ReadLink(const std::filesystem::path& path, char* to, std::size_t most);
  virtual int Stat(const std::filesystem::path& path, struct stat& status);
  // Whether the file may be written to.
  virtual int AccessForWriting(const std::filesystem::path& path);
  virtual int MakeTemporary(std::string& name);  // name ends with XXXXXX, which is filled in
  virtual int Open(const std::filesystem::path& path, int flags);
  virtual ssize_t Read(int file, char* to, std::size_t most);
  virtual ssize_t Write(int file, const char* bytes, std::size_t count);
  virtual int ChangeMode(int file, mode_t mode);
  virtual int ChangeOwner(int file, uid_t user, gid_t group);
  // The lock of this opening alone, which ends when it is closed or its process ends. Does not wait.
  virtual int TryLock(int file);
  virtual int Sync(int file);
  virtual int Close(int file);
  virtual int Link(const std::filesystem::path& from, const std::filesystem::path& to);
  virtual int Rename(const std::filesystem::path& from, const std::filesystem::path& to);
  virtual int Unlink(const std::filesystem::path& path);
};

}  // namespace tolvane::platform
