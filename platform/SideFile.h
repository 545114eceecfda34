#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/FileCalls.h"

namespace tolvane::platform {

// A new, hidden file beside another one, ".~save.NAME#XXXXXX", for its owner only. It goes with this object unless it
// was given another name. A process that is killed leaves it; RemoveLeftovers tells such a file from one in use by the
// system's lock on it, which ends with its process.
class SideFile {
 public:
  SideFile(const std::filesystem::path& target, FileCalls& calls);
  ~SideFile();
  SideFile(const SideFile&) = delete;
  SideFile& operator=(const SideFile&) = delete;

  bool isOpen() const { return file_ >= 0; }  // errno tells why not, right after the constructor
  int file() const { return file_; }
  const std::string& name() const { return name_; }

  // False with errno set.
  bool Write(std::string_view bytes);
  bool RenameTo(const std::filesystem::path& name);

 private:
  FileCalls& calls_;
  std::string name_;
  int file_ = -1;
  bool hasName_ = false;
};

// Removes the side files of `target` whose processes are gone. What cannot be removed stays.
void RemoveLeftovers(const std::filesystem::path& target, FileCalls& calls);

// The file at the end of a chain of symbolic links; it need not be there. Empty with errno set where that cannot be
// told.
std::filesystem::path AtEndOfLinks(const std::filesystem::path& path, FileCalls& calls);

}  // namespace tolvane::platform
