#include <algorithm>
#include <optional>

#include "engine/formula/Arithmetic.h"
#include "engine/formula/Evaluator.h"
#include "engine/formula/SearchLine.h"

namespace tolvane::engine {
namespace {

// What is searched for: an empty cell counts as 0.
Value Wanted(FunctionCall& call) {
  return call.ValueAt(0).isEmpty() ? Value(0.0) : call.ValueAt(0);
}

Operand Match(FunctionCall& call) {
  const Operand& table = TableAt(call, 1);
  const bool isRow = TableRows(table) == 1 && TableColumns(table) > 1;
  if (!isRow && TableColumns(table) > 1) return ErrorCode::NA;
  const SearchLine line(call.evaluator, table, isRow ? Axis::Columns : Axis::Rows);
  const double type = call.Number(2, 1);
  const Value wanted = Wanted(call);
  const std::optional<int> found = type == 0  ? line.FindMatch(wanted)
                                   : type > 0 ? line.FindLastNotGreater(wanted)
                                              : line.FindLastNotLess(wanted);
  return found ? Operand(*found + 1.0) : Operand(ErrorCode::NA);
}

// VLOOKUP along the rows, HLOOKUP along the columns.
Operand LookupIn(FunctionCall& call, Axis along) {
  const Operand& table = TableAt(call, 1);
  const std::int64_t index = call.Whole(2);
  if (index < 1) return ErrorCode::Value;
  if (index > (along == Axis::Rows ? TableColumns(table) : TableRows(table))) return ErrorCode::Ref;
  const SearchLine keys(call.evaluator, table, along);
  const bool sorted = call.Boolean(3, true);
  const Value wanted = Wanted(call);
  const std::optional<int> found = sorted ? keys.FindLastNotGreater(wanted) : keys.FindMatch(wanted);
  if (!found) return ErrorCode::NA;
  return SearchLine(call.evaluator, table, along, static_cast<int>(index) - 1).At(*found);
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
  const std::optional<int> found = SearchLine(call.evaluator, table, along).FindLastNotGreater(wanted);
  if (!found) return ErrorCode::NA;
  if (!call.Has(2)) {
    const int last = (along == Axis::Rows ? columns : rows) - 1;
    return SearchLine(call.evaluator, table, along, last).At(*found);
  }
  const Operand& result = TableAt(call, 2);
  if (TableRows(result) > 1 && TableColumns(result) > 1) return ErrorCode::NA;
  const Axis resultAlong = TableColumns(result) > 1 ? Axis::Columns : Axis::Rows;
  const SearchLine values(call.evaluator, result, resultAlong);
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
