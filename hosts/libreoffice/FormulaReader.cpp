#include <algorithm>
#include <array>
#include <utility>

#include "hosts/libreoffice/FormulaText.h"

namespace tolvane::libreoffice {

namespace {

using Kind = FormulaToken::Kind;
using Shape = CellReference::Shape;

constexpr std::array<std::string_view, 7> kErrors = {"#NULL!", "#DIV/0!", "#VALUE!", "#REF!",
                                                     "#NAME?", "#NUM!",   "#N/A"};
constexpr std::string_view kDeleted = "#REF!";
// Excel's own limits of a formula.
constexpr std::size_t kMostCharacters = 8192;
constexpr std::size_t kMostLevels = 64;

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}
bool IsLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}
bool IsNamePart(char c) {
  return IsLetter(c) || IsDigit(c) || c == '_' || c == '.' || c == '\\' || c == '?' ||
         static_cast<unsigned char>(c) >= 128;
}
bool IsNameStart(char c) {
  return IsNamePart(c) && !IsDigit(c) && c != '.' && c != '?';
}
char Upper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}
bool EqualsUpper(std::string_view text, std::string_view upper) {
  return text.size() == upper.size() &&
         std::equal(text.begin(), text.end(), upper.begin(), [](char a, char b) { return Upper(a) == b; });
}

class Reader {
 public:
  Reader(std::string_view text, Dialect dialect, CellPos origin) : text_(text), dialect_(dialect), origin_(origin) {}

  FormulaTokens All() {
    if (dialect_ != Dialect::Calc && text_.size() > kMostCharacters) Fail("it is longer than 8192 characters");
    while (at_ < text_.size()) One();
    return std::move(tokens_);
  }

