#include <algorithm>
#include <optional>

#include "engine/formula/Arithmetic.h"
#include "engine/formula/Coercion.h"
#include "engine/formula/Criterion.h"
#include "engine/formula/Evaluator.h"

namespace tolvane::engine {
namespace {

// A row or column of values that is searched: part of a range or of an array.
class Line {
 public:
  // Of a table the first column (along the rows) or the first row (along the columns).
  Line(Evaluator& evaluator, const Operand& table, Axis along, int position = 0)
      : evaluator_(evaluator), along_(along) {
    if (table.isReference()) {
      area_ = table.areas()[0];
      Rect& rect = area_.rect;
      const std::optional<Rect> used = area_.sheet->UsedContents();
      if (along == Axis::Rows) {
        rect.left = rect.right = rect.left + position;
        size_ = rect.rows();
        filled_ = used ? std::clamp(used->bottom - rect.top + 1, 0, size_) : 0;
      } else {
        rect.top = rect.bottom = rect.top + position;
        size_ = rect.columns();
        filled_ = used ? std::clamp(used->right - rect.left + 1, 0, size_) : 0;
      }
    } else {
      array_ = evaluator.ToArray(table);
      position_ = position;
      size_ = filled_ = along == Axis::Rows ? array_->rows : array_->columns;
    }
  }

  int size() const { return size_; }
  int filled() const { return filled_; }  // beyond, all is blank

  Value At(int i) const {
    if (array_ != nullptr) return along_ == Axis::Rows ? array_->At(i, position_) : array_->At(position_, i);
    return evaluator_.ValueAt(*area_.sheet, along_ == Axis::Rows ? CellPos{area_.rect.top + i, area_.rect.left}
                                                                 : CellPos{area_.rect.top, area_.rect.left + i});
  }

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
    for (int from = 0, block = kFirstBlock; from < filled_ && !found;
         from += block, block = std::min(block * 4, kLargestBlock)) {
      const int to = std::min(from + block, filled_) - 1;
      Area part = area_;
      if (along_ == Axis::Rows) {
        part.rect.top = area_.rect.top + from;
        part.rect.bottom = area_.rect.top + to;
      } else {
        part.rect.left = area_.rect.left + from;
        part.rect.right = area_.rect.left + to;
      }
      evaluator_.ForEachContent(part, [&](CellPos at, const Value& value) {
        if (found || value.isEmpty() || !accepts(value)) return;
        found = along_ == Axis::Rows ? at.row - area_.rect.top : at.column - area_.rect.left;
      });
      if (evaluator_.stale().size() != staleBefore) return std::nullopt;
    }
    return found;
  }

