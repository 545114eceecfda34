#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/shell/Book.h"
#include "hosts/shell/CancelKey.h"
#include "hosts/shell/Desk.h"
#include "hosts/shell/EventHub.h"
#include "hosts/shell/Keys.h"
#include "hosts/shell/Macros.h"
#include "src/host/CellValue.h"
#include "src/host/Constants.h"
#include "src/host/Gate.h"

namespace tolvane::shell {

// What a program has one of, behind Application, whatever holds its cells: settings, events, macros, keys, the entries
// of the undo list, and the calls into the add-in. A host's own program is derived from it.
class Session {
 public:
  struct Options {
    std::string version = "16.0";
    std::string caption = "Tolvane";
  };
  Session(Desk& desk, Options options);
  virtual ~Session() = default;
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
  bool hasEnded() const { return ended_; }

  const std::shared_ptr<host::Gate> gate = std::make_shared<host::Gate>();
  Desk& desk;
  const Options options;

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

  EventHub events;
  Macros macros;
  CancelKeyWatch cancelKey;
  Keys keys;

  struct Command {
    std::string caption;
    std::string macro;
  };
  std::optional<Command> undo;
  std::optional<Command> repeat;
  // OnUndo and OnRepeat; an empty caption takes the entry away.
  static std::optional<Command> CommandOf(std::string_view caption, std::string_view macro);

  // --- what the host's program does
  // -----------------------------------------------------------------------------------
  virtual void CloseBook(Book& book) = 0;
  virtual void Recalculate() = 0;
  virtual bool IsCopying() const = 0;
  virtual void EndCutCopyMode() = 0;
  virtual void ClearSelection() = 0;
  virtual void DoBuiltInControl(int id) = 0;

  // --- edits
  // ---------------------------------------------------------------------------------------------------------- While
  // one lives, edits leave copy mode on: pasting is an edit, too.
  class KeepCopyMode {
   public:
    explicit KeepCopyMode(Session& session) : session_(session) { ++session_.keepsCopyMode_; }
    ~KeepCopyMode() { --session_.keepsCopyMode_; }
    KeepCopyMode(const KeepCopyMode&) = delete;
    KeepCopyMode& operator=(const KeepCopyMode&) = delete;

   private:
    Session& session_;
  };

  // --- calls into the add-in
  // ------------------------------------------------------------------------------------------ As Application.Run.
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
    explicit AddinCall(Session& session) : session_(session) { session_.EnterAddin(); }
    ~AddinCall() { session_.LeaveAddin(); }
    AddinCall(const AddinCall&) = delete;
    AddinCall& operator=(const AddinCall&) = delete;

   private:
    Session& session_;
  };
  // Raises an event unless events are off now.
  void Raise(const EventHub::Event& event);

 protected:
  // Where a macro is looked up: in the book of that name, or in all, the add-in's own and the active one first.
  virtual std::vector<std::shared_ptr<Book>> BooksForMacro(const std::optional<std::string>& name) const = 0;
  virtual bool IsNameTaken(std::string_view name) const = 0;  // by an open book, ignoring case

  // Nothing is told any more.
  void EndSession();
  // An edit ends copy mode and the entries of the undo list.
  void EditHappened();
  std::string NameOfNewBook();
  std::string NameFromTemplate(const std::string& stem);

 private:
  std::map<std::string, int> fromTemplate_;
  int newBooks_ = 0;
  int keepsCopyMode_ = 0;
  int callDepth_ = 0;
  bool keysWait_ = false;
  std::function<void()> takeSentKeys_;
  bool ended_ = false;
};

}  // namespace tolvane::shell