 private:
  [[noreturn]] void Fail(std::string problem) const { throw FormulaError{std::move(problem), at_}; }
  char Peek(std::size_t ahead = 0) const { return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0'; }
  bool StartsWith(std::string_view part) const { return text_.substr(at_).starts_with(part); }
  void Add(Kind kind, std::string text) { tokens_.push_back({kind, std::move(text), {}}); }
  bool calc() const { return dialect_ == Dialect::Calc; }

  void One() {
    const char c = Peek();
    if (c == ' ' || c == '\n' || c == '\r' || c == '\t') {
      const std::size_t start = at_;
      while (at_ < text_.size() && std::string_view(" \n\r\t").find(Peek()) != std::string_view::npos) ++at_;
      return Add(Kind::Space, std::string(text_.substr(start, at_ - start)));
    }
    if (c == '"') return Text();
    if (IsDigit(c) || (c == '.' && IsDigit(Peek(1)))) {
      if (TryReference()) return;
      return Number();
    }
    if (inArray_ && Punctuation(c)) return;
    if (TryReference()) return;
    if (c == '#') return Error();
    if (IsNameStart(c)) return Name({});
    if (Punctuation(c)) return;
    Fail("the character '" + std::string(1, c) + "' has no meaning here");
  }

  void Text() {
    std::string content;
    for (++at_;; ++at_) {
      if (at_ >= text_.size()) Fail("a text has no closing quotation mark");
      if (Peek() == '"') {
        if (Peek(1) != '"') break;
        ++at_;
      }
      content += Peek();
    }
    ++at_;
    Add(Kind::Text, std::move(content));
  }

  void Number() {
    const std::size_t start = at_;
    while (IsDigit(Peek())) ++at_;
    if (Peek() == '.') {
      ++at_;
      while (IsDigit(Peek())) ++at_;
    }
    if (Upper(Peek()) == 'E') {
      const std::size_t sign = Peek(1) == '+' || Peek(1) == '-' ? 2 : 1;
      if (IsDigit(Peek(sign))) {
        at_ += sign;
        while (IsDigit(Peek())) ++at_;
      }
    }
    if (IsNameStart(Peek())) Fail("a number runs into a name");
    Add(Kind::Number, std::string(text_.substr(start, at_ - start)));
  }

  void Error() {
    for (const std::string_view error : kErrors) {
      if (!EqualsUpper(text_.substr(at_, error.size()), error)) continue;
      at_ += error.size();
      if (error != kDeleted) return Add(Kind::Error, std::string(error));
      // What is left of a reference; Calc writes the remains of its other half behind it.
      FormulaToken token{Kind::Reference, std::string(kDeleted), {}};
      token.reference.shape = Shape::Deleted;
      tokens_.push_back(std::move(token));
      return;
    }
    Fail("'#' begins no error value");
  }

  bool Punctuation(char c) {
    const auto one = [&](Kind kind) {
      ++at_;
      Add(kind, std::string(1, c));
      return true;
    };
    switch (c) {
      case '(':
        return one(Kind::Open);
      case ')':
        return one(Kind::Close);
      case '{':
        inArray_ = true;
        return one(Kind::ArrayOpen);
      case '}':
        inArray_ = false;
        return one(Kind::ArrayClose);
      case '%':
        return one(Kind::Percent);
      case '+':
      case '-':
      case '*':
      case '/':
      case '^':
      case '&':
      case '=':
      case ':':
        return one(Kind::Operator);
      case '<':
      case '>': {
        const std::size_t size = Peek(1) == '=' || (c == '<' && Peek(1) == '>') ? 2 : 1;
        Add(Kind::Operator, std::string(text_.substr(at_, size)));
        at_ += size;
        return true;
      }
      case ',':
        return calc() ? false : one(inArray_ ? Kind::ArrayColumn : Kind::Separator);
      case ';':
        if (calc()) return one(inArray_ ? Kind::ArrayColumn : Kind::Separator);
        return inArray_ ? one(Kind::ArrayRow) : false;
      case '|':
        return calc() && inArray_ ? one(Kind::ArrayRow) : false;
      case '~':
        return calc() ? one(Kind::Union) : false;
      case '!':
        return calc() ? one(Kind::Intersection) : false;
      default:
        return false;
    }
  }

  void Name(const CellReference& place) {
    const std::size_t start = at_;
    while (IsNamePart(Peek())) ++at_;
    std::string name(text_.substr(start, at_ - start));
    const bool bare = !place.sheet && place.file.empty();
    if (Peek() == '(' && bare) return Add(Kind::Function, std::move(name));
    if (bare && (EqualsUpper(name, "TRUE") || EqualsUpper(name, "FALSE"))) {
      std::transform(name.begin(), name.end(), name.begin(), Upper);
      return Add(Kind::Boolean, std::move(name));
    }
    FormulaToken token{Kind::Name, std::move(name), {}};
    token.reference = place;
    tokens_.push_back(std::move(token));
  }

  // --- references
  // -----------------------------------------------------------------------------------------------------
  struct Half {
    std::optional<int> row, column;
    bool rowAbsolute = false, columnAbsolute = false, deleted = false;
  };

  std::optional<std::string> Quoted() {
    std::string name;
    for (std::size_t i = at_ + 1; i < text_.size(); ++i) {
      if (text_[i] != '\'') {
        name += text_[i];
      } else if (i + 1 < text_.size() && text_[i + 1] == '\'') {
        name += '\'';
        ++i;
      } else {
        at_ = i + 1;
        return name;
      }
    }
    return std::nullopt;
  }

  // A sheet in front of a reference or name, with its separator; or another book in front of one of its names.
  bool Prefix(CellReference& reference) {
    const std::size_t start = at_;
    if (calc() && Peek() == '\'') {  // 'file:///...'#$Sheet.A1
      if (const auto file = Quoted(); file && Peek() == '#') {
        reference.file = *file;
        ++at_;
      } else {
        at_ = start;
      }
    }
    const std::size_t behindFile = at_;
    if (calc() && Peek() == '$') ++at_;
    std::optional<std::string> name;
    if (Peek() == '\'') {
      name = Quoted();
    } else if (StartsWith(kDeleted)) {
      name = std::string(kDeleted);
      at_ += kDeleted.size();
    } else if (!calc() || !IsDigit(Peek()) || at_ > start) {
      const std::size_t first = at_;
      if (!calc() && Peek() == '[') {  // [Book.xlsx]Sheet!A1
        const std::size_t end = text_.find(']', at_);
        if (end != std::string_view::npos) at_ = end + 1;
      }
      while (at_ < text_.size() && IsNamePart(Peek()) && !(calc() && Peek() == '.')) ++at_;
      if (at_ > first) name = std::string(text_.substr(first, at_ - first));
    }
    if (!reference.file.empty() && (!name || Peek() != '.')) {  // 'file:///...'#name
      at_ = behindFile;
      return true;
    }
    if (!name || name->empty() || Peek() != (calc() ? '.' : '!')) {
      at_ = start;
      reference.file.clear();
      return false;
    }
    ++at_;
    reference.sheet = std::move(name);
    return true;
  }

  // Digits up to the largest row; none for what is no number of a row or column.
  std::optional<int> Digits(int most) {
    const std::size_t start = at_;
    long value = 0;
    while (IsDigit(Peek()) && value <= most) value = value * 10 + (text_[at_++] - '0');
    if (at_ == start || value < 1 || value > most || IsDigit(Peek())) return std::nullopt;
    return static_cast<int>(value);
  }

  std::optional<Half> HalfA1() {
    Half half;
    const std::size_t start = at_;
    half.columnAbsolute = Peek() == '$';
    if (half.columnAbsolute) ++at_;
    if (calc() && StartsWith(kDeleted)) {
      at_ += kDeleted.size();
      half.deleted = true;
    } else {
      int column = 0;
      const std::size_t letters = at_;
      while (IsLetter(Peek()) && at_ - letters < 3) column = column * 26 + (Upper(text_[at_++]) - 'A' + 1);
      if (at_ > letters) {
        if (column > kMaxColumn) return Undo(start);
        half.column = column;
      } else {
        half.rowAbsolute = half.columnAbsolute;
        half.columnAbsolute = false;
      }
    }
    const bool dollar = Peek() == '$' && (half.column || half.deleted);
    if (dollar) ++at_;
    if (calc() && (half.column || half.deleted) && StartsWith(kDeleted)) {
      at_ += kDeleted.size();
      half.deleted = true;
      return half;
    }
    if (IsDigit(Peek())) {
      half.row = Digits(kMaxRow);
      if (!half.row) return Undo(start);
      if (half.column) half.rowAbsolute = dollar;
    } else if (dollar) {
      return Undo(start);
    }
    if (!half.row && !half.column && !half.deleted) return Undo(start);
    return half;
  }

  // One of R, R5, R[-5] and the same with C; an offset counts from the origin and wraps at the sheet's edge.
  std::optional<int> AxisR1C1(char letter, int origin, int most, bool& absolute) {
    if (Upper(Peek()) != letter) return std::nullopt;
    const std::size_t start = at_++;
    if (IsDigit(Peek())) {
      absolute = true;
      const auto value = Digits(most);
      if (!value) at_ = start;
      return value;
    }
    absolute = false;
    if (Peek() != '[') return origin;
    ++at_;
    const bool negative = Peek() == '-';
    if (negative) ++at_;
    long offset = 0;
    const std::size_t digits = at_;
    while (IsDigit(Peek()) && offset <= most) offset = offset * 10 + (text_[at_++] - '0');
    if (at_ == digits || Peek() != ']' || offset >= most) {
      at_ = start;
      return std::nullopt;
    }
    ++at_;
    const long value = origin + (negative ? -offset : offset);
    return static_cast<int>((value - 1 + most) % most + 1);
  }

  std::optional<Half> HalfR1C1() {
    Half half;
    const std::size_t start = at_;
    half.row = AxisR1C1('R', origin_.row, kMaxRow, half.rowAbsolute);
    half.column = AxisR1C1('C', origin_.column, kMaxColumn, half.columnAbsolute);
    if (!half.row && !half.column) return Undo(start);
    return half;
  }

  std::optional<Half> Undo(std::size_t start) {
    at_ = start;
    return std::nullopt;
  }

  std::optional<Half> NextHalf() {
    auto half = dialect_ == Dialect::ExcelR1C1 ? HalfR1C1() : HalfA1();
    return half;
  }

  // What a reference runs into must not make a name, a number or a call of it.
  bool EndsHere() const {
    const char c = Peek();
    return !IsNamePart(c) && c != '(' && c != '$' && c != '[' && (c != '!' || calc());
  }

  static void Put(CellReference::Corner& corner, const Half& half) {
    corner = {half.row.value_or(1), half.column.value_or(1), half.rowAbsolute, half.columnAbsolute};
  }

  bool TryReference() {
    const std::size_t start = at_;
    CellReference reference;
    const bool prefixed = Prefix(reference);
    const std::size_t body = at_;
    auto first = NextHalf();
    std::optional<Half> second;
    if (first && Peek() == ':') {
      const std::size_t colon = at_++;
      if (calc() && reference.sheet) {  // the other corner may name the sheet again
        CellReference again;
        Prefix(again);
      }
      second = NextHalf();
      const bool alike = second && (first->deleted || second->deleted ||
                                    (first->row.has_value() == second->row.has_value() &&
                                     first->column.has_value() == second->column.has_value()));
      if (!alike || !EndsHere()) {
        at_ = colon;
        second.reset();
      }
    }
    if (first && !second) {
      // Alone, only R1C1 has whole rows and columns.
      const bool whole = !first->deleted && (!first->row || !first->column);
      if ((whole && dialect_ != Dialect::ExcelR1C1) || !EndsHere()) first.reset();
    }
    if (!first) {
      at_ = body;
      if (prefixed && IsNameStart(Peek())) {
        Name(reference);
        return true;
      }
      if (prefixed && StartsWith(kDeleted)) {
        Error();
        tokens_.back().reference.sheet = reference.sheet;
        return true;
      }
      if (prefixed) Fail("nothing that a sheet has follows its name");
      at_ = start;
      return false;
    }
    Put(reference.first, *first);
    Put(reference.last, second ? *second : *first);
    if (first->deleted || (second && second->deleted) || reference.sheet == kDeleted) {
      reference.shape = Shape::Deleted;
    } else if (!first->column) {
      reference.shape = Shape::Rows;
      reference.last.column = kMaxColumn;
    } else if (!first->row) {
      reference.shape = Shape::Columns;
      reference.last.row = kMaxRow;
    } else {
      reference.shape = second ? Shape::Area : Shape::Cell;
    }
    tokens_.push_back({Kind::Reference, std::string(text_.substr(start, at_ - start)), std::move(reference)});
    return true;
  }

  std::string_view text_;
  Dialect dialect_;
  CellPos origin_;
  std::size_t at_ = 0;
  bool inArray_ = false;
  FormulaTokens tokens_;
};

// Holds the order of operands and operators, and tells commas that unite references and blanks that cross them from
// those that separate arguments and words.
class Checker {
 public:
  explicit Checker(FormulaTokens& tokens) : tokens_(tokens) {}

