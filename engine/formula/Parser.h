#pragma once

#include <cstddef>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "engine/formula/Notation.h"
#include "engine/model/Expression.h"

namespace tolvane::engine {

class Workbook;

// A formula that does not parse: what was wrong and at which byte of the text.
class ParseError : public std::runtime_error {
 public:
  ParseError(const std::string& what, std::size_t at) : std::runtime_error(what), position(at) {}
  std::size_t position;
};

// Whether a word before "!" that is no sheet is the name of another workbook, as Book1 is while it has no file.
using IsOpenBook = std::function<bool(std::string_view name)>;

// Parses a formula in the English grammar (comma between arguments, period as decimal sign), with or without its
// leading "=". References to sheets are resolved in `book`; a sheet that is not there is a ParseError, unless its name
// is that of a file or of an open workbook.
ExpressionPtr ParseFormula(std::string_view text, Notation notation, const FormulaHome& home, const Workbook& book,
                           const IsOpenBook& isOpenBook = {});

}  // namespace tolvane::engine
