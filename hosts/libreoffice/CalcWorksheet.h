#pragma once

#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/libreoffice/CalcWorkbook.h"
#include "src/host/Worksheet.h"

namespace tolvane::libreoffice {

class CalcRange;

// Calc itself knows a sheet by its code name, which it keeps over renaming, moving and undo: the sheet's identity here.
class CalcWorksheet final : public host::WorksheetBody, public std::enable_shared_from_this<CalcWorksheet> {
 public:
  CalcWorksheet(const std::shared_ptr<CalcWorkbook>& book, std::string codeName);
  void Die() { dead_ = true; }

  // While alive.
  CalcProgram& program() const { return *program_; }
  CalcWorkbook& book() const { return *book_.lock(); }
  std::shared_ptr<CalcWorksheet> Self() const { return std::const_pointer_cast<CalcWorksheet>(shared_from_this()); }
  int index() const noexcept;  // from 0; -1 when it is gone
  Reference<css::sheet::XSpreadsheet> object() const;
  Reference<css::table::XCellRange> Cells(const Rect& rect) const;
  host::Range RangeOver(const Rects& areas) const;
  std::string PlaceOf(const Rect& rect) const;
  bool IsInFront() const;
  const std::string& codeName() const { return codeName_; }
  // The smallest rectangle from A1 on that holds all contents and formats.
  Rect UsedArea() const;
  bool HasFormulas() const;

  // What the file carries for us.
  struct Carried {
    bool veryHidden = false;
    host::Protection allowed;
    std::set<std::string> hiddenNames;  // folded
  };
  Carried carried;
  // Calc holds links in texts only, so all of them stand here; those on texts are in the text as well.
  struct Link {
    host::Range place;
    host::HyperlinkTarget target;
  };
  std::vector<Link> links;

  // --- protection; see SheetGuard.h
  // -------------------------------------------------------------------------------------
  bool isProtected() const;

  int zoom = 100;  // of its view, while another sheet is in front

  // --- selection
  // --------------------------------------------------------------------------------------------------------
  void Select(const Rects& areas, std::optional<CellPos> activeCell = std::nullopt);
  Rects Selected() const;
  CellPos ActiveCell() const;
  // Puts what was selected here into the window when the sheet comes to the front.
  void RestoreSelection();
  void UserSelected(const Rects& areas);

  // --- shape; each checks protection
  // -----------------------------------------------------------------------------------
  void DeleteRuns(bool rows, std::span<const host::RowRun> runs);
  void InsertRuns(bool rows, std::span<const host::RowRun> runs);
  void DeleteCells(const Rects& areas, bool up);
  void InsertCells(const Rects& areas, bool down);

  // --- filter
  // -------------------------------------------------------------------------------------------------------------
  std::optional<Rect> FilterArea() const;
  // The block around a cell that empty rows and columns bound.
  Rect RegionAround(const Rect& cell) const;
  void ToggleFilter(const Rect& area);
  void SetFilterField(const Rect& area, const host::FilterCriterion& criterion);

  // --- WorksheetBody
  // ----------------------------------------------------------------------------------------------------
  bool IsAlive() const noexcept override;
  host::Gate& gate() const noexcept override { return *program_->gate; }
  std::uint64_t Key() const noexcept override { return key_; }
  std::string Name() const override;
  void SetName(std::string_view name) override;
  std::string CodeName() const override { return codeName_; }
  void SetCodeName(std::string_view name) override;
  int Index() const override { return index() + 1; }
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
  int RowsCount() const override { return kMaxRow; }
  int ColumnsCount() const override { return kMaxColumn; }
  host::Names Names() const override;
  bool ProtectContents() const override { return isProtected(); }
  host::Protection Protection() const override { return carried.allowed; }
  void Protect(const host::Protection& allowed) override;
  void Unprotect() override;
  bool AutoFilterMode() const override { return FilterArea().has_value(); }
  void RemoveAutoFilter() override;
  host::Range AutoFilterRange() const override;
  std::vector<host::FilterState> AutoFilterFilters() const override;
  host::SelectionMode EnableSelection() const override { return selectionMode_; }
  void SetEnableSelection(host::SelectionMode mode) override { selectionMode_ = mode; }
  void PasteSpecialText() override;
  void DeleteRows(std::span<const host::RowRun> runs) override { DeleteRuns(true, runs); }
  void InsertRows(std::span<const host::RowRun> runs) override { InsertRuns(true, runs); }

 private:
  void CopyTo(const host::Worksheet& other, int behind);
  void MoveTo(const host::Worksheet& other, int behind);
  Reference<css::beans::XPropertySet> FilterDatabase() const;

  std::shared_ptr<CalcProgram> program_;
  std::weak_ptr<CalcWorkbook> book_;
  std::string codeName_;
  std::uint64_t key_;
  mutable int index_ = 0;  // where it was found last
  bool dead_ = false;
  host::SelectionMode selectionMode_ = host::SelectionMode::NoRestrictions;
  host::Range selection_;  // follows its cells; Nothing: A1
  std::optional<CellPos> activeCell_;
};

CalcWorksheet& BodyOf(const host::Worksheet& sheet);

}  // namespace tolvane::libreoffice
