#include "engine/formula/FormulaFixture.h"

namespace tolvane::engine {
namespace {

// A workbook that counts its days from 1904. Expected values: memory of Excel.
class DateSystem1904 : public FormulaFixture {
 protected:
  DateSystem1904() { book.date1904 = true; }
};

TEST_F(DateSystem1904, FunctionsTakeAndGiveItsDates) {
  EXPECT_EQ(Result("=DATE(1904,1,1)"), "0");
  EXPECT_EQ(Result("=DATE(2006,10,10)"), "37538");
  EXPECT_EQ(Result("=DATE(1903,12,31)"), "#NUM!");
  EXPECT_EQ(Result("=YEAR(37538)"), "2006");
  EXPECT_EQ(Result("=MONTH(0)"), "1");
  EXPECT_EQ(Result("=DAY(0)"), "1");
  EXPECT_EQ(Result("=WEEKDAY(0)"), "6");  // a Friday
  EXPECT_EQ(Result("=EDATE(0,1)"), "31");
  EXPECT_EQ(Result("=EOMONTH(0,0)"), "30");
  EXPECT_EQ(Result("=DATEVALUE(\"2006-10-10\")"), "37538");
  EXPECT_EQ(Result("=TODAY()"), "43538");
  EXPECT_EQ(Result("=NOW()"), "43538.5");
  EXPECT_EQ(Result("=WORKDAY(0,1)"), "3");
  EXPECT_EQ(Result("=DATEDIF(0,366,\"Y\")"), "1");
  EXPECT_EQ(Result("=YEAR(-1)"), "#NUM!");
}

TEST_F(DateSystem1904, TextShowsThem) {
  EXPECT_EQ(Result("=TEXT(0,\"yyyy-mm-dd\")"), "1904-01-01");
  EXPECT_EQ(Result("=TEXT(1.5,\"[h]:mm\")"), "36:00");
  EXPECT_EQ(Result("=HOUR(0.75)"), "18");
}

}  // namespace
}  // namespace tolvane::engine
