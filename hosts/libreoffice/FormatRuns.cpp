#include "hosts/libreoffice/FormatRuns.h"

#include <algorithm>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/sheet/XCellFormatRangesSupplier.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/XUniqueCellFormatRangesSupplier.hpp>
#include <com/sun/star/util/MalformedNumberFormatException.hpp>
#include <com/sun/star/util/NumberFormat.hpp>
#include <com/sun/star/util/XNumberFormatsSupplier.hpp>
#include <optional>

namespace tolvane::libreoffice {

namespace {

Reference<css::util::XNumberFormats> FormatsOf(const CalcWorkbook& book) {
  return As<css::util::XNumberFormatsSupplier>(book.model())->getNumberFormats();
}

css::lang::Locale EnglishLocale() {
  return css::lang::Locale("en", "US", OUString());
}

// Calc leaves out the columns behind the last one that was ever touched.
std::optional<Rect> Untouched(const Rect& area, int lastTouched) {
  if (lastTouched >= area.right) return std::nullopt;
  return Rect{area.top, lastTouched + 1, area.bottom, area.right};
}

}  // namespace

void ForEachFormatRun(const CalcWorksheet& sheet, const Rect& area,
                      const std::function<void(const Rect&, const Reference<css::uno::XInterface>&)>& work) {
  AtEdge([&] {
    const auto runs = As<css::sheet::XCellFormatRangesSupplier>(sheet.Cells(area))->getCellFormatRanges();
    const sal_Int32 count = runs->getCount();
    int last = area.left - 1;
    for (sal_Int32 i = 0; i < count; ++i) {
      const Reference<css::sheet::XCellRangeAddressable> run(runs->getByIndex(i), UNO_QUERY_THROW);
      const Rect rect = ToRect(run->getRangeAddress());
      last = std::max(last, rect.right);
      work(rect, run);
    }
    if (const auto rest = Untouched(area, last)) work(*rest, sheet.Cells(*rest));
  });
}

std::vector<Look> LooksOf(const CalcWorksheet& sheet, const Rect& area) {
  return AtEdge([&] {
    std::vector<Look> looks;
    int last = area.left - 1;
    const auto groups = As<css::sheet::XUniqueCellFormatRangesSupplier>(sheet.Cells(area))->getUniqueCellFormatRanges();
    const sal_Int32 count = groups->getCount();
    for (sal_Int32 i = 0; i < count; ++i) {
      const Reference<css::sheet::XSheetCellRanges> cells(groups->getByIndex(i), UNO_QUERY_THROW);
      Look look{{}, cells};
      for (const auto& address : cells->getRangeAddresses()) {
        look.areas.push_back(ToRect(address));
        last = std::max(last, look.areas.back().right);
      }
      looks.push_back(std::move(look));
    }
    if (const auto rest = Untouched(area, last)) looks.push_back({{*rest}, sheet.Cells(*rest)});
    return looks;
  });
}

bool IsTruthFormat(const CalcWorkbook& book, std::int32_t key) {
  return AtEdge([&] {
    const sal_Int16 type = Get<sal_Int16>(FormatsOf(book)->getByKey(key), "Type");
    return (type & css::util::NumberFormat::LOGICAL) != 0;
  });
}

std::int32_t NumberFormatKey(CalcWorkbook& book, std::string_view calcCode) {
  return AtEdge([&] {
    const auto formats = FormatsOf(book);
    const OUString code = ToUno(calcCode);
    try {
      const sal_Int32 known = formats->queryKey(code, EnglishLocale(), false);
      return known != -1 ? known : formats->addNew(code, EnglishLocale());
    } catch (const css::util::MalformedNumberFormatException&) {
      Refuse("\"" + std::string(calcCode) + "\" is no number format.");
    }
  });
}

std::string NumberFormatCode(const CalcWorkbook& book, std::int32_t key) {
  return AtEdge([&] { return ToUtf8(Get<OUString>(FormatsOf(book)->getByKey(key), "FormatString")); });
}

}  // namespace tolvane::libreoffice
