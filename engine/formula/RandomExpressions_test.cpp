#include <rapidcheck.h>

#include "engine/formula/ExpressionBuilder.h"
#include "engine/formula/FormulaFixture.h"

// Whatever expression is written, it reads back as the same expression, in both notations and from any cell.

namespace tolvane::engine {
namespace {

using NodeId = ExpressionBuilder::NodeId;

template <class T>
T OneOf(std::initializer_list<T> choices) {
  return *rc::gen::elementOf(std::vector<T>(choices));
}
// From the whole range at once: small cases alone would hardly leave the first cells of a sheet.
int Between(int low, int high) {
  return *rc::gen::resize(rc::kNominalSize, rc::gen::inRange(low, high + 1));
}
int Blanks() {
  return Between(0, 9) == 0 ? Between(1, 3) : 0;
}

// Builds random trees in the order in which the parser would.
class Generator {
 public:
  Generator(const Workbook& book, CellPos home) : book_(book), home_(home) {}

  ExpressionPtr Make() { return builder_.Finish(Operand(4)); }

 private:
  static Coordinate Bound(int home, int index) {
    const bool relative = Between(0, 1) == 1;
    return relative ? Coordinate{index - home, true} : Coordinate{index, false};
  }

  Reference MakeReference() {
    Reference reference;
    reference.shape = OneOf({Reference::Shape::Cell, Reference::Shape::Area, Reference::Shape::WholeRows,
                             Reference::Shape::WholeColumns, Reference::Shape::Broken});
    const int top = Between(1, kMaxRow);
    const int bottom = reference.shape == Reference::Shape::Cell ? top : Between(top, kMaxRow);
    const int left = Between(1, kMaxColumn);
    const int right = reference.shape == Reference::Shape::Cell ? left : Between(left, kMaxColumn);
    reference.firstRow = Bound(home_.row, top);
    reference.lastRow = Bound(home_.row, bottom);
    reference.firstColumn = Bound(home_.column, left);
    reference.lastColumn = Bound(home_.column, right);
    const int qualified = Between(0, 3);
    if (qualified >= 1) {
      reference.sheet = reference.lastSheet = AnySheet();
      if (qualified == 3) reference.lastSheet = AnySheet();
    }
    return reference;
  }
  SheetId AnySheet() {
    return book_.sheetAt(static_cast<std::size_t>(Between(0, static_cast<int>(book_.sheetCount()) - 1))).id();
  }

  Value MakeConstant() {
    switch (Between(0, 3)) {
      case 0:
        return Value(static_cast<double>(Between(0, 100000)) / OneOf({1.0, 3.0, 1e-9, 1e30}));
      case 1:
        return Value(OneOf<const char*>({"", "a", "\"", "a \"b\" c", "=A1", "Grün"}));
      case 2:
        return Value(Between(0, 1) == 1);
      default:
        return Value(OneOf(
            {ErrorCode::NA, ErrorCode::Div0, ErrorCode::Value, ErrorCode::Null, ErrorCode::Num, ErrorCode::Name}));
    }
  }

  std::string MakeName() { return OneOf<const char*>({"total", "lst_x", "\\odd", "_a.b", "Größe", "ABCD1"}); }

  NodeId Leaf(bool reference) {
    switch (Between(reference ? 3 : 0, 5)) {
      case 0:
      case 1:
        return builder_.Constant(MakeConstant(), Blanks());
      case 2: {
        ArrayConstant array;
        array.rows = Between(1, 3);
        array.columns = Between(1, 3);
        for (int i = 0; i < array.rows * array.columns; ++i) array.values.push_back(MakeConstant());
        if (array.values[0].isNumber()) array.values[0] = Value(-1 - array.values[0].number());
        return builder_.Array(std::move(array), Blanks());
      }
      case 3: {
        ExternalReference external;
        external.book = OneOf<const char*>({"Book.xlsx", "My Book.xlsx", "C:\\A folder\\O'B.xlsx"});
        external.sheet = OneOf<const char*>({"Sheet1", "My Sheet", "O'Brien", "A1"});
        external.isName = Between(0, 1) == 1;
        if (external.isName) {
          if (external.book[1] != ':' && Between(0, 1) == 1) external.sheet.clear();
          external.name = MakeName();
        } else {
          external.reference = MakeReference();
          external.reference.sheet = external.reference.lastSheet = kOwnSheet;
        }
        return builder_.ReferOutside(std::move(external), Blanks());
      }
      case 4:
        return builder_.UseName({Between(0, 1) == 1 ? kOwnSheet : AnySheet(), MakeName()}, Blanks());
      default:
        return builder_.Refer(MakeReference(), Blanks());
    }
  }

  NodeId Argument(int depth) { return Between(0, 7) == 0 ? builder_.Missing(Blanks()) : Operand(depth); }

