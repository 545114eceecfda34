#pragma once

#include <optional>
#include <string>

#include "engine/model/Value.h"

namespace tolvane::engine {

// A number, or the error that stands in its place.
struct NumberResult {
  double number = 0;
  std::optional<ErrorCode> error;
};

// As an operator sees a value: nothing is 0, TRUE is 1, a text that reads as a number is that number.
NumberResult ToNumber(const Value& value);
// As a condition: a number is true when it is not 0, nothing is false, the texts "TRUE" and "FALSE" count.
struct BooleanResult {
  bool boolean = false;
  std::optional<ErrorCode> error;
};
BooleanResult ToBoolean(const Value& value);
// As & sees a value that is no error: nothing is "", numbers have 15 digits.
std::string ToText(const Value& value);

// Less than 0, 0 or more than 0. Numbers come before texts, texts before booleans; texts compare ignoring case, numbers
// by the 15 digits that people see; nothing compares as 0, "" or FALSE, whatever stands on the other side. Neither
// value may be an error.
int CompareValues(const Value& a, const Value& b);
// The same with numbers compared exactly, and nothing less than everything else; what looking up goes by.
int CompareExactly(const Value& a, const Value& b);

// A number, or #NUM! where it is none.
Value FiniteOr(double number, ErrorCode error = ErrorCode::Num);

}  // namespace tolvane::engine
