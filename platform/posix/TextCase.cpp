// Case and kinds of characters, by ICU.
#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/uchar.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <new>
#include <stdexcept>

#include "platform/Text.h"
#include "platform/Utf8.h"

namespace tolvane::platform {
namespace {

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

UChar32 Icu(char32_t character) {
  return static_cast<UChar32>(character);
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

bool IsLetter(char32_t character) {
  return u_isalpha(Icu(character)) != 0;
}
bool IsLetterOrDigit(char32_t character) {
  return u_isalnum(Icu(character)) != 0;
}
char32_t LowerCharacter(char32_t character) {
  return static_cast<char32_t>(u_tolower(Icu(character)));
}
char32_t TitleCharacter(char32_t character) {
  return static_cast<char32_t>(u_totitle(Icu(character)));
}
char32_t FoldCharacter(char32_t character) {
  return static_cast<char32_t>(u_foldCase(Icu(character), U_FOLD_CASE_DEFAULT));
}

}  // namespace tolvane::platform
