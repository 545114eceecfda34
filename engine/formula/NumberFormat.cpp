#include "engine/formula/NumberFormat.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "engine/formula/DateSerial.h"
#include "engine/formula/FormatSections.h"
#include "engine/formula/FractionFormat.h"
#include "engine/formula/NumberText.h"

namespace tolvane::engine {
namespace {

using Kind = FormatToken::Kind;

// --- digits
// ------------------------------------------------------------------------------------------------------------------

struct DigitCounts {
  int whole = 0;
  int decimals = 0;
  int percents = 0;
  int exponent = 0;
  bool hasExponent = false;
};

DigitCounts CountDigits(const FormatSection& section) {
  DigitCounts counts;
  bool behindPoint = false;
  for (const FormatToken& token : section.tokens) {
    if (token.kind == Kind::Point) behindPoint = true;
    if (token.kind == Kind::Digit) ++(behindPoint ? counts.decimals : counts.whole);
    if (token.kind == Kind::Percent) ++counts.percents;
    if (token.kind == Kind::Exponent) counts.hasExponent = true;
    if (token.kind == Kind::ExponentDigit) ++counts.exponent;
  }
  return counts;
}

// Lays the digits of a number over the placeholders of a section.
class DigitWriter {
 public:
  DigitWriter(const FormatSection& section, const DigitCounts& counts, double magnitude)
      : section_(section), counts_(counts) {
    if (counts.hasExponent) {
      ScaleToExponent(magnitude);
    } else {
      fixed_ = FixedText(magnitude, counts.decimals);
    }
    const std::size_t point = fixed_.find('.');
    whole_ = fixed_.substr(0, point);
    if (whole_ == "0") whole_.clear();
    if (point != std::string::npos) decimals_ = fixed_.substr(point + 1);
  }

  std::string Write(const std::string& general) {
    std::string out;
    bool behindPoint = false;
    int index = 0;
    for (const FormatToken& token : section_.tokens) {
      switch (token.kind) {
        case Kind::Literal:
          out += token.text;
          break;
        case Kind::Percent:
          out += '%';
          break;
        case Kind::Point:
          // In a format without digits before the point the whole part still shows.
          if (counts_.whole == 0 && !behindPoint) out += whole_;
          out += '.';
          behindPoint = true;
          index = 0;
          break;
        case Kind::Digit:
          if (behindPoint) {
            WriteDecimal(out, index++, token.text[0]);
          } else {
            WriteWhole(out, index++, token.text[0]);
          }
          break;
        case Kind::Exponent:
          WriteExponent(out, token.text[0]);
          break;
        case Kind::General:
        case Kind::Text:
          out += general;
          break;
        default:
          break;
      }
    }
    return out;
  }

 private:
  // With several digits before the point the exponent is a multiple of their number.
  void ScaleToExponent(double magnitude) {
    const int step = std::max(counts_.whole, 1);
    if (magnitude != 0) {
      exponent_ = static_cast<int>(std::floor(std::log10(magnitude)));
      exponent_ = static_cast<int>(std::floor(static_cast<double>(exponent_) / step)) * step;
    }
    fixed_ = FixedText(Mantissa(magnitude), counts_.decimals);
    const std::size_t wholeDigits = std::min(fixed_.find('.'), fixed_.size());
    if (wholeDigits > static_cast<std::size_t>(step)) {  // rounded up to the next power of ten
      exponent_ += step;
      fixed_ = FixedText(Mantissa(magnitude), counts_.decimals);
    }
  }

  // In two steps, since the power of ten of the smallest numbers is none itself.
  double Mantissa(double magnitude) const {
    const int half = exponent_ / 2;
    return magnitude / std::pow(10.0, half) / std::pow(10.0, exponent_ - half);
  }

  // `index`: the placeholder from the left. The first one takes all digits that have no placeholder of their own.
  void WriteWhole(std::string& out, int index, char placeholder) {
    const int position = counts_.whole - 1 - index;  // from the right
    const int digits = static_cast<int>(whole_.size());
    if (index == 0) {
      for (int beyond = digits - 1; beyond > position; --beyond) WriteWholeDigit(out, beyond, '#');
    }
    WriteWholeDigit(out, position, placeholder);
  }

  void WriteWholeDigit(std::string& out, int position, char placeholder) {
    const int digits = static_cast<int>(whole_.size());
    if (position < digits) {
      out += whole_[static_cast<std::size_t>(digits - 1 - position)];
    } else if (placeholder == '#') {
      return;
    } else {
      out += placeholder == '0' ? '0' : ' ';
    }
    if (section_.thousands && position > 0 && position % 3 == 0)
      out += placeholder == '?' && position >= digits ? ' ' : ',';
  }

  void WriteDecimal(std::string& out, int index, char placeholder) {
    const auto i = static_cast<std::size_t>(index);
    const bool onlyZerosFollow = decimals_.find_first_not_of('0', i) == std::string::npos;
    if (placeholder == '0' || !onlyZerosFollow) {
      out += i < decimals_.size() ? decimals_[i] : '0';
    } else if (placeholder == '?') {
      out += ' ';
    }
  }

