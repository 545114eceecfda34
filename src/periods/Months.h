#pragma once

#include <string>
#include <string_view>

namespace tolvane::accounts {

// Time is counted in whole months: year * 12 + the month's index from 0. On sheets a month is a text of eight
// characters: "2009 Jan" is 24108.
inline constexpr int kFirstMonth = 24000;  // January 2000
inline constexpr int kLastMonth = 25199;   // December 2099
inline constexpr int kNoMonth = -1;
inline constexpr int kAllMonths = 1000;  // as a duration: "All"

// The month of a text; kNoMonth for anything that is none. Case and the character between year and name do not matter.
int lMonthFromText(std::string_view sText);
// The text of a month; empty for a number below 1.
std::string sMonthText(int lPeriod);
// The month in which a date lies.
int lMonthOfDate(int lDate);

}  // namespace tolvane::accounts
