#pragma once

#include <string_view>

#include "src/host/CommandBars.h"
#include "src/host/Range.h"
#include "src/host/Workbook.h"
#include "src/host/Worksheet.h"

namespace tolvane::host {

// What only a user can do to a spreadsheet program, with the events and the refusals that it has then. Offered by a
// host to tests and to recorded work; the logic of the add-in never calls it. Failures are HostErrors; a refusal by
// protection or validation is ApplicationDefined and changes nothing.
class UserActions {
 public:
  virtual ~UserActions() = default;

  virtual void ActivateWorkbook(const Workbook& book) = 0;
  virtual void ActivateSheet(const Worksheet& sheet) = 0;
  virtual void Select(const Range& range) = 0;
  // Types into the first cell of a range and presses Enter: numbers, dates (2009-03-15) and formulas are recognised
  // unless `asText`. Raises change, then calculate. The selection stays.
  virtual void Type(const Range& cell, std::string_view text, bool asText = false) = 0;
  virtual void PressDelete(const Range& range) = 0;
  virtual void DoubleClick(const Range& cell) = 0;
  virtual void RightClick(const Range& cell) = 0;
  virtual void PressKey(std::string_view key) = 0;  // in the notation of OnKey; a hooked key runs its macro
  virtual void ClickControl(const CommandBarControl& control) = 0;  // events, then OnAction, else its own effect
  virtual void ClickRibbonControl(std::string_view id) = 0;         // a control of the ribbon definition
  virtual void ClickRibbonCommand(std::string_view id) = 0;         // one of the program's own, "Copy" or "SortDialog"
  virtual void PressCalculate() = 0;
  virtual bool PressUndo() = 0;                  // runs the entry on the undo list; false when there is none
  virtual std::string UndoCaption() const = 0;   // empty when there is none
  virtual bool Print(const Workbook& book) = 0;  // false when an event cancelled it
  virtual bool Save(const Workbook& book) = 0;   // the same; also when no file name was given
  virtual bool Close(const Workbook& book) = 0;  // asks about changes; false when it stays open
  // Ticks or unticks an add-in in the program's list of them.
  virtual void InstallAddin(const Workbook& addin, bool install) = 0;
  virtual void PutTextOnClipboard(std::string_view text) = 0;  // as another program does; ends copy mode
  // The cancel key goes down at the N-th call from now that could notice it (1: the next).
  virtual void PressCancelKey(int callsFromNow = 1) = 0;
};

}  // namespace tolvane::host
