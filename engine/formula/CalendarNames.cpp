#include "engine/formula/CalendarNames.h"

#include <array>
#include <charconv>

#include "platform/Text.h"

namespace tolvane::engine {
namespace {

struct Names {
  std::string_view tag;
  unsigned primaryLanguage;  // the low ten bits of a Windows locale identifier
  std::array<std::string_view, 12> months;
  std::array<std::string_view, 12> shortMonths;
  std::array<std::string_view, 7> weekdays;
  std::array<std::string_view, 7> shortWeekdays;
};

// Source: the names of the Unicode Common Locale Data Repository, abbreviations but the French ones as Windows writes
// them (without periods, "Mrz"). In the order of CalendarLanguage.
constexpr Names kNames[] = {
    {"en",
     0x09,
     {"January", "February", "March", "April", "May", "June", "July", "August", "September", "October", "November",
      "December"},
     {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"},
     {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"},
     {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"}},
    {"de",
     0x07,
     {"Januar", "Februar", "März", "April", "Mai", "Juni", "Juli", "August", "September", "Oktober", "November",
      "Dezember"},
     {"Jan", "Feb", "Mrz", "Apr", "Mai", "Jun", "Jul", "Aug", "Sep", "Okt", "Nov", "Dez"},
     {"Sonntag", "Montag", "Dienstag", "Mittwoch", "Donnerstag", "Freitag", "Samstag"},
     {"So", "Mo", "Di", "Mi", "Do", "Fr", "Sa"}},
    {"fr",
     0x0C,
     {"janvier", "février", "mars", "avril", "mai", "juin", "juillet", "août", "septembre", "octobre", "novembre",
      "décembre"},
     {"janv.", "févr.", "mars", "avr.", "mai", "juin", "juil.", "août", "sept.", "oct.", "nov.", "déc."},
     {"dimanche", "lundi", "mardi", "mercredi", "jeudi", "vendredi", "samedi"},
     {"dim.", "lun.", "mar.", "mer.", "jeu.", "ven.", "sam."}},
    {"es",
     0x0A,
     {"enero", "febrero", "marzo", "abril", "mayo", "junio", "julio", "agosto", "septiembre", "octubre", "noviembre",
      "diciembre"},
     {"ene", "feb", "mar", "abr", "may", "jun", "jul", "ago", "sep", "oct", "nov", "dic"},
     {"domingo", "lunes", "martes", "miércoles", "jueves", "viernes", "sábado"},
     {"dom", "lun", "mar", "mié", "jue", "vie", "sáb"}},
    {"it",
     0x10,
     {"gennaio", "febbraio", "marzo", "aprile", "maggio", "giugno", "luglio", "agosto", "settembre", "ottobre",
      "novembre", "dicembre"},
     {"gen", "feb", "mar", "apr", "mag", "giu", "lug", "ago", "set", "ott", "nov", "dic"},
     {"domenica", "lunedì", "martedì", "mercoledì", "giovedì", "venerdì", "sabato"},
     {"dom", "lun", "mar", "mer", "gio", "ven", "sab"}},
    {"nl",
     0x13,
     {"januari", "februari", "maart", "april", "mei", "juni", "juli", "augustus", "september", "oktober", "november",
      "december"},
     {"jan", "feb", "mrt", "apr", "mei", "jun", "jul", "aug", "sep", "okt", "nov", "dec"},
     {"zondag", "maandag", "dinsdag", "woensdag", "donderdag", "vrijdag", "zaterdag"},
     {"zo", "ma", "di", "wo", "do", "vr", "za"}},
    {"pt",
     0x16,
     {"janeiro", "fevereiro", "março", "abril", "maio", "junho", "julho", "agosto", "setembro", "outubro", "novembro",
      "dezembro"},
     {"jan", "fev", "mar", "abr", "mai", "jun", "jul", "ago", "set", "out", "nov", "dez"},
     {"domingo", "segunda-feira", "terça-feira", "quarta-feira", "quinta-feira", "sexta-feira", "sábado"},
     {"dom", "seg", "ter", "qua", "qui", "sex", "sáb"}},
    {"sv",
     0x1D,
     {"januari", "februari", "mars", "april", "maj", "juni", "juli", "augusti", "september", "oktober", "november",
      "december"},
     {"jan", "feb", "mar", "apr", "maj", "jun", "jul", "aug", "sep", "okt", "nov", "dec"},
     {"söndag", "måndag", "tisdag", "onsdag", "torsdag", "fredag", "lördag"},
     {"sö", "må", "ti", "on", "to", "fr", "lö"}},
    {"da",
     0x06,
     {"januar", "februar", "marts", "april", "maj", "juni", "juli", "august", "september", "oktober", "november",
      "december"},
     {"jan", "feb", "mar", "apr", "maj", "jun", "jul", "aug", "sep", "okt", "nov", "dec"},
     {"søndag", "mandag", "tirsdag", "onsdag", "torsdag", "fredag", "lørdag"},
     {"sø", "ma", "ti", "on", "to", "fr", "lø"}},
    {"nb",
     0x14,
     {"januar", "februar", "mars", "april", "mai", "juni", "juli", "august", "september", "oktober", "november",
      "desember"},
     {"jan", "feb", "mar", "apr", "mai", "jun", "jul", "aug", "sep", "okt", "nov", "des"},
     {"søndag", "mandag", "tirsdag", "onsdag", "torsdag", "fredag", "lørdag"},
     {"sø", "ma", "ti", "on", "to", "fr", "lø"}},
};

const Names& NamesOf(CalendarLanguage language) {
  return kNames[static_cast<std::size_t>(language)];
}

}  // namespace

CalendarLanguage LanguageOfLocale(std::string_view locale) {
  unsigned identifier = 0;
  const auto [end, error] = std::from_chars(locale.data(), locale.data() + locale.size(), identifier, 16);
  const bool isNumber = error == std::errc() && end == locale.data() + locale.size();
  constexpr unsigned kLanguageBits = 0x3FF;
  for (std::size_t i = 0; i < std::size(kNames); ++i) {
    const bool fits = isNumber ? (identifier & kLanguageBits) == kNames[i].primaryLanguage
                               : platform::EqualIgnoringCase(locale.substr(0, locale.find('-')), kNames[i].tag);
    if (fits) return static_cast<CalendarLanguage>(i);
  }
  return CalendarLanguage::English;
}

std::string_view MonthName(CalendarLanguage language, int month, bool abbreviated) {
  const Names& names = NamesOf(language);
  return (abbreviated ? names.shortMonths : names.months)[static_cast<std::size_t>(month) - 1];
}

std::string_view WeekdayName(CalendarLanguage language, int weekday, bool abbreviated) {
  const Names& names = NamesOf(language);
  return (abbreviated ? names.shortWeekdays : names.weekdays)[static_cast<std::size_t>(weekday) - 1];
}

}  // namespace tolvane::engine
