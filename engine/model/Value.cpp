#include "engine/model/Value.h"

namespace tolvane::engine {

std::string_view TextOf(ErrorCode error) {
  switch (error) {
    case ErrorCode::Null:
      return "#NULL!";
    case ErrorCode::Div0:
      return "#DIV/0!";
    case ErrorCode::Value:
      return "#VALUE!";
    case ErrorCode::Ref:
      return "#REF!";
    case ErrorCode::Name:
      return "#NAME?";
    case ErrorCode::Num:
      return "#NUM!";
    case ErrorCode::NA:
      return "#N/A";
  }
  return "#VALUE!";
}

bool operator==(const Value& a, const Value& b) {
  if (a.kind_ != b.kind_) return false;
  switch (a.kind_) {
    case Value::Kind::Empty:
      return true;
    case Value::Kind::Boolean:
      return a.boolean_ == b.boolean_;
    case Value::Kind::Number:
      return a.number_ == b.number_;
    case Value::Kind::Text:
      return a.text_ == b.text_;
    case Value::Kind::Error:
      return a.error_ == b.error_;
  }
  return false;
}

}  // namespace tolvane::engine
