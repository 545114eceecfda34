#include "engine/formula/FormatSections.h"

#include <algorithm>
#include <charconv>

#include "engine/formula/FormatColours.h"
#include "platform/Text.h"

namespace tolvane::engine {
namespace {

using Kind = FormatToken::Kind;

char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
bool IsPlaceholder(char c) {
  return c == '0' || c == '#' || c == '?';
}

// Locales that stand for the system's long date and long time, with their formats in the United States.
std::string_view SystemFormat(std::string_view locale) {
  constexpr std::pair<std::string_view, std::string_view> kFormats[] = {{"F800", "dddd, mmmm d, yyyy"},
                                                                        {"x-sysdate", "dddd, mmmm d, yyyy"},
                                                                        {"F400", "h:mm:ss AM/PM"},
                                                                        {"x-systime", "h:mm:ss AM/PM"}};
  for (const auto& [name, format] : kFormats) {
    if (platform::EqualIgnoringCase(locale, name)) return format;
  }
  return {};
}

class SectionParser {
 public:
  explicit SectionParser(std::string_view format) : format_(format) {}

  std::vector<FormatSection> Parse() {
    std::vector<FormatSection> sections(1);
    section_ = &sections.back();
    while (at_ < format_.size()) {
      if (format_[at_] == ';') {
        Finish();
        sections.emplace_back();
        section_ = &sections.back();
        ++at_;
      } else {
        Next();
      }
    }
    Finish();
    return sections;
  }

 private:
  char Peek(std::size_t ahead = 0) const { return at_ + ahead < format_.size() ? format_[at_ + ahead] : '\0'; }

  void Add(Kind kind, std::string text = {}, int length = 1) {
    if (kind == Kind::Literal && !section_->tokens.empty() && section_->tokens.back().kind == Kind::Literal) {
      section_->tokens.back().text += text;
    } else {
      section_->tokens.push_back({kind, std::move(text), length});
    }
  }

  // The character at `at_`, all its bytes.
  std::string TakeCharacter() {
    std::string character;
    if (at_ < format_.size()) character += format_[at_++];
    while (at_ < format_.size() && (static_cast<unsigned char>(format_[at_]) & 0xC0) == 0x80) {
      character += format_[at_++];
    }
    return character;
  }

  int TakeRun(char letter) {
    int length = 0;
    for (; Lower(Peek()) == letter; ++at_) ++length;
    return length;
  }

  bool TakeWord(std::string_view word) {
    if (!platform::EqualIgnoringCase(format_.substr(at_, word.size()), word)) return false;
    at_ += word.size();
    return true;
  }

  void Next() {
    const char c = Peek();
    switch (c) {
      case '"': {
        const std::size_t close = std::min(format_.find('"', at_ + 1), format_.size());
        Add(Kind::Literal, std::string(format_.substr(at_ + 1, close - at_ - 1)));
        at_ = std::min(close + 1, format_.size());
        return;
      }
      case '\\':
        ++at_;
        return Add(Kind::Literal, TakeCharacter());
      case '_':
        ++at_;
        TakeCharacter();
        return Add(Kind::Literal, " ");
      case '*':
        ++at_;
        TakeCharacter();
        return;
      case '[':
        return Bracket();
      case '@':
        ++at_;
        section_->hasText = true;
        return Add(Kind::Text);
      case '%':
        ++at_;
        return Add(Kind::Percent);
      case '.':
        return PointOrDecimals();
      case ',':
        return Comma();
      default:
        break;
    }
    if (IsPlaceholder(c)) {
      ++at_;
      section_->hasDigits = true;
      return Add(inExponent_ ? Kind::ExponentDigit : Kind::Digit, std::string(1, c));
    }
    if ((c == 'E' || c == 'e') && (Peek(1) == '+' || Peek(1) == '-') && section_->hasDigits) {
      Add(Kind::Exponent, std::string(1, Peek(1)));
      at_ += 2;
      inExponent_ = true;
      return;
    }
    if (c == '/' && section_->hasDigits && !section_->isDate && !section_->isFraction) return Fraction();
    if (TakeWord("General")) return Add(Kind::General);
    Letter();
  }

  void Letter() {
    for (const std::string_view halves : {"AM/PM", "A/P"}) {
      const std::string_view spelled = format_.substr(at_, halves.size());
      if (TakeWord(halves)) return AddDate(Kind::AmPm, std::string(spelled));
    }
    switch (const char letter = Lower(Peek()); letter) {
      case 'e':  // of Japanese formats; elsewhere the year in full
        return AddDate(Kind::Year, "", std::max(TakeRun(letter), 4));
      case 'y':
        return AddDate(Kind::Year, "", TakeRun(letter));
      case 'm':
        return AddDate(Kind::Month, "", TakeRun(letter));
      case 'd':
        return AddDate(Kind::Day, "", TakeRun(letter));
      case 'h':
        return AddDate(Kind::Hour, "", TakeRun(letter));
      case 's':
        return AddDate(Kind::Second, "", TakeRun(letter));
      default:
        return Add(Kind::Literal, TakeCharacter());
    }
  }

  // Digits behind the line that are no placeholders are a given denominator.
  void Fraction() {
    ++at_;
    section_->isFraction = true;
    std::size_t length = 0;
    bool isGiven = false;
    for (char c = Peek(); c >= '0' && c <= '9'; c = Peek(++length)) isGiven = isGiven || c != '0';
    constexpr std::size_t kLongestDenominator = 9;
    if (!isGiven || length > kLongestDenominator) return Add(Kind::Slash);
    Add(Kind::Slash, std::string(format_.substr(at_, length)));
    at_ += length;
  }

