#include "engine/model/Name.h"

#include <algorithm>
#include <utility>

#include "engine/model/Geometry.h"
#include "platform/Text.h"

namespace tolvane::engine {

namespace {

constexpr std::size_t kLongestName = 255;

bool IsAsciiLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}
bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// Beyond ASCII everything counts as a letter but the blocks of punctuation, signs and symbols.
bool IsWideLetter(char32_t c) {
  if (c < 0xC0) return c == 0xAA || c == 0xB5 || c == 0xBA;
  if (c == 0xD7 || c == 0xF7) return false;
  const bool punctuation = (c >= 0x2000 && c <= 0x206F) || (c >= 0x20A0 && c <= 0x20CF);
  const bool symbol = (c >= 0x2190 && c <= 0x2BFF) || (c >= 0x3000 && c <= 0x3004) || (c >= 0x3008 && c <= 0x3020);
  return !punctuation && !symbol && c != 0xFEFF && c != 0xFFFD;
}

// Reads one character beyond ASCII; 0 for bytes that are no UTF-8.
char32_t TakeWide(std::string_view& text) {
  const auto lead = static_cast<unsigned char>(text.front());
  const std::size_t size = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC2 ? 2 : 0;
  if (size == 0 || text.size() < size) return 0;
  char32_t c = lead & (0x7Fu >> size);
  for (std::size_t i = 1; i < size; ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if ((byte & 0xC0) != 0x80) return 0;
    c = c << 6 | (byte & 0x3Fu);
  }
  text.remove_prefix(size);
  return c;
}

// Takes leading digits; their number, 0 when there are none, or a number beyond every limit.
int TakeNumber(std::string_view& text) {
  int number = 0;
  while (!text.empty() && IsDigit(text.front())) {
    number = std::min(number * 10 + (text.front() - '0'), 100'000'000);
    text.remove_prefix(1);
  }
  return number;
}

bool IsA1Address(std::string_view name) {
  int column = 0;
  std::size_t letters = 0;
  while (letters < name.size() && letters < 4 && IsAsciiLetter(name[letters])) {
    column = column * 26 + ((name[letters] & ~0x20) - 'A' + 1);
    ++letters;
  }
  name.remove_prefix(letters);
  if (letters == 0 || column > kMaxColumn || name.empty()) return false;
  const int row = TakeNumber(name);
  return name.empty() && 1 <= row && row <= kMaxRow;
}

// R, C, RC, R1, C1, R1C, RC1, R1C1.
bool IsR1C1Address(std::string_view name) {
  const auto take = [&name](char letter, int limit) {
    if (name.empty() || (name.front() & ~0x20) != letter) return true;
    name.remove_prefix(1);
    const bool isRelative = name.empty() || !IsDigit(name.front());
    const int number = TakeNumber(name);
    return isRelative || (1 <= number && number <= limit);
  };
  return take('R', kMaxRow) && take('C', kMaxColumn) && name.empty();
}

}  // namespace

const Name* NameTable::Find(std::string_view name) const {
  const auto found = names_.find(platform::FoldCase(name));
  return found == names_.end() ? nullptr : &found->second;
}

bool NameTable::Set(Name name) {
  std::string folded = platform::FoldCase(name.name);
  return names_.insert_or_assign(std::move(folded), std::move(name)).second;
}

bool NameTable::Remove(std::string_view name) {
  return names_.erase(platform::FoldCase(name)) > 0;
}

bool IsValidName(std::string_view name) {
  if (name.empty() || platform::CharacterCount(name) > kLongestName) return false;
  std::string_view rest = name;
  for (bool first = true; !rest.empty(); first = false) {
    const char c = rest.front();
    if (static_cast<unsigned char>(c) >= 0x80) {
      if (!IsWideLetter(TakeWide(rest))) return false;
      continue;
    }
    const bool starts = IsAsciiLetter(c) || c == '_' || c == '\\';
    if (!starts && (first || !(IsDigit(c) || c == '.' || c == '?'))) return false;
    rest.remove_prefix(1);
  }
  if (IsA1Address(name) || IsR1C1Address(name)) return false;
  return !platform::EqualIgnoringCase(name, "TRUE") && !platform::EqualIgnoringCase(name, "FALSE");
}

}  // namespace tolvane::engine
