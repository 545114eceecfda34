#include "engine/formula/CellTable.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <unordered_map>

namespace tolvane::engine {
namespace {

TEST(CellTable, HoldsWhatAMapHolds) {
  EXPECT_TRUE(rc::check([] {
    CellTable table;
    std::unordered_map<CellAddress, std::uint32_t, CellAddressHash> map;
    const int rounds = *rc::gen::inRange(1, 3);
    for (int round = 0; round < rounds; ++round) {
      table.Clear();
      map.clear();
      const int count = *rc::gen::inRange(0, 400);
      const int columns = *rc::gen::inRange(1, 5);
      for (int i = 0; i < count; ++i) {
        const CellAddress at{static_cast<SheetId>(*rc::gen::inRange(1, 3)),
                             {*rc::gen::inRange(1, 200), *rc::gen::inRange(1, columns + 1)}};
        const auto number = static_cast<std::uint32_t>(i);
        RC_ASSERT(table.At(at, number) == map.try_emplace(at, number).first->second);
      }
      RC_ASSERT(table.size() == map.size());
      std::size_t visited = 0;
      table.ForEach([&](const CellAddress& at, std::uint32_t number) {
        RC_ASSERT(map.at(at) == number);
        ++visited;
      });
      RC_ASSERT(visited == map.size());
      for (int row = 1; row <= 200; ++row) {
        const CellAddress at{1, {row, 1}};
        const std::uint32_t* found = table.Find(at);
        RC_ASSERT((found != nullptr) == map.contains(at));
      }
    }
  }));
}

}  // namespace
}  // namespace tolvane::engine