  void Run() {
    for (std::size_t i = 0; i < tokens_.size(); ++i) Next(i);
    if (inArray_ || !levels_.empty()) Fail("a parenthesis is not closed");
    if (expectsOperand_) Fail("it ends where a value should stand");
  }

 private:
  [[noreturn]] static void Fail(std::string problem) { throw FormulaError{std::move(problem), 0}; }

  void Next(std::size_t i) {
    FormulaToken& token = tokens_[i];
    if (inArray_) return InArray(token);
    switch (token.kind) {
      case Kind::Space:
        if (!expectsOperand_ && i + 1 < tokens_.size() && CanCross(i + 1) && EndsReference(i)) {
          token.kind = Kind::Intersection;
          expectsOperand_ = true;
        }
        return;
      case Kind::Number:
      case Kind::Text:
      case Kind::Error:
      case Kind::Boolean:
      case Kind::Reference:
      case Kind::Name:
        return Operand(token);
      case Kind::Function:
        if (!expectsOperand_) Fail("an operator is missing before " + token.text);
        callNext_ = true;
        return;
      case Kind::Open:
        if (!expectsOperand_) Fail("an operator is missing before a parenthesis");
        if (levels_.size() >= kMostLevels) Fail("it nests more than 64 levels deep");
        levels_.push_back(std::exchange(callNext_, false));
        return;
      case Kind::Close:
        if (levels_.empty()) Fail("a parenthesis is closed that was never opened");
        if (expectsOperand_ && !levels_.back()) Fail("a value is missing before a closing parenthesis");
        levels_.pop_back();
        expectsOperand_ = false;
        return;
      case Kind::Separator:
        if (levels_.empty()) Fail("a comma stands outside of parentheses");
        if (!levels_.back()) {
          if (expectsOperand_) Fail("a value is missing before a comma");
          token.kind = Kind::Union;
        }
        expectsOperand_ = true;
        return;
      case Kind::Percent:
        if (expectsOperand_) Fail("a value is missing before '%'");
        return;
      case Kind::Operator:
        if (expectsOperand_ && token.text != "+" && token.text != "-") Fail("a value is missing before " + token.text);
        expectsOperand_ = true;
        return;
      case Kind::ArrayOpen:
        if (!expectsOperand_) Fail("an operator is missing before an array");
        inArray_ = true;
        arrayNeedsValue_ = true;
        return;
      default:
        Fail("'" + token.text + "' has no meaning here");
    }
  }

