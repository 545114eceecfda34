#define ZLIB_CONST
#include <zlib.h>

#include <array>
#include <limits>
#include <utility>

#include "engine/xlsx/Zip.h"
#include "engine/xlsx/ZipFormat.h"

namespace tolvane::engine::xlsx {

namespace {

constexpr std::uint16_t kVersion = 20;  // the first that knows deflated entries
// Sheets are many and repeat themselves: the fastest level costs a tenth more bytes than the usual one and a third of
// its time.
constexpr int kLevel = 1;
constexpr std::size_t kGather = std::size_t{256} << 10;
constexpr std::uint64_t kLimit32 = std::numeric_limits<std::uint32_t>::max();

void RequireShort(std::uint64_t bytes) {
  if (bytes >= kLimit32) throw XlsxError("The workbook would make a file of more than 4 gigabytes");
}

// What the local header and the directory tell alike.
void AppendCommon(std::string& out, const ZipEntry& entry) {
  AppendNumber(out, kVersion, 2);
  AppendNumber(out, entry.flags, 2);
  AppendNumber(out, entry.method, 2);
  AppendNumber(out, entry.dosTime, 4);
  AppendNumber(out, entry.crc, 4);
  AppendNumber(out, entry.compressedSize, 4);
  AppendNumber(out, entry.size, 4);
  AppendNumber(out, entry.name.size(), 2);
  AppendNumber(out, 0, 2);  // no extra field
}

std::string LocalHeader(const ZipEntry& entry) {
  std::string header;
  AppendNumber(header, kLocalHeader, 4);
  AppendCommon(header, entry);
  return header + entry.name;
}

}  // namespace

struct ZipWriter::Deflater {
  z_stream zlib = {};
  std::string gathered;
  std::array<char, 65536> block;

  Deflater() {
    if (deflateInit2(&zlib, kLevel, Z_DEFLATED, -MAX_WBITS, MAX_MEM_LEVEL, Z_DEFAULT_STRATEGY) != Z_OK) {
      throw std::bad_alloc();
    }
    gathered.reserve(kGather + 1024);
  }
  Deflater(const Deflater&) = delete;
  Deflater& operator=(const Deflater&) = delete;
  ~Deflater() { deflateEnd(&zlib); }

  void Flush(ZipEntry& entry, std::string& out, int mode) {
    entry.crc = static_cast<std::uint32_t>(
        crc32_z(entry.crc, reinterpret_cast<const Bytef*>(gathered.data()), gathered.size()));
    entry.size += gathered.size();
    RequireShort(entry.size);
    zlib.next_in = reinterpret_cast<const Bytef*>(gathered.data());
    zlib.avail_in = static_cast<uInt>(gathered.size());
    do {
      zlib.next_out = reinterpret_cast<Bytef*>(block.data());
      zlib.avail_out = static_cast<uInt>(block.size());
      deflate(&zlib, mode);
      out.append(block.data(), block.size() - zlib.avail_out);
    } while (zlib.avail_out == 0);
    gathered.clear();
  }
};

ZipWriter::ZipWriter() : deflater_(std::make_unique<Deflater>()) {}
ZipWriter::~ZipWriter() = default;

void ZipWriter::StartEntry(ZipEntry entry) {
  if (entries_.size() == kMostEntries) throw XlsxError("The workbook has too many parts for one file");
  RequireShort(bytes_.size());
  headers_.push_back(bytes_.size());
  bytes_ += LocalHeader(entry);
  entry.dataOffset = bytes_.size();
  entries_.push_back(std::move(entry));
}

void ZipWriter::Copy(const ZipArchive& archive, const ZipEntry& entry) {
  ZipEntry copy = entry;
  RequireShort(copy.size);
  copy.flags &= static_cast<std::uint16_t>(~kFlagDescriptor);  // the header tells the sizes itself
  StartEntry(std::move(copy));
  bytes_ += archive.CompressedBytes(entry);
}

void ZipWriter::Begin(std::string_view name) {
  ZipEntry entry;
  entry.name = name;
  entry.flags = kFlagUtf8;
  entry.method = kDeflated;
  entry.dosTime = kFirstDosTime;
  StartEntry(std::move(entry));
  deflateReset(&deflater_->zlib);
}

void ZipWriter::Write(std::string_view bytes) {
  for (std::size_t at = 0; at < bytes.size(); at += kGather) {
    deflater_->gathered += bytes.substr(at, kGather);
    if (deflater_->gathered.size() >= kGather) deflater_->Flush(entries_.back(), bytes_, Z_NO_FLUSH);
  }
}

void ZipWriter::End() {
  ZipEntry& entry = entries_.back();
  deflater_->Flush(entry, bytes_, Z_FINISH);
  entry.compressedSize = bytes_.size() - entry.dataOffset;
  RequireShort(entry.compressedSize);
  const std::string header = LocalHeader(entry);
  bytes_.replace(headers_.back(), header.size(), header);
}

std::string ZipWriter::Finish() {
  const std::size_t start = bytes_.size();
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    const ZipEntry& entry = entries_[i];
    AppendNumber(bytes_, kDirectoryHeader, 4);
    AppendNumber(bytes_, kVersion, 2);
    AppendCommon(bytes_, entry);
    AppendNumber(bytes_, 0, 2);  // comment
    AppendNumber(bytes_, 0, 2);  // disk
    AppendNumber(bytes_, 0, 2);  // internal attributes
    AppendNumber(bytes_, entry.externalAttributes, 4);
    AppendNumber(bytes_, headers_[i], 4);
    bytes_ += entry.name;
  }
  RequireShort(bytes_.size());
  const std::size_t size = bytes_.size() - start;
  AppendNumber(bytes_, kDirectoryEnd, 4);
  AppendNumber(bytes_, 0, 4);  // disks
  AppendNumber(bytes_, entries_.size(), 2);
  AppendNumber(bytes_, entries_.size(), 2);
  AppendNumber(bytes_, size, 4);
  AppendNumber(bytes_, start, 4);
  AppendNumber(bytes_, 0, 2);  // comment
  entries_.clear();
  headers_.clear();
  return std::exchange(bytes_, {});
}

}  // namespace tolvane::engine::xlsx
