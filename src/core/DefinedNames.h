#pragma once

#include <string>
#include <string_view>

#include "src/host/Workbook.h"
#include "src/host/Worksheet.h"

namespace tolvane::accounts {

// What marks a workbook and its sheets; that the name exists is the test.
inline constexpr std::string_view kIsAccountsBook = "setIsTolvaneAccountsBook";
inline constexpr std::string_view kIsBreakdown = "setIsTolvaneBreakdown";
inline constexpr std::string_view kIsSupportBook = "setIsTolvaneAccountsSupport";

enum class Notation : bool { A1, R1C1 };

// Sets a name, or adds it, hidden. An empty value becomes "=FALSE", and one without "=" gets it. Never fails.
void SetName(const host::Workbook& parent, std::string_view sName, std::string_view sValue,
             Notation notation = Notation::A1);
void SetName(const host::Worksheet& parent, std::string_view sName, std::string_view sValue,
             Notation notation = Notation::A1);

// What a name refers to, without "=" and without the quotes of a text; empty when there is none.
std::string sGetName(const host::Workbook& parent, std::string_view sName, Notation notation = Notation::A1);
std::string sGetName(const host::Worksheet& parent, std::string_view sName, Notation notation = Notation::A1);

bool bNameExists(const host::Workbook& wkb, std::string_view sName);
bool bIsAccSheet(const host::Worksheet& wks);  // an account's data sheet, or their template
bool bSheetExists(const host::Workbook& wkb, std::string_view sName);

}  // namespace tolvane::accounts
