#include "src/host/Range.h"

#include "src/host/Worksheet.h"

namespace tolvane::host {

int RangeRows::Count() const {
  return Read("Range.Rows.Count", &RangeBody::RowsCount);
}
Range RangeRows::Item(int index) const {
  return Read("Range.Rows.Item", [index](const RangeBody& range) {
    return range.Cells(index, 1).body()->Resize(1, range.ColumnsCount());
  });
}

int RangeColumns::Count() const {
  return Read("Range.Columns.Count", &RangeBody::ColumnsCount);
}
Range RangeColumns::Item(int index) const {
  return Read("Range.Columns.Item",
              [index](const RangeBody& range) { return range.Cells(1, index).body()->Resize(range.RowsCount(), 1); });
}

std::optional<bool> Font::Bold() const {
  return Read("Font.Bold", &RangeBody::FontBold);
}
void Font::SetBold(bool bold) const {
  Write("Font.Bold", &RangeBody::SetFontBold, bold);
}
std::optional<bool> Font::Italic() const {
  return Read("Font.Italic", &RangeBody::FontItalic);
}
void Font::SetItalic(bool italic) const {
  Write("Font.Italic", &RangeBody::SetFontItalic, italic);
}

std::optional<host::ColorIndex> Interior::ColorIndex() const {
  return Read("Interior.ColorIndex", &RangeBody::InteriorColorIndex);
}
void Interior::SetColorIndex(host::ColorIndex index) const {
  Write("Interior.ColorIndex", &RangeBody::SetInteriorColorIndex, index);
}

std::optional<host::LineStyle> Border::LineStyle() const {
  return Read("Borders.LineStyle", &RangeBody::BorderLineStyle, index_);
}
void Border::SetLineStyle(host::LineStyle style) const {
  Write("Borders.LineStyle", &RangeBody::SetBorderLineStyle, index_, style);
}
std::optional<host::ColorIndex> Border::ColorIndex() const {
  return Read("Borders.ColorIndex", &RangeBody::BorderColorIndex, index_);
}
void Border::SetColorIndex(host::ColorIndex index) const {
  Write("Borders.ColorIndex", &RangeBody::SetBorderColorIndex, index_, index);
}

void Validation::Delete() const {
  Write("Validation.Delete", &RangeBody::ValidationDelete);
}
void Validation::Add(const ValidationRule& rule) const {
  Write("Validation.Add", &RangeBody::ValidationAdd, rule);
}
std::optional<ValidationRule> Validation::Rule() const {
  return Read("Validation.Rule", &RangeBody::ValidationRead);
}

void Hyperlinks::Add(const HyperlinkTarget& target, const std::optional<std::string>& textToDisplay) const {
  Write("Hyperlinks.Add", &RangeBody::HyperlinksAdd, target, textToDisplay);
}
void Hyperlinks::Delete() const {
  Write("Hyperlinks.Delete", &RangeBody::HyperlinksDelete);
}
std::vector<HyperlinkTarget> Hyperlinks::Items() const {
  return Read("Hyperlinks.Items", &RangeBody::HyperlinksRead);
}

CellBlock Range::Value() const {
  return Read("Range.Value", &RangeBody::Value);
}
void Range::SetValue(const CellBlock& block) const {
  Write("Range.Value", &RangeBody::SetValue, block);
}
CellBlock Range::Formula() const {
  return Read("Range.Formula", &RangeBody::Formula);
}
void Range::SetFormula(const CellBlock& block) const {
  Write("Range.Formula", &RangeBody::SetFormula, block);
}
CellBlock Range::FormulaR1C1() const {
  return Read("Range.FormulaR1C1", &RangeBody::FormulaR1C1);
}
void Range::SetFormulaR1C1(const CellBlock& block) const {
  Write("Range.FormulaR1C1", &RangeBody::SetFormulaR1C1, block);
}
std::string Range::Text() const {
  return Read("Range.Text", &RangeBody::Text);
}
int Range::Row() const {
  return Read("Range.Row", &RangeBody::Row);
}
int Range::Column() const {
  return Read("Range.Column", &RangeBody::Column);
}
std::int64_t Range::Count() const {
  return Read("Range.Count", &RangeBody::Count);
}
std::string Range::Address(const AddressOptions& options) const {
  return Read("Range.Address", &RangeBody::Address, options);
}
Worksheet Range::Parent() const {
  return Read("Range.Parent", &RangeBody::Parent);
}
std::vector<Range> Range::Areas() const {
  return Read("Range.Areas", &RangeBody::Areas);
}
Range Range::EntireRow() const {
  return Read("Range.EntireRow", &RangeBody::EntireRow);
}
Range Range::EntireColumn() const {
  return Read("Range.EntireColumn", &RangeBody::EntireColumn);
}
Range Range::Offset(int rows, int columns) const {
  return Read("Range.Offset", &RangeBody::Offset, rows, columns);
}
Range Range::Resize(int rows, int columns) const {
  return Read("Range.Resize", &RangeBody::Resize, rows, columns);
}
Range Range::Cells(int row, int column) const {
  return Read("Range.Cells", &RangeBody::Cells, row, column);
}
Range Range::End(Direction direction) const {
  return Read("Range.End", &RangeBody::End, direction);
}
void Range::Select() const {
  Write("Range.Select", &RangeBody::Select);
}
void Range::Activate() const {
  Write("Range.Activate", &RangeBody::Activate);
}
void Range::ClearContents() const {
  Write("Range.ClearContents", &RangeBody::ClearContents);
}
void Range::Clear() const {
  Write("Range.Clear", &RangeBody::Clear);
}
void Range::Delete(std::optional<Shift> shift) const {
  Write("Range.Delete", &RangeBody::Delete, shift);
}
void Range::Insert(std::optional<Shift> shift) const {
  Write("Range.Insert", &RangeBody::Insert, shift);
}
void Range::Copy() const {
  Write("Range.Copy", &RangeBody::Copy);
}
void Range::Cut() const {
  Write("Range.Cut", &RangeBody::Cut);
}
void Range::PasteSpecial(PasteType type) const {
  Write("Range.PasteSpecial", &RangeBody::PasteSpecial, type);
}
void Range::Merge() const {
  Write("Range.Merge", &RangeBody::Merge);
}
void Range::UnMerge() const {
  Write("Range.UnMerge", &RangeBody::UnMerge);
}
std::optional<bool> Range::MergeCells() const {
  return Read("Range.MergeCells", &RangeBody::MergeCells);
}
void Range::Sort(const SortKey& key) const {
  Write("Range.Sort", &RangeBody::Sort, key);
}
std::optional<bool> Range::Locked() const {
  return Read("Range.Locked", &RangeBody::Locked);
}
void Range::SetLocked(bool locked) const {
  Write("Range.Locked", &RangeBody::SetLocked, locked);
}
std::optional<bool> Range::FormulaHidden() const {
  return Read("Range.FormulaHidden", &RangeBody::FormulaHidden);
}
void Range::SetFormulaHidden(bool hidden) const {
  Write("Range.FormulaHidden", &RangeBody::SetFormulaHidden, hidden);
}
std::optional<bool> Range::Hidden() const {
  return Read("Range.Hidden", &RangeBody::Hidden);
}
void Range::SetHidden(bool hidden) const {
  Write("Range.Hidden", &RangeBody::SetHidden, hidden);
}
std::optional<std::string> Range::Style() const {
  return Read("Range.Style", &RangeBody::Style);
}
void Range::SetStyle(std::string_view name) const {
  Write("Range.Style", &RangeBody::SetStyle, name);
}
std::optional<std::string> Range::NumberFormat() const {
  return Read("Range.NumberFormat", &RangeBody::NumberFormat);
}
void Range::SetNumberFormat(std::string_view format) const {
  Write("Range.NumberFormat", &RangeBody::SetNumberFormat, format);
}
std::optional<Alignment> Range::HorizontalAlignment() const {
  return Read("Range.HorizontalAlignment", &RangeBody::HorizontalAlignment);
}
void Range::SetHorizontalAlignment(Alignment alignment) const {
  Write("Range.HorizontalAlignment", &RangeBody::SetHorizontalAlignment, alignment);
}
std::optional<bool> Range::WrapText() const {
  return Read("Range.WrapText", &RangeBody::WrapText);
}
void Range::SetWrapText(bool wrap) const {
  Write("Range.WrapText", &RangeBody::SetWrapText, wrap);
}
std::optional<double> Range::ColumnWidth() const {
  return Read("Range.ColumnWidth", &RangeBody::ColumnWidth);
}
void Range::SetColumnWidth(double characters) const {
  Write("Range.ColumnWidth", &RangeBody::SetColumnWidth, characters);
}
std::optional<double> Range::RowHeight() const {
  return Read("Range.RowHeight", &RangeBody::RowHeight);
}
void Range::SetRowHeight(double points) const {
  Write("Range.RowHeight", &RangeBody::SetRowHeight, points);
}
void Range::AutoFilter() const {
  Write("Range.AutoFilter", &RangeBody::AutoFilter);
}
void Range::AutoFilter(const FilterCriterion& criterion) const {
  Write("Range.AutoFilter", &RangeBody::AutoFilterField, criterion);
}

}  // namespace tolvane::host
