#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace tolvane::platform {

// UTF-8 byte by byte. For the sources of this folder only.

constexpr bool IsAsciiByte(char c) {
  return static_cast<unsigned char>(c) < 0x80;
}
constexpr char AsciiLower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}
constexpr char AsciiUpper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
}

// The length of the ASCII prefix, found eight bytes at a time: almost all text that comes by is ASCII.
inline std::size_t AsciiPrefix(std::string_view text) {
  std::size_t at = 0;
  for (; at + sizeof(std::uint64_t) <= text.size(); at += sizeof(std::uint64_t)) {
    std::uint64_t block = 0;
    std::memcpy(&block, text.data() + at, sizeof block);
    if ((block & 0x8080808080808080U) != 0) break;
  }
  while (at < text.size() && IsAsciiByte(text[at])) ++at;
  return at;
}

// The character at byte `at`, which moves behind it. Negative for bytes that are none: `at` then moves behind what
// could still have begun a character (the Unicode standard's maximal subpart, table 3-7), at least by one.
inline std::int32_t DecodeUtf8(std::string_view text, std::size_t& at) {
  const auto byte = [&text](std::size_t i) -> unsigned {
    return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u;
  };
  const unsigned lead = byte(at++);
  if (lead < 0x80) return static_cast<std::int32_t>(lead);
  if (lead < 0xC2 || lead > 0xF4) return -1;
  // The second byte alone has narrower bounds, against overlong forms, surrogates and what lies beyond U+10FFFF.
  const unsigned low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  const unsigned high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  const unsigned second = byte(at);
  if (second < low || second > high) return -1;
  ++at;
  if (lead < 0xE0) return static_cast<std::int32_t>((lead & 0x1F) << 6 | (second & 0x3F));
  std::uint32_t character = (lead & (lead < 0xF0 ? 0x0F : 0x07)) << 6 | (second & 0x3F);
  for (int more = lead < 0xF0 ? 1 : 2; more > 0; --more) {
    const unsigned next = byte(at);
    if ((next & 0xC0) != 0x80) return -1;
    ++at;
    character = character << 6 | (next & 0x3F);
  }
  return static_cast<std::int32_t>(character);
}

}  // namespace tolvane::platform
