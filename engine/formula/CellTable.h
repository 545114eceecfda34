#pragma once

#include <cstdint>
#include <vector>

#include "engine/formula/CellAddress.h"

namespace tolvane::engine {

// A number for each of many cells. Entries stand side by side in one piece of memory, neighbours in a column mostly
// next to each other, since cells are entered and asked for column by column. Nothing is ever taken out but everything.
class CellTable {
 public:
  std::size_t size() const { return size_; }

  // Null for a cell that was not entered.
  const std::uint32_t* Find(const CellAddress& at) const {
    if (slots_.empty()) return nullptr;
    const Slot& slot = slots_[SlotOf(at)];
    return slot.isTaken() ? &slot.number : nullptr;
  }

  // Enters the cell with that number unless it is there. Holds until the next one is entered.
  std::uint32_t& At(const CellAddress& at, std::uint32_t otherwise) {
    if (2 * (size_ + 1) > slots_.size()) Grow();
    Slot& slot = slots_[SlotOf(at)];
    if (!slot.isTaken()) {
      slot = {at, otherwise};
      ++size_;
    }
    return slot.number;
  }

  // Calls visit(cell, number), in no order.
  template <class Visit>
  void ForEach(Visit&& visit) const {
    for (const Slot& slot : slots_) {
      if (slot.isTaken()) visit(slot.at, slot.number);
    }
  }

  // Keeps the memory, for as many cells again.
  void Clear() {
    if (size_ > 0) slots_.assign(slots_.size(), Slot());
    size_ = 0;
  }

 private:
  struct Slot {
    CellAddress at{kOwnSheet, {0, 0}};  // row 0: free
    std::uint32_t number = 0;
    bool isTaken() const { return at.cell.row != 0; }
  };
  static constexpr int kNeighbours = 4;  // rows that share a line of the processor's cache

  // Where the cell stands, or the free slot where it belongs; half of the slots at least are free.
  std::size_t SlotOf(const CellAddress& at) const {
    const CellAddress group{at.sheet, {at.cell.row / kNeighbours, at.cell.column}};
    const std::size_t first =
        CellAddressHash()(group) * kNeighbours + static_cast<std::size_t>(at.cell.row % kNeighbours);
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t i = first & mask;; i = (i + 1) & mask) {
      if (!slots_[i].isTaken() || slots_[i].at == at) return i;
    }
  }

  void Grow() {
    constexpr std::size_t kFewest = 64;
    const std::vector<Slot> before = std::move(slots_);
    slots_.assign(before.empty() ? kFewest : 2 * before.size(), Slot());
    for (const Slot& slot : before) {
      if (slot.isTaken()) slots_[SlotOf(slot.at)] = slot;
    }
  }

  std::vector<Slot> slots_;  // a power of two
  std::size_t size_ = 0;
};

}  // namespace tolvane::engine
