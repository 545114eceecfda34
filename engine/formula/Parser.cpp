#include "engine/formula/Parser.h"

#include <charconv>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

#include "engine/formula/ExpressionBuilder.h"
#include "engine/formula/FunctionTable.h"
#include "engine/formula/ReferenceText.h"
#include "engine/formula/SheetPrefix.h"
#include "engine/model/Workbook.h"
#include "platform/Text.h"

namespace tolvane::engine {
namespace {

// The limits of the programs that people exchange workbooks with; the second also bounds the recursion.
constexpr std::size_t kMostCharacters = 8192;
constexpr int kDeepestNesting = 64;

constexpr ErrorCode kErrors[] = {ErrorCode::Null, ErrorCode::Div0, ErrorCode::Value, ErrorCode::Ref,
                                 ErrorCode::Name, ErrorCode::Num,  ErrorCode::NA};

using NodeId = ExpressionBuilder::NodeId;

// Recursive descent, one function per level of precedence; from the loosest: comparison, &, + and -, * and /, ^, %,
// signs, union, intersection, range.
class FormulaParser {
 public:
  FormulaParser(std::string_view text, Notation notation, const FormulaHome& home, const Workbook& book,
                const IsOpenBook& isOpenBook)
      : text_(text), notation_(notation), home_(home), book_(book), isOpenBook_(isOpenBook) {}

  ExpressionPtr Parse() {
    CheckLength();
    Skip('=');
    if (text_.find_first_not_of(" \t\r\n", at_) == std::string_view::npos) {
      Fail("The formula is empty; write something behind \"=\"");
    }
    const NodeId root = ParseComparison();
    SkipBlanks();
    if (at_ < text_.size()) FailUnexpected();
    return builder_.Finish(root);
  }

