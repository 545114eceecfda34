#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "hosts/shell/KeyNotation.h"
#include "hosts/shell/Session.h"
#include "src/host/UserActions.h"

namespace tolvane::shell {

class CommandBars;
class Ribbon;

// The user of a host: goes through the same doors as the program does, but may do less. What is done to cells is the
// host's own.
class UserActions : public host::UserActions {
 public:
  struct Parts {
    std::shared_ptr<Session> session;
    std::shared_ptr<CommandBars> commandBars;
    // Null while no ribbon is loaded.
    std::function<std::shared_ptr<Ribbon>()> ribbon;
  };
  explicit UserActions(Parts parts) : parts_(std::move(parts)) {}

  void ActivateWorkbook(const host::Workbook& book) final;
  void PressKey(std::string_view key) final { Press(ParseKey(key)); }
  void ClickControl(const host::CommandBarControl& control) final;
  void ClickRibbonControl(std::string_view id) final;
  void ClickRibbonCommand(std::string_view id) final;
  void PressCalculate() final { session().Recalculate(); }
  bool PressUndo() final;
  std::string UndoCaption() const final;
  bool Print(const host::Workbook& book) final;
  bool Save(const host::Workbook& book) final;
  bool Close(const host::Workbook& book) final;
  void InstallAddin(const host::Workbook& addin, bool install) final;
  void PressCancelKey(int callsFromNow) final;

  void Press(const KeyStroke& key);

 protected:
  // True when a handler cancelled what the program does next.
  bool AskBeforeDoubleClick(const host::Worksheet& sheet, const host::Range& target);
  bool AskBeforeRightClick(const host::Worksheet& sheet, const host::Range& target);
  // Where the mouse and the keys may go on a protected sheet. `lockedPlace` names locked cells among those meant.
  static void RequireSelectable(const host::WorksheetBody& sheet,
                                const std::function<std::optional<std::string>()>& lockedPlace);

 private:
  Session& session() const { return *parts_.session; }
  bool SaveWithDialog(Book& book);

  Parts parts_;
};

}  // namespace tolvane::shell
