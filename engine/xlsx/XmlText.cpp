#include "engine/xlsx/XmlText.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "platform/Text.h"
#include "platform/Xml.h"

namespace tolvane::engine::xlsx {

namespace {

// Bytes that may need more than copying: marks, controls, "_" (which may begin an escape) and all beyond ASCII.
constexpr std::array<bool, 256> kPlainBytes = [] {
  std::array<bool, 256> plain{};
  for (std::size_t c = 0x20; c < 0x7F; ++c) plain[c] = true;
  for (const char c : {'&', '<', '>', '"', '\'', '_'}) plain[static_cast<unsigned char>(c)] = false;
  return plain;
}();

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD

bool IsPlain(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return kPlainBytes[static_cast<unsigned char>(c)]; });
}

std::string ValidUtf8(std::string_view text) {
  std::string valid;
  while (!text.empty()) {
    std::size_t size = 1;
    while (size < 4 && size < text.size() && !platform::IsValidUtf8(text.substr(0, size))) ++size;
    const bool good = platform::IsValidUtf8(text.substr(0, size));
    valid += good ? text.substr(0, size) : kReplacement;
    text.remove_prefix(good ? size : 1);
  }
  return valid;
}

void AppendMarked(std::string& out, std::string_view text) {
  for (const char c : text) {
    if (c == '&') {
      out += "&amp;";
    } else if (c == '<') {
      out += "&lt;";
    } else if (c == '>') {
      out += "&gt;";
    } else if (c == '"') {
      out += "&quot;";
    } else if (c == '\t' || c == '\n' || c == '\r') {
      out.append("&#").append(std::to_string(static_cast<int>(c))).append(";");
    } else if (static_cast<unsigned char>(c) < 0x20) {
      out += kReplacement;  // only damaged files have them
    } else {
      out.push_back(c);
    }
  }
}

}  // namespace

void AppendText(std::string& out, std::string_view text) {
  if (IsPlain(text)) {
    out += text;
  } else if (platform::IsValidUtf8(text)) {
    out += platform::EscapeXml(text);
  } else {
    out += platform::EscapeXml(ValidUtf8(text));
  }
}

void AppendAttribute(std::string& out, std::string_view name, std::string_view value) {
  out.append(1, ' ').append(name).append("=\"");
  AppendMarked(out, value);
  out.push_back('"');
}

void AppendXAttribute(std::string& out, std::string_view name, std::string_view value) {
  out.append(1, ' ').append(name).append("=\"");
  AppendText(out, value);
  out.push_back('"');
}

void AppendAttribute(std::string& out, std::string_view name, double value) {
  out.append(1, ' ').append(name).append("=\"");
  AppendNumber(out, value);
  out.push_back('"');
}

void AppendFlag(std::string& out, std::string_view name, bool value) {
  out.append(1, ' ').append(name).append(value ? "=\"1\"" : "=\"0\"");
}

void AppendNumber(std::string& out, double number) {
  constexpr double kExact = 1e15;
  if (number == std::trunc(number) && std::abs(number) < kExact && !(number == 0 && std::signbit(number))) {
    AppendInteger(out, static_cast<std::int64_t>(number));
    return;
  }
  char digits[32];
  out.append(digits, std::to_chars(digits, digits + sizeof(digits), number).ptr);
}

std::string WithoutEscapes(std::string text) {
  return text.find("_x") == std::string::npos ? std::move(text) : platform::UnescapeXml(text);
}

std::optional<double> NumberOf(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\n' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\n' || text.back() == '\t')) text.remove_suffix(1);
  if (text.starts_with('+')) text.remove_prefix(1);
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(number)) return std::nullopt;
  return number;
}

std::optional<std::int64_t> WholeOf(std::string_view text) {
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

bool IsTrue(std::string_view text) {
  return text == "1" || text == "true" || text == "on";
}

namespace {

struct Half {
  int row = 0;  // 0: not told
  int column = 0;
};

std::optional<Half> HalfOf(std::string_view text) {
  Half half;
  std::size_t at = 0;
  const auto skipDollar = [&] {
    if (at < text.size() && text[at] == '$') ++at;
  };
  skipDollar();
  for (; at < text.size(); ++at) {
    const char upper = static_cast<char>(text[at] & ~0x20);
    if (upper < 'A' || upper > 'Z') break;
    half.column = half.column * 26 + (upper - 'A' + 1);
    if (half.column > kMaxColumn) return std::nullopt;
  }
  if (half.column > 0) skipDollar();
  const std::size_t digits = at;
  for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at) {
    half.row = half.row * 10 + (text[at] - '0');
    if (half.row > kMaxRow) return std::nullopt;
  }
  if (at != text.size() || (at > digits && half.row == 0)) return std::nullopt;
  return half;
}

}  // namespace

std::optional<CellPos> CellOf(std::string_view text) {
  const auto half = HalfOf(text);
  if (!half || half->row == 0 || half->column == 0) return std::nullopt;
  return CellPos{half->row, half->column};
}

std::optional<Rect> RectOf(std::string_view text) {
  const std::size_t colon = text.find(':');
  const auto first = HalfOf(text.substr(0, colon));
  const auto last = colon == std::string_view::npos ? first : HalfOf(text.substr(colon + 1));
  if (!first || !last || (first->row == 0) != (last->row == 0) || (first->column == 0) != (last->column == 0)) {
    return std::nullopt;
  }
  if (first->row == 0 && first->column == 0) return std::nullopt;
  if (colon == std::string_view::npos && (first->row == 0 || first->column == 0)) return std::nullopt;
  Rect area = Rect::WholeSheet();
  if (first->row > 0) {
    area.top = std::min(first->row, last->row);
    area.bottom = std::max(first->row, last->row);
  }
  if (first->column > 0) {
    area.left = std::min(first->column, last->column);
    area.right = std::max(first->column, last->column);
  }
  return area;
}

std::optional<std::vector<Rect>> RectsOf(std::string_view text) {
  std::vector<Rect> areas;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find(' ', at), text.size());
    if (end > at) {
      const auto area = RectOf(text.substr(at, end - at));
      if (!area) return std::nullopt;
      areas.push_back(*area);
    }
    at = end + 1;
  }
  return areas;
}

void AppendColumn(std::string& out, int column) {
  char letters[3];
  int count = 0;
  for (; column > 0; column = (column - 1) / 26) letters[count++] = static_cast<char>('A' + (column - 1) % 26);
  while (count > 0) out.push_back(letters[--count]);
}

void AppendCell(std::string& out, CellPos at) {
  AppendColumn(out, at.column);
  AppendInteger(out, at.row);
}

void AppendRect(std::string& out, const Rect& area) {
  AppendCell(out, area.topLeft());
  if (area.isCell()) return;
  out.push_back(':');
  AppendCell(out, {area.bottom, area.right});
}

std::string TextOf(const Rect& area) {
  std::string text;
  AppendRect(text, area);
  return text;
}

std::string TextOf(const std::vector<Rect>& areas) {
  std::string text;
  for (const Rect& area : areas) {
    if (!text.empty()) text.push_back(' ');
    AppendRect(text, area);
  }
  return text;
}

std::optional<ErrorCode> ErrorOf(std::string_view text) {
  for (const ErrorCode code : {ErrorCode::Null, ErrorCode::Div0, ErrorCode::Value, ErrorCode::Ref, ErrorCode::Name,
                               ErrorCode::Num, ErrorCode::NA}) {
    if (engine::TextOf(code) == text) return code;
  }
  return std::nullopt;
}

}  // namespace tolvane::engine::xlsx
