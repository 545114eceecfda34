#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "hosts/embedded/EmbeddedWorksheet.h"
#include "hosts/embedded/RangeTracker.h"
#include "src/host/Range.h"

namespace tolvane::embedded {

// Its members stand in several files, by what they are about.
class EmbeddedRange final : public host::RangeBody, private TrackedAreas {
 public:
  // At least one area, all on the sheet.
  EmbeddedRange(std::shared_ptr<EmbeddedWorksheet> sheet, std::vector<engine::Rect> areas);
  ~EmbeddedRange() override;

  const std::shared_ptr<EmbeddedWorksheet>& sheet() const { return sheet_; }
  using TrackedAreas::areas;
  const engine::Rect& first() const { return areas().front(); }

  bool IsAlive() const noexcept override { return sheet_->IsAlive() && !areas().empty(); }
  host::Gate& gate() const noexcept override { return sheet_->gate(); }

  // --- RangeValues.cpp
  // ----------------------------------------------------------------------------------------------------
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

  // --- RangeStructure.cpp
  // -------------------------------------------------------------------------------------------------
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
  std::optional<std::string> Style() const override;
  void SetStyle(std::string_view name) override;
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
  void MovedTo(EmbeddedWorksheet& sheet) override;
  engine::Sheet& cells() const { return sheet_->sheet(); }
  engine::Workbook& book() const { return sheet_->sheet().book(); }
  Program& program() const { return sheet_->program(); }
  // Throws where an area holds part of an array formula.
  void RequireWhole(const engine::Rect& area) const;
  host::CellBlock ReadFormulas(engine::Notation notation) const;
  void WriteFormulas(const host::CellBlock& block, engine::Notation notation);
  // Checks protection, changes the format of all areas and tells of the edit.
  void ChangeFormat(const std::function<engine::FormatId(engine::FormatId)>& change);
  template <class Change>
  void ChangeGroup(engine::FormatGroup group, Change&& change);
  template <class Part>
  auto ReadFormat(Part&& part) const;
  void PutOnClipboard(host::CutCopyMode mode);

  std::shared_ptr<EmbeddedWorksheet> sheet_;
};

// The body of a range that a caller handed in; ObjectNotSet for Nothing, ObjectRequired for a dead one.
EmbeddedRange& BodyOf(const host::Range& range);

}  // namespace tolvane::embedded
