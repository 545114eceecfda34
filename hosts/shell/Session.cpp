#include "hosts/shell/Session.h"

#include <utility>

#include "hosts/shell/Refusal.h"
#include "platform/Text.h"

namespace tolvane::shell {

namespace {

// The name that only an Accounts Book has; such a book answers this macro whatever opened it.
constexpr std::string_view kAccountsBookName = "setIsTolvaneAccountsBook";
constexpr std::string_view kAccountsBookMacro = "IsConnected";

}  // namespace

Session::Session(Desk& theDesk, Options theOptions) : desk(theDesk), options(std::move(theOptions)) {
  gate->AddHook(cancelKey);
  events.Watch([this] { EnterAddin(); }, [this] { LeaveAddin(); });
}

void Session::EndSession() {
  ended_ = true;
  events.End();
  macros = {};
  undo.reset();
  repeat.reset();
  takeSentKeys_ = nullptr;
  gate->RemoveHook(cancelKey);
}

std::optional<Session::Command> Session::CommandOf(std::string_view caption, std::string_view macro) {
  if (caption.empty()) return std::nullopt;
  return Command{std::string(caption), std::string(macro)};
}

void Session::EditHappened() {
  if (keepsCopyMode_ == 0) EndCutCopyMode();
  undo.reset();
  repeat.reset();
}

void Session::Raise(const EventHub::Event& event) {
  if (settings.enableEvents) events.Raise(event);
}

// --- names of books
// ----------------------------------------------------------------------------------------------------

std::string Session::NameOfNewBook() {
  std::string name;
  do {
    name = "Book" + std::to_string(++newBooks_);
  } while (IsNameTaken(name));
  return name;
}

std::string Session::NameFromTemplate(const std::string& stem) {
  int& count = fromTemplate_[platform::FoldCase(stem)];
  std::string name;
  do {
    name = stem + std::to_string(++count);
  } while (IsNameTaken(name));
  return name;
}

// --- calls into the add-in
// ---------------------------------------------------------------------------------------------

void Session::LeaveAddin() {
  if (--callDepth_ > 0) return;
  cancelKey.mode = host::CancelKey::Interrupt;
  if (!keysWait_) return;
  try {
    KeysWereSent();
  } catch (...) {
    // Nobody is left who sent them; the program refuses a key by doing nothing.
  }
}

void Session::KeysWereSent() {
  keysWait_ = callDepth_ > 0;
  if (!keysWait_ && takeSentKeys_) takeSentKeys_();
}

host::CellValue Session::RunMacro(std::string_view text) {
  const MacroCall call = MacroCall::Parse(text);
  const std::vector<std::shared_ptr<Book>> books = BooksForMacro(call.book);
  for (const auto& book : books) {
    if (const Macros::Macro* offered = macros.Find(book->Key(), call.macro)) {
      const Macros::Macro macro = *offered;  // it may close its own book
      const AddinCall inAddin(*this);
      return macro();
    }
  }
  if (platform::EqualIgnoringCase(call.macro, kAccountsBookMacro)) {
    for (const auto& book : books) {
      if (book->DefinesName(kAccountsBookName)) return true;
    }
  }
  Refuse("Cannot run the macro '" + std::string(text) + "'. The macro may not be available in this workbook.");
}

void Session::RunCommand(std::string_view macro) {
  if (!macro.empty()) RunMacro(macro);
}

}  // namespace tolvane::shell
