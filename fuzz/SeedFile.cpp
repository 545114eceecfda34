#include "fuzz/SeedFile.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace tolvane::fuzz {

std::string FromHex(std::string_view text) {
  std::string bytes;
  int high = -1;
  for (const char c : text) {
    if (c == ' ' || c == '\n' || c == '\r') continue;
    const std::size_t digit = std::string_view("0123456789abcdefABCDEF").find(c);
    if (digit == std::string_view::npos) throw std::invalid_argument("no hexadecimal digit in a seed");
    const int value = static_cast<int>(digit < 16 ? digit : digit - 6);
    if (high < 0) {
      high = value;
    } else {
      bytes.push_back(static_cast<char>(high * 16 + value));
      high = -1;
    }
  }
  if (high >= 0) throw std::invalid_argument("half a byte at the end of a seed");
  return bytes;
}

std::string ReadSeed(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::string content(std::istreambuf_iterator<char>(stream), {});
  return file.extension() == ".hex" ? FromHex(content) : content;
}

}  // namespace tolvane::fuzz
