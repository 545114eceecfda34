#pragma once

#include <memory>
#include <utility>

#include "hosts/embedded/Program.h"
#include "src/host/Application.h"

namespace tolvane::shell {
class CommandBars;
}  // namespace tolvane::shell

namespace tolvane::embedded {

class EmbeddedApplication final : public host::ApplicationBody {
 public:
  struct Parts {
    std::shared_ptr<Program> program;
    std::shared_ptr<shell::CommandBars> commandBars;
    std::shared_ptr<host::UserBody> user;
  };
  explicit EmbeddedApplication(Parts parts) : program_(std::move(parts.program)), parts_(std::move(parts)) {}

  bool IsAlive() const noexcept override { return !program_->hasEnded(); }
  host::Gate& gate() const noexcept override { return *program_->gate; }

  std::string Version() const override { return program_->options.version; }
  std::string Caption() const override { return program_->options.caption; }
  std::string StatusBar() const override { return settings().statusBar.value_or(""); }
  void SetStatusBar(const std::optional<std::string>& text) override { settings().statusBar = text; }
  bool ScreenUpdating() const override { return settings().screenUpdating; }
  void SetScreenUpdating(bool on) override { settings().screenUpdating = on; }
  bool EnableEvents() const override { return settings().enableEvents; }
  void SetEnableEvents(bool on) override { settings().enableEvents = on; }
  bool DisplayAlerts() const override { return settings().displayAlerts; }
  void SetDisplayAlerts(bool on) override { settings().displayAlerts = on; }
  host::Cursor Cursor() const override { return settings().cursor; }
  void SetCursor(host::Cursor cursor) override { settings().cursor = cursor; }
  host::CancelKey EnableCancelKey() const override { return program_->cancelKey.mode; }
  void SetEnableCancelKey(host::CancelKey mode) override { program_->cancelKey.mode = mode; }
  host::Calculation Calculation() const override { return settings().calculation; }
  void SetCalculation(host::Calculation mode) override;
  host::ReferenceStyle ReferenceStyle() const override { return settings().referenceStyle; }
  void SetReferenceStyle(host::ReferenceStyle style) override { settings().referenceStyle = style; }
  host::CutCopyMode CutCopyMode() const override { return program_->clipboard.mode(); }
  void EndCutCopyMode() override { program_->clipboard.EndMode(); }

  std::vector<host::Workbook> WorkbooksAll() const override;
  host::Workbook WorkbookNamed(std::string_view name) const override;
  host::Workbook WorkbooksOpen(std::string_view path) override;
  host::Workbook WorkbooksAdd(const std::optional<std::string>& templatePath) override;
  host::Workbook ActiveWorkbook() const override;
  host::Worksheet ActiveSheet() const override;
  host::Range ActiveCell() const override;
  host::Window ActiveWindow() const override;
  host::Workbook ThisWorkbook() const override;
  bool SelectionIsRange() const override { return program_->activeSheet() != nullptr; }
  host::Range SelectionRange() const override;
  void SelectionCopy() override;
  void SelectionCut() override;

  host::Range Intersect(std::span<const host::Range> ranges) const override;
  host::Range Union(std::span<const host::Range> ranges) const override;
  host::CommandBars CommandBars() const override;
  void OnKey(std::string_view key, const std::optional<std::string>& macro) override;
  void SendKeys(std::string_view keys) override;
  host::CellValue Run(std::string_view macro) override { return program_->RunMacro(macro); }
  void OnUndo(std::string_view caption, std::string_view macro) override;
  void OnRepeat(std::string_view caption, std::string_view macro) override;
  host::Subscription Advise(host::ApplicationEvents& listener) override { return program_->events.Advise(listener); }
  host::User User() const override { return host::User(parts_.user); }

 private:
  Program::Settings& settings() const { return program_->settings; }

  std::shared_ptr<Program> program_;
  Parts parts_;
};

}  // namespace tolvane::embedded
