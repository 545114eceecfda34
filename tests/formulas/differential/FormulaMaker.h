#pragma once

#include <cstdint>
#include <string>

#include "tests/formulas/differential/ArgumentMaker.h"

namespace tolvane::formulacases {

struct MadeFormula {
  std::string text;  // "=LEFT(Data!C3,2)"
  std::string kind;  // the same in words: "LEFT(words cell; number)"; an array formula's in braces
  bool isArray = false;
};

// Makes formulas over the sheet "Data": every function that the engine has and Calc can be compared on, and operators.
// The same seed gives the same formulas.
class FormulaMaker {
 public:
  explicit FormulaMaker(std::uint64_t seed) : dice_(seed), arguments_(dice_) {}

  // Formulas go through the functions in turn.
  MadeFormula Next();

 private:
  Piece Call(std::string_view name, std::string_view parameters);
  Piece Operation();

  Dice dice_;
  ArgumentMaker arguments_;
  std::size_t next_ = 0;
};

// Whether formulas with this function are made.
bool IsMade(std::string_view function);

}  // namespace tolvane::formulacases