  void AddDate(Kind kind, std::string text, int length = 1) {
    section_->isDate = true;
    Add(kind, std::move(text), length);
  }

  void PointOrDecimals() {
    ++at_;
    const bool behindSeconds = !section_->tokens.empty() &&
                               (section_->tokens.back().kind == Kind::Second ||
                                (section_->tokens.back().kind == Kind::Elapsed && section_->tokens.back().text == "s"));
    if (!behindSeconds || Peek() != '0') return Add(Kind::Point);
    Add(Kind::SecondDecimals, "", TakeRun('0'));
  }

  // Between digits a comma asks for thousands separators, behind the last one it scales.
  void Comma() {
    std::size_t count = 0;
    while (Peek(count) == ',') ++count;
    const bool behindDigit = !section_->tokens.empty() && section_->tokens.back().kind == Kind::Digit;
    const bool beforeDigit = IsPlaceholder(Peek(count));
    at_ += count;
    if (behindDigit && beforeDigit) {
      section_->thousands = true;
    } else if (behindDigit) {
      section_->scaledThousands += static_cast<int>(count);
    } else {
      Add(Kind::Literal, std::string(count, ','));
    }
  }

  void Bracket() {
    const std::size_t close = format_.find(']', at_);
    if (close == std::string_view::npos) return Add(Kind::Literal, TakeCharacter());
    const std::string_view inside = format_.substr(at_ + 1, close - at_ - 1);
    at_ = close + 1;
    if (inside.empty()) return;
    if (inside[0] == '$') {  // [$€-407]: a currency and where it is used
      const std::size_t dash = inside.find('-');
      if (dash != std::string_view::npos) {
        const std::string_view locale = inside.substr(dash + 1);
        if (const std::string_view format = SystemFormat(locale); !format.empty()) return UseInstead(format);
        section_->language = LanguageOfLocale(locale);
      }
      return Add(Kind::Literal, std::string(inside.substr(1, dash == std::string_view::npos ? dash : dash - 1)));
    }
    if (inside[0] == '<' || inside[0] == '>' || inside[0] == '=') return ReadCondition(inside);
    const char letter = Lower(inside[0]);
    const bool isRun = std::all_of(inside.begin(), inside.end(), [letter](char c) { return Lower(c) == letter; });
    if (isRun && (letter == 'h' || letter == 'm' || letter == 's')) {
      return AddDate(Kind::Elapsed, std::string(1, letter), static_cast<int>(inside.size()));
    }
    if (const auto colour = ColourNamed(inside)) section_->colour = colour;
  }

  // The section is a format of the system's settings; what it says itself is for programs that do not know them.
  void UseInstead(std::string_view format) {
    const FormatSection system = ParseNumberFormat(format).front();
    section_->tokens = system.tokens;
    section_->isDate = true;
    while (at_ < format_.size() && format_[at_] != ';') {
      const FormatSection before = *section_;
      Next();
      *section_ = before;
    }
  }

  void ReadCondition(std::string_view text) {
    constexpr std::pair<std::string_view, Operator> kOperators[] = {
        {"<=", Operator::LessEqual}, {">=", Operator::GreaterEqual}, {"<>", Operator::NotEqual},
        {"<", Operator::Less},       {">", Operator::Greater},       {"=", Operator::Equal}};
    for (const auto& [spelling, op] : kOperators) {
      if (!text.starts_with(spelling)) continue;
      text.remove_prefix(spelling.size());
      double bound = 0;
      std::from_chars(text.data(), text.data() + text.size(), bound);
      section_->condition = FormatSection::Condition{op, bound};
      return;
    }
  }

  // An m beside hours or seconds means minutes.
  void Finish() {
    inExponent_ = false;
    std::vector<FormatToken*> parts;
    for (FormatToken& token : section_->tokens) {
      if (token.kind >= Kind::Year && token.kind <= Kind::Elapsed && token.kind != Kind::SecondDecimals) {
        parts.push_back(&token);
      }
    }
    for (std::size_t i = 0; i < parts.size(); ++i) {
      if (parts[i]->kind != Kind::Month || parts[i]->length > 2) continue;
      const bool behindHours = i > 0 && (parts[i - 1]->kind == Kind::Hour ||
                                         (parts[i - 1]->kind == Kind::Elapsed && parts[i - 1]->text == "h"));
      const bool beforeSeconds =
          i + 1 < parts.size() &&
          (parts[i + 1]->kind == Kind::Second || (parts[i + 1]->kind == Kind::Elapsed && parts[i + 1]->text == "s"));
      if (behindHours || beforeSeconds) parts[i]->kind = Kind::Minute;
    }
  }

  std::string_view format_;
  std::size_t at_ = 0;
  FormatSection* section_ = nullptr;
  bool inExponent_ = false;
};

}  // namespace

bool FormatSection::Condition::Holds(double number) const {
  switch (op) {
    case Operator::Less:
      return number < bound;
    case Operator::LessEqual:
      return number <= bound;
    case Operator::Greater:
      return number > bound;
    case Operator::GreaterEqual:
      return number >= bound;
    case Operator::Equal:
      return number == bound;
    default:
      return number != bound;
  }
}

std::vector<FormatSection> ParseNumberFormat(std::string_view format) {
  return SectionParser(format).Parse();
}

}  // namespace tolvane::engine
