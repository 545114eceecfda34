#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/formula/Criterion.h"
#include "engine/model/SheetParts.h"
#include "engine/model/Value.h"

namespace tolvane::embedded {

// Whether cells pass the criteria of one column of an AutoFilter. Comparisons with a number look at numbers, those with
// a text at what the cell shows, ignoring case and with wildcards; "=" passes blanks and "<>" all others.
class FilterTest {
 public:
  explicit FilterTest(const engine::FilterCriteria& criteria);
  // `shown`: the text that the cell shows.
  bool Passes(const engine::Value& value, std::string_view shown) const;

 private:
  class Condition {
   public:
    explicit Condition(std::string_view text);
    bool Passes(const engine::Value& value, std::string_view shown) const;

   private:
    bool Equals(const engine::Value& value, std::string_view shown) const;

    engine::Operator op_ = engine::Operator::Equal;
    std::string operand_;
    std::optional<double> number_;
    engine::WildcardPattern pattern_;
  };

  engine::FilterCriteria::Join join_;
  std::vector<Condition> conditions_;
  std::vector<std::string> values_;  // folded, in order
};

// A criterion as Excel keeps it: with its operator, "=" where none is given.
std::string WithOperator(std::string_view criterion);

}  // namespace tolvane::embedded
