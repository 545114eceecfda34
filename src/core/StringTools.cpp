#include "src/core/StringTools.h"

#include <algorithm>

#include "platform/Text.h"

namespace tolvane::accounts {

namespace {

// The bytes of the character that a text begins with; a byte that is no UTF-8 counts as one.
std::string_view FirstCharacter(std::string_view text) {
  std::size_t size = 1;
  while (size < text.size() && (static_cast<unsigned char>(text[size]) & 0xC0) == 0x80) ++size;
  return text.substr(0, size);
}

bool IsDigit(std::string_view character) {
  return character.size() == 1 && character[0] >= '0' && character[0] <= '9';
}

// UTF-8 sorts by its bytes as by its characters.
bool IsInClass(std::string_view character, std::string_view members) {
  while (!members.empty()) {
    const std::string_view from = FirstCharacter(members);
    members.remove_prefix(from.size());
    if (members.size() > 1 && members[0] == '-') {
      members.remove_prefix(1);
      const std::string_view to = FirstCharacter(members);
      members.remove_prefix(to.size());
      if (from <= character && character <= to) return true;
    } else if (from == character) {
      return true;
    }
  }
  return false;
}

bool Matches(std::string_view character, std::string_view pattern) {
  if (pattern == "?") return true;
  if (pattern == "#") return IsDigit(character);
  if (pattern.size() < 2 || pattern.front() != '[' || pattern.back() != ']') return character == pattern;
  pattern = pattern.substr(1, pattern.size() - 2);
  if (!pattern.empty() && pattern.front() == '!') return !IsInClass(character, pattern.substr(1));
  return IsInClass(character, pattern);
}

}  // namespace

std::string sAlphanumericOnly(std::string_view sText) {
  std::string upper = platform::UpperCase(sText);
  std::erase_if(upper, [](char c) { return !((c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z')); });
  return upper;
}

std::string sFilterChars(std::string_view sText, std::string_view sLikePattern) {
  std::string kept;
  while (!sText.empty()) {
    const std::string_view character = FirstCharacter(sText);
    if (Matches(character, sLikePattern)) kept += character;
    sText.remove_prefix(character.size());
  }
  return kept;
}

std::string sCollapseBlanks(std::string_view sText) {
  std::string collapsed(sText);
  collapsed.erase(std::unique(collapsed.begin(), collapsed.end(), [](char a, char b) { return a == ' ' && b == ' '; }),
                  collapsed.end());
  return collapsed;
}

std::string sLastPathPart(std::string_view sPath) {
  const auto separator = sPath.find_last_of("\\/");
  return std::string(separator == std::string_view::npos ? sPath : sPath.substr(separator + 1));
}

void MeasureClipboardText(std::string_view sText, int& lRows, int& lColumns) {
  lRows = 0;
  lColumns = 0;
  while (!sText.empty()) {
    const auto end = std::min(sText.find_first_of("\r\n"), sText.size());
    const auto tabs = std::count(sText.begin(), sText.begin() + static_cast<std::ptrdiff_t>(end), '\t');
    lColumns = std::max(lColumns, static_cast<int>(tabs) + 1);
    ++lRows;
    const bool bPair = end + 1 < sText.size() && sText[end] == '\r' && sText[end + 1] == '\n';
    sText.remove_prefix(std::min(sText.size(), end + (bPair ? 2 : 1)));
  }
}

std::string sQuoted(std::string_view sName) {
  std::string quoted = "'";
  for (const char c : sName) quoted.append(c == '\'' ? 2 : 1, c);
  return quoted + "'";
}

}  // namespace tolvane::accounts
