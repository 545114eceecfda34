#include "tests/contract/cases/CaseFiles.h"

namespace tolvane::contract {
namespace {

using host::CellBlock;
using host::CellError;
using host::CellValue;

constexpr std::string_view kFormulaPage = "learn.microsoft.com: Range.Formula property (Excel)";
constexpr std::string_view kR1C1Page = "learn.microsoft.com: Range.FormulaR1C1 property (Excel)";

}  // namespace

std::vector<ContractCase> RangeFormulaCases() {
  Cases cases("RangeFormula");

  cases.Add("ATextWithAnEqualsSignIsAFormula", {"Range.Formula"}, kFormulaPage, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s.Put("A1", 4);
    s.Put("B1", "=A1*2");
    EXPECT_EQ(s.Formula("B1"), "=A1*2");
    EXPECT_EQ(s.Value("B1"), 8);
    s.Put("A1", 5);
    EXPECT_EQ(s.Value("B1"), 10);
  });

  cases.Add("ConstantsReadAsTheyAre", {"Range.Formula"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    const CellBlock block{{1.5, true, "text"}, {CellError::NA, "00123", -3}};
    s("A1:C2").SetFormula(block);
    EXPECT_EQ(s("A1:C2").Formula(), block);
    EXPECT_EQ(s("A1:C2").Value(), block);
    EXPECT_EQ(s("A1:C2").FormulaR1C1(), block);
  });

  cases.Add("TextsStayTextsUnlessTheyBeginWithAnEqualsSign", {"Range.Formula"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    for (const char* text : {"+1", "-1", "@a", "00123", "2009 Jan", "TRUE", "1e5", "1/2", "#N/A", " =1"}) {
      s.Put("A1", text);
      EXPECT_EQ(s.Value("A1"), text);
      EXPECT_EQ(s.Formula("A1"), text);
    }
  });

  cases.Add("OneLeadingApostropheIsStripped", {"Range.Formula"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s.Put("A1:A3", CellBlock{{"'=1+1"}, {"''quoted'"}, {"'"}});
    EXPECT_EQ(s.Value("A1"), "=1+1");
    EXPECT_EQ(s.Value("A2"), "'quoted'");
    EXPECT_EQ(s.Formula("A1"), "'=1+1");
    EXPECT_EQ(s.Formula("A2"), "''quoted'");
  });

  cases.Add("AnEmptyCellReadsAsAnEmptyText", {"Range.Formula", "Range.FormulaR1C1"}, kFormulaPage,
            [](HostUnderTest& t) {
              const Sheet s = t.NewSheet();
              EXPECT_EQ(s("A1").Formula(), CellBlock(CellValue("")));
              EXPECT_EQ(s("A1").FormulaR1C1(), CellBlock(CellValue("")));
            });

  cases.Add("AnEmptyTextClears", {"Range.Formula", "Range.FormulaR1C1"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s.Put("A1:C1", "=1");
    s("A1").SetFormula(CellValue(""));
    s("B1:C1").SetFormulaR1C1(CellValue(""));
    EXPECT_EQ(s("A1:C1").Value(), CellBlock(1, 3));
    EXPECT_EQ(s.FormulaR1C1("B1"), "");
  });

  cases.Add("RoundTripIsIdentity", {"Range.Formula"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s.Put("A1:D2", CellBlock{{1, "=A1", "'=x", "''"}, {"=\"\"", true, CellError::Num, CellValue()}});
    const CellBlock formulas = s("A1:D2").Formula();
    const CellBlock values = s("A1:D2").Value();
    s("A1:D2").SetFormula(formulas);
    EXPECT_EQ(s("A1:D2").Formula(), formulas);
    EXPECT_EQ(s("A1:D2").Value(), values);
  });

