#include <cmath>

#include "engine/formula/Coercion.h"
#include "engine/formula/Evaluator.h"
#include "engine/formula/NumberFormat.h"
#include "engine/formula/NumberText.h"
#include "engine/formula/Rounding.h"
#include "engine/formula/TextLimits.h"
#include "platform/Text.h"

// Texts from several values, from numbers and from character codes, and numbers from texts.

namespace tolvane::engine {
namespace {

// Calls visit(value) for every value of an argument in reading order. An error is thrown. Of whole columns only what
// lies in the used part is looked at, unless `blanksToo`.
template <class Visit>
void ForEachValue(FunctionCall& call, std::size_t i, bool blanksToo, Visit&& visit) {
  const Operand& argument = call.Argument(i);
  const auto check = [&](const Value& value) {
    if (value.isError()) throw FunctionError{value.error()};
    visit(value);
  };
  if (argument.isValue()) return check(argument.value());
  if (argument.isOmitted()) return visit(Value());
  Operand wanted = argument;
  if (argument.isReference()) {
    if (!argument.areas().isSingle()) throw FunctionError{ErrorCode::Value};
    Area area = argument.areas()[0];
    const std::optional<Rect>& used = call.evaluator.UsedContentsOf(*area.sheet);
    const std::optional<Rect> part = used ? area.rect.intersection(*used) : std::nullopt;
    if (!part && !blanksToo) return;
    if (!blanksToo) area.rect = *part;
    wanted = AreaList(area);
  }
  const ArrayPtr array = call.evaluator.ToArray(wanted);
  if (array == nullptr) throw FunctionError{ErrorCode::Value};
  for (const Value& value : array->values) check(value);
}

void Append(std::string& out, std::string_view text) {
  out += text;
  if (out.size() > kLongestText && platform::CharacterCount(out) > kLongestText) throw FunctionError{ErrorCode::Value};
}

Operand Concat(FunctionCall& call) {
  std::string out;
  for (std::size_t i = 0; i < call.count(); ++i) {
    ForEachValue(call, i, false, [&](const Value& value) { Append(out, ToText(value)); });
  }
  return Value(out);
}

// Several delimiters take turns.
Operand TextJoin(FunctionCall& call) {
  std::vector<std::string> delimiters;
  ForEachValue(call, 0, true, [&](const Value& value) { delimiters.push_back(ToText(value)); });
  if (delimiters.empty()) delimiters.emplace_back();
  const bool skipsEmpty = call.Has(1) ? call.Boolean(1) : true;
  std::string out;
  std::size_t joined = 0;
  for (std::size_t i = 2; i < call.count(); ++i) {
    ForEachValue(call, i, !skipsEmpty, [&](const Value& value) {
      const std::string text = ToText(value);
      if (text.empty() && skipsEmpty) return;
      if (joined > 0) Append(out, delimiters[(joined - 1) % delimiters.size()]);
      Append(out, text);
      ++joined;
    });
  }
  return Value(out);
}

// Control characters go.
Operand Clean(FunctionCall& call) {
  std::string out;
  for (const char c : call.Text(0)) {
    if (static_cast<unsigned char>(c) >= ' ') out += c;
  }
  return Value(out);
}

Operand UniChar(FunctionCall& call) {
  const std::int64_t code = call.Whole(0);
  constexpr std::int64_t kLastCharacter = 0x10FFFF;
  if (code < 1 || code > kLastCharacter) return ErrorCode::Value;
  if (code >= 0xD800 && code <= 0xDFFF) return ErrorCode::NA;  // a surrogate
  std::string character;
  platform::AppendCharacter(character, static_cast<char32_t>(code));
  return Value(character);
}

Operand Unicode(FunctionCall& call) {
  const std::string text = call.Text(0);
  if (text.empty()) return ErrorCode::Value;
  std::size_t at = 0;
  return static_cast<double>(platform::NextCharacter(text, at));
}

// Blanks do not count, group separators only before the decimal one, percent signs at the end divide.
Operand NumberValue(FunctionCall& call) {
  const std::string text = call.Text(0);
  const std::string point = call.count() > 1 ? call.Text(1) : ".";
  const std::string group = call.count() > 2 ? call.Text(2) : ",";
  if (point.empty() || (call.count() > 2 && group.empty())) return ErrorCode::Value;
  std::string plain;
  int percents = 0;
  bool behindPoint = false;
  for (const char c : text) {
    if (c == ' ') continue;
    if (c == '%') {
      ++percents;
    } else if (percents > 0) {
      return ErrorCode::Value;
    } else if (c == point[0]) {
      if (behindPoint) return ErrorCode::Value;
      behindPoint = true;
      plain += '.';
    } else if (c == group[0]) {
      if (behindPoint) return ErrorCode::Value;
    } else if (c == '.' || c == ',') {
      return ErrorCode::Value;
    } else {
      plain += c;
    }
  }
  if (plain.empty()) return 0.0;
  const std::optional<double> number = NumberFromText(plain);
  if (!number) return ErrorCode::Value;
  return FiniteOr(*number / std::pow(100, percents));
}

// The number rounded, with so many decimals; negative ones round before the decimal point.
std::string Decimals(double number, std::int64_t decimals, bool thousands, std::string_view prefix) {
  constexpr std::int64_t kMostDecimals = 127;
  if (decimals > kMostDecimals) throw FunctionError{ErrorCode::Value};
  const double rounded = CutTo(number, decimals, Cut::HalfAwayFromZero);
  std::string format(prefix);
  format += thousands ? "#,##0" : "0";
  if (decimals > 0) format.append(".").append(static_cast<std::size_t>(decimals), '0');
  return FormatValue(Value(std::fabs(rounded)), format);
}

Operand Fixed(FunctionCall& call) {
  const double number = call.Number(0);
  const std::string digits = Decimals(number, call.Whole(1, 2), !call.Boolean(2, false), "");
  const bool isZero = digits.find_first_of("123456789") == std::string::npos;
  return Value(number < 0 && !isZero ? "-" + digits : digits);
}

Operand Dollar(FunctionCall& call) {
  const double number = call.Number(0);
  const std::string digits = Decimals(number, call.Whole(1, 2), true, "$");
  const bool isZero = digits.find_first_of("123456789") == std::string::npos;
  return Value(number < 0 && !isZero ? "(" + digits + ")" : digits);
}

constexpr Function kFunctions[] = {
    {"CLEAN", 1, 1, "V", Clean},
    {"CONCAT", 1, kMostArguments, "A", Concat},
    {"DOLLAR", 1, 2, "V", Dollar},
    {"FIXED", 1, 3, "V", Fixed},
    {"NUMBERVALUE", 1, 3, "V", NumberValue},
    {"TEXTJOIN", 3, kMostArguments, "AVA", TextJoin},
    {"UNICHAR", 1, 1, "V", UniChar},
    {"UNICODE", 1, 1, "V", Unicode},
};

}  // namespace

std::span<const Function> TextConversionFunctions() {
  return kFunctions;
}

}  // namespace tolvane::engine
