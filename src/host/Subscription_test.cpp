#include "src/host/Subscription.h"

#include <gtest/gtest.h>

#include <utility>

namespace tolvane::host {
namespace {

TEST(Subscription, EndsOnceWithItsLife) {
  int ended = 0;
  {
    const Subscription subscription([&] { ++ended; });
    EXPECT_EQ(ended, 0);
  }
  EXPECT_EQ(ended, 1);
}

TEST(Subscription, EndsOnceWhenTold) {
  int ended = 0;
  {
    Subscription subscription([&] { ++ended; });
    subscription.End();
    EXPECT_EQ(ended, 1);
    subscription.End();
  }
  EXPECT_EQ(ended, 1);
}

TEST(Subscription, WithoutASourceNothingEnds) {
  Subscription subscription;
  subscription.End();
}

TEST(Subscription, GoesOnWhenItIsMoved) {
  int ended = 0;
  Subscription second;
  {
    Subscription first([&] { ++ended; });
    second = std::move(first);
  }
  EXPECT_EQ(ended, 0);
  {
    const Subscription third(std::move(second));
    second.End();
    EXPECT_EQ(ended, 0);
  }
  EXPECT_EQ(ended, 1);
}

TEST(Subscription, EndsTheOneThatIsReplaced) {
  int firstEnded = 0;
  int secondEnded = 0;
  Subscription subscription([&] { ++firstEnded; });
  subscription = Subscription([&] { ++secondEnded; });
  EXPECT_EQ(firstEnded, 1);
  EXPECT_EQ(secondEnded, 0);
}

TEST(Subscription, SurvivesBeingMovedToItself) {
  int ended = 0;
  Subscription subscription([&] { ++ended; });
  Subscription& same = subscription;
  subscription = std::move(same);
  EXPECT_EQ(ended, 0);
}

TEST(Subscription, MayEndItselfFromItsOwnEnd) {
  int ended = 0;
  Subscription subscription;
  subscription = Subscription([&] {
    ++ended;
    subscription.End();
  });
  subscription.End();
  EXPECT_EQ(ended, 1);
}

}  // namespace
}  // namespace tolvane::host
