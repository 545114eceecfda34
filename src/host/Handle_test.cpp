#include "src/host/Handle.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace tolvane::host {
namespace {

// A lamp of which it can be told what was asked of it.
class LampBody : public Body {
 public:
  LampBody(Gate& gate, bool* destroyed = nullptr) : gate_(gate), destroyed_(destroyed) {}
  ~LampBody() override {
    if (destroyed_ != nullptr) *destroyed_ = true;
  }
  bool IsAlive() const noexcept override { return alive; }
  Gate& gate() const noexcept override { return gate_; }

  int Watts() const {
    ++asked;
    return watts;
  }
  void SetWatts(int value) {
    ++asked;
    watts = value;
  }
  void Break() {
    ++asked;
    if (onBreak) onBreak();
    marked = 42;  // still there to be written to
  }

  bool alive = true;
  int watts = 60;
  int marked = 0;
  mutable int asked = 0;
  std::function<void()> onBreak;

 private:
  Gate& gate_;
  bool* destroyed_;
};

class Lamp : public Handle<LampBody> {
 public:
  using Handle::Handle;
  int Watts() const { return Read("Lamp.Watts", &LampBody::Watts); }
  void SetWatts(int watts) const { Write("Lamp.Watts", &LampBody::SetWatts, watts); }
  void Break() const { Write("Lamp.Break", &LampBody::Break); }
  int Twice() const {
    return Read("Lamp.Twice", [](const LampBody& lamp) { return 2 * lamp.Watts(); });
  }
};

struct Counter : GateHook {
  void Before(const GateCall& call) override {
    calls.push_back(call);
    if (before) before();
  }
  void After(const GateCall&) override {
    ++afterwards;
    if (after) after();
  }
  std::vector<GateCall> calls;
  int afterwards = 0;
  std::function<void()> before;
  std::function<void()> after;
};

struct Handles : testing::Test {
  Handles() { gate.AddHook(counter); }
  static ErrorNumber NumberOf(const std::function<void()>& use) {
    try {
      use();
    } catch (const HostError& error) {
      return error.number();
    }
    return ErrorNumber{};
  }
  Gate gate;
  Counter counter;
  std::shared_ptr<LampBody> body = std::make_shared<LampBody>(gate);
  Lamp lamp{body};
};

TEST_F(Handles, AreNothingByDefault) {
  const Lamp nothing;
  EXPECT_TRUE(nothing.IsNothing());
  EXPECT_FALSE(nothing);
  EXPECT_FALSE(nothing.IsAlive());
  EXPECT_FALSE(lamp.IsNothing());
  EXPECT_TRUE(lamp);
}

TEST_F(Handles, ReachTheBodyThroughTheGate) {
  EXPECT_EQ(lamp.Watts(), 60);
  lamp.SetWatts(40);
  EXPECT_EQ(lamp.Twice(), 80);
  ASSERT_EQ(counter.calls.size(), 3u);
  EXPECT_EQ(counter.calls[0].member, "Lamp.Watts");
  EXPECT_EQ(counter.calls[0].access, Access::Read);
  EXPECT_EQ(counter.calls[0].object, body.get());
  EXPECT_EQ(counter.calls[1].member, "Lamp.Watts");
  EXPECT_EQ(counter.calls[1].access, Access::Write);
  EXPECT_EQ(counter.calls[2].member, "Lamp.Twice");
  EXPECT_EQ(counter.afterwards, 3);
}

TEST_F(Handles, CopiesPointAtTheSameObject) {
  const Lamp copy = lamp;
  copy.SetWatts(25);
  EXPECT_EQ(lamp.Watts(), 25);
}

TEST_F(Handles, FailOnNothingWithObjectNotSet) {
  const Lamp nothing;
  EXPECT_EQ(NumberOf([&] { nothing.Watts(); }), ErrorNumber::ObjectNotSet);
  EXPECT_EQ(NumberOf([&] { nothing.SetWatts(1); }), ErrorNumber::ObjectNotSet);
  EXPECT_TRUE(counter.calls.empty());
  try {
    nothing.Watts();
    FAIL();
  } catch (const HostError& error) {
    EXPECT_STREQ(error.what(), "Object variable or With block variable not set");
    EXPECT_EQ(static_cast<int>(error.number()), 91);
  }
}

TEST_F(Handles, FailOnADeadObjectWithObjectRequiredAndDoNotReachTheHost) {
  body->alive = false;
  EXPECT_EQ(NumberOf([&] { lamp.Watts(); }), ErrorNumber::ObjectRequired);
  EXPECT_EQ(NumberOf([&] { lamp.SetWatts(1); }), ErrorNumber::ObjectRequired);
  EXPECT_EQ(body->asked, 0);
  EXPECT_EQ(body->watts, 60);
  EXPECT_EQ(counter.calls.size(), 2u);
  EXPECT_EQ(counter.afterwards, 0);
}

TEST_F(Handles, NoticeAnObjectThatDiesAtTheGate) {
  counter.before = [this] { body->alive = false; };
  EXPECT_EQ(NumberOf([&] { lamp.SetWatts(1); }), ErrorNumber::ObjectRequired);
  EXPECT_EQ(body->watts, 60);
}

TEST_F(Handles, TellWhetherTheyAreAliveWithoutPassingTheGate) {
  counter.before = [] { throw std::runtime_error("planted"); };
  EXPECT_TRUE(lamp.IsAlive());
  EXPECT_FALSE(lamp.IsNothing());
  body->alive = false;
  EXPECT_FALSE(lamp.IsAlive());
  EXPECT_TRUE(lamp);
  EXPECT_TRUE(counter.calls.empty());
  EXPECT_EQ(body->asked, 0);
}

TEST_F(Handles, HaveNoEffectWhenAHookFailsBefore) {
  counter.before = [] { throw HostError(ErrorNumber::ApplicationDefined, "planted"); };
  EXPECT_EQ(NumberOf([&] { lamp.SetWatts(1); }), ErrorNumber::ApplicationDefined);
  EXPECT_EQ(body->watts, 60);
  EXPECT_EQ(body->asked, 0);
}

TEST_F(Handles, KeepTheEffectWhenAHookFailsAfter) {
  counter.after = [] { throw HostError(ErrorNumber::ApplicationDefined, "planted"); };
  EXPECT_EQ(NumberOf([&] { lamp.SetWatts(1); }), ErrorNumber::ApplicationDefined);
  EXPECT_EQ(body->watts, 1);
}

TEST_F(Handles, KeepTheBodyWhileACallEndsIt) {
  bool destroyed = false;
  auto dying = std::make_shared<LampBody>(gate, &destroyed);
  Lamp handle(dying);
  dying->onBreak = [&, raw = dying.get()] {
    raw->alive = false;
    handle = Lamp();  // the last handle, in the middle of its own call
    EXPECT_FALSE(destroyed);
  };
  dying.reset();
  handle.Break();
  EXPECT_TRUE(destroyed);
  EXPECT_TRUE(handle.IsNothing());
  EXPECT_EQ(counter.afterwards, 1);
}

}  // namespace
}  // namespace tolvane::host
