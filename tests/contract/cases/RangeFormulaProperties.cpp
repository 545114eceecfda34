#include <rapidcheck.h>

#include "tests/contract/Property.h"
#include "tests/contract/cases/CaseFiles.h"

namespace tolvane::contract {
namespace {

using host::CellBlock;
using host::CellError;
using host::CellValue;

rc::Gen<CellValue> AnyCellContent() {
  return rc::gen::weightedOneOf<CellValue>(
      {{1, rc::gen::just(CellValue())},
       {1, rc::gen::map(rc::gen::arbitrary<bool>(), [](bool b) { return CellValue(b); })},
       {2, rc::gen::map(rc::gen::inRange(-1000000, 1000000), [](int n) { return CellValue(n / 64.0); })},
       {1, rc::gen::element<CellValue>(CellError::Div0, CellError::NA, CellError::Ref, CellError::Name)},
       {3, rc::gen::map(rc::gen::nonEmpty(rc::gen::container<std::string>(
                            rc::gen::elementOf(std::string("=+-@'\"!#0123 aeTRUE./,%$()")))),
                        [](const std::string& text) { return CellValue(text); })}});
}

// Operands and operators that parse in every combination.
rc::Gen<std::string> AnyFormula() {
  const auto operand = rc::gen::element<std::string>("A1", "$B$2", "C$3", "$D4", "12.5", "\"a\"\"b\"", "TRUE",
                                                     "SUM(A1:B3)", "(C1)", "-D2", "#N/A", "SUM($1:$2)", "{1,2;3,4}");
  const auto op = rc::gen::element<std::string>("+", "-", "*", "/", "&", "=", "<>", "<=", "^");
  return rc::gen::map(rc::gen::container<std::vector<std::pair<std::string, std::string>>>(rc::gen::pair(op, operand)),
                      [](const std::vector<std::pair<std::string, std::string>>& parts) {
                        std::string formula = "=1";
                        for (const auto& [joint, right] : parts) formula += joint + right;
                        return formula;
                      });
}

constexpr int kExamples = 100;
constexpr int kRows = 4;
constexpr int kColumns = 3;

rc::Gen<std::vector<CellValue>> AnyBlockContent(const rc::Gen<CellValue>& cell) {
  return rc::gen::container<std::vector<CellValue>>(kRows * kColumns, cell);
}

CellBlock BlockOf(const std::vector<CellValue>& values) {
  CellBlock block(kRows, kColumns);
  std::copy(values.begin(), values.end(), block.cells().begin());
  return block;
}

}  // namespace

std::vector<ContractCase> RangeFormulaPropertyCases() {
  Cases cases("RangeFormulaProperties");

  cases.Add("ValuesComeBack", {"Range.Value"}, kPort, [](HostUnderTest& t) {
    const host::Range cells = t.NewSheet()("B2:D5");
    EXPECT_TRUE(Holds("what is written as values is read as values", kExamples, [&] {
      const CellBlock block = BlockOf(*AnyBlockContent(AnyCellContent()));
      cells.SetValue(block);
      RC_ASSERT(cells.Value() == block);
    }));
  });

  cases.Add("FormulaRoundTripKeepsEveryCell", {"Range.Value", "Range.Formula"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    EXPECT_TRUE(Holds("constants read by Formula and written back are the same cells", kExamples, [&] {
      const CellBlock block = BlockOf(*AnyBlockContent(AnyCellContent()));
      s("B2:D5").SetValue(block);
      s("F2:H5").SetFormula(s("B2:D5").Formula());
      RC_ASSERT(s("F2:H5").Value() == block);
    }));
  });

  cases.Add("FormulasComeBackInBothNotations", {"Range.Formula", "Range.FormulaR1C1"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    EXPECT_TRUE(Holds("a formula survives A1 to R1C1 and back", kExamples, [&] {
      const std::string formula = *AnyFormula();
      s.Put("F6", formula);
      RC_ASSERT(s.Formula("F6") == formula);
      const CellBlock r1c1 = s("F6").FormulaR1C1();
      s("F6").ClearContents();
      s("F6").SetFormulaR1C1(r1c1);
      RC_ASSERT(s.Formula("F6") == formula);
      // The same relative formula elsewhere is the one that filling would have put there.
      s("F6:G8").SetFormula(CellValue(formula));
      RC_ASSERT(s("G8").FormulaR1C1() == r1c1);
    }));
  });

  return std::move(cases).Take();
}

}  // namespace tolvane::contract
