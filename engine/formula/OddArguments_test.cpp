#include <rapidcheck.h>

#include "engine/formula/FormulaFixture.h"
#include "engine/formula/FunctionTable.h"

namespace tolvane::engine {
namespace {

class OddArguments : public FormulaFixture {
 public:
  void TestBody() override {}
  using FormulaFixture::Result;
  using FormulaFixture::Set;
};

std::vector<const Function*> AllFunctions() {
  std::vector<const Function*> all;
  for (const auto& family :
       {MathFunctions(), MultipleFunctions(), TrigonometricFunctions(), AggregateFunctions(), OrderFunctions(),
        SubtotalFunctions(), ConditionalFunctions(), LogicFunctions(), InformationFunctions(), LookupFunctions(),
        CrossLookupFunctions(), ReferenceFunctions(), TextFunctions(), TextConversionFunctions(), DateFunctions(),
        CalendarFunctions(), AnnuityFunctions(), CashFlowFunctions()}) {
    for (const Function& function : family) all.push_back(&function);
  }
  return all;
}

// Whatever people put in, a function gives a value or an error.
TEST(OddArguments, BreakNoFunction) {
  const std::vector<const Function*> functions = AllFunctions();
  const std::vector<std::string> odd = {
      "",      "0",         "-1",    "1",     "2",    "0.5", "1E+300", "-1E+300", "1E-300",    "2958465",
      "45000", "\"\"",      "\"x\"", "TRUE",  "#N/A", "A1",  "A9",     "A1:A5",   "A1:C3",     "A:A",
      "{1,2}", "{1;\"x\"}", "\"*\"", "\"1\"", "-7",   "255", "1E+10",  "(A1,A3)", "Sheet2!A1", "{1,2;3,4}"};
  EXPECT_TRUE(rc::check([&] {
    OddArguments sheet;
    sheet.Set("A1", "1");
    sheet.Set("A2", "text");
    sheet.Set("A3", "=1/0");
    sheet.Set("A4", "TRUE");
    sheet.Set("B1", "-5");
    sheet.Set("C3", "45000");
    constexpr int kFormulas = 40;
    for (int i = 0; i < kFormulas; ++i) {
      const Function& function = **rc::gen::elementOf(functions);
      const int most = std::min(function.most, function.fewest + 3);
      const int count = *rc::gen::inRange(function.fewest, most + 1);
      std::string formula = "=" + std::string(function.name) + "(";
      for (int argument = 0; argument < count; ++argument) {
        if (argument > 0) formula += ",";
        const std::string text = *rc::gen::elementOf(odd);
        formula += text.empty() && count == 1 ? "0" : text;
      }
      RC_LOG() << formula << ")\n";
      sheet.Set("Z98", "=ISERROR(" + formula.substr(1) + "))");
      RC_ASSERT(sheet.Result("=OR(Z98,NOT(Z98))") == "TRUE");
    }
  }));
}

}  // namespace
}  // namespace tolvane::engine
