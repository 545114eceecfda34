#include "platform/Text.h"

#include <algorithm>
#include <array>

#include "platform/Utf8.h"

namespace tolvane::platform {
namespace {

// What Windows-1252 has at 0x80..0x9F; all other bytes are the code point of the same number.
constexpr std::array<char16_t, 32> kWindows1252High = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

template <typename Unit>
std::string FromUtf16(std::string_view bytes, Unit unit) {
  std::string text;
  text.reserve(bytes.size());
  const std::size_t units = bytes.size() / 2;
  for (std::size_t i = 0; i < units; ++i) {
    const char32_t c = unit(bytes, i);
    if (c < 0xD800 || c > 0xDFFF) {
      AppendCharacter(text, c);
      continue;
    }
    const char32_t low = c <= 0xDBFF && i + 1 < units ? unit(bytes, i + 1) : 0;
    if (low >= 0xDC00 && low <= 0xDFFF) {
      AppendCharacter(text, 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00));
      ++i;
    } else {
      AppendCharacter(text, kReplacementCharacter);
    }
  }
  if (bytes.size() % 2 != 0) AppendCharacter(text, kReplacementCharacter);
  return text;
}

char32_t Byte(std::string_view bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]);
}

}  // namespace

bool EqualIgnoringCase(std::string_view a, std::string_view b) {
  return CompareIgnoringCase(a, b) == 0;
}

int CompareIgnoringCase(std::string_view a, std::string_view b) {
  // Folding looks at one character at a time, so an ASCII prefix can be compared in place. It ends at the first byte
  // beyond ASCII on either side: such a character may fold to ASCII ones (the Kelvin sign, sharp s, ligatures).
  const std::size_t common = std::min(a.size(), b.size());
  std::size_t at = 0;
  for (; at < common && IsAsciiByte(a[at]) && IsAsciiByte(b[at]); ++at) {
    const char left = AsciiLower(a[at]);
    const char right = AsciiLower(b[at]);
    if (left != right) return left < right ? -1 : 1;
  }
  a.remove_prefix(at);
  b.remove_prefix(at);
  // No character folds to nothing, so where one text has ended the other is greater.
  if (a.empty() || b.empty()) return static_cast<int>(b.empty()) - static_cast<int>(a.empty());
  const int order = FoldCase(a).compare(FoldCase(b));
  return order < 0 ? -1 : static_cast<int>(order > 0);
}

bool IsValidUtf8(std::string_view bytes) {
  std::size_t at = AsciiPrefix(bytes);
  while (at < bytes.size()) {
    if (DecodeUtf8(bytes, at) < 0) return false;
  }
  return true;
}

std::size_t CharacterCount(std::string_view text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

char32_t NextCharacter(std::string_view text, std::size_t& at) {
  const std::int32_t character = DecodeUtf8(text, at);
  return character < 0 ? kReplacementCharacter : static_cast<char32_t>(character);
}

void AppendCharacter(std::string& text, char32_t c) {
  if (c < 0x80) {
    text.push_back(static_cast<char>(c));
  } else if (c < 0x800) {
    text.push_back(static_cast<char>(0xC0 | (c >> 6)));
    text.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  } else if (c < 0x10000) {
    text.push_back(static_cast<char>(0xE0 | (c >> 12)));
    text.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
    text.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  } else {
    text.push_back(static_cast<char>(0xF0 | (c >> 18)));
    text.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
    text.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
    text.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  }
}

std::string FromUtf16Le(std::string_view bytes) {
  return FromUtf16(bytes,
                   [](std::string_view all, std::size_t i) { return Byte(all, 2 * i) | Byte(all, 2 * i + 1) << 8; });
}

std::string FromUtf16Be(std::string_view bytes) {
  return FromUtf16(bytes,
                   [](std::string_view all, std::size_t i) { return Byte(all, 2 * i) << 8 | Byte(all, 2 * i + 1); });
}

std::string FromWindows1252(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    const char32_t byte = Byte(bytes, at);
    AppendCharacter(text, byte >= 0x80 && byte <= 0x9F ? kWindows1252High[byte - 0x80] : byte);
  }
  return text;
}

std::string FromSystemCodePage(std::string_view bytes) {
  return IsValidUtf8(bytes) ? std::string(bytes) : FromWindows1252(bytes);
}

}  // namespace tolvane::platform
