#include "hosts/embedded/Typing.h"

#include <algorithm>

#include "engine/formula/DateSerial.h"
#include "engine/formula/NumberText.h"
#include "platform/Text.h"

namespace tolvane::embedded {

namespace {

bool IsDigit(char c) {
  return '0' <= c && c <= '9';
}

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// Takes digits, at least `fewest` and at most `most`.
std::optional<int> TakeDigits(std::string_view& text, std::size_t fewest, std::size_t most) {
  std::size_t count = 0;
  int number = 0;
  while (count < text.size() && count < most && IsDigit(text[count])) number = number * 10 + (text[count++] - '0');
  if (count < fewest) return std::nullopt;
  text.remove_prefix(count);
  return number;
}

// "2009-03-15"; what other orders of day and month mean depends on the country and is left alone.
std::optional<double> IsoDate(std::string_view text) {
  const auto year = TakeDigits(text, 4, 4);
  if (!year || !text.starts_with('-')) return std::nullopt;
  text.remove_prefix(1);
  const auto month = TakeDigits(text, 1, 2);
  if (!month || !text.starts_with('-')) return std::nullopt;
  text.remove_prefix(1);
  const auto day = TakeDigits(text, 1, 2);
  if (!day || !text.empty() || *year < 1900 || *month < 1 || *month > 12) return std::nullopt;
  if (*day < 1 || *day > engine::DaysInMonth(*year, *month)) return std::nullopt;
  return engine::SerialOf(*year, *month, *day);
}

// Only what can be nothing but a number: no times, no currencies, no dates that a country writes its own way.
bool LooksLikeNumber(std::string_view text) {
  bool hasDigit = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    const char before = i == 0 ? '(' : text[i - 1];
    hasDigit = hasDigit || IsDigit(c);
    if (c == '+' || c == '-') {
      if (before != '(' && before != 'E' && before != 'e') return false;
    } else if (!IsDigit(c) && std::string_view(".,()%eE").find(c) == std::string_view::npos) {
      return false;
    }
  }
  return hasDigit;
}

}  // namespace

Recognised Recognise(std::string_view text) {
  if (text.starts_with('\'')) return {engine::Value(text.substr(1)), std::nullopt};
  const std::string_view trimmed = Trimmed(text);
  if (const auto date = IsoDate(trimmed)) return {engine::Value(*date), "m/d/yyyy"};
  if (LooksLikeNumber(trimmed)) {
    if (const auto number = engine::NumberFromText(trimmed)) {
      if (!trimmed.ends_with('%')) return {engine::Value(*number), std::nullopt};
      return {engine::Value(*number), trimmed.find('.') == std::string_view::npos ? "0%" : "0.00%"};
    }
  }
  if (platform::EqualIgnoringCase(trimmed, "TRUE")) return {engine::Value(true), std::nullopt};
  if (platform::EqualIgnoringCase(trimmed, "FALSE")) return {engine::Value(false), std::nullopt};
  return {engine::Value(text), std::nullopt};
}

}  // namespace tolvane::embedded
