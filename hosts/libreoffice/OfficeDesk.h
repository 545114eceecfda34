#pragma once

#include <com/sun/star/uno/XComponentContext.hpp>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "hosts/libreoffice/CalcHost.h"
#include "hosts/libreoffice/Uno.h"
#include "hosts/libreoffice/dialogs/FormDialogs.h"
#include "hosts/shell/Desk.h"
#include "platform/Settings.h"

namespace tolvane::libreoffice {

// The person in front of the office and the machine around it: the office's own message boxes and file dialogs, the
// system's clock, the user's settings and files. Waiting keys and help are not offered yet: they fail with
// ApplicationDefined, or say that there is nothing.
class OfficeDesk final : public shell::Desk {
 public:
  explicit OfficeDesk(const Reference<css::uno::XComponentContext>& context);

  host::MessageResult MsgBox(std::string_view text, int style, std::string_view title) override;
  void ShowForm(host::Form& form) override;
  host::CommandBarControl ShowPopup(const host::CommandBar& popup) override;
  std::optional<std::string> GetOpenFilename(const host::FileQuestion& question) override;
  std::optional<std::string> GetSaveAsFilename(const host::FileQuestion& question) override;
  std::optional<int> PeekKey() override { return std::nullopt; }
  bool EscPressed() override { return false; }
  double Now() const override;
  std::optional<std::string> Setting(std::string_view application, std::string_view section,
                                     std::string_view key) const override;
  void SaveSetting(std::string_view application, std::string_view section, std::string_view key,
                   std::string_view value) override;
  void OpenBrowser(std::string_view address) override;
  void ShowHelp(std::string_view file, int topic) override;
  std::optional<std::string> HttpGet(std::string_view address) override;
  std::optional<host::Picture> LoadPicture(std::string_view) const override { return std::nullopt; }
  bool FileExists(std::string_view path) const override;
  std::string ReadFile(std::string_view path) const override;
  void AppendLine(std::string_view path, std::string_view line) override;

 private:
  std::optional<std::string> AskForFile(const host::FileQuestion& question, bool save);

  Reference<css::uno::XComponentContext> context_;
  FormDialogs forms_;
  platform::FileSettings settings_;
};

// The host with the desk that it asks.
class OfficeHost {
 public:
  explicit OfficeHost(const Reference<css::uno::XComponentContext>& context);
  CalcHost& calc() { return calc_; }

 private:
  OfficeDesk desk_;
  CalcHost calc_;
};

// Keeps the host until the office's desktop goes.
void KeepUntilTermination(const Reference<css::uno::XComponentContext>& context, std::shared_ptr<OfficeHost> host);

}  // namespace tolvane::libreoffice
