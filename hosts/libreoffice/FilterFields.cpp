#include "hosts/libreoffice/FilterFields.h"

#include <algorithm>
#include <charconv>
#include <com/sun/star/sheet/FilterConnection.hpp>
#include <com/sun/star/sheet/FilterFieldType.hpp>
#include <com/sun/star/sheet/FilterFieldValue.hpp>
#include <com/sun/star/sheet/FilterOperator2.hpp>
#include <map>

namespace tolvane::libreoffice {

namespace {

namespace op2 = css::sheet::FilterOperator2;
using css::sheet::TableFilterField3;

struct Condition {
  sal_Int32 op = op2::EQUAL;
  std::vector<std::string> texts;
  bool isNumeric = false;
  double number = 0;
  bool isPattern = false;
  friend bool operator==(const Condition&, const Condition&) = default;
};

struct Comparison {
  std::string_view text;
  sal_Int32 op;
};
constexpr Comparison kComparisons[] = {{"<>", op2::NOT_EQUAL}, {"<=", op2::LESS_EQUAL}, {">=", op2::GREATER_EQUAL},
                                       {"<", op2::LESS},       {">", op2::GREATER},     {"=", op2::EQUAL}};

std::optional<double> NumberOf(std::string_view text) {
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

std::string TextOfNumber(double number) {
  char buffer[32];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, number);
  return {buffer, result.ptr};
}

bool HasWildcard(std::string_view text) {
  return text.find_first_of("*?") != std::string_view::npos;
}

// "F??d" is "F..d"; "~*" a star itself.
std::string ToRegular(std::string_view pattern) {
  std::string result;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    char c = pattern[i];
    if (c == '*') {
      result += ".*";
      continue;
    }
    if (c == '?') {
      result += '.';
      continue;
    }
    if (c == '~' && i + 1 < pattern.size() && std::string_view("*?~").find(pattern[i + 1]) != std::string_view::npos) {
      c = pattern[++i];
    }
    if (std::string_view("\\^$.|?*+()[]{}").find(c) != std::string_view::npos) result += '\\';
    result += c;
  }
  return result;
}

std::string FromRegular(std::string_view regular) {
  std::string result;
  for (std::size_t i = 0; i < regular.size(); ++i) {
    const char c = regular[i];
    if (c == '\\' && i + 1 < regular.size()) {
      const char literal = regular[++i];
      if (std::string_view("*?~").find(literal) != std::string_view::npos) result += '~';
      result += literal;
    } else if (c == '.') {
      const bool many = i + 1 < regular.size() && regular[i + 1] == '*';
      result += many ? '*' : '?';
      if (many) ++i;
    } else {
      result += c;
    }
  }
  return result;
}

Condition Parse(std::string_view criterion) {
  Condition condition;
  for (const Comparison& comparison : kComparisons) {
    if (!criterion.starts_with(comparison.text)) continue;
    condition.op = comparison.op;
    criterion.remove_prefix(comparison.text.size());
    break;
  }
  const bool equality = condition.op == op2::EQUAL || condition.op == op2::NOT_EQUAL;
  if (criterion.empty() && equality) {
    condition.op = condition.op == op2::EQUAL ? op2::EMPTY : op2::NOT_EMPTY;
  } else if (const auto number = NumberOf(criterion)) {
    condition.isNumeric = true;
    condition.number = *number;
    condition.texts = {std::string(criterion)};
  } else {
    condition.isPattern = equality && HasWildcard(criterion);
    condition.texts = {std::string(criterion)};
  }
  return condition;
}

std::string Print(const Condition& condition) {
  if (condition.op == op2::EMPTY) return "=";
  if (condition.op == op2::NOT_EMPTY) return "<>";
  const std::string text = condition.isNumeric       ? TextOfNumber(condition.number)
                           : condition.texts.empty() ? std::string()
                                                     : condition.texts.front();
  switch (condition.op) {
    case op2::CONTAINS:
      return "=*" + text + "*";
    case op2::DOES_NOT_CONTAIN:
      return "<>*" + text + "*";
    case op2::BEGINS_WITH:
      return "=" + text + "*";
    case op2::DOES_NOT_BEGIN_WITH:
      return "<>" + text + "*";
    case op2::ENDS_WITH:
      return "=*" + text;
    case op2::DOES_NOT_END_WITH:
      return "<>*" + text;
    default:
      break;
  }
  for (const Comparison& comparison : kComparisons) {
    if (comparison.op == condition.op) return std::string(comparison.text) + text;
  }
  return "=" + text;
}

TableFilterField3 ToField(const Condition& condition, int column, bool isAnd, bool regular) {
  TableFilterField3 field;
  field.Connection = isAnd ? css::sheet::FilterConnection_AND : css::sheet::FilterConnection_OR;
  field.Field = column;
  field.Operator = condition.op;
  const bool asText = regular && !condition.isNumeric;
  field.Values.realloc(static_cast<sal_Int32>(std::max<std::size_t>(condition.texts.size(), 1)));
  css::sheet::FilterFieldValue* value = field.Values.getArray();
  if (condition.texts.empty()) {
    value->FilterType = css::sheet::FilterFieldType::STRING;
    return field;
  }
  for (const std::string& text : condition.texts) {
    value->IsNumeric = condition.isNumeric;
    value->NumericValue = condition.number;
    value->FilterType =
        condition.isNumeric ? css::sheet::FilterFieldType::NUMERIC : css::sheet::FilterFieldType::STRING;
    value->StringValue = ToUno(asText ? ToRegular(text) : text);
    ++value;
  }
  return field;
}

Condition FromField(const TableFilterField3& field, bool regular) {
  Condition condition;
  condition.op = field.Operator;
  for (const css::sheet::FilterFieldValue& value : field.Values) {
    condition.isNumeric = value.IsNumeric != 0;
    condition.number = value.NumericValue;
    const std::string text = ToUtf8(value.StringValue);
    condition.texts.push_back(regular && !condition.isNumeric ? FromRegular(text) : text);
  }
  return condition;
}

// The ways to pass one column: any of these groups, each as a whole.
using Choices = std::vector<std::vector<Condition>>;

Choices ChoicesOf(const host::FilterState& state) {
  if (state.op == host::FilterOperator::Values) {
    Condition list;
    list.texts = state.values;
    return {{list}};
  }
  const Condition first = Parse(state.criteria1);
  if (!state.criteria2) return {{first}};
  const Condition second = Parse(*state.criteria2);
  if (state.op == host::FilterOperator::And) return {{first, second}};
  return {{first}, {second}};
}

}  // namespace

