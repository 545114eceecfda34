#include "engine/formula/FractionFormat.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "engine/formula/NumberText.h"

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

// The last convergent of the number's continued fraction that has no more digits below the line. It is not always the
// nearest fraction of that size: 0.456 is 1/2 with one digit, not 4/9. Source: the table of fractions in Excel's help
// on number formats (123.456 as 123 1/2, 123 26/57 and 123 57/125).
Fraction Convergent(double number, int digits) {
  constexpr int kMostDigits = 7;
  constexpr double kNoise = 1e-10;  // what is left of a number that has come out even
  const double limit = std::pow(10.0, std::clamp(digits, 1, kMostDigits)) - 1;
  double rest = number;
  Fraction before{1, 0};
  Fraction last{std::floor(rest), 1};
  while (rest - std::floor(rest) > kNoise) {
    rest = 1 / (rest - std::floor(rest));
    const double factor = std::floor(rest);
    const Fraction next{factor * last.numerator + before.numerator, factor * last.denominator + before.denominator};
    if (next.denominator > limit) break;
    before = last;
    last = next;
  }
  return last;
}

// Digits over placeholders from `first` to before `end`.
std::string OverPlaceholders(const FormatSection& section, std::size_t first, std::size_t end, std::string digits,
                             bool padsBehind) {
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

std::string Digits(double number) {
  return FixedText(number, 0);
}

std::string WithThousands(std::string digits) {
  for (std::size_t at = digits.size(); at > 3; at -= 3) digits.insert(at - 3, ",");
  return digits;
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
    fraction = Convergent(magnitude - whole, static_cast<int>(layout.end - layout.slash) - 1);
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

  std::string out;
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    const FormatToken& token = tokens[i];
    if (i == layout.numerator) {
      if (hidden) {
        const std::size_t denominator = hasFixed ? tokens[layout.slash].text.size() : layout.end - layout.slash - 1;
        const bool keepsRoom = layout.numerator < layout.slash && tokens[layout.numerator].text == "?";
        if (keepsRoom) out.append(layout.slash - layout.numerator + 1 + denominator, ' ');
      } else {
        out += OverPlaceholders(section, layout.numerator, layout.slash, Digits(fraction.numerator), false) + "/";
        out += hasFixed ? tokens[layout.slash].text
                        : OverPlaceholders(section, layout.slash + 1, layout.end, Digits(fraction.denominator), true);
      }
      i = layout.end - 1;
    } else if (token.kind == Kind::Digit && i < layout.numerator) {
      std::size_t end = i;
      while (end < layout.numerator && tokens[end].kind == Kind::Digit) ++end;
      const std::string digits = whole != 0 || fraction.numerator == 0 ? Digits(whole) : "";
      out += OverPlaceholders(section, i, end, section.thousands ? WithThousands(digits) : digits, false);
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
