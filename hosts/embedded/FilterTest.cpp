#include "hosts/embedded/FilterTest.h"

#include <algorithm>
#include <utility>

#include "engine/formula/NumberText.h"
#include "platform/Text.h"

namespace tolvane::embedded {

using engine::FilterCriteria;
using engine::Operator;
using engine::Value;

namespace {

// Longer operators first, since the others begin like them.
constexpr std::pair<std::string_view, Operator> kOperators[] = {
    {"<>", Operator::NotEqual}, {">=", Operator::GreaterEqual}, {"<=", Operator::LessEqual},
    {"=", Operator::Equal},     {">", Operator::Greater},       {"<", Operator::Less},
};

struct Split {
  Operator op = Operator::Equal;
  bool isGiven = false;
  std::string_view operand;
};

Split SplitCriterion(std::string_view text) {
  for (const auto& [spelling, op] : kOperators) {
    if (text.starts_with(spelling)) return {op, true, text.substr(spelling.size())};
  }
  return {Operator::Equal, false, text};
}

bool Holds(Operator op, int compared) {
  switch (op) {
    case Operator::Less:
      return compared < 0;
    case Operator::LessEqual:
      return compared <= 0;
    case Operator::Greater:
      return compared > 0;
    case Operator::GreaterEqual:
      return compared >= 0;
    default:
      return false;
  }
}

}  // namespace

std::string WithOperator(std::string_view criterion) {
  std::string text(criterion);
  if (!SplitCriterion(criterion).isGiven) text.insert(text.begin(), '=');
  return text;
}

FilterTest::Condition::Condition(std::string_view text) : pattern_(SplitCriterion(text).operand) {
  const Split split = SplitCriterion(text);
  op_ = split.op;
  operand_ = split.operand;
  number_ = engine::NumberFromText(operand_);
}

bool FilterTest::Condition::Equals(const Value& value, std::string_view shown) const {
  if (operand_.empty()) return shown.empty();
  if (number_ && value.isNumber() && value.number() == *number_) return true;
  return pattern_.Matches(shown);
}

bool FilterTest::Condition::Passes(const Value& value, std::string_view shown) const {
  if (op_ == Operator::Equal) return Equals(value, shown);
  if (op_ == Operator::NotEqual) return !Equals(value, shown);
  if (number_) {
    if (!value.isNumber()) return false;
    return Holds(op_, value.number() < *number_ ? -1 : value.number() > *number_ ? 1 : 0);
  }
  return value.isText() && Holds(op_, platform::CompareIgnoringCase(value.text().view(), operand_));
}

FilterTest::FilterTest(const FilterCriteria& criteria) : join_(criteria.join) {
  if (join_ == FilterCriteria::Join::Values) {
    for (const std::string& value : criteria.values) values_.push_back(value == "=" ? "" : platform::FoldCase(value));
    std::sort(values_.begin(), values_.end());
    return;
  }
  conditions_.emplace_back(criteria.criterion1);
  if (criteria.criterion2 && join_ != FilterCriteria::Join::None) conditions_.emplace_back(*criteria.criterion2);
}

bool FilterTest::Passes(const Value& value, std::string_view shown) const {
  if (join_ == FilterCriteria::Join::Values) {
    return std::binary_search(values_.begin(), values_.end(), platform::FoldCase(shown));
  }
  const auto passes = [&](const Condition& condition) { return condition.Passes(value, shown); };
  return join_ == FilterCriteria::Join::Or ? std::any_of(conditions_.begin(), conditions_.end(), passes)
                                           : std::all_of(conditions_.begin(), conditions_.end(), passes);
}

}  // namespace tolvane::embedded
