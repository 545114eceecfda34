#pragma once

#include <cstdint>
#include <optional>

namespace tolvane::engine {

// Dates as serial numbers: 1 is 1 January 1900, and 60 is 29 February 1900, a day that never was but that every
// spreadsheet keeps for the sake of old files. 0 reads as 0 January 1900. The last is 31 December 9999.
inline constexpr double kLastDateSerial = 2958465;
// Workbooks with the 1904 date system count from 1 January 1904, which is their day 0.
inline constexpr double kStartOf1904 = 1462;

struct CalendarDate {
  int year = 1900;
  int month = 1;
  int day = 0;
};

struct ClockTime {
  int hour = 0;
  int minute = 0;
  double second = 0;
};

// Months and days beyond their range count on: month 13 is January of the next year, day 0 the last of the month
// before. Nothing when the result lies outside of the calendar.
std::optional<double> SerialOf(std::int64_t year, std::int64_t month, std::int64_t day);
CalendarDate DateOf(double serial);  // 0 <= serial < kLastDateSerial + 1
int DaysInMonth(int year, int month);
int WeekdayOf(double serial);  // 1 is Sunday

}  // namespace tolvane::engine
