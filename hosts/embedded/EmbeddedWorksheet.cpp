#include "hosts/embedded/EmbeddedWorksheet.h"

#include <algorithm>
#include <utility>

#include "engine/formula/Printer.h"
#include "hosts/embedded/CellReference.h"
#include "hosts/embedded/EmbeddedNames.h"
#include "hosts/embedded/EmbeddedRange.h"
#include "hosts/embedded/EmbeddedWindow.h"
#include "hosts/embedded/Refusal.h"
#include "hosts/shell/Palette.h"

namespace tolvane::embedded {

using engine::Rect;

namespace {

engine::Visibility ToEngine(host::SheetVisibility visibility) {
  switch (visibility) {
    case host::SheetVisibility::Visible:
      return engine::Visibility::Visible;
    case host::SheetVisibility::Hidden:
      return engine::Visibility::Hidden;
    case host::SheetVisibility::VeryHidden:
      return engine::Visibility::VeryHidden;
  }
  Refuse("A sheet cannot be given the visibility " + std::to_string(static_cast<int>(visibility)) + ".");
}

// The protection settings of the port and of the engine, side by side.
constexpr std::pair<bool host::Protection::*, bool engine::SheetProtection::*> kAllowances[] = {
    {&host::Protection::allowFormattingCells, &engine::SheetProtection::formatCells},
    {&host::Protection::allowFormattingColumns, &engine::SheetProtection::formatColumns},
    {&host::Protection::allowFormattingRows, &engine::SheetProtection::formatRows},
    {&host::Protection::allowInsertingColumns, &engine::SheetProtection::insertColumns},
    {&host::Protection::allowInsertingRows, &engine::SheetProtection::insertRows},
    {&host::Protection::allowInsertingHyperlinks, &engine::SheetProtection::insertHyperlinks},
    {&host::Protection::allowDeletingColumns, &engine::SheetProtection::deleteColumns},
    {&host::Protection::allowDeletingRows, &engine::SheetProtection::deleteRows},
    {&host::Protection::allowSorting, &engine::SheetProtection::sort},
    {&host::Protection::allowFiltering, &engine::SheetProtection::filter},
    {&host::Protection::allowUsingPivotTables, &engine::SheetProtection::pivotTables},
};

}  // namespace

EmbeddedWorksheet& BodyOf(const host::Worksheet& sheet) {
  if (sheet.IsNothing()) throw host::HostError(host::ErrorNumber::ObjectNotSet, host::kObjectNotSetText);
  if (!sheet.IsAlive()) throw host::HostError(host::ErrorNumber::ObjectRequired, host::kObjectRequiredText);
  return static_cast<EmbeddedWorksheet&>(*sheet.body());
}

EmbeddedWorksheet::EmbeddedWorksheet(EmbeddedWorkbook& book, std::shared_ptr<Program> program, engine::Sheet& sheet)
    : program_(std::move(program)), book_(&book), sheet_(&sheet), key_(program_->NextKey()) {}

host::Range EmbeddedWorksheet::RangeOver(std::vector<Rect> areas) const {
  return host::Range(std::make_shared<EmbeddedRange>(Self(), std::move(areas)));
}

host::Range EmbeddedWorksheet::RangeOver(const Rect& area) const {
  return RangeOver(std::vector<Rect>{area});
}

std::string EmbeddedWorksheet::PlaceOf(const Rect& area) const {
  return engine::QuoteSheetName(Name()) + "!" + engine::PrintAddress(area, {});
}

bool EmbeddedWorksheet::IsInFront() const {
  return program_->activeSheet().get() == this;
}

// --- what it is
// ------------------------------------------------------------------------------------------------------------

void EmbeddedWorksheet::SetName(std::string_view name) {
  if (name == sheet_->name()) return;
  book_->RequireUnprotectedStructure("renamed");
  if (const auto why = engine::Workbook::WhyBadSheetName(name)) Refuse(*why);
  Refusing([&] { book_->book().RenameSheet(sheet_->id(), std::string(name)); });
  program_->BookEdited(*book_);
}

void EmbeddedWorksheet::SetCodeName(std::string_view name) {
  if (!engine::IsValidName(name)) Refuse("\"" + std::string(name) + "\" cannot be the code name of a sheet.");
  engine::Workbook& book = book_->book();
  for (std::size_t i = 0; i < book.sheetCount(); ++i) {
    const engine::Sheet& other = book.sheetAt(i);
    if (&other != sheet_ && other.codeName == name) {
      Refuse("The sheet \"" + other.name() + "\" has the code name \"" + std::string(name) + "\" already.");
    }
  }
  sheet_->codeName = name;
  program_->BookEdited(*book_);
}

int EmbeddedWorksheet::Index() const {
  return static_cast<int>(book_->book().PositionOf(sheet_->id())) + 1;
}

host::Workbook EmbeddedWorksheet::Parent() const {
  return host::Workbook(book_->Self());
}

host::SheetVisibility EmbeddedWorksheet::Visible() const {
  switch (sheet_->visibility) {
    case engine::Visibility::Hidden:
      return host::SheetVisibility::Hidden;
    case engine::Visibility::VeryHidden:
      return host::SheetVisibility::VeryHidden;
    case engine::Visibility::Visible:
      break;
  }
  return host::SheetVisibility::Visible;
}

void EmbeddedWorksheet::SetVisible(host::SheetVisibility visibility) {
  const engine::Visibility wanted = ToEngine(visibility);
  if (wanted == sheet_->visibility) return;
  book_->RequireUnprotectedStructure("hidden or shown");
  const bool hides = sheet_->visibility == engine::Visibility::Visible;
  if (hides && book_->VisibleSheets() == 1) {
    Refuse("The sheet \"" + Name() + "\" is the last visible one of its workbook; show another one first.");
  }
  sheet_->visibility = wanted;
  program_->BookEdited(*book_);
  if (hides && IsAlive()) book_->LeaveSheet(*this);
}

host::ColorIndex EmbeddedWorksheet::TabColorIndex() const {
  return sheet_->tabColour ? shell::NearestIndex(*sheet_->tabColour) : host::kColorIndexNone;
}

void EmbeddedWorksheet::SetTabColorIndex(host::ColorIndex index) {
  const engine::Colour colour = shell::ColourOf(index);
  book_->RequireUnprotectedStructure("coloured");
  sheet_->tabColour = colour;
  program_->BookEdited(*book_);
}

host::PageSetup EmbeddedWorksheet::PageSetup() const {
  const auto pages = [](int count) { return count > 0 ? std::optional(count) : std::nullopt; };
  return {sheet_->page.landscape, pages(sheet_->page.fitWide), pages(sheet_->page.fitTall)};
}

void EmbeddedWorksheet::SetPageSetup(const host::PageSetup& page) {
  constexpr int kMostPages = 32767;  // Excel's limit
  for (const std::optional<int>& pages : {page.fitToPagesWide, page.fitToPagesTall}) {
    if (pages && (*pages < 1 || *pages > kMostPages)) {
      Refuse("A sheet cannot be made to fit on " + std::to_string(*pages) + " pages; 1 to 32767 are possible.");
    }
  }
  sheet_->page = {page.landscape, page.fitToPagesWide.value_or(0), page.fitToPagesTall.value_or(0)};
  program_->BookEdited(*book_);
}

// --- where it stands
// ---------------------------------------------------------------------------------------------------------

void EmbeddedWorksheet::Activate() {
  if (sheet_->visibility != engine::Visibility::Visible) {
    Refuse("The sheet \"" + Name() + "\" is hidden and cannot be activated.");
  }
  book_->ActivateSheet(*this);
  if (IsAlive() && !book_->IsAddin()) program_->ActivateBook(book_->activeSheet()->book().Self());
}

void EmbeddedWorksheet::CopyTo(const host::Worksheet& other, std::size_t behind) {
  EmbeddedWorksheet& neighbour = BodyOf(other);
  EmbeddedWorkbook& target = neighbour.book();
  target.RequireUnprotectedStructure("added");
  const std::size_t position = target.book().PositionOf(neighbour.sheet().id()) + behind;
  engine::Sheet& copy = Refusing([&]() -> engine::Sheet& {
    if (&target == book_) return target.book().CopySheet(sheet_->id(), position);
    return target.book().CopySheetFrom(book_->book(), sheet_->id(), position, book_->BookName());
  });
  const auto body = target.TakeUp(copy);
  body->looseSplit = looseSplit;
  body->selectionMode_ = selectionMode_;
  program_->BookEdited(target);
  if (body->IsAlive() && body->Visible() == host::SheetVisibility::Visible) body->Activate();
}

void EmbeddedWorksheet::MoveTo(const host::Worksheet& other, std::size_t behind) {
  EmbeddedWorksheet& neighbour = BodyOf(other);
  book_->RequireUnprotectedStructure("moved");
  if (&neighbour.book() != book_) {
    if (book_->VisibleSheets() == 1 && sheet_->visibility == engine::Visibility::Visible) {
      Refuse("The sheet \"" + Name() + "\" is the last visible one of its workbook and cannot be moved out of it.");
    }
    const auto self = Self();
    CopyTo(other, behind);
    if (IsAlive()) book_->DeleteSheet(*this);
    return;
  }
  engine::Workbook& book = book_->book();
  std::size_t position = book.PositionOf(neighbour.sheet().id()) + behind;
  if (book.PositionOf(sheet_->id()) < position) --position;  // it leaves its own place first
  Refusing([&] { book.MoveSheet(sheet_->id(), position); });
  program_->BookEdited(*book_);
  if (IsAlive() && Visible() == host::SheetVisibility::Visible) Activate();
}

void EmbeddedWorksheet::Delete() {
  book_->RequireUnprotectedStructure("deleted");
  if (sheet_->visibility == engine::Visibility::Visible && book_->VisibleSheets() == 1) {
    Refuse("The sheet \"" + Name() + "\" is the last visible one of its workbook and cannot be deleted.");
  }
  EmbeddedWorkbook& book = *book_;
  const auto self = Self();
  const auto kept = book.shared_from_this();
  book.DeleteSheet(*this);
  if (book.IsAlive()) program_->BookEdited(book);
}

void EmbeddedWorksheet::Calculate() {
  book_->calculator().RecalculateSheet(sheet_->id());
  program_->Raise([self = Self()](host::ApplicationEvents& listener) {
    if (self->IsAlive()) listener.SheetCalculate(host::Worksheet(self));
  });
}

// --- ranges
// ------------------------------------------------------------------------------------------------------------------

host::Range EmbeddedWorksheet::RangeOf(std::string_view nameOrAddress) const {
  auto areas = FindCells(*this, nameOrAddress);
  if (!areas) {
    Refuse("\"" + std::string(nameOrAddress) + "\" is neither a name nor an address of cells on the sheet \"" + Name() +
           "\".");
  }
  return RangeOver(std::move(*areas));
}

host::Range EmbeddedWorksheet::CellAt(int row, int column) const {
  const Rect cell{row, column, row, column};
  if (!cell.isValid()) {
    Refuse("There is no cell in row " + std::to_string(row) + ", column " + std::to_string(column) + " of a sheet.");
  }
  return RangeOver(cell);
}

host::Range EmbeddedWorksheet::Cells() const {
  return RangeOver(Rect::WholeSheet());
}

host::Range EmbeddedWorksheet::RowAt(int row) const {
  if (row < 1 || row > engine::kMaxRow) Refuse("A sheet has no row " + std::to_string(row) + ".");
  return RangeOver(Rect::Rows(row, row));
}

host::Range EmbeddedWorksheet::ColumnAt(int column) const {
  if (column < 1 || column > engine::kMaxColumn) Refuse("A sheet has no column " + std::to_string(column) + ".");
  return RangeOver(Rect::Columns(column, column));
}

host::Names EmbeddedWorksheet::Names() const {
  return host::Names(std::make_shared<EmbeddedNames>(NameScope{book_->Self(), Self()}));
}

// --- protection
// --------------------------------------------------------------------------------------------------------------

host::Protection EmbeddedWorksheet::Protection() const {
  host::Protection protection;
  for (const auto& [theirs, ours] : kAllowances) protection.*theirs = sheet_->protection.*ours;
  return protection;
}

void EmbeddedWorksheet::Protect(const host::Protection& allowed) {
  for (const auto& [theirs, ours] : kAllowances) sheet_->protection.*ours = allowed.*theirs;
  sheet_->protection.isProtected = true;
  book_->MarkUnsaved();
}

void EmbeddedWorksheet::Unprotect() {
  if (!sheet_->protection.isProtected) return;
  sheet_->protection.isProtected = false;
  book_->MarkUnsaved();
}

// --- selection
// ---------------------------------------------------------------------------------------------------------------

void EmbeddedWorksheet::Select(std::vector<Rect> areas) {
  const engine::CellPos first = areas.front().topLeft();
  Select(std::move(areas), first);
}

void EmbeddedWorksheet::Select(std::vector<Rect> areas, engine::CellPos activeCell) {
  engine::SheetView& view = sheet_->view;
  const bool changes = view.selection != areas;
  view.selection = std::move(areas);
  view.activeCell = activeCell;
  ScrollTo(activeCell, view.selection.front());
  if (!changes) return;
  program_->Raise([self = Self(), target = RangeOver(view.selection)](host::ApplicationEvents& listener) {
    if (target.IsAlive()) listener.SheetSelectionChange(host::Worksheet(self), target);
  });
}

// Brings a cell into sight with as little scrolling as that takes; along whole rows and columns nothing moves.
void EmbeddedWorksheet::ScrollTo(engine::CellPos cell, const Rect& area) {
  engine::SheetView& view = sheet_->view;
  const auto scrolled = [](int first, int frozen, int index, int size) {
    if (index <= frozen) return first;
    if (index < first) return index;
    return index < first + size ? first : index - size + 1;
  };
  if (!area.isWholeColumns()) {
    view.scrollRow = scrolled(view.scrollRow, view.freeze.rows, cell.row, EmbeddedWindow::kRows);
  }
  if (!area.isWholeRows()) {
    view.scrollColumn = scrolled(view.scrollColumn, view.freeze.columns, cell.column, EmbeddedWindow::kColumns);
  }
}

}  // namespace tolvane::embedded
