#include "engine/formula/DateSerial.h"

#include <cmath>

namespace tolvane::engine {
namespace {

// Days between a date of the Gregorian calendar and 1 January 1970, in years that begin in March so that the leap day
// comes last.
std::int64_t DaysFromEpoch(std::int64_t year, int month, int day) {
  year -= month <= 2;
  const std::int64_t era = (year >= 0 ? year : year - 399) / 400;
  const std::int64_t yearOfEra = year - era * 400;
  const std::int64_t dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
  const std::int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
  return era * 146097 + dayOfEra - 719468;
}

CalendarDate FromEpoch(std::int64_t days) {
  days += 719468;
  const std::int64_t era = (days >= 0 ? days : days - 146096) / 146097;
  const std::int64_t dayOfEra = days - era * 146097;
  const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const std::int64_t shifted = (5 * dayOfYear + 2) / 153;
  const int month = static_cast<int>(shifted < 10 ? shifted + 3 : shifted - 9);
  return {static_cast<int>(yearOfEra + era * 400 + (month <= 2)), month,
          static_cast<int>(dayOfYear - (153 * shifted + 2) / 5 + 1)};
}

constexpr std::int64_t kEpochSerial = 25569;  // 1 January 1970
constexpr int kLeapDaySerial = 60;            // 29 February 1900

}  // namespace

std::optional<double> SerialOf(std::int64_t year, std::int64_t month, std::int64_t day) {
  constexpr std::int64_t kFar = 10'000'000;  // beyond which nothing counts back into the calendar
  if (std::abs(year) > kFar || std::abs(month) > kFar || std::abs(day) > kFar) return std::nullopt;
  std::int64_t months = year * 12 + month - 1;
  year = months >= 0 ? months / 12 : -1;
  if (year < 1899 || year > 9999 + 900000) return std::nullopt;
  const std::int64_t first = DaysFromEpoch(year, static_cast<int>(months % 12) + 1, 1) + kEpochSerial;
  // Until the leap day that never was, serials run one lower than the calendar says.
  const std::int64_t firstSerial = first <= kLeapDaySerial ? first - 1 : first;
  const std::int64_t serial = firstSerial + day - 1;
  if (serial < 0 || serial > static_cast<std::int64_t>(kLastDateSerial)) return std::nullopt;
  return static_cast<double>(serial);
}

CalendarDate DateOf(double serial) {
  const auto days = static_cast<std::int64_t>(std::floor(serial));
  if (days == 0) return {1900, 1, 0};
  if (days == kLeapDaySerial) return {1900, 2, 29};
  return FromEpoch(days - kEpochSerial + (days < kLeapDaySerial ? 1 : 0));
}

int DaysInMonth(int year, int month) {
  constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0 || year == 1900;
  return month == 2 && leap ? 29 : kDays[month - 1];
}

int WeekdayOf(double serial) {
  // Serial 1 counts as a Sunday: with 29 February 1900 in the count, all days from March 1900 on come out right.
  const auto days = static_cast<std::int64_t>(std::floor(serial));
  return static_cast<int>((days + 6) % 7) + 1;
}

}  // namespace tolvane::engine
