#pragma once

#include <cstdint>
#include <string_view>

namespace tolvane::engine {

enum class CalendarLanguage : std::uint8_t {
  English,
  German,
  French,
  Spanish,
  Italian,
  Dutch,
  Portuguese,
  Swedish,
  Danish,
  Norwegian
};

// Of a locale as number formats name it: a Windows identifier in hexadecimal digits ("407", "10C0809") or a tag
// ("de-DE"). English where the language is not known.
CalendarLanguage LanguageOfLocale(std::string_view locale);

// Month from 1, weekday from 1 for Sunday.
std::string_view MonthName(CalendarLanguage language, int month, bool abbreviated);
std::string_view WeekdayName(CalendarLanguage language, int weekday, bool abbreviated);

}  // namespace tolvane::engine
