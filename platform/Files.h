#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tolvane::platform {

// What went wrong with which file: "cannot read /home/ann/sheet.txt: No such file or directory".
class FileError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Texts name files in UTF-8 on every system.
std::filesystem::path PathFromUtf8(std::string_view path);
std::string PathToUtf8(const std::filesystem::path& path);

// Whether something is there that is no folder. A place that may not be looked at holds no file.
bool FileExists(const std::filesystem::path& path) noexcept;

// The bytes of a regular file; pipes and devices, which may never end, are refused. Throws FileError.
std::string ReadFile(const std::filesystem::path& path);

// Adds the line and a line feed to the end of the file, which is made if need be, in one write: lines that several
// programs append do not mix. Throws FileError.
void AppendLine(const std::filesystem::path& path, std::string_view line);

// Gives the file new content, which is on the disk when this returns. Whoever reads, and whatever fails, sees the old
// content or the new, never a part. A symbolic link keeps pointing where it does. Throws FileError.
void ReplaceFile(const std::filesystem::path& path, std::string_view content);

}  // namespace tolvane::platform
