#include "engine/formula/Evaluator.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "engine/formula/Arithmetic.h"
#include "engine/formula/Coercion.h"
#include "engine/formula/SheetPrefix.h"
#include "platform/Text.h"

namespace tolvane::engine {
namespace {

constexpr int kDeepestNames = 64;        // names that refer to names, circles included
constexpr int kDeepestEvaluation = 600;  // nodes within nodes, over all names
// Nodes that one formula may visit; names that use names twice each could otherwise multiply without end.
constexpr std::int64_t kMostSteps = 1'000'000;
constexpr std::int64_t kElementsPerStep = 256;  // of arrays, which cost less than nodes

class Level {
 public:
  explicit Level(int& depth) : depth_(depth) { ++depth_; }
  ~Level() { --depth_; }
  Level(const Level&) = delete;
  Level& operator=(const Level&) = delete;

 private:
  int& depth_;
};

// A sum or difference of numbers that cancel but for their last bit is 0, where it is the formula's last step.
Value WithoutCancellationNoise(Operator op, const Value& left, const Value& right, Value result) {
  constexpr double kNoise = 5e-16;
  if ((op != Operator::Add && op != Operator::Subtract) || !result.isNumber()) return result;
  const double largest = std::max(std::fabs(ToNumber(left).number), std::fabs(ToNumber(right).number));
  return std::fabs(result.number()) <= kNoise * largest ? Value(0.0) : result;
}

std::string_view FileNameOf(std::string_view path) {
  const std::size_t slash = path.find_last_of("\\/");
  return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

// Whether the name is one that the workbook has and that could not be read.
bool IsUnread(const Workbook& book, SheetId sheet, std::string_view name) {
  const std::string folded = platform::FoldCase(name);
  const Sheet* scope = book.FindSheet(sheet);
  return (scope != nullptr && scope->names.unread.contains(folded)) || book.names.unread.contains(folded);
}

}  // namespace

Operand Evaluator::EvaluateFormula(const Expression& expression, const Sheet& sheet, CellPos cell, Mode mode) {
  missedBook_ = false;
  missedFunction_ = false;
  steps_ = 0;
  if (expression.nodes.empty()) return ErrorCode::Value;
  const Frame frame{expression, sheet, cell};
  Operand result = Evaluate(frame, expression.root, mode);
  if (mode == Mode::Array) {
    result = Resolve(frame, std::move(result), mode);
    if (result.isArray()) return result;
  }
  Value single = Single(frame, result);
  return single.isEmpty() ? Operand(0.0) : Operand(std::move(single));
}

Operand Evaluator::Evaluate(const Frame& frame, std::uint32_t id, Mode mode) {
  const Node& node = frame.expression.nodes[id];
  const Level level(depth_);
  if (depth_ > kDeepestEvaluation || ++steps_ > kMostSteps) return ErrorCode::Value;
  switch (node.kind) {
    case Node::Kind::Constant:
      return frame.expression.constants[node.index];
    case Node::Kind::Reference:
      return EvaluateReference(frame, frame.expression.references[node.index]);
    case Node::Kind::ExternalRef:
      return EvaluateExternal(frame, frame.expression.externals[node.index]);
    case Node::Kind::Name: {
      const NameUse& use = frame.expression.names[node.index];
      const SheetId sheet = use.sheet == kOwnSheet ? frame.sheet.id() : use.sheet;
      return EvaluateName(frame, frame.sheet.book(), sheet, use.name);
    }
    case Node::Kind::Function:
      return EvaluateCall(frame, node, mode);
    case Node::Kind::Binary:
      return EvaluateBinary(frame, node, mode);
    case Node::Kind::Unary:
      return EvaluateUnary(frame, node, mode);
    case Node::Kind::Parenthesis:
      return Evaluate(frame, frame.expression.children[node.firstChild], mode);
    case Node::Kind::Missing:
      return {};
    case Node::Kind::Array: {
      const ArrayConstant& constant = frame.expression.arrays[node.index];
      auto array = std::make_shared<ValueArray>(constant.rows, constant.columns);
      std::copy(constant.values.begin(), constant.values.end(), array->values.begin());
      return ArrayPtr(std::move(array));
    }
  }
  return ErrorCode::Value;
}

// --- reading
// ---------------------------------------------------------------------------------------------------------------

void Evaluator::NoteIfStale(const Sheet& sheet, CellPos at, const FormulaCell& formula) {
  bool isStale = formula.dirty;
  if (!formula.rawText.empty()) restsOnKept_ = true;
  if (formula.arrayArea) {
    at = formula.arrayArea->topLeft();
    const FormulaCell* whole = sheet.FormulaAt(at);
    isStale = whole != nullptr && whole->dirty;
  }
  if (kept_ != nullptr && !kept_->empty() && kept_->contains({sheet.id(), at})) restsOnKept_ = true;
  if (!isStale) return;
  if (staleScope_ && (staleScope_->sheet != sheet.id() || !staleScope_->area.contains(at))) {
    usedStale_ = true;
  } else {
    stale_.push_back({sheet.id(), at});
  }
}

Value Evaluator::ValueAt(const Sheet& sheet, CellPos at) {
  if (&sheet.book() == &book_) {
    if (const FormulaCell* formula = sheet.FormulaAt(at)) NoteIfStale(sheet, at, *formula);
  }
  return sheet.ValueAt(at);
}

Value Evaluator::Single(const Frame& frame, const Operand& operand) {
  if (operand.isValue()) return operand.value();
  if (operand.isOmitted()) return {};
  if (operand.isArray()) return operand.array().values.front();
  const AreaList& areas = operand.areas();
  if (!areas.isSingle()) return ErrorCode::Value;
  const Rect& rect = areas[0].rect;
  if (rect.isCell()) return ValueAt(*areas[0].sheet, rect.topLeft());
  if (rect.columns() == 1 && rect.top <= frame.cell.row && frame.cell.row <= rect.bottom) {
    return ValueAt(*areas[0].sheet, {frame.cell.row, rect.left});
  }
  if (rect.rows() == 1 && rect.left <= frame.cell.column && frame.cell.column <= rect.right) {
    return ValueAt(*areas[0].sheet, {rect.top, frame.cell.column});
  }
  return ErrorCode::Value;
}

ArrayPtr Evaluator::ToArray(const Operand& operand) {
  if (operand.isArray()) return std::make_shared<ValueArray>(operand.array());
  if (!operand.isReference()) {
    auto array = std::make_shared<ValueArray>(1, 1);
    if (operand.isValue()) array->values.front() = operand.value();
    return array;
  }
  const AreaList& areas = operand.areas();
  const Area& area = areas[0];
  if (!areas.isSingle() || area.rect.cells() > kMostArrayValues) return nullptr;
  auto array = std::make_shared<ValueArray>(area.rect.rows(), area.rect.columns());
  ForEachContent(area, [&](CellPos at, const Value& value) {
    array->At(at.row - area.rect.top, at.column - area.rect.left) = value;
  });
  return array;
}

Operand Evaluator::Resolve(const Frame& frame, Operand operand, Mode mode) {
  if (!operand.isReference()) return operand;
  const bool isCell = operand.areas().isSingle() && operand.areas()[0].rect.isCell();
  if (mode == Mode::Single || isCell) return Single(frame, operand);
  ArrayPtr array = ToArray(operand);
  return array == nullptr ? Operand(ErrorCode::Value) : Operand(std::move(array));
}

// --- references
// --------------------------------------------------------------------------------------------------------------

Operand Evaluator::SpanOf(const Workbook& book, const Sheet& first, const Sheet& last, const Rect& rect) const {
  if (&first == &last) return AreaList({&first, rect});
  std::size_t from = book.PositionOf(first.id());
  std::size_t to = book.PositionOf(last.id());
  if (from > to) std::swap(from, to);
  AreaList areas({&book.sheetAt(from), rect});
  for (std::size_t position = from + 1; position <= to; ++position) areas.Add({&book.sheetAt(position), rect});
  return areas;
}

Operand Evaluator::EvaluateReference(const Frame& frame, const Reference& reference) {
  const std::optional<Rect> rect = reference.At(frame.cell);
  if (!rect) return ErrorCode::Ref;
  if (reference.sheet == kOwnSheet) return AreaList({&frame.sheet, *rect});
  const Workbook& book = frame.sheet.book();
  const Sheet* first = book.FindSheet(reference.sheet);
  const Sheet* last = reference.isThreeD() ? book.FindSheet(reference.lastSheet) : first;
  if (first == nullptr || last == nullptr) return ErrorCode::Ref;
  return SpanOf(book, *first, *last, *rect);
}

Operand Evaluator::EvaluateExternal(const Frame& frame, const ExternalReference& reference) {
  const std::string_view file = FileNameOf(reference.book);
  const bool isOwn = platform::EqualIgnoringCase(file, world_.BookName());
  const Workbook* other = isOwn ? &book_ : world_.FindBook(file);
  if (other == nullptr) {
    missedBook_ = true;
    return ErrorCode::Ref;
  }
  const auto [firstName, lastName] = FirstAndLastSheet(reference.sheet);
  const bool noSheet = reference.sheet.empty();
  const Sheet* first = noSheet ? &other->sheetAt(0) : other->FindSheet(firstName);
  const Sheet* last = noSheet ? first : other->FindSheet(lastName);
  if (first == nullptr || last == nullptr) return ErrorCode::Ref;
  if (reference.isName) {
    const Frame there{frame.expression, *first, frame.cell, frame.nameDepth};
    return EvaluateName(there, *other, noSheet ? kOwnSheet : first->id(), reference.name);
  }
  const std::optional<Rect> rect = reference.reference.At(frame.cell);
  return rect ? SpanOf(*other, *first, *last, *rect) : Operand(ErrorCode::Ref);
}

Operand Evaluator::EvaluateName(const Frame& frame, const Workbook& book, SheetId sheet, std::string_view name) {
  const Name* found = book.ResolveName(sheet, name);
  if (found == nullptr && IsUnread(book, sheet, name)) missedFunction_ = true;
  if (found == nullptr || found->refersTo == nullptr || frame.nameDepth >= kDeepestNames) return ErrorCode::Name;
  const Expression& expression = *found->refersTo;
  if (expression.nodes.empty()) return ErrorCode::Name;
  const Frame inside{expression, frame.sheet, frame.cell, frame.nameDepth + 1};
  return Evaluate(inside, expression.root, Mode::Array);
}

Operand Evaluator::CombineReferences(Operator op, const Operand& left, const Operand& right) {
  for (const Operand* operand : {&left, &right}) {
    if (operand->isValue() && operand->value().isError()) return operand->value().error();
    if (!operand->isReference()) return ErrorCode::Value;
  }
  const AreaList& a = left.areas();
  const AreaList& b = right.areas();
  if (op == Operator::Union) {
    AreaList all = a;
    for (std::size_t i = 0; i < b.size(); ++i) all.Add(b[i]);
    return all;
  }
  if (op == Operator::Range) {
    Area box = a[0];
    for (const AreaList* list : {&a, &b}) {
      for (std::size_t i = 0; i < list->size(); ++i) {
        const Area& area = (*list)[i];
        if (area.sheet != box.sheet) return ErrorCode::Value;
        box.rect = {std::min(box.rect.top, area.rect.top), std::min(box.rect.left, area.rect.left),
                    std::max(box.rect.bottom, area.rect.bottom), std::max(box.rect.right, area.rect.right)};
      }
    }
    return AreaList(box);
  }
  std::optional<AreaList> common;
  for (std::size_t i = 0; i < a.size(); ++i) {
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::optional<Rect> rect = a[i].rect.intersection(b[j].rect);
      if (!rect || a[i].sheet != b[j].sheet) continue;
      if (common) {
        common->Add({a[i].sheet, *rect});
      } else {
        common.emplace(Area{a[i].sheet, *rect});
      }
    }
  }
  return common ? Operand(std::move(*common)) : Operand(ErrorCode::Null);
}

// --- operators
// ---------------------------------------------------------------------------------------------------------------

Operand Evaluator::EvaluateBinary(const Frame& frame, const Node& top, Mode mode) {
  const Expression& expression = frame.expression;
  // Long chains such as 1+1+1+... lean to the left, so they are walked, not recursed into.
  std::vector<const Node*> chain;
  const Node* node = &top;
  while (expression.nodes[expression.children[node->firstChild]].kind == Node::Kind::Binary) {
    chain.push_back(node);
    node = &expression.nodes[expression.children[node->firstChild]];
  }
  Operand left = Evaluate(frame, expression.children[node->firstChild], mode);
  for (;;) {
    Operand right = Evaluate(frame, expression.children[node->firstChild + 1], mode);
    const Operator op = node->op;
    if (op == Operator::Range || op == Operator::Union || op == Operator::Intersect) {
      left = CombineReferences(op, left, right);
    } else {
      left = Resolve(frame, std::move(left), mode);
      right = Resolve(frame, std::move(right), mode);
      if (left.isArray() || right.isArray()) {
        ArrayPtr result =
            CombineArrays(left, right, [op](const Value& a, const Value& b) { return ApplyOperator(op, a, b); });
        steps_ += static_cast<std::int64_t>(result->values.size()) / kElementsPerStep;
        left = std::move(result);
      } else {
        const Value a = Single(frame, left);
        const Value b = Single(frame, right);
        Value result = ApplyOperator(op, a, b);
        const bool isLastStep = node == &expression.nodes[expression.root];
        left = isLastStep ? WithoutCancellationNoise(op, a, b, std::move(result)) : std::move(result);
      }
    }
    if (chain.empty()) return left;
    node = chain.back();
    chain.pop_back();
  }
}

Operand Evaluator::EvaluateUnary(const Frame& frame, const Node& node, Mode mode) {
  Operand operand = Evaluate(frame, frame.expression.children[node.firstChild], mode);
  if (node.op == Operator::Plus) return operand;
  operand = Resolve(frame, std::move(operand), mode);
  if (!operand.isArray()) return ApplyOperator(node.op, Single(frame, operand));
  auto result = std::make_shared<ValueArray>(operand.array());
  for (Value& value : result->values) value = ApplyOperator(node.op, value);
  return ArrayPtr(std::move(result));
}

// --- functions
// ---------------------------------------------------------------------------------------------------------------

namespace {

// The arguments of a call; the usual few need no allocation.
class ArgumentList {
 public:
  explicit ArgumentList(std::size_t count) : count_(count) {
    if (count > few_.size()) many_.resize(count);
  }
  std::span<Operand> all() { return count_ > few_.size() ? std::span(many_) : std::span(few_).first(count_); }

