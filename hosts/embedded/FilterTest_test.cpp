#include "hosts/embedded/FilterTest.h"

#include <gtest/gtest.h>

namespace tolvane::embedded {
namespace {

using engine::FilterCriteria;
using engine::Value;

bool Passes(std::string criterion, const Value& value, std::string_view shown) {
  FilterCriteria criteria;
  criteria.criterion1 = std::move(criterion);
  return FilterTest(criteria).Passes(value, shown);
}

TEST(FilterTest, EqualityLooksAtWhatIsShown) {
  EXPECT_TRUE(Passes("=food", "Food", "Food"));
  EXPECT_FALSE(Passes("=food", "Foods", "Foods"));
  EXPECT_TRUE(Passes("=f*d", "Food", "Food"));
  EXPECT_TRUE(Passes("=5", 5, "5.00"));
  EXPECT_TRUE(Passes("=5.00", 5, "5.00"));
  EXPECT_TRUE(Passes("=$5", 5, "$5"));
  EXPECT_TRUE(Passes("=~*", "*", "*"));
  EXPECT_FALSE(Passes("=~*", "a", "a"));
}

TEST(FilterTest, BlanksAndTheOthers) {
  EXPECT_TRUE(Passes("=", {}, ""));
  EXPECT_FALSE(Passes("=", "a", "a"));
  EXPECT_FALSE(Passes("<>", {}, ""));
  EXPECT_TRUE(Passes("<>", "a", "a"));
  EXPECT_TRUE(Passes("<>a", {}, ""));
}

TEST(FilterTest, ComparisonsStayAmongTheirKind) {
  EXPECT_TRUE(Passes(">5", 6, "6"));
  EXPECT_FALSE(Passes(">5", 5, "5"));
  EXPECT_FALSE(Passes(">5", "a", "a"));
  EXPECT_FALSE(Passes("<5", {}, ""));
  EXPECT_TRUE(Passes(">=m", "Nut", "Nut"));
  EXPECT_FALSE(Passes(">=m", 99, "99"));
}

TEST(FilterTest, TwoConditionsAndLists) {
  FilterCriteria both;
  both.join = FilterCriteria::Join::And;
  both.criterion1 = ">1";
  both.criterion2 = "<5";
  EXPECT_TRUE(FilterTest(both).Passes(3, "3"));
  EXPECT_FALSE(FilterTest(both).Passes(7, "7"));
  both.join = FilterCriteria::Join::Or;
  EXPECT_TRUE(FilterTest(both).Passes(7, "7"));
  FilterCriteria list;
  list.join = FilterCriteria::Join::Values;
  list.values = {"Food", "=", "1.50"};
  EXPECT_TRUE(FilterTest(list).Passes("FOOD", "FOOD"));
  EXPECT_TRUE(FilterTest(list).Passes({}, ""));
  EXPECT_TRUE(FilterTest(list).Passes(1.5, "1.50"));
  EXPECT_FALSE(FilterTest(list).Passes(1.5, "1.5"));
}

TEST(FilterTest, ACriterionIsKeptWithItsOperator) {
  EXPECT_EQ(WithOperator("Food"), "=Food");
  EXPECT_EQ(WithOperator("<>x"), "<>x");
  EXPECT_EQ(WithOperator(""), "=");
}

}  // namespace
}  // namespace tolvane::embedded
