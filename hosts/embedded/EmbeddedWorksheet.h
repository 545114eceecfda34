#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/model/Sheet.h"
#include "hosts/embedded/EmbeddedWorkbook.h"
#include "hosts/embedded/RangeTracker.h"
#include "src/host/Worksheet.h"

namespace tolvane::embedded {

class EmbeddedWorksheet final : public host::WorksheetBody, public std::enable_shared_from_this<EmbeddedWorksheet> {
 public:
  EmbeddedWorksheet(EmbeddedWorkbook& book, std::shared_ptr<Program> program, engine::Sheet& sheet);
  void Die() {
    sheet_ = nullptr;
    book_ = nullptr;
  }

  // While alive.
  Program& program() const { return *program_; }
  EmbeddedWorkbook& book() const { return *book_; }
  engine::Sheet& sheet() const { return *sheet_; }
  RangeTracker& tracker() { return tracker_; }
  std::shared_ptr<EmbeddedWorksheet> Self() const {
    return std::const_pointer_cast<EmbeddedWorksheet>(shared_from_this());
  }
  host::Range RangeOver(std::vector<engine::Rect> areas) const;
  host::Range RangeOver(const engine::Rect& area) const;
  // "'My Sheet'!$A$1:$B$2", for messages.
  std::string PlaceOf(const engine::Rect& area) const;
  bool IsInFront() const;  // the active sheet of the active workbook

  // How its window is divided, where that is not frozen (what is frozen stands in the sheet's view).
  engine::Freeze looseSplit;

  // --- selection
  // -------------------------------------------------------------------------------------------------------- The first
  // area's first cell becomes the active one, or `activeCell`. Raises SheetSelectionChange on a change.
  void Select(std::vector<engine::Rect> areas);
  void Select(std::vector<engine::Rect> areas, engine::CellPos activeCell);

  // --- shape; each checks protection, then changes the cells and every range on them
  // ----------------------------------- Runs as in engine::Workbook.
  void DeleteRuns(engine::Axis axis, std::span<const engine::Run> runs);
  void InsertRuns(engine::Axis axis, std::span<const engine::Run> runs);
  void DeleteCells(const std::vector<engine::Rect>& areas, engine::Axis shiftAlong);
  void InsertCells(const std::vector<engine::Rect>& areas, engine::Axis shiftAlong);
  // Everything there goes to another place in the same book.
  void MoveCells(const engine::Rect& area, EmbeddedWorksheet& to, engine::CellPos target);

  // --- filter
  // -------------------------------------------------------------------------------------------------------------
  void ToggleFilter(const engine::Rect& area);
  void SetFilterField(const engine::Rect& area, const host::FilterCriterion& criterion);

  // --- WorksheetBody
  // ----------------------------------------------------------------------------------------------------
  bool IsAlive() const noexcept override { return sheet_ != nullptr; }
  host::Gate& gate() const noexcept override { return *program_->gate; }
  std::uint64_t Key() const noexcept override { return key_; }
  std::string Name() const override { return sheet_->name(); }
  void SetName(std::string_view name) override;
  std::string CodeName() const override { return sheet_->codeName; }
  void SetCodeName(std::string_view name) override;
  int Index() const override;
  host::Workbook Parent() const override;
  host::SheetVisibility Visible() const override;
  void SetVisible(host::SheetVisibility visibility) override;
  host::ColorIndex TabColorIndex() const override;
  void SetTabColorIndex(host::ColorIndex index) override;
  host::PageSetup PageSetup() const override;
  void SetPageSetup(const host::PageSetup& page) override;
  void Activate() override;
  void CopyBefore(const host::Worksheet& sheet) override { CopyTo(sheet, 0); }
  void CopyAfter(const host::Worksheet& sheet) override { CopyTo(sheet, 1); }
  void MoveBefore(const host::Worksheet& sheet) override { MoveTo(sheet, 0); }
  void MoveAfter(const host::Worksheet& sheet) override { MoveTo(sheet, 1); }
  void Delete() override;
  void Calculate() override;
  host::Range RangeOf(std::string_view nameOrAddress) const override;
  host::Range CellAt(int row, int column) const override;
  host::Range Cells() const override;
  host::Range RowAt(int row) const override;
  host::Range ColumnAt(int column) const override;
  int RowsCount() const override { return engine::kMaxRow; }
  int ColumnsCount() const override { return engine::kMaxColumn; }
  host::Names Names() const override;
  bool ProtectContents() const override { return sheet_->protection.isProtected; }
  host::Protection Protection() const override;
  void Protect(const host::Protection& allowed) override;
  void Unprotect() override;
  bool AutoFilterMode() const override { return sheet_->autoFilter.has_value(); }
  void RemoveAutoFilter() override;
  host::Range AutoFilterRange() const override;
  std::vector<host::FilterState> AutoFilterFilters() const override;
  host::SelectionMode EnableSelection() const override { return selectionMode_; }
  void SetEnableSelection(host::SelectionMode mode) override { selectionMode_ = mode; }
  void PasteSpecialText() override;
  void DeleteRows(std::span<const host::RowRun> runs) override;
  void InsertRows(std::span<const host::RowRun> runs) override;

 private:
  // `behind`: 0 in front of the other sheet, 1 behind it.
  void CopyTo(const host::Worksheet& other, std::size_t behind);
  void MoveTo(const host::Worksheet& other, std::size_t behind);
  void ScrollTo(engine::CellPos cell, const engine::Rect& area);

  std::shared_ptr<Program> program_;
  EmbeddedWorkbook* book_;
  engine::Sheet* sheet_;
  std::uint64_t key_;
  host::SelectionMode selectionMode_ = host::SelectionMode::NoRestrictions;
  RangeTracker tracker_;
};

// The body of a sheet that a caller handed in; ObjectNotSet for Nothing, ObjectRequired for a dead one.
EmbeddedWorksheet& BodyOf(const host::Worksheet& sheet);

}  // namespace tolvane::embedded
