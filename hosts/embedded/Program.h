#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/model/Geometry.h"
#include "hosts/embedded/Clipboard.h"
#include "hosts/embedded/EmbeddedHost.h"
#include "hosts/shell/CancelKey.h"
#include "hosts/shell/Desk.h"
#include "hosts/shell/EventHub.h"
#include "hosts/shell/Macros.h"
#include "src/host/CellValue.h"
#include "src/host/Constants.h"
#include "src/host/Gate.h"

namespace tolvane::embedded {

class EmbeddedWorkbook;
class EmbeddedWorksheet;

// What the program has one of, behind Application: its settings, the open workbooks, the clipboard, the events. Bodies
// hold it, so that a handle may outlive the host; End breaks the circles.
class Program : public std::enable_shared_from_this<Program> {
 public:
  Program(shell::Desk& desk, BookFiles& files, EmbeddedHost::Options options);
  // Closes everything; all bodies are dead from then on.
  void End();
  bool hasEnded() const { return ended_; }

  const std::shared_ptr<host::Gate> gate = std::make_shared<host::Gate>();
  shell::Desk& desk;
  BookFiles& files;
  const EmbeddedHost::Options options;

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

  shell::EventHub events;
  Clipboard clipboard;
  shell::Macros macros;
  shell::CancelKeyWatch cancelKey;

  struct Command {
    std::string caption;
    std::string macro;
  };
  std::optional<Command> undo;
  std::optional<Command> repeat;

  // --- workbooks
  // ------------------------------------------------------------------------------------------------------
  std::uint64_t NextKey() { return nextKey_++; }
  // Open ones in the order of opening, add-ins too.
  const std::vector<std::shared_ptr<EmbeddedWorkbook>>& books() const { return books_; }
  std::shared_ptr<EmbeddedWorkbook> FindBook(std::string_view name) const;  // ignoring case; null
  std::shared_ptr<EmbeddedWorkbook> activeBook() const { return active_; }  // null when none is in front
  std::shared_ptr<EmbeddedWorksheet> activeSheet() const;
  std::shared_ptr<EmbeddedWorkbook> thisBook() const { return thisBook_; }
  void SetThisBook(std::shared_ptr<EmbeddedWorkbook> book) { thisBook_ = std::move(book); }

  struct Opening {
    std::unique_ptr<engine::Workbook> book;
    std::string name;
    std::string path;  // empty: unsaved
    bool isAddin = false;
    bool tellsOpen = true;  // raises WorkbookOpen
  };
  std::shared_ptr<EmbeddedWorkbook> Open(Opening opening);
  std::shared_ptr<EmbeddedWorkbook> OpenFile(const std::string& path, bool tellsOpen, bool asTemplate);
  std::shared_ptr<EmbeddedWorkbook> NewBook();
  void Close(EmbeddedWorkbook& book);
  void ActivateBook(const std::shared_ptr<EmbeddedWorkbook>& book);
  // A book has become an add-in and gone from the front, or an ordinary one.
  void AddinChanged(EmbeddedWorkbook& book);
  // Throws when another open book has this file name.
  void RequireFreeName(std::string_view name, const EmbeddedWorkbook* except) const;

  // --- edits
  // ---------------------------------------------------------------------------------------------------------- Called
  // when an edit is complete. An edit ends copy mode and the undo entry, and makes its book unsaved. In automatic mode
  // everything stale is worked out. Cells: raises SheetChange, then SheetCalculate.
  void CellsEdited(EmbeddedWorksheet& sheet, const std::vector<engine::Rect>& areas);
  // The same where formulas were entered, which show their results at once in manual mode, too.
  void FormulasEntered(EmbeddedWorksheet& sheet, const std::vector<engine::Rect>& areas);
  void BookEdited(EmbeddedWorkbook& book);
  // Works out stale formulas of all books and raises SheetCalculate.
  void Recalculate();
  // While one lives, edits leave copy mode on: pasting is an edit, too.
  class KeepCopyMode {
   public:
    explicit KeepCopyMode(Program& program) : program_(program) { ++program_.keepsCopyMode_; }
    ~KeepCopyMode() { --program_.keepsCopyMode_; }
    KeepCopyMode(const KeepCopyMode&) = delete;
    KeepCopyMode& operator=(const KeepCopyMode&) = delete;

   private:
    Program& program_;
  };

  // --- calls into the add-in
  // -------------------------------------------------------------------------------------------- As Application.Run.
  host::CellValue RunMacro(std::string_view text);
  // As RunMacro, for keys, buttons and the undo list: an empty text does nothing.
  void RunCommand(std::string_view macro);
  // Takes the keys that were sent to the program; called when no part of the add-in is at work, as a program sees its
  // input only then.
  void OnSentKeys(std::function<void()> take) { takeSentKeys_ = std::move(take); }
  void KeysWereSent();
  // Around everything that calls into the add-in.
  void EnterAddin() { ++callDepth_; }
  void LeaveAddin();
  class AddinCall {
   public:
    explicit AddinCall(Program& program) : program_(program) { program_.EnterAddin(); }
    ~AddinCall() { program_.LeaveAddin(); }
    AddinCall(const AddinCall&) = delete;
    AddinCall& operator=(const AddinCall&) = delete;

   private:
    Program& program_;
  };

  // Raises an event unless events are off now.
  void Raise(const shell::EventHub::Event& event);

 private:
  void MarkEdited(EmbeddedWorkbook& book);
  void ActivateLast();
  void TellActivated(const std::shared_ptr<EmbeddedWorkbook>& book);
  std::vector<shell::EventHub::Event> RecalculateAll();
  std::string FreeName(const std::string& stem);

  std::vector<std::shared_ptr<EmbeddedWorkbook>> books_;
  std::shared_ptr<EmbeddedWorkbook> active_;
  std::shared_ptr<EmbeddedWorkbook> thisBook_;
  std::uint64_t nextKey_ = 1;
  int newBooks_ = 0;
  std::map<std::string, int> fromTemplate_;
  int keepsCopyMode_ = 0;
  int callDepth_ = 0;
  bool keysWait_ = false;
  std::function<void()> takeSentKeys_;
  bool ended_ = false;
};

}  // namespace tolvane::embedded
