#include "engine/formula/Criterion.h"

#include "engine/formula/Coercion.h"
#include "engine/formula/NumberText.h"
#include "platform/Text.h"

namespace tolvane::engine {
namespace {

// Character by character, so that places in the folded text are places in the text.
std::u32string Folded(std::string_view text) {
  std::u32string out;
  out.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) out += platform::FoldCharacter(platform::NextCharacter(text, at));
  return out;
}

std::optional<ErrorCode> ErrorFromText(std::string_view text) {
  for (const ErrorCode error : {ErrorCode::Null, ErrorCode::Div0, ErrorCode::Value, ErrorCode::Ref, ErrorCode::Name,
                                ErrorCode::Num, ErrorCode::NA}) {
    if (platform::EqualIgnoringCase(text, TextOf(error))) return error;
  }
  return std::nullopt;
}

// What a text in a condition stands for.
Value Interpret(std::string_view text) {
  if (const auto number = NumberFromText(text)) return *number;
  if (platform::EqualIgnoringCase(text, "TRUE")) return Value(true);
  if (platform::EqualIgnoringCase(text, "FALSE")) return Value(false);
  if (const auto error = ErrorFromText(text)) return *error;
  return Value(text);
}

struct Prefix {
  std::string_view spelling;
  Operator op;
};
// The longer ones first.
constexpr Prefix kPrefixes[] = {{"<=", Operator::LessEqual}, {">=", Operator::GreaterEqual}, {"<>", Operator::NotEqual},
                                {"<", Operator::Less},       {">", Operator::Greater},       {"=", Operator::Equal}};

}  // namespace

WildcardPattern::WildcardPattern(std::string_view pattern) {
  const std::u32string folded = Folded(pattern);
  for (std::size_t i = 0; i < folded.size(); ++i) {
    const char32_t c = folded[i];
    if (c == U'~' && i + 1 < folded.size() &&
        (folded[i + 1] == U'~' || folded[i + 1] == U'*' || folded[i + 1] == U'?')) {
      tokens_ += folded[++i];
    } else if (c == U'?') {
      tokens_ += static_cast<char32_t>(Token::AnyCharacter);
      hasWildcards_ = true;
    } else if (c == U'*') {
      tokens_ += static_cast<char32_t>(Token::AnyCharacters);
      hasWildcards_ = true;
    } else {
      tokens_ += c;
    }
  }
}

// Only the last * is ever gone back to, so the cost is the product of the lengths at worst.
bool WildcardPattern::MatchesAt(std::u32string_view text, bool toTheEnd) const {
  std::size_t token = 0;
  std::size_t at = 0;
  std::optional<std::size_t> star;
  std::size_t starAt = 0;
  for (;;) {
    if (token == tokens_.size() && (!toTheEnd || at == text.size())) return true;
    if (token < tokens_.size() && tokens_[token] == static_cast<char32_t>(Token::AnyCharacters)) {
      star = ++token;
      starAt = at;
      continue;
    }
    const bool fits = token < tokens_.size() && at < text.size() &&
                      (tokens_[token] == static_cast<char32_t>(Token::AnyCharacter) || tokens_[token] == text[at]);
    if (fits) {
      ++token;
      ++at;
      continue;
    }
    if (!star || starAt >= text.size()) return false;
    token = *star;
    at = ++starAt;
  }
}

bool WildcardPattern::Matches(std::string_view text) const {
  return MatchesAt(Folded(text), true);
}

std::optional<std::size_t> WildcardPattern::Find(std::string_view text, std::size_t from) const {
  const std::u32string folded = Folded(text);
  for (std::size_t start = from; start <= folded.size(); ++start) {
    if (MatchesAt(std::u32string_view(folded).substr(start), false)) return start;
  }
  return std::nullopt;
}

Criterion::Criterion(const Value& condition) : operand_(condition) {
  if (condition.isEmpty()) operand_ = Value(0.0);  // an empty cell as condition looks for 0
  if (condition.isText()) {
    std::string_view text = condition.text().view();
    bool hadPrefix = false;
    for (const Prefix& prefix : kPrefixes) {
      if (!text.starts_with(prefix.spelling)) continue;
      op_ = prefix.op;
      text.remove_prefix(prefix.spelling.size());
      hadPrefix = true;
      break;
    }
    operand_ = Interpret(text);
    if (text.empty()) {
      // "=" and "<>" ask for cells without content, "" also takes empty texts.
      operand_ = hadPrefix ? Value() : Value(Text());
    } else if (operand_.isText() && (op_ == Operator::Equal || op_ == Operator::NotEqual)) {
      WildcardPattern pattern(text);
      if (pattern.hasWildcards() || text.find('~') != std::string_view::npos) pattern_ = std::move(pattern);
    }
  }
  matchesBlank_ = Test(Value());
}

bool Criterion::Matches(const Value& value) const {
  return value.isEmpty() ? matchesBlank_ : Test(value);
}

std::optional<Value> Criterion::plainEquality() const {
  const bool isPlain = op_ == Operator::Equal && !pattern_ && !matchesBlank_ && !operand_.isEmpty();
  return isPlain ? std::optional(operand_) : std::nullopt;
}

bool Criterion::Equals(const Value& value) const {
  switch (operand_.kind()) {
    case Value::Kind::Empty:
      return value.isEmpty();
    case Value::Kind::Text:
      if (pattern_) return value.isText() && pattern_->Matches(value.text().view());
      if (value.isEmpty()) return operand_.text().empty();
      return value.isText() && platform::EqualIgnoringCase(value.text().view(), operand_.text().view());
    case Value::Kind::Number: {
      if (value.isNumber()) return CompareValues(value, operand_) == 0;
      if (!value.isText()) return false;
      const auto number = NumberFromText(value.text().view());
      return number && CompareValues(*number, operand_) == 0;
    }
    case Value::Kind::Boolean:
    case Value::Kind::Error:
      return value == operand_;
  }
  return false;
}

bool Criterion::Test(const Value& value) const {
  if (op_ == Operator::Equal) return Equals(value);
  if (op_ == Operator::NotEqual) return !Equals(value);
  if (value.kind() != operand_.kind() || value.isError() || value.isEmpty()) return false;
  const int order = CompareValues(value, operand_);
  switch (op_) {
    case Operator::Less:
      return order < 0;
    case Operator::LessEqual:
      return order <= 0;
    case Operator::Greater:
      return order > 0;
    default:
      return order >= 0;
  }
}

}  // namespace tolvane::engine
