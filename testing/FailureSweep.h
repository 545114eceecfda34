#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <exception>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "src/host/Errors.h"
#include "src/host/Gate.h"
#include "testing/GateHooks.h"

namespace tolvane::testing {

// What a run of a sweep met.
struct PlantedFault {
  int position = 0;  // of the call, from 1
  FaultMode mode = FaultMode::BeforeEffect;
  bool reached = false;  // false in the last run of each mode, which makes fewer calls: nothing failed
  std::string member;    // of the call that failed
  // What came out of the routine; null when it came back.
  std::exception_ptr failure;
  std::optional<host::ErrorNumber> number;  // when that was a HostError

  std::string Describe() const {
    if (!reached) return "no call fails";
    return "call " + std::to_string(position) + ", " + member + ", " + std::string(NameOf(mode));
  }
};

struct SweepOptions {
  std::vector<FaultMode> modes = {FaultMode::BeforeEffect, FaultMode::AfterEffect, FaultMode::DyingObject};
  int stride = 1;           // 1: every call fails once; n: every n-th, for a quick look
  int mostCalls = 100'000;  // a routine that makes more never comes to its end: std::runtime_error
};

struct SweepResult {
  int positions = 0;  // the places where something failed, over all modes
  int calls = 0;      // that the routine makes when nothing fails
};

// Runs a routine in fresh worlds again and again: first its 1st use of the port fails, then its 2nd, its 3rd, until it
// gets through without meeting the planted failure; each so in every mode. After each run, with the failure out of
// force, `check` looks at what is left of the world.
//
//   const SweepResult swept = SweepFailures<World>(
//       [] { return std::make_unique<World>(); },
//       [](World& world) -> host::Gate& { return world.gate; },
//       [](World& world) { world.Insert(); },
//       [](World& world, const PlantedFault& fault) { EXPECT_TRUE(world.IsWhole()); });
//
// A routine that fails although nothing was planted fails the sweep with its own error. What is expected inside `check`
// fails with the place and the mode in its message.
template <class World>
SweepResult SweepFailures(const std::function<std::unique_ptr<World>()>& setUp,
                          const std::function<host::Gate&(World&)>& gateOf, const std::function<void(World&)>& routine,
                          const std::function<void(World&, const PlantedFault&)>& check,
                          const SweepOptions& options = {}) {
  if (options.stride < 1) throw std::invalid_argument("a stride is at least 1");
  SweepResult result;
  for (const FaultMode mode : options.modes) {
    PlantedFault fault{.position = 1, .mode = mode, .member = {}, .failure = {}, .number = {}};
    for (;; fault.position += options.stride) {
      const std::unique_ptr<World> world = setUp();
      FaultAt hook(fault.position, mode);
      fault.failure = nullptr;
      fault.number.reset();
      {
        const host::HookScope inForce(gateOf(*world), hook);
        try {
          routine(*world);
        } catch (const host::HostError& error) {
          fault.failure = std::current_exception();
          fault.number = error.number();
        } catch (...) {
          fault.failure = std::current_exception();
        }
      }
      fault.reached = hook.WasReached();
      fault.member = hook.Member();
      const ::testing::ScopedTrace trace(__FILE__, __LINE__, fault.Describe());
      if (!fault.reached && fault.failure != nullptr) std::rethrow_exception(fault.failure);
      check(*world, fault);
      if (!fault.reached) {
        result.calls = hook.Calls();
        break;
      }
      ++result.positions;
      if (hook.Calls() > options.mostCalls || fault.position > options.mostCalls) {
        throw std::runtime_error("the routine makes more than " + std::to_string(options.mostCalls) + " calls");
      }
    }
  }
  return result;
}

}  // namespace tolvane::testing
