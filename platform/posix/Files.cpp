#include "platform/Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

#include "platform/posix/FileDescriptor.h"

namespace tolvane::platform {
namespace {

constexpr std::size_t kReadBlock = 64 * 1024;

[[noreturn]] void Fail(std::string_view action, const std::filesystem::path& path, std::string_view reason) {
  throw FileError("cannot " + std::string(action) + " " + PathToUtf8(path) + ": " + std::string(reason));
}

[[noreturn]] void FailWithErrno(std::string_view action, const std::filesystem::path& path) {
  Fail(action, path, std::generic_category().message(errno));
}

// False with errno set where not all could be written.
bool WriteAll(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(file, bytes.data(), bytes.size());
    if (written < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

}  // namespace

std::string ReadFile(const std::filesystem::path& path) {
  // Opening a pipe that nobody writes to waits unless told not to.
  const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (!file.IsOpen()) FailWithErrno("read", path);
  struct stat status = {};
  if (::fstat(file.Get(), &status) != 0) FailWithErrno("read", path);
  if (S_ISDIR(status.st_mode)) Fail("read", path, "it is a folder");
  if (!S_ISREG(status.st_mode)) Fail("read", path, "it is a pipe or device");

  std::string content;
  content.reserve(static_cast<std::size_t>(status.st_size));
  std::array<char, kReadBlock> block;
  for (;;) {
    const ssize_t count = ::read(file.Get(), block.data(), block.size());
    if (count < 0) {
      if (errno == EINTR) continue;
      FailWithErrno("read", path);
    }
    if (count == 0) return content;
    content.append(block.data(), static_cast<std::size_t>(count));
  }
}

void AppendLine(const std::filesystem::path& path, std::string_view line) {
  const FileDescriptor file(::open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666));
  if (!file.IsOpen()) FailWithErrno("write to", path);
  std::string bytes(line);
  bytes.push_back('\n');
  if (!WriteAll(file.Get(), bytes)) FailWithErrno("write to", path);
}

}  // namespace tolvane::platform
