#include "hosts/embedded/Program.h"

#include <algorithm>
#include <utility>

#include "hosts/embedded/BuiltInEffects.h"
#include "hosts/embedded/EmbeddedRange.h"
#include "hosts/embedded/EmbeddedWindow.h"
#include "hosts/embedded/EmbeddedWorkbook.h"
#include "hosts/embedded/EmbeddedWorksheet.h"
#include "hosts/embedded/Refusal.h"
#include "hosts/shell/FileName.h"
#include "platform/Text.h"

namespace tolvane::embedded {

Program::Program(shell::Desk& theDesk, BookFiles& theFiles, Options theOptions)
    : Session(theDesk, std::move(theOptions)), files(theFiles) {}

void Program::End() {
  EndSession();
  clipboard.EndMode();
  for (const auto& book : books_) book->Die();
  books_.clear();
  active_.reset();
  thisBook_.reset();
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
  const shell::FileName name = shell::FileNameOf(path);
  if (!asTemplate) RequireFreeName(name.Whole(), nullptr);
  BookFiles::Opened opened = files.Open(path);
  Opening opening;
  opening.tellsOpen = tellsOpen;
  opening.book = std::move(opened.book);
  opening.isAddin = opened.isAddin;
  if (opened.isTemplate || asTemplate) {
    opening.name = NameFromTemplate(name.stem);
  } else {
    opening.name = name.Whole();
    opening.path = path;
  }
  return Open(std::move(opening));
}

std::shared_ptr<EmbeddedWorkbook> Program::NewBook() {
  Opening opening;
  opening.book = std::make_unique<engine::Workbook>();
  if (opening.book->sheetCount() == 0) opening.book->AddSheet("Sheet1", 0);
  opening.name = NameOfNewBook();
  opening.tellsOpen = false;
  return Open(std::move(opening));
}

void Program::CloseBook(shell::Book& closing) {
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
  EditHappened();
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

void Program::ClearSelection() {
  if (const auto sheet = activeSheet()) sheet->RangeOver(sheet->sheet().view.selection).ClearContents();
}

void Program::DoBuiltInControl(int id) {
  embedded::DoBuiltInControl(*this, id);
}

std::vector<std::shared_ptr<shell::Book>> Program::BooksForMacro(const std::optional<std::string>& name) const {
  if (name) {
    const auto book = FindBook(*name);
    return book == nullptr ? std::vector<std::shared_ptr<shell::Book>>()
                           : std::vector<std::shared_ptr<shell::Book>>{book};
  }
  std::vector<std::shared_ptr<shell::Book>> all;
  if (thisBook_ != nullptr) all.push_back(thisBook_);
  if (active_ != nullptr) all.push_back(active_);
  all.insert(all.end(), books_.begin(), books_.end());
  return all;
}

}  // namespace tolvane::embedded
