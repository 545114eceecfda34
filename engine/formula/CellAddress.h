#pragma once

#include <cstddef>
#include <cstdint>

#include "engine/model/Geometry.h"
#include "engine/model/Reference.h"

namespace tolvane::engine {

// A cell of a workbook.
struct CellAddress {
  SheetId sheet = kOwnSheet;
  CellPos cell;
  bool operator==(const CellAddress&) const = default;
};

struct CellAddressHash {
  std::size_t operator()(const CellAddress& address) const {
    // Neighbouring cells must not fall into neighbouring buckets in step with the table's size: mix all bits.
    std::uint64_t bits = (static_cast<std::uint64_t>(address.sheet) << 36) ^
                         (static_cast<std::uint64_t>(address.cell.row) << 15) ^
                         static_cast<std::uint64_t>(address.cell.column);
    bits = (bits ^ (bits >> 30)) * 0xbf58476d1ce4e5b9ULL;
    bits = (bits ^ (bits >> 27)) * 0x94d049bb133111ebULL;
    return static_cast<std::size_t>(bits ^ (bits >> 31));
  }
};

}  // namespace tolvane::engine
