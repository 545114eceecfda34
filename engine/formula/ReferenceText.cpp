#include "engine/formula/ReferenceText.h"

#include <charconv>
#include <utility>

#include "engine/formula/Printer.h"

namespace tolvane::engine {
namespace {

using Shape = Reference::Shape;

bool IsLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}
char Upper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

// One side of a ":"; a cell has both coordinates, whole rows or columns have one.
struct Corner {
  std::optional<Coordinate> row;
  std::optional<Coordinate> column;
};

class Scanner {
 public:
  Scanner(std::string_view text, std::size_t at, CellPos home) : text_(text), at_(at), home_(home) {}

  std::size_t position() const { return at_; }
  char Peek() const { return at_ < text_.size() ? text_[at_] : '\0'; }
  bool Skip(char c) {
    if (Peek() != c) return false;
    ++at_;
    return true;
  }
  // No longer word, call, sheet prefix or offset goes on here.
  bool AtBoundary() const {
    const char c = Peek();
    return !IsWordByte(c) && c != '(' && c != '!' && c != '[' && c != '$';
  }

  std::optional<Corner> ScanCorner(Notation notation) { return notation == Notation::A1 ? ScanA1() : ScanR1C1(); }

 private:
  std::optional<int> ScanDigits() {
    const std::size_t from = at_;
    while (IsDigit(Peek())) ++at_;
    int value = 0;
    const auto [end, error] = std::from_chars(text_.data() + from, text_.data() + at_, value);
    if (error != std::errc() || end != text_.data() + at_) return std::nullopt;
    return value;
  }

  std::optional<Corner> ScanA1() {
    Corner corner;
    bool absolute = Skip('$');
    if (IsLetter(Peek())) {
      int column = 0;
      for (int letters = 0; IsLetter(Peek()); ++letters) {
        if (letters == 3) return std::nullopt;
        column = column * 26 + (Upper(Peek()) - 'A' + 1);
        ++at_;
      }
      if (column > kMaxColumn) return std::nullopt;
      corner.column = absolute ? Coordinate{column, false} : Coordinate{column - home_.column, true};
      absolute = Skip('$');
      if (!absolute && !IsDigit(Peek())) return corner;
    }
    if (!IsDigit(Peek()) || Peek() == '0') return std::nullopt;
    const std::optional<int> row = ScanDigits();
    if (!row || *row > kMaxRow) return std::nullopt;
    corner.row = absolute ? Coordinate{*row, false} : Coordinate{*row - home_.row, true};
    return corner;
  }

  std::optional<Corner> ScanR1C1() {
    Corner corner;
    if (Upper(Peek()) == 'R') {
      ++at_;
      if (!(corner.row = ScanCoordinate(kMaxRow))) return std::nullopt;
    }
    if (Upper(Peek()) == 'C') {
      ++at_;
      if (!(corner.column = ScanCoordinate(kMaxColumn))) return std::nullopt;
    }
    if (!corner.row && !corner.column) return std::nullopt;
    return corner;
  }

  // Behind the R or C: "5", "[-3]" or nothing, which is [0].
  std::optional<Coordinate> ScanCoordinate(int limit) {
    if (Skip('[')) {
      const bool negative = Skip('-');
      if (!negative) Skip('+');
      if (!IsDigit(Peek())) return std::nullopt;
      const std::optional<int> offset = ScanDigits();
      if (!offset || *offset >= limit || !Skip(']')) return std::nullopt;
      return Coordinate{negative ? -*offset : *offset, true};
    }
    if (!IsDigit(Peek())) return Coordinate{0, true};
    const std::optional<int> index = ScanDigits();
    if (!index || *index < 1 || *index > limit) return std::nullopt;
    return Coordinate{*index, false};
  }

