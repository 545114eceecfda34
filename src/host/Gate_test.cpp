#include "src/host/Gate.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace tolvane::host {
namespace {

using Log = std::vector<std::string>;

class Recorder : public GateHook {
 public:
  Recorder(Log& log, std::string name) : log_(log), name_(std::move(name)) {}
  void Before(const GateCall& call) override {
    log_.push_back("before " + name_ + " " + std::string(call.member));
    if (before) before();
  }
  void After(const GateCall& call) override {
    log_.push_back("after " + name_ + " " + std::string(call.member));
    if (after) after();
  }
  std::function<void()> before;
  std::function<void()> after;

 private:
  Log& log_;
  std::string name_;
};

struct Gates : testing::Test {
  void Call(std::string_view member = "x") {
    const GateCall call{member, Access::Read, nullptr};
    gate.Enter(call);
    log.push_back("work");
    gate.Leave(call);
  }
  Log log;
  Gate gate;
  Recorder a{log, "a"}, b{log, "b"}, c{log, "c"};
};

TEST_F(Gates, LetCallsThroughWithoutHooks) {
  Call();
  EXPECT_EQ(log, Log{"work"});
}

TEST_F(Gates, CallHooksInOrderAndAfterwardsInReverse) {
  gate.AddHook(a);
  gate.AddHook(b);
  Call();
  EXPECT_EQ(log, (Log{"before a x", "before b x", "work", "after b x", "after a x"}));
}

TEST_F(Gates, TellTheCall) {
  struct Spy : GateHook {
    void Before(const GateCall& call) override { seen = call; }
    GateCall seen;
  } spy;
  gate.AddHook(spy);
  const int object = 0;
  gate.Enter({"Range.Value", Access::Write, &object});
  EXPECT_EQ(spy.seen.member, "Range.Value");
  EXPECT_EQ(spy.seen.access, Access::Write);
  EXPECT_EQ(spy.seen.object, &object);
}

TEST_F(Gates, ForgetAHookThatIsRemoved) {
  gate.AddHook(a);
  gate.AddHook(b);
  gate.RemoveHook(a);
  gate.RemoveHook(c);  // was never there
  Call();
  EXPECT_EQ(log, (Log{"before b x", "work", "after b x"}));
}

TEST_F(Gates, RemoveTheLastOfAHookThatWasAddedTwice) {
  gate.AddHook(a);
  gate.AddHook(b);
  gate.AddHook(a);
  gate.RemoveHook(a);
  Call();
  EXPECT_EQ(log, (Log{"before a x", "before b x", "work", "after b x", "after a x"}));
}

TEST_F(Gates, KeepAHookForAScope) {
  {
    const HookScope scope(gate, a);
    Call("in");
  }
  Call("out");
  EXPECT_EQ(log, (Log{"before a in", "work", "after a in", "work"}));
}

TEST_F(Gates, SkipNoHookWhenOneRemovesItself) {
  for (Recorder* const hook : {&a, &b, &c}) gate.AddHook(*hook);
  b.before = [this] { gate.RemoveHook(b); };
  Call();
  EXPECT_EQ(log, (Log{"before a x", "before b x", "before c x", "work", "after c x", "after a x"}));
  log.clear();
  Call();
  EXPECT_EQ(log, (Log{"before a x", "before c x", "work", "after c x", "after a x"}));
}

TEST_F(Gates, CallNoHookTwiceWhenAnotherIsRemovedAfterwards) {
  for (Recorder* const hook : {&a, &b, &c}) gate.AddHook(*hook);
  c.after = [this] { gate.RemoveHook(a); };
  Call();
  EXPECT_EQ(log, (Log{"before a x", "before b x", "before c x", "work", "after c x", "after b x"}));
}

TEST_F(Gates, LetAHookRemoveALaterOneThatIsGoneThen) {
  auto later = std::make_unique<Recorder>(log, "later");
  gate.AddHook(a);
  gate.AddHook(*later);
  a.before = [&] {
    gate.RemoveHook(*later);
    later.reset();
  };
  Call();
  EXPECT_EQ(log, (Log{"before a x", "work", "after a x"}));
}

TEST_F(Gates, TellAnAddedHookWhatComesNext) {
  gate.AddHook(a);
  a.before = [this] {
    a.before = nullptr;
    gate.AddHook(b);
  };
  Call();
  EXPECT_EQ(log, (Log{"before a x", "work", "after b x", "after a x"}));
}

TEST_F(Gates, LetHooksMakeCallsThemselves) {
  gate.AddHook(a);
  gate.AddHook(b);
  a.before = [this] {
    a.before = nullptr;
    Call("inner");
    gate.RemoveHook(b);
  };
  Call("outer");
  EXPECT_EQ(log, (Log{"before a outer", "before a inner", "before b inner", "work", "after b inner", "after a inner",
                      "work", "after a outer"}));
}

TEST_F(Gates, StayUsableWhenAHookThrows) {
  gate.AddHook(a);
  gate.AddHook(b);
  a.before = [this] {
    gate.RemoveHook(a);
    throw std::runtime_error("planted");
  };
  EXPECT_THROW(Call(), std::runtime_error);
  EXPECT_EQ(log, Log{"before a x"});
  log.clear();
  Call();
  EXPECT_EQ(log, (Log{"before b x", "work", "after b x"}));
}

}  // namespace
}  // namespace tolvane::host
