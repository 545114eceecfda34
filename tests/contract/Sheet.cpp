#include "tests/contract/Sheet.h"

#include "src/host/Errors.h"

namespace tolvane::host {

void PrintTo(const CellValue& value, std::ostream* out) {
  switch (value.kind()) {
    case CellValue::Kind::Empty:
      *out << "(empty)";
      return;
    case CellValue::Kind::Boolean:
      *out << (value.boolean() ? "TRUE" : "FALSE");
      return;
    case CellValue::Kind::Number:
      *out << ::testing::PrintToString(value.number());
      return;
    case CellValue::Kind::Error:
      *out << TextOf(value.error());
      return;
    case CellValue::Kind::Text:
      *out << '"' << value.text() << '"';
      return;
  }
}

void PrintTo(const CellBlock& block, std::ostream* out) {
  constexpr int kMostRows = 20;
  *out << block.rows() << " x " << block.columns() << " {";
  for (int row = 1; row <= block.rows() && row <= kMostRows; ++row) {
    *out << (row == 1 ? "" : "; ");
    for (int column = 1; column <= block.columns() && column <= kMostRows; ++column) {
      if (column > 1) *out << ", ";
      PrintTo(block.at(row, column), out);
    }
  }
  *out << '}';
}

}  // namespace tolvane::host

namespace tolvane::contract {

std::string Sheet::TextIn(const host::CellBlock& block) {
  if (block.isSingle() && block.single().isText()) return std::string(block.single().text());
  ADD_FAILURE() << ::testing::PrintToString(block) << " is no text";
  return {};
}

host::ValidationRule ListRule(std::string_view source) {
  host::ValidationRule rule;
  rule.source = source;
  return rule;
}

host::HyperlinkTarget LinkTo(std::string_view subAddress) {
  host::HyperlinkTarget target;
  target.subAddress = subAddress;
  return target;
}

host::FilterCriterion Where(int field, std::string_view criterion1, host::FilterOperator op,
                            const std::optional<std::string>& criterion2) {
  host::FilterCriterion criterion;
  criterion.field = field;
  criterion.criteria1 = criterion1;
  criterion.op = op;
  criterion.criteria2 = criterion2;
  return criterion;
}

host::FilterCriterion WhereAny(int field) {
  host::FilterCriterion criterion;
  criterion.field = field;
  return criterion;
}

host::FilterCriterion WhereOneOf(int field, std::vector<std::string> values) {
  host::FilterCriterion criterion;
  criterion.field = field;
  criterion.op = host::FilterOperator::Values;
  criterion.values = std::move(values);
  return criterion;
}

host::NewControl NewOf(host::ControlType type) {
  host::NewControl control;
  control.type = type;
  return control;
}

host::NewControl NewBuiltIn(int id) {
  host::NewControl control;
  control.id = id;
  return control;
}

::testing::AssertionResult Raises(host::ErrorNumber number, const std::function<void()>& action) {
  const int expected = static_cast<int>(number);
  try {
    action();
  } catch (const host::HostError& error) {
    if (error.number() == number) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "error " << static_cast<int>(error.number()) << " (" << error.what()
                                         << ") instead of " << expected;
  } catch (const std::exception& error) {
    return ::testing::AssertionFailure() << "not a host's error (" << error.what() << ") instead of " << expected;
  }
  return ::testing::AssertionFailure() << "no error instead of " << expected;
}

::testing::AssertionResult Refused(const std::function<void()>& action) {
  return Raises(host::ErrorNumber::ApplicationDefined, action);
}

}  // namespace tolvane::contract
