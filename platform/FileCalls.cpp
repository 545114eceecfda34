#include "platform/FileCalls.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace tolvane::platform {

ssize_t FileCalls::ReadLink(const std::filesystem::path& path, char* to, std::size_t most) {
  return ::readlink(path.c_str(), to, most);
}
int FileCalls::Stat(const std::filesystem::path& path, struct stat& status) {
  return ::stat(path.c_str(), &status);
}
int FileCalls::AccessForWriting(const std::filesystem::path& path) {
  return ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS);
}
int FileCalls::MakeTemporary(std::string& name) {
  return ::mkostemp(name.data(), O_CLOEXEC);
}
int FileCalls::Open(const std::filesystem::path& path, int flags) {
  return ::open(path.c_str(), flags | O_CLOEXEC);
}
ssize_t FileCalls::Read(int file, char* to, std::size_t most) {
  return ::read(file, to, most);
}
ssize_t FileCalls::Write(int file, const char* bytes, std::size_t count) {
  return ::write(file, bytes, count);
}
int FileCalls::ChangeMode(int file, mode_t mode) {
  return ::fchmod(file, mode);
}
int FileCalls::ChangeOwner(int file, uid_t user, gid_t group) {
  return ::fchown(file, user, group);
}
int FileCalls::TryLock(int file) {
  return ::flock(file, LOCK_EX | LOCK_NB);
}
int FileCalls::Sync(int file) {
  return ::fsync(file);
}
int FileCalls::Close(int file) {
  return ::close(file);
}
int FileCalls::Link(const std::filesystem::path& from, const std::filesystem::path& to) {
  return ::link(from.c_str(), to.c_str());
}
int FileCalls::Rename(const std::filesystem::path& from, const std::filesystem::path& to) {
  return std::rename(from.c_str(), to.c_str());
}
int FileCalls::Unlink(const std::filesystem::path& path) {
  return ::unlink(path.c_str());
}

}  // namespace tolvane::platform
