#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tolvane::accounts {

// Dates are whole serial numbers as in the spreadsheet: day 1 is 1 January 1900 there, and from March 1900 on both
// count the same days. 2009-03-15 is 39887.

struct CalendarDay {
  int year = 0;
  int month = 0;  // from 1
  int day = 0;
};

// The serial of a day; nothing when there is no such day, or none from 1900 to 9999.
std::optional<int> lDateSerial(int year, int month, int day);
CalendarDay DayOfSerial(int lDate);

int lToday();  // by the user's clock

// The serial of a text of eight digits: year, month, day. Nothing when it is none.
std::optional<int> lDateFromYMD(std::string_view sText);
// The serial of a text of a four-digit year, a separator, and month and day as runs of digits with one separator
// between them: 2009-3-15. Nothing when it is none.
std::optional<int> lDateFromFields(std::string_view sText);

std::string sLogTime(double dNow);  // mm/dd/yy hh:mm:ss

}  // namespace tolvane::accounts
