#include "platform/Settings.h"

#include <optional>
#include <system_error>

#include "platform/Files.h"
#include "platform/SettingsFile.h"
#include "platform/SettingsText.h"

namespace tolvane::platform {
namespace {

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