 private:
  std::size_t count_;
  std::array<Operand, 4> few_;
  std::vector<Operand> many_;
};

bool TakesOneValue(char parameter) {
  return parameter == 'V' || parameter == 'E';
}

Operand RunFunction(const Function& function, FunctionCall& call) {
  for (std::size_t i = 0; i < call.count(); ++i) {
    if (function.ParameterAt(i) == 'V' && call.ValueAt(i).isError()) return call.ValueAt(i);
  }
  try {
    return function.implementation(call);
  } catch (const FunctionError& error) {
    return error.code;
  }
}

}  // namespace

Operand Evaluator::EvaluateCall(const Frame& frame, const Node& node, Mode mode) {
  const Function* function = FindFunction(frame.expression.names[node.index].name);
  if (function == nullptr) {
    missedFunction_ = true;
    return ErrorCode::Name;
  }
  const std::size_t count = node.childCount;
  if (count < static_cast<std::size_t>(function->fewest) || count > static_cast<std::size_t>(function->most)) {
    return ErrorCode::Value;
  }
  ArgumentList list(count);
  const std::span<Operand> arguments = list.all();
  const std::size_t staleBefore = stale_.size();
  int rows = 0;
  int columns = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const char parameter = function->ParameterAt(i);
    if (parameter == 'L') continue;
    arguments[i] =
        Evaluate(frame, frame.expression.children[node.firstChild + i], parameter == 'A' ? Mode::Array : mode);
    if (!TakesOneValue(parameter)) continue;
    arguments[i] = Resolve(frame, std::move(arguments[i]), mode);
    if (arguments[i].isArray()) {
      rows = std::max(rows, arguments[i].array().rows);
      columns = std::max(columns, arguments[i].array().columns);
    }
  }
  // The call comes again when what it met stale has been worked out.
  if (stale_.size() != staleBefore) return ErrorCode::NA;
  if (rows == 0) {
    FunctionCall call(*this, frame, node, mode, arguments);
    return RunFunction(*function, call);
  }

