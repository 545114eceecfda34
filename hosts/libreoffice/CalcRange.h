#pragma once

#include <com/sun/star/sheet/XSheetCellRangeContainer.hpp>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/libreoffice/CalcWorksheet.h"
#include "src/host/Range.h"

namespace tolvane::libreoffice {

// Each area is a collection of cell ranges that Calc itself moves along with its cells, also when the user inserts,
// deletes, moves or undoes. Its members stand in several files, by what they are about.
class CalcRange final : public host::RangeBody {
 public:
  // At least one area, all on the sheet.
  CalcRange(std::shared_ptr<CalcWorksheet> sheet, const Rects& areas);

  // Where the cells are now.
  Rects areas() const;
  Rect first() const { return areas().front(); }
  // As of the last call of areas().
  const std::shared_ptr<CalcWorksheet>& sheet() const { return sheet_; }

  bool IsAlive() const noexcept override;
  host::Gate& gate() const noexcept override { return sheet_->gate(); }

  // --- RangeValues.cpp, RangeFormulas.cpp
  // -------------------------------------------------------------------------------
  host::CellBlock Value() const override;
  void SetValue(const host::CellBlock& block) override;
  host::CellBlock Formula() const override;
  void SetFormula(const host::CellBlock& block) override;
  host::CellBlock FormulaR1C1() const override;
  void SetFormulaR1C1(const host::CellBlock& block) override;
  std::string Text() const override;
  void ClearContents() override;
  void Clear() override;

  // --- RangePlaces.cpp
  // ----------------------------------------------------------------------------------------------------
  int Row() const override { return first().top; }
  int Column() const override { return first().left; }
  int RowsCount() const override { return first().rows(); }
  int ColumnsCount() const override { return first().columns(); }
  std::int64_t Count() const override;
  std::string Address(const host::AddressOptions& options) const override;
  host::Worksheet Parent() const override;
  std::vector<host::Range> Areas() const override;
  host::Range EntireRow() const override;
  host::Range EntireColumn() const override;
  host::Range Offset(int rows, int columns) const override;
  host::Range Resize(int rows, int columns) const override;
  host::Range Cells(int row, int column) const override;
  host::Range End(host::Direction direction) const override;
  void Select() override;
  void Activate() override;

  // --- RangeStructure.cpp, RangePaste.cpp
  // -------------------------------------------------------------------------------
  void Delete(std::optional<host::Shift> shift) override;
  void Insert(std::optional<host::Shift> shift) override;
  void Copy() override;
  void Cut() override;
  void PasteSpecial(host::PasteType type) override;
  void Merge() override;
  void UnMerge() override;
  std::optional<bool> MergeCells() const override;
  void Sort(const host::SortKey& key) override;

  // --- RangeFormats.cpp
  // ---------------------------------------------------------------------------------------------------
  std::optional<bool> Locked() const override;
  void SetLocked(bool locked) override;
  std::optional<bool> FormulaHidden() const override;
  void SetFormulaHidden(bool hidden) override;
  std::optional<std::string> NumberFormat() const override;
  void SetNumberFormat(std::string_view format) override;
  std::optional<host::Alignment> HorizontalAlignment() const override;
  void SetHorizontalAlignment(host::Alignment alignment) override;
  std::optional<bool> WrapText() const override;
  void SetWrapText(bool wrap) override;
  std::optional<bool> FontBold() const override;
  void SetFontBold(bool bold) override;
  std::optional<bool> FontItalic() const override;
  void SetFontItalic(bool italic) override;
  std::optional<host::ColorIndex> InteriorColorIndex() const override;
  void SetInteriorColorIndex(host::ColorIndex index) override;

  // --- RangeStyles.cpp
  // ----------------------------------------------------------------------------------------------------
  std::optional<std::string> Style() const override;
  void SetStyle(std::string_view name) override;

  // --- RangeBands.cpp
  // -----------------------------------------------------------------------------------------------------
  std::optional<bool> Hidden() const override;
  void SetHidden(bool hidden) override;
  std::optional<double> ColumnWidth() const override;
  void SetColumnWidth(double characters) override;
  std::optional<double> RowHeight() const override;
  void SetRowHeight(double points) override;

  // --- RangeBorders.cpp
  // ---------------------------------------------------------------------------------------------------
  std::optional<host::LineStyle> BorderLineStyle(host::BorderIndex border) const override;
  void SetBorderLineStyle(host::BorderIndex border, host::LineStyle style) override;
  std::optional<host::ColorIndex> BorderColorIndex(host::BorderIndex border) const override;
  void SetBorderColorIndex(host::BorderIndex border, host::ColorIndex index) override;

  // --- RangeParts.cpp
  // -----------------------------------------------------------------------------------------------------
  void ValidationDelete() override;
  void ValidationAdd(const host::ValidationRule& rule) override;
  std::optional<host::ValidationRule> ValidationRead() const override;
  void HyperlinksAdd(const host::HyperlinkTarget& target, const std::optional<std::string>& textToDisplay) override;
  void HyperlinksDelete() override;
  std::vector<host::HyperlinkTarget> HyperlinksRead() const override;
  void AutoFilter() override;
  void AutoFilterField(const host::FilterCriterion& criterion) override;

 private:
  CalcProgram& program() const { return sheet_->program(); }
  CalcWorkbook& book() const { return sheet_->book(); }
  host::CellBlock ReadFormulas(Dialect dialect) const;
  void WriteFormulas(const host::CellBlock& block, Dialect dialect);
  // Checks protection, works on the collection of all areas and tells of the edit.
  void ChangeFormat(const std::function<void(const Reference<css::uno::XInterface>&)>& change);
  template <class T, class Read>
  std::optional<T> ReadShared(const char* property, const Read& read) const;
  void PutOnClipboard(host::CutCopyMode mode);

  mutable std::shared_ptr<CalcWorksheet> sheet_;
  mutable std::vector<Reference<css::sheet::XSheetCellRangeContainer>> areas_;
};

std::shared_ptr<CalcRange> BodyOf(const host::Range& range);
// One collection over these cells, whose properties are set in one call.
Reference<css::sheet::XSheetCellRangeContainer> Collect(const CalcWorksheet& sheet, const Rects& areas);

}  // namespace tolvane::libreoffice