  // Something that binds tighter than any operator.
  NodeId Primary(int depth, bool reference) {
    if (depth <= 0) return Leaf(reference);
    switch (Between(0, 2)) {
      case 0: {
        const NodeId inner = reference ? References(depth - 1) : Operand(depth - 1);
        return builder_.Parenthesis(inner, Blanks());
      }
      case 1: {
        std::vector<NodeId> arguments;
        const int count = Between(0, 3);
        // A single omitted argument would read as none at all.
        for (int i = 0; i < count; ++i) arguments.push_back(count == 1 ? Operand(depth - 1) : Argument(depth - 1));
        return builder_.Call(OneOf<const char*>({"SUM", "CONCATENATE", "NO.SUCH", "COUNT"}), Enough(arguments),
                             Blanks());
      }
      default:
        return Leaf(reference);
    }
  }
  // The functions used here need an argument.
  std::span<const NodeId> Enough(std::vector<NodeId>& arguments) {
    if (arguments.empty()) arguments.push_back(builder_.Constant(Value(1.0)));
    return arguments;
  }

  NodeId References(int depth) {
    const NodeId left = Primary(depth - 1, true);
    const Operator op = OneOf({Operator::Range, Operator::Union, Operator::Intersect});
    NodeId right = Primary(depth - 1, true);
    // Bare behind a colon, a cell would read as the second half of an area.
    if (op == Operator::Range && builder_.At(right).kind == Node::Kind::Reference) right = builder_.Parenthesis(right);
    return builder_.Binary(op, left, right, op == Operator::Union ? Blanks() : 0);
  }

  NodeId Operand(int depth) {
    if (depth <= 0) return Leaf(false);
    switch (Between(0, 4)) {
      case 0:
        return Primary(depth, false);
      case 1: {
        const NodeId operand = Primary(depth - 1, false);
        return builder_.Unary(OneOf({Operator::Minus, Operator::Plus, Operator::Percent}), operand, Blanks());
      }
      case 2:
        return builder_.Parenthesis(References(depth - 1), Blanks());
      default: {
        const NodeId left = Primary(depth - 1, false);
        const Operator op = OneOf({Operator::Add, Operator::Subtract, Operator::Multiply, Operator::Divide,
                                   Operator::Power, Operator::Concatenate, Operator::Equal, Operator::NotEqual,
                                   Operator::Less, Operator::LessEqual, Operator::Greater, Operator::GreaterEqual});
        const NodeId right = Primary(depth - 1, false);
        return builder_.Binary(op, left, right, Blanks());
      }
    }
  }

  const Workbook& book_;
  CellPos home_;
  ExpressionBuilder builder_;
};

class RandomExpressions : public FormulaFixture {
 protected:
  RandomExpressions() {
    book.AddSheet("My Sheet", 2);
    book.AddSheet("O'Brien", 3);
    book.AddSheet("R1C1", 4);
    for (const char* name : {"total", "lst_x", "\\odd", "_a.b", "Größe", "ABCD1"}) Name(name, "=Sheet1!$A$1");
  }
};

TEST_F(RandomExpressions, ReadBackAsTheyWereWritten) {
  EXPECT_TRUE(rc::check([this] {
    const FormulaHome home{book.sheetAt(0).id(), {Between(1, kMaxRow), Between(1, kMaxColumn)}};
    const ExpressionPtr made = Generator(book, home.cell).Make();
    for (const Notation notation : {Notation::A1, Notation::R1C1}) {
      const std::string text = PrintFormula(*made, notation, home, book);
      RC_LOG() << text << '\n';
      const ExpressionPtr read = ParseFormula(text, notation, home, book);
      RC_ASSERT(PrintFormula(*read, notation, home, book) == text);
      RC_ASSERT(*read == *made);
    }
  }));
}

TEST_F(RandomExpressions, NoTextCrashesTheParser) {
  EXPECT_TRUE(rc::check([this] {
    const FormulaHome home{book.sheetAt(0).id(), {5, 5}};
    std::string text;
    const int pieces = Between(0, 30);
    for (int i = 0; i < pieces; ++i) {
      text +=
          OneOf<const char*>({"A1", "$", "(", ")",  ",",     ":",    " ", "SUM(", "Sheet1!", "'",    "\"",  "{", "}",
                              ";",  "[", "]", "!",  "#REF!", "1",    ".", "E",    "+",       "-",    "%",   "^", "&",
                              "=",  "<", ">", "R1", "C[",    "R[1]", "é", "\xff", "#",       "name", "TRUE"});
    }
    for (const Notation notation : {Notation::A1, Notation::R1C1}) {
      try {
        const ExpressionPtr read = ParseFormula(text, notation, home, book);
        // What parses prints, and that parses to the same.
        const std::string printed = PrintFormula(*read, notation, home, book);
        RC_ASSERT(PrintFormula(*ParseFormula(printed, notation, home, book), notation, home, book) == printed);
      } catch (const ParseError& error) {
        RC_ASSERT(error.position <= text.size());
      }
    }
  }));
}

}  // namespace
}  // namespace tolvane::engine
