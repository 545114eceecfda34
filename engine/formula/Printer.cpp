#include "engine/formula/Printer.h"

#include <vector>

#include "engine/formula/ReferenceText.h"
#include "engine/formula/SheetPrefix.h"
#include "engine/model/Workbook.h"

namespace tolvane::engine {
namespace {

constexpr int kPercent = 6;
constexpr int kSign = 7;
constexpr int kUnion = 8;
constexpr int kIntersection = 9;
constexpr int kRange = 10;
constexpr int kPrimary = 11;
constexpr int kNeverBare = kPrimary + 1;

int PrecedenceOf(Operator op) {
  switch (op) {
    case Operator::Equal:
    case Operator::NotEqual:
    case Operator::Less:
    case Operator::LessEqual:
    case Operator::Greater:
    case Operator::GreaterEqual:
      return 1;
    case Operator::Concatenate:
      return 2;
    case Operator::Add:
    case Operator::Subtract:
      return 3;
    case Operator::Multiply:
    case Operator::Divide:
      return 4;
    case Operator::Power:
      return 5;
    case Operator::Percent:
      return kPercent;
    case Operator::Plus:
    case Operator::Minus:
      return kSign;
    case Operator::Union:
      return kUnion;
    case Operator::Intersect:
      return kIntersection;
    case Operator::Range:
      return kRange;
  }
  return kPrimary;
}

std::string_view SpellingOf(Operator op) {
  switch (op) {
    case Operator::Add:
    case Operator::Plus:
      return "+";
    case Operator::Subtract:
    case Operator::Minus:
      return "-";
    case Operator::Multiply:
      return "*";
    case Operator::Divide:
      return "/";
    case Operator::Power:
      return "^";
    case Operator::Concatenate:
      return "&";
    case Operator::Equal:
      return "=";
    case Operator::NotEqual:
      return "<>";
    case Operator::Less:
      return "<";
    case Operator::LessEqual:
      return "<=";
    case Operator::Greater:
      return ">";
    case Operator::GreaterEqual:
      return ">=";
    case Operator::Range:
      return ":";
    case Operator::Union:
      return ",";
    case Operator::Intersect:
      return " ";
    case Operator::Percent:
      return "%";
  }
  return "";
}

class FormulaPrinter {
 public:
  FormulaPrinter(const Expression& formula, Notation notation, const FormulaHome& home, const Workbook& book)
      : formula_(formula), notation_(notation), home_(home), book_(book) {}

  std::string Print() {
    out_ = "=";
    PrintOperand(formula_.root, 0);
    return std::move(out_);
  }

 private:
  const Node& NodeAt(std::uint32_t id) const { return formula_.nodes[id]; }
  std::uint32_t ChildOf(const Node& node, std::uint32_t child) const {
    return formula_.children[node.firstChild + child];
  }

  int PrecedenceOf(const Node& node) const {
    const bool isOperator = node.kind == Node::Kind::Binary || node.kind == Node::Kind::Unary;
    return isOperator ? engine::PrecedenceOf(node.op) : kPrimary;
  }
  bool NeedsParentheses(const Node& node, int loosest) const {
    const bool reparsesAsSeparator = inArgument_ && node.kind == Node::Kind::Binary && node.op == Operator::Union;
    return PrecedenceOf(node) < loosest || reparsesAsSeparator;
  }

  // `loosest`: the loosest precedence that may stand here bare. Trees that the parser built hold their parentheses; for
  // others they are added where the text would mean something else.
  void PrintOperand(std::uint32_t id, int loosest) {
    const Node& node = NodeAt(id);
    if (!NeedsParentheses(node, loosest)) return PrintNode(node);
    const bool outer = std::exchange(inArgument_, false);
    out_ += '(';
    PrintNode(node);
    out_ += ')';
    inArgument_ = outer;
  }

  void PrintNode(const Node& node) {
    // The operators stand behind their left operands and print their blanks themselves.
    const bool isInfix =
        node.kind == Node::Kind::Binary || (node.kind == Node::Kind::Unary && node.op == Operator::Percent);
    if (!isInfix) out_.append(node.spacesBefore, ' ');
    switch (node.kind) {
      case Node::Kind::Constant:
        AppendConstant(formula_.constants[node.index]);
        return;
      case Node::Kind::Reference:
        return PrintReference(formula_.references[node.index]);
      case Node::Kind::ExternalRef:
        return PrintExternal(formula_.externals[node.index]);
      case Node::Kind::Name:
        return PrintName(formula_.names[node.index]);
      case Node::Kind::Function:
        return PrintCall(node);
      case Node::Kind::Binary:
        return PrintBinary(node);
      case Node::Kind::Unary:
        return PrintUnary(node);
      case Node::Kind::Parenthesis: {
        const bool outer = std::exchange(inArgument_, false);
        out_ += '(';
        PrintOperand(ChildOf(node, 0), 0);
        out_ += ')';
        inArgument_ = outer;
        return;
      }
      case Node::Kind::Missing:
        return;
      case Node::Kind::Array:
        return PrintArray(formula_.arrays[node.index]);
    }
  }

  // A single cell, row or column: with a colon and another one behind it, it reads as an area.
  bool EndsAsHalfArea(const Node& left) const {
    const Node* last = &left;
    while (last->kind == Node::Kind::Binary) last = &NodeAt(ChildOf(*last, 1));
    const Reference* reference = last->kind == Node::Kind::Reference     ? &formula_.references[last->index]
                                 : last->kind == Node::Kind::ExternalRef ? &formula_.externals[last->index].reference
                                                                         : nullptr;
    return reference != nullptr && reference->shape != Reference::Shape::Area &&
           reference->shape != Reference::Shape::Broken;
  }

