// The part of ExcelWorkbook that defines styles: one property after the other, as the program has it.
#include <cstdint>
#include <string>

#include "hosts/excel/ExcelWorkbook.h"
#include "hosts/excel/Optional.h"
#include "src/host/Errors.h"

namespace tolvane::excel {
namespace {

// The borders of a style have numbers of their own.
constexpr int kLeft = -4131, kRight = -4152, kTop = -4160, kBottom = -4107;
constexpr int kSolid = 1;

// The program has red in the lowest byte.
Variant ColourOf(std::uint32_t rgb) {
  return Variant(static_cast<int>((rgb & 0xFF) << 16 | (rgb & 0xFF00) | rgb >> 16));
}

void DefineFont(const Dispatch& font, const host::StyleDefinition::FontGroup& group) {
  font.Put("Name", group.name);
  font.Put("Size", group.size);
  font.Put("Bold", group.bold);
  font.Put("Italic", group.italic);
  if (group.colour) {
    font.Put("Color", ColourOf(*group.colour));
  } else {
    font.Put("ColorIndex", host::kColorIndexAutomatic);
  }
}

}  // namespace

void ExcelWorkbook::DefineStyle(const host::StyleDefinition& definition) {
  const Dispatch styles = session().ObjectOf("Styles", object().Get("Styles"));
  const auto find = [&]() -> Variant {
    try {
      return styles.Get("Item", definition.name);
    } catch (const host::HostError& error) {
      if (error.number() == host::ErrorNumber::ObjectRequired) throw;
      return styles.Get("Add", definition.name);
    }
  };
  const Dispatch style = session().ObjectOf("Style", find());
  // Not taken for the classes of the same names that a range has: nothing says that they are.
  const auto partOf = [this](const Dispatch& whole, const char* member) {
    return session().ObjectOf(std::string("Style.") + member, whole.Get(member));
  };

  style.Put("IncludeNumber", definition.numberFormat.has_value());
  if (definition.numberFormat) style.Put("NumberFormat", *definition.numberFormat);

  style.Put("IncludeFont", definition.font.has_value());
  if (definition.font) DefineFont(partOf(style, "Font"), *definition.font);

  style.Put("IncludeAlignment", definition.alignment.has_value());
  if (definition.alignment) {
    style.Put("HorizontalAlignment", ConstantOf(definition.alignment->horizontal));
    style.Put("WrapText", definition.alignment->wrap);
  }

  style.Put("IncludeBorder", definition.border.has_value());
  if (definition.border) {
    const Dispatch borders = partOf(style, "Borders");
    const auto define = [&](int side, const host::StyleDefinition::BorderLine& line) {
      const Dispatch border = session().ObjectOf("Style.Border", borders.Get("Item", side));
      border.Put("LineStyle", ConstantOf(line.style));
      if (line.style != host::LineStyle::None) border.Put("Color", ColourOf(line.colour));
    };
    define(kLeft, definition.border->left);
    define(kTop, definition.border->top);
    define(kRight, definition.border->right);
    define(kBottom, definition.border->bottom);
  }

  style.Put("IncludePatterns", definition.fill.has_value());
  if (definition.fill) {
    const Dispatch interior = partOf(style, "Interior");
    if (definition.fill->colour) {
      interior.Put("Pattern", kSolid);
      interior.Put("Color", ColourOf(*definition.fill->colour));
    } else {
      interior.Put("ColorIndex", host::kColorIndexNone);
    }
  }

  style.Put("IncludeProtection", definition.protection.has_value());
  if (definition.protection) {
    style.Put("Locked", definition.protection->locked);
    style.Put("FormulaHidden", definition.protection->formulaHidden);
  }
}

}  // namespace tolvane::excel
