#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/formula/CalendarNames.h"
#include "engine/model/Expression.h"

namespace tolvane::engine {

// A piece of a number format's section.
struct FormatToken {
  enum class Kind : std::uint8_t {
    Literal,   // text
    Digit,     // 0, # or ? in text[0]
    Point,     // the decimal point
    Percent,   // a percent sign; multiplies by 100
    Exponent,  // E+ or E-: text holds the sign
    ExponentDigit,
    Year,  // length: how many letters
    Month,
    Day,
    Hour,
    Minute,
    Second,
    SecondDecimals,  // .00 behind seconds
    Elapsed,         // [h], [mm], [s]: text holds the letter
    AmPm,            // text holds how it is spelled: AM/PM, am/pm, A/P or a/p
    Slash,           // of a fraction: text holds the denominator if it is a given one
    General,
    Text,  // @
  };
  Kind kind;
  std::string text;
  int length = 1;
};

struct FormatSection {
  std::vector<FormatToken> tokens;
  // [<=100]
  struct Condition {
    Operator op;
    double bound;
    bool Holds(double number) const;
  };
  std::optional<Condition> condition;
  bool thousands = false;               // commas between digits
  int scaledThousands = 0;              // commas behind the last digit: each divides by 1000
  std::optional<std::uint32_t> colour;  // 0xRRGGBB
  CalendarLanguage language = CalendarLanguage::English;
  bool isDate = false;
  bool isFraction = false;
  bool hasDigits = false;
  bool hasText = false;  // an @
};

std::vector<FormatSection> ParseNumberFormat(std::string_view format);

}  // namespace tolvane::engine
