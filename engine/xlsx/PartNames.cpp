#include "engine/xlsx/PartNames.h"

namespace tolvane::engine::xlsx {

namespace {

int HexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  const char lower = static_cast<char>(c | 0x20);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

// What a path of a URI may hold as it is.
bool IsPlain(char c) {
  const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
  return isLetter || std::string_view("/-._~!$&'()*+,;=:@").find(c) != std::string_view::npos;
}

}  // namespace

std::string WithoutPercent(std::string_view name) {
  std::string plain;
  for (std::size_t i = 0; i < name.size(); ++i) {
    if (name[i] == '%' && i + 2 < name.size() && HexValue(name[i + 1]) >= 0 && HexValue(name[i + 2]) >= 0) {
      plain.push_back(static_cast<char>(HexValue(name[i + 1]) * 16 + HexValue(name[i + 2])));
      i += 2;
    } else {
      plain.push_back(name[i]);
    }
  }
  return plain;
}

std::string WithPercent(std::string_view name) {
  constexpr char digits[] = "0123456789ABCDEF";
  std::string uri;
  for (const char c : name) {
    if (IsPlain(c)) {
      uri.push_back(c);
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    uri.push_back('%');
    uri.push_back(digits[byte >> 4]);
    uri.push_back(digits[byte & 0xF]);
  }
  return uri;
}

std::string PartKeyOf(std::string_view name) {
  std::string key = WithoutPercent(name);
  for (char& c : key) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + ('a' - 'A'));
  }
  return key;
}

}  // namespace tolvane::engine::xlsx
