#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "engine/model/Workbook.h"

namespace tolvane::engine::xlsx {

// What programs drop when they save a file stands in it a second time, in a hidden name of each sheet and one of the
// book, which all of them keep: "key=value;" one after the other, as a formula of texts. All hosts write and read the
// same names and keys; see docs/file-format.md.
inline constexpr std::string_view kSheetKeepsake = "_Tolvane_Sheet";
inline constexpr std::string_view kBookKeepsake = "_Tolvane_Book";

using Facts = std::map<std::string, std::string, std::less<>>;

bool IsKeepsake(std::string_view name);
// Nothing where the formula is not of that kind.
std::optional<Facts> FactsOf(const Expression& formula);
// As a formula without "=".
std::string FormulaOf(const Facts& facts);

Facts FactsAbout(const Sheet& sheet);
// `before`: what the file told; keys that are not known here stay.
Facts FactsAbout(const Workbook& book, const Facts& before);

// Puts back what LibreOffice does not save: very hidden sheets, what protection allows, hidden names, the protection of
// the structure. For files that it saved last; in others the file itself tells.
void PutBack(const Facts& facts, Sheet& sheet);
void PutBack(const Facts& facts, Workbook& book);

}  // namespace tolvane::engine::xlsx
