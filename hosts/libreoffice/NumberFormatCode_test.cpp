#include "hosts/libreoffice/NumberFormatCode.h"

#include <gtest/gtest.h>

namespace tolvane::libreoffice {
namespace {

TEST(NumberFormatCode, WordsAreWrittenAsExcelWritesThem) {
  EXPECT_EQ(ExcelNumberFormat("YYYY-MM-DD"), "yyyy-mm-dd");
  EXPECT_EQ(ExcelNumberFormat("H:MM AM/PM"), "h:mm AM/PM");
  EXPECT_EQ(ExcelNumberFormat("#,##0_);[RED](#,##0)"), "#,##0_);[Red](#,##0)");
  EXPECT_EQ(ExcelNumberFormat("[HH]:MM:SS"), "[hh]:mm:ss");
  EXPECT_EQ(ExcelNumberFormat("General;-General"), "General;-General");
}

TEST(NumberFormatCode, TextsStayAsTheyAre) {
  EXPECT_EQ(ExcelNumberFormat("\"DAY\"0\\D_M"), "\"DAY\"0\\D_M");
  EXPECT_EQ(ExcelNumberFormat("0.00E+00"), "0.00E+00");
}

}  // namespace
}  // namespace tolvane::libreoffice
