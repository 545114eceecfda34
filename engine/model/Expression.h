#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engine/model/Reference.h"
#include "engine/model/SharedList.h"
#include "engine/model/Value.h"

namespace tolvane::engine {

enum class Operator : std::uint8_t {
  // binary
  Add,
  Subtract,
  Multiply,
  Divide,
  Power,
  Concatenate,
  Equal,
  NotEqual,
  Less,
  LessEqual,
  Greater,
  GreaterEqual,
  Range,
  Union,
  Intersect,
  // unary
  Plus,
  Minus,
  Percent,
};

// One node of a formula's tree. Children stand in `Expression::children` at [firstChild, firstChild + childCount).
struct Node {
  enum class Kind : std::uint8_t {
    Constant,     // index into constants
    Reference,    // index into references
    ExternalRef,  // index into externals
    Name,         // index into names
    Function,     // index into names: the function's name in upper case; children are the arguments
    Binary,       // op, two children
    Unary,        // op, one child (Percent stands behind it)
    Parenthesis,  // one child; kept so that a formula prints as it was typed
    Missing,      // an omitted argument
    Array,        // {1,2;3,4}: index into arrays
  };
  Kind kind = Kind::Missing;
  Operator op = Operator::Add;
  std::uint16_t spacesBefore = 0;  // blanks in front of the token, kept so that a formula prints as it was typed
  std::uint32_t index = 0;
  std::uint32_t firstChild = 0;
  std::uint32_t childCount = 0;
  bool operator==(const Node&) const = default;
};

// A reference into another workbook; kept as text, since that book need not be open. The sheet may be empty (a name of
// the book); `target` is a name when `isName`, else `reference` holds.
struct ExternalReference {
  std::string book;
  std::string sheet;
  bool isName = false;
  std::string name;
  Reference reference;
  bool operator==(const ExternalReference&) const = default;
};

struct NameUse {
  SheetId sheet = kOwnSheet;  // the sheet it is qualified with, as in Sheet1!total; kOwnSheet when it is not
  std::string name;
  bool operator==(const NameUse&) const = default;
};

struct ArrayConstant {
  int rows = 1;
  int columns = 1;
  std::vector<Value> values;  // row by row
  bool operator==(const ArrayConstant&) const = default;
};

// A parsed formula. Immutable once built and shared by all cells that hold the same formula relative to their own
// place.
struct Expression {
  // All but the references is shared by formulas that differ in nothing else, as those are that a change of structure
  // makes by the thousand.
  SharedList<Node> nodes;
  SharedList<std::uint32_t> children;  // node indices
  std::uint32_t root = 0;
  SharedList<Value> constants;
  std::vector<Reference> references;
  SharedList<ExternalReference> externals;
  SharedList<NameUse> names;
  SharedList<ArrayConstant> arrays;
  // Set by the parser: holds a function whose result may change without its precedents (TODAY, RAND, OFFSET, ...).
  bool isVolatile = false;

  bool operator==(const Expression&) const = default;
};

using ExpressionPtr = std::shared_ptr<const Expression>;

}  // namespace tolvane::engine
