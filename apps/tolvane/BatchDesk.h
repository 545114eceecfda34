#pragma once

#include "hosts/shell/Desk.h"
#include "platform/Settings.h"

namespace tolvane::app {

// The surroundings of a command that runs without asking: messages go to standard error and are answered by their
// default button, no file is chosen, no form is filled in. The clock, files and settings are the machine's.
class BatchDesk final : public shell::Desk {
 public:
  host::MessageResult MsgBox(std::string_view text, int style, std::string_view title) override;
  void ShowForm(host::Form& form) override;
  host::CommandBarControl ShowPopup(const host::CommandBar& popup) override;
  std::optional<std::string> GetOpenFilename(const host::FileQuestion& question) override;
  std::optional<std::string> GetSaveAsFilename(const host::FileQuestion& question) override;
  std::optional<int> PeekKey() override;
  bool EscPressed() override;
  double Now() const override;
  std::optional<std::string> Setting(std::string_view application, std::string_view section,
                                     std::string_view key) const override;
  void SaveSetting(std::string_view application, std::string_view section, std::string_view key,
                   std::string_view value) override;
  void OpenBrowser(std::string_view address) override;
  void ShowHelp(std::string_view file, int topic) override;
  std::optional<std::string> HttpGet(std::string_view address) override;
  std::optional<host::Picture> LoadPicture(std::string_view name) const override;
  bool FileExists(std::string_view path) const override;
  std::string ReadFile(std::string_view path) const override;
  void AppendLine(std::string_view path, std::string_view line) override;
};

}  // namespace tolvane::app
