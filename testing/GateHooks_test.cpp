#include "testing/GateHooks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "src/host/Errors.h"
#include "testing/HostErrors.h"
#include "testing/ToyProgram.h"

namespace tolvane::testing {
namespace {

using host::ErrorNumber;
using host::HookScope;
using ::testing::ElementsAre;

TEST(CallCounter, CountsByMemberAndAccess) {
  ToyProgram program;
  CallCounter counter;
  {
    const HookScope scope(program.gate, counter);
    program.first.Switch(true);
    program.second.Switch(true);
    program.first.IsOn();
    EXPECT_HOST_ERROR(program.first.Break(), ErrorNumber::ApplicationDefined);
  }
  program.first.Switch(false);
  EXPECT_EQ(counter.Total(), (CallCounter::Counts{1, 3}));
  EXPECT_EQ(counter.Total().total(), 4);
  EXPECT_EQ(counter.Of("Lamp.Switch"), (CallCounter::Counts{0, 2}));
  EXPECT_EQ(counter.Of("Lamp.IsOn"), (CallCounter::Counts{1, 0}));
  EXPECT_EQ(counter.Of("Lamp.Break"), (CallCounter::Counts{0, 1}));
  EXPECT_EQ(counter.Of("Lamp.None"), CallCounter::Counts{});
  EXPECT_EQ(counter.ByMember().size(), 3U);
  counter.Reset();
  EXPECT_EQ(counter.Total(), CallCounter::Counts{});
  EXPECT_TRUE(counter.ByMember().empty());
}

TEST(CallTrace, KeepsTheOrderAndTellsObjectsApart) {
  ToyProgram program;
  CallTrace trace;
  const HookScope scope(program.gate, trace);
  program.second.IsOn();
  program.first.Switch(true);
  program.second.Switch(true);
  EXPECT_THAT(trace.Members(), ElementsAre("Lamp.IsOn", "Lamp.Switch", "Lamp.Switch"));
  EXPECT_THAT(trace.Writes(), ElementsAre("Lamp.Switch", "Lamp.Switch"));
  EXPECT_EQ(trace.Calls()[0].object, 1);
  EXPECT_EQ(trace.Calls()[1].object, 2);
  EXPECT_EQ(trace.Calls()[2].object, 1);
}

TEST(FaultAt, BeforeTheEffect) {
  ToyProgram program;
  FaultAt fault(2, FaultMode::BeforeEffect);
  const HookScope scope(program.gate, fault);
  program.first.Switch(true);
  EXPECT_FALSE(fault.WasReached());
  EXPECT_HOST_ERROR(program.second.Switch(true), ErrorNumber::ApplicationDefined);
  EXPECT_TRUE(fault.WasReached());
  EXPECT_EQ(fault.Member(), "Lamp.Switch");
  EXPECT_TRUE(program.first.IsOn());
  EXPECT_FALSE(program.second.IsOn());
}

TEST(FaultAt, AfterTheEffect) {
  ToyProgram program;
  FaultAt fault(1, FaultMode::AfterEffect);
  const HookScope scope(program.gate, fault);
  EXPECT_HOST_ERROR(program.first.Switch(true), ErrorNumber::ApplicationDefined);
  EXPECT_TRUE(program.first.IsOn());
  program.second.Switch(true);
}

TEST(FaultAt, AfterTheEffectOfTheOuterOfTwoCalls) {
  ToyProgram program;
  FaultAt fault(1, FaultMode::AfterEffect);
  const HookScope scope(program.gate, fault);
  EXPECT_HOST_ERROR(program.first.SwitchOther(program.second, true), ErrorNumber::ApplicationDefined);
  EXPECT_EQ(fault.Member(), "Lamp.SwitchOther");
  EXPECT_TRUE(program.first.IsOn());
  EXPECT_TRUE(program.second.IsOn());
}

TEST(FaultAt, ACallThatFailsByItselfLeavesNothingPlanted) {
  ToyProgram program;
  FaultAt fault(1, FaultMode::AfterEffect);
  const HookScope scope(program.gate, fault);
  EXPECT_HOST_ERROR(program.first.Break(), ErrorNumber::ApplicationDefined);
  EXPECT_TRUE(fault.WasReached());
  for (int i = 0; i < 3; ++i) program.first.Switch(true);
}

TEST(FaultAt, ADyingObjectStaysDead) {
  ToyProgram program;
  FaultAt fault(2, FaultMode::DyingObject);
  const HookScope scope(program.gate, fault);
  program.first.Switch(true);
  EXPECT_HOST_ERROR(program.first.Switch(false), ErrorNumber::ObjectRequired);
  EXPECT_HOST_ERROR(program.first.IsOn(), ErrorNumber::ObjectRequired);
  program.second.Switch(true);
  EXPECT_TRUE(program.first.body()->IsOn());
}

TEST(CancelKeyAt, ComesOnceAndOnlyWhenItIsListenedTo) {
  ToyProgram program;
  bool listening = false;
  CancelKeyAt key(2, [&] { return listening; });
  const HookScope scope(program.gate, key);
  for (int i = 0; i < 3; ++i) program.first.Switch(true);
  EXPECT_FALSE(key.WasNoticed());
  listening = true;
  EXPECT_HOST_ERROR(program.first.Switch(false), ErrorNumber::UserInterrupt);
  EXPECT_TRUE(key.WasNoticed());
  EXPECT_TRUE(program.first.IsOn());
  program.first.Switch(false);
}

TEST(CancelKeyAt, ComesAtItsCall) {
  ToyProgram program;
  CancelKeyAt key(2);
  const HookScope scope(program.gate, key);
  program.first.Switch(true);
  EXPECT_HOST_ERROR(program.first.Switch(false), ErrorNumber::UserInterrupt);
}

}  // namespace
}  // namespace tolvane::testing