  void WriteExponent(std::string& out, char sign) {
    out += 'E';
    if (exponent_ < 0) {
      out += '-';
    } else if (sign == '+') {
      out += '+';
    }
    const std::string digits = std::to_string(std::abs(exponent_));
    for (int missing = counts_.exponent - static_cast<int>(digits.size()); missing > 0; --missing) out += '0';
    out += digits;
  }

  const FormatSection& section_;
  const DigitCounts& counts_;
  std::string fixed_, whole_, decimals_;
  int exponent_ = 0;
};

std::string FormatDigits(const FormatSection& section, double magnitude) {
  const DigitCounts counts = CountDigits(section);
  const std::string general = GeneralText(magnitude);
  for (int i = 0; i < counts.percents; ++i) magnitude *= 100;
  magnitude = std::min(magnitude, std::numeric_limits<double>::max());
  for (int i = 0; i < section.scaledThousands; ++i) magnitude /= 1000;
  if (section.isFraction) return FormatFraction(section, magnitude);
  return DigitWriter(section, counts, magnitude).Write(general);
}

// --- dates
// -------------------------------------------------------------------------------------------------------------------

std::string Padded(std::int64_t number, int width) {
  std::string digits = std::to_string(number);
  if (static_cast<int>(digits.size()) < width) digits.insert(0, static_cast<std::size_t>(width) - digits.size(), '0');
  return digits;
}

std::string MonthText(CalendarLanguage language, int month, int length) {
  if (length <= 2) return Padded(month, length);
  const std::string_view name = MonthName(language, month, length == 3);
  return std::string(length == 5 ? name.substr(0, 1) : name);
}

std::string DayText(CalendarLanguage language, int day, int weekday, int length) {
  if (length <= 2) return Padded(day, length);
  return std::string(WeekdayName(language, weekday, length == 3));
}

bool ShowsClock(const FormatSection& section) {
  return std::any_of(section.tokens.begin(), section.tokens.end(), [](const FormatToken& token) {
    return token.kind == Kind::Hour || token.kind == Kind::Minute || token.kind == Kind::Second ||
           token.kind == Kind::Elapsed;
  });
}

// `start`: the serial that the number counts from; durations count from nothing.
std::optional<std::string> FormatDate(const FormatSection& section, double number, double start) {
  const double serial = number + start;
  // A day does not round up to the next one where no clock is shown.
  constexpr int kMostDecimals = 3;
  int decimals = ShowsClock(section) ? 0 : kMostDecimals;
  bool halfDays = false;
  for (const FormatToken& token : section.tokens) {
    if (token.kind == Kind::SecondDecimals) decimals = std::max(decimals, std::min(token.length, kMostDecimals));
    if (token.kind == Kind::AmPm) halfDays = true;
  }
  if (number < 0 || serial >= kLastDateSerial + 1) return std::nullopt;
  // In units of the smallest fraction shown, so that all parts are rounded alike.
  constexpr std::int64_t kUnits[] = {1, 10, 100, 1000};
  const std::int64_t perSecond = kUnits[decimals];
  const std::int64_t perDay = 86400 * perSecond;
  const auto total = static_cast<std::int64_t>(std::llround(serial * static_cast<double>(perDay)));
  const std::int64_t day = total / perDay;
  if (static_cast<double>(day) > kLastDateSerial) return std::nullopt;
  const std::int64_t second = total % perDay / perSecond;
  const CalendarDate date = DateOf(static_cast<double>(day));

  std::string out;
  for (const FormatToken& token : section.tokens) {
    switch (token.kind) {
      case Kind::Literal:
        out += token.text;
        break;
      case Kind::Year:
        out += token.length <= 2 ? Padded(date.year % 100, 2) : Padded(date.year, 4);
        break;
      case Kind::Month:
        out += MonthText(section.language, date.month, token.length);
        break;
      case Kind::Day:
        out += DayText(section.language, date.day, WeekdayOf(static_cast<double>(day)), token.length);
        break;
      case Kind::Hour: {
        const std::int64_t hour = second / 3600;
        out += Padded(halfDays ? (hour + 11) % 12 + 1 : hour, std::min(token.length, 2));
        break;
      }
      case Kind::Minute:
        out += Padded(second / 60 % 60, std::min(token.length, 2));
        break;
      case Kind::Second:
        out += Padded(second % 60, std::min(token.length, 2));
        break;
      case Kind::SecondDecimals: {
        std::string digits = Padded(total % perSecond, decimals);
        digits.resize(static_cast<std::size_t>(token.length), '0');
        out += "." + digits;
        break;
      }
      case Kind::Elapsed: {
        const std::int64_t seconds = total / perSecond - static_cast<std::int64_t>(start) * 86400;
        const std::int64_t unit = token.text == "h" ? 3600 : token.text == "m" ? 60 : 1;
        out += Padded(seconds / unit, token.length);
        break;
      }
      case Kind::AmPm: {
        // The half behind the line is for the afternoon.
        const std::size_t line = token.text.find('/');
        out += second >= 12 * 3600 ? token.text.substr(line + 1) : token.text.substr(0, line);
        break;
      }
      case Kind::Point:
        out += '.';
        break;
      case Kind::Digit:
      case Kind::ExponentDigit:
        out += token.text;
        break;
      case Kind::Percent:
        out += '%';
        break;
      case Kind::Slash:
        out += '/' + token.text;
        break;
      default:
        break;
    }
  }
  return out;
}

// Workbooks that count from 1904 have room for a minus sign: there is no false leap day to get past.
std::optional<std::string> FormatDateFrom1904(const FormatSection& section, double number) {
  std::optional<std::string> text = FormatDate(section, std::fabs(number), kStartOf1904);
  if (text && number < 0) text->insert(0, "-");
  return text;
}

// --- sections
// ----------------------------------------------------------------------------------------------------------------

// How many of the sections are for numbers; one behind them is for texts.
std::size_t NumberSections(const std::vector<FormatSection>& sections) {
  if (sections.size() >= 4) return 3;
  return sections.back().hasText && sections.size() > 1 ? sections.size() - 1 : sections.size();
}

struct Choice {
  const FormatSection* section = nullptr;
  bool showsSign = false;  // a minus is put before negative numbers
};

Choice ChooseSection(const std::vector<FormatSection>& sections, double number) {
  const std::size_t count = NumberSections(sections);
  const bool negative = number < 0;
  for (std::size_t i = 0; i < count; ++i) {
    const FormatSection& section = sections[i];
    if (section.condition) {
      const bool onlyNegatives =
          (section.condition->op == Operator::Less || section.condition->op == Operator::LessEqual) &&
          section.condition->bound == 0;
      if (section.condition->Holds(number)) return {&section, negative && !onlyNegatives};
    } else if (i + 1 == count) {
      return {&section, negative && (count == 1 || sections[0].condition.has_value())};
    } else if (i == 0 ? (count == 2 ? number >= 0 : number > 0) : negative) {
      return {&section, false};
    }
  }
  return {};
}

const FormatSection* TextSection(const std::vector<FormatSection>& sections) {
  if (sections.size() >= 4) return &sections[3];
  return sections.back().hasText ? &sections.back() : nullptr;
}

std::string FormatText(const FormatSection* section, std::string_view text) {
  if (section == nullptr) return std::string(text);
  std::string out;
  for (const FormatToken& token : section->tokens) {
    if (token.kind == Kind::Literal) out += token.text;
    if (token.kind == Kind::Text || token.kind == Kind::General) out += text;
  }
  return out;
}

struct Attempt {
  std::optional<std::string> text;
  std::optional<std::uint32_t> colour;
};

Attempt ShowNumber(double number, std::string_view numberFormat, bool date1904) {
  if (numberFormat.empty() || numberFormat == "General") return {GeneralText(number), {}};
  const std::vector<FormatSection> sections = ParseNumberFormat(numberFormat);
  // A format for texts alone leaves numbers as they are.
  if (sections.size() == 1 && sections[0].hasText) return {GeneralText(number), sections[0].colour};
  const Choice choice = ChooseSection(sections, number);
  if (choice.section == nullptr) return {};
  const FormatSection& section = *choice.section;
  if (section.isDate) {
    // A section for negative numbers gets the number without its sign.
    const double serial = number < 0 && !choice.showsSign ? -number : number;
    return {date1904 ? FormatDateFrom1904(section, serial) : FormatDate(section, serial, 0), section.colour};
  }
  std::string out = FormatDigits(section, std::fabs(number));
  return {choice.showsSign ? "-" + out : out, section.colour};
}

Attempt Show(const Value& value, std::string_view numberFormat, bool date1904) {
  switch (value.kind()) {
    case Value::Kind::Empty:
      return {std::string(), {}};
    case Value::Kind::Boolean:
      return {std::string(value.boolean() ? "TRUE" : "FALSE"), {}};
    case Value::Kind::Error:
      return {std::string(TextOf(value.error())), {}};
    case Value::Kind::Text: {
      const std::vector<FormatSection> sections = ParseNumberFormat(numberFormat);
      const FormatSection* section = TextSection(sections);
      return {FormatText(section, value.text().view()), section == nullptr ? std::nullopt : section->colour};
    }
    case Value::Kind::Number:
      break;
  }
  return ShowNumber(value.number(), numberFormat, date1904);
}

}  // namespace

std::optional<std::string> TryFormatValue(const Value& value, std::string_view numberFormat, bool date1904) {
  return Show(value, numberFormat, date1904).text;
}

ShownText ShowValue(const Value& value, std::string_view numberFormat, bool date1904) {
  Attempt attempt = Show(value, numberFormat, date1904);
  return {std::move(attempt.text).value_or("########"), attempt.colour};
}

std::string FormatValue(const Value& value, std::string_view numberFormat, bool date1904) {
  return ShowValue(value, numberFormat, date1904).text;
}

}  // namespace tolvane::engine
