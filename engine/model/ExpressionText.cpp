#include "engine/model/ExpressionText.h"

#include <charconv>
#include <string_view>

#include "engine/model/Area.h"
#include "engine/model/Workbook.h"

namespace tolvane::engine {

namespace {

// Far deeper than people nest formulas; keeps the recursion off the end of the stack.
constexpr int kDeepest = 300;

std::string_view SignOf(Operator op) {
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
  return "?";
}

std::string BoundText(const Coordinate& bound, int home, Axis axis) {
  const int index = WrapIndex(bound.From(home), axis);
  std::string text = bound.relative ? "" : "$";
  return text.append(axis == Axis::Rows ? std::to_string(index) : ColumnName(index));
}

class Writer {
 public:
  Writer(const Expression& expression, const Workbook& book, CellPos home)
      : expression_(expression), book_(book), home_(home) {}

  std::string Write() {
    if (!expression_.nodes.empty()) WriteNode(expression_.root, 0);
    return std::move(text_);
  }

 private:
  void WriteNode(std::uint32_t at, int depth) {
    if (depth > kDeepest) {
      text_ += "...";
      return;
    }
    const Node& node = expression_.nodes[at];
    const auto child = [&](std::uint32_t i) { WriteNode(expression_.children[node.firstChild + i], depth + 1); };
    switch (node.kind) {
      case Node::Kind::Constant:
        text_ += DebugText(expression_.constants[node.index]);
        break;
      case Node::Kind::Reference:
        WriteReference(expression_.references[node.index]);
        break;
      case Node::Kind::ExternalRef:
        WriteExternal(expression_.externals[node.index]);
        break;
      case Node::Kind::Name:
        WriteSheet(expression_.names[node.index].sheet);
        text_ += expression_.names[node.index].name;
        break;
      case Node::Kind::Function:
        text_ += expression_.names[node.index].name;
        text_ += '(';
        for (std::uint32_t i = 0; i < node.childCount; ++i) {
          if (i > 0) text_ += ',';
          child(i);
        }
        text_ += ')';
        break;
      case Node::Kind::Binary:
        child(0);
        text_ += SignOf(node.op);
        child(1);
        break;
      case Node::Kind::Unary:
        if (node.op != Operator::Percent) text_ += SignOf(node.op);
        child(0);
        if (node.op == Operator::Percent) text_ += SignOf(node.op);
        break;
      case Node::Kind::Parenthesis:
        text_ += '(';
        child(0);
        text_ += ')';
        break;
      case Node::Kind::Missing:
        break;
      case Node::Kind::Array:
        WriteArray(expression_.arrays[node.index]);
        break;
    }
  }

  std::string SheetName(SheetId id) const {
    const Sheet* sheet = book_.FindSheet(id);
    return sheet == nullptr ? "#REF" : sheet->name();
  }

  void WriteSheet(SheetId sheet) {
    if (sheet != kOwnSheet) text_.append(1, '\'').append(SheetName(sheet)).append("'!");
  }

  void WriteReference(const Reference& reference) {
    if (reference.isThreeD()) {
      text_.append(1, '\'').append(SheetName(reference.sheet)).append(1, ':');
      text_.append(SheetName(reference.lastSheet)).append("'!");
    } else {
      WriteSheet(reference.sheet);
    }
    WriteBounds(reference);
  }

  void WriteBounds(const Reference& reference) {
    switch (reference.shape) {
      case Reference::Shape::Cell:
        WriteCell(reference.firstRow, reference.firstColumn);
        break;
      case Reference::Shape::Area:
        WriteCell(reference.firstRow, reference.firstColumn);
        text_ += ':';
        WriteCell(reference.lastRow, reference.lastColumn);
        break;
      case Reference::Shape::WholeRows:
        text_ += BoundText(reference.firstRow, home_.row, Axis::Rows);
        text_ += ':';
        text_ += BoundText(reference.lastRow, home_.row, Axis::Rows);
        break;
      case Reference::Shape::WholeColumns:
        text_ += BoundText(reference.firstColumn, home_.column, Axis::Columns);
        text_ += ':';
        text_ += BoundText(reference.lastColumn, home_.column, Axis::Columns);
        break;
      case Reference::Shape::Broken:
        text_ += TextOf(ErrorCode::Ref);
        break;
    }
  }

  void WriteCell(const Coordinate& row, const Coordinate& column) {
    text_ += BoundText(column, home_.column, Axis::Columns);
    text_ += BoundText(row, home_.row, Axis::Rows);
  }

  void WriteExternal(const ExternalReference& external) {
    text_.append("'[").append(external.book).append(1, ']').append(external.sheet).append("'!");
    if (external.isName) {
      text_ += external.name;
    } else {
      WriteBounds(external.reference);
    }
  }

  void WriteArray(const ArrayConstant& array) {
    text_ += '{';
    for (std::size_t i = 0; i < array.values.size(); ++i) {
      if (i > 0) text_ += i % static_cast<std::size_t>(array.columns) == 0 ? ';' : ',';
      text_ += DebugText(array.values[i]);
    }
    text_ += '}';
  }

  const Expression& expression_;
  const Workbook& book_;
  CellPos home_;
  std::string text_;
};

}  // namespace

std::string DebugText(const Expression& expression, const Workbook& book, CellPos home) {
  return Writer(expression, book, home).Write();
}

std::string DebugText(const Value& value) {
  switch (value.kind()) {
    case Value::Kind::Empty:
      break;
    case Value::Kind::Boolean:
      return value.boolean() ? "TRUE" : "FALSE";
    case Value::Kind::Number: {
      char digits[32];
      const auto end = std::to_chars(digits, digits + sizeof(digits), value.number()).ptr;
      return std::string(digits, end);
    }
    case Value::Kind::Text:
      return std::string(1, '"').append(value.text().view()).append(1, '"');
    case Value::Kind::Error:
      return std::string(TextOf(value.error()));
  }
  return {};
}

}  // namespace tolvane::engine
