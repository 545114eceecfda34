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
#include "hosts/shell/Session.h"
#include "src/host/CellValue.h"
#include "src/host/Constants.h"
#include "src/host/Gate.h"

namespace tolvane::embedded {

class EmbeddedWorkbook;
class EmbeddedWorksheet;

// What the program has one of, behind Application: beside what every host has, the open workbooks and the clipboard.
// Bodies hold it, so that a handle may outlive the host; End breaks the circles.
class Program final : public shell::Session, public std::enable_shared_from_this<Program> {
 public:
  Program(shell::Desk& desk, BookFiles& files, Options options);
  // Closes everything; all bodies are dead from then on.
  void End();

  BookFiles& files;
  Clipboard clipboard;

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
  void CloseBook(shell::Book& book) override;
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
  void Recalculate() override;
  bool IsCopying() const override { return clipboard.mode() != host::CutCopyMode::None; }
  void EndCutCopyMode() override { clipboard.EndMode(); }
  void ClearSelection() override;
  void DoBuiltInControl(int id) override;

 protected:
  std::vector<std::shared_ptr<shell::Book>> BooksForMacro(const std::optional<std::string>& name) const override;
  bool IsNameTaken(std::string_view name) const override { return FindBook(name) != nullptr; }

 private:
  void MarkEdited(EmbeddedWorkbook& book);
  void ActivateLast();
  void TellActivated(const std::shared_ptr<EmbeddedWorkbook>& book);
  std::vector<shell::EventHub::Event> RecalculateAll();

  std::vector<std::shared_ptr<EmbeddedWorkbook>> books_;
  std::shared_ptr<EmbeddedWorkbook> active_;
  std::shared_ptr<EmbeddedWorkbook> thisBook_;
  std::uint64_t nextKey_ = 1;
};

}  // namespace tolvane::embedded
