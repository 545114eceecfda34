#include "engine/model/Workbook.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "engine/model/SheetNames.h"
#include "engine/model/SheetReferences.h"
#include "platform/Text.h"

namespace tolvane::engine {

Workbook::Workbook() = default;
Workbook::~Workbook() = default;

std::unique_ptr<Workbook> Workbook::Clone() const {
  auto copy = std::make_unique<Workbook>();
  copy->formats = formats;
  copy->names = names;
  copy->structureProtected = structureProtected;
  copy->date1904 = date1904;
  copy->codeName = codeName;
  copy->keepsake = keepsake;
  copy->nextSheetId_ = nextSheetId_;
  copy->sheets_.reserve(sheets_.size());
  for (const auto& sheet : sheets_) {
    copy->sheets_.push_back(std::make_unique<Sheet>(*sheet));
    copy->sheets_.back()->book_ = copy.get();
    copy->sheetByName_.emplace(platform::FoldCase(sheet->name()), copy->sheets_.back().get());
  }
  return copy;
}

// --- finding
// -----------------------------------------------------------------------------------------------------------

const Sheet* Workbook::FindSheet(SheetId id) const {
  for (const auto& sheet : sheets_) {
    if (sheet->id() == id) return sheet.get();
  }
  return nullptr;
}

Sheet* Workbook::FindSheet(SheetId id) {
  return const_cast<Sheet*>(std::as_const(*this).FindSheet(id));
}

const Sheet* Workbook::FindSheet(std::string_view name) const {
  const auto found = sheetByName_.find(platform::FoldCase(name));
  return found == sheetByName_.end() ? nullptr : found->second;
}

Sheet* Workbook::FindSheet(std::string_view name) {
  return const_cast<Sheet*>(std::as_const(*this).FindSheet(name));
}

std::size_t Workbook::PositionOf(SheetId id) const {
  for (std::size_t i = 0; i < sheets_.size(); ++i) {
    if (sheets_[i]->id() == id) return i;
  }
  throw std::invalid_argument("There is no such sheet in the workbook");
}

Sheet& Workbook::RequireSheet(SheetId id) {
  return *sheets_[PositionOf(id)];
}

// --- sheets
// --------------------------------------------------------------------------------------------------------------

void Workbook::RequireFreeName(std::string_view name, SheetId except) const {
  if (const auto why = WhyBadSheetName(name)) throw std::invalid_argument(*why);
  const Sheet* other = FindSheet(name);
  if (other != nullptr && other->id() != except) {
    throw std::invalid_argument("There is already a sheet named \"" + other->name() + "\"");
  }
}

Sheet& Workbook::PlaceSheet(std::string name, std::size_t position) {
  if (position > sheets_.size()) {
    throw std::invalid_argument("There is no position " + std::to_string(position) + " among " +
                                std::to_string(sheets_.size()) + " sheets");
  }
  RequireFreeName(name, kOwnSheet);
  auto sheet = std::make_unique<Sheet>(*this, nextSheetId_, std::move(name));
  sheet->codeName = FreeCodeName(*this);
  ++nextSheetId_;
  sheetByName_.emplace(platform::FoldCase(sheet->name()), sheet.get());
  return **sheets_.insert(sheets_.begin() + static_cast<std::ptrdiff_t>(position), std::move(sheet));
}

Sheet& Workbook::AddSheet(std::string name, std::size_t position) {
  Sheet& sheet = PlaceSheet(std::move(name), position);
  TellStructureChanged();
  return sheet;
}

void Workbook::RenameSheet(SheetId id, std::string name) {
  Sheet& sheet = RequireSheet(id);
  RequireFreeName(name, id);
  sheetByName_.erase(platform::FoldCase(sheet.name()));
  sheetByName_.emplace(platform::FoldCase(name), &sheet);
  sheet.name_ = std::move(name);
  TellStructureChanged();
}

void Workbook::MoveSheet(SheetId id, std::size_t position) {
  const std::size_t from = PositionOf(id);
  if (position >= sheets_.size()) {
    throw std::invalid_argument("There is no position " + std::to_string(position) + " among " +
                                std::to_string(sheets_.size()) + " sheets");
  }
  const SheetOrder before = OrderOf(*this);
  auto sheet = std::move(sheets_[from]);
  sheets_.erase(sheets_.begin() + static_cast<std::ptrdiff_t>(from));
  sheets_.insert(sheets_.begin() + static_cast<std::ptrdiff_t>(position), std::move(sheet));
  FollowSheetMove(*this, id, before);
  TellStructureChanged();
}

void Workbook::DeleteSheet(SheetId id) {
  const std::size_t position = PositionOf(id);
  if (sheets_.size() == 1) throw std::invalid_argument("A workbook's only sheet can't be deleted");
  const SheetOrder before = OrderOf(*this);
  sheetByName_.erase(platform::FoldCase(sheets_[position]->name()));
  sheets_.erase(sheets_.begin() + static_cast<std::ptrdiff_t>(position));
  FollowSheetDeletion(*this, id, before);
  TellStructureChanged();
}

// --- names
// -------------------------------------------------------------------------------------------------------------

void Workbook::SetName(SheetId scope, Name name) {
  if (!IsValidName(name.name)) throw std::invalid_argument("\"" + name.name + "\" is no valid name");
  NameTable& table = scope == kOwnSheet ? names : RequireSheet(scope).names;
  table.Set(std::move(name));
  TellNamesChanged();
}

bool Workbook::RemoveName(SheetId scope, std::string_view name) {
  NameTable& table = scope == kOwnSheet ? names : RequireSheet(scope).names;
  if (!table.Remove(name)) return false;
  TellNamesChanged();
  return true;
}

const Name* Workbook::ResolveName(SheetId sheet, std::string_view name) const {
  const Sheet* scope = FindSheet(sheet);
  const Name* own = scope == nullptr ? nullptr : scope->names.Find(name);
  return own != nullptr ? own : names.Find(name);
}

// --- listeners
// -----------------------------------------------------------------------------------------------------------

void Workbook::AddListener(ChangeListener* listener) {
  listeners_.push_back(listener);
}

void Workbook::RemoveListener(ChangeListener* listener) {
  std::erase(listeners_, listener);
}

void Workbook::TellCellsChanged(SheetId sheet, const Rect& area) {
  for (ChangeListener* listener : listeners_) listener->CellsChanged(sheet, area);
}

void Workbook::TellRowsHiddenChanged(SheetId sheet) {
  for (ChangeListener* listener : listeners_) listener->RowsHiddenChanged(sheet);
}

void Workbook::TellStructureChanged() {
  for (ChangeListener* listener : listeners_) listener->StructureChanged();
}

void Workbook::TellNamesChanged() {
  for (ChangeListener* listener : listeners_) listener->NamesChanged();
}

}  // namespace tolvane::engine
