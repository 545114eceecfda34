#include "hosts/libreoffice/CalcRange.h"

#include <com/sun/star/lang/XMultiServiceFactory.hpp>

#include <algorithm>

namespace tolvane::libreoffice {

namespace {

Reference<css::sheet::XSheetCellRangeContainer> NewCollection(const CalcWorksheet& sheet) {
  return As<css::sheet::XSheetCellRangeContainer>(sheet.book().Create("com.sun.star.sheet.SheetCellRanges"));
}

}  // namespace

Reference<css::sheet::XSheetCellRangeContainer> Collect(const CalcWorksheet& sheet, const Rects& areas) {
  return AtEdge([&] {
    const auto collection = NewCollection(sheet);
    Sequence<css::table::CellRangeAddress> addresses(static_cast<sal_Int32>(areas.size()));
    css::table::CellRangeAddress* next = addresses.getArray();
    const int index = sheet.index();
    for (const Rect& area : areas) *next++ = ToAddress(area, index);
    collection->addRangeAddresses(addresses, false);
    return collection;
  });
}

CalcRange::CalcRange(std::shared_ptr<CalcWorksheet> sheet, const Rects& areas) : sheet_(std::move(sheet)) {
  AtEdge([&] {
    const int index = sheet_->index();
    for (const Rect& area : areas) {
      areas_.push_back(NewCollection(*sheet_));
      areas_.back()->addRangeAddress(ToAddress(area, index), false);
    }
  });
}

Rects CalcRange::areas() const {
  return AtEdge([&] {
    Rects result;
    int place = sheet_->index();
    for (const auto& collection : areas_) {
      const auto pieces = collection->getRangeAddresses();
      if (!pieces.hasElements()) continue;
      // Deleting or inserting within a rectangle splits what Calc keeps of it; it stays one for the port.
      Rect whole = ToRect(pieces[0]);
      for (const auto& piece : pieces) {
        const Rect rect = ToRect(piece);
        whole = {std::min(whole.top, rect.top), std::min(whole.left, rect.left), std::max(whole.bottom, rect.bottom),
                 std::max(whole.right, rect.right)};
      }
      if (result.empty() && pieces[0].Sheet != place) {  // its cells were moved to another sheet
        const auto& sheets = sheet_->book().sheets();
        if (static_cast<std::size_t>(pieces[0].Sheet) < sheets.size()) {
          sheet_ = sheets[static_cast<std::size_t>(pieces[0].Sheet)];
          place = pieces[0].Sheet;
        }
      }
      result.push_back(whole);
    }
    if (result.empty()) throw host::HostError(host::ErrorNumber::ObjectRequired, host::kObjectRequiredText);
    return result;
  });
}

bool CalcRange::IsAlive() const noexcept {
  if (!sheet_->IsAlive()) return false;
  try {
    return std::any_of(areas_.begin(), areas_.end(),
                       [](const auto& collection) { return collection->getRangeAddresses().hasElements(); });
  } catch (const css::uno::Exception&) {
    return false;
  }
}

std::shared_ptr<CalcRange> BodyOf(const host::Range& range) {
  if (range.IsNothing()) throw host::HostError(host::ErrorNumber::ObjectNotSet, host::kObjectNotSetText);
  const auto body = std::dynamic_pointer_cast<CalcRange>(range.body());
  if (body == nullptr) throw host::HostError(host::ErrorNumber::InvalidCall, "The range is another program's.");
  if (!body->IsAlive()) throw host::HostError(host::ErrorNumber::ObjectRequired, host::kObjectRequiredText);
  return body;
}

}  // namespace tolvane::libreoffice
