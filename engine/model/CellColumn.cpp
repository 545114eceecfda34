#include "engine/model/CellColumn.h"

#include <algorithm>
#include <utility>

namespace tolvane::engine {

namespace {

// The bits of `moving`, and what they stand for, go `shift` places up, or down when it is negative. A kind that the
// chunk has none of is not touched, since its memory may be far.
void MovePart(CellChunk& from, std::uint64_t moving, CellChunk& to, int shift) {
  const auto shifted = [&](std::uint64_t mask) { return shift >= 0 ? mask << shift : mask >> -shift; };
  const auto target = [&](int bit) { return static_cast<std::size_t>(bit + shift); };
  ForEachBit(from.values & moving, [&](int bit) {
    Value& value = from.value[static_cast<std::size_t>(bit)];
    to.value[target(bit)] = std::move(value);
    value = Value();
  });
  ForEachBit(from.formulas & moving,
             [&](int bit) { to.formula[target(bit)] = std::exchange(from.formula[static_cast<std::size_t>(bit)], 0); });
  ForEachBit(from.formats & moving,
             [&](int bit) { to.format[target(bit)] = std::exchange(from.format[static_cast<std::size_t>(bit)], 0); });
  to.values |= shifted(from.values & moving);
  to.formulas |= shifted(from.formulas & moving);
  to.formats |= shifted(from.formats & moving);
  from.values &= ~moving;
  from.formulas &= ~moving;
  from.formats &= ~moving;
}

// Moves cells of a chunk so that its first row comes to lie at `first`, counted from 0; that may be off the grid while
// the moving ones are not. chunkFor(number) gives a chunk that is empty there.
template <class ChunkFor>
void MoveCells(CellChunk& from, std::uint64_t moving, int first, ChunkFor&& chunkFor) {
  const int shift = ((first % kChunkRows) + kChunkRows) % kChunkRows;
  const int chunk = (first - shift) / kChunkRows;
  const std::uint64_t low = moving & (~std::uint64_t{0} >> shift);
  if (low != 0) MovePart(from, low, *chunkFor(chunk), shift);
  if (moving != low) MovePart(from, moving & ~low, *chunkFor(chunk + 1), shift - kChunkRows);
}

}  // namespace

CellChunk::CellChunk(const CellChunk& other)
    : values(other.values),
      formulas(other.formulas),
      formats(other.formats),
      formula(other.formula),
      format(other.format) {
  ForEachBit(values, [&](int bit) {
    const auto i = static_cast<std::size_t>(bit);
    value[i] = other.value[i];
  });
}

CellColumn::CellColumn(const CellColumn& other) {
  slots_.reserve(other.slots_.size());
  for (const Slot& slot : other.slots_) slots_.push_back({slot.number, std::make_unique<CellChunk>(*slot.chunk)});
}

std::size_t CellColumn::Search(int chunk) const {
  if (slots_.empty() || slots_.back().number < chunk) return slots_.size();
  const auto found = std::lower_bound(slots_.begin(), slots_.end(), chunk,
                                      [](const Slot& slot, int wanted) { return slot.number < wanted; });
  return static_cast<std::size_t>(found - slots_.begin());
}

CellChunk& CellColumn::Obtain(int chunk) {
  const std::size_t at = Locate(chunk);
  if (at == slots_.size() || slots_[at].number != chunk) {
    slots_.insert(slots_.begin() + static_cast<std::ptrdiff_t>(at), Slot{chunk, std::make_unique<CellChunk>()});
  }
  return *slots_[at].chunk;
}

void CellColumn::DropIfEmpty(int chunk) {
  const std::size_t at = Locate(chunk);
  if (at < slots_.size() && slots_[at].number == chunk && slots_[at].chunk->cells() == 0) {
    slots_.erase(slots_.begin() + static_cast<std::ptrdiff_t>(at));
  }
}

void CellColumn::DropEmpty(int firstChunk, int lastChunk) {
  const auto from = slots_.begin() + static_cast<std::ptrdiff_t>(Locate(firstChunk));
  const auto to = slots_.begin() + static_cast<std::ptrdiff_t>(Locate(lastChunk + 1));
  slots_.erase(std::remove_if(from, to, [](const Slot& slot) { return slot.chunk->cells() == 0; }), to);
}

std::uint64_t CellColumn::MaskOf(int chunk, int firstRow, int lastRow) {
  const int low = std::max(firstRow - 1 - chunk * kChunkRows, 0);
  const int high = std::min(lastRow - 1 - chunk * kChunkRows, kChunkRows - 1);
  if (low > high) return 0;
  return (~std::uint64_t{0} >> (kChunkRows - 1 - (high - low))) << low;
}

void CellColumn::MoveTo(int row, int count, CellColumn& to, int toRow) {
  if (count <= 0) return;
  const int lastRow = row + count - 1;
  const int lastChunk = ChunkOf(lastRow);
  const int delta = toRow - row;
  const std::size_t begin = Locate(ChunkOf(row));
  std::size_t end = begin;
  bool tookWhole = false;
  for (; end < slots_.size() && slots_[end].number <= lastChunk; ++end) {
    Slot& slot = slots_[end];
    const std::uint64_t wanted = MaskOf(slot.number, row, lastRow);
    const std::uint64_t moving = slot.chunk->cells() & wanted;
    if (moving == 0) continue;
    if (moving == slot.chunk->cells() && delta % kChunkRows == 0 &&
        to.Adopt(slot.number + delta / kChunkRows, slot.chunk)) {
      tookWhole = true;
    } else {
      MoveCells(*slot.chunk, moving, slot.number * kChunkRows + delta, [&](int chunk) { return &to.Obtain(chunk); });
    }
  }
  if (!tookWhole) return;
  const auto from = slots_.begin() + static_cast<std::ptrdiff_t>(begin);
  const auto behind = slots_.begin() + static_cast<std::ptrdiff_t>(end);
  slots_.erase(std::remove_if(from, behind, [](const Slot& slot) { return slot.chunk == nullptr; }), behind);
}

bool CellColumn::Adopt(int chunk, std::unique_ptr<CellChunk>& cells) {
  const std::size_t at = Locate(chunk);
  if (at < slots_.size() && slots_[at].number == chunk) return false;
  slots_.insert(slots_.begin() + static_cast<std::ptrdiff_t>(at), Slot{chunk, std::move(cells)});
  return true;
}

void ColumnMover::Move(int row, int count, int toRow) {
  if (count <= 0) return;
  const int delta = toRow - row;
  ForEachSlot(row, row + count - 1, [&](CellColumn::Slot& slot, std::uint64_t mask) {
    const std::uint64_t cells = slot.chunk->cells();
    const std::uint64_t moving = cells & mask;
    const int whole = slot.number + delta / kChunkRows;
    if (moving == cells && delta % kChunkRows == 0 && (built_.empty() || built_.slots_.back().number < whole)) {
      built_.slots_.push_back({whole, std::move(slot.chunk)});
    } else if (moving != 0) {
      MoveCells(*slot.chunk, moving, slot.number * kChunkRows + delta, [&](int chunk) { return &Target(chunk); });
      if (moving == cells) spare_.push_back(std::move(slot.chunk));
    }
  });
}

CellChunk& ColumnMover::Target(int chunk) {
  auto& slots = built_.slots_;
  if (slots.empty() || slots.back().number != chunk) {
    if (spare_.empty()) spare_.push_back(std::make_unique<CellChunk>());
    slots.push_back({chunk, std::move(spare_.back())});
    spare_.pop_back();
  }
  return *slots.back().chunk;
}

CellColumn ColumnMover::Finish() {
  std::erase_if(from_.slots_, [](const CellColumn::Slot& slot) { return slot.chunk == nullptr; });
  return std::move(built_);
}

}  // namespace tolvane::engine
