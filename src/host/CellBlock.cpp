#include "src/host/CellBlock.h"

#include <stdexcept>
#include <string>

namespace tolvane::host {

CellBlock::CellBlock(int rows, int columns) {
  if (rows < 0 || columns < 0) {
    throw std::invalid_argument("A block cannot have " + std::to_string(rows) + " rows and " + std::to_string(columns) +
                                " columns.");
  }
  cells_.resize(static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns));
  rows_ = rows;
  columns_ = columns;
}

CellBlock::CellBlock(std::initializer_list<std::initializer_list<CellValue>> rows)
    : rows_(static_cast<int>(rows.size())), columns_(rows.size() == 0 ? 0 : static_cast<int>(rows.begin()->size())) {
  cells_.reserve(static_cast<std::size_t>(rows_) * static_cast<std::size_t>(columns_));
  for (const auto& row : rows) {
    if (static_cast<int>(row.size()) != columns_) throw std::invalid_argument("The rows of a block differ in length.");
    cells_.insert(cells_.end(), row.begin(), row.end());
  }
}

const CellValue& CellBlock::single() const {
  if (!isSingle()) throw std::out_of_range("The block is not a single value.");
  return cells_[0];
}

void CellBlock::ThrowOutside(int row, int column) const {
  throw std::out_of_range("Row " + std::to_string(row) + ", column " + std::to_string(column) +
                          " lies outside of a block of " + std::to_string(rows_) + " by " + std::to_string(columns_) +
                          ".");
}

}  // namespace tolvane::host
