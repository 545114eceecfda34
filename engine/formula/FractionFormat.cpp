#include "engine/formula/FractionFormat.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace tolvane::engine {
namespace {

using Kind = FormatToken::Kind;

// Where the parts stand among the tokens of a section.
struct Layout {
  std::size_t slash = 0;
  std::size_t numerator = 0;  // its first placeholder; the whole part stands before it
  std::size_t end = 0;        // behind the denominator
  bool hasWhole = false;
  double fixedDenominator = 0;
};

Layout LayoutOf(const FormatSection& section) {
  const std::vector<FormatToken>& tokens = section.tokens;
  Layout layout;
  while (layout.slash < tokens.size() && tokens[layout.slash].kind != Kind::Slash) ++layout.slash;
  layout.numerator = layout.slash;
  while (layout.numerator > 0 && tokens[layout.numerator - 1].kind == Kind::Digit) --layout.numerator;
  layout.end = layout.slash + 1;
  while (layout.end < tokens.size() && tokens[layout.end].kind == Kind::Digit) ++layout.end;
  layout.hasWhole = std::any_of(tokens.begin(), tokens.begin() + static_cast<std::ptrdiff_t>(layout.numerator),
                                [](const FormatToken& token) { return token.kind == Kind::Digit; });
  layout.fixedDenominator = std::atof(tokens[layout.slash].text.c_str());
  return layout;
}

struct Fraction {
  double numerator = 0;
  double denominator = 1;
};

// The nearest with so many digits below the line, the smallest denominator of several.
Fraction Nearest(double number, int digits) {
  constexpr int kMostDigits = 5;
  const double limit = std::pow(10.0, std::clamp(digits, 1, kMostDigits)) - 1;
  Fraction best{std::round(number), 1};
  double bestError = std::fabs(number - best.numerator);
  for (double denominator = 2; denominator <= limit && bestError > 1e-12; ++denominator) {
    const double numerator = std::round(number * denominator);
    const double error = std::fabs(number - numerator / denominator);
    if (error < bestError - 1e-15) {
      best = {numerator, denominator};
      bestError = error;
    }
  }
  return best;
}

// A whole number over placeholders from `first` to before `end`.
std::string OverPlaceholders(const FormatSection& section, std::size_t first, std::size_t end, double number,
                             bool padsBehind) {
  std::string digits = number == 0 ? "" : std::to_string(static_cast<std::int64_t>(number));
  std::string out;
  std::string padding;
  const std::size_t width = end - first;
  for (std::size_t i = 0; i + digits.size() < width; ++i) {
    const char placeholder = section.tokens[padsBehind ? end - 1 - i : first + i].text[0];
    if (placeholder == '0') out += '0';
    if (placeholder == '?') padding += ' ';
  }
  return padsBehind ? out + digits + padding : padding + out + digits;
}

}  // namespace

std::string FormatFraction(const FormatSection& section, double magnitude) {
  constexpr double kTooLarge = 1e15;
  const Layout layout = LayoutOf(section);
  if (magnitude >= kTooLarge) magnitude = kTooLarge;
  double whole = layout.hasWhole ? std::floor(magnitude) : 0;
  Fraction fraction;
  if (layout.fixedDenominator > 0) {
    fraction = {std::round((magnitude - whole) * layout.fixedDenominator), layout.fixedDenominator};
  } else {
    fraction = Nearest(magnitude - whole, static_cast<int>(layout.end - layout.slash) - 1);
  }
  if (layout.hasWhole && fraction.numerator == fraction.denominator) {
    ++whole;
    fraction.numerator = 0;
  }
  const bool hasFixed = layout.fixedDenominator > 0;
  const std::vector<FormatToken>& tokens = section.tokens;
  // Without anything above the line only the room for it stays, unless a 0 asks for the digit.
  const bool hidden = layout.hasWhole && fraction.numerator == 0 &&
                      std::none_of(tokens.begin() + static_cast<std::ptrdiff_t>(layout.numerator),
                                   tokens.begin() + static_cast<std::ptrdiff_t>(layout.slash),
                                   [](const FormatToken& token) { return token.text == "0"; });
  const bool wholeShows = whole != 0 || fraction.numerator == 0;

  std::string out;
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    const FormatToken& token = tokens[i];
    if (i == layout.numerator) {
      if (hidden) {
        const std::size_t denominator = hasFixed ? tokens[layout.slash].text.size() : layout.end - layout.slash - 1;
        const bool keepsRoom = layout.numerator < layout.slash && tokens[layout.numerator].text == "?";
        if (keepsRoom) out.append(layout.slash - layout.numerator + 1 + denominator, ' ');
      } else {
        std::string above = OverPlaceholders(section, layout.numerator, layout.slash, fraction.numerator, false);
        if (fraction.numerator == 0 && above.find('0') == std::string::npos) above += '0';
        out += above + "/";
        out += hasFixed ? tokens[layout.slash].text
                        : OverPlaceholders(section, layout.slash + 1, layout.end, fraction.denominator, true);
      }
      i = layout.end - 1;
    } else if (token.kind == Kind::Digit && i < layout.numerator) {
      std::size_t end = i;
      while (end < layout.numerator && tokens[end].kind == Kind::Digit) ++end;
      std::string digits = OverPlaceholders(section, i, end, whole, false);
      if (whole == 0 && wholeShows && digits.find('0') == std::string::npos) digits += '0';
      out += digits;
      i = end - 1;
    } else if (token.kind == Kind::Literal) {
      out += token.text;
    } else if (token.kind == Kind::Percent) {
      out += '%';
    }
  }
  return out;
}

}  // namespace tolvane::engine
