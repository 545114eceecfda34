#include "engine/formula/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>

#include "engine/formula/Printer.h"

namespace tolvane::engine {
namespace {

constexpr int kExactDigits = 15;      // what a spreadsheet shows of a number
constexpr int kRoundTripDigits = 17;  // what tells any two doubles apart
constexpr int kLargestPlainExponent = 19;
constexpr int kSmallestPlainExponent = -4;

// The significant digits of a number and the power of ten of the first.
struct Decimal {
  std::string digits;
  int exponent = 0;
};

Decimal Split(double magnitude, int digits) {
  std::array<char, 40> buffer;
  const auto [end, error] =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude, std::chars_format::scientific, digits - 1);
  Decimal decimal;
  const char* c = buffer.data();
  for (; c != end && *c != 'e'; ++c) {
    if (*c != '.') decimal.digits += *c;
  }
  ++c;                 // the e
  if (*c == '+') ++c;  // from_chars reads no plus
  std::from_chars(c, end, decimal.exponent);
  while (decimal.digits.size() > 1 && decimal.digits.back() == '0') decimal.digits.pop_back();
  return decimal;
}

// Rounds to the digits in front of `keep`, half up.
void RoundDigits(Decimal& decimal, int keep) {
  if (keep >= static_cast<int>(decimal.digits.size())) return;
  if (keep < 0) {
    decimal = {"0", 0};
    return;
  }
  const bool up = decimal.digits[static_cast<std::size_t>(keep)] >= '5';
  decimal.digits.resize(static_cast<std::size_t>(keep));
  if (up) {
    int i = keep - 1;
    for (; i >= 0 && decimal.digits[static_cast<std::size_t>(i)] == '9'; --i)
      decimal.digits[static_cast<std::size_t>(i)] = '0';
    if (i >= 0) {
      ++decimal.digits[static_cast<std::size_t>(i)];
    } else {
      decimal.digits.insert(decimal.digits.begin(), '1');
      ++decimal.exponent;
    }
  }
  if (decimal.digits.empty()) decimal = {"0", 0};
}

std::string Exponential(double number, int digits) {
  Decimal decimal = Split(std::fabs(number), digits);
  std::string out = number < 0 ? "-" : "";
  out += decimal.digits[0];
  if (decimal.digits.size() > 1) out.append(".").append(decimal.digits, 1);
  out += decimal.exponent < 0 ? "E-" : "E+";
  const int magnitude = std::abs(decimal.exponent);
  if (magnitude < 10) out += '0';
  return out + std::to_string(magnitude);
}

}  // namespace

std::string DecimalText(double number, int digits) {
  if (number == 0) return "0";
  const Decimal decimal = Split(std::fabs(number), digits);
  const int count = static_cast<int>(decimal.digits.size());
  std::string out = number < 0 ? "-" : "";
  const bool isWhole = decimal.exponent >= count - 1;
  if (decimal.exponent >= 0 && (isWhole ? decimal.exponent <= kLargestPlainExponent : true)) {
    if (isWhole) {
      out += decimal.digits;
      out.append(static_cast<std::size_t>(decimal.exponent + 1 - count), '0');
    } else {
      out.append(decimal.digits, 0, static_cast<std::size_t>(decimal.exponent + 1));
      out += '.';
      out.append(decimal.digits, static_cast<std::size_t>(decimal.exponent + 1));
    }
    return out;
  }
  if (decimal.exponent < 0 && decimal.exponent >= kSmallestPlainExponent) {
    out += "0.";
    out.append(static_cast<std::size_t>(-decimal.exponent - 1), '0');
    return out + decimal.digits;
  }
  return Exponential(number, digits);
}

std::string FixedText(double magnitude, int decimals) {
  Decimal decimal = magnitude == 0 ? Decimal{"0", 0} : Split(magnitude, kExactDigits);
  RoundDigits(decimal, decimal.exponent + 1 + decimals);
  const auto digitAt = [&](int power) {  // the digit before that power of ten
    const int i = decimal.exponent - power;
    return i >= 0 && i < static_cast<int>(decimal.digits.size()) ? decimal.digits[static_cast<std::size_t>(i)] : '0';
  };
  std::string out;
  for (int power = std::max(decimal.exponent, 0); power >= 0; --power) out += digitAt(power);
  if (decimals > 0) out += '.';
  for (int power = -1; power >= -decimals; --power) out += digitAt(power);
  return out;
}

std::string GeneralText(double number) {
  constexpr double kFirstTooLong = 99999999999.5;  // 12 digits when rounded
  constexpr int kDecimals = 9;                     // behind "0." in 11 characters
  constexpr int kExponentialDigits = 6;
  constexpr double kAlwaysPlainFrom = 1e-4;
  const double magnitude = std::fabs(number);
  if (number == 0) return "0";
  if (magnitude >= kFirstTooLong) return Exponential(number, kExponentialDigits);
  const Decimal exact = Split(magnitude, kExactDigits);
  const int whole = std::max(exact.exponent + 1, 1);
  const int decimals = std::clamp(10 - whole, 0, kDecimals);
  const int exactDecimals = static_cast<int>(exact.digits.size()) - 1 - exact.exponent;
  if (magnitude < kAlwaysPlainFrom && exactDecimals > kDecimals) return Exponential(number, kExponentialDigits);
  std::string out = FixedText(magnitude, decimals);
  if (out.find('.') != std::string::npos) {
    while (out.back() == '0') out.pop_back();
    if (out.back() == '.') out.pop_back();
  }
  return number < 0 ? "-" + out : out;
}

std::string NumberAsText(double number) {
  return DecimalText(number, kExactDigits);
}

std::string NumberText(double number) {
  for (int digits = kExactDigits; digits < kRoundTripDigits; ++digits) {
    std::string text = DecimalText(number, digits);
    double back = 0;
    std::from_chars(text.data(), text.data() + text.size(), back);
    if (back == number) return text;
  }
  return DecimalText(number, kRoundTripDigits);
}

}  // namespace tolvane::engine
