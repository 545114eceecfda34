#include "hosts/libreoffice/CellStyles.h"

#include <algorithm>
#include <array>
#include <com/sun/star/awt/FontSlant.hpp>
#include <com/sun/star/awt/FontWeight.hpp>
#include <com/sun/star/container/XNameContainer.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/style/XStyle.hpp>
#include <com/sun/star/style/XStyleFamiliesSupplier.hpp>
#include <com/sun/star/table/BorderLine2.hpp>
#include <com/sun/star/table/BorderLineStyle.hpp>
#include <com/sun/star/table/CellHoriJustify.hpp>
#include <com/sun/star/util/CellProtection.hpp>

#include "hosts/libreoffice/FormatRuns.h"
#include "platform/Text.h"

namespace tolvane::libreoffice {

namespace {

constexpr std::array<const char*, 1> kNumber = {"NumberFormat"};
constexpr std::array<const char*, 6> kFont = {"CharFontName", "CharHeight",    "CharWeight",
                                              "CharPosture",  "CharUnderline", "CharColor"};
constexpr std::array<const char*, 2> kAlignment = {"HoriJustify", "IsTextWrapped"};
constexpr std::array<const char*, 4> kBorder = {"LeftBorder2", "TopBorder2", "RightBorder2", "BottomBorder2"};
constexpr std::array<const char*, 1> kFill = {"CellBackColor"};
constexpr std::array<const char*, 1> kProtection = {"CellProtection"};
constexpr std::array<StyleGroup, 6> kGroups = {{{kNumber}, {kFont}, {kAlignment}, {kBorder}, {kFill}, {kProtection}}};

constexpr std::string_view kBasicExcel = "Normal";
constexpr std::string_view kBasicCalc = "Default";

Reference<css::container::XNameContainer> StylesOf(const CalcWorkbook& book) {
  const auto families = As<css::style::XStyleFamiliesSupplier>(book.model())->getStyleFamilies();
  return Reference<css::container::XNameContainer>(families->getByName("CellStyles"), UNO_QUERY_THROW);
}

css::table::BorderLine2 ToCalc(const host::StyleDefinition::BorderLine& line) {
  constexpr sal_Int16 kThin = 26;  // 1/100 mm
  css::table::BorderLine2 result;
  const bool drawn = line.style != host::LineStyle::None;
  result.LineStyle = drawn ? css::table::BorderLineStyle::SOLID : css::table::BorderLineStyle::NONE;
  result.LineWidth = drawn ? kThin : 0;
  result.OuterLineWidth = result.LineWidth;
  result.Color = static_cast<sal_Int32>(line.colour);
  return result;
}

css::table::CellHoriJustify ToCalc(host::Alignment alignment) {
  switch (alignment) {
    case host::Alignment::Left:
      return css::table::CellHoriJustify_LEFT;
    case host::Alignment::Center:
      return css::table::CellHoriJustify_CENTER;
    case host::Alignment::Right:
      return css::table::CellHoriJustify_RIGHT;
    case host::Alignment::General:
      break;
  }
  return css::table::CellHoriJustify_STANDARD;
}

void PutGroups(CalcWorkbook& book, const Reference<css::uno::XInterface>& style,
               const host::StyleDefinition& definition) {
  if (definition.numberFormat) {
    Set(style, "NumberFormat", sal_Int32{NumberFormatKey(book, *definition.numberFormat)});
  }
  if (definition.font) {
    Set(style, "CharFontName", ToUno(definition.font->name));
    Set(style, "CharHeight", static_cast<float>(definition.font->size));
    Set(style, "CharWeight", definition.font->bold ? css::awt::FontWeight::BOLD : css::awt::FontWeight::NORMAL);
    Set(style, "CharPosture", definition.font->italic ? css::awt::FontSlant_ITALIC : css::awt::FontSlant_NONE);
    Set(style, "CharColor", definition.font->colour ? static_cast<sal_Int32>(*definition.font->colour) : sal_Int32{-1});
  }
  if (definition.alignment) {
    Set(style, "HoriJustify", ToCalc(definition.alignment->horizontal));
    Set(style, "IsTextWrapped", definition.alignment->wrap);
  }
  if (definition.border) {
    Set(style, "LeftBorder2", ToCalc(definition.border->left));
    Set(style, "TopBorder2", ToCalc(definition.border->top));
    Set(style, "RightBorder2", ToCalc(definition.border->right));
    Set(style, "BottomBorder2", ToCalc(definition.border->bottom));
  }
  if (definition.fill) {
    const auto colour = definition.fill->colour;
    Set(style, "CellBackColor", colour ? static_cast<sal_Int32>(*colour) : sal_Int32{-1});
  }
  if (definition.protection) {
    css::util::CellProtection protection;
    protection.IsLocked = definition.protection->locked;
    protection.IsFormulaHidden = definition.protection->formulaHidden;
    Set(style, "CellProtection", protection);
  }
}

}  // namespace

std::span<const StyleGroup> StyleGroups() {
  return kGroups;
}

std::optional<OUString> FindStyle(const CalcWorkbook& book, std::string_view name) {
  const std::string_view wanted = platform::EqualIgnoringCase(name, kBasicExcel) ? kBasicCalc : name;
  return AtEdge([&]() -> std::optional<OUString> {
    for (const OUString& known : StylesOf(book)->getElementNames()) {
      if (platform::EqualIgnoringCase(ToUtf8(known), wanted)) return known;
    }
    return std::nullopt;
  });
}

std::string StyleNameOf(const CalcWorkbook&, const OUString& name) {
  std::string result = ToUtf8(name);
  return result == kBasicCalc ? std::string(kBasicExcel) : result;
}

std::vector<std::string> StyleNamesOf(const CalcWorkbook& book) {
  return AtEdge([&] {
    std::vector<std::string> names;
    for (const OUString& name : StylesOf(book)->getElementNames()) names.push_back(StyleNameOf(book, name));
    return names;
  });
}

bool Includes(const CalcWorkbook& book, const OUString& style, const StyleGroup& group) {
  if (ToUtf8(style) == kBasicCalc) return true;
  const Reference<css::uno::XInterface> object(StylesOf(book)->getByName(style), UNO_QUERY_THROW);
  return std::any_of(group.properties.begin(), group.properties.end(),
                     [&](const char* property) { return IsDirect(object, property); });
}

void Define(CalcWorkbook& book, const host::StyleDefinition& definition) {
  AtEdge([&] {
    const auto styles = StylesOf(book);
    const auto known = FindStyle(book, definition.name);
    Reference<css::uno::XInterface> style;
    if (known) {
      style.set(styles->getByName(*known), UNO_QUERY_THROW);
      for (const StyleGroup& group : StyleGroups()) {
        for (const char* property : group.properties) SetDefault(style, property);
      }
    } else {
      style = book.Create("com.sun.star.style.CellStyle");
      styles->insertByName(ToUno(definition.name), Any(Reference<css::style::XStyle>(style, UNO_QUERY_THROW)));
    }
    PutGroups(book, style, definition);
  });
}

}  // namespace tolvane::libreoffice
