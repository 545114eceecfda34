#include <algorithm>
#include <cmath>
#include <iterator>

#include "engine/formula/Evaluator.h"
#include "engine/formula/Printer.h"
#include "engine/formula/SheetPrefix.h"
#include "platform/Text.h"

namespace tolvane::engine {
namespace {

Operand IsNumber(FunctionCall& call) {
  return Value(call.ValueAt(0).isNumber());
}
Operand IsText(FunctionCall& call) {
  return Value(call.ValueAt(0).isText());
}
Operand IsNonText(FunctionCall& call) {
  return Value(!call.ValueAt(0).isText());
}
Operand IsBlank(FunctionCall& call) {
  return Value(call.Has(0) && call.ValueAt(0).isEmpty());
}
Operand IsLogical(FunctionCall& call) {
  return Value(call.ValueAt(0).isBoolean());
}
Operand IsError(FunctionCall& call) {
  return Value(call.ValueAt(0).isError());
}
Operand IsErr(FunctionCall& call) {
  return Value(call.ValueAt(0).isError() && call.ValueAt(0).error() != ErrorCode::NA);
}
Operand IsNA(FunctionCall& call) {
  return Value(call.ValueAt(0).isError() && call.ValueAt(0).error() == ErrorCode::NA);
}
Operand IsRef(FunctionCall& call) {
  return Value(call.Argument(0).isReference());
}
Operand ErrorType(FunctionCall& call) {
  if (!call.ValueAt(0).isError()) return ErrorCode::NA;
  constexpr ErrorCode kInOrder[] = {ErrorCode::Null, ErrorCode::Div0, ErrorCode::Value, ErrorCode::Ref,
                                    ErrorCode::Name, ErrorCode::Num,  ErrorCode::NA};
  const auto at = std::find(std::begin(kInOrder), std::end(kInOrder), call.ValueAt(0).error());
  return static_cast<double>(at - std::begin(kInOrder) + 1);
}

bool IsEvenAt(FunctionCall& call) {
  if (call.ValueAt(0).isBoolean()) throw FunctionError{ErrorCode::Value};
  return std::fmod(std::trunc(call.Number(0)), 2) == 0;
}
Operand IsEven(FunctionCall& call) {
  return Value(IsEvenAt(call));
}
Operand IsOdd(FunctionCall& call) {
  return Value(!IsEvenAt(call));
}

Operand IsFormula(FunctionCall& call) {
  const Operand& argument = call.Argument(0);
  if (!argument.isReference()) return argument.isValue() && argument.value().isError() ? argument : ErrorCode::Value;
  const Area& area = argument.areas()[0];
  return Value(area.sheet->FormulaAt(area.rect.topLeft()) != nullptr);
}

Operand FormulaText(FunctionCall& call) {
  const Area& area = call.AreaAt(0);
  CellPos at = area.rect.topLeft();
  const FormulaCell* formula = area.sheet->FormulaAt(at);
  const bool isArray = formula != nullptr && formula->arrayArea;
  if (isArray) {
    at = formula->arrayArea->topLeft();
    formula = area.sheet->FormulaAt(at);
  }
  if (formula == nullptr) return ErrorCode::NA;
  if (!formula->rawText.empty()) return Value(formula->rawText);
  if (formula->expression == nullptr) return ErrorCode::NA;
  const std::string text = PrintFormula(*formula->expression, Notation::A1, {area.sheet->id(), at}, area.sheet->book());
  return Value(isArray ? "{" + text + "}" : text);
}

Operand Na(FunctionCall&) {
  return ErrorCode::NA;
}

// Of a range the first cell counts.
Value FirstOf(FunctionCall& call, std::size_t i) {
  const Operand& argument = call.Argument(i);
  if (!argument.isReference()) return call.evaluator.Single(call.frame, argument);
  const Area& area = argument.areas()[0];
  return call.evaluator.ValueAt(*area.sheet, area.rect.topLeft());
}

Operand N(FunctionCall& call) {
  const Value value = FirstOf(call, 0);
  if (value.isNumber() || value.isError()) return value;
  return value.isBoolean() && value.boolean() ? 1.0 : 0.0;
}

Operand T(FunctionCall& call) {
  const Value value = FirstOf(call, 0);
  return value.isText() || value.isError() ? value : Value(Text());
}

Operand Type(FunctionCall& call) {
  const Operand& argument = call.Argument(0);
  constexpr double kArray = 64;
  const bool isRange = argument.isReference() && !(argument.areas().isSingle() && argument.areas()[0].rect.isCell());
  if (argument.isArray() || isRange) return kArray;
  switch (FirstOf(call, 0).kind()) {
    case Value::Kind::Text:
      return 2.0;
    case Value::Kind::Boolean:
      return 4.0;
    case Value::Kind::Error:
      return 16.0;
    default:
      return 1.0;
  }
}

std::string AddressOf(FunctionCall& call, const Area& area) {
  std::string out;
  if (area.sheet != &call.frame.sheet) {
    // Quoted whether it needs it or not.
    std::string content("[");
    content.append(call.evaluator.world().BookName()).append("]").append(area.sheet->name());
    out += '\'';
    for (const char c : content) {
      if (c == '\'') out += '\'';
      out += c;
    }
    out += "'!";
  }
  return out + PrintAddress(Rect::Cell(area.rect.topLeft()), {});
}

Operand Cell(FunctionCall& call) {
  const std::string what = platform::LowerCase(call.Text(0));
  Area area{&call.frame.sheet, Rect::Cell(call.frame.cell)};
  if (call.Has(1)) area = call.AreaAt(1);
  const CellPos at = area.rect.topLeft();
  if (what == "address") return Value(AddressOf(call, area));
  if (what == "row") return static_cast<double>(at.row);
  if (what == "col") return static_cast<double>(at.column);
  if (what == "filename") {
    const CalculationWorld& world = call.evaluator.world();
    const std::string folder = world.BookFolder();
    if (folder.empty()) return Value(engine::Text());  // not saved yet
    return Value(folder + "[" + world.BookName() + "]" + area.sheet->name());
  }
  if (what == "contents" || what == "type") {
    const Value value = call.evaluator.ValueAt(*area.sheet, at);
    if (what == "type") return Value(value.isEmpty() ? "b" : value.isText() ? "l" : "v");
    return value.isEmpty() ? Value(0.0) : value;
  }
  return ErrorCode::Value;
}

constexpr Function kFunctions[] = {
    {"CELL", 1, 2, "VR", Cell, true},
    {"ERROR.TYPE", 1, 1, "E", ErrorType},
    {"FORMULATEXT", 1, 1, "R", FormulaText},
    {"ISBLANK", 1, 1, "E", IsBlank},
    {"ISERR", 1, 1, "E", IsErr},
    {"ISERROR", 1, 1, "E", IsError},
    {"ISEVEN", 1, 1, "V", IsEven},
    {"ISFORMULA", 1, 1, "R", IsFormula},
    {"ISLOGICAL", 1, 1, "E", IsLogical},
    {"ISNA", 1, 1, "E", IsNA},
    {"ISNONTEXT", 1, 1, "E", IsNonText},
    {"ISNUMBER", 1, 1, "E", IsNumber},
    {"ISODD", 1, 1, "V", IsOdd},
    {"ISREF", 1, 1, "R", IsRef},
    {"ISTEXT", 1, 1, "E", IsText},
    {"N", 1, 1, "R", N},
    {"NA", 0, 0, "V", Na},
    {"T", 1, 1, "R", T},
    {"TYPE", 1, 1, "R", Type},
};

}  // namespace

std::span<const Function> InformationFunctions() {
  return kFunctions;
}

}  // namespace tolvane::engine
