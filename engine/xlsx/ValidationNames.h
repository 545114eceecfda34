#pragma once

#include <pugixml.hpp>

#include <array>
#include <string>
#include <string_view>

#include "engine/model/SheetParts.h"

namespace tolvane::engine::xlsx {

// Words of the format for what validations, filters and protections say.

std::string_view NameOf(Validation::Kind kind);
Validation::Kind ValidationKindOf(std::string_view name);
std::string_view NameOf(Validation::Alert alert);
Validation::Alert ValidationAlertOf(std::string_view name);
// Comparisons by their numbers in the model: between, not between, =, <>, >, <, >=, <=.
std::string_view ComparisonName(std::uint8_t comparison);
std::uint8_t ComparisonOf(std::string_view name);

// A criterion of a filter as its text: ">5", "=Food", "Food".
std::string CriterionOf(const pugi::xml_node& customFilter);
void AppendCustomFilter(std::string& xml, std::string_view criterion);

// What a protected sheet allows, by attributes that say what it denies.
struct ProtectionFlag {
  const char* attribute;
  bool isDenied;  // when it is not told
  bool SheetProtection::*member;
};
inline constexpr std::array<ProtectionFlag, 13> kProtectionFlags = {{
    {"formatCells", true, &SheetProtection::formatCells},
    {"formatColumns", true, &SheetProtection::formatColumns},
    {"formatRows", true, &SheetProtection::formatRows},
    {"insertColumns", true, &SheetProtection::insertColumns},
    {"insertRows", true, &SheetProtection::insertRows},
    {"insertHyperlinks", true, &SheetProtection::insertHyperlinks},
    {"deleteColumns", true, &SheetProtection::deleteColumns},
    {"deleteRows", true, &SheetProtection::deleteRows},
    {"sort", true, &SheetProtection::sort},
    {"autoFilter", true, &SheetProtection::filter},
    {"pivotTables", true, &SheetProtection::pivotTables},
    {"selectLockedCells", false, &SheetProtection::selectLocked},
    {"selectUnlockedCells", false, &SheetProtection::selectUnlocked},
}};

}  // namespace tolvane::engine::xlsx
