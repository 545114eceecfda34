#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "engine/xlsx/Zip.h"
#include "tests/xlsx/RawZip.h"

namespace tolvane::fuzz {

// Little, so that an input which asks for much is soon over.
inline constexpr std::uint64_t kFuzzBudget = std::uint64_t{8} << 20;
// So small that every tag falls across its edge.
inline constexpr std::size_t kTinyWindow = 16;

// An input as the only part of an archive, stored as it is.
class PartInput {
 public:
  PartInput(std::string path, std::string_view content)
      : path_(std::move(path)), archive_(xlsxtest::RawZip({{path_, std::string(content)}})) {}

  const engine::xlsx::ZipArchive& archive() const { return archive_; }
  const engine::xlsx::ZipEntry& entry() const { return archive_.entries().front(); }
  const std::string& path() const { return path_; }

 private:
  std::string path_;
  engine::xlsx::ZipArchive archive_;
};

}  // namespace tolvane::fuzz
