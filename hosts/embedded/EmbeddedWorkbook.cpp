#include "hosts/embedded/EmbeddedWorkbook.h"

#include <algorithm>
#include <utility>

#include "engine/formula/Parser.h"
#include "hosts/embedded/EmbeddedNames.h"
#include "hosts/embedded/EmbeddedWindow.h"
#include "hosts/embedded/EmbeddedWorksheet.h"
#include "hosts/embedded/Refusal.h"
#include "hosts/embedded/StyleConversion.h"
#include "hosts/shell/FileName.h"

namespace tolvane::embedded {

EmbeddedWorkbook::EmbeddedWorkbook(std::shared_ptr<Program> program, std::unique_ptr<engine::Workbook> book,
                                   std::string name, std::string path, bool isAddin)
    : program_(std::move(program)), key_(program_->NextKey()), isAddin_(isAddin), book_(std::move(book)) {
  SetPath(path);
  name_ = std::move(name);
  calculator_ = std::make_unique<engine::Calculator>(*book_, *this);
}

EmbeddedWorkbook::~EmbeddedWorkbook() = default;

void EmbeddedWorkbook::MakeSheets() {
  for (std::size_t i = 0; i < book_->sheetCount(); ++i) TakeUp(book_->sheetAt(i));
  for (std::size_t i = 0; i < book_->sheetCount() && activeSheet_ == 0; ++i) {
    const engine::Sheet& sheet = book_->sheetAt(i);
    if (sheet.visibility == engine::Visibility::Visible) activeSheet_ = sheet.id();
  }
  if (activeSheet_ == 0) activeSheet_ = book_->sheetAt(0).id();
}

void EmbeddedWorkbook::Die() {
  for (const auto& [id, sheet] : sheets_) sheet->Die();
  sheets_.clear();
  calculator_.reset();
  book_.reset();
}

std::shared_ptr<EmbeddedWorksheet> EmbeddedWorkbook::TakeUp(engine::Sheet& sheet) {
  auto body = std::make_shared<EmbeddedWorksheet>(*this, program_, sheet);
  sheets_[sheet.id()] = body;
  return body;
}

engine::ExpressionPtr EmbeddedWorkbook::Parse(std::string_view text, engine::Notation notation,
                                              const engine::FormulaHome& home) const {
  return engine::ParseFormula(text, notation, home, *book_,
                              [this](std::string_view name) { return program_->FindBook(name) != nullptr; });
}

void EmbeddedWorkbook::ActivateSheet(EmbeddedWorksheet& sheet) {
  if (activeSheet_ == sheet.sheet().id()) return;
  activeSheet_ = sheet.sheet().id();
  if (program_->activeBook().get() != this) return;
  program_->Raise([self = sheet.Self()](host::ApplicationEvents& listener) {
    if (self->IsAlive()) listener.SheetActivate(host::Worksheet(self));
  });
}

engine::SheetId EmbeddedWorkbook::FrontWithout(engine::SheetId leaving) const {
  if (activeSheet_ != leaving) return activeSheet_;
  // As Excel: the next visible one to the right, else the nearest to the left.
  const std::size_t position = book_->PositionOf(leaving);
  const auto isVisible = [&](std::size_t i) { return book_->sheetAt(i).visibility == engine::Visibility::Visible; };
  for (std::size_t i = position + 1; i < book_->sheetCount(); ++i) {
    if (isVisible(i)) return book_->sheetAt(i).id();
  }
  for (std::size_t i = position; i-- > 0;) {
    if (isVisible(i)) return book_->sheetAt(i).id();
  }
  return leaving;
}

void EmbeddedWorkbook::LeaveSheet(EmbeddedWorksheet& sheet) {
  ActivateSheet(*SheetOf(FrontWithout(sheet.sheet().id())));
}

void EmbeddedWorkbook::DeleteSheet(EmbeddedWorksheet& sheet) {
  const std::shared_ptr<EmbeddedWorksheet> body = sheet.Self();
  const engine::SheetId id = sheet.sheet().id();
  const engine::SheetId front = FrontWithout(id);
  Refusing([&] { book_->DeleteSheet(id); });
  program_->clipboard.EndMode();
  body->Die();
  sheets_.erase(id);
  ActivateSheet(*SheetOf(front));
}

void EmbeddedWorkbook::RequireUnprotectedStructure(std::string_view what) const {
  if (!book_->structureProtected) return;
  Refuse("The structure of the workbook \"" + name_ + "\" is protected: no sheet can be " + std::string(what) + ".");
}

int EmbeddedWorkbook::VisibleSheets() const {
  int count = 0;
  for (std::size_t i = 0; i < book_->sheetCount(); ++i) {
    if (book_->sheetAt(i).visibility == engine::Visibility::Visible) ++count;
  }
  return count;
}

// --- CalculationWorld
// ----------------------------------------------------------------------------------------------------

double EmbeddedWorkbook::Now() const {
  return program_->desk.Now();
}

const engine::Workbook* EmbeddedWorkbook::FindBook(std::string_view fileName) const {
  const auto found = program_->FindBook(fileName);
  return found == nullptr ? nullptr : found->book_.get();
}

// --- WorkbookBody
// ----------------------------------------------------------------------------------------------------------

void EmbeddedWorkbook::SetPath(const std::string& path) {
  const std::size_t separator = path.find_last_of("/\\");
  folder_ = separator == std::string::npos ? "" : path.substr(0, separator + 1);
  name_ = separator == std::string::npos ? path : path.substr(separator + 1);
}

std::string EmbeddedWorkbook::Path() const {
  return folder_.empty() ? "" : folder_.substr(0, folder_.size() - 1);
}

void EmbeddedWorkbook::SetIsAddin(bool isAddin) {
  if (isAddin_ == isAddin) return;
  isAddin_ = isAddin;
  program_->AddinChanged(*this);
}

void EmbeddedWorkbook::SetProtectStructure(bool on) {
  if (book_->structureProtected == on) return;
  book_->structureProtected = on;
  program_->BookEdited(*this);
}

host::Names EmbeddedWorkbook::Names() const {
  return host::Names(std::make_shared<EmbeddedNames>(NameScope{Self(), nullptr}));
}

host::Worksheet EmbeddedWorkbook::WorksheetAt(int index) const {
  if (index < 1 || index > WorksheetsCount()) {
    throw host::HostError(host::ErrorNumber::SubscriptOutOfRange, host::kSubscriptText);
  }
  return host::Worksheet(SheetOf(book_->sheetAt(static_cast<std::size_t>(index - 1)).id()));
}

host::Worksheet EmbeddedWorkbook::WorksheetNamed(std::string_view name) const {
  const engine::Sheet* sheet = std::as_const(*book_).FindSheet(name);
  if (sheet == nullptr) throw host::HostError(host::ErrorNumber::SubscriptOutOfRange, host::kSubscriptText);
  return host::Worksheet(SheetOf(sheet->id()));
}

host::Worksheet EmbeddedWorkbook::WorksheetsAdd() {
  RequireUnprotectedStructure("added");
  int number = static_cast<int>(book_->sheetCount());
  std::string name;
  do {
    name = "Sheet" + std::to_string(++number);
  } while (book_->FindSheet(name) != nullptr);
  engine::Sheet& sheet = Refusing([&]() -> engine::Sheet& { return book_->AddSheet(name, book_->sheetCount()); });
  const auto body = TakeUp(sheet);
  program_->BookEdited(*this);
  if (body->IsAlive()) ActivateSheet(*body);
  return host::Worksheet(body);
}

host::Worksheet EmbeddedWorkbook::ActiveSheet() const {
  return host::Worksheet(activeSheet());
}

std::vector<host::Window> EmbeddedWorkbook::Windows() const {
  if (isAddin_) return {};
  return {host::Window(std::make_shared<EmbeddedWindow>(Self()))};
}

void EmbeddedWorkbook::Activate() {
  if (isAddin_) Refuse("The add-in \"" + name_ + "\" has no window to activate.");
  program_->ActivateBook(Self());
}

void EmbeddedWorkbook::DefineStyle(const host::StyleDefinition& style) {
  const engine::NamedStyle named = ToEngine(style);
  Refusing([&] {
    if (const auto id = book_->formats.FindStyle(style.name)) {
      book_->formats.ChangeStyle(*id, named);
    } else {
      book_->formats.AddStyle(named);
    }
  });
  program_->BookEdited(*this);
}

std::vector<std::string> EmbeddedWorkbook::StyleNames() const {
  std::vector<std::string> names;
  for (const engine::NamedStyle& style : book_->formats.styles()) names.push_back(style.name);
  return names;
}

void EmbeddedWorkbook::RequireFilePath(const std::string& path) const {
  const std::string name = shell::FileNameOf(path).Whole();
  if (name.empty()) Refuse("\"" + path + "\" is not the path of a file.");
  program_->RequireFreeName(name, this);
}

void EmbeddedWorkbook::WriteFile(const std::string& path) {
  RequireFilePath(path);
  program_->files.Save(*book_, path);
  SetPath(path);
  saved_ = true;
}

}  // namespace tolvane::embedded
