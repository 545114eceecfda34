// The part of ExcelRange about the look of its cells.
#include "hosts/excel/ExcelRange.h"
#include "hosts/excel/Optional.h"

namespace tolvane::excel {

std::optional<bool> ExcelRange::Locked() const {
  return OptionalBool(object().Get("Locked"));
}
void ExcelRange::SetLocked(bool locked) {
  object().Put("Locked", locked);
}
std::optional<bool> ExcelRange::FormulaHidden() const {
  return OptionalBool(object().Get("FormulaHidden"));
}
void ExcelRange::SetFormulaHidden(bool hidden) {
  object().Put("FormulaHidden", hidden);
}
std::optional<bool> ExcelRange::Hidden() const {
  return OptionalBool(object().Get("Hidden"));
}
void ExcelRange::SetHidden(bool hidden) {
  object().Put("Hidden", hidden);
}

std::optional<std::string> ExcelRange::Style() const {
  const Variant style = object().Get("Style");
  if (style.IsNull()) return std::nullopt;
  return session().ObjectOf("Style", style).Get("Name").AsText();
}
void ExcelRange::SetStyle(std::string_view name) {
  object().Put("Style", name);
}
std::optional<std::string> ExcelRange::NumberFormat() const {
  return OptionalText(object().Get("NumberFormat"));
}
void ExcelRange::SetNumberFormat(std::string_view format) {
  object().Put("NumberFormat", format);
}
std::optional<host::Alignment> ExcelRange::HorizontalAlignment() const {
  return OptionalInt<host::Alignment>(object().Get("HorizontalAlignment"));
}
void ExcelRange::SetHorizontalAlignment(host::Alignment alignment) {
  object().Put("HorizontalAlignment", ConstantOf(alignment));
}
std::optional<bool> ExcelRange::WrapText() const {
  return OptionalBool(object().Get("WrapText"));
}
void ExcelRange::SetWrapText(bool wrap) {
  object().Put("WrapText", wrap);
}
std::optional<double> ExcelRange::ColumnWidth() const {
  return OptionalDouble(object().Get("ColumnWidth"));
}
void ExcelRange::SetColumnWidth(double characters) {
  object().Put("ColumnWidth", characters);
}
std::optional<double> ExcelRange::RowHeight() const {
  return OptionalDouble(object().Get("RowHeight"));
}
void ExcelRange::SetRowHeight(double points) {
  object().Put("RowHeight", points);
}

std::optional<bool> ExcelRange::FontBold() const {
  return OptionalBool(Part("Font", "Font").Get("Bold"));
}
void ExcelRange::SetFontBold(bool bold) {
  Part("Font", "Font").Put("Bold", bold);
}
std::optional<bool> ExcelRange::FontItalic() const {
  return OptionalBool(Part("Font", "Font").Get("Italic"));
}
void ExcelRange::SetFontItalic(bool italic) {
  Part("Font", "Font").Put("Italic", italic);
}
std::optional<host::ColorIndex> ExcelRange::InteriorColorIndex() const {
  return OptionalInt<host::ColorIndex>(Part("Interior", "Interior").Get("ColorIndex"));
}
void ExcelRange::SetInteriorColorIndex(host::ColorIndex index) {
  Part("Interior", "Interior").Put("ColorIndex", index);
}

Dispatch ExcelRange::BorderAt(host::BorderIndex border) const {
  return session().ObjectOf("Border", Part("Borders", "Borders").Get("Item", ConstantOf(border)));
}
std::optional<host::LineStyle> ExcelRange::BorderLineStyle(host::BorderIndex border) const {
  return OptionalInt<host::LineStyle>(BorderAt(border).Get("LineStyle"));
}
void ExcelRange::SetBorderLineStyle(host::BorderIndex border, host::LineStyle style) {
  BorderAt(border).Put("LineStyle", ConstantOf(style));
}
std::optional<host::ColorIndex> ExcelRange::BorderColorIndex(host::BorderIndex border) const {
  return OptionalInt<host::ColorIndex>(BorderAt(border).Get("ColorIndex"));
}
void ExcelRange::SetBorderColorIndex(host::BorderIndex border, host::ColorIndex index) {
  BorderAt(border).Put("ColorIndex", index);
}

}  // namespace tolvane::excel