  void Operand(const FormulaToken& token) {
    if (!expectsOperand_) Fail("an operator is missing before " + token.text);
    expectsOperand_ = false;
  }

  void InArray(const FormulaToken& token) {
    switch (token.kind) {
      case Kind::Space:
        return;
      case Kind::Number:
      case Kind::Text:
      case Kind::Error:
      case Kind::Boolean:
        if (!arrayNeedsValue_) Fail("a comma is missing in an array");
        arrayNeedsValue_ = false;
        return;
      case Kind::Operator:
        if (!arrayNeedsValue_ || (token.text != "-" && token.text != "+")) Fail("an array holds constants only");
        return;
      case Kind::ArrayColumn:
      case Kind::ArrayRow:
        if (arrayNeedsValue_) Fail("a value is missing in an array");
        arrayNeedsValue_ = true;
        return;
      case Kind::ArrayClose:
        if (arrayNeedsValue_) Fail("a value is missing in an array");
        inArray_ = false;
        expectsOperand_ = false;
        return;
      default:
        Fail("an array holds constants only");
    }
  }

  bool CanCross(std::size_t i) const { return tokens_[i].kind == Kind::Reference || tokens_[i].kind == Kind::Open; }
  bool EndsReference(std::size_t space) const {
    return space > 0 && (tokens_[space - 1].kind == Kind::Reference || tokens_[space - 1].kind == Kind::Close);
  }

  FormulaTokens& tokens_;
  std::vector<bool> levels_;  // true: the arguments of a function
  bool expectsOperand_ = true;
  bool callNext_ = false;
  bool inArray_ = false;
  bool arrayNeedsValue_ = false;
};

}  // namespace

FormulaTokens ReadFormula(std::string_view text, Dialect dialect, CellPos origin) {
  FormulaTokens tokens = Reader(text, dialect, origin).All();
  if (dialect != Dialect::Calc) Checker(tokens).Run();
  return tokens;
}

std::optional<CellReference> ReadReference(std::string_view text, Dialect dialect, CellPos origin) {
  try {
    const FormulaTokens tokens = Reader(text, dialect, origin).All();
    if (tokens.size() == 1 && tokens[0].kind == Kind::Reference && tokens[0].reference.shape != Shape::Deleted) {
      return tokens[0].reference;
    }
  } catch (const FormulaError&) {
  }
  return std::nullopt;
}

}  // namespace tolvane::libreoffice
