#include <algorithm>
#include <cstdint>
#include <optional>

#include "platform/Text.h"
#include "platform/Xml.h"

namespace tolvane::platform {
namespace {

constexpr std::size_t kEscapeBytes = 7;  // _xHHHH_
constexpr std::string_view kHexDigits = "0123456789ABCDEF";

// The number of a character that XML cannot hold where one stands at `at`. They are all below U+10000.
std::optional<std::uint16_t> ForbiddenAt(std::string_view text, std::size_t at) {
  if (at >= text.size()) return std::nullopt;
  const auto c = static_cast<unsigned char>(text[at]);
  if (c < 0x20 && c != '\t' && c != '\n' && c != '\r') return c;
  if (text.substr(at, 3) == "\xEF\xBF\xBE") return std::uint16_t{0xFFFE};
  if (text.substr(at, 3) == "\xEF\xBF\xBF") return std::uint16_t{0xFFFF};
  return std::nullopt;
}

std::optional<std::uint16_t> HexDigit(char c) {
  if (c >= '0' && c <= '9') return static_cast<std::uint16_t>(c - '0');
  const char lower = static_cast<char>(c | 0x20);
  if (lower >= 'a' && lower <= 'f') return static_cast<std::uint16_t>(lower - 'a' + 10);
  return std::nullopt;
}

// The number in the `_xHHHH` at `at`.
std::optional<std::uint16_t> NumberAt(std::string_view text, std::size_t at) {
  const std::string_view candidate = text.substr(std::min(at, text.size()), kEscapeBytes - 1);
  if (candidate.size() < kEscapeBytes - 1 || !candidate.starts_with("_x")) return std::nullopt;
  std::uint16_t number = 0;
  for (const char c : candidate.substr(2)) {
    const std::optional<std::uint16_t> digit = HexDigit(c);
    if (!digit) return std::nullopt;
    number = static_cast<std::uint16_t>(number << 4 | *digit);
  }
  return number;
}

std::optional<std::uint16_t> EscapeAt(std::string_view text, std::size_t at) {
  if (text.substr(std::min(at + kEscapeBytes - 1, text.size()), 1) != "_") return std::nullopt;
  return NumberAt(text, at);
}

// An underscore that would begin an escape in the escaped text. What follows the digits there is an underscore also
// where a forbidden character follows them here.
bool LooksLikeEscape(std::string_view text, std::size_t at) {
  if (!NumberAt(text, at)) return false;
  const std::size_t end = at + kEscapeBytes - 1;
  return text.substr(end, 1) == "_" || ForbiddenAt(text, end);
}

void AppendEscape(std::string& out, std::uint16_t number) {
  out += "_x";
  for (int shift = 12; shift >= 0; shift -= 4) out.push_back(kHexDigits[(number >> shift) & 0xF]);
  out.push_back('_');
}

bool IsHighSurrogate(std::uint16_t number) {
  return number >= 0xD800 && number <= 0xDBFF;
}
bool IsLowSurrogate(std::uint16_t number) {
  return number >= 0xDC00 && number <= 0xDFFF;
}

void AppendUnits(std::string& out, std::uint16_t first, std::optional<std::uint16_t> second) {
  std::string bytes = {static_cast<char>(first & 0xFF), static_cast<char>(first >> 8)};
  if (second) bytes.append({static_cast<char>(*second & 0xFF), static_cast<char>(*second >> 8)});
  out += FromUtf16Le(bytes);
}

}  // namespace

std::string EscapeXml(std::string_view text) {
  std::string escaped;
  escaped.reserve(text.size());
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char c = text[at];
    if (const std::optional<std::uint16_t> forbidden = ForbiddenAt(text, at)) {
      AppendEscape(escaped, *forbidden);
      if (*forbidden >= 0xFFFE) at += 2;
    } else if (c == '_' && LooksLikeEscape(text, at)) {
      AppendEscape(escaped, '_');
    } else if (c == '&') {
      escaped += "&amp;";
    } else if (c == '<') {
      escaped += "&lt;";
    } else if (c == '>') {
      escaped += "&gt;";
    } else if (c == '"') {
      escaped += "&quot;";
    } else if (c == '\'') {
      escaped += "&apos;";
    } else if (c == '\t' || c == '\n' || c == '\r') {
      // Readers turn a bare one into a space within attributes, a carriage return into a line feed anywhere.
      escaped += "&#" + std::to_string(static_cast<int>(c)) + ";";
    } else {
      escaped.push_back(c);
    }
  }
  return escaped;
}

std::string UnescapeXml(std::string_view text) {
  std::string plain;
  plain.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const std::optional<std::uint16_t> number = text[at] == '_' ? EscapeAt(text, at) : std::nullopt;
    if (!number) {
      plain.push_back(text[at++]);
    } else if (!IsHighSurrogate(*number) && !IsLowSurrogate(*number)) {
      AppendUnits(plain, *number, std::nullopt);
      at += kEscapeBytes;
    } else {
      const std::optional<std::uint16_t> low = EscapeAt(text, at + kEscapeBytes);
      if (IsHighSurrogate(*number) && low && IsLowSurrogate(*low)) {
        AppendUnits(plain, *number, low);
        at += 2 * kEscapeBytes;
      } else {
        plain.append(text.substr(at, kEscapeBytes));
        at += kEscapeBytes;
      }
    }
  }
  return plain;
}

}  // namespace tolvane::platform
