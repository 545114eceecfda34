#include "hosts/libreoffice/CalcProgram.h"

#include <algorithm>
#include <com/sun/star/document/MacroExecMode.hpp>
#include <com/sun/star/document/UpdateDocMode.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/sheet/XCalculatable.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/task/XStatusIndicatorFactory.hpp>
#include <com/sun/star/text/XText.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <filesystem>

#include "hosts/libreoffice/BuiltInEffects.h"
#include "hosts/libreoffice/CalcRange.h"
#include "hosts/libreoffice/CalcWindow.h"
#include "hosts/libreoffice/CalcWorkbook.h"
#include "hosts/libreoffice/CalcWorksheet.h"
#include "hosts/shell/FileName.h"
#include "platform/Text.h"

namespace tolvane::libreoffice {

namespace {

constexpr const char* kNewBook = "private:factory/scalc";

bool IsTemplate(const std::string& extension) {
  const std::string folded = platform::FoldCase(extension);
  return folded == ".xltx" || folded == ".xltm" || folded == ".xlt" || folded == ".ots";
}

bool IsAddinFile(const std::string& extension) {
  const std::string folded = platform::FoldCase(extension);
  return folded == ".xlam" || folded == ".xla";
}

}  // namespace

CalcProgram::CalcProgram(const Reference<css::uno::XComponentContext>& context, shell::Desk& theDesk,
                         Options theOptions)
    : Session(theDesk, theOptions),
      hiddenWindows_(theOptions.hiddenWindows),
      context_(context),
      desktop_(css::frame::Desktop::create(context), UNO_QUERY_THROW) {}

void CalcProgram::End() {
  EndSession();
  clipboard = {};
  const auto books = books_;
  for (const auto& book : books) {
    const Reference<css::util::XCloseable> document(book->model(), UNO_QUERY);
    Forget(*book);
    try {
      if (document.is()) document->close(true);
    } catch (const css::uno::Exception&) {
      // Somebody else still needs the document, and closes it then.
    }
  }
  books_.clear();
  active_.reset();
  thisBook_.reset();
}

// --- settings
// ----------------------------------------------------------------------------------------------------------------

void CalcProgram::ApplyScreenUpdating() {
  for (const auto& book : books_) {
    AtEdge([&] {
      const auto& model = book->model();
      if (settings.screenUpdating) {
        while (model->hasControllersLocked()) model->unlockControllers();
      } else if (!model->hasControllersLocked()) {
        model->lockControllers();
      }
    });
  }
}

void CalcProgram::ApplyCalculation() {
  const bool automatic = settings.calculation == host::Calculation::Automatic;
  for (const auto& book : books_) {
    AtEdge([&] { As<css::sheet::XCalculatable>(book->model())->enableAutomaticCalculation(automatic); });
  }
}

void CalcProgram::ShowStatusBar() {
  if (active_ == nullptr) return;
  AtEdge([&] {
    const auto controller = active_->controller();
    const Reference<css::task::XStatusIndicatorFactory> frame(
        controller.is() ? controller->getFrame() : Reference<css::frame::XFrame>(), UNO_QUERY);
    if (!frame.is()) return;
    const auto indicator = frame->createStatusIndicator();
    if (settings.statusBar) {
      indicator->start(ToUno(*settings.statusBar), 0);
    } else {
      indicator->end();
    }
  });
}

// --- clipboard
// -----------------------------------------------------------------------------------------------------------------

void CalcProgram::EndCutCopyMode() {
  if (clipboard.mode == host::CutCopyMode::None) return;
  clipboard = {};
}

bool CalcProgram::ClipboardHasText() const {
  if (clipboard.mode != host::CutCopyMode::None) return clipboard.cells.IsAlive();
  return clipboard.text.has_value() && !clipboard.text->empty();
}

std::string CalcProgram::ClipboardText() const {
  if (clipboard.mode == host::CutCopyMode::None || !clipboard.cells.IsAlive()) return clipboard.text.value_or("");
  std::string text;
  const auto cells = BodyOf(clipboard.cells);
  AtEdge([&] {
    for (const Rect& area : cells->areas()) {
      const auto object = cells->sheet()->object();
      for (int row = area.top; row <= area.bottom; ++row) {
        for (int column = area.left; column <= area.right; ++column) {
          if (column > area.left) text += '\t';
          text += ToUtf8(As<css::text::XText>(object->getCellByPosition(column - 1, row - 1))->getString());
        }
        text += "\r\n";
      }
    }
  });
  return text;
}

// --- workbooks
// -----------------------------------------------------------------------------------------------------------------

std::shared_ptr<CalcWorkbook> CalcProgram::FindBook(std::string_view name) const {
  const auto found = std::find_if(books_.begin(), books_.end(),
                                  [name](const auto& book) { return platform::EqualIgnoringCase(book->Name(), name); });
  return found == books_.end() ? nullptr : *found;
}

std::shared_ptr<CalcWorksheet> CalcProgram::activeSheet() const {
  return active_ == nullptr ? nullptr : active_->activeSheet();
}

void CalcProgram::RequireFreeName(std::string_view name, const CalcWorkbook* except) const {
  const auto taken = FindBook(name);
  if (taken == nullptr || taken.get() == except) return;
  Refuse("A workbook named \"" + std::string(name) + "\" is already open. Close it first.");
}

Reference<css::lang::XComponent> CalcProgram::Load(const OUString& url, bool hidden, bool asTemplate) {
  const OwnEdit edit(*this);
  return AtEdge([&] {
    const auto document = desktop_->loadComponentFromURL(
        url, "_blank", 0,
        ToSequence({{"Hidden", Any(hidden || hiddenWindows_)},
                    {"AsTemplate", Any(asTemplate)},
                    {"MacroExecutionMode", Any(css::document::MacroExecMode::NEVER_EXECUTE)},
                    {"UpdateDocMode", Any(css::document::UpdateDocMode::NO_UPDATE)}}));
    if (!Reference<css::sheet::XSpreadsheetDocument>(document, UNO_QUERY).is()) {
      const Reference<css::util::XCloseable> closeable(document, UNO_QUERY);
      if (closeable.is()) closeable->close(true);
      Refuse("\"" + ToPath(url) + "\" is no workbook.");
    }
    return document;
  });
}

std::shared_ptr<CalcWorkbook> CalcProgram::Adopt(const Reference<css::lang::XComponent>& document, std::string name,
                                                 std::string path, bool isAddin, bool tellsOpen) {
  const Reference<css::frame::XModel> model(document, UNO_QUERY);
  if (!Reference<css::sheet::XSpreadsheetDocument>(document, UNO_QUERY).is()) return nullptr;
  const auto book =
      std::make_shared<CalcWorkbook>(shared_from_this(), model, std::move(name), std::move(path), isAddin);
  {
    const OwnEdit edit(*this);
    book->Start();
  }
  books_.push_back(book);
  ApplyCalculation();
  if (!settings.screenUpdating) ApplyScreenUpdating();
  if (onAdopted) onAdopted(*book);
  if (tellsOpen) {
    Raise([book](host::ApplicationEvents& listener) {
      if (book->IsAlive()) listener.WorkbookOpen(host::Workbook(book));
    });
  }
  if (!book->IsAddin() && book->IsAlive()) ActivateBook(book);
  return book;
}

void CalcProgram::AdoptFromUser(const Reference<css::frame::XModel>& model, bool tellsOpen) {
  if (BookOf(model) != nullptr || !Reference<css::sheet::XSpreadsheetDocument>(model, UNO_QUERY).is()) return;
  if (!model->getCurrentController().is()) return;
  const std::string path = ToPath(model->getURL());
  std::string name = shell::FileNameOf(path).Whole();
  // Calc opens two files of one name, which Excel refuses; by its name only the first one is found.
  if (name.empty()) name = NameOfNewBook();
  Adopt(Reference<css::lang::XComponent>(model, UNO_QUERY_THROW), std::move(name), path, false, tellsOpen);
}

std::shared_ptr<CalcWorkbook> CalcProgram::NewBook() {
  return Adopt(Load(OUString::createFromAscii(kNewBook), false, false), NameOfNewBook(), {}, false, false);
}

std::shared_ptr<CalcWorkbook> CalcProgram::AdoptAddin(std::string name) {
  thisBook_ = Adopt(Load(OUString::createFromAscii(kNewBook), true, false), std::move(name), {}, true, false);
  return thisBook_;
}

std::shared_ptr<CalcWorkbook> CalcProgram::OpenFile(const std::string& path, bool tellsOpen, bool asTemplate) {
  const shell::FileName name = shell::FileNameOf(path);
  const bool fromTemplate = asTemplate || IsTemplate(name.extension);
  if (!fromTemplate) RequireFreeName(name.Whole(), nullptr);
  std::error_code failure;
  if (!std::filesystem::is_regular_file(path, failure)) Refuse("There is no file \"" + path + "\".");
  if (std::filesystem::file_size(path, failure) == 0) Refuse("\"" + path + "\" is empty; it is no workbook.");
  const bool isAddin = IsAddinFile(name.extension);
  auto document = Load(ToUrl(path), isAddin, fromTemplate);
  // Calc lets nobody edit a file that it opened for reading only, Excel does: a copy takes its place.
  const bool readOnly = AtEdge([&] { return As<css::frame::XStorable>(document)->isReadonly(); });
  if (readOnly) {
    const OwnEdit edit(*this);
    AtEdge([&] { As<css::util::XCloseable>(document)->close(true); });
    document = Load(ToUrl(path), isAddin, true);
  }
  const auto book = Adopt(document, fromTemplate ? NameFromTemplate(name.stem) : name.Whole(),
                          fromTemplate ? std::string() : path, isAddin, tellsOpen);
  if (readOnly) book->SetReadOnlyFile();
  return book;
}

std::shared_ptr<CalcWorkbook> CalcProgram::BookOf(const Reference<css::uno::XInterface>& model) const {
  for (const auto& book : books_) {
    if (book->model() == model) return book;
  }
  return nullptr;
}

void CalcProgram::CloseBook(shell::Book& book) {
  CalcWorkbook& closing = static_cast<CalcWorkbook&>(book);
  const Reference<css::util::XCloseable> document(closing.model(), UNO_QUERY_THROW);
  const auto kept = closing.shared_from_this();
  closing.SetSaved(true);
  // Dead before it closes: what Calc tells meanwhile concerns nobody.
  Forget(closing);
  AtEdge([&] { document->close(true); });
}

void CalcProgram::Forget(CalcWorkbook& closing) {
  const auto found =
      std::find_if(books_.begin(), books_.end(), [&](const auto& book) { return book.get() == &closing; });
  if (found == books_.end()) return;
  const std::shared_ptr<CalcWorkbook> book = *found;
  if (clipboard.mode != host::CutCopyMode::None &&
      (!clipboard.cells.IsAlive() || &BodyOf(clipboard.cells)->sheet()->book() == &closing)) {
    EndCutCopyMode();
  }
  macros.Forget(book->Key());
  books_.erase(found);
  if (thisBook_ == book) thisBook_.reset();
  const bool wasActive = active_ == book;
  if (wasActive) active_.reset();
  if (onForgotten) onForgotten(*book);
  book->Die();
  if (wasActive && !hasEnded()) ActivateAnother();
}

// The book that was opened last of the others comes to the front.
void CalcProgram::ActivateAnother() {
  for (auto next = books_.rbegin(); next != books_.rend(); ++next) {
    if ((*next)->IsAddin()) continue;
    ActivateBook(*next);
    return;
  }
}

void CalcProgram::ActivateBook(const std::shared_ptr<CalcWorkbook>& book) {
  if (active_ == book) return;
  active_ = book;
  {
    const OwnEdit edit(*this);
    AtEdge([&] {
      const auto controller = book->controller();
      if (controller.is() && controller->getFrame().is()) controller->getFrame()->activate();
    });
  }
  Raise([book](host::ApplicationEvents& listener) {
    if (!book->IsAlive()) return;
    listener.WindowActivate(host::Workbook(book), host::Window(std::make_shared<CalcWindow>(book)));
  });
}

void CalcProgram::AddinChanged(CalcWorkbook& book) {
  if (!book.IsAddin() || active_.get() != &book) return;
  active_.reset();
  ActivateAnother();
}

// --- edits
// -------------------------------------------------------------------------------------------------------------------

// Calc calculates by itself but does not tell what. Told of are the sheets that may have followed: those that hold
// formulas at all.
std::vector<std::shared_ptr<CalcWorksheet>> CalcProgram::SheetsWithFormulas() const {
  std::vector<std::shared_ptr<CalcWorksheet>> found;
  for (const auto& book : books_) {
    for (const auto& sheet : book->sheets()) {
      if (sheet->HasFormulas()) found.push_back(sheet);
    }
  }
  return found;
}

void CalcProgram::CellsEdited(CalcWorksheet& sheet, const Rects& areas) {
  EditHappened();
  if (!settings.enableEvents) return;
  std::vector<std::shared_ptr<CalcWorksheet>> calculated;
  if (settings.calculation == host::Calculation::Automatic) calculated = SheetsWithFormulas();
  const host::Range target = sheet.RangeOver(areas);
  events.Raise([self = sheet.Self(), target](host::ApplicationEvents& listener) {
    if (target.IsAlive()) listener.SheetChange(host::Worksheet(self), target);
  });
  RaiseCalculated(calculated);
}

void CalcProgram::RaiseCalculated(const std::vector<std::shared_ptr<CalcWorksheet>>& sheets) {
  for (const auto& sheet : sheets) {
    events.Raise([sheet](host::ApplicationEvents& listener) {
      if (sheet->IsAlive()) listener.SheetCalculate(host::Worksheet(sheet));
    });
  }
}

void CalcProgram::BookEdited(CalcWorkbook& book) {
  EditHappened();
  book.SetSaved(false);
}

void CalcProgram::Recalculate() {
  const bool tells = settings.enableEvents;
  std::vector<std::shared_ptr<CalcWorksheet>> calculated;
  if (tells) calculated = SheetsWithFormulas();
  for (const auto& book : books_) {
    AtEdge([&] { As<css::sheet::XCalculatable>(book->model())->calculate(); });
  }
  RaiseCalculated(calculated);
}

void CalcProgram::ClearSelection() {
  if (const auto sheet = activeSheet()) sheet->RangeOver(sheet->Selected()).ClearContents();
}

void CalcProgram::DoBuiltInControl(int id) {
  libreoffice::DoBuiltInControl(*this, id);
}

std::vector<std::shared_ptr<shell::Book>> CalcProgram::BooksForMacro(const std::optional<std::string>& name) const {
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

}  // namespace tolvane::libreoffice
