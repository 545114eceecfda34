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
#include "hosts/shell/CancelKey.h"
#include "hosts/shell/Desk.h"
#include "hosts/shell/EventHub.h"
#include "hosts/shell/Keys.h"
#include "hosts/shell/Macros.h"
#include "src/host/CellValue.h"
#include "src/host/Constants.h"
#include "src/host/Gate.h"
#include "src/host/Range.h"

namespace tolvane::libreoffice {

class CalcWorkbook;
class CalcWorksheet;

// What the office has one of, behind Application: its settings, the open workbooks, what was copied, the events. Bodies
// hold it, so that a handle may outlive the host; End breaks the circles.
class CalcProgram : public std::enable_shared_from_this<CalcProgram> {
 public:
  struct Options {
    std::string version = "16.0";
    std::string caption = "Tolvane";
    bool hiddenWindows = false;
  };
  CalcProgram(const Reference<css::uno::XComponentContext>& context, shell::Desk& desk, Options options);
  // Closes what the host opened; all bodies are dead from then on.
  void End();
  bool hasEnded() const { return ended_; }

  const Reference<css::uno::XComponentContext>& context() const { return context_; }
  const std::shared_ptr<host::Gate> gate = std::make_shared<host::Gate>();
  shell::Desk& desk;
  const Options options;

  // --- settings -----------------------------------------------------------------------------------------------------
  struct Settings {
    std::optional<std::string> statusBar;
    bool screenUpdating = true;
    bool enableEvents = true;
    bool displayAlerts = true;
    host::Cursor cursor = host::Cursor::Default;
    host::Calculation calculation = host::Calculation::Automatic;
    host::ReferenceStyle referenceStyle = host::ReferenceStyle::A1;
  };
  Settings settings;
  void ApplyScreenUpdating();
  void ApplyCalculation();
  void ShowStatusBar();

  shell::EventHub events;
  shell::Macros macros;
  shell::CancelKeyWatch cancelKey;
  shell::Keys keys;

  struct Command {
    std::string caption;
    std::string macro;
  };
  std::optional<Command> undo;
  std::optional<Command> repeat;

  // What is on the clipboard: cells of an open book while in a mode, else a text.
  struct Clipboard {
    host::CutCopyMode mode = host::CutCopyMode::None;
    host::Range cells;
    std::optional<std::string> text;
  };
  Clipboard clipboard;
  void EndCutCopyMode();
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
  // A book that the user opened; none for a document that is no spreadsheet.
  std::shared_ptr<CalcWorkbook> Adopt(const Reference<css::lang::XComponent>& document, std::string name,
                                      std::string path, bool isAddin, bool tellsOpen);
  std::shared_ptr<CalcWorkbook> BookOf(const Reference<css::uno::XInterface>& model) const;  // null
  void Close(CalcWorkbook& book);
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
  void Recalculate();
  class KeepCopyMode {
   public:
    explicit KeepCopyMode(CalcProgram& program) : program_(program) { ++program_.keepsCopyMode_; }
    ~KeepCopyMode() { --program_.keepsCopyMode_; }
    KeepCopyMode(const KeepCopyMode&) = delete;
    KeepCopyMode& operator=(const KeepCopyMode&) = delete;

   private:
    CalcProgram& program_;
  };
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

  // --- calls into the add-in
  // --------------------------------------------------------------------------------------------
  host::CellValue RunMacro(std::string_view text);
  void RunCommand(std::string_view macro);
  void EnterAddin() { ++callDepth_; }
  void LeaveAddin();
  class AddinCall {
   public:
    explicit AddinCall(CalcProgram& program) : program_(program) { program_.EnterAddin(); }
    ~AddinCall() { program_.LeaveAddin(); }
    AddinCall(const AddinCall&) = delete;
    AddinCall& operator=(const AddinCall&) = delete;

   private:
    CalcProgram& program_;
  };
  void Raise(const shell::EventHub::Event& event);

 private:
  Reference<css::lang::XComponent> Load(const OUString& url, bool hidden, bool asTemplate);
  void MarkEdited();
  void RaiseCalculated(const std::vector<std::shared_ptr<CalcWorksheet>>& sheets);
  std::vector<std::shared_ptr<CalcWorksheet>> SheetsWithFormulas() const;
  void ActivateAnother();
  std::string FreeName(const std::string& stem);

  Reference<css::uno::XComponentContext> context_;
  Reference<css::frame::XDesktop2> desktop_;
  std::vector<std::shared_ptr<CalcWorkbook>> books_;
  std::shared_ptr<CalcWorkbook> active_;
  std::shared_ptr<CalcWorkbook> thisBook_;
  std::uint64_t nextKey_ = 1;
  int newBooks_ = 0;
  std::map<std::string, int> fromTemplate_;
  int keepsCopyMode_ = 0;
  int ownEdits_ = 0;
  int callDepth_ = 0;
  bool ended_ = false;
};

}  // namespace tolvane::libreoffice
