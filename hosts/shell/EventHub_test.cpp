#include "hosts/shell/EventHub.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>
#include <string>

namespace tolvane::shell {
namespace {

using ::testing::ElementsAre;

// Notes events by the text that stands for them; what happens then is up to a test.
class Listener final : public host::ApplicationEvents {
 public:
  explicit Listener(std::vector<std::string>& log) : log_(log) {}
  std::function<void(const std::string&)> then = [](const std::string&) {};
  void Hear(const std::string& what) {
    log_.push_back(what);
    then(what);
  }

 private:
  std::vector<std::string>& log_;
};

EventHub::Event Telling(std::string what) {
  return [what = std::move(what)](host::ApplicationEvents& listener) { static_cast<Listener&>(listener).Hear(what); };
}

struct EventHubTest : ::testing::Test {
  std::vector<std::string> log;
  EventHub hub;
};

TEST_F(EventHubTest, WhatAHandlerCausesComesBeforeWhatIsStillToCome) {
  Listener listener(log);
  const host::Subscription subscription = hub.Advise(listener);
  listener.then = [&](const std::string& what) {
    if (what == "change") hub.Raise(Telling("inner"));
  };
  hub.Raise(Telling("change"));
  hub.Raise(Telling("calculate"));
  EXPECT_THAT(log, ElementsAre("change", "inner", "calculate"));
}

TEST_F(EventHubTest, AFailingHandlerKeepsNothingFromTheOthers) {
  Listener first(log);
  Listener second(log);
  const host::Subscription one = hub.Advise(first);
  const host::Subscription two = hub.Advise(second);
  first.then = [](const std::string&) { throw std::runtime_error("no"); };
  hub.Raise(Telling("change"));
  EXPECT_THAT(log, ElementsAre("change", "change"));
}

TEST_F(EventHubTest, WhoStopsListeningMidwayIsNotCalled) {
  Listener first(log);
  Listener second(log);
  const host::Subscription one = hub.Advise(first);
  host::Subscription two = hub.Advise(second);
  first.then = [&](const std::string&) { two.End(); };
  hub.Raise(Telling("change"));
  EXPECT_THAT(log, ElementsAre("change"));
}

TEST_F(EventHubTest, EventsWaitForTheOutermostForm) {
  Listener listener(log);
  const host::Subscription subscription = hub.Advise(listener);
  hub.FormShown();
  hub.FormShown();
  hub.Raise(Telling("a"));
  hub.FormGone();
  hub.Raise(Telling("b"));
  EXPECT_TRUE(log.empty());
  hub.FormGone();
  EXPECT_THAT(log, ElementsAre("a", "b"));
}

TEST_F(EventHubTest, AHandlerThatCausesItselfEnds) {
  Listener listener(log);
  const host::Subscription subscription = hub.Advise(listener);
  listener.then = [&](const std::string& what) { hub.Raise(Telling(what)); };
  hub.Raise(Telling("change"));
  EXPECT_EQ(log.size(), 100u);
  listener.then = [](const std::string&) {};
  log.clear();
  hub.Raise(Telling("later"));
  EXPECT_THAT(log, ElementsAre("later"));
}

TEST_F(EventHubTest, ASubscriptionMayOutliveTheProgram) {
  Listener listener(log);
  host::Subscription subscription;
  {
    EventHub passing;
    subscription = passing.Advise(listener);
  }
  subscription.End();
  EXPECT_TRUE(log.empty());
}

}  // namespace
}  // namespace tolvane::shell
