#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "engine/model/Format.h"
#include "engine/model/Geometry.h"
#include "engine/model/Value.h"

namespace tolvane::engine {

inline constexpr int kChunkRows = 64;  // as many as a mask has bits

// A formula's place in its store, from 1; 0 for none.
using FormulaNumber = std::uint32_t;

// Sixty-four neighbouring rows of one column. A mask's bit tells whether the row holds something of that kind; what a
// cleared bit belongs to is empty or 0.
struct CellChunk {
  std::uint64_t values = 0;
  std::uint64_t formulas = 0;
  std::uint64_t formats = 0;
  std::array<Value, kChunkRows> value;
  std::array<FormulaNumber, kChunkRows> formula{};
  std::array<FormatId, kChunkRows> format{};

  CellChunk() = default;
  CellChunk(const CellChunk& other);
  CellChunk& operator=(const CellChunk&) = delete;

  std::uint64_t contents() const { return values | formulas; }
  std::uint64_t cells() const { return values | formulas | formats; }

  void SetValue(int bit, Value&& content) {
    const std::uint64_t mask = std::uint64_t{1} << bit;
    values = content.isEmpty() ? values & ~mask : values | mask;
    value[static_cast<std::size_t>(bit)] = std::move(content);
  }
  void SetFormula(int bit, FormulaNumber number) {
    const std::uint64_t mask = std::uint64_t{1} << bit;
    formulas = number == 0 ? formulas & ~mask : formulas | mask;
    formula[static_cast<std::size_t>(bit)] = number;
  }
  void SetFormat(int bit, FormatId id) {
    const std::uint64_t mask = std::uint64_t{1} << bit;
    formats = id == 0 ? formats & ~mask : formats | mask;
    format[static_cast<std::size_t>(bit)] = id;
  }
};

// Calls visit(bit) for each set bit, from the lowest.
template <class Visit>
void ForEachBit(std::uint64_t mask, Visit&& visit) {
  for (; mask != 0; mask &= mask - 1) visit(std::countr_zero(mask));
}

// One column's chunks in order of their rows. No chunk is empty, but while a caller fills it.
class CellColumn {
 public:
  struct Slot {
    int number;  // rows kChunkRows * number + 1 and so on
    std::unique_ptr<CellChunk> chunk;
  };

  CellColumn() = default;
  CellColumn(const CellColumn& other);
  CellColumn(CellColumn&&) noexcept = default;
  CellColumn& operator=(CellColumn&&) noexcept = default;
  ~CellColumn() = default;

  static int ChunkOf(int row) { return (row - 1) / kChunkRows; }
  static int BitOf(int row) { return (row - 1) % kChunkRows; }

  bool empty() const { return slots_.empty(); }
  const std::vector<Slot>& slots() const { return slots_; }

  const CellChunk* Find(int chunk) const {
    const std::size_t at = Locate(chunk);
    return at < slots_.size() && slots_[at].number == chunk ? slots_[at].chunk.get() : nullptr;
  }
  CellChunk* Find(int chunk) { return const_cast<CellChunk*>(std::as_const(*this).Find(chunk)); }
  CellChunk& Obtain(int chunk);
  void DropIfEmpty(int chunk);
  void DropEmpty(int firstChunk, int lastChunk);

  // Moves the cells of `count` rows from `row` on to another column, which must be empty there. What is left here is
  // empty, but its chunks may stay until DropEmpty.
  void MoveTo(int row, int count, CellColumn& to, int toRow);

  // Calls visit(firstRowOfChunk, chunk, mask) for each chunk that reaches into the rows; the mask has the bits of the
  // rows asked for.
  template <class Visit>
  void ForEachChunk(int firstRow, int lastRow, Visit&& visit) const {
    const int lastChunk = ChunkOf(lastRow);
    for (std::size_t i = Locate(ChunkOf(firstRow)); i < slots_.size() && slots_[i].number <= lastChunk; ++i) {
      visit(slots_[i].number * kChunkRows + 1, *slots_[i].chunk, MaskOf(slots_[i].number, firstRow, lastRow));
    }
  }
  // The bits of a chunk's rows that lie in an interval.
  static std::uint64_t MaskOf(int chunk, int firstRow, int lastRow);

 private:
  // The first slot with this number or a higher one. Where chunks lie without gaps, the place is the number.
  std::size_t Locate(int chunk) const {
    const auto wanted = static_cast<std::size_t>(chunk);
    if (wanted < slots_.size() && slots_[wanted].number == chunk) return wanted;
    return Search(chunk);
  }
  std::size_t Search(int chunk) const;

  friend class ColumnMover;
  // Takes over a chunk as it is; false when there is one already.
  bool Adopt(int chunk, std::unique_ptr<CellChunk>& cells);

  std::vector<Slot> slots_;
};

// Builds a column out of another's cells, downward. Chunks that are emptied on the way are used again, so that the work
// stays in the cache however long the column is.
class ColumnMover {
 public:
  explicit ColumnMover(CellColumn& from) : from_(from) {}

  // Moves the cells of `count` rows from `row` on. In both columns the rows must lie behind those of the call before.
  void Move(int row, int count, int toRow);
  // Goes over rows whose cells are not wanted: clear(chunk, mask) must empty the rows of the mask.
  template <class Clear>
  void Drop(int row, int count, Clear&& clear) {
    ForEachSlot(row, row + count - 1, [&](CellColumn::Slot& slot, std::uint64_t mask) {
      clear(*slot.chunk, mask);
      if (slot.chunk->cells() == 0) spare_.push_back(std::move(slot.chunk));
    });
  }
  // Ends the work. The other column keeps what was neither moved nor dropped.
  CellColumn Finish();

 private:
  // visit(slot, bits of the rows asked for) for the slots that still have a chunk. It may take the chunk.
  template <class Visit>
  void ForEachSlot(int firstRow, int lastRow, Visit&& visit) {
    const int firstChunk = CellColumn::ChunkOf(firstRow);
    const int lastChunk = CellColumn::ChunkOf(lastRow);
    auto& slots = from_.slots_;
    while (at_ < slots.size() && slots[at_].number < firstChunk) ++at_;
    for (; at_ < slots.size() && slots[at_].number <= lastChunk; ++at_) {
      CellColumn::Slot& slot = slots[at_];
      if (slot.chunk != nullptr) visit(slot, CellColumn::MaskOf(slot.number, firstRow, lastRow));
      if (slot.number == lastChunk) return;  // the next rows may begin in it
    }
  }
  CellChunk& Target(int chunk);

  CellColumn& from_;
  CellColumn built_;
  std::size_t at_ = 0;  // the first slot that has not been passed
  std::vector<std::unique_ptr<CellChunk>> spare_;
};

}  // namespace tolvane::engine
