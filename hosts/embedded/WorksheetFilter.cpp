// The part of EmbeddedWorksheet about its AutoFilter.
#include <algorithm>
#include <string>
#include <utility>

#include "engine/formula/NumberFormat.h"
#include "hosts/embedded/CellSearch.h"
#include "hosts/embedded/EmbeddedWorksheet.h"
#include "hosts/embedded/FilterTest.h"
#include "hosts/embedded/Refusal.h"
#include "hosts/embedded/SheetGuard.h"
#include "src/host/Range.h"

namespace tolvane::embedded {

using engine::CellPos;
using engine::FilterCriteria;
using engine::Rect;

namespace {

void ShowAll(engine::Sheet& sheet, const Rect& range) {
  sheet.rows.Change(range.top, range.bottom, [](engine::Band& band) { band.filtered = false; });
}

// Hides the rows of the filter that a criterion keeps out, shows the others.
void Apply(engine::Sheet& sheet) {
  const engine::AutoFilter& filter = *sheet.autoFilter;
  ShowAll(sheet, filter.range);
  const int first = filter.range.top + 1;  // below the header
  if (first <= filter.range.bottom && !filter.criteria.empty()) {
    std::vector<char> hidden(static_cast<std::size_t>(filter.range.bottom - first + 1), 0);
    for (const FilterCriteria& criteria : filter.criteria) {
      const FilterTest test(criteria);
      const int column = filter.range.left + criteria.field - 1;
      // Those that hold nothing are not visited.
      std::vector<char> passes(hidden.size(), test.Passes({}, "") ? 1 : 0);
      sheet.cells().ForEachContent({first, column, filter.range.bottom, column},
                                   [&](CellPos at, const engine::Value& value, const engine::FormulaCell*) {
                                     const engine::CellFormat& format = sheet.book().formats.At(sheet.FormatAt(at));
                                     passes[static_cast<std::size_t>(at.row - first)] =
                                         test.Passes(value, engine::FormatValue(value, format.format.numberFormat)) ? 1
                                                                                                                    : 0;
                                   });
      for (std::size_t i = 0; i < hidden.size(); ++i) hidden[i] |= passes[i] == 0 ? 1 : 0;
    }
    for (std::size_t i = 0; i < hidden.size();) {
      if (hidden[i] == 0) {
        ++i;
        continue;
      }
      std::size_t end = i;
      while (end < hidden.size() && hidden[end] != 0) ++end;
      sheet.rows.Change(first + static_cast<int>(i), first + static_cast<int>(end) - 1,
                        [](engine::Band& band) { band.filtered = true; });
      i = end;
    }
  }
  sheet.book().TellRowsHiddenChanged(sheet.id());
}

FilterCriteria ToCriteria(const host::FilterCriterion& criterion) {
  FilterCriteria criteria;
  criteria.field = criterion.field;
  switch (criterion.op) {
    case host::FilterOperator::None:
      criteria.join = FilterCriteria::Join::None;
      break;
    case host::FilterOperator::And:
    case host::FilterOperator::Or:
      criteria.join = criterion.op == host::FilterOperator::And ? FilterCriteria::Join::And : FilterCriteria::Join::Or;
      if (criterion.criteria2) {
        criteria.criterion2 = WithOperator(*criterion.criteria2);
      } else {
        criteria.join = FilterCriteria::Join::None;
      }
      break;
    case host::FilterOperator::Values:
      criteria.join = FilterCriteria::Join::Values;
      criteria.values = criterion.values;
      return criteria;
    default:
      Refuse("There is no filter operator " + std::to_string(static_cast<int>(criterion.op)) + ".");
  }
  criteria.criterion1 = WithOperator(*criterion.criteria1);
  return criteria;
}

}  // namespace

void EmbeddedWorksheet::ToggleFilter(const Rect& wanted) {
  if (sheet_->autoFilter) return RemoveAutoFilter();
  RequireUnprotected(*sheet_, "putting a filter on cells");
  Rect area = wanted;
  if (area.isCell()) {
    area = CurrentRegion(*sheet_, area.topLeft());
  } else if (const auto used = sheet_->UsedContents()) {
    // Of whole columns, the rows in use.
    area.bottom = std::max(area.top, std::min(area.bottom, used->bottom));
  }
  if (area.isCell() && sheet_->ValueAt(area.topLeft()).isEmpty()) {
    Refuse("There is nothing to filter at " + PlaceOf(area) + ".");
  }
  sheet_->autoFilter = engine::AutoFilter{area, {}};
  program_->BookEdited(*book_);
}

void EmbeddedWorksheet::SetFilterField(const Rect& area, const host::FilterCriterion& criterion) {
  const bool showsAll = !criterion.criteria1 && criterion.op != host::FilterOperator::Values;
  const auto criteria = showsAll ? std::nullopt : std::optional(ToCriteria(criterion));
  const auto requireField = [&](const Rect& range) {
    if (1 <= criterion.field && criterion.field <= range.columns()) return;
    Refuse("The filter on " + PlaceOf(range) + " has no field " + std::to_string(criterion.field) + ".");
  };
  if (sheet_->autoFilter) {
    RequireAllowed(*sheet_, &engine::SheetProtection::filter, "filtering");
    requireField(sheet_->autoFilter->range);
  } else {
    requireField(area.isCell() ? CurrentRegion(*sheet_, area.topLeft()) : area);
    ToggleFilter(area);
  }
  std::vector<FilterCriteria>& all = sheet_->autoFilter->criteria;
  std::erase_if(all, [&](const FilterCriteria& other) { return other.field == criterion.field; });
  if (criteria) all.push_back(*criteria);
  std::sort(all.begin(), all.end(), [](const FilterCriteria& a, const FilterCriteria& b) { return a.field < b.field; });
  Apply(*sheet_);
  program_->BookEdited(*book_);
}

void EmbeddedWorksheet::RemoveAutoFilter() {
  if (!sheet_->autoFilter) return;
  RequireUnprotected(*sheet_, "taking a filter away");
  ShowAll(*sheet_, sheet_->autoFilter->range);
  sheet_->autoFilter.reset();
  book_->book().TellRowsHiddenChanged(sheet_->id());
  program_->BookEdited(*book_);
}

host::Range EmbeddedWorksheet::AutoFilterRange() const {
  if (!sheet_->autoFilter) throw host::HostError(host::ErrorNumber::ObjectNotSet, host::kObjectNotSetText);
  return RangeOver(sheet_->autoFilter->range);
}

std::vector<host::FilterState> EmbeddedWorksheet::AutoFilterFilters() const {
  if (!sheet_->autoFilter) throw host::HostError(host::ErrorNumber::ObjectNotSet, host::kObjectNotSetText);
  std::vector<host::FilterState> states(static_cast<std::size_t>(sheet_->autoFilter->range.columns()));
  for (const FilterCriteria& criteria : sheet_->autoFilter->criteria) {
    if (criteria.field < 1 || criteria.field > static_cast<int>(states.size())) continue;
    host::FilterState& state = states[static_cast<std::size_t>(criteria.field - 1)];
    state.on = true;
    state.op = static_cast<host::FilterOperator>(criteria.join);
    state.criteria1 = criteria.criterion1;
    state.criteria2 = criteria.criterion2;
    state.values = criteria.values;
  }
  return states;
}

}  // namespace tolvane::embedded
