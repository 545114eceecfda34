#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "src/host/CommandBars.h"
#include "src/host/Constants.h"
#include "src/host/Form.h"
#include "src/host/User.h"

namespace tolvane::shell {

// What a host asks of its surroundings: the person, or the script, who answers; the clock; the machine. A
// terminal, a scripted user and a test each bring their own.
class Desk {
 public:
  virtual ~Desk() = default;

  virtual host::MessageResult MsgBox(std::string_view text, int style, std::string_view title) = 0;
  virtual void ShowForm(host::Form& form) = 0;
  // The control that was chosen; Nothing when the popup was left.
  virtual host::CommandBarControl ShowPopup(const host::CommandBar& popup) = 0;
  virtual std::optional<std::string> GetOpenFilename(const host::FileQuestion& question) = 0;
  virtual std::optional<std::string> GetSaveAsFilename(const host::FileQuestion& question) = 0;
  virtual std::optional<int> PeekKey() = 0;
  virtual bool EscPressed() = 0;
  virtual double Now() const = 0;
  virtual std::optional<std::string> Setting(std::string_view application, std::string_view section,
                                             std::string_view key) const = 0;
  virtual void SaveSetting(std::string_view application, std::string_view section, std::string_view key,
                           std::string_view value) = 0;
  virtual void OpenBrowser(std::string_view address) = 0;
  virtual void ShowHelp(std::string_view file, int topic) = 0;
  virtual std::optional<std::string> HttpGet(std::string_view address) = 0;
  virtual std::optional<host::Picture> LoadPicture(std::string_view name) const = 0;
  virtual bool FileExists(std::string_view path) const = 0;
  virtual std::string ReadFile(std::string_view path) const = 0;
  virtual void AppendLine(std::string_view path, std::string_view line) = 0;
};

}  // namespace tolvane::shell
