#include "engine/formula/FunctionTable.h"

#include <algorithm>
#include <vector>

namespace tolvane::engine {
namespace {

std::vector<const Function*> AllByName() {
  std::vector<const Function*> all;
  for (std::span<const Function> family :
       {MathFunctions(), MultipleFunctions(), TrigonometricFunctions(), AggregateFunctions(), OrderFunctions(),
        SubtotalFunctions(), ConditionalFunctions(), LogicFunctions(), InformationFunctions(), LookupFunctions(),
        CrossLookupFunctions(), ReferenceFunctions(), TextFunctions(), TextConversionFunctions(), DateFunctions(),
        CalendarFunctions(), AnnuityFunctions(), CashFlowFunctions()}) {
    for (const Function& function : family) all.push_back(&function);
  }
  std::sort(all.begin(), all.end(), [](const Function* a, const Function* b) { return a->name < b->name; });
  return all;
}

}  // namespace

char Function::ParameterAt(std::size_t argument) const {
  const std::size_t bar = parameters.find('|');
  if (bar == std::string_view::npos) return parameters[std::min(argument, parameters.size() - 1)];
  if (argument < bar) return parameters[argument];
  const std::size_t group = parameters.size() - bar - 1;
  return parameters[bar + 1 + (argument - bar) % group];
}

const Function* FindFunction(std::string_view upperName) {
  static const std::vector<const Function*> all = AllByName();
  const auto at =
      std::lower_bound(all.begin(), all.end(), upperName,
                       [](const Function* function, std::string_view name) { return function->name < name; });
  return at != all.end() && (*at)->name == upperName ? *at : nullptr;
}

}  // namespace tolvane::engine
