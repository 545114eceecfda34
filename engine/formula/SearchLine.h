#pragma once

#include <algorithm>
#include <optional>

#include "engine/formula/Evaluator.h"

namespace tolvane::engine {

// A row or column of values that is searched: part of a range or of an array.
class SearchLine {
 public:
  // Of a table the column at `position` (along the rows) or the row (along the columns).
  SearchLine(Evaluator& evaluator, const Operand& table, Axis along, int position = 0);

  int size() const { return size_; }
  int filled() const;  // beyond, all is blank
  Value At(int i) const;

  // The first element that `accepts`; blanks are not offered. A stale cell ends the search.
  template <class Accept>
  std::optional<int> Find(Accept accepts) const {
    if (array_ != nullptr) {
      for (int i = 0; i < size_; ++i) {
        if (const Value value = At(i); !value.isEmpty() && accepts(value)) return i;
      }
      return std::nullopt;
    }
    // Block by block, so that an early find does not cost the whole line; the blocks grow for lines without one.
    constexpr int kFirstBlock = 64;
    constexpr int kLargestBlock = 16384;
    const std::size_t staleBefore = evaluator_.stale().size();
    std::optional<int> found;
    const int end = filled();
    for (int from = 0, block = kFirstBlock; from < end && !found;
         from += block, block = std::min(block * 4, kLargestBlock)) {
      const Area part = Part(from, std::min(from + block, end) - 1);
      evaluator_.ForEachContent(part, [&](CellPos at, const Value& value) {
        if (!found && !value.isEmpty() && accepts(value)) found = PositionOf(at);
      });
      if (evaluator_.stale().size() != staleBefore) return std::nullopt;
    }
    return found;
  }

  // The first or last element that equals a value: numbers exactly, texts ignoring case.
  std::optional<int> FindEqual(const Value& wanted) const;
  std::optional<int> FindLastEqual(const Value& wanted) const;
  // The same with wildcards in a text.
  std::optional<int> FindMatch(const Value& wanted) const;
  // In ascending order, the last element that is not greater; elements of another kind are passed over.
  std::optional<int> FindLastNotGreater(const Value& wanted) const;
  // In descending order, the last element that is not less.
  std::optional<int> FindLastNotLess(const Value& wanted) const;

 private:
  Area Part(int first, int last) const;
  int PositionOf(CellPos at) const {
    return along_ == Axis::Rows ? at.row - area_.rect.top : at.column - area_.rect.left;
  }
  const RangeIndex* Index() const;

  Evaluator& evaluator_;
  Axis along_;
  Area area_;
  ArrayPtr array_;
  int position_ = 0;
  int size_ = 0;
};

// A table to search in, after checking that it is one.
const Operand& TableAt(FunctionCall& call, std::size_t i);
int TableRows(const Operand& table);
int TableColumns(const Operand& table);

}  // namespace tolvane::engine
