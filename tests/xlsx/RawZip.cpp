#include "tests/xlsx/RawZip.h"

#define ZLIB_CONST
#include <zlib.h>

#include <new>

#include "engine/xlsx/ZipFormat.h"

namespace tolvane::xlsxtest {

using namespace engine::xlsx;

namespace {

// The fields that stand in front of an entry's data and in the directory.
void AppendFields(std::string& out, const RawEntry& entry, std::size_t nameSize) {
  AppendNumber(out, entry.flags, 2);
  AppendNumber(out, entry.method, 2);
  AppendNumber(out, kFirstDosTime, 4);
  AppendNumber(out, entry.crc.value_or(ChecksumOf(entry.data)), 4);
  AppendNumber(out, entry.packedSize.value_or(static_cast<std::uint32_t>(entry.data.size())), 4);
  AppendNumber(out, entry.size.value_or(static_cast<std::uint32_t>(entry.data.size())), 4);
  AppendNumber(out, nameSize, 2);
}

}  // namespace

std::string RawZip(const std::vector<RawEntry>& entries) {
  constexpr std::uint64_t version = 20;
  std::string bytes, directory;
  for (const RawEntry& entry : entries) {
    const std::size_t offset = bytes.size();
    const std::string& localName = entry.localName ? *entry.localName : entry.name;
    AppendNumber(bytes, kLocalHeader, 4);
    AppendNumber(bytes, version, 2);
    AppendFields(bytes, entry, localName.size());
    AppendNumber(bytes, 0, 2);
    bytes += localName + entry.data;

    AppendNumber(directory, kDirectoryHeader, 4);
    AppendNumber(directory, version, 2);
    AppendNumber(directory, version, 2);
    AppendFields(directory, entry, entry.name.size());
    AppendNumber(directory, entry.extra.size(), 2);
    AppendNumber(directory, 0, 6);  // no comment, the first disk,
    AppendNumber(directory, 0, 4);  // no attributes
    AppendNumber(directory, entry.offset.value_or(static_cast<std::uint32_t>(offset)), 4);
    directory += entry.name + entry.extra;
  }
  const std::size_t start = bytes.size();
  bytes += directory;
  AppendNumber(bytes, kDirectoryEnd, 4);
  AppendNumber(bytes, 0, 4);
  AppendNumber(bytes, entries.size(), 2);
  AppendNumber(bytes, entries.size(), 2);
  AppendNumber(bytes, directory.size(), 4);
  AppendNumber(bytes, start, 4);
  AppendNumber(bytes, 0, 2);
  return bytes;
}

std::string Deflated(const std::string& text) {
  z_stream stream = {};
  if (deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY) != Z_OK)
    throw std::bad_alloc();
  std::string packed(deflateBound(&stream, static_cast<uLong>(text.size())), '\0');
  stream.next_in = reinterpret_cast<const Bytef*>(text.data());
  stream.avail_in = static_cast<uInt>(text.size());
  stream.next_out = reinterpret_cast<Bytef*>(packed.data());
  stream.avail_out = static_cast<uInt>(packed.size());
  deflate(&stream, Z_FINISH);
  packed.resize(packed.size() - stream.avail_out);
  deflateEnd(&stream);
  return packed;
}

std::uint32_t ChecksumOf(const std::string& text) {
  return static_cast<std::uint32_t>(
      crc32_z(crc32(0, nullptr, 0), reinterpret_cast<const Bytef*>(text.data()), text.size()));
}

}  // namespace tolvane::xlsxtest
