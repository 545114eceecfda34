#include "platform/Text.h"

#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>

namespace tolvane::platform {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

// What Windows-1252 has at 0x80..0x9F; all other bytes are the code point of the same number.
constexpr std::array<char16_t, 32> kWindows1252High = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

bool IsAsciiByte(char c) {
  return static_cast<unsigned char>(c) < 0x80;
}
char AsciiLower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}
char AsciiUpper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
}

// The length of the ASCII prefix, found eight bytes at a time: almost all text that comes by is ASCII.
std::size_t AsciiPrefix(std::string_view text) {
  std::size_t at = 0;
  for (; at + sizeof(std::uint64_t) <= text.size(); at += sizeof(std::uint64_t)) {
    std::uint64_t block = 0;
    std::memcpy(&block, text.data() + at, sizeof block);
    if ((block & 0x8080808080808080U) != 0) break;
  }
  while (at < text.size() && IsAsciiByte(text[at])) ++at;
  return at;
}

void AppendUtf8(std::string& out, char32_t c) {
  if (c < 0x80) {
    out.push_back(static_cast<char>(c));
  } else if (c < 0x800) {
    out.push_back(static_cast<char>(0xC0 | (c >> 6)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  } else if (c < 0x10000) {
    out.push_back(static_cast<char>(0xE0 | (c >> 12)));
    out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  } else {
    out.push_back(static_cast<char>(0xF0 | (c >> 18)));
    out.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  }
}

// Maps by `ascii` where all of the text is ASCII, else by `unicode`, which is one of icu::CaseMap's UTF-8 functions.
template <typename Ascii, typename Unicode>
std::string MapCase(std::string_view text, Ascii ascii, Unicode unicode) {
  std::string mapped;
  if (AsciiPrefix(text) == text.size()) {
    mapped.resize(text.size());
    std::transform(text.begin(), text.end(), mapped.begin(), ascii);
    return mapped;
  }
  if (text.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) {
    throw std::length_error("text of " + std::to_string(text.size()) + " bytes is too long to map its case");
  }
  mapped.reserve(text.size());
  icu::StringByteSink<std::string> sink(&mapped);
  UErrorCode error = U_ZERO_ERROR;
  unicode(icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())), sink, error);
  // Valid arguments leave ICU nothing to fail by but a lack of memory.
  if (U_FAILURE(error)) throw std::bad_alloc();
  return mapped;
}

template <typename Unit>
std::string FromUtf16(std::string_view bytes, Unit unit) {
  std::string text;
  text.reserve(bytes.size());
  const std::size_t units = bytes.size() / 2;
  for (std::size_t i = 0; i < units; ++i) {
    const char32_t c = unit(bytes, i);
    if (c < 0xD800 || c > 0xDFFF) {
      AppendUtf8(text, c);
      continue;
    }
    const char32_t low = c <= 0xDBFF && i + 1 < units ? unit(bytes, i + 1) : 0;
    if (low >= 0xDC00 && low <= 0xDFFF) {
      AppendUtf8(text, 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00));
      ++i;
    } else {
      AppendUtf8(text, kReplacement);
    }
  }
  if (bytes.size() % 2 != 0) AppendUtf8(text, kReplacement);
  return text;
}

char32_t Byte(std::string_view bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]);
}

}  // namespace

std::string FoldCase(std::string_view text) {
  return MapCase(text, AsciiLower, [](icu::StringPiece piece, icu::ByteSink& sink, UErrorCode& error) {
    icu::CaseMap::utf8Fold(0, piece, sink, nullptr, error);
  });
}

std::string UpperCase(std::string_view text) {
  return MapCase(text, AsciiUpper, [](icu::StringPiece piece, icu::ByteSink& sink, UErrorCode& error) {
    icu::CaseMap::utf8ToUpper("", 0, piece, sink, nullptr, error);
  });
}

std::string LowerCase(std::string_view text) {
  return MapCase(text, AsciiLower, [](icu::StringPiece piece, icu::ByteSink& sink, UErrorCode& error) {
    icu::CaseMap::utf8ToLower("", 0, piece, sink, nullptr, error);
  });
}

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
    UChar32 c = 0;
    U8_NEXT(bytes.data(), at, bytes.size(), c);
    if (c < 0) return false;
  }
  return true;
}

std::size_t CharacterCount(std::string_view text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
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
    AppendUtf8(text, byte >= 0x80 && byte <= 0x9F ? kWindows1252High[byte - 0x80] : byte);
  }
  return text;
}

std::string FromSystemCodePage(std::string_view bytes) {
  return IsValidUtf8(bytes) ? std::string(bytes) : FromWindows1252(bytes);
}

}  // namespace tolvane::platform