  std::string_view text_;
  std::size_t at_;
  CellPos home_;
};

void PutInOrder(Coordinate& first, Coordinate& last, int home) {
  if (first.From(home) > last.From(home)) std::swap(first, last);
}

Reference MakeReference(const Corner& from, const Corner& to, Shape shape, CellPos home) {
  Reference reference;
  reference.shape = shape;
  if (from.row) {
    reference.firstRow = *from.row;
    reference.lastRow = *to.row;
    PutInOrder(reference.firstRow, reference.lastRow, home.row);
  } else {
    reference.lastRow = Coordinate{kMaxRow, false};
  }
  if (from.column) {
    reference.firstColumn = *from.column;
    reference.lastColumn = *to.column;
    PutInOrder(reference.firstColumn, reference.lastColumn, home.column);
  } else {
    reference.lastColumn = Coordinate{kMaxColumn, false};
  }
  return reference;
}

void AppendNumber(std::string& out, int number) {
  char digits[12];
  const auto [end, error] = std::to_chars(digits, digits + sizeof digits, number);
  out.append(digits, end);
}

void AppendLetters(std::string& out, int column) {
  char letters[3];
  int count = 0;
  for (; column > 0; column = (column - 1) / 26) letters[count++] = static_cast<char>('A' + (column - 1) % 26);
  while (count > 0) out += letters[--count];
}

void AppendR1C1(std::string& out, char axis, const Coordinate& coordinate) {
  out += axis;
  if (!coordinate.relative) return AppendNumber(out, coordinate.value);
  if (coordinate.value == 0) return;
  out += '[';
  AppendNumber(out, coordinate.value);
  out += ']';
}

// A bound as it stands on the grid of A1 notation.
struct Bound {
  int index;
  bool absolute;
};

std::pair<Bound, Bound> BoundsOf(const Coordinate& first, const Coordinate& last, int home, Axis axis) {
  Bound low{WrapIndex(first.From(home), axis), !first.relative};
  Bound high{WrapIndex(last.From(home), axis), !last.relative};
  if (low.index > high.index) std::swap(low, high);
  return {low, high};
}

void AppendColumn(std::string& out, const Bound& bound) {
  if (bound.absolute) out += '$';
  AppendLetters(out, bound.index);
}

void AppendRow(std::string& out, const Bound& bound) {
  if (bound.absolute) out += '$';
  AppendNumber(out, bound.index);
}

void AppendA1(std::string& out, const Reference& reference, CellPos home) {
  const auto [top, bottom] = BoundsOf(reference.firstRow, reference.lastRow, home.row, Axis::Rows);
  const auto [left, right] = BoundsOf(reference.firstColumn, reference.lastColumn, home.column, Axis::Columns);
  switch (reference.shape) {
    case Shape::Cell:
      AppendColumn(out, left);
      AppendRow(out, top);
      return;
    case Shape::Area:
      AppendColumn(out, left);
      AppendRow(out, top);
      out += ':';
      AppendColumn(out, right);
      AppendRow(out, bottom);
      return;
    case Shape::WholeRows:
      AppendRow(out, top);
      out += ':';
      AppendRow(out, bottom);
      return;
    case Shape::WholeColumns:
      AppendColumn(out, left);
      out += ':';
      AppendColumn(out, right);
      return;
    case Shape::Broken:
      out += TextOf(ErrorCode::Ref);
      return;
  }
}

void AppendR1C1(std::string& out, const Reference& reference) {
  const auto corner = [&](const Coordinate& row, const Coordinate& column) {
    if (reference.shape != Shape::WholeColumns) AppendR1C1(out, 'R', row);
    if (reference.shape != Shape::WholeRows) AppendR1C1(out, 'C', column);
  };
  if (reference.shape == Shape::Broken) {
    out += TextOf(ErrorCode::Ref);
    return;
  }
  corner(reference.firstRow, reference.firstColumn);
  const bool single = reference.shape == Shape::Cell ||
                      (reference.shape == Shape::WholeRows && reference.firstRow == reference.lastRow) ||
                      (reference.shape == Shape::WholeColumns && reference.firstColumn == reference.lastColumn);
  if (single) return;
  out += ':';
  corner(reference.lastRow, reference.lastColumn);
}

}  // namespace

std::optional<ScannedReference> ScanReference(std::string_view text, std::size_t at, Notation notation, CellPos home) {
  Scanner scanner(text, at, home);
  const std::optional<Corner> first = scanner.ScanCorner(notation);
  if (!first) return std::nullopt;
  const bool isCell = first->row && first->column;
  const Shape whole = first->row ? Shape::WholeRows : Shape::WholeColumns;

  Scanner beyond = scanner;
  if (beyond.Skip(':')) {
    const std::optional<Corner> last = beyond.ScanCorner(notation);
    if (last && beyond.AtBoundary() && first->row.has_value() == last->row.has_value() &&
        first->column.has_value() == last->column.has_value()) {
      return ScannedReference{MakeReference(*first, *last, isCell ? Shape::Area : whole, home), beyond.position() - at};
    }
  }
  if (!scanner.AtBoundary() || (!isCell && notation == Notation::A1)) return std::nullopt;
  return ScannedReference{MakeReference(*first, *first, isCell ? Shape::Cell : whole, home), scanner.position() - at};
}

bool ReadsAsReference(std::string_view name, Notation notation) {
  constexpr CellPos kAnywhere{kMaxRow / 2, kMaxColumn / 2};
  const auto found = ScanReference(name, 0, notation, kAnywhere);
  return found && found->length == name.size();
}

bool ReadsAsColumn(std::string_view name, Notation notation) {
  return notation == Notation::A1 && ReadsAsReference(std::string(name).append(":A"), notation);
}

void AppendReference(std::string& out, const Reference& reference, Notation notation, CellPos home) {
  if (notation == Notation::A1) {
    AppendA1(out, reference, home);
  } else {
    AppendR1C1(out, reference);
  }
}

std::string ColumnLetters(int column) {
  std::string out;
  AppendLetters(out, column);
  return out;
}

std::string PrintAddress(const Rect& area, const AddressStyle& style) {
  // Whole sheets come out as rows, as in the programs that people know.
  const Shape shape = area.isCell()           ? Shape::Cell
                      : area.isWholeRows()    ? Shape::WholeRows
                      : area.isWholeColumns() ? Shape::WholeColumns
                                              : Shape::Area;
  const auto row = [&](int index) {
    return style.absoluteRow ? Coordinate{index, false} : Coordinate{index - style.relativeTo.row, true};
  };
  const auto column = [&](int index) {
    return style.absoluteColumn ? Coordinate{index, false} : Coordinate{index - style.relativeTo.column, true};
  };
  const Reference reference{.shape = shape,
                            .firstRow = row(area.top),
                            .lastRow = row(area.bottom),
                            .firstColumn = column(area.left),
                            .lastColumn = column(area.right)};
  std::string out;
  AppendReference(out, reference, style.notation, style.relativeTo);
  return out;
}

}  // namespace tolvane::engine
