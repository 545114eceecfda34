#include "engine/formula/NumberFormat.h"

#include <gtest/gtest.h>

#include "engine/formula/NumberText.h"

// Expected values: memory of Excel.

namespace tolvane::engine {
namespace {

std::string Show(double number, std::string_view format) {
  return FormatValue(Value(number), format);
}

TEST(NumberFormat, General) {
  EXPECT_EQ(Show(0, "General"), "0");
  EXPECT_EQ(Show(1234567890, "General"), "1234567890");
  EXPECT_EQ(Show(12345678901, "General"), "12345678901");
  EXPECT_EQ(Show(123456789012, "General"), "1.23457E+11");
  EXPECT_EQ(Show(1.0 / 3, "General"), "0.333333333");
  EXPECT_EQ(Show(1234.56789012, "General"), "1234.56789");
  EXPECT_EQ(Show(123456.789012345, "General"), "123456.789");
  EXPECT_EQ(Show(-1.5, "General"), "-1.5");
  EXPECT_EQ(Show(0.1 + 0.2, "General"), "0.3");
  EXPECT_EQ(Show(0.0001, "General"), "0.0001");
  EXPECT_EQ(Show(0.00001, "General"), "0.00001");
  EXPECT_EQ(Show(0.0000123456, "General"), "1.23456E-05");
  EXPECT_EQ(Show(1e-10, "General"), "1E-10");
  EXPECT_EQ(Show(1e20, "General"), "1E+20");
  EXPECT_EQ(Show(9999999999.96, "General"), "10000000000");
  EXPECT_EQ(Show(5, ""), "5");
}

TEST(NumberFormat, Digits) {
  EXPECT_EQ(Show(1234.5, "0"), "1235");
  EXPECT_EQ(Show(0.5, "0"), "1");
  EXPECT_EQ(Show(2.675, "0.00"), "2.68");
  EXPECT_EQ(Show(1234.567, "#,##0.00"), "1,234.57");
  EXPECT_EQ(Show(1234567, "#,##0"), "1,234,567");
  EXPECT_EQ(Show(123, "#,##0"), "123");
  EXPECT_EQ(Show(0, "#,##0"), "0");
  EXPECT_EQ(Show(0, "#"), "");
  EXPECT_EQ(Show(0.25, "#.##"), ".25");
  EXPECT_EQ(Show(5, "0.##"), "5.");
  EXPECT_EQ(Show(5.1, "0.0??"), "5.1  ");
  EXPECT_EQ(Show(7, "000"), "007");
  EXPECT_EQ(Show(7, "0,000"), "0,007");
  EXPECT_EQ(Show(5551234, "000-0000"), "555-1234");
  EXPECT_EQ(Show(-5, "0"), "-5");
  EXPECT_EQ(Show(12345678, "#,##0,"), "12,346");
  EXPECT_EQ(Show(12345678, "0.0,,"), "12.3");
  EXPECT_EQ(Show(1234.5, "#,0.00"), "1,234.50");
  EXPECT_EQ(Show(1e15, "#,##0"), "1,000,000,000,000,000");
}

TEST(NumberFormat, Percent) {
  EXPECT_EQ(Show(0.285, "0%"), "29%");
  EXPECT_EQ(Show(0.285, "0.0%"), "28.5%");
  EXPECT_EQ(Show(-0.5, "0%"), "-50%");
}

TEST(NumberFormat, Scientific) {
  EXPECT_EQ(Show(12200000, "0.00E+00"), "1.22E+07");
  EXPECT_EQ(Show(0.00012, "0.0E+00"), "1.2E-04");
  EXPECT_EQ(Show(12200000, "0.00E-00"), "1.22E07");
  EXPECT_EQ(Show(12345, "##0.0E+0"), "12.3E+3");
  EXPECT_EQ(Show(9.999, "0.0E+00"), "1.0E+01");
  EXPECT_EQ(Show(0, "0.00E+00"), "0.00E+00");
}

TEST(NumberFormat, Sections) {
  EXPECT_EQ(Show(1234, "#,##0;(#,##0);-"), "1,234");
  EXPECT_EQ(Show(-1234, "#,##0;(#,##0);-"), "(1,234)");
  EXPECT_EQ(Show(0, "#,##0;(#,##0);-"), "-");
  EXPECT_EQ(Show(-1234.5, "#,0.00;(#,0.00);0"), "(1,234.50)");
  EXPECT_EQ(Show(0, "#,0.00;(#,0.00);0"), "0");
  EXPECT_EQ(Show(12, "#,##0\" m to\";;;@"), "12 m to");
  EXPECT_EQ(Show(-12, "#,##0\" m to\";;;@"), "");
  EXPECT_EQ(Show(0, "#,##0\" m to\";;;@"), "");
  EXPECT_EQ(FormatValue(Value("abc"), "#,##0\" m to\";;;@"), "abc");
  EXPECT_EQ(Show(5, "[<=100]0;[>100]#,##0.0"), "5");
  EXPECT_EQ(Show(1005, "[<=100]0;[>100]#,##0.0"), "1,005.0");
  EXPECT_EQ(Show(-5, "[Red]0;[Blue](0)"), "(5)");
  EXPECT_EQ(Show(-5, "0.00;[Red]-0.00"), "-5.00");
  EXPECT_EQ(Show(5, "[$€-407] 0.00"), "€ 5.00");
  EXPECT_EQ(Show(5, "$0.00_)"), "$5.00 ");
  EXPECT_EQ(Show(5, "0\\x"), "5x");
  EXPECT_EQ(Show(5, "* 0"), "5");
  EXPECT_EQ(Show(1, ";;;"), "");
}

TEST(NumberFormat, Texts) {
  EXPECT_EQ(FormatValue(Value("abc"), "0.00"), "abc");
  EXPECT_EQ(FormatValue(Value("abc"), "@"), "abc");
  EXPECT_EQ(FormatValue(Value("abc"), "0;0;0;\"<\"@\">\""), "<abc>");
  EXPECT_EQ(FormatValue(Value("abc"), ";;;"), "");
  EXPECT_EQ(Show(5, "@"), "5");
  EXPECT_EQ(FormatValue(Value(true), "0"), "TRUE");
  EXPECT_EQ(FormatValue(Value(ErrorCode::NA), "0"), "#N/A");
  EXPECT_EQ(FormatValue(Value(), "0"), "");
}

TEST(NumberFormat, Dates) {
  EXPECT_EQ(Show(39000, "d mmmm yyyy"), "10 October 2006");
  EXPECT_EQ(Show(39000, "dd/mm/yy"), "10/10/06");
  EXPECT_EQ(Show(39000, "ddd dddd"), "Tue Tuesday");
  EXPECT_EQ(Show(39000, "mmm mmmmm"), "Oct O");
  EXPECT_EQ(Show(39000, "yyyy\\-mm\\-dd"), "2006-10-10");
  EXPECT_EQ(Show(60, "yyyy-mm-dd"), "1900-02-29");
  EXPECT_EQ(Show(0, "yyyy-mm-dd"), "1900-01-00");
  EXPECT_EQ(Show(39000, "m/d/yyyy"), "10/10/2006");
  EXPECT_EQ(Show(-1, "yyyy"), "########");
}

TEST(NumberFormat, Times) {
  EXPECT_EQ(Show(0.75, "h:mm AM/PM"), "6:00 PM");
  EXPECT_EQ(Show(0, "h:mm AM/PM"), "12:00 AM");
  EXPECT_EQ(Show(0.75, "h:mm A/P"), "6:00 P");
  EXPECT_EQ(Show(0.52, "hh:mm:ss"), "12:28:48");
  EXPECT_EQ(Show(0.52, "mm:ss"), "28:48");
  EXPECT_EQ(Show(1.5, "[h]:mm"), "36:00");
  EXPECT_EQ(Show(1.5, "[m]"), "2160");
  EXPECT_EQ(Show(1.5, "[ss]"), "129600");
  EXPECT_EQ(Show(0.000014, "ss.00"), "01.21");
  EXPECT_EQ(Show(0.999999999, "hh:mm:ss"), "00:00:00");
  EXPECT_EQ(Show(39000.75, "d mmm yyyy h:mm"), "10 Oct 2006 18:00");
}

TEST(NumberFormat, Colours) {
  constexpr std::string_view kFormat = "[Red]0;[Color10](0);[blue]\"zero\";[Green]@";
  EXPECT_EQ(ShowValue(Value(5), kFormat).text, "5");
  EXPECT_EQ(ShowValue(Value(5), kFormat).colour, 0xFF0000u);
  EXPECT_EQ(ShowValue(Value(-5), kFormat).text, "(5)");
  EXPECT_EQ(ShowValue(Value(-5), kFormat).colour, 0x008000u);
  EXPECT_EQ(ShowValue(Value(0), kFormat).colour, 0x0000FFu);
  EXPECT_EQ(ShowValue(Value("x"), kFormat).colour, 0x00FF00u);
  EXPECT_EQ(ShowValue(Value(5), "0;[Red]0").colour, std::nullopt);
  EXPECT_EQ(ShowValue(Value("x"), "[Red]0").colour, std::nullopt);
  EXPECT_EQ(ShowValue(Value(5), "[Color57]0").colour, std::nullopt);
  EXPECT_EQ(ShowValue(Value(5), "[Color 3][>1]0").colour, 0xFF0000u);
  EXPECT_EQ(ShowValue(Value(5), "General").colour, std::nullopt);
  EXPECT_EQ(ShowValue(Value(-1), "[Red]yyyy").text, "########");
}

// Source: the table of fractions in Excel's help on number formats.
TEST(NumberFormat, FractionsAreTheConvergentsThatFit) {
  EXPECT_EQ(Show(123.456, "# ?/?"), "123 1/2");
  EXPECT_EQ(Show(123.456, "# ?\?/?\?"), "123 26/57");
  EXPECT_EQ(Show(123.456, "# ??\?/??\?"), "123  57/125");
  EXPECT_EQ(Show(123.456, "# ?/2"), "123 1/2");
  EXPECT_EQ(Show(123.456, "# ?/4"), "123 2/4");
  EXPECT_EQ(Show(123.456, "# ?/8"), "123 4/8");
  EXPECT_EQ(Show(123.456, "# ?\?/16"), "123  7/16");
  EXPECT_EQ(Show(123.456, "# ?/10"), "123 5/10");
  EXPECT_EQ(Show(123.456, "# ?\?/100"), "123 46/100");
  EXPECT_EQ(Show(0, "?/?"), "0/1");
  EXPECT_EQ(Show(1234.5, "#,##0 ?/?"), "1,234 1/2");
  EXPECT_EQ(Show(1e300, "?/999999999"), Show(1e15, "?/999999999"));
}

TEST(NumberFormat, TheLargestAndTheSmallest) {
  EXPECT_EQ(Show(1.7976931348623157e308, "##0.0E+0%"), Show(1.7976931348623157e308, "##0.0E+0") + "%");
  EXPECT_EQ(Show(5e-324, "0.0E+0"), "4.9E-324");
  EXPECT_EQ(Show(5e-324, "0%"), "0%");
}

TEST(NumberFormat, NumbersInFormatsForTexts) {
  EXPECT_EQ(Show(5, "@@"), "5");
  EXPECT_EQ(Show(-5, "\"<\"@\">\""), "-5");
  EXPECT_EQ(Show(-5, "0.0;@"), "-5.0");
}

TEST(NumberFormat, HalvesOfTheDayAsSpelled) {
  EXPECT_EQ(Show(0.75, "h AM/PM"), "6 PM");
  EXPECT_EQ(Show(0.75, "h am/pm"), "6 pm");
  EXPECT_EQ(Show(0.25, "h a/p"), "6 a");
}

TEST(NumberFormat, DaysDoNotRoundUp) {
  EXPECT_EQ(Show(45366.999999, "yyyy-mm-dd"), "2024-03-15");
  EXPECT_EQ(Show(45366.9999999999, "yyyy-mm-dd"), "2024-03-16");
  EXPECT_EQ(Show(45366.999999, "yyyy-mm-dd hh:mm:ss"), "2024-03-16 00:00:00");
}

TEST(NumberFormat, FormatsOfTheSystem) {
  EXPECT_EQ(Show(45366.75, "[$-F800]dddd dd mmmm yyyy"), "Friday, March 15, 2024");
  EXPECT_EQ(Show(45366.75, "[$-x-systime]hh:mm"), "6:00:00 PM");
  EXPECT_EQ(Show(-1, "[$-F800]yyyy;\"none\""), "none");
}

TEST(NumberFormat, SignsOfConditionalSections) {
  EXPECT_EQ(Show(-5, "[<0](0);0"), "(5)");
  EXPECT_EQ(Show(-5, "[<-2]0;0"), "-5");
  EXPECT_EQ(Show(-5, "[=1]0\" day\";0\" days\""), "-5 days");
  EXPECT_EQ(Show(5, "0!"), "5!");
}

TEST(NumberFormat, NamesInOtherLanguages) {
  EXPECT_EQ(Show(45366, "[$-416]dddd d mmmm"), "sexta-feira 15 março");
  EXPECT_EQ(Show(45366, "[$-41D]ddd d mmm"), "fr 15 mar");
  EXPECT_EQ(Show(45366, "[$-da-DK]dddd d. mmmm"), "fredag 15. marts");
  EXPECT_EQ(Show(45366, "[$-414]dddd d. mmmm"), "fredag 15. mars");
}

TEST(NumberFormat, DatesFrom1904) {
  EXPECT_EQ(FormatValue(Value(0), "yyyy-mm-dd", true), "1904-01-01");
  EXPECT_EQ(FormatValue(Value(37538), "yyyy-mm-dd", true), "2006-10-10");
  EXPECT_EQ(FormatValue(Value(1.5), "[h]:mm", false), "36:00");
  EXPECT_EQ(FormatValue(Value(-1), "yyyy-mm-dd", true), "-1904-01-02");
}

TEST(NumberFormat, NegativeDurations) {
  EXPECT_EQ(Show(-0.5, "[h]:mm"), "########");
  EXPECT_EQ(Show(-0.5, "[h]:mm;-[h]:mm"), "-12:00");
}

TEST(NumberFormat, OddFormatsDoNotBreak) {
  for (const char* format : {"\"open",
                             "[",
                             "[Red",
                             "\\",
                             "_",
                             "*",
                             "E+",
                             "0E+",
                             "....",
                             ",,,",
                             ";;;;;;",
                             "0.0.0",
                             "%%%",
                             "[h",
                             "[]",
                             "0/",
                             "?/0",
                             "/",
                             "0/1",
                             "# ?/?/?",
                             "[$-",
                             "[$-407",
                             "[Color]",
                             "# ?/99999999999",
                             "ss.000 ss.0 ss.00000"}) {
    FormatValue(Value(1234.5), format);
    FormatValue(Value(-1e300), format);
    FormatValue(Value("text"), format);
  }
}

TEST(NumberFromText, ReadsWhatPeopleType) {
  EXPECT_EQ(NumberFromText("12"), 12);
  EXPECT_EQ(NumberFromText("-1,234.5"), -1234.5);
  EXPECT_EQ(NumberFromText(" 5 % "), 0.05);
  EXPECT_EQ(NumberFromText("(12)"), -12);
  EXPECT_EQ(NumberFromText("$-3"), -3);
  EXPECT_EQ(NumberFromText("1E+3"), 1000);
  EXPECT_EQ(NumberFromText("2 1/4"), 2.25);
  EXPECT_EQ(NumberFromText("1/31/2020"), 43861);
  EXPECT_EQ(NumberFromText("2020-01-31"), 43861);
  EXPECT_EQ(NumberFromText("31 January 2020"), 43861);
  EXPECT_EQ(NumberFromText("January 31, 2020"), 43861);
  EXPECT_EQ(NumberFromText("31-jan-20"), 43861);
  EXPECT_EQ(NumberFromText("1/31/1930"), 10989);
  EXPECT_EQ(NumberFromText("18:00"), 0.75);
  EXPECT_EQ(NumberFromText("6 PM"), 0.75);
  EXPECT_EQ(NumberFromText("2020-01-31 6:00 PM"), 43861.75);
  for (const char* text : {"", " ", "abc", "1,23", "1,2345", ",1", "1.2.3", "--1", "1e", "0x10", "inf", "nan",
                           "13/1/2020", "2/30/2020", "25 PM", "1:60", "$", "%", "()"}) {
    EXPECT_EQ(NumberFromText(text), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace tolvane::engine
