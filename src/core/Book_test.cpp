// The routines that work on books and sheets: names, ids, protection, selection, the ends of tables.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "src/core/AppState.h"
#include "src/core/DefinedNames.h"
#include "src/core/ListValidation.h"
#include "src/core/MErrorHandler.h"
#include "src/core/MSupport.h"
#include "src/core/StoredProtection.h"
#include "src/core/StoredSelection.h"
#include "src/core/TransactionIDs.h"
#include "testing/AddInWorld.h"
#include "testing/FailureSweep.h"
#include "testing/GateHooks.h"

namespace tolvane::accounts {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct Book : ::testing::Test {
  testing::AddInWorld world;
  host::Workbook book = world.app().Workbooks().Add();
  host::Worksheet sheet = book.Worksheets().Item(1);

  void Fill(const std::string& address, const host::CellValue& value) { sheet.Range(address).SetValue(value); }
  std::vector<int> SelectedRowsIn(int first, int last) {
    SelectedRows selected;
    EXPECT_TRUE(bGetSelectedRows(selected, first, last));
    return selected.aRows;
  }
};

TEST_F(Book, ANameWithoutAValueIsFalse) {
  SetName(sheet, "rngSelectable", "");
  EXPECT_EQ(sGetName(sheet, "rngSelectable"), "FALSE");
  EXPECT_FALSE(sheet.Names().Item("rngSelectable").Visible());
}

TEST_F(Book, ANameThatHoldsATextReadsWithoutItsQuotes) {
  SetName(book, "setTAVersion", "=\"1.0.31\"");
  EXPECT_EQ(sGetName(book, "setTAVersion"), "1.0.31");
  SetName(book, "setTAVersion", "\"x\"");
  EXPECT_EQ(sGetName(book, "setTAVersion"), "x");
}

TEST_F(Book, ABookNameAndASheetNameAreTwoThings) {
  SetName(sheet, "setIsAccSheet", "=TRUE");
  EXPECT_TRUE(bIsAccSheet(sheet));
  EXPECT_FALSE(bNameExists(book, "setIsAccSheet"));
  SetName(book, kIsAccountsBook, "=TRUE");
  EXPECT_TRUE(bNameExists(book, kIsAccountsBook));
  EXPECT_EQ(sGetName(sheet, kIsAccountsBook), "");
}

TEST_F(Book, NamesOfNothingAndOfADeadBookAreAbsent) {
  EXPECT_FALSE(bNameExists({}, kIsAccountsBook));
  book.Close(false);
  EXPECT_FALSE(bNameExists(book, kIsAccountsBook));
  EXPECT_EQ(sGetName(book, "x"), "");
  SetName(book, "x", "1");
  EXPECT_FALSE(bSheetExists(book, "Sheet1"));
}

TEST_F(Book, NamesInR1C1) {
  SetName(sheet, "rngPeriod", "=R2C3:R9C3", Notation::R1C1);
  EXPECT_EQ(sGetName(sheet, "rngPeriod"), "Sheet1!$C$2:$C$9");
  EXPECT_EQ(sGetName(sheet, "rngPeriod", Notation::R1C1), "Sheet1!R2C3:R9C3");
}

struct Technical : Book {
  Technical() {
    SetName(sheet, "techIDDate", "=Sheet1!$A$1");
    SetName(sheet, "techIDCounter", "=Sheet1!$A$2");
    world.addIn.globals.gwksTechnical = sheet;
  }
};

TEST_F(Technical, AnIDHoldsTheDateAndACounterOfThatDay) {
  int counter = 123;
  EXPECT_EQ(sMakeID(39887, counter, false), "M20090315000123");
  EXPECT_EQ(counter, 124);
  EXPECT_EQ(sMakeID(39887, counter, true), "A20090315000124");
}

TEST_F(Technical, TheCounterBeginsAgainOnlyForALaterDate) {
  SetIDCounter(7, 39887);
  EXPECT_EQ(lNextIDCounter(39887), 7);
  EXPECT_EQ(lNextIDCounter(39880), 7);
  EXPECT_EQ(lNextIDCounter(39888), 0);
  EXPECT_EQ(sheet.Range("techIDDate").Value(), host::CellBlock(39888));
  EXPECT_EQ(sheet.Range("techIDCounter").Value(), host::CellBlock(0));
}

TEST_F(Technical, AProtectedTechnicalSheetIsOpenedAndStaysOpen) {
  sheet.Protect({});
  SetIDCounter(1, 39887);
  EXPECT_FALSE(sheet.ProtectContents());
}

TEST_F(Book, EachKindOfSheetIsProtectedAsItsUsersNeed) {
  for (const int kind : {kind::kAccounts, kind::kBudgets, kind::kAccountData, kind::kBreakdown}) {
    ProtectSheet(sheet, kind);
    ASSERT_TRUE(sheet.ProtectContents()) << kind;
    const host::Protection allowed = sheet.Protection();
    EXPECT_TRUE(allowed.allowFormattingColumns && allowed.allowFormattingRows);
    EXPECT_EQ(allowed.allowSorting, kind == kind::kAccountData || kind == kind::kBreakdown);
    EXPECT_EQ(allowed.allowFiltering, allowed.allowSorting);
    sheet.Unprotect();
  }
  for (const int kind : {kind::kTechnical, kind::kOther, kind::kNoBook}) {
    ProtectSheet(sheet, kind);
    EXPECT_FALSE(sheet.ProtectContents()) << kind;
  }
}

TEST_F(Book, ProtectionThatWasLiftedComesBackWithWhatItAllowed) {
  host::Protection allowed;
  allowed.allowSorting = allowed.allowDeletingColumns = true;
  sheet.Protect(allowed);
  TStoredProtection stored;
  UnprotectStored(sheet, stored);
  EXPECT_FALSE(sheet.ProtectContents());
  ProtectStored(stored);
  EXPECT_TRUE(sheet.ProtectContents());
  EXPECT_EQ(sheet.Protection(), allowed);
  EXPECT_FALSE(stored.bStored);
}

TEST_F(Book, ASheetThatWasOpenStaysOpen) {
  TStoredProtection stored;
  UnprotectStored(sheet, stored);
  ProtectStored(stored);
  EXPECT_FALSE(sheet.ProtectContents());
}

TEST_F(Book, TheSelectionComesBackOnItsSheet) {
  const host::Worksheet other = book.Worksheets().Add();
  sheet.Activate();
  sheet.Range("B2:C3,E5").Select();
  TStoredSelection stored;
  StoreSelectionOn(stored, other);
  EXPECT_EQ(world.app().ActiveSheet(), other);
  other.Range("D4").Select();
  RestoreSelectionAndSheet(stored);
  EXPECT_EQ(world.app().ActiveSheet(), sheet);
  EXPECT_EQ(world.app().Selection().Range().Address(), "$B$2:$C$3,$E$5");
}

TEST_F(Book, SelectedRowsAreOneEachAndAscending) {
  sheet.Range("A9:A10,A5:B6,B6:B7").Select();
  EXPECT_THAT(SelectedRowsIn(5, 20), ElementsAre(1, 2, 3, 5, 6));
  EXPECT_THAT(SelectedRowsIn(6, 9), ElementsAre(1, 2, 4));
}

TEST_F(Book, ASelectionOutsideOfTheTableHasNoRows) {
  sheet.Range("A1:A3").Select();
  EXPECT_THAT(SelectedRowsIn(5, 20), IsEmpty());
}

TEST_F(Book, RowsThatAFilterHidesAreNotMeant) {
  host::CellBlock block(11, 1);
  block.at(1, 1) = "Category";
  for (int row = 2; row <= 11; ++row) block.at(row, 1) = row % 3 == 0 ? "Food" : "Rent";
  sheet.Range("A1:A11").SetValue(block);
  host::FilterCriterion food;
  food.criteria1 = "=Food";
  sheet.Range("A1:A11").AutoFilter(food);
  sheet.Range("A2:A11").Select();
  EXPECT_THAT(SelectedRowsIn(2, 11), ElementsAre(2, 5, 8));
  SelectedRows selected;
  ASSERT_TRUE(bGetSelectedRows(selected, 2, 11));
  EXPECT_EQ(selected.rngFiltered.Address(), "$3:$3,$6:$6,$9:$9");
}

TEST_F(Book, ManyRowsAreMoreThanTwoThousand) {
  SelectedRows selected;
  sheet.Range("2:2001").Select();
  ASSERT_TRUE(bGetSelectedRows(selected, 2, 0));
  EXPECT_FALSE(selected.bLarge());
  sheet.Range("2:2002").Select();
  ASSERT_TRUE(bGetSelectedRows(selected, 2, 0));
  EXPECT_TRUE(selected.bLarge());
}

TEST_F(Book, SelectedColumns) {
  sheet.Range("C1:D9,D2:F2").Select();
  SelectedColumns selected;
  ASSERT_TRUE(bGetSelectedColumns(selected, 4, 5));
  EXPECT_THAT(selected.aColumns, ElementsAre(1, 2));
  EXPECT_EQ(selected.rngOut.Address(), "$D:$E");
}

TEST_F(Book, ManyRowsGoInAFewCalls) {
  host::CellBlock block(3000, 1);
  for (int row = 1; row <= 3000; ++row) block.at(row, 1) = row;
  sheet.Range("A1:A3000").SetValue(block);
  std::vector<int> rows;
  for (int position = 1; position <= 2998; position += 2) rows.push_back(position);
  testing::CallCounter counter;
  {
    const host::HookScope inForce(sheet.body()->gate(), counter);
    EXPECT_TRUE(bDeleteManyRows(rows, 2, sheet));
  }
  EXPECT_LT(counter.Total().total(), 30);
  EXPECT_EQ(sheet.Range("A1:A4").Value(), host::CellBlock({{1}, {3}, {5}, {7}}));
  EXPECT_EQ(sheet.Range("A1501").Value(), host::CellBlock(3000));
  EXPECT_EQ(world.app().StatusBar(), "");
}

TEST_F(Book, RowsDeletedBeforeAnInterruptionStayDeleted) {
  host::CellBlock block(3000, 1);
  for (int row = 1; row <= 3000; ++row) block.at(row, 1) = row;
  sheet.Range("A1:A3000").SetValue(block);
  std::vector<int> rows;
  for (int position = 1; position <= 2500; ++position) rows.push_back(position);
  world.desk.PressEscAtPoll(2);
  world.desk.Answer(host::MessageResult::Yes, "Interrupt deleting rows?");
  EXPECT_FALSE(bDeleteManyRows(rows, 1, sheet));
  EXPECT_EQ(sheet.Range("A1500:A1501").Value(), host::CellBlock({{1500}, {2501}}));
  EXPECT_TRUE(world.app().ScreenUpdating());
}

TEST_F(Book, TheLastRowOfATableEndsBeforeALongGap) {
  Fill("B3", "header");
  Fill("B8", 1);
  Fill("C14", "far");
  Fill("C20", "beyond the gap");
  EXPECT_EQ(lLastUsedRow(sheet.Range("B3")), 8);
  EXPECT_EQ(lLastUsedRow(sheet.Range("B9")), 9);
  EXPECT_EQ(lLastUsedRow(sheet.Range("C9")), 20);
  EXPECT_EQ(lLastUsedRow(sheet.Range("C9"), 4), 9);
  EXPECT_EQ(lLastUsedRow(sheet.Range("C10"), 4), 14);
  EXPECT_EQ(lLastUsedRow(sheet.Range("B3:C18")), 8);
}

TEST_F(Book, TheLastRowBeyondTheFirstBlock) {
  for (int row = 3; row <= 1203; row += 5) Fill("B" + std::to_string(row), row);
  EXPECT_EQ(lLastUsedRow(sheet.Range("B3")), 1203);
}

TEST_F(Book, TheLastColumnCountsHiddenOnes) {
  Fill("B3", 1);
  Fill("F3", 1);
  sheet.Range("F:F").SetHidden(true);
  EXPECT_EQ(lLastUsedColumn(sheet.Range("B3")), 6);
  EXPECT_EQ(lLastUsedColumn(sheet.Range("G3")), 7);
  Fill("XFD4", 1);
  EXPECT_EQ(lLastUsedColumn(sheet.Range("B3:B4")), 16384);
}

TEST_F(Book, AShownRowStandsThreeRowsBelowTheTop) {
  const host::Worksheet other = book.Worksheets().Add();
  ShowRow(sheet, 500);
  EXPECT_EQ(world.app().ActiveSheet(), other);
  sheet.Activate();
  EXPECT_EQ(world.app().ActiveWindow().ScrollRow(), 497);
  EXPECT_EQ(world.app().ActiveCell().Row(), 500);
  ShowRow(sheet, 2);
  EXPECT_EQ(world.app().ActiveWindow().ScrollRow(), 1);
}

TEST_F(Book, AListValidationReplacesTheOneBefore) {
  book.Names().Add("lstPeriods", "=Sheet1!$A$1:$A$3");
  SetListValidation(sheet.Range("C1:C5"), "lstPeriods", "No such month.");
  SetListValidation(sheet.Range("C1:C5"), "lstPeriods", "Pick a month from the list.");
  const auto rule = sheet.Range("C1:C5").Validation().Rule();
  ASSERT_TRUE(rule);
  EXPECT_EQ(rule->source, "=lstPeriods");
  EXPECT_EQ(rule->errorTitle, "Tolvane Accounts");
  EXPECT_EQ(rule->errorMessage, "Pick a month from the list.");
  EXPECT_TRUE(rule->ignoreBlank && rule->inCellDropdown && rule->showError);
  EXPECT_FALSE(rule->showInput);
}

TEST_F(Book, ABookWhoseMacrosAreOffIsToldOf) {
  EXPECT_FALSE(bIsConnected(book, true));
  world.desk.Answer(host::MessageResult::Ok,
                    "Spreadsheet Book1 appears to be an Tolvane Accounts Book, but it does not respond to macro "
                    "requests. Please ensure that macros are allowed to run in this spreadsheet.");
  EXPECT_FALSE(bIsConnected(book, false));
  EXPECT_THAT(world.desk.Leftovers(), IsEmpty());
}

TEST_F(Book, AMarkedBookAnswers) {
  SetName(book, kIsAccountsBook, "=TRUE");
  EXPECT_TRUE(bIsConnected(book, false));
}

// --- application state ----------------------------------------------------------------------------------------------

struct State {
  bool events, alerts, screen, ours;
  host::CancelKey cancel;
  host::Calculation calculation;
  host::ReferenceStyle style;
  std::string statusBar;
  bool operator==(const State&) const = default;
};
State StateOf(testing::AddInWorld& world) {
  const host::Application app = world.app();
  return {app.EnableEvents(),    app.DisplayAlerts(), app.ScreenUpdating(), world.addIn.globals.gbEventsEnabled,
          app.EnableCancelKey(), app.Calculation(),   app.ReferenceStyle(), app.StatusBar()};
}

TEST_F(Book, ACommandGivesBackWhatItTook) {
  world.app().SetCalculation(host::Calculation::Automatic);
  world.app().SetReferenceStyle(host::ReferenceStyle::R1C1);
  const State before = StateOf(world);
  InitCommand(false);
  EXPECT_EQ(world.app().Calculation(), host::Calculation::Manual);
  EXPECT_FALSE(world.app().EnableEvents());
  EXPECT_FALSE(gbEventsEnabled());
  EXPECT_EQ(world.app().EnableCancelKey(), host::CancelKey::ErrorHandler);
  world.app().SetReferenceStyle(host::ReferenceStyle::A1);
  world.app().SetStatusBar("Working...");
  world.app().SetScreenUpdating(false);
  ResetAppState(false, false);
  EXPECT_EQ(StateOf(world), before);
}

TEST_F(Book, AUserWhoCalculatesByHandGoesOnDoingSo) {
  world.app().SetCalculation(host::Calculation::Manual);
  InitCommand(false);
  InitCommand(false);
  ResetAppState(false, false);
  EXPECT_EQ(world.app().Calculation(), host::Calculation::Manual);
  EXPECT_FALSE(world.addIn.savedModes.mlSavedCalculation.has_value());
}

TEST_F(Book, AnEndWithoutABeginningCalculatesAutomatically) {
  world.app().SetCalculation(host::Calculation::Manual);
  ResetAppState(false, true);
  EXPECT_EQ(world.app().Calculation(), host::Calculation::Automatic);
}

TEST_F(Book, TheCommandsAreLookedAtAnewForWhatIsSelected) {
  std::string selected;
  world.addIn.seams.SelectionAction = [&](const host::Worksheet&, const host::Range& target) {
    selected = target.Address();
  };
  sheet.Range("B2").Select();
  ResetAppState(true, false);
  EXPECT_EQ(selected, "$B$2");
}

// --- failures
// ---------------------------------------------------------------------------------------------------------

struct Deletion {
  testing::AddInWorld world;
  host::Worksheet sheet = world.app().Workbooks().Add().Worksheets().Item(1);
  State before = StateOf(world);
  bool succeeded = false;
  Deletion() { sheet.Range("A1:A9").SetValue(1); }
};

// Wherever a deletion fails, the failure is told and the program is as it was.
TEST(BookFailures, ADeletionThatFailsPutsTheProgramBack) {
  const auto swept = testing::SweepFailures<Deletion>(
      [] { return std::make_unique<Deletion>(); },
      [](Deletion& run) -> host::Gate& { return run.sheet.body()->gate(); },
      [](Deletion& run) {
        const int rows[] = {1, 2, 5};
        run.succeeded = bDeleteManyRows(rows, 1, run.sheet);
      },
      [](Deletion& run, const testing::PlantedFault& fault) {
        EXPECT_EQ(fault.failure, nullptr) << "nothing may come out of it";
        // The very call that puts something back cannot both fail and succeed.
        const bool failedWhilePuttingBack =
            fault.reached && (fault.member == "Application.ScreenUpdating" || fault.member == "Application.StatusBar");
        const bool programIsGone =
            fault.mode == testing::FaultMode::DyingObject && fault.member.starts_with("Application");
        EXPECT_TRUE(failedWhilePuttingBack || programIsGone || StateOf(run.world) == run.before);
        EXPECT_TRUE(fault.reached || run.succeeded);
        EXPECT_NE(run.succeeded, run.world.addIn.error.mlErrorNumber != 0);
      },
      {});
  EXPECT_GT(swept.positions, 10);
}

}  // namespace
}  // namespace tolvane::accounts
