#include "platform/Files.h"

#include <algorithm>
#include <array>

#include "platform/windows/Handle.h"

namespace tolvane::platform {
namespace {

constexpr std::size_t kReadBlock = 64 * 1024;
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

[[noreturn]] void Fail(std::string_view action, const std::filesystem::path& path, std::string_view reason) {
  throw FileError("cannot " + std::string(action) + " " + PathToUtf8(path) + ": " + std::string(reason));
}

void WriteAll(const FileHandle& file, const std::filesystem::path& path, std::string_view bytes) {
  constexpr std::size_t kMostAtOnce = std::size_t{1} << 30;
  while (!bytes.empty()) {
    DWORD written = 0;
    const auto size = static_cast<DWORD>(std::min(bytes.size(), kMostAtOnce));
    if (WriteFile(file.Get(), bytes.data(), size, &written, nullptr) == 0) Fail("write to", path, LastErrorText());
    bytes.remove_prefix(written);
  }
}

}  // namespace

std::string ReadFile(const std::filesystem::path& path) {
  std::error_code error;
  if (std::filesystem::is_directory(path, error)) Fail("read", path, "it is a folder");
  const FileHandle file(
      CreateFileW(path.c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.IsOpen()) Fail("read", path, LastErrorText());
  if (GetFileType(file.Get()) != FILE_TYPE_DISK) Fail("read", path, "it is a pipe or device");

  std::string content;
  std::array<char, kReadBlock> block;
  for (;;) {
    DWORD count = 0;
    if (::ReadFile(file.Get(), block.data(), static_cast<DWORD>(block.size()), &count, nullptr) == 0) {
      Fail("read", path, LastErrorText());
    }
    if (count == 0) return content;
    content.append(block.data(), count);
  }
}

void AppendLine(const std::filesystem::path& path, std::string_view line) {
  // This access right alone makes every write an addition to the end.
  const FileHandle file(CreateFileW(path.c_str(), FILE_APPEND_DATA | SYNCHRONIZE, kShareAll, nullptr, OPEN_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.IsOpen()) Fail("write to", path, LastErrorText());
  std::string bytes(line);
  bytes.push_back('\n');
  WriteAll(file, path, bytes);
}

void ReplaceFile(const std::filesystem::path& path, std::string_view content) {
  std::error_code error;
  const std::filesystem::path target = std::filesystem::weakly_canonical(path, error);
  if (error) Fail("replace", path, error.message());
  std::filesystem::path fresh = target;
  fresh += L".new" + std::to_wstring(GetCurrentProcessId());
  FileHandle file(CreateFileW(fresh.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.IsOpen()) Fail("replace", path, LastErrorText());
  try {
    WriteAll(file, path, content);
    if (FlushFileBuffers(file.Get()) == 0) Fail("replace", path, LastErrorText());
    file.Close();
    if (MoveFileExW(fresh.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) == 0) {
      Fail("replace", path, LastErrorText());
    }
  } catch (...) {
    file.Close();
    DeleteFileW(fresh.c_str());
    throw;
  }
}

}  // namespace tolvane::platform