  auto result = std::make_shared<ValueArray>(rows, columns);
  ArgumentList each(count);
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) {
      for (std::size_t i = 0; i < count; ++i) {
        each.all()[i] = arguments[i].isArray() && TakesOneValue(function->ParameterAt(i))
                            ? Operand(ElementOf(arguments[i], row, column))
                            : arguments[i];
      }
      FunctionCall call(*this, frame, node, mode, each.all());
      result->At(row, column) = Single(frame, RunFunction(*function, call));
    }
  }
  return ArrayPtr(std::move(result));
}

// --- a function's view of its arguments
// ------------------------------------------------------------------------------------

bool FunctionCall::isOmitted(std::size_t i) const {
  return i >= count() || frame.expression.nodes[ChildAt(i)].kind == Node::Kind::Missing;
}

bool FunctionCall::Has(std::size_t i) const {
  return !isOmitted(i);
}

const Value& FunctionCall::ValueAt(std::size_t i) const {
  static const Value nothing;
  return i < count() && operands_[i].isValue() ? operands_[i].value() : nothing;
}

double FunctionCall::Number(std::size_t i) const {
  const NumberResult result = ToNumber(ValueAt(i));
  if (result.error) throw FunctionError{*result.error};
  return result.number;
}

std::int64_t FunctionCall::Whole(std::size_t i) const {
  constexpr double kFar = 1e15;
  return static_cast<std::int64_t>(std::clamp(Number(i), -kFar, kFar));
}

bool FunctionCall::Boolean(std::size_t i) const {
  const BooleanResult result = ToBoolean(ValueAt(i));
  if (result.error) throw FunctionError{*result.error};
  return result.boolean;
}

std::string FunctionCall::Text(std::size_t i) const {
  return ToText(ValueAt(i));
}

const Area& FunctionCall::AreaAt(std::size_t i) const {
  const Operand& operand = operands_[i];
  if (operand.isValue() && operand.value().isError()) throw FunctionError{operand.value().error()};
  if (!operand.isReference() || !operand.areas().isSingle()) throw FunctionError{ErrorCode::Value};
  return operand.areas()[0];
}

Operand FunctionCall::Evaluate(std::size_t i, Mode inMode) {
  return i < count() ? evaluator.Evaluate(frame, ChildAt(i), inMode) : Operand();
}

}  // namespace tolvane::engine
