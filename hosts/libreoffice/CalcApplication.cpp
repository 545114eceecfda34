#include "hosts/libreoffice/CalcApplication.h"

#include <string>

#include "hosts/libreoffice/CalcRange.h"
#include "hosts/libreoffice/CalcWindow.h"
#include "hosts/libreoffice/CalcWorkbook.h"
#include "hosts/libreoffice/CalcWorksheet.h"
#include "hosts/shell/CommandBars.h"

namespace tolvane::libreoffice {

void CalcApplication::SetStatusBar(const std::optional<std::string>& text) {
  settings().statusBar = text;
  program_->ShowStatusBar();
}

void CalcApplication::SetScreenUpdating(bool on) {
  settings().screenUpdating = on;
  program_->ApplyScreenUpdating();
}

void CalcApplication::SetCalculation(host::Calculation mode) {
  if (mode != host::Calculation::Automatic && mode != host::Calculation::Manual) {
    Refuse("There is no calculation mode " + std::to_string(static_cast<int>(mode)) + ".");
  }
  const bool isNew = settings().calculation != mode;
  settings().calculation = mode;
  if (!isNew) return;
  program_->ApplyCalculation();
  if (mode == host::Calculation::Automatic) program_->Recalculate();
}

// --- what is open and in front
// ---------------------------------------------------------------------------------------------

std::vector<host::Workbook> CalcApplication::WorkbooksAll() const {
  std::vector<host::Workbook> all;
  for (const auto& book : program_->books()) {
    if (!book->IsAddin()) all.emplace_back(book);
  }
  return all;
}

host::Workbook CalcApplication::WorkbookNamed(std::string_view name) const {
  const auto book = program_->FindBook(name);
  if (book == nullptr) throw host::HostError(host::ErrorNumber::SubscriptOutOfRange, host::kSubscriptText);
  return host::Workbook(book);
}

host::Workbook CalcApplication::WorkbooksOpen(std::string_view path) {
  return host::Workbook(program_->OpenFile(std::string(path), true, false));
}

host::Workbook CalcApplication::WorkbooksAdd(const std::optional<std::string>& templatePath) {
  return host::Workbook(templatePath ? program_->OpenFile(*templatePath, false, true) : program_->NewBook());
}

host::Workbook CalcApplication::ActiveWorkbook() const {
  return host::Workbook(program_->activeBook());
}

host::Worksheet CalcApplication::ActiveSheet() const {
  return host::Worksheet(program_->activeSheet());
}

host::Range CalcApplication::ActiveCell() const {
  const auto sheet = program_->activeSheet();
  if (sheet == nullptr) return {};
  const CellPos cell = sheet->ActiveCell();
  return sheet->RangeOver({{cell.row, cell.column, cell.row, cell.column}});
}

host::Window CalcApplication::ActiveWindow() const {
  const auto book = program_->activeBook();
  return book == nullptr ? host::Window() : host::Window(std::make_shared<CalcWindow>(book));
}

host::Workbook CalcApplication::ThisWorkbook() const {
  return host::Workbook(program_->thisBook());
}

host::Range CalcApplication::SelectionRange() const {
  const auto sheet = program_->activeSheet();
  return sheet == nullptr ? host::Range() : sheet->RangeOver(sheet->Selected());
}

void CalcApplication::SelectionCopy() {
  BodyOf(SelectionRange())->Copy();
}

void CalcApplication::SelectionCut() {
  BodyOf(SelectionRange())->Cut();
}

// --- doing
// -------------------------------------------------------------------------------------------------------------------

host::Range CalcApplication::Intersect(std::span<const host::Range> ranges) const {
  if (ranges.empty()) return {};
  const auto first = BodyOf(ranges.front());
  Rects common = first->areas();
  for (const host::Range& range : ranges.subspan(1)) {
    const auto other = BodyOf(range);
    const Rects areas = other->areas();
    if (other->sheet() != first->sheet()) return {};
    Rects both;
    for (const Rect& a : common) {
      for (const Rect& b : areas) {
        if (a.intersects(b)) both.push_back(a.intersection(b));
      }
    }
    common = std::move(both);
  }
  return common.empty() ? host::Range() : first->sheet()->RangeOver(common);
}

host::Range CalcApplication::Union(std::span<const host::Range> ranges) const {
  std::shared_ptr<CalcWorksheet> sheet;
  Rects all;
  for (const host::Range& range : ranges) {
    if (range.IsNothing()) continue;
    const auto body = BodyOf(range);
    const Rects areas = body->areas();
    if (sheet != nullptr && body->sheet() != sheet) {
      Refuse("The cells " + sheet->PlaceOf(all.front()) + " and " + body->sheet()->PlaceOf(areas.front()) +
             " lie on different sheets and cannot be one range.");
    }
    sheet = body->sheet();
    all.insert(all.end(), areas.begin(), areas.end());
  }
  return sheet == nullptr ? host::Range() : sheet->RangeOver(all);
}

host::CommandBars CalcApplication::CommandBars() const {
  return host::CommandBars(parts_.commandBars);
}

void CalcApplication::OnKey(std::string_view key, const std::optional<std::string>& macro) {
  program_->keys.Hook(key, macro);
}

void CalcApplication::SendKeys(std::string_view keys) {
  program_->keys.Send(keys);
  program_->KeysWereSent();
}

void CalcApplication::OnUndo(std::string_view caption, std::string_view macro) {
  program_->undo = shell::Session::CommandOf(caption, macro);
}

void CalcApplication::OnRepeat(std::string_view caption, std::string_view macro) {
  program_->repeat = shell::Session::CommandOf(caption, macro);
}

}  // namespace tolvane::libreoffice
