#include <algorithm>
#include <cmath>
#include <vector>

#include "engine/formula/Coercion.h"
#include "engine/formula/DateArguments.h"

// Spans of days, weeks and years between dates.

namespace tolvane::engine {
namespace {

double DayAt(FunctionCall& call, std::size_t i) {
  return std::floor(SerialAt(call, i));
}

// --- weeks
// -------------------------------------------------------------------------------------------------------------------

// 1 for Monday to 7 for Sunday.
int DayOfWeek(double serial) {
  return (WeekdayOf(serial) + 5) % 7 + 1;
}

// The week of the year's first Thursday is the first; weeks begin on Mondays.
double IsoWeekOf(double serial) {
  const double thursday = serial + 4 - DayOfWeek(serial);
  if (thursday < 1) return 52;  // of 1899, before the calendar begins
  const double firstDay = *SerialOf(DateOf(thursday).year, 1, 1);
  return std::floor((thursday - firstDay) / 7) + 1;
}

Operand IsoWeekNumber(FunctionCall& call) {
  const double day = DayAt(call, 0);
  return day < 1 ? Operand(ErrorCode::Num) : Operand(IsoWeekOf(day));
}

// The week with 1 January is the first. The type names the day on which weeks begin.
Operand WeekNumber(FunctionCall& call) {
  const double day = DayAt(call, 0);
  const std::int64_t type = call.Whole(1, 1);
  constexpr std::int64_t kIso = 21;
  if (type == kIso) return IsoWeekOf(day);
  const bool isDay = type >= 11 && type <= 17;
  if (type != 1 && type != 2 && !isDay) return ErrorCode::Num;
  const int firstDay = type == 1 ? 7 : type == 2 ? 1 : static_cast<int>(type) - 10;  // 1 is Monday
  const double newYear = *SerialOf(DateOf(day).year, 1, 1);
  const int before = (DayOfWeek(newYear) - firstDay + 7) % 7;
  return std::floor((day - newYear + before) / 7) + 1;
}

// --- working days
// -------------------------------------------------------------------------------------------------------------------

// Which days of the week are free: from Monday on.
struct Weekend {
  bool free[7] = {false, false, false, false, false, true, true};
  int workingDays() const { return static_cast<int>(std::count(std::begin(free), std::end(free), false)); }
};

// A number from 1 (Saturday and Sunday) to 7 and 11 (Sunday) to 17, or a text of seven digits from Monday on.
Weekend WeekendAt(FunctionCall& call, std::size_t i) {
  Weekend weekend;
  if (!call.Has(i)) return weekend;
  std::fill(std::begin(weekend.free), std::end(weekend.free), false);
  if (call.ValueAt(i).isText()) {
    const std::string digits = call.Text(i);
    if (digits.size() != 7 || digits.find_first_not_of("01") != std::string::npos)
      throw FunctionError{ErrorCode::Value};
    for (std::size_t day = 0; day < 7; ++day) weekend.free[day] = digits[day] == '1';
    return weekend;
  }
  const std::int64_t number = call.Whole(i);
  if (number >= 1 && number <= 7) {
    weekend.free[(number + 4) % 7] = true;
    weekend.free[(number + 5) % 7] = true;
  } else if (number >= 11 && number <= 17) {
    weekend.free[(number - 5) % 7] = true;
  } else {
    throw FunctionError{ErrorCode::Num};
  }
  return weekend;
}

// Days that are holidays and no weekend, in order.
std::vector<double> HolidaysAt(FunctionCall& call, std::size_t i, const Weekend& weekend) {
  std::vector<double> holidays;
  if (!call.Has(i)) return holidays;
  const ArrayPtr days = call.evaluator.ToArray(call.Argument(i));
  if (days == nullptr) throw FunctionError{ErrorCode::Value};
  for (const Value& value : days->values) {
    if (value.isEmpty()) continue;
    const NumberResult number = ToNumber(value);
    if (number.error) throw FunctionError{*number.error};
    const double day = std::floor(CheckedSerial(call.evaluator, number.number));
    if (!weekend.free[DayOfWeek(day) - 1]) holidays.push_back(day);
  }
  std::sort(holidays.begin(), holidays.end());
  holidays.erase(std::unique(holidays.begin(), holidays.end()), holidays.end());
  return holidays;
}

double CountWorkingDays(double first, double last, const Weekend& weekend, const std::vector<double>& holidays) {
  if (first > last) return -CountWorkingDays(last, first, weekend, holidays);
  const double weeks = std::floor((last - first + 1) / 7);
  double count = weeks * weekend.workingDays();
  for (double day = first + weeks * 7; day <= last; ++day) count += weekend.free[DayOfWeek(day) - 1] ? 0 : 1;
  const auto from = std::lower_bound(holidays.begin(), holidays.end(), first);
  return count - static_cast<double>(std::upper_bound(from, holidays.end(), last) - from);
}

Operand WorkingDaysBetween(FunctionCall& call, const Weekend& weekend, std::size_t holidays) {
  const double first = DayAt(call, 0);
  const double last = DayAt(call, 1);
  return CountWorkingDays(first, last, weekend, HolidaysAt(call, holidays, weekend));
}

Operand NetWorkDays(FunctionCall& call) {
  return WorkingDaysBetween(call, Weekend(), 2);
}
Operand NetWorkDaysIntl(FunctionCall& call) {
  return WorkingDaysBetween(call, WeekendAt(call, 2), 3);
}

Operand WorkingDayAfter(FunctionCall& call, const Weekend& weekend, std::size_t holidayArgument) {
  double day = DayAt(call, 0);
  double left = static_cast<double>(call.Whole(1));
  const std::vector<double> holidays = HolidaysAt(call, holidayArgument, weekend);
  if (weekend.workingDays() == 0) return ErrorCode::Value;
  const double step = left < 0 ? -1 : 1;
  if (std::fabs(left) > kLastDateSerial) return ErrorCode::Num;
  for (left = std::fabs(left); left > 0;) {
    day += step;
    if (day < 0 || day > kLastDateSerial) return ErrorCode::Num;
    if (weekend.free[DayOfWeek(day) - 1]) continue;
    if (!std::binary_search(holidays.begin(), holidays.end(), day)) --left;
  }
  return DateResult(call, day);
}

Operand WorkDay(FunctionCall& call) {
  return WorkingDayAfter(call, Weekend(), 2);
}
Operand WorkDayIntl(FunctionCall& call) {
  return WorkingDayAfter(call, WeekendAt(call, 2), 3);
}

// --- spans
// -------------------------------------------------------------------------------------------------------------------

bool IsLastOfFebruary(const CalendarDate& date) {
  return date.month == 2 && date.day == DaysInMonth(date.year, 2);
}

double DaysOf30(const CalendarDate& from, const CalendarDate& to) {
  return (to.year - from.year) * 360.0 + (to.month - from.month) * 30.0 + (to.day - from.day);
}

Operand Days360(FunctionCall& call) {
  CalendarDate from = DateOf(SerialAt(call, 0));
  CalendarDate to = DateOf(SerialAt(call, 1));
  if (call.Boolean(2, false)) {  // European
    from.day = std::min(from.day, 30);
    to.day = std::min(to.day, 30);
  } else {
    if (from.day == 31 || IsLastOfFebruary(from)) from.day = 30;
    if (to.day == 31 && from.day >= 30) to.day = 30;
  }
  return DaysOf30(from, to);
}

// American 30/360 as securities dealers count it.
double YearsOf30American(CalendarDate from, CalendarDate to) {
  if (IsLastOfFebruary(from) && IsLastOfFebruary(to)) to.day = 30;
  if (IsLastOfFebruary(from)) from.day = 30;
  if (to.day == 31 && from.day >= 30) to.day = 30;
  from.day = std::min(from.day, 30);
  return DaysOf30(from, to) / 360;
}

bool IsLeapYear(int year) {
  return DaysInMonth(year, 2) == 29;
}

// Actual days by the actual length of the year: within one year that year's, else the mean of all years touched.
double YearsOfActualDays(double first, double last) {
  const CalendarDate from = DateOf(first);
  const CalendarDate to = DateOf(last);
  const bool withinYear =
      from.year == to.year ||
      (from.year + 1 == to.year && (from.month > to.month || (from.month == to.month && from.day >= to.day)));
  if (!withinYear) {
    const double years = to.year - from.year + 1;
    const double days = *SerialOf(to.year, 12, 31) + 1 - *SerialOf(from.year, 1, 1);
    return (last - first) / (days / years);
  }
  bool hasLeapDay = from.year == to.year && IsLeapYear(from.year);
  for (const int year : {from.year, to.year}) {
    if (!IsLeapYear(year)) continue;
    const double leapDay = *SerialOf(year, 2, 29);
    hasLeapDay = hasLeapDay || (first <= leapDay && leapDay <= last);
  }
  return (last - first) / (hasLeapDay ? 366 : 365);
}

Operand YearFraction(FunctionCall& call) {
  double first = DayAt(call, 0);
  double last = DayAt(call, 1);
  if (first > last) std::swap(first, last);
  CalendarDate from = DateOf(first);
  CalendarDate to = DateOf(last);
  switch (call.Has(2) ? call.Whole(2) : 0) {
    case 0:
      return YearsOf30American(from, to);
    case 1:
      return first == last ? 0.0 : YearsOfActualDays(first, last);
    case 2:
      return (last - first) / 360;
    case 3:
      return (last - first) / 365;
    case 4:
      from.day = std::min(from.day, 30);
      to.day = std::min(to.day, 30);
      return DaysOf30(from, to) / 360;
    default:
      return ErrorCode::Num;
  }
}

// Whole years, months or days between two dates; "MD", "YM" and "YD" leave out the larger units.
Operand DateDifference(FunctionCall& call) {
  const double first = DayAt(call, 0);
  const double last = DayAt(call, 1);
  if (first > last) return ErrorCode::Num;
  const CalendarDate from = DateOf(first);
  const CalendarDate to = DateOf(last);
  const int months = (to.year - from.year) * 12 + to.month - from.month - (to.day < from.day ? 1 : 0);
  std::string unit = call.Text(2);
  std::transform(unit.begin(), unit.end(), unit.begin(), [](char c) { return c >= 'a' && c <= 'z' ? c - 32 : c; });
  if (unit == "D") return last - first;
  if (unit == "M") return static_cast<double>(months);
  if (unit == "Y") return static_cast<double>(months / 12);
  if (unit == "YM") return static_cast<double>(months % 12);
  if (unit == "MD") {
    if (to.day >= from.day) return static_cast<double>(to.day - from.day);
    return last - (*SerialOf(to.year, to.month - 1, 1) + from.day - 1);
  }
  if (unit == "YD") {
    double anniversary = *SerialOf(to.year, from.month, from.day);
    if (anniversary > last) anniversary = SerialOf(to.year - 1, from.month, from.day).value_or(0);
    return last - anniversary;
  }
  return ErrorCode::Num;
}

constexpr Function kFunctions[] = {
    {"DATEDIF", 3, 3, "V", DateDifference},
    {"DAYS360", 2, 3, "V", Days360},
    {"ISOWEEKNUM", 1, 1, "V", IsoWeekNumber},
    {"NETWORKDAYS", 2, 3, "VVR", NetWorkDays},
    {"NETWORKDAYS.INTL", 2, 4, "VVVR", NetWorkDaysIntl},
    {"WEEKNUM", 1, 2, "V", WeekNumber},
    {"WORKDAY", 2, 3, "VVR", WorkDay},
    {"WORKDAY.INTL", 2, 4, "VVVR", WorkDayIntl},
    {"YEARFRAC", 2, 3, "V", YearFraction},
};

}  // namespace

std::span<const Function> CalendarFunctions() {
  return kFunctions;
}

}  // namespace tolvane::engine
