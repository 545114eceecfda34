#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tolvane::xlsxtest {

// An entry of an archive as an attacker writes it: whatever is told may be a lie.
struct RawEntry {
  std::string name;
  std::string data;  // as it lies in the archive
  std::uint16_t method = 0;
  std::uint16_t flags = 0;
  std::optional<std::uint32_t> crc = {};         // that of the data, unless told
  std::optional<std::uint32_t> size = {};        // of the content; that of the data, unless told
  std::optional<std::uint32_t> packedSize = {};  // the same
  std::optional<std::string> localName = {};     // the name in front of the data
  std::optional<std::uint32_t> offset = {};      // where the directory says that it lies
  std::string extra = {};                        // in the directory
};

std::string RawZip(const std::vector<RawEntry>& entries);

// `text` packed, as it lies in an archive (method 8).
std::string Deflated(const std::string& text);
std::uint32_t ChecksumOf(const std::string& text);

}  // namespace tolvane::xlsxtest
