#include <cmath>

#include "engine/formula/Arithmetic.h"
#include "engine/formula/Coercion.h"
#include "engine/formula/Criterion.h"
#include "engine/formula/SearchLine.h"

// XLOOKUP and XMATCH, which search in both directions.

namespace tolvane::engine {
namespace {

enum class Match : std::int8_t { NextSmaller = -1, Exact = 0, NextLarger = 1, Wildcard = 2 };
enum class Order : std::int8_t { FromFirst = 1, FromLast = -1, Ascending = 2, Descending = -2 };

struct Search {
  Match match = Match::Exact;
  Order order = Order::FromFirst;
};

Search SearchAt(FunctionCall& call, std::size_t match, std::size_t order) {
  const std::int64_t matching = call.Whole(match, 0);
  const std::int64_t ordering = call.Has(order) ? call.Whole(order) : 1;
  if (matching < -1 || matching > 2 || ordering < -2 || ordering > 2 || ordering == 0) {
    throw FunctionError{ErrorCode::Value};
  }
  const Search search{static_cast<Match>(matching), static_cast<Order>(ordering)};
  const bool halves = search.order == Order::Ascending || search.order == Order::Descending;
  if (halves && search.match == Match::Wildcard) throw FunctionError{ErrorCode::Value};
  return search;
}

// Sorted values: by halves to the first that does not come before the wanted one.
std::optional<int> FindSorted(const SearchLine& line, const Value& wanted, const Search& search) {
  const int direction = search.order == Order::Ascending ? 1 : -1;
  const auto order = [&](int i) { return CompareExactly(line.At(i), wanted) * direction; };
  const int end = line.filled();
  int low = 0;
  int high = end;
  while (low < high) {
    const int middle = low + (high - low) / 2;
    if (order(middle) < 0) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  if (low < end && order(low) == 0) return low;
  if (search.match == Match::Exact) return std::nullopt;
  const bool before = (search.match == Match::NextSmaller) == (direction > 0);
  const int neighbour = before ? low - 1 : low;
  if (neighbour < 0 || neighbour >= end || line.At(neighbour).kind() != wanted.kind()) return std::nullopt;
  return neighbour;
}

// The equal one, else the one nearest to it on the side asked for; of equals the first in the order of the search.
std::optional<int> FindNearest(const SearchLine& line, const Value& wanted, const Search& search) {
  const int side = search.match == Match::NextSmaller ? -1 : 1;
  std::optional<int> best;
  Value bestValue;
  const int end = line.filled();
  for (int step = 0; step < end; ++step) {
    const int i = search.order == Order::FromFirst ? step : end - 1 - step;
    const Value value = line.At(i);
    if (value.kind() != wanted.kind()) continue;
    const int order = CompareExactly(value, wanted);
    if (order == 0) return i;
    if ((order > 0) != (side > 0)) continue;
    if (!best || CompareExactly(value, bestValue) * side < 0) {
      best = i;
      bestValue = value;
    }
  }
  return best;
}

std::optional<int> FindBlank(const SearchLine& line, const Search& search) {
  for (int step = 0; step < line.size(); ++step) {
    const int i = search.order == Order::FromLast ? line.size() - 1 - step : step;
    if (i >= line.filled() || line.At(i).isEmpty()) return i;
  }
  return std::nullopt;
}

std::optional<int> Find(const SearchLine& line, const Value& wanted, const Search& search) {
  if (wanted.isEmpty()) return FindBlank(line, search);
  const bool fromLast = search.order == Order::FromLast;
  if (search.order != Order::FromFirst && !fromLast) return FindSorted(line, wanted, search);
  switch (search.match) {
    case Match::Exact:
      return fromLast ? line.FindLastEqual(wanted) : line.FindEqual(wanted);
    case Match::Wildcard:
      break;
    default:
      return FindNearest(line, wanted, search);
  }
  if (!fromLast) return line.FindMatch(wanted);
  if (!wanted.isText()) return line.FindLastEqual(wanted);
  const WildcardPattern pattern(wanted.text().view());
  for (int i = line.filled() - 1; i >= 0; --i) {
    const Value value = line.At(i);
    if (value.isText() && pattern.Matches(value.text().view())) return i;
  }
  return std::nullopt;
}

// A value counts as a table of one cell.
Operand SearchedAt(FunctionCall& call, std::size_t i) {
  const Operand& table = call.Argument(i);
  if (!table.isValue()) return TableAt(call, i);
  if (table.value().isError()) throw FunctionError{table.value().error()};
  return call.evaluator.ToArray(table);
}

// Of which row or column the search goes along.
Axis AlongOf(const Operand& table) {
  if (TableRows(table) > 1 && TableColumns(table) > 1) throw FunctionError{ErrorCode::Value};
  return TableColumns(table) > 1 ? Axis::Columns : Axis::Rows;
}

Operand XMatch(FunctionCall& call) {
  const Operand table = SearchedAt(call, 1);
  const SearchLine line(call.evaluator, table, AlongOf(table));
  const std::optional<int> found = Find(line, call.ValueAt(0), SearchAt(call, 2, 3));
  return found ? Operand(*found + 1.0) : Operand(ErrorCode::NA);
}

// A row or a column of a table, as what it is: a reference or values.
Operand PartOf(const Operand& table, Axis along, int position) {
  if (table.isReference()) {
    Area area = table.areas()[0];
    if (along == Axis::Rows) {
      area.rect.top = area.rect.bottom = area.rect.top + position;
    } else {
      area.rect.left = area.rect.right = area.rect.left + position;
    }
    return AreaList(area);
  }
  const ValueArray& array = table.array();
  const bool isRow = along == Axis::Rows;
  auto part = std::make_shared<ValueArray>(isRow ? 1 : array.rows, isRow ? array.columns : 1);
  for (std::size_t i = 0; i < part->values.size(); ++i) {
    const int other = static_cast<int>(i);
    part->values[i] = isRow ? array.At(position, other) : array.At(other, position);
  }
  if (part->values.size() == 1) return part->values.front();
  return ArrayPtr(std::move(part));
}

Operand XLookup(FunctionCall& call) {
  const Operand table = SearchedAt(call, 1);
  const Operand results = SearchedAt(call, 2);
  Axis along = AlongOf(table);
  const bool isCell = TableRows(table) == 1 && TableColumns(table) == 1;
  if (isCell && TableRows(results) > 1 && TableColumns(results) == 1) along = Axis::Columns;
  const SearchLine line(call.evaluator, table, along);
  if (line.size() != (along == Axis::Rows ? TableRows(results) : TableColumns(results))) return ErrorCode::Value;
  const std::optional<int> found = Find(line, call.ValueAt(0), SearchAt(call, 4, 5));
  if (found) return PartOf(results, along, *found);
  return call.Has(3) ? call.Evaluate(3) : Operand(ErrorCode::NA);
}

constexpr Function kFunctions[] = {
    {"XLOOKUP", 3, 6, "VAALVV", XLookup},
    {"XMATCH", 2, 4, "VAVV", XMatch},
};

}  // namespace

std::span<const Function> CrossLookupFunctions() {
  return kFunctions;
}

}  // namespace tolvane::engine
