#include "hosts/embedded/EmbeddedApplication.h"

#include <string>

#include "hosts/embedded/EmbeddedRange.h"
#include "hosts/embedded/EmbeddedWindow.h"
#include "hosts/embedded/EmbeddedWorkbook.h"
#include "hosts/embedded/EmbeddedWorksheet.h"
#include "hosts/embedded/Refusal.h"
#include "hosts/shell/CommandBars.h"

namespace tolvane::embedded {

using engine::Rect;

void EmbeddedApplication::SetCalculation(host::Calculation mode) {
  if (mode != host::Calculation::Automatic && mode != host::Calculation::Manual) {
    Refuse("There is no calculation mode " + std::to_string(static_cast<int>(mode)) + ".");
  }
  const bool isNew = settings().calculation != mode;
  settings().calculation = mode;
  if (isNew && mode == host::Calculation::Automatic) program_->Recalculate();
}

// --- what is open and in front
// ---------------------------------------------------------------------------------------------

std::vector<host::Workbook> EmbeddedApplication::WorkbooksAll() const {
  std::vector<host::Workbook> all;
  for (const auto& book : program_->books()) {
    if (!book->IsAddin()) all.emplace_back(book);
  }
  return all;
}

host::Workbook EmbeddedApplication::WorkbookNamed(std::string_view name) const {
  const auto book = program_->FindBook(name);
  if (book == nullptr) throw host::HostError(host::ErrorNumber::SubscriptOutOfRange, host::kSubscriptText);
  return host::Workbook(book);
}

host::Workbook EmbeddedApplication::WorkbooksOpen(std::string_view path) {
  return host::Workbook(program_->OpenFile(std::string(path), true, false));
}

host::Workbook EmbeddedApplication::WorkbooksAdd(const std::optional<std::string>& templatePath) {
  return host::Workbook(templatePath ? program_->OpenFile(*templatePath, false, true) : program_->NewBook());
}

host::Workbook EmbeddedApplication::ActiveWorkbook() const {
  return host::Workbook(program_->activeBook());
}

host::Worksheet EmbeddedApplication::ActiveSheet() const {
  return host::Worksheet(program_->activeSheet());
}

host::Range EmbeddedApplication::ActiveCell() const {
  const auto sheet = program_->activeSheet();
  return sheet == nullptr ? host::Range() : sheet->RangeOver(Rect::Cell(sheet->sheet().view.activeCell));
}

host::Window EmbeddedApplication::ActiveWindow() const {
  const auto book = program_->activeBook();
  return book == nullptr ? host::Window() : host::Window(std::make_shared<EmbeddedWindow>(book));
}

host::Workbook EmbeddedApplication::ThisWorkbook() const {
  return host::Workbook(program_->thisBook());
}

host::Range EmbeddedApplication::SelectionRange() const {
  const auto sheet = program_->activeSheet();
  return sheet == nullptr ? host::Range() : sheet->RangeOver(sheet->sheet().view.selection);
}

void EmbeddedApplication::SelectionCopy() {
  BodyOf(SelectionRange()).Copy();
}

void EmbeddedApplication::SelectionCut() {
  BodyOf(SelectionRange()).Cut();
}

// --- doing
// -------------------------------------------------------------------------------------------------------------------

host::Range EmbeddedApplication::Intersect(std::span<const host::Range> ranges) const {
  if (ranges.empty()) return {};
  const EmbeddedRange& first = BodyOf(ranges.front());
  std::vector<Rect> common = first.areas();
  for (const host::Range& range : ranges.subspan(1)) {
    const EmbeddedRange& other = BodyOf(range);
    if (other.sheet() != first.sheet()) return {};
    std::vector<Rect> both;
    for (const Rect& a : common) {
      for (const Rect& b : other.areas()) {
        if (const auto shared = a.intersection(b)) both.push_back(*shared);
      }
    }
    common = std::move(both);
  }
  return common.empty() ? host::Range() : first.sheet()->RangeOver(std::move(common));
}

host::Range EmbeddedApplication::Union(std::span<const host::Range> ranges) const {
  std::shared_ptr<EmbeddedWorksheet> sheet;
  std::vector<Rect> areas;
  for (const host::Range& range : ranges) {
    if (range.IsNothing()) continue;
    const EmbeddedRange& body = BodyOf(range);
    if (sheet != nullptr && body.sheet() != sheet) {
      Refuse("The cells " + sheet->PlaceOf(areas.front()) + " and " + body.sheet()->PlaceOf(body.first()) +
             " lie on different sheets and cannot be one range.");
    }
    sheet = body.sheet();
    areas.insert(areas.end(), body.areas().begin(), body.areas().end());
  }
  return sheet == nullptr ? host::Range() : sheet->RangeOver(std::move(areas));
}

host::CommandBars EmbeddedApplication::CommandBars() const {
  return host::CommandBars(parts_.commandBars);
}

void EmbeddedApplication::OnKey(std::string_view key, const std::optional<std::string>& macro) {
  program_->keys.Hook(key, macro);
}

void EmbeddedApplication::SendKeys(std::string_view keys) {
  program_->keys.Send(keys);
  program_->KeysWereSent();
}

void EmbeddedApplication::OnUndo(std::string_view caption, std::string_view macro) {
  program_->undo = shell::Session::CommandOf(caption, macro);
}

void EmbeddedApplication::OnRepeat(std::string_view caption, std::string_view macro) {
  program_->repeat = shell::Session::CommandOf(caption, macro);
}

}  // namespace tolvane::embedded
