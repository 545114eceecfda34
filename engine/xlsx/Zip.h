#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "engine/xlsx/Limits.h"

namespace tolvane::engine::xlsx {

// One file of a ZIP archive, as its directory tells it.
struct ZipEntry {
  std::string name;
  std::uint16_t flags = 0;
  std::uint16_t method = 0;  // 0 stored, 8 deflated
  std::uint32_t dosTime = 0;
  std::uint32_t crc = 0;
  std::uint64_t compressedSize = 0;
  std::uint64_t size = 0;
  std::uint32_t externalAttributes = 0;
  std::size_t dataOffset = 0;
};

// A ZIP archive in memory. All its entries have been checked to lie within it and apart from each other, under names
// that are distinct (see PartKeyOf) and lead nowhere else.
class ZipArchive {
 public:
  ZipArchive() = default;
  explicit ZipArchive(std::string bytes);  // throws XlsxError

  const std::vector<ZipEntry>& entries() const { return entries_; }
  const ZipEntry* Find(std::string_view name) const;
  std::string_view CompressedBytes(const ZipEntry& entry) const {
    return std::string_view(bytes_).substr(entry.dataOffset, entry.compressedSize);
  }
  const std::string& bytes() const { return bytes_; }

  // The content of an entry, checked against its checksum. Throws XlsxError, also where it is longer than `most`.
  std::string Read(const ZipEntry& entry, Budget& budget, std::size_t most = kMostPartBytes) const;

 private:
  void ReadDirectory();
  void AddEntry(std::size_t& at);
  void RequireApart() const;

  std::string bytes_;
  std::vector<ZipEntry> entries_;
  std::unordered_map<std::string, std::size_t> byName_;  // by PartKeyOf
};

// Inflates an entry piece by piece.
class ZipEntryStream {
 public:
  ZipEntryStream(const ZipArchive& archive, const ZipEntry& entry, Budget& budget);
  ~ZipEntryStream();
  ZipEntryStream(const ZipEntryStream&) = delete;
  ZipEntryStream& operator=(const ZipEntryStream&) = delete;

  // Fills at most `most` bytes; 0 at the end. Throws XlsxError for broken data.
  std::size_t Read(char* to, std::size_t most);

 private:
  struct State;
  std::unique_ptr<State> state_;
};

// Builds an archive in memory.
class ZipWriter {
 public:
  ZipWriter();
  ~ZipWriter();
  ZipWriter(const ZipWriter&) = delete;
  ZipWriter& operator=(const ZipWriter&) = delete;

  // An entry of another archive, its compressed bytes as they are.
  void Copy(const ZipArchive& archive, const ZipEntry& entry);
  void Begin(std::string_view name);
  void Write(std::string_view bytes);
  void End();
  void Add(std::string_view name, std::string_view content) {
    Begin(name);
    Write(content);
    End();
  }
  // The whole archive; the writer is empty afterwards.
  std::string Finish();

 private:
  struct Deflater;
  void StartEntry(ZipEntry entry);

  std::string bytes_;
  std::vector<ZipEntry> entries_;
  std::vector<std::size_t> headers_;
  std::unique_ptr<Deflater> deflater_;
};

}  // namespace tolvane::engine::xlsx
