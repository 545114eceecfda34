#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tolvane::platform {

// A setting's names as the settings file has them: "[application/section]" and "key", escaped. Throws
// std::invalid_argument where one is not UTF-8.
struct SettingName {
  SettingName(std::string_view application, std::string_view section, std::string_view name);

  // Equal for names that are equal ignoring case, and for no others.
  std::string Id() const;

  std::string heading;
  std::string key;
};

void RequireUtf8(std::string_view value);

// The content of a settings file (see FileSettings), line by line, so that what is not understood is kept.
class SettingsText {
 public:
  explicit SettingsText(std::string_view text);

  // By SettingName::Id().
  std::unordered_map<std::string, std::string> Values() const;
  // Whether the text has changed by it.
  bool Set(const SettingName& name, std::string_view value);
  bool Remove(const SettingName& name);

  std::string ToText() const;

 private:
  struct Line {
    std::string text;
    std::string headingId;             // the heading this line is or stands below; empty below none or a broken one
    std::string settingId;             // empty for all but settings
    std::optional<std::string> value;  // of a setting
  };

  static Line ReadLine(std::string_view text, std::string_view headingId);

  std::vector<Line> lines_;
};

}  // namespace tolvane::platform
