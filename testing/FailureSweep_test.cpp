#include "testing/FailureSweep.h"

#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "testing/HostErrors.h"
#include "testing/ToyProgram.h"

namespace tolvane::testing {
namespace {

using host::ErrorNumber;
using ::testing::ElementsAre;

std::unique_ptr<ToyProgram> MakeProgram() {
  return std::make_unique<ToyProgram>();
}
host::Gate& GateOf(ToyProgram& program) {
  return program.gate;
}

bool IsDark(const ToyProgram& program) {
  return !program.first.body()->IsOn() && !program.second.body()->IsOn();
}

// Both lamps are lit for as long as it works; whatever fails, each is put out.
void Careful(ToyProgram& program) {
  struct Lit {
    const Lamp& lamp;
    ~Lit() {
      for (int attempt = 0; attempt < 2; ++attempt) {
        try {
          if (lamp.IsOn()) lamp.Switch(false);
          return;
        } catch (const host::HostError&) {  // once more
        }
      }
    }
  };
  const Lit first{program.first};
  program.first.Switch(true);
  const Lit second{program.second};
  program.second.Switch(true);
}

// Does the same, but forgets the first lamp when the second one fails.
void Careless(ToyProgram& program) {
  program.first.Switch(true);
  program.second.Switch(true);
  program.second.Switch(false);
  program.first.Switch(false);
}

const SweepOptions kWithoutDying{.modes = {FaultMode::BeforeEffect, FaultMode::AfterEffect}};

TEST(FailureSweep, ARoutineThatCleansUpPasses) {
  int runs = 0;
  const SweepResult swept = SweepFailures<ToyProgram>(
      MakeProgram, GateOf, Careful,
      [&](ToyProgram& program, const PlantedFault&) {
        ++runs;
        EXPECT_TRUE(IsDark(program));
      },
      kWithoutDying);
  EXPECT_EQ(swept.calls, 6);
  EXPECT_EQ(swept.positions, 12) << "six calls in two modes";
  EXPECT_EQ(runs, 14) << "and once through in each";
}

TEST(FailureSweep, ARoutineThatLeavesStateBehindIsNoticed) {
  std::vector<std::string> lit;
  SweepFailures<ToyProgram>(
      MakeProgram, GateOf, Careless,
      [&](ToyProgram& program, const PlantedFault& fault) {
        if (!IsDark(program)) lit.push_back(fault.Describe());
      },
      kWithoutDying);
  EXPECT_THAT(
      lit, ElementsAre("call 2, Lamp.Switch, fails before its effect", "call 3, Lamp.Switch, fails before its effect",
                       "call 4, Lamp.Switch, fails before its effect", "call 1, Lamp.Switch, fails after its effect",
                       "call 2, Lamp.Switch, fails after its effect", "call 3, Lamp.Switch, fails after its effect"));
}

void SweepCareless() {
  SweepFailures<ToyProgram>(
      MakeProgram, GateOf, Careless,
      [](ToyProgram& program, const PlantedFault& fault) { EXPECT_TRUE(fault.position != 2 || IsDark(program)); },
      {.modes = {FaultMode::BeforeEffect}});
}

TEST(FailureSweep, WhatIsExpectedInACheckFailsWithThePlace) {
  EXPECT_NONFATAL_FAILURE(SweepCareless(), "call 2, Lamp.Switch, fails before its effect");
}

TEST(FailureSweep, TheCheckHearsWhatHappened) {
  std::vector<int> numbers;
  SweepFailures<ToyProgram>(
      MakeProgram, GateOf, [](ToyProgram& program) { program.first.Switch(true); },
      [&](ToyProgram& program, const PlantedFault& fault) {
        EXPECT_EQ(fault.failure != nullptr, fault.reached);
        EXPECT_EQ(fault.number.has_value(), fault.reached);
        numbers.push_back(fault.number ? static_cast<int>(*fault.number) : 0);
        // The failure is out of force.
        program.first.Switch(false);
      });
  EXPECT_THAT(numbers, ElementsAre(1004, 0, 1004, 0, 424, 0));
}

TEST(FailureSweep, ARoutineThatSwallowsTheFailureComesBack) {
  int swallowed = 0;
  const SweepResult swept = SweepFailures<ToyProgram>(
      MakeProgram, GateOf,
      [](ToyProgram& program) {
        try {
          program.first.Switch(true);
        } catch (const host::HostError&) {
          program.second.Switch(true);
        }
      },
      [&](ToyProgram& program, const PlantedFault& fault) {
        EXPECT_EQ(fault.failure, nullptr);
        if (fault.reached) {
          ++swallowed;
          EXPECT_TRUE(program.second.IsOn());
        }
      });
  EXPECT_EQ(swallowed, 3);
  EXPECT_EQ(swept.positions, 3);
}

TEST(FailureSweep, AStrideTakesEveryNthCall) {
  std::vector<int> positions;
  const auto routine = [](ToyProgram& program) {
    for (int i = 0; i < 10; ++i) program.first.Switch(true);
  };
  const SweepResult swept = SweepFailures<ToyProgram>(MakeProgram, GateOf, routine,
                                                      [&](ToyProgram&, const PlantedFault& fault) {
                                                        if (fault.reached) positions.push_back(fault.position);
                                                      },
                                                      {.modes = {FaultMode::BeforeEffect}, .stride = 4});
  EXPECT_THAT(positions, ElementsAre(1, 5, 9));
  EXPECT_EQ(swept.positions, 3);
  EXPECT_EQ(swept.calls, 10);
  EXPECT_THROW(
      SweepFailures<ToyProgram>(MakeProgram, GateOf, routine, [](ToyProgram&, const PlantedFault&) {}, {.stride = 0}),
      std::invalid_argument);
}

TEST(FailureSweep, ARoutineThatFailsByItselfFailsTheSweep) {
  EXPECT_HOST_ERROR(SweepFailures<ToyProgram>(
                        MakeProgram, GateOf, [](ToyProgram& program) { program.first.Break(); },
                        [](ToyProgram&, const PlantedFault&) {}),
                    ErrorNumber::ApplicationDefined);
}

TEST(FailureSweep, ARoutineWithoutEndIsCutOff) {
  int run = 0;
  const auto growing = [&](ToyProgram& program) {
    ++run;
    for (int i = 0; i < run + 1; ++i) program.first.Switch(true);
  };
  EXPECT_THROW(SweepFailures<ToyProgram>(MakeProgram, GateOf, growing, [](ToyProgram&, const PlantedFault&) {},
                                         {.mostCalls = 50}),
               std::runtime_error);
}

}  // namespace
}  // namespace tolvane::testing
