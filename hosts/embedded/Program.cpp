#include "hosts/embedded/Program.h"

#include <algorithm>
#include <utility>

#include "hosts/embedded/EmbeddedRange.h"
#include "hosts/embedded/EmbeddedWindow.h"
#include "hosts/embedded/EmbeddedWorkbook.h"
#include "hosts/embedded/EmbeddedWorksheet.h"
#include "hosts/embedded/Refusal.h"
#include "platform/Text.h"

namespace tolvane::embedded {

namespace {

// The name that only an Accounts Book has; such a book answers this macro whatever opened it.
constexpr std::string_view kAccountsBookName = "setIsTolvaneAccountsBook";
constexpr std::string_view kAccountsBookMacro = "IsConnected";

struct FileName {
  std::string stem;
  std::string extension;  // with its point
};

FileName SplitFileName(std::string_view path) {
  const std::size_t separator = path.find_last_of("/\\");
  if (separator != std::string_view::npos) path.remove_prefix(separator + 1);
  const std::size_t point = path.rfind('.');
  if (point == std::string_view::npos || point == 0) return {std::string(path), {}};
  return {std::string(path.substr(0, point)), std::string(path.substr(point))};
}

}  // namespace

Program::Program(shell::Desk& theDesk, BookFiles& theFiles, EmbeddedHost::Options theOptions)
    : desk(theDesk), files(theFiles), options(std::move(theOptions)) {
  gate->AddHook(cancelKey);
  events.Watch([this] { EnterAddin(); }, [this] { LeaveAddin(); });
}

void Program::End() {
  ended_ = true;
  events.End();
  clipboard.EndMode();
  for (const auto& book : books_) book->Die();
  books_.clear();
  active_.reset();
  thisBook_.reset();
  macros = {};
  undo.reset();
  repeat.reset();
  takeSentKeys_ = nullptr;
  gate->RemoveHook(cancelKey);
}

// --- workbooks
// ---------------------------------------------------------------------------------------------------------

std::shared_ptr<EmbeddedWorkbook> Program::FindBook(std::string_view name) const {
  const auto found = std::find_if(books_.begin(), books_.end(), [name](const auto& book) {
    return platform::EqualIgnoringCase(book->BookName(), name);
  });
  return found == books_.end() ? nullptr : *found;
}

std::shared_ptr<EmbeddedWorksheet> Program::activeSheet() const {
  return active_ == nullptr ? nullptr : active_->activeSheet();
}

void Program::RequireFreeName(std::string_view name, const EmbeddedWorkbook* except) const {
  const auto taken = FindBook(name);
  if (taken == nullptr || taken.get() == except) return;
  Refuse("A workbook named \"" + std::string(name) + "\" is already open. Close it first.");
}

std::shared_ptr<EmbeddedWorkbook> Program::Open(Opening opening) {
  RequireFreeName(opening.name, nullptr);
  auto book = std::make_shared<EmbeddedWorkbook>(shared_from_this(), std::move(opening.book), std::move(opening.name),
                                                 std::move(opening.path), opening.isAddin);
  book->MakeSheets();
  books_.push_back(book);
  const bool tells = settings.enableEvents;
  std::vector<shell::EventHub::Event> calculated;
  if (settings.calculation == host::Calculation::Automatic) calculated = RecalculateAll();
  const bool toFront = !opening.isAddin;
  if (toFront) active_ = book;  // whoever hears of the opening finds it there
  if (opening.tellsOpen && tells) {
    events.Raise([book](host::ApplicationEvents& listener) { listener.WorkbookOpen(host::Workbook(book)); });
  }
  if (toFront && active_ == book) TellActivated(book);
  for (const shell::EventHub::Event& event : calculated) events.Raise(event);
  return book;
}

std::shared_ptr<EmbeddedWorkbook> Program::OpenFile(const std::string& path, bool tellsOpen, bool asTemplate) {
  const auto [stem, extension] = SplitFileName(path);
  if (!asTemplate) RequireFreeName(stem + extension, nullptr);
  BookFiles::Opened opened = files.Open(path);
  Opening opening;
  opening.tellsOpen = tellsOpen;
  opening.book = std::move(opened.book);
  opening.isAddin = opened.isAddin;
  if (opened.isTemplate || asTemplate) {
    opening.name = FreeName(stem);
  } else {
    opening.name = stem + extension;
    opening.path = path;
  }
  return Open(std::move(opening));
}

std::shared_ptr<EmbeddedWorkbook> Program::NewBook() {
  Opening opening;
  opening.book = std::make_unique<engine::Workbook>();
  if (opening.book->sheetCount() == 0) opening.book->AddSheet("Sheet1", 0);
  do {
    opening.name = "Book" + std::to_string(++newBooks_);
  } while (FindBook(opening.name) != nullptr);
  opening.tellsOpen = false;
  return Open(std::move(opening));
}

std::string Program::FreeName(const std::string& stem) {
  int& count = fromTemplate_[platform::FoldCase(stem)];
  std::string name;
  do {
    name = stem + std::to_string(++count);
  } while (FindBook(name) != nullptr);
  return name;
}

void Program::Close(EmbeddedWorkbook& closing) {
  const auto found =
      std::find_if(books_.begin(), books_.end(), [&](const auto& book) { return book.get() == &closing; });
  if (found == books_.end()) return;
  const std::shared_ptr<EmbeddedWorkbook> book = *found;
  if (clipboard.mode() != host::CutCopyMode::None && &clipboard.cells().sheet->book() == &closing) clipboard.EndMode();
  macros.Forget(book->Key());
  books_.erase(found);
  if (thisBook_ == book) thisBook_.reset();
  const bool wasActive = active_ == book;
  if (wasActive) active_.reset();
  book->Die();
  if (wasActive) ActivateLast();
}

// The book that was opened last comes to the front.
void Program::ActivateLast() {
  for (auto next = books_.rbegin(); next != books_.rend(); ++next) {
    if (!(*next)->IsAddin()) return ActivateBook(*next);
  }
}

void Program::ActivateBook(const std::shared_ptr<EmbeddedWorkbook>& book) {
  if (active_ == book) return;
  active_ = book;
  TellActivated(book);
}

void Program::TellActivated(const std::shared_ptr<EmbeddedWorkbook>& book) {
  Raise([book](host::ApplicationEvents& listener) {
    if (!book->IsAlive()) return;
    listener.WindowActivate(host::Workbook(book), host::Window(std::make_shared<EmbeddedWindow>(book)));
  });
}

void Program::AddinChanged(EmbeddedWorkbook& book) {
  if (!book.IsAddin() || active_.get() != &book) return;
  active_.reset();
  ActivateLast();
}

// --- edits
// -------------------------------------------------------------------------------------------------------------

void Program::MarkEdited(EmbeddedWorkbook& book) {
  if (keepsCopyMode_ == 0) clipboard.EndMode();
  undo.reset();
  repeat.reset();
  book.MarkUnsaved();
}

void Program::CellsEdited(EmbeddedWorksheet& sheet, const std::vector<engine::Rect>& areas) {
  MarkEdited(sheet.book());
  std::vector<shell::EventHub::Event> calculated;
  if (settings.calculation == host::Calculation::Automatic) calculated = RecalculateAll();
  if (settings.enableEvents) {
    const host::Range target = sheet.RangeOver(areas);
    events.Raise([self = sheet.Self(), target](host::ApplicationEvents& listener) {
      if (target.IsAlive()) listener.SheetChange(host::Worksheet(self), target);
    });
  }
  for (const shell::EventHub::Event& event : calculated) events.Raise(event);
}

void Program::FormulasEntered(EmbeddedWorksheet& sheet, const std::vector<engine::Rect>& areas) {
  if (settings.calculation == host::Calculation::Manual) {
    for (const engine::Rect& area : areas) sheet.book().calculator().RecalculateCells(sheet.sheet().id(), area);
  }
  CellsEdited(sheet, areas);
}

void Program::BookEdited(EmbeddedWorkbook& book) {
  MarkEdited(book);
  if (settings.calculation == host::Calculation::Automatic) Recalculate();
}

void Program::Recalculate() {
  for (const shell::EventHub::Event& event : RecalculateAll()) events.Raise(event);
}

// The events are those that are to be raised, none while events are off.
std::vector<shell::EventHub::Event> Program::RecalculateAll() {
  std::vector<shell::EventHub::Event> told;
  for (const auto& book : books_) {
    for (const engine::SheetId id : book->calculator().Recalculate()) {
      if (!settings.enableEvents) continue;
      told.push_back([sheet = book->SheetOf(id)](host::ApplicationEvents& listener) {
        if (sheet->IsAlive()) listener.SheetCalculate(host::Worksheet(sheet));
      });
    }
  }
  return told;
}

void Program::Raise(const shell::EventHub::Event& event) {
  if (settings.enableEvents) events.Raise(event);
}

// --- calls into the add-in
// ---------------------------------------------------------------------------------------------

void Program::LeaveAddin() {
  if (--callDepth_ > 0) return;
  cancelKey.mode = host::CancelKey::Interrupt;
  if (!keysWait_) return;
  try {
    KeysWereSent();
  } catch (...) {
    // Nobody is left who sent them; the program refuses a key by doing nothing.
  }
}

void Program::KeysWereSent() {
  keysWait_ = callDepth_ > 0;
  if (!keysWait_ && takeSentKeys_) takeSentKeys_();
}

host::CellValue Program::RunMacro(std::string_view text) {
  const shell::MacroCall call = shell::MacroCall::Parse(text);
  std::vector<std::shared_ptr<EmbeddedWorkbook>> candidates;
  if (call.book) {
    if (const auto book = FindBook(*call.book)) candidates.push_back(book);
  } else {
    if (thisBook_ != nullptr) candidates.push_back(thisBook_);
    if (active_ != nullptr) candidates.push_back(active_);
    candidates.insert(candidates.end(), books_.begin(), books_.end());
  }
  for (const auto& book : candidates) {
    if (const shell::Macros::Macro* offered = macros.Find(book->Key(), call.macro)) {
      const shell::Macros::Macro macro = *offered;  // it may close its own book
      const AddinCall inAddin(*this);
      return macro();
    }
  }
  if (platform::EqualIgnoringCase(call.macro, kAccountsBookMacro)) {
    for (const auto& book : candidates) {
      if (book->book().names.Find(kAccountsBookName) != nullptr) return true;
    }
  }
  Refuse("Cannot run the macro '" + std::string(text) + "'. The macro may not be available in this workbook.");
}

void Program::RunCommand(std::string_view macro) {
  if (!macro.empty()) RunMacro(macro);
}

}  // namespace tolvane::embedded