// Calc reads its conditions as groups joined by OR, so columns with alternatives are multiplied out.
CalcFilter ToCalc(const std::vector<host::FilterState>& states) {
  struct Placed {
    Condition condition;
    int column;
  };
  std::vector<std::vector<Placed>> groups = {{}};
  bool regular = false;
  for (std::size_t i = 0; i < states.size(); ++i) {
    if (!states[i].on) continue;
    std::vector<std::vector<Placed>> next;
    for (const auto& choice : ChoicesOf(states[i])) {
      for (const auto& group : groups) {
        next.push_back(group);
        for (const Condition& condition : choice) {
          regular = regular || condition.isPattern;
          next.back().push_back({condition, static_cast<int>(i)});
        }
      }
    }
    groups = std::move(next);
  }
  std::vector<TableFilterField3> fields;
  for (const auto& group : groups) {
    for (std::size_t i = 0; i < group.size(); ++i) {
      fields.push_back(ToField(group[i].condition, group[i].column, i > 0 || fields.empty(), regular));
    }
  }
  return {Sequence<TableFilterField3>(fields.data(), static_cast<sal_Int32>(fields.size())), regular};
}

std::vector<host::FilterState> ToHost(const CalcFilter& filter, int columns) {
  std::vector<host::FilterState> states(static_cast<std::size_t>(columns));
  struct Found {
    Condition condition;
    int group;
  };
  std::map<int, std::vector<Found>> byColumn;
  int group = 0;
  bool first = true;
  for (const TableFilterField3& field : filter.fields) {
    if (!first && field.Connection == css::sheet::FilterConnection_OR) ++group;
    first = false;
    const Condition condition = FromField(field, filter.regular);
    auto& found = byColumn[field.Field];
    const auto same = [&](const Found& one) { return one.condition == condition; };
    if (std::none_of(found.begin(), found.end(), same)) found.push_back({condition, group});
  }
  for (const auto& [column, found] : byColumn) {
    if (column < 0 || column >= columns) continue;
    host::FilterState& state = states[static_cast<std::size_t>(column)];
    state.on = true;
    if (found[0].condition.texts.size() > 1) {
      state.op = host::FilterOperator::Values;
      state.values = found[0].condition.texts;
      continue;
    }
    state.criteria1 = Print(found[0].condition);
    if (found.size() < 2) continue;
    state.op = found[0].group == found[1].group ? host::FilterOperator::And : host::FilterOperator::Or;
    state.criteria2 = Print(found[1].condition);
  }
  return states;
}

host::FilterState ToState(const host::FilterCriterion& criterion) {
  host::FilterState state;
  if (!criterion.criteria1 && criterion.op != host::FilterOperator::Values) return state;
  state.on = true;
  state.op = criterion.op;
  switch (criterion.op) {
    case host::FilterOperator::Values:
      state.values = criterion.values;
      return state;
    case host::FilterOperator::And:
    case host::FilterOperator::Or:
      state.criteria2 = criterion.criteria2;
      if (!state.criteria2) state.op = host::FilterOperator::None;
      break;
    case host::FilterOperator::None:
      break;
    default:
      Refuse("There is no filter operator " + std::to_string(static_cast<int>(criterion.op)) + ".");
  }
  state.criteria1 = *criterion.criteria1;
  return state;
}

}  // namespace tolvane::libreoffice
