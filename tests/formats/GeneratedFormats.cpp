#include <random>

#include "engine/formula/Printer.h"
#include "tests/formats/FormatCases.h"

namespace tolvane::formatstest {
namespace {

// Writes formats in the grammar that Excel takes.
class Generator {
 public:
  explicit Generator(unsigned seed) : random_(seed) {}

  std::vector<FormatCase> Make() {
    constexpr int kValues = 5;
    const bool isDate = Below(3) == 0;
    const std::string format = isDate ? DateFormat() : NumberFormat();
    std::vector<FormatCase> cases;
    for (int i = 0; i < kValues; ++i) {
      const std::string written = !isDate && Below(12) == 0 ? "\"some text\"" : isDate ? DateValue() : NumberValue();
      cases.push_back({format, written, ReadValue(written)});
    }
    return cases;
  }

 private:
  // The standard's distributions differ between libraries; the numbers below them do not.
  unsigned Below(unsigned bound) { return static_cast<unsigned>(random_() % bound); }
  std::string OneOf(std::initializer_list<const char*> choices) {
    return *(choices.begin() + Below(static_cast<unsigned>(choices.size())));
  }
  // In a list the parts are made from left to right, between + signs in any order.
  static std::string Join(std::initializer_list<std::string> parts) {
    std::string out;
    for (const std::string& part : parts) out += part;
    return out;
  }
  std::string Maybe(unsigned chance, std::initializer_list<const char*> choices) {
    return Below(chance) == 0 ? OneOf(choices) : "";
  }

  std::string NumberFormat() {
    switch (Below(8)) {
      case 0:
        return Join({NumberSection(), ";", NumberSection(OneOf({"(", "-", "\\-", ""}))});
      case 1:
        return Join({NumberSection(), ";", NumberSection("-"), ";", OneOf({"0", "\"zero\"", "\\-", "", "0.00"})});
      case 2:
        return Join({NumberSection(), ";", NumberSection("-"), ";", OneOf({"0", "\"-\"??"}), ";",
                     OneOf({"@", "\"<\"@\">\"", "@\" (text)\"", "\"no number\""})});
      case 3:
        return Join({"[", OneOf({"<", "<=", ">", ">=", "=", "<>"}), OneOf({"0", "1", "100", "999.5", "-10"}), "]",
                     NumberSection("", false), ";", NumberSection()});
      case 4:
        return Fraction();
      case 5:
        return Exponential();
      default:
        return NumberSection();
    }
  }

  // `sign`: what stands before negative numbers, behind a colour.
  std::string NumberSection(const std::string& sign = "", bool coloured = true) {
    std::string out = (coloured ? Maybe(6, {"[Red]", "[Blue]", "[Color 10]"}) : "") + sign;
    out += Maybe(4, {"$", "\"EUR \"", "[$€-2] ", "+", "\\x", "(", "[$£-809]", "\"No. \""});
    out += OneOf({"0", "#", "#,##0", "#,###", "00", "0000", "?", "???", "#,#00", "0,000", "??,??0", "000\\-00"});
    if (Below(2) == 0) out += OneOf({".0", ".00", ".000", ".#", ".##", ".0#", ".??", ".0??", ".00000"});
    out += Below(6) == 0 ? OneOf({",", ",,"}) : Maybe(8, {"%"});
    out += Maybe(4, {"\" kg\"", "\\m", "\" \\\"", " ", ")", "-"});
    return out;
  }

  std::string Fraction() {
    return Join({OneOf({"# ", "0 ", "", "#,##0 "}), OneOf({"?/?", "?\?/?\?", "??\?/??\?", "?/2", "?/4", "?/8", "?\?/16",
                                                           "?\?/100", "#/#", "##/##", "0/0", "00/00"})});
  }

  std::string Exponential() {
    return Join({OneOf({"0", "0.0", "0.00", "##0.0", "##0", "#0.00", "0.###", "00.0", "#.##"}),
                 OneOf({"E+0", "E+00", "E+000", "E-0", "E-00"}), Maybe(6, {"\" m\""})});
  }

  std::string DateFormat() {
    std::string out = Maybe(5, {"[$-409]", "[$-407]", "[$-40C]", "[Blue]"});
    if (Below(4) == 0) {
      return out + OneOf({"[h]", "[hh]", "[h]:mm", "[h]:mm:ss", "[mm]", "[m]:ss", "[mm]:ss", "[s]", "[ss]",
                          "[hh]:mm:ss.00", "[h]\" h\" mm", "[s].0"});
    }
    const std::string separator = OneOf({"/", "-", " ", ".", ", ", "\\.", "\" of \""});
    const bool hasDay = Below(4) != 0;
    if (hasDay) {
      const unsigned parts = 1 + Below(4);
      for (unsigned i = 0; i < parts; ++i) {
        if (i > 0) out += separator;
        out += OneOf({"d", "dd", "ddd", "dddd", "m", "mm", "mmm", "mmmm", "mmmmm", "yy", "yyyy"});
      }
    }
    if (!hasDay || Below(3) == 0) {
      if (hasDay) out += " ";
      out += OneOf({"h:mm", "hh:mm", "h:mm:ss", "hh:mm:ss", "h:mm AM/PM", "hh:mm:ss AM/PM", "mm:ss", "ss", "h",
                    "h AM/PM", "mm:ss.0", "hh:mm:ss.000", "h:mm:ss.00", "h:mm A/P", "h\"h\"mm"});
    }
    return out;
  }

  std::string DateValue() {
    switch (Below(6)) {
      case 0:
        return engine::NumberText(Below(86400) / 86400.0);
      case 1:
        return engine::NumberText(Below(5000) / 96.0);
      case 2:
        return engine::NumberText(61.0 + Below(2958400));
      default:
        // Whole seconds or hundredths of them, so that no last bit decides what is shown.
        return DayAndTime();
    }
  }

  std::string DayAndTime() {
    const unsigned day = 61 + Below(60000);
    return engine::NumberText(day + Below(8640000) / 8640000.0);
  }

  std::string NumberValue() {
    const double sign = Below(3) == 0 ? -1 : 1;
    switch (Below(8)) {
      case 0:
        return OneOf({"0", "1", "-1", "0.5", "-0.5", "100", "99.995", "1000", "999999.5", "0.001"});
      case 1:
        return engine::NumberText(sign * Below(1000));
      case 2:
        return engine::NumberText(sign * Below(100000) / 100.0);
      case 3:
        return engine::NumberText(sign * Below(1000000) / 1e9);
      case 4:
        return engine::NumberText(sign * Below(1000000) * 1e6);
      case 5:
        return engine::NumberText(sign * Below(1000) / 16.0);
      default:
        return engine::NumberText(sign * Below(2000000000) / 10000.0);
    }
  }

  std::mt19937 random_;
};

}  // namespace

std::vector<FormatCase> GenerateFormatCases(unsigned seed, int count) {
  Generator generator(seed);
  std::vector<FormatCase> cases;
  for (int i = 0; i < count; ++i) {
    for (FormatCase& made : generator.Make()) cases.push_back(std::move(made));
  }
  return cases;
}

}  // namespace tolvane::formatstest
