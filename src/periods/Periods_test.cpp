#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "src/core/AddIn.h"
#include "src/periods/CPeriod.h"
#include "src/periods/MergedAmounts.h"
#include "src/periods/Months.h"
#include "src/periods/Sorting.h"

namespace tolvane::accounts {
namespace {

using ::testing::DoubleEq;
using ::testing::DoubleNear;
using ::testing::ElementsAre;

// --- months
// -----------------------------------------------------------------------------------------------------------

TEST(Months, TextsOfMonths) {
  EXPECT_EQ(lMonthFromText("2009 Jan"), 24108);
  EXPECT_EQ(lMonthFromText("2009 jAN"), 24108);
  EXPECT_EQ(lMonthFromText("2009-Jan"), 24108);
  EXPECT_EQ(lMonthFromText("2009\xE2\x80\xA2Jan"), 24108);
  for (const char* text : {"", "2009Jan", "2009  Jan", "20x9 Jan", "2009 Jam", "-009 Jan", "2009 Jan "}) {
    EXPECT_EQ(lMonthFromText(text), kNoMonth) << text;
  }
}

TEST(Months, MonthsAsTexts) {
  EXPECT_EQ(sMonthText(24108), "2009 Jan");
  EXPECT_EQ(sMonthText(25199), "2099 Dec");
  EXPECT_EQ(sMonthText(0), "");
  EXPECT_EQ(sMonthText(-1), "");
}

TEST(Months, EveryMonthOfTheRangeReadsBack) {
  for (int month = kFirstMonth; month <= kLastMonth; ++month) EXPECT_EQ(lMonthFromText(sMonthText(month)), month);
}

TEST(Months, TheMonthOfADate) {
  EXPECT_EQ(sMonthText(lMonthOfDate(39887)), "2009 Mar");
}

// --- amounts
// ----------------------------------------------------------------------------------------------------------

TEST(MergedAmounts, PartsOfAmounts) {
  EXPECT_EQ(sDividedAmount("100", 3), "=100/3");
  EXPECT_EQ(sDividedAmount("=A1+B1", 3), "=(A1+B1)/3");
  EXPECT_EQ(sDividedAmount("=A1", 3), "=A1/3");
  EXPECT_EQ(sDividedAmount("-1200", 3), "=-1200/3");
  EXPECT_EQ(sDividedAmount("=-5", 3), "=(-5)/3");
}

std::string Merged(std::vector<std::string> amounts) {
  return sMergedAmounts(amounts);
}

TEST(MergedAmounts, AllPartsOfAWholeGiveItBack) {
  EXPECT_EQ(Merged({"=(100+50)/3", "=(100+50)/3", "=(100+50)/3"}), "=100+50");
  EXPECT_EQ(Merged(std::vector<std::string>(12, "=1200/12")), "=1200");
}

TEST(MergedAmounts, SomePartsStayParts) {
  EXPECT_EQ(Merged({"=(100+50)/3", "=(100+50)/3"}), "=(100+50)/3+(100+50)/3");
  EXPECT_EQ(Merged({"=(100+50)/3", "=(100+50)/3", "50"}), "=(100+50)/3+(100+50)/3+50");
  EXPECT_EQ(Merged({"=(A1)/2+(B1)/2", "=(A1)/2+(B1)/2"}), "=(A1)/2+(B1)/2+(A1)/2+(B1)/2");
}

TEST(MergedAmounts, AmountsAreAdded) {
  EXPECT_EQ(Merged({"100", "-50"}), "=100-50");
  EXPECT_EQ(Merged({"=1+2", "=-5", "7"}), "=1+2-5+7");
  EXPECT_EQ(Merged({"=2*3", "4"}), "=2*3+4");
  EXPECT_EQ(Merged({"100"}), "100");
  EXPECT_EQ(Merged({}), "");
  EXPECT_EQ(Merged({"=-1200/3", "=-1200/3", "=-1200/3"}), "=-1200/3-1200/3-1200/3");
}

// --- periods
// ----------------------------------------------------------------------------------------------------------

CPeriod Period(int lPeriod, int lDuration) {
  CPeriod period;
  period.lPeriod = lPeriod;
  period.SetDuration(lDuration);
  return period;
}

std::vector<std::string> Column(const CPeriod& period) {
  std::vector<std::string> texts;
  for (int row = 1; row <= period.vDataColumn.rows(); ++row) {
    const host::CellValue& cell = period.vDataColumn.at(row, 1);
    texts.push_back(cell.isText() ? std::string(cell.text()) : cell.isEmpty() ? "" : std::to_string(cell.number()));
  }
  return texts;
}

TEST(CPeriodTest, APeriodIsNeverShorterThanAMonth) {
  EXPECT_EQ(Period(24108, 0).lDuration(), 1);
  EXPECT_EQ(Period(24108, -5).lDuration(), 1);
  EXPECT_EQ(Period(24108, 2).lDuration(), 2);
}

TEST(CPeriodTest, ABadMonthIsNone) {
  CPeriod period;
  period.SetPeriod("2009 Xyz");
  EXPECT_EQ(period.lPeriod, kNoMonth);
  EXPECT_EQ(period.sPeriod(), "");
}

TEST(CPeriodTest, AnAnnualBudgetBecomesTwelveMonthsAndStaysSo) {
  CPeriod year = Period(24119, 12);
  year.vDataColumn = host::CellBlock({{1200}, {host::CellValue()}, {"=A1+B1"}});
  year.sBalanceBF = "500";
  for (int time = 1; time <= 2; ++time) {
    year.SplitByMonths();
    ASSERT_EQ(year.colMonths.size(), 12u);
    EXPECT_EQ(year.colMonths.front()->lPeriod, 24108);
    EXPECT_EQ(year.colMonths.back()->lPeriod, 24119);
    for (const auto& month : year.colMonths) EXPECT_THAT(Column(*month), ElementsAre("=1200/12", "", "=(A1+B1)/12"));
    EXPECT_EQ(year.colMonths[0]->sBalanceBF, "500");
    EXPECT_EQ(year.colMonths[1]->sBalanceBF, "");
    EXPECT_EQ(year.lFirstMonth, 1);
  }
}

TEST(CPeriodTest, OnlyTheFirstColumnIsDivided) {
  CPeriod period = Period(24108, 3);
  period.vDataColumn = host::CellBlock({{90, 7}});
  period.DivideDataColumn(3);
  EXPECT_EQ(period.vDataColumn, host::CellBlock({{"=90/3", 7}}));
  period.DivideDataColumn(1);
  EXPECT_EQ(period.vDataColumn, host::CellBlock({{"=90/3", 7}}));
}

// Months whose figure tells their number.
CPeriod Numbered(int lPeriod, int lDuration, bool bDescending) {
  CPeriod period = Period(lPeriod, lDuration);
  period.vDataColumn = host::CellBlock(1, 1);
  period.CreateMonths();
  for (int i = 0; i < lDuration; ++i) {
    CPeriod& month = *period.colMonths[static_cast<std::size_t>(i)];
    month.vDataColumn = host::CellBlock(i + 1);
    if (i == 0) month.sBalanceBF = "BF";
  }
  if (bDescending) {
    std::reverse(period.colMonths.begin(), period.colMonths.end());
    period.lFirstMonth = lDuration;
  }
  return period;
}

std::string Taken(const CPeriod& source, int lPeriod, int lDuration) {
  CPeriod target = Period(lPeriod, lDuration);
  target.CopyBudgetDataByMonths(source);
  EXPECT_EQ(target.sBalanceBF, "BF");
  return Column(target).at(0);
}

TEST(CPeriodTest, TheMonthsThatOverlapAreTaken) {
  for (const bool descending : {false, true}) {
    const CPeriod year = Numbered(24119, 12, descending);
    EXPECT_EQ(Taken(year, 24112, 3), "=3+4+5");
    EXPECT_EQ(Taken(year, 24121, 3), "12");
    EXPECT_EQ(Taken(year, 24107, 2), "");
    EXPECT_EQ(Taken(year, 24130, 3), "");
  }
}

TEST(CPeriodTest, WithoutMonthsTheFiguresAreTakenAsTheyAre) {
  CPeriod source = Period(24119, 12);
  source.vDataColumn = host::CellBlock({{1200}});
  source.sBalanceBF = "5";
  CPeriod target = Period(24112, 3);
  target.CopyBudgetDataByMonths(source);
  EXPECT_EQ(target.vDataColumn, source.vDataColumn);
  EXPECT_EQ(target.sBalanceBF, "5");
}

TEST(CPeriodTest, ACopyHasMonthsOfItsOwn) {
  CPeriod source = Numbered(24119, 12, false);
  CPeriod copy;
  copy.Copy(source);
  EXPECT_EQ(copy.lDuration(), 12);
  source.colMonths[0]->lPeriod = 1;
  EXPECT_EQ(copy.colMonths[0]->lPeriod, 24108);
}

// Whatever is split and put together again has the value that it had.
TEST(CPeriodTest, SplittingAndMergingGivesTheAmountBack) {
  EXPECT_TRUE(rc::check([] {
    const int amount = *rc::gen::inRange(0, 1000000);
    const int months = *rc::gen::inRange(2, 60);
    CPeriod period = Period(24300, months);
    period.vDataColumn = host::CellBlock(amount / 100.0);
    period.SplitByMonths();
    CPeriod merged = Period(24300, months);
    merged.CopyBudgetDataByMonths(period);
    const std::string text = Column(merged).at(0);
    RC_ASSERT(text.front() == '=');
    RC_ASSERT(std::stod(text.substr(1)) == amount / 100.0);
    RC_ASSERT(text.find_first_of("+/") == std::string::npos);
  }));
}

// --- sorting
// ----------------------------------------------------------------------------------------------------------

struct Sorted : ::testing::Test {
  AddIn addIn;
  AddInScope scope{addIn};

