#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tolvane::engine {

// A finite number with at most `digits` significant digits, without trailing zeros, as a spreadsheet writes numbers:
//   whole numbers below 1E+20 in full:          100000000000000000
//   from 1E-4 on with a decimal point:          0.0001
//   all others with an exponent:                1E+20, 1.5E-07
std::string DecimalText(double number, int digits);

// A magnitude with exactly so many decimals, rounded half away from zero on the 15 digits that people see: "2.68" of
// 2.675, though its binary value lies just below.
std::string FixedText(double magnitude, int decimals);

// As cells without a number format show numbers: at most 11 characters and a sign.
std::string GeneralText(double number);

// A number that becomes text within a formula, as in 0.1+0.2&"": 15 significant digits.
std::string NumberAsText(double number);

// A text as a spreadsheet reads it where a number is wanted: " 12 ", "1,234.5", "5%", "(3)", "$7", "1E3", "1/2/2020",
// "2020-01-31", "31-Jan-2020", "12:30", "1:30 PM", a date and a time. Nothing for anything else.
std::optional<double> NumberFromText(std::string_view text);
// The same for dates and times alone: "5" is neither.
std::optional<double> DateFromText(std::string_view text);

}  // namespace tolvane::engine
