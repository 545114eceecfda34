#include "engine/xlsx/ValidationNames.h"

#include <algorithm>

#include "engine/xlsx/Dom.h"
#include "engine/xlsx/XmlText.h"

namespace tolvane::engine::xlsx {

namespace {

// By the order of the model's enumerations.
constexpr std::array<std::string_view, 8> kKinds = {"none", "whole", "list",       "decimal",
                                                    "date", "time",  "textLength", "custom"};
constexpr std::array<std::string_view, 3> kAlerts = {"stop", "warning", "information"};
constexpr std::array<std::string_view, 8> kComparisons = {
    "between", "notBetween", "equal", "notEqual", "greaterThan", "lessThan", "greaterThanOrEqual", "lessThanOrEqual"};

struct FilterOperator {
  std::string_view sign;
  std::string_view name;
};
// Longer signs first.
constexpr std::array<FilterOperator, 6> kFilterOperators = {{{"<>", "notEqual"},
                                                             {">=", "greaterThanOrEqual"},
                                                             {"<=", "lessThanOrEqual"},
                                                             {">", "greaterThan"},
                                                             {"<", "lessThan"},
                                                             {"=", "equal"}}};

template <std::size_t kCount>
std::size_t PlaceOf(const std::array<std::string_view, kCount>& names, std::string_view name) {
  const auto found = std::find(names.begin(), names.end(), name);
  return found == names.end() ? 0 : static_cast<std::size_t>(found - names.begin());
}

}  // namespace

std::string_view NameOf(Validation::Kind kind) {
  return kKinds[static_cast<std::size_t>(kind)];
}
Validation::Kind ValidationKindOf(std::string_view name) {
  return static_cast<Validation::Kind>(PlaceOf(kKinds, name));
}
std::string_view NameOf(Validation::Alert alert) {
  return kAlerts[static_cast<std::size_t>(alert) - 1];
}
Validation::Alert ValidationAlertOf(std::string_view name) {
  return static_cast<Validation::Alert>(PlaceOf(kAlerts, name) + 1);
}
std::string_view ComparisonName(std::uint8_t comparison) {
  return kComparisons[comparison < kComparisons.size() ? comparison : 0];
}
std::uint8_t ComparisonOf(std::string_view name) {
  return static_cast<std::uint8_t>(PlaceOf(kComparisons, name));
}

// "Food" and "=Food" mean the same and stay apart: the first tells no operator. A blank stands for nothing, since an
// empty value would be none.
std::string CriterionOf(const pugi::xml_node& customFilter) {
  std::string value = WithoutEscapes(AttributeOf(customFilter, "val"));
  const std::string name = AttributeOf(customFilter, "operator");
  for (const FilterOperator& entry : kFilterOperators) {
    if (entry.name != name) continue;
    if (value == " " && (entry.sign == "<>" || entry.sign == "=")) value.clear();
    return std::string(entry.sign) + value;
  }
  return value;
}

void AppendCustomFilter(std::string& xml, std::string_view criterion) {
  xml += "<customFilter";
  for (const FilterOperator& entry : kFilterOperators) {
    if (!criterion.starts_with(entry.sign)) continue;
    AppendAttribute(xml, "operator", entry.name);
    criterion.remove_prefix(entry.sign.size());
    if (criterion.empty()) criterion = " ";
    break;
  }
  AppendXAttribute(xml, "val", criterion);
  xml += "/>";
}

}  // namespace tolvane::engine::xlsx
