#include "engine/formula/RectIndex.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <set>

namespace tolvane::engine {
namespace {

int Between(int low, int high) {
  return *rc::gen::resize(rc::kNominalSize, rc::gen::inRange(low, high + 1));
}

Rect AnyRect(int limit) {
  const int top = Between(1, limit);
  const int left = Between(1, limit);
  return {top, left, Between(top, limit), Between(left, limit)};
}

TEST(RectIndex, FindsWhatAWalkOverAllFinds) {
  EXPECT_TRUE(rc::check([] {
    RectIndex index;
    std::vector<Rect> all;
    const int limit = Between(5, 200);
    // Searches in between make it sort what has come so far.
    const int rounds = Between(1, 4);
    for (int round = 0; round < rounds; ++round) {
      const int count = Between(0, 150);
      for (int i = 0; i < count; ++i) {
        all.push_back(AnyRect(limit));
        index.Add(all.back(), static_cast<std::uint32_t>(all.size() - 1));
      }
      const Rect area = AnyRect(limit);
      std::multiset<std::uint32_t> found;
      index.ForEachMeeting(area, [&](std::uint32_t id) { found.insert(id); });
      std::multiset<std::uint32_t> expected;
      for (std::uint32_t id = 0; id < all.size(); ++id) {
        if (all[id].intersects(area)) expected.insert(id);
      }
      RC_ASSERT(found == expected);
    }
  }));
}

}  // namespace
}  // namespace tolvane::engine
