#include "src/core/MErrorHandler.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "testing/AddInWorld.h"

namespace tolvane::accounts {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

struct ErrorHandler : ::testing::Test {
  testing::AddInWorld world;

  void ExpectMessage(const std::string& text) { world.desk.Answer(host::MessageResult::Ok, text); }
  std::vector<std::string> Unasked() const { return world.desk.Leftovers(); }
};

TEST_F(ErrorHandler, AnErrorTwoLevelsDownIsShownOnceAndLeavesALineALevel) {
  ExpectMessage("Type mismatch (bISReadPeriods)");
  const auto read = [] {
    return bGuarded("IS_IncStat", "bISReadPeriods",
                    [] { throw host::HostError(host::ErrorNumber::TypeMismatch, host::kTypeMismatchText); });
  };
  EXPECT_FALSE(Entry("IS_IncStat", "EP_ISEditPeriod", [&] { Require(read()); }));
  EXPECT_EQ(world.ErrorLog(),
            "03/15/09 12:00:00  E16.0A" TOLVANE_EXPECTED_VERSION
            "  [Tolvane Accounts.xlam]IS_IncStat.bISReadPeriods, Error 13: Type mismatch (bISReadPeriods)\r\n"
            "03/15/09 12:00:00  E16.0A" TOLVANE_EXPECTED_VERSION
            "  [Tolvane Accounts.xlam]IS_IncStat.EP_ISEditPeriod, Error 9997: Type mismatch (bISReadPeriods)\r\n"
            "\r\n");
  EXPECT_EQ(world.addIn.error.mlErrorNumber, 0);
  EXPECT_THAT(Unasked(), IsEmpty());
}

TEST_F(ErrorHandler, AMessageForTheUserRaisedThreeLevelsDownIsShownOnceAndNotLogged) {
  ExpectMessage("This Accounts Book is corrupt.");
  const auto lowest = [] { return bGuarded("A", "bLowest", [] { RaiseMessage("This Accounts Book is corrupt."); }); };
  const auto middle = [&] { return bGuarded("A", "bMiddle", [&] { Require(lowest()); }); };
  EXPECT_FALSE(Entry("A", "EP_Top", [&] { Require(middle()); }));
  EXPECT_EQ(world.ErrorLog(), "");
  EXPECT_THAT(Unasked(), IsEmpty());
}

TEST_F(ErrorHandler, AnInterruptionIsSilentAndTheClosingStepsRun) {
  bool closed = false;
  const auto loop = [] { return bGuarded("A", "bLoop", [] { RaiseInterrupt(); }); };
  EXPECT_FALSE(Entry("A", "EP_Top", [&] { Require(loop()); }, {[&] { closed = true; }}));
  EXPECT_TRUE(closed);
  EXPECT_EQ(world.ErrorLog(), "");
  EXPECT_EQ(world.addIn.error.mlErrorNumber, 0);
  EXPECT_THAT(world.desk.Log(), IsEmpty());
}

TEST_F(ErrorHandler, EscPressedWhileAnErrorAroseTurnsItIntoAnInterruption) {
  world.desk.PressKey(27);
  EXPECT_FALSE(Entry("A", "EP_Top", [] { throw host::HostError(host::ErrorNumber::InvalidCall, "Invalid call"); }));
  EXPECT_EQ(world.ErrorLog(), "");
  EXPECT_THAT(world.desk.Log(), IsEmpty());
}

TEST_F(ErrorHandler, EscOverridesAnErrorThatIsOnItsWayUp) {
  const auto lower = [] { return bGuarded("A", "bLower", [] { throw std::runtime_error("odd"); }); };
  EXPECT_FALSE(Entry("A", "EP_Top", [&] {
    const bool succeeded = lower();
    world.desk.PressKey(27);
    Require(succeeded);
  }));
  EXPECT_THAT(world.ErrorLog(), HasSubstr("bLower, Error 51: Internal error: odd (bLower)"));
  EXPECT_THAT(world.ErrorLog(), ::testing::Not(HasSubstr("EP_Top")));
  EXPECT_EQ(world.addIn.error.mlErrorNumber, 0);
}

TEST_F(ErrorHandler, ABareFailureThatNobodyHasReportedStillSaysSomething) {
  ExpectMessage("Application-defined or object-defined error");
  EXPECT_FALSE(Entry("A", "EP_Top", [] { Require(false); }));
}

TEST_F(ErrorHandler, AnUnwritableLogChangesNothing) {
  world.desk.DenyFile("/addin/Error.log");
  ExpectMessage("odd (EP_Top)");
  EXPECT_FALSE(Entry("A", "EP_Top", [] { throw host::HostError(host::ErrorNumber::ApplicationDefined, "odd"); }));
  EXPECT_THAT(Unasked(), IsEmpty());
}

TEST_F(ErrorHandler, EachClosingStepRunsAlthoughAnEarlierOneFails) {
  ExpectMessage("first (EP_Top)");
  bool second = false;
  EXPECT_FALSE(Entry("A", "EP_Top", [] {},
                     {[] { throw host::HostError(host::ErrorNumber::ApplicationDefined, "first"); },
                      [&] { second = true; }, [] { throw std::runtime_error("never shown"); }}));
  EXPECT_TRUE(second);
  EXPECT_THAT(Unasked(), IsEmpty());
}

TEST_F(ErrorHandler, AFailingClosingStepAfterAFailureShowsNoSecondMessage) {
  ExpectMessage("work (EP_Top)");
  EXPECT_FALSE(Entry("A", "EP_Top", [] { throw host::HostError(host::ErrorNumber::ApplicationDefined, "work"); },
                     {[] { throw host::HostError(host::ErrorNumber::ApplicationDefined, "closing"); }}));
  EXPECT_THAT(Unasked(), IsEmpty());
}

TEST_F(ErrorHandler, TheScreenIsOnWhenTheMessageIsShown) {
  world.app().SetScreenUpdating(false);
  ExpectMessage("odd (EP_Top)");
  EXPECT_FALSE(Entry("A", "EP_Top", [] { throw host::HostError(host::ErrorNumber::ApplicationDefined, "odd"); }));
  EXPECT_TRUE(world.app().ScreenUpdating());
}

TEST_F(ErrorHandler, APollWithoutEscAsksNothing) {
  CheckUserInterrupt(kInterruptOperation);
  EXPECT_THAT(world.desk.Log(), IsEmpty());
}

TEST_F(ErrorHandler, YesToThePromptInterrupts) {
  world.app().SetScreenUpdating(false);
  world.desk.PressEscAtPoll();
  world.desk.Answer(host::MessageResult::Yes, "Interrupt the operation?");
  EXPECT_FALSE(Entry("A", "EP_Top", [] { CheckUserInterrupt(kInterruptOperation); }));
  EXPECT_EQ(world.desk.Log().size(), 1u);
  EXPECT_TRUE(world.app().ScreenUpdating());
}

TEST_F(ErrorHandler, NoToThePromptGoesOnWithTheScreenAsItWas) {
  world.app().SetScreenUpdating(false);
  world.desk.PressEscAtPoll();
  world.desk.Answer(host::MessageResult::No, "Interrupt the calculation?");
  EXPECT_TRUE(Entry("A", "EP_Top", [] { CheckUserInterrupt(kInterruptCalculation); }));
  EXPECT_FALSE(world.app().ScreenUpdating());
}

// An error's text may come from a bank's file: it must not forge lines of the log.
TEST_F(ErrorHandler, ALineOfTheLogIsOneLine) {
  EXPECT_FALSE(bGuarded("A", "bRead", [] { throw std::runtime_error("payee\r\n03/15/09 forged"); }));
  EXPECT_THAT(world.ErrorLog(), HasSubstr("payee  03/15/09 forged"));
}

}  // namespace
}  // namespace tolvane::accounts
