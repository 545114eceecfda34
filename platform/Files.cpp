#include "platform/Files.h"

#include <system_error>

namespace tolvane::platform {

std::filesystem::path PathFromUtf8(std::string_view path) {
  return std::u8string(path.begin(), path.end());
}

std::string PathToUtf8(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

bool FileExists(const std::filesystem::path& path) noexcept {
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(path, error);
  return std::filesystem::exists(status) && !std::filesystem::is_directory(status);
}

}  // namespace tolvane::platform
