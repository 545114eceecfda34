#include "platform/Settings.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <optional>
#include <system_error>
#include <thread>
#include <tuple>

#include "platform/FileDescriptor.h"
#include "platform/Files.h"
#include "platform/SettingsText.h"

namespace tolvane::platform {
namespace {

constexpr std::chrono::milliseconds kLockPause(10);
constexpr int kLockAttempts = 500;  // five seconds: writing takes milliseconds

// Keeps other programs from changing the files of a folder between our reading and our writing. The lock is on the
// folder since the file itself is another one after each change.
class FolderLock {
 public:
  explicit FolderLock(const std::filesystem::path& folder)
      : folder_(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (!folder_.IsOpen()) Fail(folder, std::generic_category().message(errno));
    for (int attempt = 0; ::flock(folder_.Get(), LOCK_EX | LOCK_NB) != 0; ++attempt) {
      if (errno != EWOULDBLOCK && errno != EINTR) Fail(folder, std::generic_category().message(errno));
      if (attempt == kLockAttempts) Fail(folder, "another program does not let go of it");
      std::this_thread::sleep_for(kLockPause);
    }
  }

 private:
  [[noreturn]] static void Fail(const std::filesystem::path& folder, const std::string& reason) {
    throw FileError("cannot lock the settings folder " + PathToUtf8(folder) + ": " + reason);
  }

  FileDescriptor folder_;  // closing it gives the lock back
};

// Tells one content of the file from another: each change makes a new file.
using FileVersion = std::tuple<dev_t, ino_t, off_t, time_t, long>;

// Nothing where there is no file.
std::optional<FileVersion> VersionOf(const std::filesystem::path& file) {
  struct stat status = {};
  if (::stat(file.c_str(), &status) == 0) {
    return FileVersion(status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec);
  }
  if (errno == ENOENT || errno == ENOTDIR) return std::nullopt;
  throw FileError("cannot read " + PathToUtf8(file) + ": " + std::generic_category().message(errno));
}

std::optional<std::string> ValueOf(const std::unordered_map<std::string, std::string>& values,
                                   const SettingName& name) {
  const auto found = values.find(name.Id());
  return found == values.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace

std::optional<std::string> MemorySettings::Find(std::string_view application, std::string_view section,
                                                std::string_view key) const {
  const SettingName name(application, section, key);
  const std::lock_guard lock(mutex_);
  return ValueOf(values_, name);
}

void MemorySettings::Set(std::string_view application, std::string_view section, std::string_view key,
                         std::string_view value) {
  const SettingName name(application, section, key);
  RequireUtf8(value);
  const std::lock_guard lock(mutex_);
  values_[name.Id()] = value;
}

bool MemorySettings::Remove(std::string_view application, std::string_view section, std::string_view key) {
  const SettingName name(application, section, key);
  const std::lock_guard lock(mutex_);
  return values_.erase(name.Id()) > 0;
}

std::filesystem::path UserSettingsFile() {
  const char* const configHome = std::getenv("XDG_CONFIG_HOME");
  const char* const home = std::getenv("HOME");
  std::filesystem::path folder;
  // The XDG base directory rules: a relative path there is to be ignored.
  if (configHome != nullptr && std::filesystem::path(configHome).is_absolute()) {
    folder = configHome;
  } else if (home != nullptr && std::filesystem::path(home).is_absolute()) {
    folder = std::filesystem::path(home) / ".config";
  } else {
    throw FileError("there is no place for settings: neither XDG_CONFIG_HOME nor HOME is an absolute path");
  }
  return folder / "tolvane" / "settings.ini";
}

struct FileSettings::State {
  // The content may be newer than `version`, never older, so that a change between the two is read again.
  void Refresh() {
    const std::optional<FileVersion> current = VersionOf(file);
    if (isRead && current == version) return;
    values = current ? SettingsText(ReadFile(file)).Values() : std::unordered_map<std::string, std::string>();
    version = current;
    isRead = true;
  }

  // `edit` tells whether it has changed the text.
  template <typename Edit>
  bool Change(Edit edit) {
    const FolderLock lock(file.parent_path());
    SettingsText text(VersionOf(file) ? ReadFile(file) : std::string());
    if (!edit(text)) return false;
    ReplaceFile(file, text.ToText());
    return true;
  }

  const std::filesystem::path file;
  std::mutex mutex;
  std::unordered_map<std::string, std::string> values;
  std::optional<FileVersion> version;
  bool isRead = false;
};

FileSettings::FileSettings(std::filesystem::path file)
    : state_(new State{std::filesystem::absolute(file), {}, {}, {}, false}) {}

FileSettings::~FileSettings() = default;

std::optional<std::string> FileSettings::Find(std::string_view application, std::string_view section,
                                              std::string_view key) const {
  const SettingName name(application, section, key);
  const std::lock_guard lock(state_->mutex);
  state_->Refresh();
  return ValueOf(state_->values, name);
}

void FileSettings::Set(std::string_view application, std::string_view section, std::string_view key,
                       std::string_view value) {
  const SettingName name(application, section, key);
  RequireUtf8(value);
  const std::lock_guard lock(state_->mutex);
  const std::filesystem::path folder = state_->file.parent_path();
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) throw FileError("cannot make the folder " + PathToUtf8(folder) + ": " + error.message());
  state_->Change([&](SettingsText& text) { return text.Set(name, value); });
}

bool FileSettings::Remove(std::string_view application, std::string_view section, std::string_view key) {
  const SettingName name(application, section, key);
  const std::lock_guard lock(state_->mutex);
  if (!VersionOf(state_->file)) return false;
  return state_->Change([&](SettingsText& text) { return text.Remove(name); });
}

}  // namespace tolvane::platform