 private:
  Evaluator& evaluator_;
  Axis along_;
  Area area_;
  ArrayPtr array_;
  int position_ = 0;
  int size_ = 0;
  int filled_ = 0;
};

// Equal as a search wants it: numbers exactly, texts ignoring case and with wildcards.
std::optional<int> FindEqual(const Line& line, const Value& wanted) {
  if (wanted.isText()) {
    const std::string_view text = wanted.text().view();
    const WildcardPattern pattern(text);
    if (pattern.hasWildcards() || text.find('~') != std::string_view::npos) {
      return line.Find([&](const Value& value) { return value.isText() && pattern.Matches(value.text().view()); });
    }
  }
  return line.Find(
      [&](const Value& value) { return value.kind() == wanted.kind() && CompareExactly(value, wanted) == 0; });
}

// In ascending order, the last element that is not greater; elements of another kind are passed over.
std::optional<int> FindLastNotGreater(const Line& line, const Value& wanted) {
  int low = 0;
  int high = line.filled();  // the answer lies before `high`
  std::optional<int> best;
  while (low < high) {
    const int middle = low + (high - low) / 2;
    int probe = middle;
    Value value = line.At(probe);
    while (value.kind() != wanted.kind() && probe + 1 < high) value = line.At(++probe);
    if (value.kind() != wanted.kind()) {
      high = middle;
    } else if (CompareExactly(value, wanted) <= 0) {
      best = probe;
      low = probe + 1;
    } else {
      high = middle;
    }
  }
  return best;
}

// In descending order, the last element that is not less.
std::optional<int> FindLastNotLess(const Line& line, const Value& wanted) {
  std::optional<int> best;
  for (int i = 0; i < line.filled(); ++i) {
    const Value value = line.At(i);
    if (value.kind() != wanted.kind()) continue;
    const int order = CompareExactly(value, wanted);
    if (order < 0) break;
    best = i;
    if (order == 0) break;
  }
  return best;
}

// What is searched for: an empty cell counts as 0.
Value Wanted(FunctionCall& call) {
  return call.ValueAt(0).isEmpty() ? Value(0.0) : call.ValueAt(0);
}

// A table to search in, after checking that it is one.
const Operand& TableAt(FunctionCall& call, std::size_t i) {
  const Operand& table = call.Argument(i);
  if (table.isValue() && table.value().isError()) throw FunctionError{table.value().error()};
  if (table.isReference() ? !table.areas().isSingle() : !table.isArray()) throw FunctionError{ErrorCode::NA};
  return table;
}

int TableRows(const Operand& table) {
  return table.isReference() ? table.areas()[0].rect.rows() : RowsOf(table);
}
int TableColumns(const Operand& table) {
  return table.isReference() ? table.areas()[0].rect.columns() : ColumnsOf(table);
}

Operand Match(FunctionCall& call) {
  const Operand& table = TableAt(call, 1);
  const bool isRow = TableRows(table) == 1 && TableColumns(table) > 1;
  if (!isRow && TableColumns(table) > 1) return ErrorCode::NA;
  const Line line(call.evaluator, table, isRow ? Axis::Columns : Axis::Rows);
  const double type = call.Number(2, 1);
  const Value wanted = Wanted(call);
  const std::optional<int> found = type == 0  ? FindEqual(line, wanted)
                                   : type > 0 ? FindLastNotGreater(line, wanted)
                                              : FindLastNotLess(line, wanted);
  return found ? Operand(*found + 1.0) : Operand(ErrorCode::NA);
}

// VLOOKUP along the rows, HLOOKUP along the columns.
Operand LookupIn(FunctionCall& call, Axis along) {
  const Operand& table = TableAt(call, 1);
  const std::int64_t index = call.Whole(2);
  if (index < 1) return ErrorCode::Value;
  if (index > (along == Axis::Rows ? TableColumns(table) : TableRows(table))) return ErrorCode::Ref;
  const Line keys(call.evaluator, table, along);
  const bool sorted = call.Boolean(3, true);
  const Value wanted = Wanted(call);
  const std::optional<int> found = sorted ? FindLastNotGreater(keys, wanted) : FindEqual(keys, wanted);
  if (!found) return ErrorCode::NA;
  return Line(call.evaluator, table, along, static_cast<int>(index) - 1).At(*found);
}

Operand VLookup(FunctionCall& call) {
  return LookupIn(call, Axis::Rows);
}
Operand HLookup(FunctionCall& call) {
  return LookupIn(call, Axis::Columns);
}

// With a third argument a vector is searched and another read; else the first row or column of a table, whichever is
// longer, is searched and its last one read.
Operand Lookup(FunctionCall& call) {
  const Operand& table = TableAt(call, 1);
  const int rows = TableRows(table);
  const int columns = TableColumns(table);
  const Axis along = columns > rows ? Axis::Columns : Axis::Rows;
  const Value wanted = Wanted(call);
  const std::optional<int> found = FindLastNotGreater(Line(call.evaluator, table, along), wanted);
  if (!found) return ErrorCode::NA;
  if (!call.Has(2)) {
    const int last = (along == Axis::Rows ? columns : rows) - 1;
    return Line(call.evaluator, table, along, last).At(*found);
  }
  const Operand& result = TableAt(call, 2);
  if (TableRows(result) > 1 && TableColumns(result) > 1) return ErrorCode::NA;
  const Axis resultAlong = TableColumns(result) > 1 ? Axis::Columns : Axis::Rows;
  const Line values(call.evaluator, result, resultAlong);
  if (*found >= values.size()) return ErrorCode::NA;
  return values.At(*found);
}

constexpr Function kFunctions[] = {
    {"HLOOKUP", 3, 4, "VRVV", HLookup},
    {"LOOKUP", 2, 3, "VAA", Lookup},
    {"MATCH", 2, 3, "VRV", Match},
    {"VLOOKUP", 3, 4, "VRVV", VLookup},
};

}  // namespace

std::span<const Function> LookupFunctions() {
  return kFunctions;
}

}  // namespace tolvane::engine
