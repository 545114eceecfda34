#include "hosts/embedded/Typing.h"

#include <gtest/gtest.h>

namespace tolvane::embedded {
namespace {

using engine::Value;

TEST(Typing, NumbersAreRecognised) {
  EXPECT_EQ(Recognise("12.5").value, Value(12.5));
  EXPECT_EQ(Recognise(" -3 ").value, Value(-3));
  EXPECT_EQ(Recognise("1,234.5").value, Value(1234.5));
  EXPECT_EQ(Recognise("(7)").value, Value(-7));
  EXPECT_EQ(Recognise("1E-3").value, Value(0.001));
  EXPECT_EQ(Recognise("007").value, Value(7));
  EXPECT_FALSE(Recognise("12.5").numberFormat);
}

TEST(Typing, PercentagesBringTheirFormat) {
  EXPECT_EQ(Recognise("5%").value, Value(0.05));
  EXPECT_EQ(Recognise("5%").numberFormat, "0%");
  EXPECT_EQ(Recognise("2.5%").numberFormat, "0.00%");
}

TEST(Typing, DatesAreThoseThatMeanOneDayEverywhere) {
  EXPECT_EQ(Recognise("2009-03-15").value, Value(39887));
  EXPECT_TRUE(Recognise("2009-03-15").numberFormat);
  EXPECT_EQ(Recognise("2009-02-30").value, Value("2009-02-30"));
  EXPECT_EQ(Recognise("3/15/2009").value, Value("3/15/2009"));
  EXPECT_EQ(Recognise("3-15").value, Value("3-15"));
}

TEST(Typing, TheRestIsText) {
  EXPECT_EQ(Recognise("true").value, Value(true));
  EXPECT_EQ(Recognise("'12").value, Value("12"));
  EXPECT_EQ(Recognise("'=A1").value, Value("=A1"));
  EXPECT_EQ(Recognise("=A1").value, Value("=A1"));
  EXPECT_EQ(Recognise("12 apples").value, Value("12 apples"));
  EXPECT_EQ(Recognise("E").value, Value("E"));
  EXPECT_EQ(Recognise("-").value, Value("-"));
}

}  // namespace
}  // namespace tolvane::embedded
