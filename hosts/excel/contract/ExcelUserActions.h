#pragma once

#include "src/host/UserActions.h"

namespace tolvane::contract {

// The handle of the program itself that a handle of the Excel host stands for.
host::Workbook ProgramsOwn(const host::Workbook& book);
host::Worksheet ProgramsOwn(const host::Worksheet& sheet);
host::Range ProgramsOwn(const host::Range& range);

// The user sits before the program: what they do does not pass COM, what the program tells of it does.
class ExcelUserActions final : public host::UserActions {
 public:
  explicit ExcelUserActions(host::UserActions& user) : user_(user) {}

  void ActivateWorkbook(const host::Workbook& book) override { user_.ActivateWorkbook(ProgramsOwn(book)); }
  void ActivateSheet(const host::Worksheet& sheet) override { user_.ActivateSheet(ProgramsOwn(sheet)); }
  void Select(const host::Range& range) override { user_.Select(ProgramsOwn(range)); }
  void Type(const host::Range& cell, std::string_view text, bool asText) override {
    user_.Type(ProgramsOwn(cell), text, asText);
  }
  void PressDelete(const host::Range& range) override { user_.PressDelete(ProgramsOwn(range)); }
  void DoubleClick(const host::Range& cell) override { user_.DoubleClick(ProgramsOwn(cell)); }
  void RightClick(const host::Range& cell) override { user_.RightClick(ProgramsOwn(cell)); }
  void PressKey(std::string_view key) override { user_.PressKey(key); }
  void ClickControl(const host::CommandBarControl& control) override { user_.ClickControl(control); }
  void ClickRibbonControl(std::string_view id) override { user_.ClickRibbonControl(id); }
  void ClickRibbonCommand(std::string_view id) override { user_.ClickRibbonCommand(id); }
  void PressCalculate() override { user_.PressCalculate(); }
  bool PressUndo() override { return user_.PressUndo(); }
  std::string UndoCaption() const override { return user_.UndoCaption(); }
  bool Print(const host::Workbook& book) override { return user_.Print(ProgramsOwn(book)); }
  bool Save(const host::Workbook& book) override { return user_.Save(ProgramsOwn(book)); }
  bool Close(const host::Workbook& book) override { return user_.Close(ProgramsOwn(book)); }
  void InstallAddin(const host::Workbook& addin, bool install) override {
    user_.InstallAddin(ProgramsOwn(addin), install);
  }
  void PutTextOnClipboard(std::string_view text) override { user_.PutTextOnClipboard(text); }
  void PressCancelKey(int callsFromNow) override { user_.PressCancelKey(callsFromNow); }

 private:
  host::UserActions& user_;
};

}  // namespace tolvane::contract
