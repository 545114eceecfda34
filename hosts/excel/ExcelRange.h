#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/excel/Session.h"
#include "src/host/Range.h"

namespace tolvane::excel {

// Its members stand in several files, by what they are about.
class ExcelRange final : public host::RangeBody, public ObjectBody {
 public:
  ExcelRange(std::shared_ptr<Session> session, Dispatch range)
      : ObjectBody(std::move(session), std::move(range), "Row") {}

  bool IsAlive() const noexcept override { return Answers(); }
  host::Gate& gate() const noexcept override { return session().gate(); }

  // --- RangeValues.cpp
  host::CellBlock Value() const override;
  void SetValue(const host::CellBlock& block) override;
  host::CellBlock Formula() const override;
  void SetFormula(const host::CellBlock& block) override;
  host::CellBlock FormulaR1C1() const override;
  void SetFormulaR1C1(const host::CellBlock& block) override;
  std::string Text() const override;

  // --- RangePlaces.cpp
  int Row() const override;
  int Column() const override;
  int RowsCount() const override;
  int ColumnsCount() const override;
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

  // --- RangeEdits.cpp
  void ClearContents() override;
  void Clear() override;
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
  std::optional<bool> Locked() const override;
  void SetLocked(bool locked) override;
  std::optional<bool> FormulaHidden() const override;
  void SetFormulaHidden(bool hidden) override;
  std::optional<bool> Hidden() const override;
  void SetHidden(bool hidden) override;
  std::optional<std::string> Style() const override;
  void SetStyle(std::string_view name) override;
  std::optional<std::string> NumberFormat() const override;
  void SetNumberFormat(std::string_view format) override;
  std::optional<host::Alignment> HorizontalAlignment() const override;
  void SetHorizontalAlignment(host::Alignment alignment) override;
  std::optional<bool> WrapText() const override;
  void SetWrapText(bool wrap) override;
  std::optional<double> ColumnWidth() const override;
  void SetColumnWidth(double characters) override;
  std::optional<double> RowHeight() const override;
  void SetRowHeight(double points) override;
  std::optional<bool> FontBold() const override;
  void SetFontBold(bool bold) override;
  std::optional<bool> FontItalic() const override;
  void SetFontItalic(bool italic) override;
  std::optional<host::ColorIndex> InteriorColorIndex() const override;
  void SetInteriorColorIndex(host::ColorIndex index) override;
  std::optional<host::LineStyle> BorderLineStyle(host::BorderIndex border) const override;
  void SetBorderLineStyle(host::BorderIndex border, host::LineStyle style) override;
  std::optional<host::ColorIndex> BorderColorIndex(host::BorderIndex border) const override;
  void SetBorderColorIndex(host::BorderIndex border, host::ColorIndex index) override;

  // --- RangeParts.cpp
  void ValidationDelete() override;
  void ValidationAdd(const host::ValidationRule& rule) override;
  std::optional<host::ValidationRule> ValidationRead() const override;
  void HyperlinksAdd(const host::HyperlinkTarget& target, const std::optional<std::string>& textToDisplay) override;
  void HyperlinksDelete() override;
  std::vector<host::HyperlinkTarget> HyperlinksRead() const override;
  void AutoFilter() override;
  void AutoFilterField(const host::FilterCriterion& criterion) override;

 private:
  Dispatch Part(const char* member, const char* className) const;  // Font, Interior, ...
  Dispatch BorderAt(host::BorderIndex border) const;
  host::CellBlock ReadFormulas(const char* member) const;
  void Write(const char* member, const host::CellBlock& block, bool takesFormulas);
};

}  // namespace tolvane::excel
