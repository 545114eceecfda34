#define ZLIB_CONST
#include <zlib.h>

#include <algorithm>
#include <utility>

#include "engine/xlsx/PartNames.h"
#include "engine/xlsx/Zip.h"
#include "engine/xlsx/ZipFormat.h"

namespace tolvane::engine::xlsx {

namespace {

constexpr std::uint64_t kLargestPart = 0xFFFFFFFE;
constexpr std::size_t kFeed = std::size_t{1} << 30;  // zlib counts input in 32 bits

[[noreturn]] void FailArchive(const std::string& why) {
  throw XlsxError("The file is damaged or no workbook: " + why + ". Take a backup of it, or repair it with Excel");
}

bool IsSafeName(std::string_view name) {
  if (name.empty() || name.front() == '/' || name.find('\\') != std::string_view::npos) return false;
  if (std::any_of(name.begin(), name.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; })) return false;
  for (std::size_t at = 0; at <= name.size();) {
    const std::size_t end = std::min(name.find('/', at), name.size());
    const std::string_view segment = name.substr(at, end - at);
    if (segment == ".." || segment == ".") return false;
    at = end + 1;
  }
  return true;
}

}  // namespace

ZipArchive::ZipArchive(std::string bytes) : bytes_(std::move(bytes)) {
  if (bytes_.empty()) FailArchive("it is empty");
  if (bytes_.starts_with("\xD0\xCF\x11\xE0")) {
    throw XlsxError(
        "The file is encrypted with a password or in Excel's old binary format. Open it with Excel and save it as an "
        ".xlsx file without a password");
  }
  ReadDirectory();
  RequireApart();
}

void ZipArchive::ReadDirectory() {
  const std::string_view all = bytes_;
  if (all.size() < kDirectoryEndSize) FailArchive("it is too short for an archive");
  std::size_t end = all.size() - kDirectoryEndSize;
  const std::size_t lowest = end > kLongestComment ? end - kLongestComment : 0;
  while (Number32(all, end) != kDirectoryEnd) {
    if (end == lowest) FailArchive("it has no directory of an archive; it may have been cut off");
    --end;
  }
  std::uint64_t count = Number16(all, end + 10);
  std::uint64_t size = Number32(all, end + 12);
  std::uint64_t offset = Number32(all, end + 16);
  if (end >= kDirectoryEnd64LocatorSize && Number32(all, end - kDirectoryEnd64LocatorSize) == kDirectoryEnd64Locator) {
    const std::uint64_t at = Number64(all, end - kDirectoryEnd64LocatorSize + 8);
    if (at > all.size() || all.size() - at < kDirectoryEnd64Size || Number32(all, at) != kDirectoryEnd64) {
      FailArchive("its long directory is not where it should be");
    }
    count = Number64(all, at + 32);
    size = Number64(all, at + 40);
    offset = Number64(all, at + 48);
  }
  if (count > kMostEntries) FailArchive("it has more than " + std::to_string(kMostEntries) + " parts");
  if (offset > end || size > end - offset) FailArchive("its directory lies outside of it");
  entries_.reserve(count);
  std::size_t at = offset;
  for (std::uint64_t i = 0; i < count; ++i) AddEntry(at);
}

void ZipArchive::AddEntry(std::size_t& at) {
  const std::string_view all = bytes_;
  if (all.size() - at < kDirectoryHeaderSize || Number32(all, at) != kDirectoryHeader) {
    FailArchive("its directory breaks off");
  }
  ZipEntry entry;
  entry.flags = Number16(all, at + 8);
  entry.method = Number16(all, at + 10);
  entry.dosTime = Number32(all, at + 12);
  entry.crc = Number32(all, at + 16);
  entry.compressedSize = Number32(all, at + 20);
  entry.size = Number32(all, at + 24);
  const std::size_t nameSize = Number16(all, at + 28);
  const std::size_t extraSize = Number16(all, at + 30);
  const std::size_t commentSize = Number16(all, at + 32);
  entry.externalAttributes = Number32(all, at + 38);
  std::uint64_t header = Number32(all, at + 42);
  at += kDirectoryHeaderSize;
  if (all.size() - at < nameSize + extraSize + commentSize) FailArchive("its directory breaks off");
  entry.name = all.substr(at, nameSize);

  // Sizes beyond 32 bits stand in an extra field, in this order, where the usual place is full.
  const std::string_view extra = all.substr(at + nameSize, extraSize);
  for (std::size_t field = 0; field + 4 <= extra.size();) {
    const std::size_t size = Number16(extra, field + 2);
    if (size > extra.size() - field - 4) break;
    if (Number16(extra, field) == 1) {
      std::string_view numbers = extra.substr(field + 4, size);
      const auto take = [&numbers](std::uint64_t& number) {
        if (number != 0xFFFFFFFF || numbers.size() < 8) return;
        number = Number64(numbers, 0);
        numbers.remove_prefix(8);
      };
      take(entry.size);
      take(entry.compressedSize);
      take(header);
    }
    field += 4 + size;
  }
  at += nameSize + extraSize + commentSize;

  if (!entry.name.empty() && entry.name.back() == '/') return;  // a folder holds nothing
  if (!IsSafeName(entry.name)) FailArchive("one of its parts has the name \"" + entry.name + "\"");
  if ((entry.flags & kFlagEncrypted) != 0) FailArchive("its part " + entry.name + " is encrypted");
  if (entry.method != kStored && entry.method != kDeflated) {
    FailArchive("its part " + entry.name + " is packed in an unknown way");
  }
  // A part that is kept must be one that can be written again.
  if (entry.size > kLargestPart) FailArchive("its part " + entry.name + " is larger than 4 gigabytes");
  if (header > all.size() || all.size() - header < kLocalHeaderSize || Number32(all, header) != kLocalHeader) {
    FailArchive("its part " + entry.name + " is not where it should be");
  }
  const std::size_t localName = Number16(all, header + 26);
  entry.dataOffset = header + kLocalHeaderSize + localName + Number16(all, header + 28);
  if (entry.dataOffset > all.size() || entry.compressedSize > all.size() - entry.dataOffset) {
    FailArchive("its part " + entry.name + " is cut off");
  }
  if (all.substr(header + kLocalHeaderSize, localName) != entry.name) {
    FailArchive("its part " + entry.name + " goes by another name elsewhere");
  }
  if (!byName_.emplace(PartKeyOf(entry.name), entries_.size()).second) {
    FailArchive("it has two parts named " + entry.name);
  }
  entries_.push_back(std::move(entry));
}

