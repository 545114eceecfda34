#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/libreoffice/Geometry.h"

namespace tolvane::libreoffice {

// Formulas as texts in three dialects, without the leading "=": Excel's in A1 and in R1C1 notation, and the one that
// Calc's programming interface speaks in every language. A formula is read in one and written in another; Calc itself
// does the calculating. Calc's own converter is not used, since it has no error literals and turns TRUE into 1.
enum class Dialect : std::uint8_t { ExcelA1, ExcelR1C1, Calc };

struct CellPos {
  int row = 1, column = 1;
  friend bool operator==(const CellPos&, const CellPos&) = default;
};

struct CellReference {
  struct Corner {
    int row = 1, column = 1;  // absolute, whatever the notation
    bool rowAbsolute = false, columnAbsolute = false;
    friend bool operator==(const Corner&, const Corner&) = default;
  };
  enum class Shape : std::uint8_t { Cell, Area, Rows, Columns, Deleted };
  Shape shape = Shape::Cell;
  std::optional<std::string> sheet;  // without quotes
  std::string file;                  // a URL, of another book
  Corner first, last;                // last: not of a cell

  Rect rect() const;
};

struct FormulaToken {
  enum class Kind : std::uint8_t {
    Number,
    Text,
    Error,
    Boolean,
    Reference,
    Name,
    Function,
    Open,
    Close,
    Separator,
    Union,
    Intersection,
    ArrayOpen,
    ArrayClose,
    ArrayColumn,
    ArrayRow,
    Operator,
    Percent,
    Space,
  };
  Kind kind;
  std::string text;         // as written; of a text the content, of a function its name
  CellReference reference;  // of a reference; of a name its sheet
};

using FormulaTokens = std::vector<FormulaToken>;

struct FormulaError {
  std::string problem;
  std::size_t position;  // from 0, in the formula without "="
};

// Throws FormulaError for what is no formula in this dialect. `origin` is the cell that relative references count from.
// What Calc itself wrote is taken as it comes.
FormulaTokens ReadFormula(std::string_view text, Dialect dialect, CellPos origin);
std::string WriteFormula(const FormulaTokens& tokens, Dialect dialect, CellPos origin);

// A name or function that Calc does not know comes back in small letters; `spell` gives what was written.
using Spelling = std::function<std::string(const std::string& lower)>;
void Spell(FormulaTokens& tokens, const Spelling& spell);

// Whether the result is a truth value, as far as the formula's own form tells.
enum class Truth : std::uint8_t { Yes, No, Unknown };
Truth GivesTruth(const FormulaTokens& tokens);

// "'My Sheet'" where the name needs quotes, else as it is.
std::string QuoteSheetName(std::string_view name);
// The same of "[Book.xlsx]Sheet".
std::string QuotePlace(std::string_view book, std::string_view sheet);
std::string ColumnName(int column);
std::string WriteReference(const CellReference& reference, Dialect dialect, CellPos origin);
// One reference and nothing else.
std::optional<CellReference> ReadReference(std::string_view text, Dialect dialect, CellPos origin);

}  // namespace tolvane::libreoffice
