#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/libreoffice/CalcWorkbook.h"

namespace tolvane::libreoffice {

// The parts of a look that a style includes or leaves out as a whole, by Calc's properties.
struct StyleGroup {
  std::span<const char* const> properties;
};
std::span<const StyleGroup> StyleGroups();

// Excel's "Normal" is Calc's "Default". Names ignore case; none where there is no such style.
std::optional<OUString> FindStyle(const CalcWorkbook& book, std::string_view name);
std::string StyleNameOf(const CalcWorkbook& book, const OUString& name);
std::vector<std::string> StyleNamesOf(const CalcWorkbook& book);
// The basic style includes everything, any other what was set on it.
bool Includes(const CalcWorkbook& book, const OUString& style, const StyleGroup& group);
void Define(CalcWorkbook& book, const host::StyleDefinition& definition);

}  // namespace tolvane::libreoffice
