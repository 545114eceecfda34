#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "src/host/Constants.h"
#include "src/host/Handle.h"
#include "src/host/Names.h"
#include "src/host/Range.h"

namespace tolvane::host {

class Workbook;
class Worksheet;

// What a protected sheet allows all the same: the eleven Allow... settings of Protect and of Protection.
struct Protection {
  bool allowFormattingCells = false;
  bool allowFormattingColumns = false;
  bool allowFormattingRows = false;
  bool allowInsertingColumns = false;
  bool allowInsertingRows = false;
  bool allowInsertingHyperlinks = false;
  bool allowDeletingColumns = false;
  bool allowDeletingRows = false;
  bool allowSorting = false;
  bool allowFiltering = false;
  bool allowUsingPivotTables = false;
  friend bool operator==(const Protection&, const Protection&) = default;
};

// How a sheet is printed, for who makes books.
struct PageSetup {
  bool landscape = false;
  std::optional<int> fitToPagesWide = {};  // 1 and more; none: as many as it takes
  std::optional<int> fitToPagesTall = {};
  friend bool operator==(const PageSetup&, const PageSetup&) = default;
};

// `count` neighbouring rows from `first` on.
struct RowRun {
  int first = 1;
  int count = 1;
  friend bool operator==(const RowRun&, const RowRun&) = default;
};

struct FilterState {
  bool on = false;
  FilterOperator op = FilterOperator::None;
  std::string criteria1;
  std::optional<std::string> criteria2;  // only with And and Or
  std::vector<std::string> values;       // only with Values
  friend bool operator==(const FilterState&, const FilterState&) = default;
};

class WorksheetBody : public Body {
 public:
  // Tells this sheet from every other sheet of the application; survives renaming, moving and undo.
  virtual std::uint64_t Key() const noexcept = 0;
  virtual std::string Name() const = 0;
  virtual void SetName(std::string_view name) = 0;
  virtual std::string CodeName() const = 0;
  virtual void SetCodeName(std::string_view name) = 0;
  virtual int Index() const = 0;
  virtual Workbook Parent() const = 0;
  virtual SheetVisibility Visible() const = 0;
  virtual void SetVisible(SheetVisibility visibility) = 0;
  virtual ColorIndex TabColorIndex() const = 0;
  virtual void SetTabColorIndex(ColorIndex index) = 0;
  virtual host::PageSetup PageSetup() const = 0;
  virtual void SetPageSetup(const host::PageSetup& page) = 0;
  virtual void Activate() = 0;
  virtual void CopyBefore(const Worksheet& sheet) = 0;
  virtual void CopyAfter(const Worksheet& sheet) = 0;
  virtual void MoveBefore(const Worksheet& sheet) = 0;
  virtual void MoveAfter(const Worksheet& sheet) = 0;
  virtual void Delete() = 0;
  virtual void Calculate() = 0;
  virtual Range RangeOf(std::string_view nameOrAddress) const = 0;
  virtual Range CellAt(int row, int column) const = 0;
  virtual Range Cells() const = 0;
  virtual Range RowAt(int row) const = 0;
  virtual Range ColumnAt(int column) const = 0;
  virtual int RowsCount() const = 0;
  virtual int ColumnsCount() const = 0;
  virtual host::Names Names() const = 0;
  virtual bool ProtectContents() const = 0;
  virtual host::Protection Protection() const = 0;
  virtual void Protect(const host::Protection& allowed) = 0;
  virtual void Unprotect() = 0;
  virtual bool AutoFilterMode() const = 0;
  virtual void RemoveAutoFilter() = 0;
  virtual Range AutoFilterRange() const = 0;
  virtual std::vector<FilterState> AutoFilterFilters() const = 0;
  virtual SelectionMode EnableSelection() const = 0;
  virtual void SetEnableSelection(SelectionMode mode) = 0;
  virtual void PasteSpecialText() = 0;
  virtual void DeleteRows(std::span<const RowRun> runs) = 0;
  virtual void InsertRows(std::span<const RowRun> runs) = 0;
};

class WorksheetRows : private Handle<WorksheetBody> {
 public:
  explicit WorksheetRows(std::shared_ptr<WorksheetBody> body) : Handle(std::move(body)) {}
  int Count() const;
  Range Item(int row) const;
};

class WorksheetColumns : private Handle<WorksheetBody> {
 public:
  explicit WorksheetColumns(std::shared_ptr<WorksheetBody> body) : Handle(std::move(body)) {}
  int Count() const;
  Range Item(int column) const;
};

class Tab : private Handle<WorksheetBody> {
 public:
  explicit Tab(std::shared_ptr<WorksheetBody> body) : Handle(std::move(body)) {}
  host::ColorIndex ColorIndex() const;  // kColorIndexNone for none
  void SetColorIndex(host::ColorIndex index) const;
};

// The filter of a sheet; ObjectNotSet where there is none.
class AutoFilter : private Handle<WorksheetBody> {
 public:
  explicit AutoFilter(std::shared_ptr<WorksheetBody> body) : Handle(std::move(body)) {}
  host::Range Range() const;
  std::vector<FilterState> Filters() const;  // one a column of the range
};

// A sheet of cells. Sheets are equal when they are the same sheet, whatever they are called and wherever they stand.
class Worksheet : public Handle<WorksheetBody> {
 public:
  using Handle::Handle;
  friend bool operator==(const Worksheet& a, const Worksheet& b) noexcept {
    return a.IsNothing() || b.IsNothing() ? a.IsNothing() == b.IsNothing() : a.body()->Key() == b.body()->Key();
  }

