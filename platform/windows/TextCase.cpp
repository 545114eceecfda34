// Case and kinds of characters, by Windows. Where this differs from the other systems, since Windows maps each character
// to one: sharp s, ligatures and the like equal no two letters and have no capital ("strasse" is not "straße"), a sigma
// at the end of a word becomes an ordinary small one, and of characters beyond U+FFFF none is a letter or has a case
// where the Windows version knows none.
#include <windows.h>

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <system_error>

#include "platform/Text.h"
#include "platform/Utf8.h"

namespace tolvane::platform {
namespace {

void AppendUtf16(std::wstring& out, char32_t c) {
  if (c < 0x10000) {
    out += static_cast<wchar_t>(c);
    return;
  }
  out += static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10));
  out += static_cast<wchar_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
}

// `flags` are LCMapStringEx's for a change of case.
std::wstring Mapped(const std::wstring& text, DWORD flags) {
  if (text.empty()) return {};
  std::wstring mapped(text.size(), L'\0');
  const int size = static_cast<int>(text.size());
  if (LCMapStringEx(LOCALE_NAME_INVARIANT, flags, text.data(), size, mapped.data(), size, nullptr, nullptr, 0) == 0) {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), "cannot map the case of a text");
  }
  return mapped;
}

std::wstring Upper(const std::wstring& text) {
  return Mapped(text, LCMAP_UPPERCASE);
}
std::wstring Lower(const std::wstring& text) {
  return Mapped(text, LCMAP_LOWERCASE);
}
// By way of capitals, so that small letters that share one (the two sigmas) become equal.
std::wstring Fold(const std::wstring& text) {
  return Lower(Upper(text));
}

void AppendMapped(std::string& out, std::wstring& pending, std::wstring (*map)(const std::wstring&)) {
  const std::wstring mapped = map(pending);
  pending.clear();
  for (std::size_t i = 0; i < mapped.size(); ++i) {
    char32_t c = mapped[i];
    if (c >= 0xD800 && c <= 0xDBFF && i + 1 < mapped.size()) {
      c = 0x10000 + ((c - 0xD800) << 10) + (static_cast<char32_t>(mapped[++i]) - 0xDC00);
    }
    AppendCharacter(out, c);
  }
}

template <typename Ascii>
std::string MapCase(std::string_view text, Ascii ascii, std::wstring (*map)(const std::wstring&)) {
  std::string out;
  if (AsciiPrefix(text) == text.size()) {
    out.resize(text.size());
    std::transform(text.begin(), text.end(), out.begin(), ascii);
    return out;
  }
  if (text.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
    throw std::length_error("text of " + std::to_string(text.size()) + " bytes is too long to map its case");
  }
  std::wstring pending;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t start = at;
    const std::int32_t c = DecodeUtf8(text, at);
    if (c >= 0) {
      AppendUtf16(pending, static_cast<char32_t>(c));
      continue;
    }
    AppendMapped(out, pending, map);
    out.append(text, start, at - start);
  }
  AppendMapped(out, pending, map);
  return out;
}

char32_t MapCharacter(char32_t character, std::wstring (*map)(const std::wstring&)) {
  std::wstring text;
  AppendUtf16(text, character);
  std::string mapped;
  AppendMapped(mapped, text, map);
  std::size_t at = 0;
  return NextCharacter(mapped, at);
}

// Windows' C1_... bits of a character; of one beyond U+FFFF those of its first half.
WORD KindsOf(char32_t character) {
  std::wstring text;
  AppendUtf16(text, character);
  WORD kinds[2] = {};
  if (GetStringTypeW(CT_CTYPE1, text.data(), static_cast<int>(text.size()), kinds) == 0) return 0;
  return kinds[0];
}

}  // namespace

std::string FoldCase(std::string_view text) {
  return MapCase(text, AsciiLower, Fold);
}
std::string UpperCase(std::string_view text) {
  return MapCase(text, AsciiUpper, Upper);
}
std::string LowerCase(std::string_view text) {
  return MapCase(text, AsciiLower, Lower);
}

bool IsLetter(char32_t character) {
  return (KindsOf(character) & C1_ALPHA) != 0;
}
bool IsLetterOrDigit(char32_t character) {
  return (KindsOf(character) & (C1_ALPHA | C1_DIGIT)) != 0;
}
char32_t LowerCharacter(char32_t character) {
  return MapCharacter(character, Lower);
}
// Windows has no title case: the four letters that have one of their own become capitals.
char32_t TitleCharacter(char32_t character) {
  return MapCharacter(character, Upper);
}
char32_t FoldCharacter(char32_t character) {
  return MapCharacter(character, Fold);
}

}  // namespace tolvane::platform
