#include "src/core/CellConversions.h"

#include <gtest/gtest.h>

namespace tolvane::accounts {
namespace {

using host::CellError;
using host::CellValue;

TEST(CellConversions, ACellWithAnErrorReadsAsNoText) {
  EXPECT_EQ(sCellText(CellError::NA), "");
  EXPECT_EQ(sCellText(CellValue()), "");
}

TEST(CellConversions, TextsOfNumbersAreShortAndHaveAPoint) {
  EXPECT_EQ(sCellText(1200), "1200");
  EXPECT_EQ(sCellText(-12.5), "-12.5");
  EXPECT_EQ(sCellText(0.1), "0.1");
  EXPECT_EQ(sCellText(-0.0), "0");
  EXPECT_EQ(sCellText(123456789012.25), "123456789012.25");
  EXPECT_EQ(sCellText(1e20), "1E+20");
  EXPECT_EQ(sCellText(true), "True");
  EXPECT_EQ(sCellText(" padded "), " padded ");
}

TEST(CellConversions, OnlyATrulyBlankCellGivesTheSentinel) {
  EXPECT_EQ(dCellAmount(CellValue(), true), kBlankAmount);
  EXPECT_EQ(dCellAmount(CellValue(), false), 0);
  EXPECT_EQ(dCellAmount("abc", true), 0);
  EXPECT_EQ(dCellAmount("", true), 0);
  EXPECT_EQ(dCellAmount(CellError::Div0, true), 0);
  EXPECT_EQ(dCellAmount(0, true), 0);
  EXPECT_EQ(lCellLong(CellValue(), true), kBlankLong);
  EXPECT_EQ(lCellLong(CellError::NA, true), 0);
}

TEST(CellConversions, TextsThatAreNumbersCount) {
  EXPECT_EQ(dCellAmount("12.50", false), 12.5);
  EXPECT_EQ(dCellAmount(" -1,234.50 ", false), -1234.5);
  EXPECT_EQ(dCellAmount("+7", false), 7);
  EXPECT_EQ(dCellAmount("1e3", false), 1000);
  EXPECT_EQ(dCellAmount("+-7", false), 0);
  EXPECT_EQ(dCellAmount("12.5x", false), 0);
  EXPECT_EQ(dCellAmount("inf", false), 0);
}

TEST(CellConversions, WholeNumbersAreRoundedHalfToEven) {
  EXPECT_EQ(lCellLong(39887.75, false), 39888);
  EXPECT_EQ(lCellLong(2.5, false), 2);
  EXPECT_EQ(lCellLong(3.5, false), 4);
  EXPECT_EQ(lCellLong(1e300, false), 0);
}

TEST(CellConversions, WhatIsReadAndWrittenBackIsTheSame) {
  for (const CellValue& cell : {CellValue(), CellValue(0), CellValue(-12.5)}) {
    EXPECT_EQ(vAmountCell(dCellAmount(cell, true)), cell);
  }
  for (const CellValue& cell : {CellValue(), CellValue(0), CellValue(39887)}) {
    EXPECT_EQ(vLongCell(lCellLong(cell, true)), cell);
  }
  for (const CellValue& cell : {CellValue(), CellValue("=1+1")}) EXPECT_EQ(vTextCell(sCellText(cell)), cell);
}

TEST(CellConversions, AmountsRoundHalfToEven) {
  EXPECT_EQ(dRoundAmount(0.125), 0.12);
  EXPECT_EQ(dRoundAmount(0.375), 0.38);
  EXPECT_EQ(dRoundAmount(-2.5), -2.5);
  EXPECT_EQ(dRoundAmount(1e300), 1e300);
}

}  // namespace
}  // namespace tolvane::accounts
