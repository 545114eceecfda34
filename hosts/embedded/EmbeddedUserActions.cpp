#include "hosts/embedded/EmbeddedUserActions.h"

#include <algorithm>
#include <string>
#include <utility>

#include "hosts/embedded/BuiltInEffects.h"
#include "hosts/embedded/EmbeddedRange.h"
#include "hosts/embedded/Entering.h"
#include "hosts/embedded/FormatRuns.h"
#include "hosts/embedded/Refusal.h"
#include "hosts/shell/CommandBars.h"
#include "hosts/shell/Ribbon.h"
#include "src/host/CommandBars.h"

namespace tolvane::embedded {

using engine::Rect;

namespace {

EmbeddedWorkbook& BodyOf(const host::Workbook& book) {
  if (book.IsNothing()) throw host::HostError(host::ErrorNumber::ObjectNotSet, host::kObjectNotSetText);
  if (!book.IsAlive()) throw host::HostError(host::ErrorNumber::ObjectRequired, host::kObjectRequiredText);
  return static_cast<EmbeddedWorkbook&>(*book.body());
}

// Where the mouse and the keys may go on a protected sheet.
void RequireSelectable(const EmbeddedWorksheet& sheet, const std::vector<Rect>& areas) {
  if (!sheet.ProtectContents() || sheet.EnableSelection() == host::SelectionMode::NoRestrictions) return;
  if (sheet.EnableSelection() == host::SelectionMode::NoSelection) {
    Refuse("No cell of the protected sheet \"" + sheet.Name() + "\" can be selected.");
  }
  for (const Rect& area : areas) {
    ForEachFormatRun(sheet.sheet(), area, [&](const Rect& run, engine::FormatId format) {
      if (!sheet.sheet().book().formats.At(format).format.protection.locked) return;
      Refuse("The locked cells " + sheet.PlaceOf(run) + " cannot be selected.");
    });
  }
}

}  // namespace

// --- going somewhere
// ---------------------------------------------------------------------------------------------------------

void EmbeddedUserActions::ActivateWorkbook(const host::Workbook& book) {
  BodyOf(book).Activate();
}

void EmbeddedUserActions::ActivateSheet(const host::Worksheet& sheet) {
  BodyOf(sheet).Activate();
}

void EmbeddedUserActions::Select(const host::Range& range) {
  const EmbeddedRange& body = BodyOf(range);
  const std::shared_ptr<EmbeddedWorksheet> sheet = body.sheet();
  const std::vector<Rect> areas = body.areas();
  RequireSelectable(*sheet, areas);
  sheet->Activate();
  if (sheet->IsAlive()) sheet->Select(areas);
}

void EmbeddedUserActions::DoubleClick(const host::Range& cell) {
  const EmbeddedRange& body = BodyOf(cell);
  const std::shared_ptr<EmbeddedWorksheet> sheet = body.sheet();
  const host::Range target = sheet->RangeOver(Rect::Cell(body.first().topLeft()));
  Select(target);
  if (!program_.settings.enableEvents) return;
  program_.events.Ask([&](host::ApplicationEvents& listener, bool& cancel) {
    if (target.IsAlive()) listener.SheetBeforeDoubleClick(host::Worksheet(sheet), target, cancel);
  });
}

void EmbeddedUserActions::RightClick(const host::Range& cell) {
  const EmbeddedRange& body = BodyOf(cell);
  const std::shared_ptr<EmbeddedWorksheet> sheet = body.sheet();
  // Within the selection it stays, elsewhere the click selects.
  const std::vector<Rect>& selected = sheet->sheet().view.selection;
  const bool isSelected =
      sheet->IsInFront() && std::all_of(body.areas().begin(), body.areas().end(), [&](const Rect& a) {
        return std::any_of(selected.begin(), selected.end(), [&](const Rect& area) { return area.contains(a); });
      });
  if (!isSelected) Select(cell);
  if (!sheet->IsAlive()) return;
  const host::Range target = sheet->RangeOver(sheet->sheet().view.selection);
  if (!program_.settings.enableEvents) return;
  // The program's own menu of cells holds nothing that a user of this host could not do otherwise; it is not shown.
  program_.events.Ask([&](host::ApplicationEvents& listener, bool& cancel) {
    if (target.IsAlive()) listener.SheetBeforeRightClick(host::Worksheet(sheet), target, cancel);
  });
}

// --- changing cells
// ----------------------------------------------------------------------------------------------------------

void EmbeddedUserActions::Type(const host::Range& cell, std::string_view text, bool asText) {
  const EmbeddedRange& body = BodyOf(cell);
  const std::shared_ptr<EmbeddedWorksheet> sheet = body.sheet();
  EnterText(*sheet, body.first().topLeft(), text, asText);
}

void EmbeddedUserActions::PressDelete(const host::Range& range) {
  BodyOf(range).ClearContents();
}

// --- keys, controls, commands
// --------------------------------------------------------------------------------------------------

void EmbeddedUserActions::PressKey(std::string_view key) {
  Press(shell::ParseKey(key));
}

void EmbeddedUserActions::Press(const shell::KeyStroke& key) {
  if (const auto macro = parts_.keys->MacroOf(key)) {
    program_.RunCommand(*macro);
  } else {
    DoBuiltInKey(program_, key);
  }
}

void EmbeddedUserActions::ClickControl(const host::CommandBarControl& control) {
  const Program::AddinCall call(program_);
  parts_.commandBars->Click(control);
}

void EmbeddedUserActions::ClickRibbonControl(std::string_view id) {
  const auto ribbon = parts_.ribbon();
  if (ribbon == nullptr) {
    throw host::HostError(host::ErrorNumber::InvalidCall,
                          "There is no control \"" + std::string(id) + "\": no ribbon has been loaded.");
  }
  const Program::AddinCall call(program_);
  ribbon->Click(id);
}

void EmbeddedUserActions::ClickRibbonCommand(std::string_view id) {
  const auto ribbon = parts_.ribbon();
  if (ribbon != nullptr) {
    const Program::AddinCall call(program_);
    if (ribbon->Command(id)) return;
  }
  DoBuiltInCommand(program_, id);
}

void EmbeddedUserActions::PressCalculate() {
  program_.Recalculate();
}

bool EmbeddedUserActions::PressUndo() {
  if (!program_.undo) return false;
  const Program::Command command = *std::exchange(program_.undo, std::nullopt);
  program_.RunCommand(command.macro);
  return true;
}

std::string EmbeddedUserActions::UndoCaption() const {
  return program_.undo ? program_.undo->caption : "";
}

// --- files
// -------------------------------------------------------------------------------------------------------------------

bool EmbeddedUserActions::Print(const host::Workbook& book) {
  return BodyOf(book).MayPrint();
}

void EmbeddedUserActions::InstallAddin(const host::Workbook& addin, bool install) {
  if (!BodyOf(addin).IsAddin()) Refuse("The workbook " + BodyOf(addin).Name() + " is no add-in.");
  program_.Raise([addin, install](host::ApplicationEvents& listener) {
    install ? listener.AddinInstall(addin) : listener.AddinUninstall(addin);
  });
}

bool EmbeddedUserActions::SaveWithDialog(EmbeddedWorkbook& book) {
  const auto kept = book.shared_from_this();
  if (!book.MaySave(!book.hasFile())) return false;
  std::string path = book.FullName();
  if (!book.hasFile()) {
    host::FileQuestion question;
    question.title = "Save As";
    question.filters = {{"Excel Workbook", {"*.xlsx"}}};
    const auto chosen = program_.desk.GetSaveAsFilename(question);
    if (!chosen) return false;
    path = *chosen;
  }
  book.WriteFile(path);
  return true;
}

bool EmbeddedUserActions::Save(const host::Workbook& book) {
  return SaveWithDialog(BodyOf(book));
}

bool EmbeddedUserActions::Close(const host::Workbook& book) {
  EmbeddedWorkbook& body = BodyOf(book);
  const auto kept = body.shared_from_this();
  if (!body.MayClose()) return !body.IsAlive();
  if (!body.Saved()) {
    const host::MessageResult answer =
        program_.desk.MsgBox("Do you want to save the changes you made to '" + body.BookName() + "'?",
                             host::message::kYesNoCancel + host::message::kExclamation, program_.options.caption);
    if (answer == host::MessageResult::Cancel) return false;
    if (answer == host::MessageResult::Yes && !SaveWithDialog(body)) return false;
  }
  program_.Close(body);
  return true;
}

// --- the rest
// ----------------------------------------------------------------------------------------------------------------

void EmbeddedUserActions::PutTextOnClipboard(std::string_view text) {
  program_.clipboard.PutText(std::string(text));
}

void EmbeddedUserActions::PressCancelKey(int callsFromNow) {
  if (callsFromNow < 1) Refuse("The cancel key can go down at the next call or a later one, not at an earlier one.");
  program_.cancelKey.PressAt(callsFromNow);
}

}  // namespace tolvane::embedded
