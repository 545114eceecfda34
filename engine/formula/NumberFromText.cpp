#include <charconv>
#include <cmath>
#include <cstdlib>

#include "engine/formula/CalendarNames.h"
#include "engine/formula/DateSerial.h"
#include "engine/formula/NumberText.h"
#include "platform/Text.h"

namespace tolvane::engine {
namespace {

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}
bool IsLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

// Reads tokens from the front of a text.
class Reader {
 public:
  explicit Reader(std::string_view text) : rest_(text) {}
  bool done() const { return rest_.empty(); }
  char Peek() const { return rest_.empty() ? '\0' : rest_.front(); }
  bool Skip(char c) {
    if (Peek() != c || rest_.empty()) return false;
    rest_.remove_prefix(1);
    return true;
  }
  void SkipBlanks() {
    while (Peek() == ' ') rest_.remove_prefix(1);
  }
  std::optional<int> Number(std::size_t mostDigits) {
    std::size_t count = 0;
    int value = 0;
    while (count < rest_.size() && IsDigit(rest_[count])) {
      if (count == mostDigits) return std::nullopt;
      value = value * 10 + (rest_[count++] - '0');
    }
    if (count == 0) return std::nullopt;
    lastDigits_ = count;
    rest_.remove_prefix(count);
    return value;
  }
  std::size_t lastDigits() const { return lastDigits_; }
  // The month whose name, in full or its first three letters, stands here.
  std::optional<int> Month() {
    std::size_t count = 0;
    while (count < rest_.size() && IsLetter(rest_[count])) ++count;
    const std::string_view word = rest_.substr(0, count);
    for (int month = 1; month <= 12; ++month) {
      if (platform::EqualIgnoringCase(word, MonthName(CalendarLanguage::English, month, false)) ||
          platform::EqualIgnoringCase(word, MonthName(CalendarLanguage::English, month, true))) {
        rest_.remove_prefix(count);
        return month;
      }
    }
    return std::nullopt;
  }
  bool SkipWord(std::string_view word) {
    if (!platform::EqualIgnoringCase(rest_.substr(0, word.size()), word)) return false;
    rest_.remove_prefix(word.size());
    return true;
  }
  double Fraction() {  // digits behind a decimal point
    double value = 0;
    double scale = 1;
    while (IsDigit(Peek())) {
      scale /= 10;
      value += (rest_.front() - '0') * scale;
      rest_.remove_prefix(1);
    }
    return value;
  }

