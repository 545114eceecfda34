// The part of EmbeddedRange that reads and sets formats of cells.
#include <string>
#include <type_traits>
#include <utility>

#include "hosts/embedded/EmbeddedRange.h"
#include "hosts/embedded/FormatRuns.h"
#include "hosts/embedded/Refusal.h"
#include "hosts/embedded/SheetGuard.h"
#include "hosts/embedded/StyleConversion.h"
#include "hosts/shell/Palette.h"

namespace tolvane::embedded {

using engine::CellFormat;
using engine::Format;
using engine::FormatGroup;
using engine::FormatId;
using engine::Rect;

void EmbeddedRange::ChangeFormat(const std::function<FormatId(FormatId)>& change) {
  RequireAllowed(cells(), &engine::SheetProtection::formatCells, "changing formats");
  for (const Rect& area : areas()) {
    Refusing([&] { cells().ChangeFormat(area, change); });
  }
  program().BookEdited(sheet_->book());
}

template <class Change>
void EmbeddedRange::ChangeGroup(FormatGroup group, Change&& change) {
  ChangeFormat([&](FormatId from) { return book().formats.With(from, group, change); });
}

// What all cells have in common, or nothing. `part` takes a CellFormat.
template <class Part>
auto EmbeddedRange::ReadFormat(Part&& part) const {
  std::optional<std::decay_t<std::invoke_result_t<Part&, const CellFormat&>>> common;
  bool differ = false;
  std::optional<FormatId> last;
  for (const Rect& area : areas()) {
    ForEachFormatRun(cells(), area, [&](const Rect&, FormatId id) {
      if (differ || id == last) return;
      last = id;
      auto value = part(book().formats.At(id));
      if (!common) {
        common = std::move(value);
      } else if (!(*common == value)) {
        differ = true;
      }
    });
  }
  if (differ) common.reset();
  return common;
}

std::optional<bool> EmbeddedRange::Locked() const {
  return ReadFormat([](const CellFormat& f) { return f.format.protection.locked; });
}

void EmbeddedRange::SetLocked(bool locked) {
  // No flag of a protection allows to undermine it.
  RequireUnprotected(cells(), "locking or unlocking cells");
  ChangeGroup(FormatGroup::Protection, [locked](Format& f) { f.protection.locked = locked; });
}

std::optional<bool> EmbeddedRange::FormulaHidden() const {
  return ReadFormat([](const CellFormat& f) { return f.format.protection.formulaHidden; });
}

void EmbeddedRange::SetFormulaHidden(bool hidden) {
  RequireUnprotected(cells(), "hiding formulas");
  ChangeGroup(FormatGroup::Protection, [hidden](Format& f) { f.protection.formulaHidden = hidden; });
}

std::optional<std::string> EmbeddedRange::Style() const {
  const auto style = ReadFormat([](const CellFormat& f) { return f.style; });
  if (!style) return std::nullopt;
  return book().formats.StyleAt(*style).name;
}

void EmbeddedRange::SetStyle(std::string_view name) {
  const auto style = book().formats.FindStyle(name);
  if (!style) {
    Refuse("The workbook \"" + sheet_->book().BookName() + "\" has no style \"" + std::string(name) + "\".");
  }
  ChangeFormat([&](FormatId from) { return book().formats.WithStyle(from, *style); });
}

std::optional<std::string> EmbeddedRange::NumberFormat() const {
  return ReadFormat([](const CellFormat& f) { return f.format.numberFormat; });
}

void EmbeddedRange::SetNumberFormat(std::string_view format) {
  const std::string wanted(format.empty() ? "General" : format);
  ChangeGroup(FormatGroup::Number, [&wanted](Format& f) { f.numberFormat = wanted; });
}

std::optional<host::Alignment> EmbeddedRange::HorizontalAlignment() const {
  return ReadFormat([](const CellFormat& f) { return ToHost(f.format.alignment.horizontal); });
}

void EmbeddedRange::SetHorizontalAlignment(host::Alignment alignment) {
  const engine::HorizontalAlignment wanted = ToEngine(alignment);
  ChangeGroup(FormatGroup::Alignment, [wanted](Format& f) { f.alignment.horizontal = wanted; });
}

std::optional<bool> EmbeddedRange::WrapText() const {
  return ReadFormat([](const CellFormat& f) { return f.format.alignment.wrap; });
}

void EmbeddedRange::SetWrapText(bool wrap) {
  ChangeGroup(FormatGroup::Alignment, [wrap](Format& f) { f.alignment.wrap = wrap; });
}

std::optional<bool> EmbeddedRange::FontBold() const {
  return ReadFormat([](const CellFormat& f) { return f.format.font.bold; });
}

void EmbeddedRange::SetFontBold(bool bold) {
  ChangeGroup(FormatGroup::Font, [bold](Format& f) { f.font.bold = bold; });
}

std::optional<bool> EmbeddedRange::FontItalic() const {
  return ReadFormat([](const CellFormat& f) { return f.format.font.italic; });
}

void EmbeddedRange::SetFontItalic(bool italic) {
  ChangeGroup(FormatGroup::Font, [italic](Format& f) { f.font.italic = italic; });
}

std::optional<host::ColorIndex> EmbeddedRange::InteriorColorIndex() const {
  const auto fill = ReadFormat([](const CellFormat& f) { return f.format.fill; });
  if (!fill) return std::nullopt;
  if (fill->pattern == engine::FillPattern::None) return host::kColorIndexNone;
  return fill->colour ? shell::NearestIndex(*fill->colour) : host::kColorIndexAutomatic;
}

void EmbeddedRange::SetInteriorColorIndex(host::ColorIndex index) {
  const engine::Colour colour = shell::ColourOf(index);
  ChangeGroup(FormatGroup::Fill, [colour](Format& f) {
    f.fill = colour ? engine::Fill{engine::FillPattern::Solid, colour} : engine::Fill{};
  });
}

}  // namespace tolvane::embedded
