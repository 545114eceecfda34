#include <algorithm>

#include "engine/formula/Arithmetic.h"
#include "engine/formula/Evaluator.h"
#include "engine/formula/Parser.h"
#include "engine/formula/Printer.h"

namespace tolvane::engine {
namespace {

// INDEX of an area or array: row and column from 1, 0 for all of them. In a single row the only index counts columns.
struct Place {
  int row = 0;
  int column = 0;
};

Place PlaceIn(FunctionCall& call, int rows, int columns) {
  const std::int64_t first = call.Whole(1);
  const std::int64_t second = call.Whole(2, 0);
  if (first < 0 || second < 0) throw FunctionError{ErrorCode::Value};
  const bool alongRow = call.count() < 3 && rows == 1 && columns > 1;
  const std::int64_t row = alongRow ? 0 : first;
  const std::int64_t column = alongRow ? first : second;
  if (row > rows || column > columns) throw FunctionError{ErrorCode::Ref};
  // A single column or row needs no index.
  return {rows == 1 && row == 0 ? 1 : static_cast<int>(row),
          columns == 1 && column == 0 ? 1 : static_cast<int>(column)};
}

Operand Index(FunctionCall& call) {
  const Operand& table = call.Argument(0);
  if (table.isValue() && table.value().isError()) return table.value();
  if (table.isReference()) {
    const std::int64_t which = call.Whole(3, 1);
    if (which < 1 || which > static_cast<std::int64_t>(table.areas().size())) return ErrorCode::Ref;
    Area area = table.areas()[static_cast<std::size_t>(which) - 1];
    const Place place = PlaceIn(call, area.rect.rows(), area.rect.columns());
    if (place.row > 0) area.rect.top = area.rect.bottom = area.rect.top + place.row - 1;
    if (place.column > 0) area.rect.left = area.rect.right = area.rect.left + place.column - 1;
    return AreaList(area);
  }
  const ArrayPtr array = call.evaluator.ToArray(table);
  const Place place = PlaceIn(call, array->rows, array->columns);
  if (place.row > 0 && place.column > 0) return array->At(place.row - 1, place.column - 1);
  auto part = std::make_shared<ValueArray>(place.row > 0 ? 1 : array->rows, place.column > 0 ? 1 : array->columns);
  for (int row = 0; row < part->rows; ++row) {
    for (int column = 0; column < part->columns; ++column) {
      part->At(row, column) =
          array->At(place.row > 0 ? place.row - 1 : row, place.column > 0 ? place.column - 1 : column);
    }
  }
  return ArrayPtr(std::move(part));
}

// A length of OFFSET: negative ones reach up or to the left from the corner.
struct Extent {
  std::int64_t first;
  std::int64_t last;
};

Extent ExtentOf(std::int64_t corner, std::int64_t length) {
  if (length == 0) throw FunctionError{ErrorCode::Ref};
  return length > 0 ? Extent{corner, corner + length - 1} : Extent{corner + length + 1, corner};
}

Operand Offset(FunctionCall& call) {
  const Area& from = call.AreaAt(0);
  const std::int64_t height = call.Has(3) ? call.Whole(3) : from.rect.rows();
  const std::int64_t width = call.Has(4) ? call.Whole(4) : from.rect.columns();
  const Extent rows = ExtentOf(from.rect.top + call.Whole(1), height);
  const Extent columns = ExtentOf(from.rect.left + call.Whole(2), width);
  if (rows.first < 1 || rows.last > kMaxRow || columns.first < 1 || columns.last > kMaxColumn) return ErrorCode::Ref;
  return AreaList({from.sheet, Rect{static_cast<int>(rows.first), static_cast<int>(columns.first),
                                    static_cast<int>(rows.last), static_cast<int>(columns.last)}});
}

// The text may be a reference or a name; anything that calculates is refused.
Operand Indirect(FunctionCall& call) {
  const Notation notation = call.Boolean(1, true) ? Notation::A1 : Notation::R1C1;
  const Frame& here = call.frame;
  const std::string text = call.Text(0);
  if (text.starts_with('=')) return ErrorCode::Ref;
  ExpressionPtr parsed;
  try {
    parsed = ParseFormula(text, notation, {here.sheet.id(), here.cell}, here.sheet.book());
  } catch (const ParseError&) {
    return ErrorCode::Ref;
  }
  switch (parsed->nodes[parsed->root].kind) {
    case Node::Kind::Reference:
    case Node::Kind::ExternalRef:
    case Node::Kind::Name:
      break;
    default:
      return ErrorCode::Ref;
  }
  const Frame there{*parsed, here.sheet, here.cell, here.nameDepth + 1};
  Operand result = call.evaluator.Evaluate(there, parsed->root, Mode::Single);
  return result.isReference() ? result : Operand(ErrorCode::Ref);
}

Operand Address(FunctionCall& call) {
  const std::int64_t row = call.Whole(0);
  const std::int64_t column = call.Whole(1);
  const std::int64_t kind = call.Has(2) ? call.Whole(2) : 1;
  const bool isA1 = call.Has(3) ? call.Boolean(3) : true;
  if (kind < 1 || kind > 4) return ErrorCode::Value;
  AddressStyle style;
  style.notation = isA1 ? Notation::A1 : Notation::R1C1;
  style.absoluteRow = kind == 1 || kind == 2;
  style.absoluteColumn = kind == 1 || kind == 3;
  // In relative R1C1 the numbers are the offsets themselves.
  const bool offsetRow = !isA1 && !style.absoluteRow;
  const bool offsetColumn = !isA1 && !style.absoluteColumn;
  style.relativeTo = {0, 0};
  if ((!offsetRow && (row < 1 || row > kMaxRow)) || (!offsetColumn && (column < 1 || column > kMaxColumn)) ||
      row <= -kMaxRow || row > kMaxRow || column <= -kMaxColumn || column > kMaxColumn) {
    return ErrorCode::Value;
  }
  std::string out;
  if (call.Has(4)) out = QuoteSheetName(call.Text(4)) + "!";
  return Value(out + PrintAddress(Rect::Cell({static_cast<int>(row), static_cast<int>(column)}), style));
}

// The rows or columns of a reference: the first, or all of them where an array is wanted.
Operand Numbers(FunctionCall& call, Axis axis) {
  const bool rows = axis == Axis::Rows;
  if (!call.Has(0)) return static_cast<double>(rows ? call.frame.cell.row : call.frame.cell.column);
  const Area& area = call.AreaAt(0);
  const int first = rows ? area.rect.top : area.rect.left;
  const int count = rows ? area.rect.rows() : area.rect.columns();
  if (call.mode == Mode::Single || count == 1) return static_cast<double>(first);
  auto array = std::make_shared<ValueArray>(rows ? count : 1, rows ? 1 : count);
  for (int i = 0; i < count; ++i) array->values[static_cast<std::size_t>(i)] = static_cast<double>(first + i);
  return ArrayPtr(std::move(array));
}

Operand Row(FunctionCall& call) {
  return Numbers(call, Axis::Rows);
}
Operand Column(FunctionCall& call) {
  return Numbers(call, Axis::Columns);
}

Operand CountAlong(FunctionCall& call, Axis axis) {
  const bool rows = axis == Axis::Rows;
  const Operand& argument = call.Argument(0);
  if (argument.isArray()) return static_cast<double>(rows ? RowsOf(argument) : ColumnsOf(argument));
  const Area& area = call.AreaAt(0);
  return static_cast<double>(rows ? area.rect.rows() : area.rect.columns());
}

Operand Rows(FunctionCall& call) {
  return CountAlong(call, Axis::Rows);
}
Operand Columns(FunctionCall& call) {
  return CountAlong(call, Axis::Columns);
}

Operand Areas(FunctionCall& call) {
  const Operand& argument = call.Argument(0);
  if (!argument.isReference()) return ErrorCode::Value;
  return static_cast<double>(argument.areas().size());
}

Operand Transpose(FunctionCall& call) {
  const Operand& argument = call.Argument(0);
  if (argument.isValue()) return argument;
  const ArrayPtr array = call.evaluator.ToArray(argument);
  if (array == nullptr) return ErrorCode::Value;
  auto result = std::make_shared<ValueArray>(array->columns, array->rows);
  for (int row = 0; row < array->rows; ++row) {
    for (int column = 0; column < array->columns; ++column) result->At(column, row) = array->At(row, column);
  }
  return ArrayPtr(std::move(result));
}

Operand Choose(FunctionCall& call) {
  const std::int64_t which = call.Whole(0);
  if (which < 1 || which >= static_cast<std::int64_t>(call.count())) return ErrorCode::Value;
  Operand chosen = call.Evaluate(static_cast<std::size_t>(which));
  return chosen.isOmitted() ? Operand(0.0) : chosen;
}

// The cell shows the friendly name; following the link is the user interface's business.
Operand Hyperlink(FunctionCall& call) {
  const Value& shown = call.ValueAt(call.count() > 1 ? 1 : 0);
  return shown.isEmpty() ? Value(0.0) : shown;
}

constexpr Function kFunctions[] = {
    {"ADDRESS", 2, 5, "V", Address},
    {"AREAS", 1, 1, "R", Areas},
    {"CHOOSE", 2, kMostArguments, "VL", Choose},
    {"COLUMN", 0, 1, "R", Column},
    {"COLUMNS", 1, 1, "R", Columns},
    {"HYPERLINK", 1, 2, "V", Hyperlink},
    {"INDEX", 2, 4, "AVVV", Index},
    {"INDIRECT", 1, 2, "V", Indirect, true},
    {"OFFSET", 3, 5, "RVVVV", Offset, true},
    {"ROW", 0, 1, "R", Row},
    {"ROWS", 1, 1, "R", Rows},
    {"TRANSPOSE", 1, 1, "A", Transpose},
};

}  // namespace

std::span<const Function> ReferenceFunctions() {
  return kFunctions;
}

}  // namespace tolvane::engine
