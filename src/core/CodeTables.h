#pragma once

#include <string>
#include <string_view>

namespace tolvane::accounts {

// The texts that stand in tables for the system's codes, and what each code is called where users see it.

// Account types: 0 to 2, and 3 for the empty text.
std::string sAccountTypeText(int lType);           // empty for any other number
int lAccountTypeFromText(std::string_view sText);  // exact case; raises 9997 for a text that is none of them

// Transaction types: 1 to 3.
std::string sTrnTypeText(int lType);           // "Error" for any other number
int lTrnTypeFromText(std::string_view sText);  // 0 for any other text

// Kinds of categories: 0 (empty) to 6.
std::string sCategoryKindText(int lKind);           // as it is stored; empty for any other number
int lCategoryKindFromText(std::string_view sText);  // 0 for any other text
std::string sCategoryKindCaption(int lKind);        // as it is shown

}  // namespace tolvane::accounts
