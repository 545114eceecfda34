#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "hosts/embedded/EmbeddedWorksheet.h"
#include "hosts/embedded/Program.h"
#include "hosts/shell/Keys.h"
#include "src/host/UserActions.h"

namespace tolvane::shell {
class CommandBars;
class Ribbon;
}  // namespace tolvane::shell

namespace tolvane::embedded {

// The user of the embedded host: goes through the same doors as the program does, but may do less.
class EmbeddedUserActions final : public host::UserActions {
 public:
  struct Parts {
    std::shared_ptr<Program> program;
    std::shared_ptr<shell::CommandBars> commandBars;
    std::shared_ptr<shell::Keys> keys;
    // Null while no ribbon is loaded.
    std::function<std::shared_ptr<shell::Ribbon>()> ribbon;
  };
  explicit EmbeddedUserActions(Parts parts) : program_(*parts.program), parts_(std::move(parts)) {}

  void ActivateWorkbook(const host::Workbook& book) override;
  void ActivateSheet(const host::Worksheet& sheet) override;
  void Select(const host::Range& range) override;
  void Type(const host::Range& cell, std::string_view text, bool asText) override;
  void PressDelete(const host::Range& range) override;
  void DoubleClick(const host::Range& cell) override;
  void RightClick(const host::Range& cell) override;
  void PressKey(std::string_view key) override;
  void ClickControl(const host::CommandBarControl& control) override;
  void ClickRibbonControl(std::string_view id) override;
  void ClickRibbonCommand(std::string_view id) override;
  void PressCalculate() override;
  bool PressUndo() override;
  std::string UndoCaption() const override;
  bool Print(const host::Workbook& book) override;
  bool Save(const host::Workbook& book) override;
  bool Close(const host::Workbook& book) override;
  void InstallAddin(const host::Workbook& addin, bool install) override;
  void PutTextOnClipboard(std::string_view text) override;
  void PressCancelKey(int callsFromNow) override;

  void Press(const shell::KeyStroke& key);

 private:
  bool SaveWithDialog(EmbeddedWorkbook& book);

  Program& program_;
  Parts parts_;
};

}  // namespace tolvane::embedded
