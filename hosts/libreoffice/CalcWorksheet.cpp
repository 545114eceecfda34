#include "hosts/libreoffice/CalcWorksheet.h"

#include <algorithm>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCalculatable.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XSheetCellCursor.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/XSpreadsheets2.hpp>
#include <com/sun/star/sheet/XUsedAreaCursor.hpp>
#include <com/sun/star/util/XProtectable.hpp>

#include "hosts/libreoffice/CalcNames.h"
#include "hosts/libreoffice/CalcRange.h"
#include "hosts/libreoffice/CalcWindow.h"
#include "hosts/libreoffice/CellReading.h"
#include "hosts/libreoffice/CellWriting.h"
#include "hosts/libreoffice/Hyperlinks.h"
#include "hosts/libreoffice/PastedText.h"
#include "hosts/libreoffice/SheetGuard.h"
#include "hosts/shell/Palette.h"
#include "platform/Text.h"

namespace tolvane::libreoffice {

namespace {

constexpr std::size_t kLongestName = 31;

void RequireSheetName(std::string_view name) {
  if (name.empty() || platform::CharacterCount(name) > kLongestName) {
    Refuse("A sheet's name has 1 to 31 characters; \"" + std::string(name) + "\" does not.");
  }
  if (name.find_first_of(":\\/?*[]") != std::string_view::npos) {
    Refuse("A sheet's name holds none of : \\ / ? * [ ]; \"" + std::string(name) + "\" does.");
  }
  if (name.front() == '\'' || name.back() == '\'') {
    Refuse("A sheet's name neither begins nor ends with an apostrophe; " + std::string(name) + " does.");
  }
}

// A sheet's references to itself by name mean the copy on the copy.
void FollowToCopy(CalcWorksheet& copy, const std::string& original) {
  const CalcProgram::OwnEdit edit(copy.program());
  const ProtectionLifted lifted(copy);
  const std::string name = copy.Name();
  AtEdge([&] {
    const auto formulas = As<css::sheet::XCellRangesQuery>(copy.object())
                              ->queryContentCells(css::sheet::CellFlags::FORMULA)
                              ->getRangeAddresses();
    for (const auto& address : formulas) {
      const Rect rect = ToRect(address);
      host::CellBlock texts = ReadFormulas(copy, rect, Dialect::ExcelA1);
      bool changes = false;
      for (int row = 1; row <= rect.rows(); ++row) {
        for (int column = 1; column <= rect.columns(); ++column) {
          host::CellValue& text = texts.at(row, column);
          if (!text.isText() || text.text().find('!') == std::string_view::npos) continue;
          const CellPos at{rect.top + row - 1, rect.left + column - 1};
          FormulaTokens tokens = copy.book().Read(text.text(), Dialect::ExcelA1, at);
          bool refersToOriginal = false;
          for (FormulaToken& token : tokens) {
            auto& sheet = token.reference.sheet;
            if (!sheet || !token.reference.file.empty() || !platform::EqualIgnoringCase(*sheet, original)) continue;
            sheet = name;
            refersToOriginal = true;
          }
          if (!refersToOriginal) continue;
          text = '=' + WriteFormula(tokens, Dialect::ExcelA1, at);
          changes = true;
        }
      }
      if (changes) WriteContents(copy, rect, PrepareFormulas(copy.book(), texts, rect, Dialect::ExcelA1));
    }
  });
}

}  // namespace

CalcWorksheet& BodyOf(const host::Worksheet& sheet) {
  if (sheet.IsNothing()) throw host::HostError(host::ErrorNumber::ObjectNotSet, host::kObjectNotSetText);
  const auto body = std::dynamic_pointer_cast<CalcWorksheet>(sheet.body());
  if (body == nullptr) throw host::HostError(host::ErrorNumber::InvalidCall, "The sheet is another program's.");
  if (!body->IsAlive()) throw host::HostError(host::ErrorNumber::ObjectRequired, host::kObjectRequiredText);
  return *body;
}

CalcWorksheet::CalcWorksheet(const std::shared_ptr<CalcWorkbook>& book, std::string codeName)
    : program_(book->program().shared_from_this()),
      book_(book),
      codeName_(std::move(codeName)),
      key_(program_->NextKey()) {}

int CalcWorksheet::index() const noexcept {
  try {
    const auto owner = book_.lock();
    if (dead_ || owner == nullptr || !owner->IsAlive()) return -1;
    const OUString wanted = ToUno(codeName_);
    const auto sheets = owner->sheetAccess();
    const sal_Int32 count = sheets->getCount();
    const auto isHere = [&](sal_Int32 at) {
      return Get<OUString>(Reference<css::uno::XInterface>(sheets->getByIndex(at), UNO_QUERY), "CodeName") == wanted;
    };
    if (index_ < count && isHere(index_)) return index_;
    for (sal_Int32 i = 0; i < count; ++i) {
      if (isHere(i)) return index_ = i;
    }
  } catch (const css::uno::Exception&) {
    // The document is on its way out.
  } catch (const host::HostError&) {
  }
  return -1;
}

bool CalcWorksheet::IsAlive() const noexcept {
  return index() >= 0;
}

Reference<css::sheet::XSpreadsheet> CalcWorksheet::object() const {
  return book().SheetObject(index());
}

Reference<css::table::XCellRange> CalcWorksheet::Cells(const Rect& rect) const {
  return AtEdge(
      [&] { return object()->getCellRangeByPosition(rect.left - 1, rect.top - 1, rect.right - 1, rect.bottom - 1); });
}

host::Range CalcWorksheet::RangeOver(const Rects& areas) const {
  return host::Range(std::make_shared<CalcRange>(Self(), areas));
}

std::string CalcWorksheet::PlaceOf(const Rect& rect) const {
  return QuoteSheetName(Name()) + "!" + RangeOver({rect}).body()->Address({});
}

bool CalcWorksheet::IsInFront() const {
  return program_->activeSheet().get() == this;
}

Rect CalcWorksheet::UsedArea() const {
  return AtEdge([&] {
    const auto cursor = object()->createCursor();
    As<css::sheet::XUsedAreaCursor>(cursor)->gotoEndOfUsedArea(false);
    Rect used = ToRect(As<css::sheet::XCellRangeAddressable>(cursor)->getRangeAddress());
    used.top = 1;
    used.left = 1;
    return used;
  });
}

bool CalcWorksheet::HasFormulas() const {
  return AtEdge([&] {
    return As<css::sheet::XCellRangesQuery>(object())
        ->queryContentCells(css::sheet::CellFlags::FORMULA)
        ->getRangeAddresses()
        .hasElements();
  });
}

// --- what it is
// ------------------------------------------------------------------------------------------------------------

std::string CalcWorksheet::Name() const {
  return AtEdge([&] { return ToUtf8(As<css::container::XNamed>(object())->getName()); });
}

void CalcWorksheet::SetName(std::string_view name) {
  if (name == Name()) return;
  book().RequireStructure("renamed");
  RequireSheetName(name);
  const auto other = book().SheetNamed(name);
  if (other != nullptr && other.get() != this) {
    Refuse("The workbook \"" + book().Name() + "\" has a sheet \"" + std::string(name) + "\" already.");
  }
  {
    const CalcProgram::OwnEdit edit(*program_);
    AtEdge([&] { As<css::container::XNamed>(object())->setName(ToUno(name)); });
  }
  program_->BookEdited(book());
}

void CalcWorksheet::SetCodeName(std::string_view name) {
  if (name == codeName_) return;
  if (!IsValidName(name)) Refuse("\"" + std::string(name) + "\" cannot be the code name of a sheet.");
  for (const auto& other : book().sheets()) {
    if (other.get() != this && platform::EqualIgnoringCase(other->codeName_, name)) {
      Refuse("The sheet \"" + other->Name() + "\" has the code name \"" + std::string(name) + "\" already.");
    }
  }
  const auto sheet = object();
  Set(sheet, "CodeName", ToUno(name));
  codeName_ = name;
  program_->BookEdited(book());
}

host::Workbook CalcWorksheet::Parent() const {
  return host::Workbook(book().Self());
}

host::SheetVisibility CalcWorksheet::Visible() const {
  if (Get<bool>(object(), "IsVisible")) return host::SheetVisibility::Visible;
  return carried.veryHidden ? host::SheetVisibility::VeryHidden : host::SheetVisibility::Hidden;
}

void CalcWorksheet::SetVisible(host::SheetVisibility visibility) {
  using host::SheetVisibility;
  if (visibility != SheetVisibility::Visible && visibility != SheetVisibility::Hidden &&
      visibility != SheetVisibility::VeryHidden) {
    Refuse("A sheet cannot be given the visibility " + std::to_string(static_cast<int>(visibility)) + ".");
  }
  const SheetVisibility before = Visible();
  if (visibility == before) return;
  book().RequireStructure("hidden or shown");
  const bool hides = before == SheetVisibility::Visible;
  if (hides && book().VisibleSheets() == 1) {
    Refuse("The sheet \"" + Name() + "\" is the last visible one of its workbook; show another one first.");
  }
  carried.veryHidden = visibility == SheetVisibility::VeryHidden;
  const auto self = Self();
  {
    const CalcProgram::OwnEdit edit(*program_);
    Set(object(), "IsVisible", visibility == SheetVisibility::Visible);
  }
  program_->BookEdited(book());
  if (hides && IsAlive()) book().SyncActiveSheet();
}

host::ColorIndex CalcWorksheet::TabColorIndex() const {
  const auto colour = Get<sal_Int32>(object(), "TabColor", -1);
  return colour == -1 ? host::kColorIndexNone : shell::NearestIndex(static_cast<std::uint32_t>(colour) & 0xFFFFFF);
}

void CalcWorksheet::SetTabColorIndex(host::ColorIndex index) {
  const auto colour = shell::ColourOf(index);
  book().RequireStructure("coloured");
  Set(object(), "TabColor", colour ? static_cast<sal_Int32>(*colour) : sal_Int32{-1});
  program_->BookEdited(book());
}

// --- where it stands
// ---------------------------------------------------------------------------------------------------------

void CalcWorksheet::Activate() {
  if (Visible() != host::SheetVisibility::Visible) {
    Refuse("The sheet \"" + Name() + "\" is hidden and cannot be activated.");
  }
  const auto self = Self();
  const auto owner = book().Self();
  owner->ActivateSheet(self);
  if (IsAlive() && !owner->IsAddin()) program_->ActivateBook(owner);
}

void CalcWorksheet::CopyTo(const host::Worksheet& other, int behind) {
  CalcWorksheet& neighbour = BodyOf(other);
  CalcWorkbook& target = neighbour.book();
  target.RequireStructure("added");
  const int position = neighbour.index() + behind;
  const std::string original = Name();
  std::string name;
  for (int number = 2; name.empty() || target.SheetNamed(name) != nullptr; ++number) {
    const std::string suffix = " (" + std::to_string(number) + ")";
    std::string stem = original;
    while (platform::CharacterCount(stem + suffix) > kLongestName) {
      do {
        stem.pop_back();
      } while (!stem.empty() && !platform::IsValidUtf8(stem));
    }
    name = &target != &book() && number == 2 && target.SheetNamed(original) == nullptr ? original : stem + suffix;
  }
  {
    const CalcProgram::OwnEdit edit(*program_);
    AtEdge([&] {
      const auto sheets = As<css::sheet::XSpreadsheetDocument>(target.model())->getSheets();
      if (&target == &book()) {
        sheets->copyByName(ToUno(original), ToUno(name), static_cast<sal_Int16>(position));
      } else {
        const Reference<css::sheet::XSpreadsheetDocument> from(book().model(), UNO_QUERY_THROW);
        const sal_Int32 placed = As<css::sheet::XSpreadsheets2>(sheets)->importSheet(from, ToUno(original), position);
        As<css::container::XNamed>(target.SheetObject(placed))->setName(ToUno(name));
      }
    });
  }
  const auto copy = target.SheetNamed(name);
  if (&target == &book()) FollowToCopy(*copy, original);
  copy->carried = carried;
  copy->selectionMode_ = selectionMode_;
  for (const Link& link : links) {
    if (link.place.IsAlive()) copy->links.push_back({copy->RangeOver(BodyOf(link.place)->areas()), link.target});
  }
  copy->selection_ = copy->RangeOver(Selected());
  copy->activeCell_ = activeCell_;
  program_->BookEdited(target);
  if (copy->IsAlive() && copy->Visible() == host::SheetVisibility::Visible) copy->Activate();
}

void CalcWorksheet::MoveTo(const host::Worksheet& other, int behind) {
  CalcWorksheet& neighbour = BodyOf(other);
  book().RequireStructure("moved");
  if (&neighbour.book() != &book()) {
    if (book().VisibleSheets() == 1 && Visible() == host::SheetVisibility::Visible) {
      Refuse("The sheet \"" + Name() + "\" is the last visible one of its workbook and cannot be moved out of it.");
    }
    const auto self = Self();
    CopyTo(other, behind);
    if (IsAlive()) Delete();
    return;
  }
  const int position = neighbour.index() + behind;
  {
    const CalcProgram::OwnEdit edit(*program_);
    AtEdge([&] {
      As<css::sheet::XSpreadsheetDocument>(book().model())
          ->getSheets()
          ->moveByName(ToUno(Name()), static_cast<sal_Int16>(position));
    });
  }
  program_->BookEdited(book());
  if (IsAlive() && Visible() == host::SheetVisibility::Visible) Activate();
}

void CalcWorksheet::Delete() {
  const auto owner = book().Self();
  owner->RequireStructure("deleted");
  if (Visible() == host::SheetVisibility::Visible && owner->VisibleSheets() == 1) {
    Refuse("The sheet \"" + Name() + "\" is the last visible one of its workbook and cannot be deleted.");
  }
  const auto self = Self();
  {
    const CalcProgram::OwnEdit edit(*program_);
    AtEdge([&] { As<css::sheet::XSpreadsheetDocument>(owner->model())->getSheets()->removeByName(ToUno(Name())); });
    Die();
    program_->EndCutCopyMode();
    owner->SyncActiveSheet();
  }
  if (owner->IsAlive()) program_->BookEdited(*owner);
}

void CalcWorksheet::Calculate() {
  AtEdge([&] { As<css::sheet::XCalculatable>(book().model())->calculate(); });
  program_->Raise([self = Self()](host::ApplicationEvents& listener) {
    if (self->IsAlive()) listener.SheetCalculate(host::Worksheet(self));
  });
}

// --- ranges
// ------------------------------------------------------------------------------------------------------------------

host::Range CalcWorksheet::RangeOf(std::string_view nameOrAddress) const {
  constexpr std::size_t kLongest = 255;  // Excel reads no longer address
  const auto refuse = [&] {
    Refuse("\"" + std::string(nameOrAddress) + "\" is neither a name nor an address of cells on the sheet \"" + Name() +
           "\".");
  };
  if (nameOrAddress.empty() || nameOrAddress.size() > kLongest) refuse();
  std::optional<FormulaTokens> tokens = TokensOfName(*this, nameOrAddress);
  if (!tokens) {
    try {
      tokens = ReadFormula("(" + std::string(nameOrAddress) + ")", Dialect::ExcelA1, {});
    } catch (const FormulaError&) {
      refuse();
    }
  }
  const auto cells = CellsOf(*this, *tokens);
  if (!cells || cells->sheet.get() != this) refuse();
  return RangeOver(cells->areas);
}

host::Range CalcWorksheet::CellAt(int row, int column) const {
  const Rect cell{row, column, row, column};
  if (!cell.isValid()) {
    Refuse("There is no cell in row " + std::to_string(row) + ", column " + std::to_string(column) + " of a sheet.");
  }
  return RangeOver({cell});
}

host::Range CalcWorksheet::Cells() const {
  return RangeOver({{1, 1, kMaxRow, kMaxColumn}});
}

host::Range CalcWorksheet::RowAt(int row) const {
  if (row < 1 || row > kMaxRow) Refuse("A sheet has no row " + std::to_string(row) + ".");
  return RangeOver({{row, 1, row, kMaxColumn}});
}

host::Range CalcWorksheet::ColumnAt(int column) const {
  if (column < 1 || column > kMaxColumn) Refuse("A sheet has no column " + std::to_string(column) + ".");
  return RangeOver({{1, column, kMaxRow, column}});
}

host::Names CalcWorksheet::Names() const {
  return host::Names(std::make_shared<CalcNames>(CalcNameScope{book().Self(), Self()}));
}

// --- protection
// --------------------------------------------------------------------------------------------------------------

bool CalcWorksheet::isProtected() const {
  return AtEdge([&] { return bool(As<css::util::XProtectable>(object())->isProtected()); });
}

void CalcWorksheet::Protect(const host::Protection& allowed) {
  carried.allowed = allowed;
  AtEdge([&] { As<css::util::XProtectable>(object())->protect(OUString()); });
  program_->BookEdited(book());
}

void CalcWorksheet::Unprotect() {
  if (!isProtected()) return;
  AtEdge([&] { As<css::util::XProtectable>(object())->unprotect(OUString()); });
  if (isProtected()) Refuse("The sheet " + QuoteSheetName(Name()) + " is protected by a password.");
  program_->BookEdited(book());
}

// --- selection
// ---------------------------------------------------------------------------------------------------------------

Rects CalcWorksheet::Selected() const {
  if (!selection_.IsAlive()) return {{1, 1, 1, 1}};
  return BodyOf(selection_)->areas();
}

CellPos CalcWorksheet::ActiveCell() const {
  const Rects areas = Selected();
  if (activeCell_) {
    for (const Rect& area : areas) {
      if (area.contains({activeCell_->row, activeCell_->column, activeCell_->row, activeCell_->column})) {
        return *activeCell_;
      }
    }
  }
  return {areas.front().top, areas.front().left};
}

void CalcWorksheet::Select(const Rects& areas, std::optional<CellPos> activeCell) {
  const bool changes = Selected() != areas;
  selection_ = RangeOver(areas);
  activeCell_ = activeCell;
  RestoreSelection();
  if (!changes) return;
  program_->Raise([self = Self(), target = RangeOver(areas)](host::ApplicationEvents& listener) {
    if (target.IsAlive()) listener.SheetSelectionChange(host::Worksheet(self), target);
  });
}

void CalcWorksheet::RestoreSelection() {
  const CalcProgram::OwnEdit edit(*program_);
  ShowSelection(*this, Selected(), ActiveCell());
}

void CalcWorksheet::UserSelected(const Rects& areas) {
  if (program_->isEditing() || areas == Selected()) return;
  selection_ = RangeOver(areas);
  activeCell_.reset();
  program_->Raise([self = Self(), target = RangeOver(areas)](host::ApplicationEvents& listener) {
    if (target.IsAlive()) listener.SheetSelectionChange(host::Worksheet(self), target);
  });
}

void CalcWorksheet::PasteSpecialText() {
  if (!program_->ClipboardHasText()) Refuse("There is no text on the clipboard.");
  const Rect at = Selected().front();
  PasteText(*this, {at.top, at.left}, program_->ClipboardText());
}

}  // namespace tolvane::libreoffice