  double Key(int lPeriod, int lDuration, int lAccNumber, bool bMonths = false) {
    CPeriod period = Period(lPeriod, lDuration);
    period.lAccNumber = lAccNumber;
    if (bMonths) period.CreateMonths();
    return period.dSortKey();
  }
};

TEST_F(Sorted, KeysWithoutAccounts) {
  CurrentSort().glSortOptions = 3;
  EXPECT_THAT(Key(24108, 1, 0), DoubleEq(24108));
  EXPECT_THAT(Key(24119, 12, 0), DoubleNear(2009.916666667, 1e-8));
  EXPECT_THAT(Key(24119, 12, 0, true), DoubleEq(24119.011));
  CurrentSort().glSortOptions = 1;
  EXPECT_THAT(Key(24119, 12, 0), DoubleEq(24119.011));
  EXPECT_THAT(Key(24119, 1000, 0), DoubleEq(24119.999));
}

TEST_F(Sorted, KeysOfAccounts) {
  CurrentSort() = {.glSortOptions = 1, .glSortAccounts = 3};
  EXPECT_THAT(Key(24108, 1, 0), DoubleEq(24108));
  EXPECT_THAT(Key(24108, 1, 1), DoubleEq(24107.99925));
  EXPECT_THAT(Key(24108, 1, 3), DoubleEq(24107.99975));
  CurrentSort().glSortOptions = 0;
  EXPECT_THAT(Key(24108, 1, 1), DoubleEq(24107.99975));
}

TEST_F(Sorted, EqualKeysKeepTheirOrder) {
  std::vector<std::shared_ptr<CSortableVariant>> items;
  for (const auto& [text, number] : {std::pair{"b", 2.0}, {"a", 1.0}, {"B", 2.0}, {"A", 1.0}}) {
    items.push_back(std::make_shared<CSortableVariant>());
    items.back()->vData = text;
    items.back()->dSortNumber = number;
  }
  const auto order = [&] {
    std::string texts;
    for (const auto& item : items) texts += item->vData.text();
    return texts;
  };
  QuickSortObjects(items, true);
  EXPECT_EQ(order(), "aAbB");
  QuickSortObjects(items, false);
  EXPECT_EQ(order(), "bBaA");
}

TEST_F(Sorted, ValuesOfEverySize) {
  std::vector<int> values;
  QuickSortValues(values, true);
  for (int i = 0; i < 100000; ++i) values.push_back(i * 7919 % 1009);
  QuickSortValues(values, false);
  EXPECT_TRUE(std::is_sorted(values.rbegin(), values.rend()));
}

TEST_F(Sorted, LongPeriodsStandLeftOfShortOnesWhenGrouped) {
  EXPECT_LT(Key(24119, kAllMonths, 0), Key(24119, 12, 0));
  EXPECT_LT(Key(24119, 12, 0), Key(24000, 1, 0));
}

TEST_F(Sorted, TheOptionsOfTheBook) {
  EXPECT_EQ(lSortOptionsFromCell({}), 3);
  EXPECT_EQ(lSortOptionsFromCell(0), 0);
  EXPECT_EQ(lSortOptionsFromCell(2), 2);
  EXPECT_EQ(lSortOptionsFromCell(4), 3);
  EXPECT_EQ(lSortOptionsFromCell(-1), 3);
}

TEST(SimplePeriod, IsSortedByItsMonth) {
  CSimplePeriod period;
  period.lPeriod = 24108;
  EXPECT_EQ(period.sPeriod(), "2009 Jan");
  EXPECT_EQ(period.dSortKey(), 24108);
}

}  // namespace
}  // namespace tolvane::accounts
