#include "engine/model/CellColumn.h"

#include <algorithm>
#include <utility>

namespace tolvane::engine {

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
      MoveBits(*slot.chunk, moving, slot.number * kChunkRows + 1 + delta, to);
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

// `firstRow`: where the chunk's first row comes to lie; it may be off the grid while the moving ones are not.
void CellColumn::MoveBits(CellChunk& from, std::uint64_t moving, int firstRow, CellColumn& to) {
  int reached = -1;
  CellChunk* target = nullptr;
  ForEachBit(moving, [&](int bit) {
    const int newRow = firstRow + bit;
    if (ChunkOf(newRow) != reached) {
      reached = ChunkOf(newRow);
      target = &to.Obtain(reached);
    }
    const auto at = static_cast<std::size_t>(bit);
    const int newBit = BitOf(newRow);
    target->SetValue(newBit, std::move(from.value[at]));
    target->SetFormula(newBit, from.formula[at]);
    target->SetFormat(newBit, from.format[at]);
    from.value[at] = Value();
    from.formula[at] = 0;
    from.format[at] = 0;
  });
  from.values &= ~moving;
  from.formulas &= ~moving;
  from.formats &= ~moving;
}

}  // namespace tolvane::engine
