#pragma once

#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace tolvane::platform {

// What programs remember for their user: texts by application, section and key. Names are equal ignoring case. All
// texts are UTF-8 (std::invalid_argument) and may hold any character. Stores may be used by several threads at once.
class Settings {
 public:
  virtual ~Settings() = default;

  // Nothing when there is no such setting.
  virtual std::optional<std::string> Find(std::string_view application, std::string_view section,
                                          std::string_view key) const = 0;
  std::string Get(std::string_view application, std::string_view section, std::string_view key,
                  std::string_view defaultValue) const {
    return Find(application, section, key).value_or(std::string(defaultValue));
  }
  virtual void Set(std::string_view application, std::string_view section, std::string_view key,
                   std::string_view value) = 0;
  // Whether there was such a setting.
  virtual bool Remove(std::string_view application, std::string_view section, std::string_view key) = 0;
};

class MemorySettings final : public Settings {
 public:
  std::optional<std::string> Find(std::string_view application, std::string_view section,
                                  std::string_view key) const override;
  void Set(std::string_view application, std::string_view section, std::string_view key,
           std::string_view value) override;
  bool Remove(std::string_view application, std::string_view section, std::string_view key) override;

 private:
  mutable std::mutex mutex_;
  std::unordered_map<std::string, std::string> values_;
};

// $XDG_CONFIG_HOME/tolvane/settings.ini, or below ~/.config where that is not set to an absolute path; on Windows below
// %APPDATA%. Throws FileError where none of them is.
std::filesystem::path UserSettingsFile();

// A text file, which several programs may use at once:
//
//   [application/section]
//   key=value
//
// Backslash escapes \\, \n and \xHH (a byte) stand for what would be read otherwise: control characters, spaces at the
// ends, in names also = / [ ] ; #. Lines that say nothing stay as they are: comments (; or #), broken lines, and all
// after a broken [heading] up to the next. Of a setting that is there twice, the last counts.
//
// Without the file all is at its default. Set makes the file and its folder. All functions throw FileError where the
// file cannot be read or written; it is as it was then.
class FileSettings final : public Settings {
 public:
  explicit FileSettings(std::filesystem::path file);
  ~FileSettings() override;

  std::optional<std::string> Find(std::string_view application, std::string_view section,
                                  std::string_view key) const override;
  void Set(std::string_view application, std::string_view section, std::string_view key,
           std::string_view value) override;
  bool Remove(std::string_view application, std::string_view section, std::string_view key) override;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace tolvane::platform
