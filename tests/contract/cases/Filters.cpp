#include "tests/contract/cases/CaseFiles.h"

namespace tolvane::contract {
namespace {

using host::CellBlock;
using host::CellValue;
using host::ErrorNumber;
using host::FilterCriterion;
using host::FilterOperator;

constexpr std::string_view kFilterPage = "learn.microsoft.com: Range.AutoFilter method (Excel)";

// A header and six rows in A1:B7.
Sheet Table(HostUnderTest& t) {
  const Sheet s = t.NewSheet();
  s("A1:B7").SetValue(CellBlock{
      {"Category", "Amount"}, {"Food", 10}, {"Rent", 500}, {"food", -3}, {"", 7}, {"Fast food", 10}, {"Travel", 80}});
  return s;
}

// The rows of the table that can be seen.
std::string Shown(const Sheet& s) {
  std::string rows;
  for (int row = 2; row <= 7; ++row) {
    if (s.Rows().Item(row).Hidden() == false) rows += std::to_string(row);
  }
  return rows;
}

std::string ShownWith(const Sheet& s, const FilterCriterion& criterion) {
  s("A1:B7").AutoFilter(criterion);
  const std::string shown = Shown(s);
  s("A1:B7").AutoFilter(WhereAny(criterion.field));
  return shown;
}

}  // namespace

std::vector<ContractCase> FiltersCases() {
  Cases cases("Filters");

  cases.Add("PutOnAndTakenAway", {"Range.AutoFilter", "Worksheet.AutoFilterMode", "AutoFilter.Range"}, kFilterPage,
            [](HostUnderTest& t) {
              const Sheet s = Table(t);
              EXPECT_FALSE(s.AutoFilterMode());
              s("A1:B7").AutoFilter();
              EXPECT_TRUE(s.AutoFilterMode());
              EXPECT_EQ(s.AutoFilter().Range().Address(), "$A$1:$B$7");
              s("A1:B7").AutoFilter(Where(1, "=Rent"));
              EXPECT_EQ(Shown(s), "3");
              s("A1:B7").AutoFilter();
              EXPECT_FALSE(s.AutoFilterMode());
              EXPECT_EQ(Shown(s), "234567");
            });

  cases.Add("WithoutAFilterThereIsNoFilterObject", {}, kPort, [](HostUnderTest& t) {
    const Sheet s = Table(t);
    EXPECT_TRUE(Raises(ErrorNumber::ObjectNotSet, [&] { s.AutoFilter().Range(); }));
    EXPECT_TRUE(Raises(ErrorNumber::ObjectNotSet, [&] { s.AutoFilter().Filters(); }));
  });

  cases.Add("ModeOffShowsEverything", {"Worksheet.AutoFilterMode"},
            "learn.microsoft.com: Worksheet.AutoFilterMode property (Excel)", [](HostUnderTest& t) {
              const Sheet s = Table(t);
              s("A1:B7").AutoFilter(Where(2, ">50"));
              EXPECT_EQ(Shown(s), "37");
              s.SetAutoFilterModeOff();
              EXPECT_FALSE(s.AutoFilterMode());
              EXPECT_EQ(Shown(s), "234567");
              s.SetAutoFilterModeOff();
              EXPECT_FALSE(s.AutoFilterMode());
            });

  cases.Add("CriteriaOnTexts", {"Range.AutoFilter"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = Table(t);
    EXPECT_EQ(ShownWith(s, Where(1, "=Food")), "24");
    EXPECT_EQ(ShownWith(s, Where(1, "Food")), "24");
    EXPECT_EQ(ShownWith(s, Where(1, "<>Food")), "3567");
    EXPECT_EQ(ShownWith(s, Where(1, "=*food*")), "246");
    EXPECT_EQ(ShownWith(s, Where(1, "<>*food*")), "357");
    EXPECT_EQ(ShownWith(s, Where(1, "=F??d")), "24");
    EXPECT_EQ(ShownWith(s, Where(1, "=")), "5");
    EXPECT_EQ(ShownWith(s, Where(1, "<>")), "23467");
  });

  cases.Add("CriteriaOnNumbers", {"Range.AutoFilter"}, kFilterPage, [](HostUnderTest& t) {
    const Sheet s = Table(t);
    EXPECT_EQ(ShownWith(s, Where(2, "=10")), "26");
    EXPECT_EQ(ShownWith(s, Where(2, "<>10")), "3457");
    EXPECT_EQ(ShownWith(s, Where(2, ">7")), "2367");
    EXPECT_EQ(ShownWith(s, Where(2, ">=7")), "23567");
    EXPECT_EQ(ShownWith(s, Where(2, "<7")), "4");
    EXPECT_EQ(ShownWith(s, Where(2, "<=-3")), "4");
  });

  cases.Add("TwoCriteriaAndListsOfValues", {"Range.AutoFilter"}, kFilterPage, [](HostUnderTest& t) {
    const Sheet s = Table(t);
    EXPECT_EQ(ShownWith(s, Where(2, ">5", FilterOperator::And, "<50")), "256");
    EXPECT_EQ(ShownWith(s, Where(1, "=Rent", FilterOperator::Or, "=Travel")), "37");
    const FilterCriterion values = WhereOneOf(1, {"Food", "Travel"});
    EXPECT_EQ(ShownWith(s, values), "247");
  });

  cases.Add("FieldsWorkTogether", {"Range.AutoFilter"}, kFilterPage, [](HostUnderTest& t) {
    const Sheet s = Table(t);
    s("A1:B7").AutoFilter(Where(1, "=*food"));
    s("A1:B7").AutoFilter(Where(2, "=10"));
    EXPECT_EQ(Shown(s), "26");
    s("A1:B7").AutoFilter(WhereAny(1));
    EXPECT_EQ(Shown(s), "26");
    s("A1:B7").AutoFilter(WhereAny(2));
    EXPECT_EQ(Shown(s), "234567");
    EXPECT_TRUE(s.AutoFilterMode());
  });

  cases.Add("TheStateCanBeRead", {"AutoFilter.Filters"}, "learn.microsoft.com: Filter object (Excel)",
            [](HostUnderTest& t) {
              const Sheet s = Table(t);
              s("A1:B7").AutoFilter();
              s("A1:B7").AutoFilter(Where(2, ">5", FilterOperator::And, "<50"));
              auto filters = s.AutoFilter().Filters();
              ASSERT_EQ(filters.size(), 2u);
              EXPECT_FALSE(filters[0].on);
              EXPECT_TRUE(filters[1].on);
              EXPECT_EQ(filters[1].op, FilterOperator::And);
              EXPECT_EQ(filters[1].criteria1, ">5");
              EXPECT_EQ(filters[1].criteria2, "<50");
              const FilterCriterion values = WhereOneOf(1, {"Food", "Rent"});
              s("A1:B7").AutoFilter(values);
              filters = s.AutoFilter().Filters();
              EXPECT_EQ(filters[0].op, FilterOperator::Values);
              EXPECT_EQ(filters[0].values, values.values);
              s("A1:B7").AutoFilter(Where(1, "=Food"));
              filters = s.AutoFilter().Filters();
              EXPECT_EQ(filters[0].op, FilterOperator::None);
              EXPECT_EQ(filters[0].criteria1, "=Food");
              EXPECT_FALSE(filters[0].criteria2.has_value());
            });

  cases.Add("WhatIsReadCanBePutBack", {"AutoFilter.Filters", "Range.AutoFilter"}, kPort, [](HostUnderTest& t) {
    const Sheet s = Table(t);
    s("A1:B7").AutoFilter(Where(1, "Food", FilterOperator::Or, "=Rent"));
    const std::string shown = Shown(s);
    EXPECT_EQ(shown, "234");
    const host::FilterState state = s.AutoFilter().Filters()[0];
    s.SetAutoFilterModeOff();
    s("A1:B7").AutoFilter(Where(1, state.criteria1, state.op, state.criteria2));
    EXPECT_EQ(Shown(s), shown);
  });

  cases.Add("AFieldOutsideOfTheFilterIsRefused", {}, kMemory, [](HostUnderTest& t) {
    const Sheet s = Table(t);
    s("A1:B7").AutoFilter();
    EXPECT_TRUE(Refused([&] { s("A1:B7").AutoFilter(Where(3, "=x")); }));
    EXPECT_TRUE(Refused([&] { s("A1:B7").AutoFilter(Where(0, "=x")); }));
    EXPECT_EQ(Shown(s), "234567");
  });

  cases.Add("HiddenByHandStaysHidden", {"Range.Hidden", "Range.AutoFilter"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = Table(t);
    s("9:9").SetHidden(true);
    s("A1:B7").AutoFilter(Where(1, "=Rent"));
    s.SetAutoFilterModeOff();
    EXPECT_EQ(s("9:9").Hidden(), true);
  });

  cases.Add("AFilterFollowsInsertionsAndDeletions", {"AutoFilter.Range", "Range.Insert", "Range.Delete"}, kMemory,
            [](HostUnderTest& t) {
              const Sheet s = Table(t);
              s("A1:B7").AutoFilter(Where(2, ">50"));
              s("1:1").Insert();
              EXPECT_EQ(s.AutoFilter().Range().Address(), "$A$2:$B$8");
              EXPECT_EQ(s("3:3").Hidden(), true);
              EXPECT_EQ(s("4:4").Hidden(), false);
              s("A:A").Insert();
              EXPECT_EQ(s.AutoFilter().Range().Address(), "$B$2:$C$8");
              EXPECT_TRUE(s.AutoFilter().Filters()[1].on);
              s("4:4").Delete();
              EXPECT_EQ(s.AutoFilter().Range().Address(), "$B$2:$C$7");
              s("C:C").Insert();
              EXPECT_EQ(s.AutoFilter().Range().Address(), "$B$2:$D$7");
              ASSERT_EQ(s.AutoFilter().Filters().size(), 3u);
              EXPECT_TRUE(s.AutoFilter().Filters()[2].on);
            });

  cases.Add("ASheetIsCopiedWithItsFilter", {"Worksheet.Copy", "AutoFilter.Range"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = Table(t);
    s("A1:B7").AutoFilter(Where(1, "=Rent"));
    s.CopyAfter(s);
    const Sheet copy(s.Parent().ActiveSheet());
    EXPECT_TRUE(copy.AutoFilterMode());
    EXPECT_EQ(copy.AutoFilter().Range().Address(), "$A$1:$B$7");
    EXPECT_EQ(Shown(copy), "3");
  });

  return std::move(cases).Take();
}

}  // namespace tolvane::contract
