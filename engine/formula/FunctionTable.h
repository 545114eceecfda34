#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "engine/formula/Operand.h"

namespace tolvane::engine {

class FunctionCall;
struct Expression;

// A worksheet function. To add one: write its implementation and a line in the table of its family (MathFunctions.cpp
// and so on); a new family's table is listed in FunctionTable.cpp.
struct Function {
  std::string_view name;
  int fewest = 0;
  int most = 0;
  // How each parameter takes its argument, one letter each:
  //   V  one value; an error in it is the result; an array makes the function work element by element
  //   E  as V, but errors are passed to the function
  //   R  whatever it is: a reference, an array or a value
  //   A  as R, and operators in the argument work on whole ranges, as in an array formula
  //   L  not evaluated until the function asks
  // The last letter serves all further arguments; what stands behind "|" is repeated as a group.
  std::string_view parameters;
  Operand (*implementation)(FunctionCall& call) = nullptr;
  // Its result may change while nothing that it refers to does.
  bool isVolatile = false;

  char ParameterAt(std::size_t argument) const;
};

inline constexpr int kMostArguments = 255;

// By its name in upper case; null when there is no such function.
const Function* FindFunction(std::string_view upperName);

// Whether a formula is a subtotal, which other subtotals leave out and which depends on what rows are hidden.
bool HoldsSubtotal(const Expression& expression);

// Functions that came after the file format stand in files with the prefix "_xlfn.", some with "_xlfn._xlws."; people
// never see it. Known are also functions that cannot be worked out here.
bool NeedsFilePrefix(std::string_view upperName);
// "" for a function without one.
std::string_view FilePrefixOf(std::string_view upperName);
// A function's name in upper case without such a prefix; as it is where the prefix does not belong to a known function.
std::string_view WithoutFilePrefix(std::string_view upperName);

// The families.
std::span<const Function> MathFunctions();
std::span<const Function> MultipleFunctions();
std::span<const Function> TrigonometricFunctions();
std::span<const Function> AggregateFunctions();
std::span<const Function> OrderFunctions();
std::span<const Function> SubtotalFunctions();
std::span<const Function> ConditionalFunctions();
std::span<const Function> LogicFunctions();
std::span<const Function> InformationFunctions();
std::span<const Function> LookupFunctions();
std::span<const Function> CrossLookupFunctions();
std::span<const Function> ReferenceFunctions();
std::span<const Function> TextFunctions();
std::span<const Function> TextConversionFunctions();
std::span<const Function> DateFunctions();
std::span<const Function> CalendarFunctions();
std::span<const Function> AnnuityFunctions();
std::span<const Function> CashFlowFunctions();

}  // namespace tolvane::engine
