#pragma once

#include <unistd.h>

#include <utility>

namespace tolvane::platform {

// Owns a POSIX file descriptor; a negative one is none. For the sources of this folder only: other systems have none.
class FileDescriptor {
 public:
  explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
  ~FileDescriptor() {
    if (IsOpen()) ::close(descriptor_);
  }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;

  bool IsOpen() const { return descriptor_ >= 0; }
  int Get() const { return descriptor_; }
  int Release() { return std::exchange(descriptor_, -1); }

 private:
  int descriptor_;
};

}  // namespace tolvane::platform