  // The name that a range begins behind.
  const NameUse* NameBeforeColon(const Node& range) const {
    const Node* last = &NodeAt(ChildOf(range, 0));
    while (last->kind == Node::Kind::Binary) last = &NodeAt(ChildOf(*last, 1));
    return last->kind == Node::Kind::Name ? &formula_.names[last->index] : nullptr;
  }

  // What would read as the second half of an area if it stood bare behind a colon.
  bool IsBareReference(const Node& node) const {
    if (node.kind != Node::Kind::Reference) return false;
    const Reference& reference = formula_.references[node.index];
    return reference.sheet == kOwnSheet && reference.shape != Reference::Shape::Broken;
  }

  // Long chains such as 1+1+1+... lean to the left, so they are walked, not recursed into.
  void PrintBinary(const Node& top) {
    std::vector<const Node*> chain{&top};
    for (;;) {
      const Node& node = *chain.back();
      const Node& left = NodeAt(ChildOf(node, 0));
      if (left.kind != Node::Kind::Binary || NeedsParentheses(left, PrecedenceOf(node))) break;
      chain.push_back(&left);
    }
    const auto noteName = [&](const Node& node) {
      if (node.op == Operator::Range) beforeColon_ = NameBeforeColon(node);
    };
    noteName(*chain.back());
    PrintOperand(ChildOf(*chain.back(), 0), PrecedenceOf(*chain.back()));
    for (auto node = chain.rbegin(); node != chain.rend(); ++node) {
      out_.append((*node)->spacesBefore, ' ');
      out_ += SpellingOf((*node)->op);
      const bool joins = (*node)->op == Operator::Range && IsBareReference(NodeAt(ChildOf(**node, 1))) &&
                         EndsAsHalfArea(NodeAt(ChildOf(**node, 0)));
      if (node + 1 != chain.rend()) noteName(**(node + 1));
      PrintOperand(ChildOf(**node, 1), joins ? kNeverBare : PrecedenceOf(**node) + 1);
    }
  }

  void PrintUnary(const Node& node) {
    if (node.op == Operator::Percent) {
      PrintOperand(ChildOf(node, 0), kPercent);
      out_.append(node.spacesBefore, ' ');
      out_ += '%';
    } else {
      out_ += SpellingOf(node.op);
      PrintOperand(ChildOf(node, 0), kSign);
    }
  }

  void PrintCall(const Node& node) {
    out_ += formula_.names[node.index].name;
    out_ += '(';
    const bool outer = std::exchange(inArgument_, true);
    for (std::uint32_t i = 0; i < node.childCount; ++i) {
      if (i > 0) out_ += ',';
      PrintOperand(ChildOf(node, i), 0);
    }
    inArgument_ = outer;
    out_ += ')';
  }

  void PrintReference(const Reference& reference) {
    if (reference.sheet != kOwnSheet) {
      const Sheet* first = book_.FindSheet(reference.sheet);
      const Sheet* last = reference.lastSheet == kOwnSheet ? first : book_.FindSheet(reference.lastSheet);
      if (first == nullptr || last == nullptr) {
        out_ += TextOf(ErrorCode::Ref);
        return;
      }
      AppendSheetPrefix(out_, first->name(), last->name());
    }
    AppendReference(out_, reference, notation_, home_.cell);
  }

  void PrintExternal(const ExternalReference& reference) {
    AppendExternalPrefix(out_, reference.book, reference.sheet);
    if (reference.isName) {
      AppendName(reference.name);
    } else {
      AppendReference(out_, reference.reference, notation_, home_.cell);
    }
  }

  void PrintName(const NameUse& use) {
    if (use.sheet != kOwnSheet) {
      const Sheet* sheet = book_.FindSheet(use.sheet);
      if (sheet == nullptr) {
        out_ += TextOf(ErrorCode::Ref);
        return;
      }
      AppendSheetPrefix(out_, sheet->name(), sheet->name());
    }
    AppendName(use.name, use.sheet == kOwnSheet && &use == beforeColon_);
  }

  void AppendName(const std::string& name, bool beforeColon = false) {
    const bool quoted = ReadsAsReference(name, notation_) || (beforeColon && ReadsAsColumn(name, notation_));
    if (quoted) out_ += '\'';
    out_ += name;
    if (quoted) out_ += '\'';
  }

  void PrintArray(const ArrayConstant& array) {
    out_ += '{';
    for (std::size_t i = 0; i < array.values.size(); ++i) {
      if (i > 0) out_ += i % static_cast<std::size_t>(array.columns) == 0 ? ';' : ',';
      AppendConstant(array.values[i]);
    }
    out_ += '}';
  }

  void AppendConstant(const Value& value) {
    switch (value.kind()) {
      case Value::Kind::Empty:
        return;
      case Value::Kind::Boolean:
        out_ += value.boolean() ? "TRUE" : "FALSE";
        return;
      case Value::Kind::Number:
        out_ += NumberText(value.number());
        return;
      case Value::Kind::Error:
        out_ += TextOf(value.error());
        return;
      case Value::Kind::Text:
        out_ += '"';
        for (const char c : value.text().view()) {
          if (c == '"') out_ += '"';
          out_ += c;
        }
        out_ += '"';
        return;
    }
  }

  const Expression& formula_;
  Notation notation_;
  const FormulaHome& home_;
  const Workbook& book_;
  std::string out_;
  const NameUse* beforeColon_ = nullptr;
  bool inArgument_ = false;
};

}  // namespace

std::string PrintFormula(const Expression& formula, Notation notation, const FormulaHome& home, const Workbook& book) {
  return FormulaPrinter(formula, notation, home, book).Print();
}

}  // namespace tolvane::engine
