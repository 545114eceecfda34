#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "hosts/shell/Desk.h"
#include "src/host/Gate.h"
#include "src/host/User.h"

namespace tolvane::shell {

// The port's user over a desk, and what of it the program itself knows: its clipboard, its cancel key, its forms.
class User final : public host::UserBody {
 public:
  struct Surroundings {
    std::shared_ptr<host::Gate> gate;  // shared: dead handles still pass it
    Desk& desk;                        // lives until Close
    std::function<bool()> clipboardHasText;
    std::function<std::string()> clipboardText;
    std::function<bool()> takeEsc;    // whether the program's cancel key went down since the last poll
    std::function<void()> formShown;  // around the outermost form: events wait in between
    std::function<void()> formGone;   // must not throw
  };
  explicit User(Surroundings surroundings) : around_(std::move(surroundings)) {}

  // The program ends: handles are dead.
  void Close() noexcept { open_ = false; }
  // How many forms are up, each over the one before.
  int FormDepth() const noexcept { return formDepth_; }

  bool IsAlive() const noexcept override { return open_; }
  host::Gate& gate() const noexcept override { return *around_.gate; }

  host::MessageResult MsgBox(std::string_view text, int style, std::string_view title) override;
  void ShowForm(host::Form& form) override;
  std::optional<std::string> GetOpenFilename(const host::FileQuestion& question) override;
  std::optional<std::string> GetSaveAsFilename(const host::FileQuestion& question) override;
  std::optional<int> PeekKey() override;
  bool EscPressed() override;
  bool ClipboardHasText() const override;
  std::string ClipboardText() const override;  // without a text: ApplicationDefined
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

 private:
  Surroundings around_;
  bool open_ = true;
  int formDepth_ = 0;
};

}  // namespace tolvane::shell
