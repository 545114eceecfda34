// The part of CalcWorksheet about its AutoFilter: the sheet's unnamed database range.
#include <algorithm>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XDatabaseRange.hpp>
#include <com/sun/star/sheet/XSheetCellCursor.hpp>
#include <com/sun/star/sheet/XSheetFilterDescriptor3.hpp>
#include <com/sun/star/sheet/XSheetFilterable.hpp>
#include <com/sun/star/sheet/XUnnamedDatabaseRanges.hpp>
#include <com/sun/star/util/XRefreshable.hpp>

#include "hosts/libreoffice/CalcRange.h"
#include "hosts/libreoffice/CalcWorksheet.h"
#include "hosts/libreoffice/FilterFields.h"
#include "hosts/libreoffice/SheetGuard.h"

namespace tolvane::libreoffice {

namespace {

Reference<css::sheet::XUnnamedDatabaseRanges> Databases(const CalcWorksheet& sheet) {
  return Reference<css::sheet::XUnnamedDatabaseRanges>(GetAny(sheet.book().model(), "UnnamedDatabaseRanges"),
                                                       UNO_QUERY_THROW);
}

CalcFilter Conditions(const Reference<css::beans::XPropertySet>& database) {
  const auto descriptor = As<css::sheet::XDatabaseRange>(database)->getFilterDescriptor();
  return {As<css::sheet::XSheetFilterDescriptor3>(descriptor)->getFilterFields3(),
          Get<bool>(descriptor, "UseRegularExpressions")};
}

// Conditions go by way of the database range, the only one that takes lists of values; an empty set of them only clears
// by way of the cells.
void Apply(const CalcWorksheet& sheet, const Rect& area, const Reference<css::beans::XPropertySet>& database,
           const CalcFilter& filter) {
  if (filter.fields.hasElements()) {
    const auto descriptor = As<css::sheet::XDatabaseRange>(database)->getFilterDescriptor();
    Set(descriptor, "ContainsHeader", true);
    Set(descriptor, "UseRegularExpressions", filter.regular);
    As<css::sheet::XSheetFilterDescriptor3>(descriptor)->setFilterFields3(filter.fields);
    As<css::util::XRefreshable>(database)->refresh();
    return;
  }
  const auto filterable = As<css::sheet::XSheetFilterable>(sheet.Cells(area));
  const auto descriptor = filterable->createFilterDescriptor(true);
  Set(descriptor, "ContainsHeader", true);
  filterable->filter(descriptor);
}

}  // namespace

Rect CalcWorksheet::RegionAround(const Rect& cell) const {
  return AtEdge([&] {
    const Reference<css::sheet::XSheetCellRange> range(Cells(cell), UNO_QUERY_THROW);
    const auto cursor = object()->createCursorByRange(range);
    cursor->collapseToCurrentRegion();
    return ToRect(As<css::sheet::XCellRangeAddressable>(cursor)->getRangeAddress());
  });
}

Reference<css::beans::XPropertySet> CalcWorksheet::FilterDatabase() const {
  return AtEdge([&]() -> Reference<css::beans::XPropertySet> {
    const auto databases = Databases(*this);
    const auto tab = static_cast<sal_Int16>(index());
    if (!databases->hasByTable(tab)) return {};
    const Reference<css::beans::XPropertySet> database(databases->getByTable(tab), UNO_QUERY_THROW);
    return Get<bool>(database, "AutoFilter") ? database : Reference<css::beans::XPropertySet>();
  });
}

std::optional<Rect> CalcWorksheet::FilterArea() const {
  const auto database = FilterDatabase();
  if (!database.is()) return std::nullopt;
  return AtEdge([&] { return ToRect(As<css::sheet::XDatabaseRange>(database)->getDataArea()); });
}

void CalcWorksheet::ToggleFilter(const Rect& wanted) {
  if (FilterArea()) return RemoveAutoFilter();
  RequireUnprotected(*this, "putting a filter on cells");
  Rect area = wanted;
  if (area.count() == 1) {
    area = RegionAround(area);
    if (area.count() == 1 && BodyOf(RangeOver({area}))->Value().single().isEmpty()) {
      Refuse("There is nothing to filter at " + PlaceOf(area) + ".");
    }
  } else {
    area.bottom = std::max(area.top, std::min(area.bottom, UsedArea().bottom));  // of whole columns, the rows in use
  }
  {
    const CalcProgram::OwnEdit edit(*program_);
    AtEdge([&] {
      const auto databases = Databases(*this);
      databases->setByTable(ToAddress(area, index()));
      Set(Reference<css::uno::XInterface>(databases->getByTable(static_cast<sal_Int16>(index())), UNO_QUERY_THROW),
          "AutoFilter", true);
    });
  }
  program_->BookEdited(book());
}

void CalcWorksheet::SetFilterField(const Rect& area, const host::FilterCriterion& criterion) {
  const host::FilterState state = ToState(criterion);
  const auto requireField = [&](const Rect& range) {
    if (1 <= criterion.field && criterion.field <= range.columns()) return;
    Refuse("The filter on " + PlaceOf(range) + " has no field " + std::to_string(criterion.field) + ".");
  };
  if (const auto filtered = FilterArea()) {
    RequireAllowed(*this, &host::Protection::allowFiltering, "filtering");
    requireField(*filtered);
  } else {
    requireField(area.count() == 1 ? RegionAround(area) : area);
    ToggleFilter(area);
  }
  std::vector<host::FilterState> states = AutoFilterFilters();
  states[static_cast<std::size_t>(criterion.field - 1)] = state;
  {
    const CalcProgram::OwnEdit edit(*program_);
    const ProtectionLifted lifted(*this);
    AtEdge([&] { Apply(*this, *FilterArea(), FilterDatabase(), ToCalc(states)); });
  }
  program_->BookEdited(book());
}

void CalcWorksheet::RemoveAutoFilter() {
  const auto area = FilterArea();
  if (!area) return;
  RequireUnprotected(*this, "taking a filter away");
  {
    const CalcProgram::OwnEdit edit(*program_);
    AtEdge([&] {
      Apply(*this, *area, FilterDatabase(), {});
      SetAny(FilterDatabase(), "AutoFilter", Any(false));
    });
  }
  program_->BookEdited(book());
}

host::Range CalcWorksheet::AutoFilterRange() const {
  const auto area = FilterArea();
  if (!area) throw host::HostError(host::ErrorNumber::ObjectNotSet, host::kObjectNotSetText);
  return RangeOver({*area});
}

std::vector<host::FilterState> CalcWorksheet::AutoFilterFilters() const {
  const auto area = FilterArea();
  if (!area) throw host::HostError(host::ErrorNumber::ObjectNotSet, host::kObjectNotSetText);
  return AtEdge([&] { return ToHost(Conditions(FilterDatabase()), area->columns()); });
}

}  // namespace tolvane::libreoffice
