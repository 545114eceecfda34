// The part of CalcRange that reads and sets looks of cells.
#include <com/sun/star/awt/FontSlant.hpp>
#include <com/sun/star/awt/FontWeight.hpp>
#include <com/sun/star/table/CellHoriJustify.hpp>
#include <com/sun/star/util/CellProtection.hpp>
#include <utility>

#include "hosts/libreoffice/CalcRange.h"
#include "hosts/libreoffice/FormatRuns.h"
#include "hosts/libreoffice/NumberFormatCode.h"
#include "hosts/libreoffice/SheetGuard.h"
#include "hosts/shell/Palette.h"

namespace tolvane::libreoffice {

namespace {

using Object = Reference<css::uno::XInterface>;

host::Alignment ToHost(css::table::CellHoriJustify justify) {
  switch (justify) {
    case css::table::CellHoriJustify_LEFT:
      return host::Alignment::Left;
    case css::table::CellHoriJustify_CENTER:
      return host::Alignment::Center;
    case css::table::CellHoriJustify_RIGHT:
      return host::Alignment::Right;
    default:
      return host::Alignment::General;
  }
}

css::table::CellHoriJustify ToCalc(host::Alignment alignment) {
  switch (alignment) {
    case host::Alignment::General:
      return css::table::CellHoriJustify_STANDARD;
    case host::Alignment::Left:
      return css::table::CellHoriJustify_LEFT;
    case host::Alignment::Center:
      return css::table::CellHoriJustify_CENTER;
    case host::Alignment::Right:
      return css::table::CellHoriJustify_RIGHT;
  }
  Refuse("There is no alignment with the number " + std::to_string(static_cast<int>(alignment)) + ".");
}

}  // namespace

void CalcRange::ChangeFormat(const std::function<void(const Object&)>& change) {
  const Rects all = areas();
  RequireAllowed(*sheet_, &host::Protection::allowFormattingCells, "changing formats");
  {
    const CalcProgram::OwnEdit edit(program());
    const ProtectionLifted lifted(*sheet_);
    AtEdge([&] { change(Collect(*sheet_, all)); });
  }
  program().BookEdited(book());
}

// What all cells have in common, or nothing. `read` makes the port's value of the property's.
template <class T, class Read>
std::optional<T> CalcRange::ReadShared(const char* property, const Read& read) const {
  const Rects all = areas();
  return AtEdge([&]() -> std::optional<T> {
    const auto collection = Collect(*sheet_, all);
    if (!MayDiffer(collection, property)) return read(GetAny(collection, property));
    std::optional<T> common;
    for (const Rect& area : all) {
      for (const Look& look : LooksOf(*sheet_, area)) {
        const T value = read(GetAny(look.cells, property));
        if (common && !(*common == value)) return std::nullopt;
        common = value;
      }
    }
    return common;
  });
}

namespace {

template <class T>
T From(const Any& any, T fallback = T()) {
  any >>= fallback;
  return fallback;
}

// Both settings of protection stand in one property, so each look is changed by itself.
void ChangeProtection(const CalcWorksheet& sheet, const Rects& areas,
                      const std::function<void(css::util::CellProtection&)>& change) {
  for (const Rect& area : areas) {
    const auto cells = sheet.Cells(area);
    if (!MayDiffer(cells, "CellProtection")) {
      auto protection = Get<css::util::CellProtection>(cells, "CellProtection");
      change(protection);
      Set(cells, "CellProtection", protection);
      continue;
    }
    for (const Look& look : LooksOf(sheet, area)) {
      auto protection = Get<css::util::CellProtection>(look.cells, "CellProtection");
      change(protection);
      Set(look.cells, "CellProtection", protection);
    }
  }
}

}  // namespace

std::optional<bool> CalcRange::Locked() const {
  return ReadShared<bool>("CellProtection",
                          [](const Any& any) { return From<css::util::CellProtection>(any).IsLocked != 0; });
}

// No flag of a protection allows to undermine it.
void CalcRange::SetLocked(bool locked) {
  const Rects all = areas();
  RequireUnprotected(*sheet_, "locking or unlocking cells");
  const CalcProgram::OwnEdit edit(program());
  ChangeProtection(*sheet_, all, [locked](css::util::CellProtection& protection) { protection.IsLocked = locked; });
  program().BookEdited(book());
}

std::optional<bool> CalcRange::FormulaHidden() const {
  return ReadShared<bool>("CellProtection",
                          [](const Any& any) { return From<css::util::CellProtection>(any).IsFormulaHidden != 0; });
}

void CalcRange::SetFormulaHidden(bool hidden) {
  const Rects all = areas();
  RequireUnprotected(*sheet_, "hiding formulas");
  const CalcProgram::OwnEdit edit(program());
  ChangeProtection(*sheet_, all,
                   [hidden](css::util::CellProtection& protection) { protection.IsFormulaHidden = hidden; });
  program().BookEdited(book());
}

std::optional<std::string> CalcRange::NumberFormat() const {
  return ReadShared<std::string>("NumberFormat", [this](const Any& any) -> std::string {
    const auto key = From<sal_Int32>(any);
    // Truth values have no format of their own in Excel.
    return IsTruthFormat(book(), key) ? "General" : ExcelNumberFormat(NumberFormatCode(book(), key));
  });
}

void CalcRange::SetNumberFormat(std::string_view format) {
  const std::int32_t key = NumberFormatKey(book(), format.empty() ? "General" : format);
  ChangeFormat([key](const Object& cells) { Set(cells, "NumberFormat", sal_Int32{key}); });
}

std::optional<host::Alignment> CalcRange::HorizontalAlignment() const {
  return ReadShared<host::Alignment>(
      "HoriJustify", [](const Any& any) { return ToHost(From(any, css::table::CellHoriJustify_STANDARD)); });
}

void CalcRange::SetHorizontalAlignment(host::Alignment alignment) {
  const css::table::CellHoriJustify wanted = ToCalc(alignment);
  ChangeFormat([wanted](const Object& cells) { Set(cells, "HoriJustify", wanted); });
}

std::optional<bool> CalcRange::WrapText() const {
  return ReadShared<bool>("IsTextWrapped", [](const Any& any) { return From<bool>(any); });
}

void CalcRange::SetWrapText(bool wrap) {
  ChangeFormat([wrap](const Object& cells) { Set(cells, "IsTextWrapped", wrap); });
}

std::optional<bool> CalcRange::FontBold() const {
  return ReadShared<bool>("CharWeight",
                          [](const Any& any) { return From<float>(any) > css::awt::FontWeight::SEMIBOLD; });
}

void CalcRange::SetFontBold(bool bold) {
  const float weight = bold ? css::awt::FontWeight::BOLD : css::awt::FontWeight::NORMAL;
  ChangeFormat([weight](const Object& cells) { Set(cells, "CharWeight", weight); });
}

std::optional<bool> CalcRange::FontItalic() const {
  return ReadShared<bool>(
      "CharPosture", [](const Any& any) { return From(any, css::awt::FontSlant_NONE) != css::awt::FontSlant_NONE; });
}

void CalcRange::SetFontItalic(bool italic) {
  const css::awt::FontSlant slant = italic ? css::awt::FontSlant_ITALIC : css::awt::FontSlant_NONE;
  ChangeFormat([slant](const Object& cells) { Set(cells, "CharPosture", slant); });
}

std::optional<host::ColorIndex> CalcRange::InteriorColorIndex() const {
  return ReadShared<host::ColorIndex>("CellBackColor", [](const Any& any) {
    const auto colour = From<sal_Int32>(any, -1);
    return colour == -1 ? host::kColorIndexNone : shell::NearestIndex(static_cast<std::uint32_t>(colour) & 0xFFFFFF);
  });
}

void CalcRange::SetInteriorColorIndex(host::ColorIndex index) {
  const auto colour = shell::ColourOf(index);
  const sal_Int32 value = colour ? static_cast<sal_Int32>(*colour) : -1;
  ChangeFormat([value](const Object& cells) { Set(cells, "CellBackColor", value); });
}

}  // namespace tolvane::libreoffice