  std::string Name() const;
  // 1 to 31 characters, none of : \ / ? * [ ], free in its book; everything else is ApplicationDefined.
  void SetName(std::string_view name) const;
  // The identity that the book was made with. Kept by renaming and saving; a copied sheet gets a new one.
  std::string CodeName() const;
  void SetCodeName(std::string_view name) const;  // for who makes books; free in its book
  int Index() const;                              // in tab order, from 1
  Workbook Parent() const;
  SheetVisibility Visible() const;
  void SetVisible(SheetVisibility visibility) const;  // the last visible sheet stays
  host::Tab Tab() const { return host::Tab(body()); }
  // The rows that every page repeats are the sheet's name Print_Titles, as in Excel.
  host::PageSetup PageSetup() const;
  void SetPageSetup(const host::PageSetup& page) const;

  void Activate() const;
  void CopyBefore(const Worksheet& sheet) const;  // the copy becomes the active sheet
  void CopyAfter(const Worksheet& sheet) const;
  void MoveBefore(const Worksheet& sheet) const;
  void MoveAfter(const Worksheet& sheet) const;
  void Delete() const;
  void Calculate() const;

  // A name of the sheet, else of its book where that refers to this sheet, else an A1 address ("B7", "$5:$9", "A1,C3").
  host::Range Range(std::string_view nameOrAddress) const;
  host::Range Cells(int row, int column) const;
  host::Range Cells() const;
  WorksheetRows Rows() const { return WorksheetRows(body()); }
  WorksheetColumns Columns() const { return WorksheetColumns(body()); }
  host::Names Names() const;

  bool ProtectContents() const;
  host::Protection Protection() const;                  // of an unprotected sheet: what was last in force
  void Protect(const host::Protection& allowed) const;  // without a password
  void Unprotect() const;
  bool AutoFilterMode() const;
  void SetAutoFilterModeOff() const;  // takes the filter away and shows its rows
  host::AutoFilter AutoFilter() const { return host::AutoFilter(body()); }
  SelectionMode EnableSelection() const;
  void SetEnableSelection(SelectionMode mode) const;
  // Pastes the clipboard's text at the selection: a line a row, a tab between columns; numbers and dates are
  // recognised, a text that begins with "=" stays a text.
  void PasteSpecialText() const;

  // Whole rows, many runs in one call; runs in ascending order and apart. Deletion counts in the numbering before it,
  // insertion in the numbering after it: the runs of one undo the other. The same as single calls, at the cost of one.
  void DeleteRows(std::span<const RowRun> runs) const;
  void InsertRows(std::span<const RowRun> runs) const;
};

}  // namespace tolvane::host
