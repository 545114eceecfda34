#include "src/core/CellConversions.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

namespace tolvane::accounts {

namespace {

// A number as people write it: blanks around it, a sign, digits with commas between thousands, a decimal point, an
// exponent. Nothing when it is none.
std::optional<double> NumberIn(std::string_view text) {
  constexpr std::string_view kBlanks = " \t";
  const auto first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return std::nullopt;
  text = text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
  std::string plain;
  bool bWhole = true;
  for (const char c : text) {
    if (c == '.' || c == 'e' || c == 'E') bWhole = false;
    if (c == ',' && bWhole && !plain.empty() && plain.back() != '-') continue;
    plain.push_back(c);
  }
  if (plain.size() > 1 && plain.front() == '+' && plain[1] != '-') plain.erase(0, 1);
  double number = 0;
  const auto result = std::from_chars(plain.data(), plain.data() + plain.size(), number);
  if (result.ec != std::errc() || result.ptr != plain.data() + plain.size() || !std::isfinite(number)) {
    return std::nullopt;
  }
  return number;
}

double NumberOf(const host::CellValue& vCell) {
  switch (vCell.kind()) {
    case host::CellValue::Kind::Boolean:
      return vCell.boolean() ? -1 : 0;  // as the macro language counts it
    case host::CellValue::Kind::Number:
      return vCell.number();
    case host::CellValue::Kind::Text:
      return NumberIn(vCell.text()).value_or(0);
    default:
      return 0;
  }
}

}  // namespace

std::string sNumberText(double dValue) {
  if (dValue == 0) return "0";
  char buffer[64];
  // Plain digits as long as every digit means something.
  const bool bPlain = std::fabs(dValue) < 1e15 && std::fabs(dValue) >= 1e-5;
  const auto end = bPlain ? std::to_chars(buffer, buffer + sizeof buffer, dValue, std::chars_format::fixed).ptr
                          : std::to_chars(buffer, buffer + sizeof buffer, dValue, std::chars_format::scientific).ptr;
  std::string text(buffer, end);
  for (char& c : text) {
    if (c == 'e') c = 'E';
  }
  return text;
}

std::string sCellText(const host::CellValue& vCell) {
  switch (vCell.kind()) {
    case host::CellValue::Kind::Boolean:
      return vCell.boolean() ? "True" : "False";
    case host::CellValue::Kind::Number:
      return sNumberText(vCell.number());
    case host::CellValue::Kind::Text:
      return std::string(vCell.text());
    default:
      return {};
  }
}

double dCellAmount(const host::CellValue& vCell, bool bBlankSentinel) {
  if (vCell.isEmpty()) return bBlankSentinel ? kBlankAmount : 0;
  return NumberOf(vCell);
}

int lCellLong(const host::CellValue& vCell, bool bBlankSentinel) {
  if (vCell.isEmpty()) return bBlankSentinel ? kBlankLong : 0;
  const double rounded = std::nearbyint(NumberOf(vCell));  // the default mode rounds half to even
  if (rounded < std::numeric_limits<int>::min() || rounded > std::numeric_limits<int>::max()) return 0;
  return static_cast<int>(rounded);
}

host::CellValue vAmountCell(double dValue) {
  return dValue == kBlankAmount ? host::CellValue() : host::CellValue(dValue);
}

host::CellValue vTextCell(std::string_view sValue) {
  return sValue.empty() ? host::CellValue() : host::CellValue(sValue);
}

host::CellValue vLongCell(int lValue) {
  return lValue == kBlankLong ? host::CellValue() : host::CellValue(lValue);
}

double dRoundAmount(double dValue) {
  const double hundredfold = dValue * 100;
  if (!(std::fabs(hundredfold) < 1e15)) return dValue;
  return std::nearbyint(hundredfold) / 100;
}

}  // namespace tolvane::accounts
