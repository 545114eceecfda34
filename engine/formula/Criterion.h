#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "engine/model/Expression.h"
#include "engine/model/Value.h"

namespace tolvane::engine {

// A text with wildcards: ? is any character, * any characters, ~ takes the next character as it is. Ignores case.
class WildcardPattern {
 public:
  explicit WildcardPattern(std::string_view pattern);
  // Whether it holds a wildcard that is not escaped.
  bool hasWildcards() const { return hasWildcards_; }
  bool Matches(std::string_view text) const;
  // The first place from the character `from` (from 0) on where it matches the beginning of what follows.
  std::optional<std::size_t> Find(std::string_view text, std::size_t from) const;

 private:
  enum class Token : char32_t { AnyCharacter = 0x110000, AnyCharacters };
  bool MatchesAt(std::u32string_view text, bool toTheEnd) const;

  std::u32string tokens_;  // folded characters and Tokens
  bool hasWildcards_ = false;
};

// The condition of SUMIF and its like: 5, ">5", "<>x", "a*", "=", "<>", "". Numbers equal texts that read as them.
class Criterion {
 public:
  explicit Criterion(const Value& condition);
  bool Matches(const Value& value) const;
  bool matchesBlank() const { return matchesBlank_; }
  // What cells must equal, when that is all there is to it.
  std::optional<Value> plainEquality() const;

 private:
  bool Test(const Value& value) const;
  bool Equals(const Value& value) const;

  Operator op_ = Operator::Equal;
  Value operand_;
  std::optional<WildcardPattern> pattern_;
  bool matchesBlank_ = false;
};

}  // namespace tolvane::engine
