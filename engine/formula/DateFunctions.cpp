#include <cmath>

#include "engine/formula/DateArguments.h"
#include "engine/formula/NumberText.h"

namespace tolvane::engine {
namespace {

Operand Date(FunctionCall& call) {
  std::int64_t year = call.Whole(0);
  const std::int64_t month = call.Whole(1);
  const std::int64_t day = call.Whole(2);
  if (year < 0 || year > 9999) return ErrorCode::Num;
  if (year < 1900) year += 1900;
  return DateResult(call, SerialOf(year, month, day));
}

Operand Year(FunctionCall& call) {
  return static_cast<double>(DateOf(SerialAt(call, 0)).year);
}
Operand Month(FunctionCall& call) {
  return static_cast<double>(DateOf(SerialAt(call, 0)).month);
}
Operand Day(FunctionCall& call) {
  return static_cast<double>(DateOf(SerialAt(call, 0)).day);
}

// The time of day in whole seconds, rounded as it is shown.
std::int64_t SecondsAt(FunctionCall& call) {
  const double serial = SerialAt(call, 0);
  constexpr std::int64_t kSecondsPerDay = 86400;
  return std::llround((serial - std::floor(serial)) * kSecondsPerDay) % kSecondsPerDay;
}

Operand Hour(FunctionCall& call) {
  return static_cast<double>(SecondsAt(call) / 3600);
}
Operand Minute(FunctionCall& call) {
  return static_cast<double>(SecondsAt(call) / 60 % 60);
}
Operand Second(FunctionCall& call) {
  return static_cast<double>(SecondsAt(call) % 60);
}

Operand Time(FunctionCall& call) {
  constexpr std::int64_t kMost = 32767;  // of each, by the help page
  const std::int64_t hour = call.Whole(0);
  const std::int64_t minute = call.Whole(1);
  const std::int64_t second = call.Whole(2);
  const std::int64_t seconds = hour * 3600 + minute * 60 + second;
  if (hour > kMost || minute > kMost || second > kMost || seconds < 0) return ErrorCode::Num;
  return static_cast<double>(seconds % 86400) / 86400.0;
}

Operand Weekday(FunctionCall& call) {
  const int fromSunday = WeekdayOf(SerialAt(call, 0)) - 1;
  const std::int64_t type = call.Whole(1, 1);
  if (type == 1 || type == 17) return fromSunday + 1.0;
  if (type == 3) return static_cast<double>((fromSunday + 6) % 7);
  // 2 and 11 begin the week on Monday, 12 on Tuesday and so on.
  const std::int64_t firstDay = type == 2 ? 1 : type - 10;
  if (type != 2 && (type < 11 || type > 16)) return ErrorCode::Num;
  return static_cast<double>((fromSunday - firstDay + 7) % 7 + 1);
}

// The date so many months away: the same day, or the last of a shorter month.
Operand EDate(FunctionCall& call) {
  const CalendarDate date = DateOf(SerialAt(call, 0));
  const std::optional<double> first = SerialOf(date.year, date.month + call.Whole(1), 1);
  if (!first) return ErrorCode::Num;
  const CalendarDate month = DateOf(*first);
  const int day = std::min(date.day, DaysInMonth(month.year, month.month));
  return DateResult(call, SerialOf(month.year, month.month, day));
}

Operand EoMonth(FunctionCall& call) {
  const CalendarDate date = DateOf(SerialAt(call, 0));
  return DateResult(call, SerialOf(date.year, date.month + call.Whole(1) + 1, 0));
}

Operand Days(FunctionCall& call) {
  return std::floor(SerialAt(call, 0)) - std::floor(SerialAt(call, 1));
}

Operand DateValue(FunctionCall& call) {
  const std::optional<double> serial = DateFromText(call.Text(0));
  if (!call.ValueAt(0).isText() || !serial || *serial < SystemStart(call.evaluator)) return ErrorCode::Value;
  return DateResult(call, std::floor(*serial));
}

Operand TimeValue(FunctionCall& call) {
  const std::optional<double> serial = DateFromText(call.Text(0));
  return call.ValueAt(0).isText() && serial ? Operand(*serial - std::floor(*serial)) : Operand(ErrorCode::Value);
}

Operand Today(FunctionCall& call) {
  return DateResult(call, std::floor(call.evaluator.world().Now()));
}
Operand Now(FunctionCall& call) {
  return DateResult(call, call.evaluator.world().Now());
}

constexpr Function kFunctions[] = {
    {"DATE", 3, 3, "V", Date},           {"DATEVALUE", 1, 1, "V", DateValue}, {"DAY", 1, 1, "V", Day},
    {"DAYS", 2, 2, "V", Days},           {"EDATE", 2, 2, "V", EDate},         {"EOMONTH", 2, 2, "V", EoMonth},
    {"HOUR", 1, 1, "V", Hour},           {"MINUTE", 1, 1, "V", Minute},       {"MONTH", 1, 1, "V", Month},
    {"NOW", 0, 0, "V", Now, true},       {"SECOND", 1, 1, "V", Second},       {"TIME", 3, 3, "V", Time},
    {"TIMEVALUE", 1, 1, "V", TimeValue}, {"TODAY", 0, 0, "V", Today, true},   {"WEEKDAY", 1, 2, "V", Weekday},
    {"YEAR", 1, 1, "V", Year},
};

}  // namespace

std::span<const Function> DateFunctions() {
  return kFunctions;
}

}  // namespace tolvane::engine
