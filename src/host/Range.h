#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "src/host/CellBlock.h"
#include "src/host/Constants.h"
#include "src/host/Handle.h"

namespace tolvane::host {

class Range;
class Worksheet;

// How Range.Address spells its result. The default is absolute A1: "$B$7:$C$9,$B$11".
struct AddressOptions {
  bool rowAbsolute = true;
  bool columnAbsolute = true;
  ReferenceStyle style = ReferenceStyle::A1;
  bool external = false;  // '[Book.xlsx]Sheet'!$A$1
};

struct ValidationRule {
  AlertStyle alert = AlertStyle::Stop;
  std::string source;  // "=lstPeriods"; list validation is the only kind that is written
  bool ignoreBlank = true;
  bool inCellDropdown = true;
  bool showInput = true;
  bool showError = true;
  std::string inputTitle, inputMessage, errorTitle, errorMessage;
  friend bool operator==(const ValidationRule&, const ValidationRule&) = default;
};

struct HyperlinkTarget {
  std::string address;     // empty for a place in this book
  std::string subAddress;  // 'Sheet'!A1 or a defined name
  std::string screenTip;
  friend bool operator==(const HyperlinkTarget&, const HyperlinkTarget&) = default;
};

struct FilterCriterion {
  int field = 1;                         // the column within the filter's range, from 1
  std::optional<std::string> criteria1;  // none: the field shows everything
  FilterOperator op = FilterOperator::None;
  std::optional<std::string> criteria2;
  std::vector<std::string> values;  // for FilterOperator::Values, in place of criteria1
};

// What Range.Sort orders the rows of the range by.
struct SortKey {
  int column = 1;  // within the range, from 1
  SortOrder order = SortOrder::Ascending;
  bool hasHeader = false;
};

// Behind Range and the objects reached through it. Bounds are checked by the host: what lies outside of the sheet is
// ApplicationDefined. What writes to a protected sheet where a cell is locked is ApplicationDefined and changes
// nothing.
class RangeBody : public Body {
 public:
  virtual CellBlock Value() const = 0;
  virtual void SetValue(const CellBlock& block) = 0;
  virtual CellBlock Formula() const = 0;
  virtual void SetFormula(const CellBlock& block) = 0;
  virtual CellBlock FormulaR1C1() const = 0;
  virtual void SetFormulaR1C1(const CellBlock& block) = 0;
  virtual std::string Text() const = 0;

  virtual int Row() const = 0;
  virtual int Column() const = 0;
  virtual int RowsCount() const = 0;
  virtual int ColumnsCount() const = 0;
  virtual std::int64_t Count() const = 0;
  virtual std::string Address(const AddressOptions& options) const = 0;
  virtual Worksheet Parent() const = 0;
  virtual std::vector<Range> Areas() const = 0;
  virtual Range EntireRow() const = 0;
  virtual Range EntireColumn() const = 0;
  virtual Range Offset(int rows, int columns) const = 0;
  virtual Range Resize(int rows, int columns) const = 0;
  virtual Range Cells(int row, int column) const = 0;
  virtual Range End(Direction direction) const = 0;

  virtual void Select() = 0;
  virtual void Activate() = 0;
  virtual void ClearContents() = 0;
  virtual void Clear() = 0;
  virtual void Delete(std::optional<Shift> shift) = 0;
  virtual void Insert(std::optional<Shift> shift) = 0;
  virtual void Copy() = 0;
  virtual void Cut() = 0;
  virtual void PasteSpecial(PasteType type) = 0;
  virtual void Merge() = 0;
  virtual void UnMerge() = 0;
  virtual std::optional<bool> MergeCells() const = 0;
  virtual void Sort(const SortKey& key) = 0;

  virtual std::optional<bool> Locked() const = 0;
  virtual void SetLocked(bool locked) = 0;
  virtual std::optional<bool> FormulaHidden() const = 0;
  virtual void SetFormulaHidden(bool hidden) = 0;
  virtual std::optional<bool> Hidden() const = 0;
  virtual void SetHidden(bool hidden) = 0;
  virtual std::optional<std::string> Style() const = 0;
  virtual void SetStyle(std::string_view name) = 0;
  virtual std::optional<std::string> NumberFormat() const = 0;
  virtual void SetNumberFormat(std::string_view format) = 0;
  virtual std::optional<Alignment> HorizontalAlignment() const = 0;
  virtual void SetHorizontalAlignment(Alignment alignment) = 0;
  virtual std::optional<bool> WrapText() const = 0;
  virtual void SetWrapText(bool wrap) = 0;
  virtual std::optional<double> ColumnWidth() const = 0;
  virtual void SetColumnWidth(double characters) = 0;
  virtual std::optional<double> RowHeight() const = 0;
  virtual void SetRowHeight(double points) = 0;