  cases.Add("OneFormulaFillsABlockRelatively", {"Range.Formula"}, kFormulaPage, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s.Put("B2:C3", "=A1+$A1+A$1+$A$1");
    EXPECT_EQ(s.Formula("B2"), "=A1+$A1+A$1+$A$1");
    EXPECT_EQ(s.Formula("C2"), "=B1+$A1+B$1+$A$1");
    EXPECT_EQ(s.Formula("C3"), "=B2+$A2+B$1+$A$1");
  });

  cases.Add("AFormulaThatDoesNotParseWritesNothing", {"Range.Formula"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s.Put("A1:B1", CellBlock{{1, 2}});
    for (const char* formula : {"=", "=1+", "=(1", "=1)", "=SUM(", "=\"a", "='x", "={1,2", "=A1:", "=*2"}) {
      EXPECT_TRUE(Refused([&] { s.Put("A1", formula); })) << formula;
      EXPECT_TRUE(Refused([&] { s.Put("A1:B1", CellBlock{{7, formula}}); })) << formula;
    }
    EXPECT_EQ(s("A1:B1").Value(), (CellBlock{{1, 2}}));
  });

  cases.Add("AnR1C1FormulaThatDoesNotParseWritesNothing", {"Range.FormulaR1C1"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s.Put("A1", 1);
    for (const char* formula : {"=R[1", "=SUM(RC", "=R1C1+", "=R[x]C"}) {
      EXPECT_TRUE(Refused([&] { s("A1").SetFormulaR1C1(CellValue(formula)); })) << formula;
    }
    EXPECT_EQ(s.Value("A1"), 1);
    s("A1").SetFormulaR1C1(CellValue(2));
    EXPECT_EQ(s("A1").FormulaR1C1(), CellBlock(2));
  });

  cases.Add("NestingWithoutEndIsRefused", {"Range.Formula"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s.Put("A1", 1);
    EXPECT_TRUE(Refused([&] { s.Put("A1", "=" + std::string(100000, '(') + "1" + std::string(100000, ')')); }));
    EXPECT_EQ(s.Value("A1"), 1);
  });

  cases.Add("UnknownNamesAndFunctionsAreErrorsInTheCell", {"Range.Formula"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s.Put("A1:B1", CellBlock{{"=noSuchName", "=NOSUCHFUNCTION(1)"}});
    EXPECT_EQ(s("A1:B1").Value(), (CellBlock{{CellError::Name, CellError::Name}}));
  });

  cases.Add("ACircleIsZeroAndNoError", {"Range.Formula"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s.Put("A1", "=A1+1");
    EXPECT_EQ(s.Value("A1"), 0);
    s.Put("B1:B2", CellBlock{{"=B2"}, {"=B1"}});
    EXPECT_EQ(s.Value("B1"), 0);
    EXPECT_EQ(s.Value("B2"), 0);
    s.Put("B2", 5);
    EXPECT_EQ(s.Value("B1"), 5);
  });

  cases.Add("A1ReadsAsR1C1", {"Range.Formula", "Range.FormulaR1C1"}, kR1C1Page, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s.Put("C5", "=B4+$B4+B$4+$B$4+C5");
    EXPECT_EQ(s.FormulaR1C1("C5"), "=R[-1]C[-1]+R[-1]C2+R4C[-1]+R4C2+RC");
    s.Put("C6", "=SUM(C3:C5,$5:$9,B:C)");
    EXPECT_EQ(s.FormulaR1C1("C6"), "=SUM(R[-3]C:R[-1]C,R5:R9,C[-1]:C)");
  });

  cases.Add("R1C1ReadsAsA1", {"Range.Formula", "Range.FormulaR1C1"}, kR1C1Page, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    const CellBlock formulas{{"=SUM(R[-3]C:R[-1]C)"}, {"=SUBTOTAL(9,R5C:R8C)"}, {"=SUM(R5:R8)"},
                             {"=RC[-1]-RC[-2]"},      {"=R[1]C[-1]"},           {"=R7C4"},
                             {"=SUM(RC[-2]:RC[-1])"}};
    s("D10:D16").SetFormulaR1C1(formulas);
    EXPECT_EQ(s("D10:D16").Formula(), (CellBlock{{"=SUM(D7:D9)"},
                                                 {"=SUBTOTAL(9,D$5:D$8)"},
                                                 {"=SUM($5:$8)"},
                                                 {"=C13-B13"},
                                                 {"=C15"},
                                                 {"=$D$7"},
                                                 {"=SUM(B16:C16)"}}));
    EXPECT_EQ(s("D10:D16").FormulaR1C1(), formulas);
  });

  cases.Add("OneR1C1FormulaFillsABand", {"Range.FormulaR1C1"}, kR1C1Page, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("B2:D4").SetValue(CellBlock{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
    s("B5:D5").SetFormulaR1C1(CellValue("=SUM(R[-3]C:R[-1]C)"));
    EXPECT_EQ(s("B5:D5").Value(), (CellBlock{{12, 15, 18}}));
    EXPECT_EQ(s.Formula("D5"), "=SUM(D2:D4)");
    EXPECT_EQ(s("B5:D5").FormulaR1C1().at(1, 3), "=SUM(R[-3]C:R[-1]C)");
  });

  cases.Add("ReferenceStyleChangesNothingHere", {"Range.Formula", "Application.ReferenceStyle"}, kFormulaPage,
            [](HostUnderTest& t) {
              const Sheet s = t.NewSheet();
              t.application().SetReferenceStyle(host::ReferenceStyle::R1C1);
              s.Put("A2", "=A1");
              EXPECT_EQ(s.Formula("A2"), "=A1");
              EXPECT_EQ(s.FormulaR1C1("A2"), "=R[-1]C");
              EXPECT_EQ(t.application().ReferenceStyle(), host::ReferenceStyle::R1C1);
            });

  cases.Add("RoundWithAnEmptyArgumentRoundsToWholes", {"Range.Formula"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s.Put("A1:B1", CellBlock{{2.5, -1.4}});
    s.Put("C1", "=IF(AND(ISNUMBER(A1),ISNUMBER(B1)),ROUND(A1,)-ROUND(B1,),\"\")");
    EXPECT_EQ(s.Value("C1"), 4);
    EXPECT_EQ(s.Formula("C1"), "=IF(AND(ISNUMBER(A1),ISNUMBER(B1)),ROUND(A1,)-ROUND(B1,),\"\")");
    s.Put("B1", "text");
    EXPECT_EQ(s.Value("C1"), "");
  });

  cases.Add("SubtotalLeavesOutOtherSubtotalsAndFilteredRows", {"Range.FormulaR1C1", "Range.AutoFilter"},
            "support.microsoft.com: SUBTOTAL function", [](HostUnderTest& t) {
              const Sheet s = t.NewSheet();
              s.Put("A1:A6", CellBlock{{"Amount"}, {1}, {2}, {"=SUBTOTAL(9,A2:A3)"}, {10}, {20}});
              s("B1").SetFormulaR1C1(CellValue("=SUBTOTAL(9,R2C1:R6C1)"));
              EXPECT_EQ(s.Value("A4"), 3);
              EXPECT_EQ(s.Value("B1"), 33);
              s("A1:A6").AutoFilter(Where(1, "<>10"));
              EXPECT_EQ(s.Value("B1"), 23);
            });

  cases.Add("TheAccountNameFormulaFollowsARename", {"Range.Formula", "Worksheet.Name"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    const Sheet other(s.Parent().Worksheets().Add());
    other.SetName("My Account");
    const std::string address = "CELL(\"address\",'My Account'!$A$1)";
    s.Put("A1", "=MID(" + address + ",FIND(\"]\"," + address + ",1)+1,FIND(\"!\"," + address + ",1)-1-(MID(" + address +
                    ",FIND(\"!\"," + address + ",1)-1,1)=\"'\")-FIND(\"]\"," + address + ",1))");
    EXPECT_EQ(s.Value("A1"), "My Account");
    other.SetName("Plain");
    EXPECT_EQ(s.Value("A1"), "Plain");
  });

  cases.Add("EveryNumberComesBackExactly", {"Range.Formula"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    for (const double number : {0.1, 1.0 / 3.0, 123456789012345678.0, 1e-300, -0.5, 4503599627370497.5}) {
      s.Put("A1", number);
      EXPECT_EQ(s.Value("A1"), number);
      s.Put("A1", s("A1").Formula());
      EXPECT_EQ(s.Value("A1"), number);
    }
  });

  return std::move(cases).Take();
}

}  // namespace tolvane::contract
