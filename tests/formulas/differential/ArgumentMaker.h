#pragma once

#include <string>
#include <string_view>

#include "tests/formulas/differential/DataSheet.h"
#include "tests/formulas/differential/Dice.h"

namespace tolvane::formulacases {

// A piece of a formula, and what it is in words, as known differences name it: "Data!E7", "mixed cell".
struct Piece {
  std::string text;
  std::string kind;
};

// Makes arguments of the kinds that FormulaMaker.cpp's table asks for.
class ArgumentMaker {
 public:
  explicit ArgumentMaker(Dice& dice) : dice_(dice) {}

  // Of a kind such as "num", "text", "criterion", "range"; now and then something that does not fit. Throws
  // std::logic_error for a kind that there is not.
  Piece Make(std::string_view kind);
  // Whatever may be a single value: constants, cells of every column, nothing at all.
  Piece Odd();
  // The rows that ranges of one formula share, so that they go together; chosen anew for each formula.
  void ChooseRows();

 private:
  Piece Ordinary(std::string_view kind);
  Piece Number(std::string_view kind);
  Piece TextPiece(std::string_view kind);
  Piece DatePiece(std::string_view kind);
  Piece RangePiece(std::string_view kind);
  Piece Choice(std::string_view kind);
  Piece Criterion();

  Piece Constant(std::string text, const char* kind) { return {std::move(text), kind}; }
  Piece Cell(const DataColumn& column);
  Piece Range(const DataColumn& column);
  Piece AnyRange();
  Piece WholeNumber(int lowest, int highest);

  Dice& dice_;
  int firstRow_ = 1;
  int lastRow_ = kDataRows;
};

}  // namespace tolvane::formulacases
