#include "src/core/Dates.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>

#include "src/core/MGlobals.h"

namespace tolvane::accounts {

namespace {

constexpr std::chrono::sys_days kDayZero = std::chrono::year{1899} / 12 / 30;

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// The digits that a text begins with, at most `most` of them; takes them off the text.
std::optional<int> TakeNumber(std::string_view& text, std::size_t most) {
  const auto end =
      std::find_if_not(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(std::min(most, text.size())), IsDigit);
  int number = 0;
  const auto length = static_cast<std::size_t>(end - text.begin());
  const auto result = std::from_chars(text.data(), text.data() + length, number);
  if (length == 0 || result.ec != std::errc()) return std::nullopt;
  text.remove_prefix(length);
  return number;
}

bool TakeSeparator(std::string_view& text) {
  if (text.empty() || IsDigit(text.front())) return false;
  text.remove_prefix(1);
  return true;
}

}  // namespace

std::optional<int> lDateSerial(int year, int month, int day) {
  if (year < 1900 || year > 9999 || month < 1 || month > 12 || day < 1 || day > 31) return std::nullopt;
  const std::chrono::year_month_day date{std::chrono::year{year}, std::chrono::month{static_cast<unsigned>(month)},
                                         std::chrono::day{static_cast<unsigned>(day)}};
  if (!date.ok()) return std::nullopt;
  return static_cast<int>((std::chrono::sys_days{date} - kDayZero).count());
}

CalendarDay DayOfSerial(int lDate) {
  const std::chrono::year_month_day date{kDayZero + std::chrono::days{lDate}};
  return {static_cast<int>(date.year()), static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day()))};
}

int lToday() {
  return static_cast<int>(std::floor(gxlApp().User().Now()));
}

std::optional<int> lDateFromYMD(std::string_view sText) {
  if (sText.size() != 8 || !std::all_of(sText.begin(), sText.end(), IsDigit)) return std::nullopt;
  const int year = *TakeNumber(sText, 4);
  const int month = *TakeNumber(sText, 2);
  return lDateSerial(year, month, *TakeNumber(sText, 2));
}

std::optional<int> lDateFromFields(std::string_view sText) {
  if (sText.size() < 4 || !std::all_of(sText.begin(), sText.begin() + 4, IsDigit)) return std::nullopt;
  const int year = *TakeNumber(sText, 4);
  if (!TakeSeparator(sText)) return std::nullopt;
  const auto month = TakeNumber(sText, 9);
  if (!month || !TakeSeparator(sText)) return std::nullopt;
  const auto day = TakeNumber(sText, 9);
  if (!day || !sText.empty()) return std::nullopt;
  return lDateSerial(year, *month, *day);
}

std::string sLogTime(double dNow) {
  const double whole = std::floor(dNow);
  const int seconds = std::min(86399, static_cast<int>(std::floor((dNow - whole) * 86400 + 0.5)));
  const CalendarDay day = DayOfSerial(static_cast<int>(whole));
  return fmt::format("{:02}/{:02}/{:02} {:02}:{:02}:{:02}", day.month, day.day, day.year % 100, seconds / 3600,
                     seconds / 60 % 60, seconds % 60);
}

}  // namespace tolvane::accounts
