#pragma once

#include <concepts>
#include <cstddef>
#include <initializer_list>
#include <span>
#include <type_traits>
#include <utility>
#include <vector>

#include "src/host/CellValue.h"

namespace tolvane::host {

// The two-dimensional block that Value, Formula and FormulaR1C1 read and write in one call: rows first, indices from 1.
//
// A range of one cell gives a single value rather than a block. Both are one type here, so that every reader takes both
// forms and none has to think of it: a single value is the block of one row and one column.
class CellBlock {
 public:
  CellBlock() = default;             // no rows, no columns
  CellBlock(int rows, int columns);  // of empty cells; std::invalid_argument for less than none
  CellBlock(CellValue single) : CellBlock(1, 1) { cells_[0] = std::move(single); }
  // So that a number or a text stands for itself where a block is asked for: range.SetValue("Food").
  template <class Single>
  requires(std::convertible_to<Single, CellValue> && !std::same_as<std::remove_cvref_t<Single>, CellValue> &&
           !std::same_as<std::remove_cvref_t<Single>, CellBlock>) CellBlock(Single&& single)
      : CellBlock(CellValue(std::forward<Single>(single))) {}
  CellBlock(std::initializer_list<std::initializer_list<CellValue>>
                rows);  // all rows of one length, else std::invalid_argument

  int rows() const { return rows_; }
  int columns() const { return columns_; }
  bool isSingle() const { return rows_ == 1 && columns_ == 1; }
  // The value of a single one; std::out_of_range for any other block.
  const CellValue& single() const;

  // Throw std::out_of_range outside of the block.
  const CellValue& at(int row, int column) const { return cells_[Index(row, column)]; }
  CellValue& at(int row, int column) { return cells_[Index(row, column)]; }

  // All cells, row by row.
  std::span<const CellValue> cells() const { return cells_; }
  std::span<CellValue> cells() { return cells_; }

  friend bool operator==(const CellBlock&, const CellBlock&) = default;

 private:
  std::size_t Index(int row, int column) const {
    if (row < 1 || row > rows_ || column < 1 || column > columns_) ThrowOutside(row, column);
    return static_cast<std::size_t>(row - 1) * static_cast<std::size_t>(columns_) +
           static_cast<std::size_t>(column - 1);
  }
  [[noreturn]] void ThrowOutside(int row, int column) const;

  int rows_ = 0;
  int columns_ = 0;
  std::vector<CellValue> cells_;
};

}  // namespace tolvane::host
