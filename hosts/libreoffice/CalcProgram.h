#pragma once

#include <com/sun/star/frame/XDesktop2.hpp>
#include <com/sun/star/lang/XComponent.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/libreoffice/Geometry.h"
#include "hosts/libreoffice/Uno.h"
#include "hosts/shell/Session.h"
#include "src/host/CellValue.h"
#include "src/host/Constants.h"
#include "src/host/Gate.h"
#include "src/host/Range.h"

namespace tolvane::libreoffice {

class CalcWorkbook;
class CalcWorksheet;

// What the office has one of, behind Application: beside what every host has, the open workbooks and what was copied.
// Bodies hold it, so that a handle may outlive the host; End breaks the circles.
class CalcProgram final : public shell::Session, public std::enable_shared_from_this<CalcProgram> {
 public:
  struct Options : shell::Session::Options {
    bool hiddenWindows = false;
  };
  CalcProgram(const Reference<css::uno::XComponentContext>& context, shell::Desk& desk, Options options);
  // Closes what the host opened; all bodies are dead from then on.
  void End();

  const Reference<css::uno::XComponentContext>& context() const { return context_; }
  void ApplyScreenUpdating();
  void ApplyCalculation();
  void ShowStatusBar();

  // What is on the clipboard: cells of an open book while in a mode, else a text.
  struct Clipboard {
    host::CutCopyMode mode = host::CutCopyMode::None;
    host::Range cells;
    std::optional<std::string> text;
  };
  Clipboard clipboard;
  void EndCutCopyMode() override;
  bool IsCopying() const override { return clipboard.mode != host::CutCopyMode::None; }
  // Of cells: what they show, a tab between columns, CR LF behind each row.
  bool ClipboardHasText() const;
  std::string ClipboardText() const;

  // --- workbooks
  // ------------------------------------------------------------------------------------------------------
  std::uint64_t NextKey() { return nextKey_++; }
  const std::vector<std::shared_ptr<CalcWorkbook>>& books() const { return books_; }
  std::shared_ptr<CalcWorkbook> FindBook(std::string_view name) const;  // ignoring case; null
  std::shared_ptr<CalcWorkbook> activeBook() const { return active_; }
  std::shared_ptr<CalcWorksheet> activeSheet() const;
  std::shared_ptr<CalcWorkbook> thisBook() const { return thisBook_; }

  std::shared_ptr<CalcWorkbook> NewBook();
  std::shared_ptr<CalcWorkbook> OpenFile(const std::string& path, bool tellsOpen, bool asTemplate);
  // The add-in's own book: open, hidden, never in front.
  std::shared_ptr<CalcWorkbook> AdoptAddin(std::string name);
  // None for a document that is no spreadsheet.
  std::shared_ptr<CalcWorkbook> Adopt(const Reference<css::lang::XComponent>& document, std::string name,
                                      std::string path, bool isAddin, bool tellsOpen);
  // A document that the user opened or made becomes a book, unless it is one, is no spreadsheet or has no window.
  void AdoptFromUser(const Reference<css::frame::XModel>& model, bool tellsOpen);
  std::shared_ptr<CalcWorkbook> BookOf(const Reference<css::uno::XInterface>& model) const;  // null
  void CloseBook(shell::Book& book) override;
  // Who listens to what the user does in a book.
  std::function<void(CalcWorkbook&)> onAdopted, onForgotten;
  // Its document is gone.
  void Forget(CalcWorkbook& book);
  void ActivateBook(const std::shared_ptr<CalcWorkbook>& book);
  void AddinChanged(CalcWorkbook& book);
  void RequireFreeName(std::string_view name, const CalcWorkbook* except) const;

  // --- edits
  // ---------------------------------------------------------------------------------------------------------- Called
  // when an edit is complete: ends copy mode and the undo entry; with cells, raises SheetChange and then SheetCalculate
  // for the sheets whose formulas may have followed.
  void CellsEdited(CalcWorksheet& sheet, const Rects& areas);
  void BookEdited(CalcWorkbook& book);
  void Recalculate() override;
  void ClearSelection() override;
  void DoBuiltInControl(int id) override;
  // While the host itself edits, what Calc tells of is not the user's doing.
  class OwnEdit {
   public:
    explicit OwnEdit(CalcProgram& program) : program_(program) { ++program_.ownEdits_; }
    ~OwnEdit() { --program_.ownEdits_; }
    OwnEdit(const OwnEdit&) = delete;
    OwnEdit& operator=(const OwnEdit&) = delete;

   private:
    CalcProgram& program_;
  };
  bool isEditing() const { return ownEdits_ > 0; }

 protected:
  std::vector<std::shared_ptr<shell::Book>> BooksForMacro(const std::optional<std::string>& name) const override;
  bool IsNameTaken(std::string_view name) const override { return FindBook(name) != nullptr; }

 private:
  Reference<css::lang::XComponent> Load(const OUString& url, bool hidden, bool asTemplate);
  void RaiseCalculated(const std::vector<std::shared_ptr<CalcWorksheet>>& sheets);
  std::vector<std::shared_ptr<CalcWorksheet>> SheetsWithFormulas() const;
  void ActivateAnother();

  const bool hiddenWindows_;
  Reference<css::uno::XComponentContext> context_;
  Reference<css::frame::XDesktop2> desktop_;
  std::vector<std::shared_ptr<CalcWorkbook>> books_;
  std::shared_ptr<CalcWorkbook> active_;
  std::shared_ptr<CalcWorkbook> thisBook_;
  std::uint64_t nextKey_ = 1;
  int ownEdits_ = 0;
};

}  // namespace tolvane::libreoffice
