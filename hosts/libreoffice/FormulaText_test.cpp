#include "hosts/libreoffice/FormulaText.h"

#include <gtest/gtest.h>

namespace tolvane::libreoffice {
namespace {

std::string Translate(std::string_view text, Dialect from, Dialect to, CellPos at = {1, 1}) {
  return WriteFormula(ReadFormula(text, from, at), to, at);
}

TEST(FormulaText, ExcelToCalc) {
  EXPECT_EQ(Translate("SUM(A1,'My Sheet'!$B$2:C3)", Dialect::ExcelA1, Dialect::Calc), "SUM(A1;$'My Sheet'.$B$2:C3)");
  EXPECT_EQ(Translate("IF(TRUE,{1,2;3,4},#N/A)", Dialect::ExcelA1, Dialect::Calc), "IF(TRUE();{1;2|3;4};#N/A)");
  EXPECT_EQ(Translate("SUM((A1,B2),A1:B2 B1:C3)", Dialect::ExcelA1, Dialect::Calc), "SUM((A1~B2);A1:B2!B1:C3)");
  EXPECT_EQ(Translate("\"a;\"\",b\"&B:C&$5:$9", Dialect::ExcelA1, Dialect::Calc), "\"a;\"\",b\"&B:C&$5:$9");
}

TEST(FormulaText, CalcToExcel) {
  EXPECT_EQ(Translate("IF(TRUE();$'My Sheet'.A1;$Sheet1.$B$2:$B$3)", Dialect::Calc, Dialect::ExcelA1),
            "IF(TRUE,'My Sheet'!A1,Sheet1!$B$2:$B$3)");
  EXPECT_EQ(Translate("$#REF!.A1+B#REF!+SUM(C#REF!:C#REF!)", Dialect::Calc, Dialect::ExcelA1),
            "#REF!+#REF!+SUM(#REF!)");
  EXPECT_EQ(Translate("A1:B2!B1:C3", Dialect::Calc, Dialect::ExcelA1), "A1:B2 B1:C3");
}

TEST(FormulaText, R1C1CountsFromTheCell) {
  EXPECT_EQ(Translate("B4+$B4+B$4+$B$4+C5", Dialect::ExcelA1, Dialect::ExcelR1C1, {5, 3}),
            "R[-1]C[-1]+R[-1]C2+R4C[-1]+R4C2+RC");
  EXPECT_EQ(Translate("SUM(R[-3]C:R[-1]C,R5,C[-1]:C)", Dialect::ExcelR1C1, Dialect::ExcelA1, {10, 4}),
            "SUM(D7:D9,$5:$5,C:D)");
  EXPECT_EQ(Translate("SUM($5:$9,B:C)", Dialect::ExcelA1, Dialect::ExcelR1C1, {6, 3}), "SUM(R5:R9,C[-1]:C)");
}

TEST(FormulaText, WhatIsNoFormulaIsRefused) {
  for (const char* text :
       {"", "1+", "(1", "1)", "SUM(", "A1 B", "\"a", "'x", "1,2", "{1,2", "A1:", "*2", "A1!", "1 2"}) {
    EXPECT_THROW(ReadFormula(text, Dialect::ExcelA1, {}), FormulaError) << text;
  }
  for (const char* text : {"R[1", "SUM(RC", "R1C1+", "R[x]C"}) {
    EXPECT_THROW(ReadFormula(text, Dialect::ExcelR1C1, {}), FormulaError) << text;
  }
  EXPECT_THROW(ReadFormula(std::string(5000, '(') + "1", Dialect::ExcelA1, {}), FormulaError);
}

TEST(FormulaText, TruthIsToldByTheForm) {
  const auto truth = [](const char* text) { return GivesTruth(ReadFormula(text, Dialect::Calc, {})); };
  EXPECT_EQ(truth("1=1"), Truth::Yes);
  EXPECT_EQ(truth("AND(1;0)"), Truth::Yes);
  EXPECT_EQ(truth("AND(1;0)+1"), Truth::No);
  EXPECT_EQ(truth("SUM(A1=B1)"), Truth::No);
  EXPECT_EQ(truth("IF(A1;1;TRUE())"), Truth::Unknown);
  EXPECT_EQ(truth("A1"), Truth::Unknown);
}

TEST(FormulaText, SheetNamesAreQuotedWhereTheyMust) {
  EXPECT_EQ(QuoteSheetName("Data"), "Data");
  for (const char* name : {"My Sheet", "2009", "A1", "R1C1", "C", "it's", "a-b"}) {
    EXPECT_EQ(QuoteSheetName(name).front(), '\'') << name;
  }
}

}  // namespace
}  // namespace tolvane::libreoffice
