// Case and kinds of characters, by Windows, which maps a character to one and only where the way leads back. Sharp s,
// the Latin ligatures and the sigma at the end of a word are seen to here. Where this still differs from the other
// systems: rarer characters that become several (Greek letters with iota, Armenian ligatures, letters with marks that
// have no capital of their own) or that share a capital with another (long s, the micro and Kelvin signs, Greek letters
// as symbols) stay as they are, a sigma at the end of a word becomes an ordinary small one, and no character beyond
// U+FFFF is a letter.
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

struct Expansion {
  char32_t character;
  const wchar_t* capitals;
};
// From Unicode's SpecialCasing.txt.
constexpr Expansion kExpansions[] = {
    {0x00DF, L"SS"},  {0xFB00, L"FF"},  {0xFB01, L"FI"}, {0xFB02, L"FL"},
    {0xFB03, L"FFI"}, {0xFB04, L"FFL"}, {0xFB05, L"ST"}, {0xFB06, L"ST"},
};
constexpr char32_t kSharpS = 0x00DF, kCapitalSharpS = 0x1E9E, kFinalSigma = 0x03C2, kCapitalSigma = 0x03A3;

enum class Case { Upper, Lower, Fold };

// The character to map in place of one that Windows leaves alone.
char32_t Replaced(char32_t c, Case to) {
  if (c == kCapitalSharpS && to != Case::Upper) return kSharpS;
  return c == kFinalSigma && to != Case::Lower ? kCapitalSigma : c;
}

void AppendExpanded(std::wstring& out, char32_t c, Case to) {
  c = Replaced(c, to);
  for (const auto& [character, capitals] : kExpansions) {
    if (to == Case::Lower || c != character) continue;
    out += capitals;
    return;
  }
  AppendUtf16(out, c);
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

std::wstring Mapped(const std::wstring& text, Case to) {
  if (to == Case::Lower) return Mapped(text, DWORD{LCMAP_LOWERCASE});
  const std::wstring upper = Mapped(text, DWORD{LCMAP_UPPERCASE});
  // Folding goes by way of capitals, so that small letters that share one (the two sigmas) become equal.
  return to == Case::Upper ? upper : Mapped(upper, DWORD{LCMAP_LOWERCASE});
}

void AppendMapped(std::string& out, std::wstring& pending, Case to) {
  const std::wstring mapped = Mapped(pending, to);
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
std::string MapCase(std::string_view text, Ascii ascii, Case to) {
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
      AppendExpanded(pending, static_cast<char32_t>(c), to);
      continue;
    }
    AppendMapped(out, pending, to);
    out.append(text, start, at - start);
  }
  AppendMapped(out, pending, to);
  return out;
}

char32_t MapCharacter(char32_t character, Case to) {
  std::wstring text;
  AppendUtf16(text, Replaced(character, to));
  std::string mapped;
  AppendMapped(mapped, text, to);
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
  return MapCase(text, AsciiLower, Case::Fold);
}
std::string UpperCase(std::string_view text) {
  return MapCase(text, AsciiUpper, Case::Upper);
}
std::string LowerCase(std::string_view text) {
  return MapCase(text, AsciiLower, Case::Lower);
}

bool IsLetter(char32_t character) {
  return (KindsOf(character) & C1_ALPHA) != 0;
}
bool IsLetterOrDigit(char32_t character) {
  return (KindsOf(character) & (C1_ALPHA | C1_DIGIT)) != 0;
}
char32_t LowerCharacter(char32_t character) {
  return MapCharacter(character, Case::Lower);
}
// Windows has no title case: the four letters that have one of their own become capitals.
char32_t TitleCharacter(char32_t character) {
  return MapCharacter(character, Case::Upper);
}
char32_t FoldCharacter(char32_t character) {
  return MapCharacter(character, Case::Fold);
}

}  // namespace tolvane::platform
