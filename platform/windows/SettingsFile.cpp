#include "platform/SettingsFile.h"

#include <cstdlib>

#include "platform/Files.h"
#include "platform/Settings.h"
#include "platform/windows/Handle.h"

namespace tolvane::platform {
namespace {

constexpr DWORD kLockPause = 10;  // milliseconds
constexpr int kLockAttempts = 500;

}  // namespace

// Folders cannot be locked here: a file beside the settings is, which nobody else can open as long as it is open, and
// which goes when it is closed, also when the program dies.
FolderLock::FolderLock(const std::filesystem::path& folder) {
  const std::filesystem::path name = folder / L"settings.lock";
  for (int attempt = 0;; ++attempt) {
    FileHandle file(CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                                FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
    if (file.IsOpen()) {
      handle_ = reinterpret_cast<std::intptr_t>(file.Release());
      return;
    }
    // While the one before us is being deleted, opening is denied rather than in conflict.
    const DWORD error = GetLastError();
    const bool mayPass = error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED;
    if (!mayPass || attempt == kLockAttempts) {
      throw FileError("cannot lock the settings folder " + PathToUtf8(folder) + ": " +
                      std::system_category().message(static_cast<int>(error)));
    }
    Sleep(kLockPause);
  }
}

FolderLock::~FolderLock() {
  CloseHandle(reinterpret_cast<HANDLE>(handle_));
}

std::optional<FileVersion> VersionOf(const std::filesystem::path& file) {
  const FileHandle opened(CreateFileW(file.c_str(), FILE_READ_ATTRIBUTES,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!opened.IsOpen()) {
    const DWORD error = GetLastError();
    if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND) return std::nullopt;
    throw FileError("cannot read " + PathToUtf8(file) + ": " + std::system_category().message(static_cast<int>(error)));
  }
  BY_HANDLE_FILE_INFORMATION status = {};
  if (GetFileInformationByHandle(opened.Get(), &status) == 0) {
    throw FileError("cannot read " + PathToUtf8(file) + ": " + LastErrorText());
  }
  const auto joined = [](DWORD high, DWORD low) { return static_cast<std::uint64_t>(high) << 32 | low; };
  return FileVersion{status.dwVolumeSerialNumber, joined(status.nFileIndexHigh, status.nFileIndexLow),
                     joined(status.nFileSizeHigh, status.nFileSizeLow),
                     joined(status.ftLastWriteTime.dwHighDateTime, status.ftLastWriteTime.dwLowDateTime), 0};
}

std::filesystem::path UserSettingsFile() {
  const wchar_t* const applicationData = _wgetenv(L"APPDATA");
  if (applicationData == nullptr || !std::filesystem::path(applicationData).is_absolute()) {
    throw FileError("there is no place for settings: APPDATA is not an absolute path");
  }
  return std::filesystem::path(applicationData) / L"tolvane" / L"settings.ini";
}

}  // namespace tolvane::platform
