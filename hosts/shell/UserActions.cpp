#include "hosts/shell/UserActions.h"

#include <utility>

#include "hosts/shell/BuiltInCommands.h"
#include "hosts/shell/CommandBars.h"
#include "hosts/shell/Refusal.h"
#include "hosts/shell/Ribbon.h"
#include "src/host/Range.h"
#include "src/host/Worksheet.h"

namespace tolvane::shell {

namespace {

Book& BodyOf(const host::Workbook& book) {
  if (book.IsNothing()) throw host::HostError(host::ErrorNumber::ObjectNotSet, host::kObjectNotSetText);
  if (!book.IsAlive()) throw host::HostError(host::ErrorNumber::ObjectRequired, host::kObjectRequiredText);
  return static_cast<Book&>(*book.body());
}

}  // namespace

void UserActions::ActivateWorkbook(const host::Workbook& book) {
  BodyOf(book).Activate();
}

// --- clicks on cells
// ---------------------------------------------------------------------------------------------------

bool UserActions::AskBeforeDoubleClick(const host::Worksheet& sheet, const host::Range& target) {
  return session().settings.enableEvents && session().events.Ask([&](host::ApplicationEvents& listener, bool& cancel) {
    if (target.IsAlive()) listener.SheetBeforeDoubleClick(sheet, target, cancel);
  });
}

bool UserActions::AskBeforeRightClick(const host::Worksheet& sheet, const host::Range& target) {
  return session().settings.enableEvents && session().events.Ask([&](host::ApplicationEvents& listener, bool& cancel) {
    if (target.IsAlive()) listener.SheetBeforeRightClick(sheet, target, cancel);
  });
}

void UserActions::RequireSelectable(const host::WorksheetBody& sheet,
                                    const std::function<std::optional<std::string>()>& lockedPlace) {
  if (!sheet.ProtectContents() || sheet.EnableSelection() == host::SelectionMode::NoRestrictions) return;
  if (sheet.EnableSelection() == host::SelectionMode::NoSelection) {
    Refuse("No cell of the protected sheet \"" + sheet.Name() + "\" can be selected.");
  }
  if (const auto place = lockedPlace()) Refuse("The locked cells " + *place + " cannot be selected.");
}

// --- keys, controls, commands
// ------------------------------------------------------------------------------------------

void UserActions::Press(const KeyStroke& key) {
  if (const auto macro = session().keys.MacroOf(key)) {
    session().RunCommand(*macro);
  } else {
    DoBuiltInKey(session(), key);
  }
}

void UserActions::ClickControl(const host::CommandBarControl& control) {
  const Session::AddinCall call(session());
  parts_.commandBars->Click(control);
}

void UserActions::ClickRibbonControl(std::string_view id) {
  const auto ribbon = parts_.ribbon();
  if (ribbon == nullptr) {
    throw host::HostError(host::ErrorNumber::InvalidCall,
                          "There is no control \"" + std::string(id) + "\": no ribbon has been loaded.");
  }
  const Session::AddinCall call(session());
  ribbon->Click(id);
}

void UserActions::ClickRibbonCommand(std::string_view id) {
  const auto ribbon = parts_.ribbon();
  if (ribbon != nullptr) {
    const Session::AddinCall call(session());
    if (ribbon->Command(id)) return;
  }
  DoBuiltInCommand(session(), id);
}

bool UserActions::PressUndo() {
  if (!session().undo) return false;
  const Session::Command command = *std::exchange(session().undo, std::nullopt);
  session().RunCommand(command.macro);
  return true;
}

std::string UserActions::UndoCaption() const {
  return session().undo ? session().undo->caption : "";
}

void UserActions::PressCancelKey(int callsFromNow) {
  if (callsFromNow < 1) Refuse("The cancel key can go down at the next call or a later one, not at an earlier one.");
  session().cancelKey.PressAt(callsFromNow);
}

// --- files
// -------------------------------------------------------------------------------------------------------------

bool UserActions::Print(const host::Workbook& book) {
  return BodyOf(book).MayPrint();
}

void UserActions::InstallAddin(const host::Workbook& addin, bool install) {
  const Book& book = BodyOf(addin);
  if (!book.IsAddin()) Refuse("The workbook " + book.Name() + " is no add-in.");
  session().Raise([addin, install](host::ApplicationEvents& listener) {
    install ? listener.AddinInstall(addin) : listener.AddinUninstall(addin);
  });
}

bool UserActions::SaveWithDialog(Book& book) {
  const auto kept = book.shared_from_this();
  const bool hasFile = book.HasFile();
  if (!book.MaySave(!hasFile)) return false;
  std::string path = book.FullName();
  if (!hasFile) {
    host::FileQuestion question;
    question.title = "Save As";
    question.filters = {{"Excel Workbook", {"*.xlsx"}}};
    const auto chosen = session().desk.GetSaveAsFilename(question);
    if (!chosen) return false;
    path = *chosen;
  }
  book.WriteFile(path);
  return true;
}

bool UserActions::Save(const host::Workbook& book) {
  return SaveWithDialog(BodyOf(book));
}

bool UserActions::Close(const host::Workbook& book) {
  Book& body = BodyOf(book);
  const auto kept = body.shared_from_this();
  if (!body.MayClose()) return !body.IsAlive();
  if (!body.Saved()) {
    const host::MessageResult answer =
        session().desk.MsgBox("Do you want to save the changes you made to '" + body.Name() + "'?",
                              host::message::kYesNoCancel + host::message::kExclamation, session().options.caption);
    if (answer == host::MessageResult::Cancel) return false;
    if (answer == host::MessageResult::Yes && !SaveWithDialog(body)) return false;
  }
  session().CloseBook(body);
  return true;
}

}  // namespace tolvane::shell
