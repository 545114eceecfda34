#include "apps/tolvane/TextTable.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "platform/Text.h"

namespace tolvane::app {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

bool IsDangerous(std::uint32_t character) {
  const bool control = character < 0x20 || (0x7F <= character && character <= 0x9F);
  const bool direction = character == 0x061C || character == 0x200E || character == 0x200F ||
                         (0x202A <= character && character <= 0x202E) || (0x2066 <= character && character <= 0x2069);
  const bool line = character == 0x2028 || character == 0x2029;
  return control || direction || line;
}

struct Decoded {
  std::uint32_t character;
  std::size_t bytes;
};

// Of valid UTF-8, which all texts of the program are.
Decoded DecodeAt(std::string_view text, std::size_t at) {
  const auto byte = [&](std::size_t i) { return static_cast<std::uint32_t>(static_cast<unsigned char>(text[at + i])); };
  const std::uint32_t lead = byte(0);
  const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  if (length == 1 || at + length > text.size()) return {lead, 1};
  std::uint32_t character = lead & (0xFFu >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) character = character << 6 | (byte(i) & 0x3Fu);
  return {character, length};
}

}  // namespace

std::string VisibleText(std::string_view text) {
  std::string visible;
  visible.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const Decoded next = DecodeAt(text, at);
    visible += IsDangerous(next.character) ? kReplacement : text.substr(at, next.bytes);
    at += next.bytes;
  }
  return visible;
}

void TextTable::AddRow(std::vector<Cell> cells) {
  for (Cell& cell : cells) cell.text = VisibleText(cell.text);
  rows_.push_back(std::move(cells));
}

void TextTable::Print(std::ostream& output) const {
  std::vector<std::size_t> widths;
  for (const auto& row : rows_) {
    if (row.size() > widths.size()) widths.resize(row.size());
    for (std::size_t i = 0; i < row.size(); ++i) {
      widths[i] = std::max(widths[i], platform::CharacterCount(row[i].text));
    }
  }
  for (const auto& row : rows_) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
      if (i > 0) line += "  ";
      const std::string padding(widths[i] - platform::CharacterCount(row[i].text), ' ');
      line += row[i].right ? padding + row[i].text : row[i].text + padding;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    output << line << '\n';
  }
}

}  // namespace tolvane::app
