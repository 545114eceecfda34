#pragma once

#include <string>
#include <string_view>

namespace tolvane::accounts {

// Upper case, then only 0 to 9 and A to Z: account numbers are compared in this form.
std::string sAlphanumericOnly(std::string_view sText);
// The characters that match a pattern of one character: # a digit, ? any, [...] a class ([!...] all others; a-z a
// range), anything else itself.
std::string sFilterChars(std::string_view sText, std::string_view sLikePattern);
// Drops every blank that follows a blank.
std::string sCollapseBlanks(std::string_view sText);
// What stands after the last separator of folders.
std::string sLastPathPart(std::string_view sPath);
// The lines of a text (a line end at the very end opens none) and the most tab-separated fields that one has.
void MeasureClipboardText(std::string_view sText, int& lRows, int& lColumns);
// A text in single quotes for a formula or a macro's name, with those within it doubled: 'O''Neil'.
std::string sQuoted(std::string_view sName);

}  // namespace tolvane::accounts
