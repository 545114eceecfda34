#include "hosts/libreoffice/CalcWorkbook.h"

#include <filesystem>
#include <system_error>

#include <algorithm>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/sheet/XSpreadsheets.hpp>
#include <com/sun/star/util/XModifiable.hpp>

#include "hosts/libreoffice/CalcNames.h"
#include "hosts/libreoffice/CalcWindow.h"
#include "hosts/libreoffice/CalcWorksheet.h"
#include "hosts/libreoffice/CellStyles.h"
#include "hosts/libreoffice/Hyperlinks.h"
#include "hosts/shell/FileName.h"
#include "platform/Files.h"
#include "platform/Text.h"

namespace tolvane::libreoffice {

namespace {

// By the file's ending, Calc's filter; what it has no filter of ours for is refused.
OUString FilterFor(const std::string& path) {
  struct Kind {
    std::string_view ending;
    const char* filter;
  };
  static constexpr Kind kKinds[] = {{".xlsx", "Calc MS Excel 2007 XML"},
                                    {".xltx", "Calc MS Excel 2007 XML Template"},
                                    {".ods", "calc8"},
                                    {".ots", "calc8_template"}};
  const std::string folded = platform::FoldCase(path);
  for (const Kind& kind : kKinds) {
    if (folded.ends_with(kind.ending)) return OUString::createFromAscii(kind.filter);
  }
  Refuse("\"" + path + "\" ends in none of .xlsx, .xltx, .ods, .ots; a workbook cannot be saved as that.");
}

}  // namespace

std::shared_ptr<CalcWorkbook> BodyOf(const host::Workbook& book) {
  if (book.IsNothing()) throw host::HostError(host::ErrorNumber::ObjectNotSet, host::kObjectNotSetText);
  const auto body = std::dynamic_pointer_cast<CalcWorkbook>(book.body());
  if (body == nullptr) throw host::HostError(host::ErrorNumber::InvalidCall, "The workbook is another program's.");
  if (!body->IsAlive()) throw host::HostError(host::ErrorNumber::ObjectRequired, host::kObjectRequiredText);
  return body;
}

CalcWorkbook::CalcWorkbook(std::shared_ptr<CalcProgram> program, const Reference<css::frame::XModel>& model,
                           std::string name, std::string path, bool isAddin)
    : program_(std::move(program)),
      model_(model),
      key_(program_->NextKey()),
      name_(std::move(name)),
      path_(std::move(path)),
      isAddin_(isAddin) {}

void CalcWorkbook::Start() {
  const bool wasSaved = Saved();
  // Excel's rules of searching and comparing, which files of its kind bring along.
  Set(model_, "Wildcards", true);
  Set(model_, "MatchWholeCell", true);
  Set(model_, "IgnoreCase", true);
  Sync();
  ReadKeepsakes();
  for (const auto& sheet : sheets_) FindLinks(*sheet);
  SyncActiveSheet();
  if (path_.empty() && !isAddin_) EnterView(*active_);  // Calc would show it as the last one was shown
  SetSaved(wasSaved);
}

void CalcWorkbook::Die() {
  for (const auto& sheet : sheets_) sheet->Die();
  sheets_.clear();
  active_.reset();
  model_.clear();
}

Reference<css::frame::XController> CalcWorkbook::controller() const {
  return model_->getCurrentController();
}

Reference<css::uno::XInterface> CalcWorkbook::Create(const char* service) const {
  return AtEdge(
      [&] { return As<css::lang::XMultiServiceFactory>(model_)->createInstance(OUString::createFromAscii(service)); });
}

Reference<css::container::XIndexAccess> CalcWorkbook::sheetAccess() const {
  return As<css::container::XIndexAccess>(As<css::sheet::XSpreadsheetDocument>(model_)->getSheets());
}

Reference<css::sheet::XSpreadsheet> CalcWorkbook::SheetObject(int index) const {
  return AtEdge([&] { return Reference<css::sheet::XSpreadsheet>(sheetAccess()->getByIndex(index), UNO_QUERY_THROW); });
}

// --- sheets
// ------------------------------------------------------------------------------------------------------------------

void CalcWorkbook::Sync() {
  AtEdge([&] {
    const auto access = sheetAccess();
    const sal_Int32 count = access->getCount();
    std::vector<std::shared_ptr<CalcWorksheet>> found;
    for (sal_Int32 i = 0; i < count; ++i) {
      const Reference<css::uno::XInterface> object(access->getByIndex(i), UNO_QUERY_THROW);
      std::string codeName = ToUtf8(Get<OUString>(object, "CodeName"));
      const auto taken = [&](const auto& sheet) { return platform::EqualIgnoringCase(sheet->codeName(), codeName); };
      if (codeName.empty() || std::any_of(found.begin(), found.end(), taken)) {
        codeName = FreeCodeName("Sheet");
        Set(object, "CodeName", ToUno(codeName));
      }
      const auto known = std::find_if(sheets_.begin(), sheets_.end(),
                                      [&](const auto& sheet) { return sheet->codeName() == codeName; });
      found.push_back(known != sheets_.end() ? *known : std::make_shared<CalcWorksheet>(Self(), codeName));
    }
    for (const auto& sheet : sheets_) {
      if (std::find(found.begin(), found.end(), sheet) == found.end()) sheet->Die();
    }
    sheets_ = std::move(found);
  });
}

const std::vector<std::shared_ptr<CalcWorksheet>>& CalcWorkbook::sheets() {
  Sync();
  return sheets_;
}

std::string CalcWorkbook::FreeCodeName(std::string stem) {
  const auto access = sheetAccess();
  const sal_Int32 count = access->getCount();
  for (int number = 1;; ++number) {
    const std::string name = stem + std::to_string(number);
    bool taken = false;
    for (sal_Int32 i = 0; i < count && !taken; ++i) {
      const Reference<css::uno::XInterface> object(access->getByIndex(i), UNO_QUERY_THROW);
      taken = platform::EqualIgnoringCase(ToUtf8(Get<OUString>(object, "CodeName")), name);
    }
    if (!taken) return name;
  }
}

std::shared_ptr<CalcWorksheet> CalcWorkbook::SheetNamed(std::string_view name) {
  for (const auto& sheet : sheets()) {
    if (platform::EqualIgnoringCase(sheet->Name(), name)) return sheet;
  }
  return nullptr;
}

std::shared_ptr<CalcWorksheet> CalcWorkbook::activeSheet() {
  if (active_ == nullptr || !active_->IsAlive()) SyncActiveSheet();
  return active_;
}

void CalcWorkbook::ActivateSheet(const std::shared_ptr<CalcWorksheet>& sheet) {
  const auto before = active_;
  const bool changes = before != sheet;
  active_ = sheet;
  {
    const CalcProgram::OwnEdit edit(*program_);
    if (changes) LeaveView(before.get());
    AtEdge([&] {
      const auto view = controller();
      if (view.is()) As<css::sheet::XSpreadsheetView>(view)->setActiveSheet(sheet->object());
    });
    if (changes) EnterView(*sheet);
  }
  if (!changes) return;
  program_->Raise([sheet](host::ApplicationEvents& listener) {
    if (sheet->IsAlive()) listener.SheetActivate(host::Worksheet(sheet));
  });
}

void CalcWorkbook::UserActivatedSheet() {
  if (program_->isEditing()) return;
  const auto before = active_;
  active_.reset();
  SyncActiveSheet();
  if (active_ == before) return;
  program_->Raise([sheet = active_](host::ApplicationEvents& listener) {
    if (sheet->IsAlive()) listener.SheetActivate(host::Worksheet(sheet));
  });
}

// Takes over what Calc shows; when the sheet in front went, whoever listens hears of the next one.
void CalcWorkbook::SyncActiveSheet() {
  const auto before = active_;
  const auto& all = sheets();
  const auto shown = [&] {
    const auto view = controller();
    if (!view.is()) return std::string();
    const Reference<css::uno::XInterface> object(As<css::sheet::XSpreadsheetView>(view)->getActiveSheet(), UNO_QUERY);
    return ToUtf8(Get<OUString>(object, "CodeName"));
  };
  const std::string codeName = AtEdge(shown);
  active_ = all.front();
  for (const auto& sheet : all) {
    if (sheet->codeName() == codeName) active_ = sheet;
  }
  if (before == nullptr || before == active_) return;
  program_->Raise([sheet = active_](host::ApplicationEvents& listener) {
    if (sheet->IsAlive()) listener.SheetActivate(host::Worksheet(sheet));
  });
}

void CalcWorkbook::RequireStructure(std::string_view what) const {
  if (!protectStructure_) return;
  Refuse("The structure of the workbook \"" + name_ + "\" is protected: no sheet can be " + std::string(what) + ".");
}

void CalcWorkbook::RequireEditable() const {
  if (!AtEdge([&] { return As<css::frame::XStorable>(model_)->isReadonly(); })) return;
  Refuse("The workbook \"" + name_ + "\" was opened for reading only. Let Calc edit it first.");
}

int CalcWorkbook::VisibleSheets() {
  const auto& all = sheets();
  return static_cast<int>(std::count_if(
      all.begin(), all.end(), [](const auto& sheet) { return sheet->Visible() == host::SheetVisibility::Visible; }));
}

// --- formulas
// ----------------------------------------------------------------------------------------------------------------

void CalcWorkbook::Learn(const FormulaTokens& tokens) {
  for (const FormulaToken& token : tokens) {
    if (token.kind != FormulaToken::Kind::Name && token.kind != FormulaToken::Kind::Function) continue;
    std::string lower = platform::LowerCase(token.text);
    if (lower != token.text) spelling_[std::move(lower)] = token.text;
  }
}

std::string CalcWorkbook::SpellingOf(const std::string& lower) const {
  const auto known = spelling_.find(lower);
  return known == spelling_.end() ? lower : known->second;
}

FormulaTokens CalcWorkbook::Read(std::string_view formula, Dialect dialect, CellPos origin) {
  try {
    FormulaTokens tokens = ReadFormula(formula.substr(formula.starts_with('=') ? 1 : 0), dialect, origin);
    for (FormulaToken& token : tokens) Place(token);
    Learn(tokens);
    return tokens;
  } catch (const FormulaError& error) {
    constexpr std::size_t kShown = 100;
    Refuse("The formula \"" + std::string(formula.substr(0, kShown)) + "\" cannot be read: " + error.problem + ".");
  }
}

// The sheet that a token names must be there; another book must be open and have a file.
void CalcWorkbook::Place(FormulaToken& token) {
  const auto sheet = token.reference.sheet;
  if (!sheet || SheetNamed(*sheet) != nullptr) return;
  const auto fileOf = [&](std::string_view name) {
    const auto book = program_->FindBook(name);
    if (book == nullptr || book->Path().empty()) {
      Refuse("There is no sheet \"" + *sheet + "\", and no saved workbook of that name is open.");
    }
    return ToUtf8(ToUrl(book->FullName()));
  };
  const std::size_t end = sheet->find(']');
  if (sheet->starts_with('[') && end != std::string::npos) {
    token.reference.file = fileOf(std::string_view(*sheet).substr(1, end - 1));
    token.reference.sheet = sheet->substr(end + 1);
  } else if (token.kind == FormulaToken::Kind::Name) {
    token.reference.file = fileOf(*sheet);
    token.reference.sheet.reset();
  } else {
    Refuse("There is no sheet \"" + *sheet + "\".");
  }
}

FormulaTokens CalcWorkbook::ReadCalc(std::string_view formula, CellPos origin) const {
  FormulaTokens tokens = ReadFormula(formula.substr(formula.starts_with('=') ? 1 : 0), Dialect::Calc, origin);
  Spell(tokens, [this](const std::string& lower) { return SpellingOf(lower); });
  return tokens;
}

// --- WorkbookBody
// ------------------------------------------------------------------------------------------------------------

std::string CalcWorkbook::Path() const {
  const std::size_t separator = path_.find_last_of("/\\");
  return separator == std::string::npos ? std::string() : path_.substr(0, separator);
}

std::string CalcWorkbook::FullName() const {
  return path_.empty() ? name_ : path_;
}

bool CalcWorkbook::Saved() const {
  return AtEdge([&] { return !As<css::util::XModifiable>(model_)->isModified(); });
}

void CalcWorkbook::SetSaved(bool saved) {
  AtEdge([&] { As<css::util::XModifiable>(model_)->setModified(!saved); });
}

void CalcWorkbook::SetIsAddin(bool isAddin) {
  if (isAddin_ == isAddin) return;
  isAddin_ = isAddin;
  program_->AddinChanged(*this);
}

void CalcWorkbook::SetProtectStructure(bool on) {
  if (protectStructure_ == on) return;
  protectStructure_ = on;
  program_->BookEdited(*this);
}

host::Names CalcWorkbook::Names() const {
  return host::Names(std::make_shared<CalcNames>(CalcNameScope{Self(), {}}));
}

int CalcWorkbook::WorksheetsCount() const {
  return AtEdge([&] { return static_cast<int>(sheetAccess()->getCount()); });
}

host::Worksheet CalcWorkbook::WorksheetAt(int index) const {
  const auto& all = Self()->sheets();
  if (index < 1 || static_cast<std::size_t>(index) > all.size()) {
    throw host::HostError(host::ErrorNumber::SubscriptOutOfRange, host::kSubscriptText);
  }
  return host::Worksheet(all[static_cast<std::size_t>(index - 1)]);
}

host::Worksheet CalcWorkbook::WorksheetNamed(std::string_view name) const {
  const auto sheet = Self()->SheetNamed(name);
  if (sheet == nullptr) throw host::HostError(host::ErrorNumber::SubscriptOutOfRange, host::kSubscriptText);
  return host::Worksheet(sheet);
}

host::Worksheet CalcWorkbook::WorksheetsAdd() {
  RequireStructure("added");
  int number = WorksheetsCount();
  std::string name;
  do {
    name = "Sheet" + std::to_string(++number);
  } while (SheetNamed(name) != nullptr);
  {
    const CalcProgram::OwnEdit edit(*program_);
    AtEdge([&] {
      As<css::sheet::XSpreadsheetDocument>(model_)->getSheets()->insertNewByName(
          ToUno(name), static_cast<sal_Int16>(WorksheetsCount()));
    });
  }
  const auto sheet = SheetNamed(name);
  program_->BookEdited(*this);
  if (sheet->IsAlive()) ActivateSheet(sheet);
  return host::Worksheet(sheet);
}

host::Worksheet CalcWorkbook::ActiveSheet() const {
  return host::Worksheet(Self()->activeSheet());
}

std::vector<host::Window> CalcWorkbook::Windows() const {
  if (isAddin_) return {};
  return {host::Window(std::make_shared<CalcWindow>(Self()))};
}

void CalcWorkbook::Activate() {
  if (isAddin_) Refuse("The add-in \"" + name_ + "\" has no window to activate.");
  program_->ActivateBook(Self());
}

void CalcWorkbook::DefineStyle(const host::StyleDefinition& style) {
  {
    const CalcProgram::OwnEdit edit(*program_);
    Define(*this, style);
  }
  program_->BookEdited(*this);
}

std::vector<std::string> CalcWorkbook::StyleNames() const {
  return StyleNamesOf(*this);
}

bool CalcWorkbook::DefinesName(std::string_view name) const {
  return AtEdge([&] { return CalcNameScope{Self(), nullptr}.Find(name).is(); });
}

void CalcWorkbook::RequireFilePath(const std::string& path) const {
  const std::string name = shell::FileNameOf(path).Whole();
  if (name.empty()) Refuse("\"" + path + "\" is not the path of a file.");
  program_->RequireFreeName(name, this);
  FilterFor(path);
  // Calc would make the folders on the way.
  const auto folder = platform::PathFromUtf8(path).parent_path();
  std::error_code failure;
  if (!folder.empty() && !std::filesystem::is_directory(folder, failure)) {
    Refuse("There is no folder for \"" + path + "\".");
  }
}

void CalcWorkbook::TakeUpFile() {
  path_ = ToPath(model_->getURL());
  name_ = shell::FileNameOf(path_).Whole();
}

void CalcWorkbook::WriteFile(const std::string& path) {
  RequireFilePath(path);
  if (path == path_ && readOnlyFile_) {
    Refuse("\"" + path + "\" was opened for reading only, since another user has it open. Save it under another name.");
  }
  if (path == path_) RequireEditable();
  const OUString filter = FilterFor(path);
  {
    const CalcProgram::OwnEdit edit(*program_);
    WriteKeepsakes();
    try {
      AtEdge([&] {
        As<css::frame::XStorable>(model_)->storeAsURL(
            ToUrl(path), ToSequence({{"FilterName", Any(filter)}, {"Overwrite", Any(true)}}));
      });
    } catch (...) {
      RemoveKeepsakes();
      throw;
    }
    RemoveKeepsakes();
  }
  path_ = path;
  name_ = shell::FileNameOf(path).Whole();
  readOnlyFile_ = false;
  SetSaved(true);
}

}  // namespace tolvane::libreoffice
