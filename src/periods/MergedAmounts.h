#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tolvane::accounts {

// Amounts of budgets as the texts of their cells, so that what a user has typed survives being divided and added up:
// 1200 over twelve months is =1200/12 in each of them, and 1200 again when they are put together.

// A part of an amount, as a formula: "100" over 3 is "=100/3", "=A1+B1" is "=(A1+B1)/3".
std::string sDividedAmount(std::string_view sAmount, int lDivisor);

// The sum of amounts, none of them empty; empty for none, and one alone stays as it is. When the first n are the same
// n-th part of something, that comes out whole; all others are added one by one.
std::string sMergedAmounts(std::span<const std::string> amounts);

}  // namespace tolvane::accounts
