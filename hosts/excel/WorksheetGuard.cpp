// The part of ExcelWorksheet about protection and the filter.
#include "hosts/excel/ExcelWorksheet.h"
#include "hosts/excel/Optional.h"
#include "src/host/Errors.h"

namespace tolvane::excel {
namespace {

struct Allowance {
  const char* member;
  bool host::Protection::*field;
};

// In the order of the arguments of Protect.
constexpr Allowance kAllowances[] = {
    {"AllowFormattingCells", &host::Protection::allowFormattingCells},
    {"AllowFormattingColumns", &host::Protection::allowFormattingColumns},
    {"AllowFormattingRows", &host::Protection::allowFormattingRows},
    {"AllowInsertingColumns", &host::Protection::allowInsertingColumns},
    {"AllowInsertingRows", &host::Protection::allowInsertingRows},
    {"AllowInsertingHyperlinks", &host::Protection::allowInsertingHyperlinks},
    {"AllowDeletingColumns", &host::Protection::allowDeletingColumns},
    {"AllowDeletingRows", &host::Protection::allowDeletingRows},
    {"AllowSorting", &host::Protection::allowSorting},
    {"AllowFiltering", &host::Protection::allowFiltering},
    {"AllowUsingPivotTables", &host::Protection::allowUsingPivotTables},
};

}  // namespace

bool ExcelWorksheet::ProtectContents() const {
  return object().Get("ProtectContents").AsBool();
}

host::Protection ExcelWorksheet::Protection() const {
  const Dispatch protection = session().ObjectOf("Protection", object().Get("Protection"));
  host::Protection allowed;
  for (const auto& [member, field] : kAllowances) allowed.*field = protection.Get(member).AsBool();
  return allowed;
}

void ExcelWorksheet::Protect(const host::Protection& allowed) {
  // Password, DrawingObjects, Contents, Scenarios, UserInterfaceOnly
  std::vector<Variant> arguments = {Variant::Missing(), Variant(true), Variant(true), Variant(true), Variant(false)};
  for (const auto& [member, field] : kAllowances) arguments.emplace_back(allowed.*field);
  object().CallWith("Protect", std::move(arguments));
}

void ExcelWorksheet::Unprotect() {
  object().Call("Unprotect");
}

host::SelectionMode ExcelWorksheet::EnableSelection() const {
  return static_cast<host::SelectionMode>(object().Get("EnableSelection").AsInt());
}
void ExcelWorksheet::SetEnableSelection(host::SelectionMode mode) {
  object().Put("EnableSelection", ConstantOf(mode));
}

// --- the filter
// ------------------------------------------------------------------------------------------------------------

bool ExcelWorksheet::AutoFilterMode() const {
  return object().Get("AutoFilterMode").AsBool();
}
void ExcelWorksheet::RemoveAutoFilter() {
  object().Put("AutoFilterMode", false);
}

Dispatch ExcelWorksheet::FilterObject() const {
  // Nothing where there is no filter; its members then are ObjectNotSet.
  return session().ObjectOf("AutoFilter", object().Get("AutoFilter"));
}

host::Range ExcelWorksheet::AutoFilterRange() const {
  return session().RangeOf(FilterObject().Get("Range"));
}

std::vector<host::FilterState> ExcelWorksheet::AutoFilterFilters() const {
  std::vector<host::FilterState> states;
  session().ObjectOf("Filters", FilterObject().Get("Filters")).ForEach([&](ComPtr<IDispatch> object) {
    const Dispatch filter = session().ObjectOf("Filter", std::move(object));
    host::FilterState state;
    state.on = filter.Get("On").AsBool();
    if (state.on) {  // the others refuse to be read else
      state.op = static_cast<host::FilterOperator>(filter.Get("Operator").AsInt());
      const Variant criteria = filter.Get("Criteria1");
      if (state.op == host::FilterOperator::Values) {
        state.values = criteria.AsTexts();
      } else {
        state.criteria1 = criteria.AsText();
      }
      if (state.op == host::FilterOperator::And || state.op == host::FilterOperator::Or) {
        state.criteria2 = filter.Get("Criteria2").AsText();
      }
    }
    states.push_back(std::move(state));
  });
  return states;
}

}  // namespace tolvane::excel
