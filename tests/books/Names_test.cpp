// The defined names by which the program finds everything: each is there, on its level, hidden, and refers to what it
// should.
#include <algorithm>
#include <set>
#include <span>

#include "tests/books/OpenBooks.h"

namespace tolvane::books {
namespace {

enum class Refers {
  Cell,      // one cell of its own sheet
  Range,     // cells
  Blank,     // one cell, which is empty
  Nowhere,   // FALSE: no command applies there yet
  Constant,  // a text or a truth that is not empty
  Formula,
};
struct Expected {
  std::string_view sheet;  // code name; empty: the book
  std::string_view name;
  Refers refers;
};

constexpr Expected kAccountsBook[] = {
    {"", "setIsTolvaneAccountsBook", Refers::Constant},
    {"", "lstPeriods", Refers::Blank},
    {"", "lstISCategories", Refers::Blank},
    {"", "lstISCategoriesExt", Refers::Cell},
    {"", "lstISCategoriesFull", Refers::Cell},
    {"", "valTrnTypes", Refers::Range},
    {"", "valAccTypes", Refers::Range},
    {"wksLists", "ptrPeriods", Refers::Cell},
    {"wksLists", "ptrISCategories", Refers::Cell},
    {"wksTechnical", "techIDDate", Refers::Blank},
    {"wksTechnical", "techIDCounter", Refers::Blank},
    {"wksTechnical", "techSortPeriodsOptions", Refers::Cell},
    {"wksTechnical", "ptrISBalance", Refers::Blank},
    {"wksTechnical", "ptrDifference", Refers::Cell},
    {"wksTechnical", "techDataRowOffset", Refers::Cell},
    {"wksTechnical", "techBUDataRowOffset", Refers::Cell},
    {"wksTechnical", "optCurDate", Refers::Cell},
    {"wksTechnical", "forLastUpdated", Refers::Formula},
    {"wksAccounts", "ptrColumnName", Refers::Cell},
    {"wksAccounts", "ptrColumnSheet", Refers::Cell},
    {"wksAccounts", "ptrColumnNumber", Refers::Cell},
    {"wksAccounts", "ptrColumnBankID", Refers::Cell},
    {"wksAccounts", "ptrColumnType", Refers::Cell},
    {"wksAccounts", "ptrColumnComment", Refers::Cell},
    {"wksAccounts", "rngSelectable", Refers::Nowhere},
    {"wksAccounts", "ptrHyperlinks", Refers::Cell},
    {"wksBalanceSheet", "ptrColumnAccount", Refers::Cell},
    {"wksBalanceSheet", "ptrColumnOB", Refers::Cell},
    {"wksBalanceSheet", "ptrColumnBankStatement", Refers::Cell},
    {"wksBalanceSheet", "ptrColumnUncleared", Refers::Cell},
    {"wksBalanceSheet", "ptrColumnBank", Refers::Cell},
    {"wksBalanceSheet", "ptrColumnManEntered", Refers::Cell},
    {"wksBalanceSheet", "ptrColumnDifference", Refers::Cell},
    {"wksBalanceSheet", "ptrColumnAccruals", Refers::Cell},
    {"wksBalanceSheet", "ptrColumnRealBalance", Refers::Cell},
    {"wksBalanceSheet", "ptrColumnUnallocated", Refers::Cell},
    {"wksBalanceSheet", "ptrColumnLastTransaction", Refers::Cell},
    {"wksBalanceSheet", "ptrRowAdjustments", Refers::Cell},
    {"wksBalanceSheet", "ptrRowTotal", Refers::Cell},
    {"wksBalanceSheet", "rngSelectable", Refers::Nowhere},
    {"wksBalanceSheet", "ptrHyperlinks", Refers::Cell},
    {"wksIncomeStatement", "ptrColumnCategories", Refers::Cell},
    {"wksIncomeStatement", "ptrBeforePerDuration", Refers::Cell},
    {"wksIncomeStatement", "ptrBeforeAccounts", Refers::Cell},
    {"wksIncomeStatement", "ptrRowUnallocated", Refers::Cell},
    {"wksIncomeStatement", "ptrRowNetSurplus", Refers::Cell},
    {"wksIncomeStatement", "ptrRowBalanceBF", Refers::Cell},
    {"wksIncomeStatement", "ptrRowBalanceCF", Refers::Cell},
    {"wksIncomeStatement", "rngSelectableCategories", Refers::Nowhere},
    {"wksIncomeStatement", "rngSelectablePeriods", Refers::Nowhere},
    {"wksIncomeStatement", "ptrHyperlinks", Refers::Cell},
    {"wksBudgets", "ptrColumnCategories", Refers::Cell},
    {"wksBudgets", "ptrRowUpperHeader", Refers::Cell},
    {"wksBudgets", "ptrRowUnallocated", Refers::Cell},
    {"wksBudgets", "ptrRowNetSurplus", Refers::Cell},
    {"wksBudgets", "ptrRowBalanceBF", Refers::Cell},
    {"wksBudgets", "ptrRowBalanceCF", Refers::Cell},
    {"wksBudgets", "rngSelectableCategories", Refers::Nowhere},
    {"wksBudgets", "rngSelectableBudgets", Refers::Nowhere},
    {"wksBudgets", "ptrHyperlinks", Refers::Cell},
    {"wksAdjustments", "ptrTableStart", Refers::Cell},
    {"wksAdjustments", "ptrOB", Refers::Cell},
    {"wksAdjustments", "ptrCB", Refers::Cell},
    {"wksAdjustments", "ptrUnallocated", Refers::Cell},
    {"wksAdjustments", "ptrColumnID", Refers::Cell},
    {"wksAdjustments", "ptrColumnDate", Refers::Cell},
    {"wksAdjustments", "ptrColumnAmount", Refers::Cell},
    {"wksAdjustments", "ptrColumnPeriod", Refers::Cell},
    {"wksAdjustments", "ptrColumnCategoryMinus", Refers::Cell},
    {"wksAdjustments", "ptrColumnCategoryPlus", Refers::Cell},
    {"wksAdjustments", "ptrColumnComments", Refers::Cell},
    {"wksAdjustments", "ptrColumnHighlighter", Refers::Cell},
    {"wksAdjustments", "ptrLastAmount", Refers::Blank},
    {"wksAdjustments", "rngAmount", Refers::Blank},
    {"wksAdjustments", "rngPeriod", Refers::Blank},
    {"wksAdjustments", "rngCategoryMinus", Refers::Blank},
    {"wksAdjustments", "rngCategoryPlus", Refers::Blank},
    {"wksAdjustments", "rngSelectable", Refers::Nowhere},
    {"wksAdjustments", "forLastTransaction", Refers::Formula},
    {"wksAdjustments", "ptrHyperlinks", Refers::Cell},
    {"wksSheetTemplate", "setIsAccSheet", Refers::Constant},
    {"wksSheetTemplate", "ptrAccName", Refers::Blank},
    {"wksSheetTemplate", "ptrAccType", Refers::Blank},
    {"wksSheetTemplate", "ptrOpeningBalance", Refers::Blank},
    {"wksSheetTemplate", "ptrTotalBankStat", Refers::Cell},
    {"wksSheetTemplate", "ptrTotalUncleared", Refers::Cell},
    {"wksSheetTemplate", "ptrTotalAccruals", Refers::Cell},
    {"wksSheetTemplate", "ptrBankStatLabel", Refers::Cell},
    {"wksSheetTemplate", "ptrUnclearedLabel", Refers::Cell},
    {"wksSheetTemplate", "ptrUnallocated", Refers::Cell},
    {"wksSheetTemplate", "ptrTableStart", Refers::Cell},
    {"wksSheetTemplate", "ptrColumnID", Refers::Cell},
    {"wksSheetTemplate", "ptrColumnDate", Refers::Cell},
    {"wksSheetTemplate", "ptrColumnType", Refers::Cell},
    {"wksSheetTemplate", "ptrColumnDescription", Refers::Cell},
    {"wksSheetTemplate", "ptrColumnAmount", Refers::Cell},
    {"wksSheetTemplate", "ptrColumnPeriod", Refers::Cell},
    {"wksSheetTemplate", "ptrColumnISCategory", Refers::Cell},
    {"wksSheetTemplate", "ptrColumnComments", Refers::Cell},
    {"wksSheetTemplate", "ptrColumnHighlighter", Refers::Cell},
    {"wksSheetTemplate", "ptrLastAmount", Refers::Blank},
    {"wksSheetTemplate", "rngType", Refers::Blank},
    {"wksSheetTemplate", "rngAmount", Refers::Blank},
    {"wksSheetTemplate", "rngPeriod", Refers::Blank},
    {"wksSheetTemplate", "rngCategory", Refers::Blank},
    {"wksSheetTemplate", "rngSelectable", Refers::Nowhere},
    {"wksSheetTemplate", "forTrnTypeList", Refers::Formula},
    {"wksSheetTemplate", "forLastTransaction", Refers::Formula},
    {"wksSheetTemplate", "ptrHyperlinks", Refers::Cell},
};

constexpr Expected kBreakdown[] = {
    {"", "setIsTolvaneBreakdown", Refers::Constant},
    {"", "setLinkedAccountsBook", Refers::Formula},
    {"", "valTrnTypes", Refers::Range},
    {"wksBreakdown", "setCodeName", Refers::Constant},
    {"wksBreakdown", "rngSelectable", Refers::Nowhere},
    {"wksBreakdown", "ptrCategory", Refers::Blank},
    {"wksBreakdown", "ptrPeriod", Refers::Blank},
    {"wksBreakdown", "ptrDuration", Refers::Blank},
    {"wksBreakdown", "ptrAccount", Refers::Blank},
    {"wksBreakdown", "ptrIDColumn", Refers::Cell},
    {"wksBreakdown", "ptrAccNameColumn", Refers::Cell},
    {"wksBreakdown", "ptrRelSheetColumn", Refers::Cell},
    {"wksBreakdown", "ptrSheetRowColumn", Refers::Cell},
    {"wksBreakdown", "ptrDateColumn", Refers::Cell},
    {"wksBreakdown", "ptrTypeColumn", Refers::Cell},
    {"wksBreakdown", "ptrDescriptionColumn", Refers::Cell},
    {"wksBreakdown", "ptrAmountColumn", Refers::Cell},
    {"wksBreakdown", "ptrPeriodColumn", Refers::Cell},
    {"wksBreakdown", "ptrCategoryColumn", Refers::Cell},
    {"wksBreakdown", "ptrCommentsColumn", Refers::Cell},
    {"wksBreakdown", "ptrHighlighter", Refers::Cell},
};

// The name alone, without the sheet in front.
std::string Bare(const host::Name& name) {
  const std::string text = name.NameText();
  return text.substr(text.rfind('!') + 1);
}

void ExpectRefers(const host::Worksheet& owner, const host::Name& name, Refers refers) {
  const std::string text = name.RefersTo();
  switch (refers) {
    case Refers::Nowhere:
      EXPECT_EQ(text, "=FALSE");
      return;
    case Refers::Constant:
      EXPECT_TRUE(text == "=TRUE" || (text.starts_with("=\"") && text.size() > 3)) << text;
      return;
    case Refers::Formula:
      EXPECT_THAT(text, ::testing::StartsWith("="));
      EXPECT_THAT(text, ::testing::Not(::testing::HasSubstr("#REF!")));
      return;
    case Refers::Cell:
    case Refers::Blank:
    case Refers::Range:
      break;
  }
  const host::Range range = name.RefersToRange();
  EXPECT_TRUE(owner.IsNothing() || range.Parent() == owner) << text;
  if (refers == Refers::Range) {
    EXPECT_GT(range.Count(), 1);
    return;
  }
  EXPECT_EQ(range.Count(), 1);
  EXPECT_TRUE(refers != Refers::Blank || range.Value().single().isEmpty()) << text;
}

class BookNames : public OpenBooks {
 protected:
  static void ExpectNames(const host::Workbook& book, std::span<const Expected> expected) {
    for (const Expected& each : expected) {
      SCOPED_TRACE(std::string(each.sheet) + "!" + std::string(each.name));
      const host::Worksheet sheet = each.sheet.empty() ? host::Worksheet() : SheetOf(book, each.sheet);
      const host::Names names = each.sheet.empty() ? book.Names() : sheet.Names();
      const std::vector<host::Name> all = names.All();
      const auto found =
          std::find_if(all.begin(), all.end(), [&](const auto& name) { return Bare(name) == each.name; });
      if (found == all.end()) {
        ADD_FAILURE() << "is not there";
        continue;
      }
      EXPECT_FALSE(found->Visible());
      ExpectRefers(sheet, *found, each.refers);
    }
  }

