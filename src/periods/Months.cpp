#include "src/periods/Months.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

#include "platform/Text.h"
#include "src/core/Dates.h"
#include "src/core/MGlobals.h"

namespace tolvane::accounts {

namespace {

constexpr int kMonths = 12;

}  // namespace

int lMonthFromText(std::string_view sText) {
  constexpr std::size_t kLength = 8, kYearLength = 4, kNameLength = 3;
  if (platform::CharacterCount(sText) != kLength || sText.size() < kYearLength + kNameLength) return kNoMonth;
  int year = 0;
  const auto result = std::from_chars(sText.data(), sText.data() + kYearLength, year);
  if (result.ec != std::errc() || result.ptr != sText.data() + kYearLength || year < 0) return kNoMonth;
  const std::string_view name = sText.substr(sText.size() - kNameLength);
  const auto found = std::find_if(gasMonths.begin(), gasMonths.end(),
                                  [&](std::string_view month) { return platform::EqualIgnoringCase(month, name); });
  return found == gasMonths.end() ? kNoMonth : year * kMonths + static_cast<int>(found - gasMonths.begin());
}

std::string sMonthText(int lPeriod) {
  if (lPeriod < 1) return {};
  return fmt::format("{:04} {}", lPeriod / kMonths, gasMonths[static_cast<std::size_t>(lPeriod % kMonths)]);
}

int lMonthOfDate(int lDate) {
  const CalendarDay day = DayOfSerial(lDate);
  return day.year * kMonths + day.month - 1;
}

}  // namespace tolvane::accounts
