#include "hosts/libreoffice/NumberFormatCode.h"

#include <array>

namespace tolvane::libreoffice {

namespace {

char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

// "[RED]" is "[Red]", "[HH]" is "[hh]"; conditions and languages stay.
std::string Bracket(std::string_view content) {
  constexpr std::array<std::string_view, 8> kColours = {"BLACK",   "BLUE", "CYAN",  "GREEN",
                                                        "MAGENTA", "RED",  "WHITE", "YELLOW"};
  std::string result(content);
  for (const std::string_view colour : kColours) {
    if (content != colour) continue;
    for (std::size_t i = 1; i < result.size(); ++i) result[i] = Lower(result[i]);
    return result;
  }
  if (content.find_first_not_of("HMS") == std::string_view::npos) {
    for (char& c : result) c = Lower(c);
  }
  return result;
}

}  // namespace

std::string ExcelNumberFormat(std::string_view code) {
  constexpr std::array<std::string_view, 4> kKept = {"General", "AM/PM", "A/P", "E+"};
  std::string out;
  for (std::size_t i = 0; i < code.size();) {
    const char c = code[i];
    if (c == '"') {
      const std::size_t end = code.find('"', i + 1);
      const std::size_t next = end == std::string_view::npos ? code.size() : end + 1;
      out += code.substr(i, next - i);
      i = next;
      continue;
    }
    if ((c == '\\' || c == '_' || c == '*') && i + 1 < code.size()) {
      out += code.substr(i, 2);
      i += 2;
      continue;
    }
    if (c == '[') {
      const std::size_t end = code.find(']', i);
      if (end != std::string_view::npos) {
        out += '[' + Bracket(code.substr(i + 1, end - i - 1)) + ']';
        i = end + 1;
        continue;
      }
    }
    std::string_view kept;
    for (const std::string_view word : kKept) {
      if (code.substr(i).starts_with(word)) kept = word;
    }
    if (!kept.empty()) {
      out += kept;
      i += kept.size();
      continue;
    }
    out += c == 'E' ? c : Lower(c);
    ++i;
  }
  return out;
}

}  // namespace tolvane::libreoffice