 private:
  // --- characters
  // ------------------------------------------------------------------------------------------------------
  char Peek(std::size_t ahead = 0) const { return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0'; }
  bool Skip(char c) {
    if (at_ >= text_.size() || text_[at_] != c) return false;
    ++at_;
    return true;
  }
  int SkipBlanks() {
    const std::size_t from = at_;
    while (at_ < text_.size() && IsBlank(text_[at_])) ++at_;
    return static_cast<int>(at_ - from);
  }
  [[noreturn]] void Fail(const std::string& what) const { FailAt(what, at_); }
  [[noreturn]] static void FailAt(const std::string& what, std::size_t at) {
    throw ParseError(what + " (at character " + std::to_string(at + 1) + ").", at);
  }
  static std::string Quoted(std::string_view text) { return std::string("\"").append(text).append("\""); }
  [[noreturn]] static void FailNoSheet(std::string_view name, std::size_t at) {
    FailAt("There is no sheet named " + Quoted(name), at);
  }
  [[noreturn]] void FailUnexpected() const {
    if (at_ >= text_.size()) Fail("The formula ends where a value, a reference or a function is expected");
    std::size_t length = 1;
    while (at_ + length < text_.size() && (static_cast<unsigned char>(text_[at_ + length]) & 0xC0) == 0x80) ++length;
    Fail(Quoted(text_.substr(at_, length)) + " is not expected here");
  }
  void CheckLength() const {
    std::size_t characters = 0;
    for (const char c : text_) characters += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    if (characters > kMostCharacters) {
      FailAt("The formula has " + std::to_string(characters) + " characters; at most " +
                 std::to_string(kMostCharacters) + " are allowed",
             text_.size());
    }
  }

  // Bounds the recursion.
  class Level {
   public:
    explicit Level(FormulaParser& parser) : parser_(parser) {
      if (++parser_.depth_ > kDeepestNesting) {
        parser_.Fail("The formula is nested more than " + std::to_string(kDeepestNesting) +
                     " levels deep; split it over several cells");
      }
    }
    ~Level() { --parser_.depth_; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

   private:
    FormulaParser& parser_;
  };

  // --- operators
  // ------------------------------------------------------------------------------------------------------- Blanks
  // before an operator belong to it; when no operator of this level follows they are left for the caller.
  template <class Match, class Next>
  NodeId ParseLeftAssociative(Match match, Next next) {
    NodeId left = next();
    for (;;) {
      const std::size_t before = at_;
      const int spaces = SkipBlanks();
      const std::optional<Operator> op = match();
      if (!op) {
        at_ = before;
        return left;
      }
      const NodeId right = next();
      left = builder_.Binary(*op, left, right, spaces);
    }
  }

  NodeId ParseComparison() {
    return ParseLeftAssociative(
        [this]() -> std::optional<Operator> {
          if (Skip('=')) return Operator::Equal;
          if (Skip('<')) return Skip('>') ? Operator::NotEqual : Skip('=') ? Operator::LessEqual : Operator::Less;
          if (Skip('>')) return Skip('=') ? Operator::GreaterEqual : Operator::Greater;
          return std::nullopt;
        },
        [this] { return ParseConcatenation(); });
  }

  NodeId ParseConcatenation() {
    return ParseLeftAssociative(
        [this]() -> std::optional<Operator> { return Skip('&') ? std::optional(Operator::Concatenate) : std::nullopt; },
        [this] { return ParseSum(); });
  }

  NodeId ParseSum() {
    return ParseLeftAssociative(
        [this]() -> std::optional<Operator> {
          if (Skip('+')) return Operator::Add;
          if (Skip('-')) return Operator::Subtract;
          return std::nullopt;
        },
        [this] { return ParseProduct(); });
  }

  NodeId ParseProduct() {
    return ParseLeftAssociative(
        [this]() -> std::optional<Operator> {
          if (Skip('*')) return Operator::Multiply;
          if (Skip('/')) return Operator::Divide;
          return std::nullopt;
        },
        [this] { return ParsePower(); });
  }

  NodeId ParsePower() {
    return ParseLeftAssociative(
        [this]() -> std::optional<Operator> { return Skip('^') ? std::optional(Operator::Power) : std::nullopt; },
        [this] { return ParsePercent(); });
  }

  NodeId ParsePercent() {
    NodeId operand = ParseSign();
    for (int count = 0;; ++count) {
      const std::size_t before = at_;
      const int spaces = SkipBlanks();
      if (!Skip('%')) {
        at_ = before;
        return operand;
      }
      if (count == kDeepestNesting) Fail("There are too many percent signs in a row");
      operand = builder_.Unary(Operator::Percent, operand, spaces);
    }
  }

  NodeId ParseSign() {
    const std::size_t before = at_;
    const int spaces = SkipBlanks();
    if (Peek() == '-' || Peek() == '+') {
      const Level level(*this);
      const Operator op = Peek() == '-' ? Operator::Minus : Operator::Plus;
      ++at_;
      return builder_.Unary(op, ParseSign(), spaces);
    }
    at_ = before;
    return ParseUnion();
  }

  // Between the arguments of a function a comma separates, elsewhere it unites references.
  NodeId ParseUnion() {
    NodeId left = ParseIntersection();
    while (commaUnites_) {
      const std::size_t before = at_;
      const int spaces = SkipBlanks();
      const std::size_t comma = at_;
      if (!Skip(',')) {
        at_ = before;
        return left;
      }
      RequireReference(left, comma);
      const NodeId right = ParseIntersection();
      RequireReference(right, comma);
      left = builder_.Binary(Operator::Union, left, right, spaces);
    }
    return left;
  }

  NodeId ParseIntersection() {
    NodeId left = ParseRange();
    for (;;) {
      const std::size_t before = at_;
      if (SkipBlanks() == 0 || !IsReferenceLike(left) || !AtReferenceStart()) {
        at_ = before;
        return left;
      }
      at_ = before + 1;  // the first blank is the operator, the others stand before the operand
      const NodeId right = ParseRange();
      RequireReference(right, before);
      left = builder_.Binary(Operator::Intersect, left, right);
    }
  }

  NodeId ParseRange() {
    NodeId left = ParsePrimary();
    while (Peek() == ':') {
      const std::size_t colon = at_;
      RequireReference(left, colon);
      ++at_;
      const NodeId right = ParsePrimary();
      RequireReference(right, colon);
      left = builder_.Binary(Operator::Range, left, right);
    }
    return left;
  }

  bool IsReferenceLike(NodeId id) const {
    for (;;) {
      const Node& node = builder_.At(id);
      switch (node.kind) {
        case Node::Kind::Reference:
        case Node::Kind::ExternalRef:
        case Node::Kind::Name:
        case Node::Kind::Function:
          return true;
        case Node::Kind::Binary:
          return node.op == Operator::Range || node.op == Operator::Union || node.op == Operator::Intersect;
        case Node::Kind::Parenthesis:
          id = builder_.ChildOf(id, 0);
          break;
        default:
          return false;
      }
    }
  }
  void RequireReference(NodeId id, std::size_t operatorAt) const {
    if (IsReferenceLike(id)) return;
    FailAt(Quoted(text_.substr(operatorAt, 1)) + " needs a reference on both sides", operatorAt);
  }
  bool AtReferenceStart() const {
    const char c = Peek();
    return (IsWordByte(c) && c != '.' && c != '?') || c == '$' || c == '\'' || c == '[' || c == '(' || c == '#';
  }

  // --- operands
  // --------------------------------------------------------------------------------------------------------
  NodeId ParsePrimary() {
    const int spaces = SkipBlanks();
    const char c = Peek();
    if (c == '(') return ParseParenthesis(spaces);
    if (c == '"') return builder_.Constant(Value(ScanText()), spaces);
    if (c == '{') return ParseArray(spaces);
    if (c == '#') return ParseErrorLiteral(spaces);
    const std::optional<SheetPrefix> prefix = ScanSheetPrefix(text_, at_, notation_);
    if (prefix && !BeginsWithName(*prefix)) return ParsePrefixed(*prefix, spaces);
    if (const std::optional<ScannedReference> found = ScanReference(text_, at_, notation_, home_.cell)) {
      at_ += found->length;
      return builder_.Refer(found->reference, spaces);
    }
    if (IsDigit(c) || (c == '.' && IsDigit(Peek(1)))) return builder_.Constant(Value(ScanNumber()), spaces);
    if (const std::optional<std::string_view> name = ScanQuotedName()) {
      return builder_.UseName({kOwnSheet, SpellName(home_.sheet, *name)}, spaces);
    }
    if (c == '\'') Fail("A quoted sheet name must end with an apostrophe and \"!\"");
    if (IsWordByte(c) && c != '.' && c != '?') return ParseWord(spaces);
    FailUnexpected();
  }

  NodeId ParseParenthesis(int spaces) {
    const Level level(*this);
    const std::size_t open = at_;
    ++at_;
    const bool outer = std::exchange(commaUnites_, true);
    const NodeId inner = ParseComparison();
    commaUnites_ = outer;
    SkipBlanks();
    if (!Skip(')')) {
      if (at_ < text_.size()) FailUnexpected();
      FailAt("This parenthesis is never closed", open);
    }
    return builder_.Parenthesis(inner, spaces);
  }

  std::string ScanText() {
    const std::size_t open = at_++;
    std::string content;
    for (;;) {
      const std::size_t quote = text_.find('"', at_);
      if (quote == std::string_view::npos) FailAt("This text is never closed with a quotation mark", open);
      content += text_.substr(at_, quote - at_);
      at_ = quote + 1;
      if (Peek() != '"') return content;
      content += '"';
      ++at_;
    }
  }

  double ScanNumber() {
    const std::size_t from = at_;
    while (IsDigit(Peek())) ++at_;
    if (Peek() == '.') {
      ++at_;
      while (IsDigit(Peek())) ++at_;
    }
    if (Peek() == 'e' || Peek() == 'E') {
      const std::size_t sign = Peek(1) == '+' || Peek(1) == '-' ? 1 : 0;
      if (IsDigit(Peek(1 + sign))) {
        at_ += 1 + sign;
        while (IsDigit(Peek())) ++at_;
      }
    }
    double number = 0;
    const auto [end, error] = std::from_chars(text_.data() + from, text_.data() + at_, number);
    if (error == std::errc::result_out_of_range && TooSmall(from)) return 0;
    if (error != std::errc() || end != text_.data() + at_) {
      FailAt("The number " + std::string(text_.substr(from, at_ - from)) + " is out of range", from);
    }
    if (IsWordByte(Peek())) FailUnexpected();
    return number;
  }
  // What went out of range did so below the smallest number, as in 1E-400.
  bool TooSmall(std::size_t from) const { return text_.substr(from, at_ - from).find('-') != std::string_view::npos; }

  std::optional<ErrorCode> ScanError() {
    for (const ErrorCode error : kErrors) {
      const std::string_view spelling = TextOf(error);
      if (platform::UpperCase(text_.substr(at_, spelling.size())) == spelling) {
        at_ += spelling.size();
        return error;
      }
    }
    return std::nullopt;
  }

  NodeId ParseErrorLiteral(int spaces) {
    const std::optional<ErrorCode> error = ScanError();
    if (!error) Fail("There is no such error value; they are #N/A, #REF!, #VALUE!, #DIV/0!, #NAME?, #NUM! and #NULL!");
    if (*error != ErrorCode::Ref) return builder_.Constant(Value(*error), spaces);
    // What is left of a reference to a deleted sheet may still name its cells.
    if (const auto rest = ScanReference(text_, at_, notation_, home_.cell)) at_ += rest->length;
    Reference broken;
    broken.shape = Reference::Shape::Broken;
    return builder_.Refer(broken, spaces);
  }

  NodeId ParseArray(int spaces) {
    const std::size_t open = at_++;
    ArrayConstant array;
    int columns = 0;
    for (;;) {
      array.values.push_back(ParseArrayElement());
      ++columns;
      SkipBlanks();
      if (Skip(',')) continue;
      if (array.rows == 1) array.columns = columns;
      if (columns != array.columns) FailAt("The rows of this array have different lengths", open);
      if (Skip('}')) return builder_.Array(std::move(array), spaces);
      if (!Skip(';')) {
        if (at_ < text_.size()) FailUnexpected();
        FailAt("This array is never closed with \"}\"", open);
      }
      ++array.rows;
      columns = 0;
    }
  }

  Value ParseArrayElement() {
    SkipBlanks();
    const char c = Peek();
    if (c == '"') return Value(ScanText());
    if (c == '#') {
      if (const std::optional<ErrorCode> error = ScanError()) return Value(*error);
      FailUnexpected();
    }
    if (c == '-' || c == '+') ++at_;
    if (IsDigit(Peek()) || (Peek() == '.' && IsDigit(Peek(1)))) {
      const double number = ScanNumber();
      return Value(c == '-' ? -number : number);
    }
    if (c != '-' && c != '+') {
      const std::size_t from = at_;
      const std::string word = platform::UpperCase(ScanWord());
      if (word == "TRUE") return Value(true);
      if (word == "FALSE") return Value(false);
      at_ = from;
    }
    Fail("An array may hold only numbers, texts, TRUE, FALSE and error values");
  }

  std::string_view ScanWord() {
    const std::size_t from = at_;
    while (IsWordByte(Peek())) ++at_;
    return text_.substr(from, at_ - from);
  }

  // 'A7', where A7 alone would be a cell.
  std::optional<std::string_view> ScanQuotedName() {
    if (Peek() != '\'') return std::nullopt;
    const std::size_t close = text_.find('\'', at_ + 1);
    if (close == std::string_view::npos) return std::nullopt;
    const std::string_view name = text_.substr(at_ + 1, close - at_ - 1);
    if (!ReadsAsReference(name, Notation::A1) && !ReadsAsReference(name, Notation::R1C1) &&
        !ReadsAsColumn(name, Notation::A1)) {
      return std::nullopt;
    }
    at_ = close + 1;
    return name;
  }

  NodeId ParseWord(int spaces) {
    const std::size_t from = at_;
    const std::string_view word = ScanWord();
    if (Peek() == '(') return ParseCall(word, from, spaces);
    const std::size_t end = at_;
    const std::string upper = platform::UpperCase(word);
    if (SkipBlanks() > 0 && Peek() == '(' && FindFunction(WithoutFilePrefix(upper)) != nullptr)
      return ParseCall(word, from, spaces);
    at_ = end;
    if (upper == "TRUE") return builder_.Constant(Value(true), spaces);
    if (upper == "FALSE") return builder_.Constant(Value(false), spaces);
    return builder_.UseName({kOwnSheet, SpellName(home_.sheet, word)}, spaces);
  }

  // As it was spelled when it was defined.
  std::string SpellName(SheetId sheet, std::string_view word) const {
    const Name* defined = book_.ResolveName(sheet, word);
    return defined != nullptr ? defined->name : std::string(word);
  }

  NodeId ParseCall(std::string_view word, std::size_t wordAt, int spaces) {
    const Level level(*this);
    const std::size_t open = at_++;
    const std::string upper = platform::UpperCase(word);
    std::string name(WithoutFilePrefix(upper));
    const bool outer = std::exchange(commaUnites_, false);
    std::vector<NodeId> arguments;
    int blanks = SkipBlanks();
    if (!Skip(')')) {
      for (;;) {
        if (Peek() == ',' || Peek() == ')') {
          arguments.push_back(builder_.Missing(blanks));
        } else {
          at_ -= static_cast<std::size_t>(blanks);
          arguments.push_back(ParseComparison());
          SkipBlanks();
        }
        if (Skip(')')) break;
        if (!Skip(',')) {
          if (at_ < text_.size()) FailUnexpected();
          FailAt("The parenthesis of " + name + " is never closed", open);
        }
        blanks = SkipBlanks();
      }
    }
    commaUnites_ = outer;
    CheckArgumentCount(name, arguments.size(), wordAt);
    return builder_.Call(std::move(name), arguments, spaces);
  }

  static void CheckArgumentCount(const std::string& name, std::size_t count, std::size_t at) {
    const Function* function = FindFunction(name);
    const std::size_t fewest = function != nullptr ? static_cast<std::size_t>(function->fewest) : 0;
    const std::size_t most = static_cast<std::size_t>(function != nullptr ? function->most : kMostArguments);
    if (count < fewest) {
      FailAt(name + " needs at least " + std::to_string(fewest) + " arguments; there are " + std::to_string(count), at);
    }
    if (count > most) {
      FailAt(name + " takes at most " + std::to_string(most) + " arguments; there are " + std::to_string(count), at);
    }
  }

  // total:Sheet1!B9 looks like a span of sheets, but is a range when it begins with a defined name.
  bool BeginsWithName(const SheetPrefix& prefix) const {
    const auto [first, last] = FirstAndLastSheet(prefix.sheets);
    return Peek() != '\'' && prefix.book.empty() && first != last && book_.FindSheet(first) == nullptr &&
           book_.ResolveName(home_.sheet, first) != nullptr;
  }

  // --- what stands behind Sheet! ------------------------------------------------------------------------------------
  NodeId ParsePrefixed(const SheetPrefix& prefix, int spaces) {
    const std::size_t prefixAt = at_;
    if (!prefix.book.empty()) {
      at_ += prefix.length;
      return ParseExternal(prefix.book, prefix.sheets, spaces);
    }
    const auto [firstName, lastName] = FirstAndLastSheet(prefix.sheets);
    const Sheet* first = book_.FindSheet(firstName);
    if (first == nullptr && (LooksLikeFileName(prefix.sheets) || (isOpenBook_ && isOpenBook_(prefix.sheets)))) {
      at_ += prefix.length;
      return ParseExternal(prefix.sheets, "", spaces);
    }
    if (first == nullptr) FailNoSheet(firstName, prefixAt);
    const Sheet* last = book_.FindSheet(lastName);
    if (last == nullptr) FailNoSheet(lastName, prefixAt);
    at_ += prefix.length;

    Target target = ScanTarget();
    if (!target.isName) {
      target.reference.sheet = first->id();
      target.reference.lastSheet = last->id();
      return builder_.Refer(target.reference, spaces);
    }
    if (first != last) FailAt("A span of sheets needs cells behind it, not a name", prefixAt);
    return builder_.UseName({first->id(), SpellName(first->id(), target.name)}, spaces);
  }

  NodeId ParseExternal(const std::string& bookName, const std::string& sheets, int spaces) {
    Target target = ScanTarget();
    return builder_.ReferOutside({bookName, sheets, target.isName, std::move(target.name), target.reference}, spaces);
  }

  struct Target {
    bool isName = false;
    std::string name;
    Reference reference;
  };
  Target ScanTarget() {
    Target target;
    if (Peek() == '#') {
      const std::size_t from = at_;
      if (ScanError() != ErrorCode::Ref) FailAt("Only #REF!, cells or a name may stand behind a sheet", from);
      target.reference.shape = Reference::Shape::Broken;
    } else if (const auto found = ScanReference(text_, at_, notation_, home_.cell)) {
      at_ += found->length;
      target.reference = found->reference;
    } else if (const std::optional<std::string_view> name = ScanQuotedName()) {
      target.isName = true;
      target.name = std::string(*name);
    } else if (IsWordByte(Peek()) && !IsDigit(Peek())) {
      target.isName = true;
      target.name = std::string(ScanWord());
      if (Peek() == '(') Fail("A function cannot be called with a sheet or workbook in front of it");
    } else {
      Fail("Cells or a name are expected behind \"!\"");
    }
    return target;
  }

  std::string_view text_;
  Notation notation_;
  const FormulaHome& home_;
  const Workbook& book_;
  const IsOpenBook& isOpenBook_;
  ExpressionBuilder builder_;
  std::size_t at_ = 0;
  int depth_ = 0;
  bool commaUnites_ = true;
};

}  // namespace

ExpressionPtr ParseFormula(std::string_view text, Notation notation, const FormulaHome& home, const Workbook& book,
                           const IsOpenBook& isOpenBook) {
  return FormulaParser(text, notation, home, book, isOpenBook).Parse();
}

}  // namespace tolvane::engine
