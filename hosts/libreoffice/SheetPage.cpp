// The part of CalcWorksheet that sets up pages: in Calc a sheet names a page style, which sheets may share.
#include <algorithm>
#include <com/sun/star/container/XNameContainer.hpp>
#include <com/sun/star/style/XStyleFamiliesSupplier.hpp>

#include "hosts/libreoffice/CalcWorksheet.h"

namespace tolvane::libreoffice {

namespace {

using Styles = Reference<css::container::XNameContainer>;
using Style = Reference<css::uno::XInterface>;

Styles PageStylesOf(const CalcWorkbook& book) {
  const auto families = As<css::style::XStyleFamiliesSupplier>(book.model())->getStyleFamilies();
  return Styles(families->getByName("PageStyles"), UNO_QUERY_THROW);
}

Style PageStyleOf(const CalcWorkbook& book, const OUString& name) {
  return Style(PageStylesOf(book)->getByName(name), UNO_QUERY_THROW);
}

bool IsUsedByAnother(const CalcWorkbook& book, const CalcWorksheet& sheet, const OUString& style) {
  const sal_Int32 count = book.sheetAccess()->getCount();
  for (sal_Int32 index = 0; index < count; ++index) {
    if (index == sheet.index()) continue;
    if (Get<OUString>(book.SheetObject(index), "PageStyle") == style) return true;
  }
  return false;
}

// A style like that one, for one sheet alone.
OUString AddLike(const CalcWorkbook& book, const OUString& model) {
  const Styles styles = PageStylesOf(book);
  OUString name;
  for (int number = 1; name.isEmpty() || styles->hasByName(name); ++number) {
    name = ToUno("Tolvane page " + std::to_string(number));
  }
  const Style added = book.Create("com.sun.star.style.PageStyle");
  styles->insertByName(name, Any(added));
  const Style from = PageStyleOf(book, model);
  constexpr const char* kTaken[] = {"Width",     "Height",       "IsLandscape", "LeftMargin", "RightMargin",
                                    "TopMargin", "BottomMargin", "HeaderIsOn",  "FooterIsOn"};
  for (const char* property : kTaken) {
    SetAny(added, property, GetAny(from, property));
  }
  return name;
}

std::optional<int> PagesOf(const Style& style, const char* property) {
  const auto pages = Get<sal_Int16>(style, property);
  return pages > 0 ? std::optional<int>(pages) : std::nullopt;
}

}  // namespace

host::PageSetup CalcWorksheet::PageSetup() const {
  return AtEdge([&] {
    const Style style = PageStyleOf(book(), Get<OUString>(object(), "PageStyle"));
    return host::PageSetup{Get<bool>(style, "IsLandscape"), PagesOf(style, "ScaleToPagesX"),
                           PagesOf(style, "ScaleToPagesY")};
  });
}

void CalcWorksheet::SetPageSetup(const host::PageSetup& page) {
  constexpr int kMostPages = 32767;  // Excel's limit
  for (const std::optional<int>& pages : {page.fitToPagesWide, page.fitToPagesTall}) {
    if (pages && (*pages < 1 || *pages > kMostPages)) {
      Refuse("A sheet cannot be made to fit on " + std::to_string(*pages) + " pages; 1 to 32767 are possible.");
    }
  }
  const CalcProgram::OwnEdit edit(*program_);
  AtEdge([&] {
    OUString name = Get<OUString>(object(), "PageStyle");
    if (name == "Default" || IsUsedByAnother(book(), *this, name)) {
      name = AddLike(book(), name);
      Set(object(), "PageStyle", name);
    }
    const Style style = PageStyleOf(book(), name);
    const auto [shorter, longer] = std::minmax({Get<sal_Int32>(style, "Width"), Get<sal_Int32>(style, "Height")});
    Set(style, "IsLandscape", page.landscape);
    Set(style, "Width", page.landscape ? longer : shorter);
    Set(style, "Height", page.landscape ? shorter : longer);
    Set(style, "ScaleToPagesX", static_cast<sal_Int16>(page.fitToPagesWide.value_or(0)));
    Set(style, "ScaleToPagesY", static_cast<sal_Int16>(page.fitToPagesTall.value_or(0)));
  });
  program_->BookEdited(book());
}

}  // namespace tolvane::libreoffice
