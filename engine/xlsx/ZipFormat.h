#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tolvane::engine::xlsx {

// The records of a ZIP archive: signatures, sizes of their fixed parts, little-endian numbers.
inline constexpr std::uint32_t kLocalHeader = 0x04034b50;
inline constexpr std::uint32_t kDirectoryHeader = 0x02014b50;
inline constexpr std::uint32_t kDirectoryEnd = 0x06054b50;
inline constexpr std::uint32_t kDirectoryEnd64 = 0x06064b50;
inline constexpr std::uint32_t kDirectoryEnd64Locator = 0x07064b50;
inline constexpr std::size_t kLocalHeaderSize = 30;
inline constexpr std::size_t kDirectoryHeaderSize = 46;
inline constexpr std::size_t kDirectoryEndSize = 22;
inline constexpr std::size_t kDirectoryEnd64Size = 56;
inline constexpr std::size_t kDirectoryEnd64LocatorSize = 20;
inline constexpr std::size_t kLongestComment = 65535;
inline constexpr std::uint16_t kStored = 0;
inline constexpr std::uint16_t kDeflated = 8;
inline constexpr std::uint16_t kFlagEncrypted = 1;
inline constexpr std::uint16_t kFlagDescriptor = 8;
inline constexpr std::uint16_t kFlagUtf8 = 0x800;
// 1 January 1980: archives of the same content are the same bytes.
inline constexpr std::uint32_t kFirstDosTime = 0x00210000;

// Reads little-endian numbers; the caller has checked that the bytes are there.
inline std::uint64_t NumberAt(std::string_view bytes, std::size_t at, int size) {
  std::uint64_t number = 0;
  for (int i = size - 1; i >= 0; --i) {
    number = number << 8 | static_cast<unsigned char>(bytes[at + static_cast<std::size_t>(i)]);
  }
  return number;
}
inline std::uint16_t Number16(std::string_view bytes, std::size_t at) {
  return static_cast<std::uint16_t>(NumberAt(bytes, at, 2));
}
inline std::uint32_t Number32(std::string_view bytes, std::size_t at) {
  return static_cast<std::uint32_t>(NumberAt(bytes, at, 4));
}
inline std::uint64_t Number64(std::string_view bytes, std::size_t at) {
  return NumberAt(bytes, at, 8);
}

inline void AppendNumber(std::string& out, std::uint64_t number, int size) {
  for (int i = 0; i < size; ++i) out.push_back(static_cast<char>(number >> (8 * i) & 0xFF));
}

}  // namespace tolvane::engine::xlsx