  virtual std::optional<bool> FontBold() const = 0;
  virtual void SetFontBold(bool bold) = 0;
  virtual std::optional<bool> FontItalic() const = 0;
  virtual void SetFontItalic(bool italic) = 0;
  virtual std::optional<ColorIndex> InteriorColorIndex() const = 0;
  virtual void SetInteriorColorIndex(ColorIndex index) = 0;
  virtual std::optional<LineStyle> BorderLineStyle(BorderIndex border) const = 0;
  virtual void SetBorderLineStyle(BorderIndex border, LineStyle style) = 0;
  virtual std::optional<ColorIndex> BorderColorIndex(BorderIndex border) const = 0;
  virtual void SetBorderColorIndex(BorderIndex border, ColorIndex index) = 0;

  virtual void ValidationDelete() = 0;
  virtual void ValidationAdd(const ValidationRule& rule) = 0;
  virtual std::optional<ValidationRule> ValidationRead() const = 0;

  virtual void HyperlinksAdd(const HyperlinkTarget& target, const std::optional<std::string>& textToDisplay) = 0;
  virtual void HyperlinksDelete() = 0;
  virtual std::vector<HyperlinkTarget> HyperlinksRead() const = 0;

  virtual void AutoFilter() = 0;
  virtual void AutoFilterField(const FilterCriterion& criterion) = 0;
};

// The rows or the columns of a range: `range.Rows().Count()`, `range.Rows().Item(i)`. Of a range of several areas,
// those of the first.
class RangeRows : private Handle<RangeBody> {
 public:
  explicit RangeRows(std::shared_ptr<RangeBody> body) : Handle(std::move(body)) {}
  int Count() const;
  Range Item(int index) const;  // from 1, as wide as the range; beyond the range's end it goes on below
};

class RangeColumns : private Handle<RangeBody> {
 public:
  explicit RangeColumns(std::shared_ptr<RangeBody> body) : Handle(std::move(body)) {}
  int Count() const;
  Range Item(int index) const;
};

// Reads of a look (Bold, ColorIndex, ...) give nothing when the cells differ.
class Font : private Handle<RangeBody> {
 public:
  explicit Font(std::shared_ptr<RangeBody> body) : Handle(std::move(body)) {}
  std::optional<bool> Bold() const;
  void SetBold(bool bold) const;
  std::optional<bool> Italic() const;
  void SetItalic(bool italic) const;
};

class Interior : private Handle<RangeBody> {
 public:
  explicit Interior(std::shared_ptr<RangeBody> body) : Handle(std::move(body)) {}
  std::optional<host::ColorIndex> ColorIndex() const;  // kColorIndexNone for no fill
  void SetColorIndex(host::ColorIndex index) const;
};

class Border : private Handle<RangeBody> {
 public:
  Border(std::shared_ptr<RangeBody> body, BorderIndex index) : Handle(std::move(body)), index_(index) {}
  std::optional<host::LineStyle> LineStyle() const;
  void SetLineStyle(host::LineStyle style) const;
  std::optional<host::ColorIndex> ColorIndex() const;
  // A colour on a line that is not there draws a thin one.
  void SetColorIndex(host::ColorIndex index) const;

 private:
  BorderIndex index_;
};

class Validation : private Handle<RangeBody> {
 public:
  explicit Validation(std::shared_ptr<RangeBody> body) : Handle(std::move(body)) {}
  void Delete() const;
  // A list validation. ApplicationDefined where a cell of the range has one already.
  void Add(const ValidationRule& rule) const;
  // The rule that all cells of the range share; nothing when there is none or they differ.
  std::optional<ValidationRule> Rule() const;
};

class Hyperlinks : private Handle<RangeBody> {
 public:
  explicit Hyperlinks(std::shared_ptr<RangeBody> body) : Handle(std::move(body)) {}
  // Puts a link on the range. A text to display becomes the value of its first cell; without one the cell keeps what it
  // holds, a formula too. The cells take on the look of a link (the style "Hyperlink" where the book has it, else
  // underlined blue).
  void Add(const HyperlinkTarget& target, const std::optional<std::string>& textToDisplay = std::nullopt) const;
  // Takes away the links and their look.
  void Delete() const;
  std::vector<HyperlinkTarget> Items() const;
};

// Cells of one sheet: one rectangle or several, in the order in which they were named. It follows insertions, deletions
// and moves; when all of its cells are gone it is dead.
class Range : public Handle<RangeBody> {
 public:
  using Handle::Handle;

