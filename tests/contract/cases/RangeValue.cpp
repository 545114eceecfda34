#include "tests/contract/cases/CaseFiles.h"

namespace tolvane::contract {
namespace {

using host::CellBlock;
using host::CellError;
using host::CellValue;
using host::Range;

constexpr std::string_view kValuePage = "learn.microsoft.com: Range.Value property (Excel)";

}  // namespace

std::vector<ContractCase> RangeValueCases() {
  Cases cases("RangeValue");

  cases.Add("OneCellIsASingleValue", {"Range.Value"}, kValuePage, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("B2").SetValue(CellValue(12.5));
    EXPECT_TRUE(s("B2").Value().isSingle());
    EXPECT_EQ(s.Value("B2"), 12.5);
  });

  cases.Add("ManyCellsAreABlockRowsFirst", {"Range.Value"}, kValuePage, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    const CellBlock block{{1, 2, 3}, {4, 5, 6}};
    s("A1:C2").SetValue(block);
    EXPECT_EQ(s("A1:C2").Value(), block);
    EXPECT_EQ(s.Value("C1"), 3);
    EXPECT_EQ(s.Value("A2"), 4);
  });

  cases.Add("EmptyCellsAreEmpty", {"Range.Value"}, kValuePage, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    EXPECT_TRUE(s.Value("A1").isEmpty());
    EXPECT_EQ(s("A1:B2").Value(), CellBlock(2, 2));
  });

  cases.Add("EveryKindOfValueComesBack", {"Range.Value"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    const CellBlock block{{true, false, -0.1},
                          {1e300, "text", "a text that is longer than fifteen bytes"},
                          {CellError::Div0, CellError::NA, CellError::Value},
                          {CellError::Ref, CellError::Name, CellError::Num},
                          {CellValue(), "•", "Zürich 東京"}};
    s("A1:C5").SetValue(block);
    EXPECT_EQ(s("A1:C5").Value(), block);
  });

  cases.Add("TextsStayTextsWhateverTheyLookLike", {"Range.Value"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    for (const char* text : {"=1+1", "=", "+1", "-1", "@a", "'quoted", "''", "00123", "2009 Jan", "TRUE", "1e5", "1/2",
                             "#N/A", " 1", "12:30", "5%"}) {
      s("A1").SetValue(CellValue(text));
      EXPECT_EQ(s.Value("A1"), text);
      s("A2:B3").SetValue(CellValue(text));
      EXPECT_EQ(s.Value("B3"), text);
    }
  });

  cases.Add("AnEmptyTextLeavesTheCellEmpty", {"Range.Value"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1:A2").SetValue(CellValue(1));
    s("A1").SetValue(CellValue(""));
    EXPECT_TRUE(s.Value("A1").isEmpty());
    EXPECT_EQ(s("A2").End(host::Direction::Up).Address(), "$A$1");
  });

  cases.Add("ASingleValueFillsEveryCellOfEveryArea", {"Range.Value"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1:B2,D4").SetValue(CellValue("x"));
    EXPECT_EQ(s("A1:B2").Value(), (CellBlock{{"x", "x"}, {"x", "x"}}));
    EXPECT_EQ(s.Value("D4"), "x");
    EXPECT_TRUE(s.Value("C3").isEmpty());
  });

  cases.Add("EmptyClearsAndEndsAFormula", {"Range.Value"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s.Put("A1", "=1+1");
    s("A1").SetValue(CellValue());
    EXPECT_TRUE(s.Value("A1").isEmpty());
    EXPECT_EQ(s.Formula("A1"), "");
  });

  cases.Add("AConstantEndsAFormula", {"Range.Value"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1").SetValue(CellValue(1));
    s.Put("B1", "=A1+1");
    s("B1").SetValue(CellValue(7));
    s("A1").SetValue(CellValue(10));
    EXPECT_EQ(s.Value("B1"), 7);
  });

  cases.Add("OneRowRepeatsDownwards", {"Range.Value"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1:B3").SetValue(CellBlock{{1, 2}});
    EXPECT_EQ(s("A1:B3").Value(), (CellBlock{{1, 2}, {1, 2}, {1, 2}}));
  });

  cases.Add("OneColumnRepeatsSideways", {"Range.Value"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1:C2").SetValue(CellBlock{{1}, {2}});
    EXPECT_EQ(s("A1:C2").Value(), (CellBlock{{1, 1, 1}, {2, 2, 2}}));
  });

  cases.Add("MissingRowsAndColumnsBecomeNA", {"Range.Value"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1:C3").SetValue(CellBlock{{1, 2}, {3, 4}});
    EXPECT_EQ(s("A1:C3").Value(),
              (CellBlock{{1, 2, CellError::NA}, {3, 4, CellError::NA}, {CellError::NA, CellError::NA, CellError::NA}}));
  });

  cases.Add("WhatABlockHasTooMuchIsDropped", {"Range.Value"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1:B1").SetValue(CellBlock{{1, 2, 3}, {4, 5, 6}});
    EXPECT_EQ(s("A1:C2").Value(), (CellBlock{{1, 2, CellValue()}, {CellValue(), CellValue(), CellValue()}}));
    s("A3").SetValue(CellBlock{{7, 8}, {9, 10}});
    EXPECT_EQ(s("A3:B4").Value(), (CellBlock{{7, CellValue()}, {CellValue(), CellValue()}}));
  });

  cases.Add("OfSeveralAreasTheFirstIsRead", {"Range.Value"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("C1:C2").SetValue(CellBlock{{1}, {2}});
    s("A1").SetValue(CellValue(3));
    EXPECT_EQ(s("C1:C2,A1").Value(), (CellBlock{{1}, {2}}));
  });

  cases.Add("DatesAreNumbers", {"Range.Value"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1").SetNumberFormat("yyyy-mm-dd");
    s("A1").SetValue(CellValue(39887));
    EXPECT_EQ(s.Value("A1"), 39887);
    s.Put("A2", "=DATE(2009,3,15)");
    EXPECT_EQ(s.Value("A2"), 39887);
  });

  cases.Add("FormulasReadAsTheirResults", {"Range.Value"}, kValuePage, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s.Put("A1:D1", CellBlock{{"=1/0", "=\"a\"&\"b\"", "=1=1", "=\"\""}});
    EXPECT_EQ(s("A1:D1").Value(), (CellBlock{{CellError::Div0, "ab", true, ""}}));
  });

  cases.Add("ATextLongerThanACellHoldsIsRefused", {"Range.Value"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    const std::string longest(32767, 'x');
    s("A1").SetValue(CellValue(longest));
    EXPECT_EQ(s.Value("A1"), longest);
    EXPECT_TRUE(Refused([&] { s("A1:B1").SetValue(CellBlock{{1, longest + "x"}}); }));
    EXPECT_EQ(s.Value("A1"), longest);
  });

  cases.Add("WritingPastTheLastRowIsNotPossible", {"Range.Resize"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    const Range last = s.Cells(s.Rows().Count(), s.Columns().Count());
    last.SetValue(CellValue(1));
    EXPECT_EQ(last.Value().single(), 1);
    EXPECT_EQ(last.Resize(1, 1).Count(), 1);
    EXPECT_TRUE(Refused([&] { last.Resize(2, 1); }));
    EXPECT_TRUE(Refused([&] { last.Resize(1, 2); }));
  });

  cases.Add("WholeColumnsTakeOneValueCheaply", {"Range.Value"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1:B3").SetValue(CellValue(1));
    s("A:A").SetValue(CellValue());
    EXPECT_TRUE(s.Value("A2").isEmpty());
    EXPECT_EQ(s.Value("B2"), 1);
  });

  return std::move(cases).Take();
}

}  // namespace tolvane::contract
