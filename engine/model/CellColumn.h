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

  // Takes over a chunk as it is; false when there is one already.
  bool Adopt(int chunk, std::unique_ptr<CellChunk>& cells);
  static void MoveBits(CellChunk& from, std::uint64_t moving, int firstRow, CellColumn& to);

  std::vector<Slot> slots_;
};

}  // namespace tolvane::engine