  // --- contents: whole blocks in one call ---------------------------------------------------------------------------
  // Of the first area. Dates are numbers. Cells inside a merge other than its first are empty.
  CellBlock Value() const;
  // A single value fills every cell of every area. A block fills the range from its top left: rows or columns that it
  // lacks repeat when it has just one of them, else they become #N/A; what it has too much is dropped. Texts are
  // written as texts, whatever they begin with.
  void SetValue(const CellBlock& block) const;
  // Constants as they are, formulas as text with "="; a text that begins with "=" or "'" with one more "'" in front.
  // What is read here and written back is the same cell again. Writing: only a text that begins with "=" is a formula,
  // and one that does not parse is ApplicationDefined, with nothing written; one leading "'" is stripped.
  CellBlock Formula() const;
  void SetFormula(const CellBlock& block) const;
  CellBlock FormulaR1C1() const;
  void SetFormulaR1C1(const CellBlock& block) const;
  // What the first cell shows.
  std::string Text() const;

  // --- where --------------------------------------------------------------------------------------------------------
  int Row() const;  // of the first area's first cell
  int Column() const;
  RangeRows Rows() const { return RangeRows(body()); }
  RangeColumns Columns() const { return RangeColumns(body()); }
  std::int64_t Count() const;  // cells of all areas
  std::string Address(const AddressOptions& options = {}) const;
  Worksheet Parent() const;
  std::vector<Range> Areas() const;
  Range EntireRow() const;
  Range EntireColumn() const;
  Range Offset(int rows, int columns) const;
  Range Resize(int rows, int columns) const;
  Range Cells(int row, int column) const;  // relative to the first cell, from 1; may lie outside of the range
  Range End(Direction direction) const;

  // --- doing --------------------------------------------------------------------------------------------------------
  void Select() const;    // its sheet must be the active one
  void Activate() const;  // a cell within the selection becomes the active one, else it is selected
  void ClearContents() const;
  void Clear() const;
  // Whole rows or columns of several areas go in one call. Without a shift, cells close up or move down by shape.
  void Delete(std::optional<Shift> shift = std::nullopt) const;
  void Insert(std::optional<Shift> shift = std::nullopt) const;
  void Copy() const;
  void Cut() const;
  // What was copied last, into the range whose first cell is this one's; repeated where this range is a multiple of it.
  void PasteSpecial(PasteType type) const;
  void Merge() const;
  void UnMerge() const;
  std::optional<bool> MergeCells() const;
  void Sort(const SortKey& key) const;

  // --- look; reads give nothing when the cells differ ----------------------------------------------------------------
  std::optional<bool> Locked() const;
  void SetLocked(bool locked) const;
  std::optional<bool> FormulaHidden() const;
  void SetFormulaHidden(bool hidden) const;
  std::optional<bool> Hidden() const;  // of whole rows or columns only; also when a filter hides them
  void SetHidden(bool hidden) const;
  std::optional<std::string> Style() const;
  void SetStyle(std::string_view name) const;
  std::optional<std::string> NumberFormat() const;
  void SetNumberFormat(std::string_view format) const;
  std::optional<Alignment> HorizontalAlignment() const;
  void SetHorizontalAlignment(Alignment alignment) const;
  std::optional<bool> WrapText() const;
  void SetWrapText(bool wrap) const;
  std::optional<double> ColumnWidth() const;  // characters of the default font
  void SetColumnWidth(double characters) const;
  std::optional<double> RowHeight() const;  // points
  void SetRowHeight(double points) const;
  host::Font Font() const { return host::Font(body()); }
  host::Interior Interior() const { return host::Interior(body()); }
  Border Borders(BorderIndex index) const { return {body(), index}; }

  // --- what lies on the cells
  // ------------------------------------------------------------------------------------------
  host::Validation Validation() const { return host::Validation(body()); }
  host::Hyperlinks Hyperlinks() const { return host::Hyperlinks(body()); }
  // Without arguments: puts a filter on the range, or takes the sheet's away. With a field: sets that field's criteria.
  void AutoFilter() const;
  void AutoFilter(const FilterCriterion& criterion) const;
};

}  // namespace tolvane::host
