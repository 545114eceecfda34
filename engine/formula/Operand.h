#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <variant>
#include <vector>

#include "engine/model/Geometry.h"
#include "engine/model/Value.h"

namespace tolvane::engine {

class Sheet;

// Cells of one sheet of an open workbook.
struct Area {
  const Sheet* sheet = nullptr;
  Rect rect;
  bool operator==(const Area&) const = default;
};

// A reference as a value: one area, or several for a union or a span of sheets.
class AreaList {
 public:
  explicit AreaList(const Area& only) : first_(only) {}
  void Add(const Area& area) { rest_.push_back(area); }
  std::size_t size() const { return 1 + rest_.size(); }
  bool isSingle() const { return rest_.empty(); }
  const Area& operator[](std::size_t i) const { return i == 0 ? first_ : rest_[i - 1]; }

 private:
  Area first_;  // apart, so that the usual single area needs no allocation
  std::vector<Area> rest_;
};

// Values in rows and columns.
struct ValueArray {
  int rows = 1;
  int columns = 1;
  std::vector<Value> values;  // row by row
  ValueArray(int rowCount, int columnCount)
      : rows(rowCount), columns(columnCount), values(static_cast<std::size_t>(rowCount) * columnCount) {}
  Value& At(int row, int column) { return values[static_cast<std::size_t>(row) * columns + column]; }  // from 0
  const Value& At(int row, int column) const { return values[static_cast<std::size_t>(row) * columns + column]; }
};

using ArrayPtr = std::shared_ptr<const ValueArray>;

// An omitted argument.
struct Omitted {};

// What evaluating a part of a formula gives.
class Operand {
 public:
  Operand() : content_(Omitted{}) {}
  Operand(Value value) : content_(std::move(value)) {}
  Operand(double number) : content_(Value(number)) {}
  Operand(ErrorCode error) : content_(Value(error)) {}
  Operand(AreaList areas) : content_(std::move(areas)) {}
  Operand(ArrayPtr array) : content_(std::move(array)) {}

  bool isOmitted() const { return std::holds_alternative<Omitted>(content_); }
  bool isValue() const { return std::holds_alternative<Value>(content_); }
  bool isReference() const { return std::holds_alternative<AreaList>(content_); }
  bool isArray() const { return std::holds_alternative<ArrayPtr>(content_); }

  // Each holds only for an operand of that kind.
  const Value& value() const { return *std::get_if<Value>(&content_); }
  const AreaList& areas() const { return *std::get_if<AreaList>(&content_); }
  const ValueArray& array() const { return **std::get_if<ArrayPtr>(&content_); }

 private:
  std::variant<Omitted, Value, AreaList, ArrayPtr> content_;
};

}  // namespace tolvane::engine