void ZipArchive::RequireApart() const {
  std::vector<const ZipEntry*> order;
  order.reserve(entries_.size());
  for (const ZipEntry& entry : entries_) order.push_back(&entry);
  std::sort(order.begin(), order.end(),
            [](const ZipEntry* a, const ZipEntry* b) { return a->dataOffset < b->dataOffset; });
  for (std::size_t i = 1; i < order.size(); ++i) {
    const std::uint64_t between = kLocalHeaderSize + order[i]->name.size();
    if (order[i - 1]->dataOffset + order[i - 1]->compressedSize + between > order[i]->dataOffset) {
      FailArchive("its parts " + order[i - 1]->name + " and " + order[i]->name + " overlap");
    }
  }
}

const ZipEntry* ZipArchive::Find(std::string_view name) const {
  const auto found = byName_.find(PartKeyOf(name));
  return found == byName_.end() ? nullptr : &entries_[found->second];
}

std::string ZipArchive::Read(const ZipEntry& entry, Budget& budget, std::size_t most) const {
  if (entry.size > most) {
    throw XlsxError("The part " + entry.name + " of the file is too large: " + std::to_string(entry.size) + " bytes");
  }
  ZipEntryStream stream(*this, entry, budget);
  std::string content(entry.size, '\0');
  std::size_t filled = 0;
  while (const std::size_t read = stream.Read(content.data() + filled, content.size() - filled)) filled += read;
  return content;
}

// --- inflating
// -----------------------------------------------------------------------------------------------------------

struct ZipEntryStream::State {
  const ZipEntry& entry;
  Budget& budget;
  std::string_view input;
  std::uint64_t produced = 0;
  uLong crc = crc32(0, nullptr, 0);
  z_stream zlib = {};
  bool ended = false;

  [[noreturn]] void Fail(const std::string& why) const { FailArchive("its part " + entry.name + " " + why); }
};

ZipEntryStream::ZipEntryStream(const ZipArchive& archive, const ZipEntry& entry, Budget& budget)
    : state_(std::make_unique<State>(State{entry, budget, archive.CompressedBytes(entry)})) {
  budget.ReadingPart(entry.name);
  // A raw stream: the archive has a header and a checksum of its own.
  if (entry.method == kDeflated && inflateInit2(&state_->zlib, -MAX_WBITS) != Z_OK) throw std::bad_alloc();
}

ZipEntryStream::~ZipEntryStream() {
  if (state_->entry.method == kDeflated) inflateEnd(&state_->zlib);
}

std::size_t ZipEntryStream::Read(char* to, std::size_t most) {
  State& state = *state_;
  if (state.ended) return 0;
  std::size_t got = 0;
  bool complete = false;
  if (state.entry.method == kStored) {
    got = std::min(most, state.input.size());
    std::copy_n(state.input.data(), got, to);
    state.input.remove_prefix(got);
    complete = state.input.empty();
  } else {
    z_stream& zlib = state.zlib;
    // One byte more than announced shows a lie; the announced size itself may be all that fits.
    char beyond = 0;
    const bool isFull = most == 0;
    zlib.next_out = reinterpret_cast<Bytef*>(isFull ? &beyond : to);
    zlib.avail_out = static_cast<uInt>(isFull ? 1 : std::min(most, kFeed));
    const uInt room = zlib.avail_out;
    while (zlib.avail_out > 0 && !complete) {
      if (zlib.avail_in == 0) {
        const std::size_t piece = std::min(state.input.size(), kFeed);
        zlib.next_in = reinterpret_cast<const Bytef*>(state.input.data());
        zlib.avail_in = static_cast<uInt>(piece);
        state.input.remove_prefix(piece);
      }
      const int result = inflate(&zlib, Z_NO_FLUSH);
      if (result == Z_MEM_ERROR) throw std::bad_alloc();
      complete = result == Z_STREAM_END;
      if (!complete && (result != Z_OK || (zlib.avail_in == 0 && state.input.empty() && zlib.avail_out > 0))) {
        state.Fail("cannot be unpacked");
      }
    }
    got = room - zlib.avail_out;
    if (isFull && got > 0) state.Fail("is longer than it says");
  }
  state.budget.Spend(got);
  state.produced += got;
  state.crc = crc32_z(state.crc, reinterpret_cast<const Bytef*>(to), most == 0 ? 0 : got);
  if (state.produced > state.entry.size) state.Fail("is longer than it says");
  if (complete || (got == 0 && state.produced == state.entry.size)) {
    state.ended = true;
    if (state.produced != state.entry.size) state.Fail("is shorter than it says");
    if (state.crc != state.entry.crc) state.Fail("does not match its checksum");
  }
  return got;
}

}  // namespace tolvane::engine::xlsx