 private:
  std::string_view rest_;
  std::size_t lastDigits_ = 0;
};

std::optional<double> ReadPlain(std::string_view text) {
  bool negative = false;
  double scale = 1;
  bool hadCurrency = false;
  const bool parentheses = text.size() > 2 && text.front() == '(' && text.back() == ')';
  if (parentheses) {
    text = Trimmed(text.substr(1, text.size() - 2));
    negative = true;
  }
  for (bool hadSign = parentheses; !text.empty();) {
    if (!hadSign && (text.front() == '-' || text.front() == '+')) {
      negative = text.front() == '-';
      hadSign = true;
    } else if (!hadCurrency && text.front() == '$') {
      hadCurrency = true;
    } else {
      break;
    }
    text = Trimmed(text.substr(1));
  }
  if (!text.empty() && text.back() == '%') {
    scale = 0.01;
    text = Trimmed(text.substr(0, text.size() - 1));
  }
  // Thousands separators stand between digits of the whole part, the last of them before exactly three.
  std::string plain;
  std::size_t sinceComma = 0;
  bool hadComma = false;
  bool inWhole = true;
  for (const char c : text) {
    if (c == ',') {
      if (!inWhole || plain.empty() || (hadComma && sinceComma != 3)) return std::nullopt;
      hadComma = true;
      sinceComma = 0;
      continue;
    }
    if (inWhole && !IsDigit(c)) {
      if (hadComma && sinceComma != 3) return std::nullopt;
      inWhole = false;
    }
    ++sinceComma;
    plain += c;
  }
  if (inWhole && hadComma && sinceComma != 3) return std::nullopt;
  if (plain.empty() || !(IsDigit(plain[0]) || (plain[0] == '.' && plain.size() > 1 && IsDigit(plain[1])))) {
    return std::nullopt;
  }
  const std::size_t exponent = plain.find_first_of("eE");
  if (exponent != std::string::npos && exponent + 1 < plain.size() && plain[exponent + 1] == '+') {
    plain.erase(exponent + 1, 1);
  }
  double number = 0;
  const auto [end, error] = std::from_chars(plain.data(), plain.data() + plain.size(), number);
  if (error != std::errc() || end != plain.data() + plain.size()) return std::nullopt;
  // Dividing gives the nearest number, where multiplying by 0.01 would not.
  if (scale != 1) number /= 100;
  return negative ? -number : number;
}

// "1 1/2"
std::optional<double> ReadMixedFraction(std::string_view text) {
  Reader reader(text);
  const bool negative = reader.Skip('-');
  const auto whole = reader.Number(9);
  if (!whole || reader.Peek() != ' ') return std::nullopt;
  reader.SkipBlanks();
  const auto numerator = reader.Number(5);
  if (!numerator || !reader.Skip('/')) return std::nullopt;
  const auto denominator = reader.Number(5);
  if (!denominator || *denominator == 0 || !reader.done()) return std::nullopt;
  const double value = *whole + static_cast<double>(*numerator) / *denominator;
  return negative ? -value : value;
}

int FullYear(int year, std::size_t digits) {
  constexpr int kPivot = 30;  // 29 is 2029, 30 is 1930
  if (digits > 2) return year;
  return year < kPivot ? 2000 + year : 1900 + year;
}

std::optional<double> MakeDate(int year, int month, int day) {
  if (month < 1 || month > 12 || day < 1 || year < 1900 || year > 9999 || day > DaysInMonth(year, month)) {
    return std::nullopt;
  }
  return SerialOf(year, month, day);
}

std::optional<double> ReadDate(Reader& reader) {
  const auto year = [&]() -> std::optional<int> {
    const auto number = reader.Number(4);
    if (!number || reader.lastDigits() == 3) return std::nullopt;
    return FullYear(*number, reader.lastDigits());
  };
  if (IsLetter(reader.Peek())) {  // January 31, 2020
    const auto month = reader.Month();
    if (!month) return std::nullopt;
    if (!reader.Skip(' ') && !reader.Skip('-')) return std::nullopt;
    const auto first = reader.Number(4);
    if (!first) return std::nullopt;
    if (reader.lastDigits() == 4) return MakeDate(*first, *month, 1);
    if (!reader.Skip(',')) return std::nullopt;
    reader.SkipBlanks();
    const auto last = year();
    return last ? MakeDate(*last, *month, *first) : std::nullopt;
  }
  const auto first = reader.Number(4);
  if (!first) return std::nullopt;
  const std::size_t firstDigits = reader.lastDigits();
  const char separator = reader.Peek();
  if (separator != '/' && separator != '-' && separator != ' ') return std::nullopt;
  reader.Skip(separator);
  if (IsLetter(reader.Peek())) {  // 31-Jan-2020
    const auto month = reader.Month();
    if (!month || !reader.Skip(separator)) return std::nullopt;
    const auto last = year();
    return last ? MakeDate(*last, *month, *first) : std::nullopt;
  }
  if (separator == ' ') return std::nullopt;
  const auto second = reader.Number(2);
  if (!second || !reader.Skip(separator)) return std::nullopt;
  if (firstDigits == 4) {  // 2020-01-31
    const auto day = reader.Number(2);
    return day ? MakeDate(*first, *second, *day) : std::nullopt;
  }
  const auto last = year();  // 1/31/2020
  return last ? MakeDate(*last, *first, *second) : std::nullopt;
}

std::optional<double> ReadTime(Reader& reader) {
  const auto hour = reader.Number(4);
  if (!hour) return std::nullopt;
  int minute = 0;
  double second = 0;
  bool hadColon = false;
  if (reader.Skip(':')) {
    hadColon = true;
    const auto minutes = reader.Number(2);
    if (!minutes || *minutes > 59) return std::nullopt;
    minute = *minutes;
    if (reader.Skip(':')) {
      const auto seconds = reader.Number(2);
      if (!seconds || *seconds > 59) return std::nullopt;
      second = *seconds;
      if (reader.Skip('.')) second += reader.Fraction();
    }
  }
  reader.SkipBlanks();
  int hours = *hour;
  const bool pm = reader.SkipWord("PM");
  if (pm || reader.SkipWord("AM")) {
    if (hours < 1 || hours > 12) return std::nullopt;
    hours = hours % 12 + (pm ? 12 : 0);
  } else if (!hadColon) {
    return std::nullopt;
  }
  return (hours * 3600.0 + minute * 60.0 + second) / 86400.0;
}

}  // namespace

std::optional<double> NumberFromText(std::string_view text) {
  text = Trimmed(text);
  if (text.empty()) return std::nullopt;
  if (const auto number = ReadPlain(text)) return number;
  if (const auto number = ReadMixedFraction(text)) return number;
  return DateFromText(text);
}

std::optional<double> DateFromText(std::string_view text) {
  text = Trimmed(text);
  if (Reader reader(text); const auto time = ReadTime(reader)) {
    if (reader.done()) return time;
  }
  Reader reader(text);
  const auto date = ReadDate(reader);
  if (!date) return std::nullopt;
  if (reader.done()) return date;
  if (!reader.Skip(' ')) return std::nullopt;
  reader.SkipBlanks();
  const auto time = ReadTime(reader);
  if (!time || !reader.done()) return std::nullopt;
  return *date + *time;
}

}  // namespace tolvane::engine