  static void ExpectNoOthers(const host::Workbook& book, std::span<const Expected> expected) {
    std::set<std::string> known;
    for (const Expected& each : expected) known.insert(std::string(each.sheet) + "!" + std::string(each.name));
    std::set<std::string> ofBook;
    for (const host::Name& name : book.Names().All()) {
      ofBook.insert(Bare(name));
      EXPECT_TRUE(known.contains("!" + Bare(name))) << Bare(name);
    }
    for (const host::Worksheet& sheet : book.Worksheets().All()) {
      for (const host::Name& name : sheet.Names().All()) {
        if (Bare(name) == "Print_Titles") continue;
        EXPECT_TRUE(known.contains(sheet.CodeName() + "!" + Bare(name))) << sheet.Name() << "!" << Bare(name);
        EXPECT_FALSE(ofBook.contains(Bare(name))) << Bare(name) << " on both levels";
      }
    }
  }
};

TEST_F(BookNames, OfTheAccountsBook) {
  const host::Workbook book = AccountsBook();
  ExpectNames(book, kAccountsBook);
  ExpectNoOthers(book, kAccountsBook);
}

TEST_F(BookNames, OfTheBreakdown) {
  const host::Workbook book = Breakdown();
  ExpectNames(book, kBreakdown);
  ExpectNoOthers(book, kBreakdown);
}

// A copy has its own names, which refer to the copy.
TEST_F(BookNames, AnAccountsSheetHasItsOwn) {
  const host::Workbook book = AccountsBook();
  const host::Worksheet sheet = AccountSheet(book, "Ann's Bank");
  for (const Expected& each : kAccountsBook) {
    if (each.sheet != "wksSheetTemplate") continue;
    SCOPED_TRACE(each.name);
    const host::Name name = sheet.Names().Item(each.name);
    EXPECT_FALSE(name.Visible());
    EXPECT_THAT(name.RefersTo(), ::testing::Not(::testing::HasSubstr("Account Sheet")));
    ExpectRefers(sheet, name, each.refers);
  }
}

}  // namespace
}  // namespace tolvane::books
