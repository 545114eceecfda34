#pragma once

#include <windows.h>

#include <string>
#include <system_error>

// Windows' macro of this name would rename our function.
#undef ReplaceFile

namespace tolvane::platform {

// Owns a Windows handle of a file. For the sources of this folder only.
class FileHandle {
 public:
  explicit FileHandle(HANDLE handle) : handle_(handle) {}
  ~FileHandle() { Close(); }
  FileHandle(const FileHandle&) = delete;
  FileHandle& operator=(const FileHandle&) = delete;

  bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE Get() const { return handle_; }
  void Close() {
    if (IsOpen()) CloseHandle(handle_);
    handle_ = INVALID_HANDLE_VALUE;
  }
  HANDLE Release() {
    const HANDLE handle = handle_;
    handle_ = INVALID_HANDLE_VALUE;
    return handle;
  }

 private:
  HANDLE handle_;
};

inline std::string LastErrorText() {
  return std::system_category().message(static_cast<int>(GetLastError()));
}

}  // namespace tolvane::platform
