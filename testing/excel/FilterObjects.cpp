#include "testing/excel/FilterObjects.h"

#include "src/host/Errors.h"
#include "testing/excel/Collection.h"
#include "testing/excel/Property.h"

namespace tolvane::testing::excel {

namespace {

[[noreturn]] void Refuse(const char* text) {
  throw host::HostError(host::ErrorNumber::ApplicationDefined, text);
}

}  // namespace

std::span<const AutoFilterObject::Member> AutoFilterObject::Members() {
  static constexpr Member kMembers[] = {
      {"Range", [](AutoFilterObject& f, const Call&) { return f.world()->Of(f.handle.Range()); }},
      {"Filters",
       [](AutoFilterObject& f, const Call&) {
         std::vector<Variant> filters;
         for (const host::FilterState& state : f.handle.Filters()) {
           filters.push_back(New<FilterObject>(f.world(), state));
         }
         return New<Collection>(f.world(), std::move(filters));
       }},
  };
  return kMembers;
}

void FilterObject::RequireOn() const {
  if (!state_.on) Refuse("Application-defined or object-defined error");
}

std::span<const FilterObject::Member> FilterObject::Members() {
  static constexpr Member kMembers[] = {
      {"On", [](FilterObject& f, const Call&) { return Variant(f.state_.on); }},
      {"Operator",
       [](FilterObject& f, const Call&) {
         f.RequireOn();
         return VariantOf(f.state_.op);
       }},
      {"Criteria1",
       [](FilterObject& f, const Call&) {
         f.RequireOn();
         return f.state_.op == host::FilterOperator::Values ? Variant(f.state_.values) : Variant(f.state_.criteria1);
       }},
      {"Criteria2",
       [](FilterObject& f, const Call&) {
         f.RequireOn();
         if (!f.state_.criteria2) Refuse("Application-defined or object-defined error");
         return Variant(*f.state_.criteria2);
       }},
  };
  return kMembers;
}

}  // namespace tolvane::testing::excel
