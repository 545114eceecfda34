#include "engine/model/AxisShift.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <vector>

namespace tolvane::engine {
namespace {

using Kind = AxisShift::Kind;

AxisShift Deleting(std::vector<Run> runs) {
  return {Axis::Rows, Kind::Delete, runs};
}
AxisShift Inserting(std::vector<Run> runs) {
  return {Axis::Rows, Kind::Insert, runs};
}

TEST(AxisShift, DeletionMovesWhatIsBehind) {
  const AxisShift shift = Deleting({{3, 2}, {8, 1}});
  EXPECT_EQ(shift.Map(2), 2);
  EXPECT_EQ(shift.Map(3), std::nullopt);
  EXPECT_EQ(shift.Map(4), std::nullopt);
  EXPECT_EQ(shift.Map(5), 3);
  EXPECT_EQ(shift.Map(8), std::nullopt);
  EXPECT_EQ(shift.Map(9), 6);
}

TEST(AxisShift, DeletionShrinksIntervals) {
  const AxisShift shift = Deleting({{3, 2}, {8, 1}});
  EXPECT_EQ(shift.Map(Span{1, 2}), (Span{1, 2}));
  EXPECT_EQ(shift.Map(Span{1, 4}), (Span{1, 2}));
  EXPECT_EQ(shift.Map(Span{3, 4}), std::nullopt);
  EXPECT_EQ(shift.Map(Span{4, 8}), (Span{3, 5}));
  EXPECT_EQ(shift.Map(Span{8, 8}), std::nullopt);
  EXPECT_EQ(shift.Map(Span{1, 20}), (Span{1, 17}));
}

TEST(AxisShift, InsertionCountsInTheNumberingAfterIt) {
  const AxisShift shift = Inserting({{3, 2}, {8, 1}});
  EXPECT_EQ(shift.Map(2), 2);
  EXPECT_EQ(shift.Map(3), 5);
  EXPECT_EQ(shift.Map(5), 7);
  EXPECT_EQ(shift.Map(6), 9);
}

TEST(AxisShift, InsertionExtendsOnlyFromInside) {
  const AxisShift shift = Inserting({{5, 2}});
  EXPECT_EQ(shift.Map(Span{5, 7}), (Span{7, 9}));
  EXPECT_EQ(shift.Map(Span{4, 7}), (Span{4, 9}));
  EXPECT_EQ(shift.Map(Span{2, 4}), (Span{2, 4}));
}

TEST(AxisShift, TheWholeAxisStaysWhole) {
  EXPECT_EQ(Deleting({{3, 2}}).Map(Span{1, kMaxRow}), (Span{1, kMaxRow}));
  EXPECT_EQ(Inserting({{3, 2}}).Map(Span{1, kMaxRow}), (Span{1, kMaxRow}));
}

TEST(AxisShift, TheEndOfTheGridCutsOff) {
  const AxisShift shift = Inserting({{5, 2}});
  EXPECT_EQ(shift.Map(kMaxRow - 2), kMaxRow);
  EXPECT_EQ(shift.Map(kMaxRow - 1), std::nullopt);
  EXPECT_EQ(shift.Map(Span{kMaxRow - 5, kMaxRow}), (Span{kMaxRow - 3, kMaxRow}));
  EXPECT_EQ(shift.Map(Span{kMaxRow, kMaxRow}), std::nullopt);
}

TEST(AxisShift, UnmapUndoesMap) {
  for (const AxisShift& shift : {Deleting({{3, 2}, {8, 1}}), Inserting({{3, 2}, {8, 1}}), Deleting({{1, 4}})}) {
    for (int index = 1; index < 30; ++index) {
      const auto mapped = shift.Map(index);
      if (!mapped) continue;
      EXPECT_EQ(shift.Unmap(*mapped), index);
    }
  }
  EXPECT_EQ(Inserting({{3, 2}}).Unmap(3), 3);
  EXPECT_EQ(Inserting({{3, 2}}).Unmap(4), 3);
}

// Many runs are searched another way than few; the plain count must come to the same.
TEST(AxisShift, ManyRunsMapAsTheyWouldOneByOne) {
  std::vector<engine::Run> runs;
  int next = 2;
  for (int i = 0; i < 300; ++i) {
    const int count = 1 + i % 7;
    runs.push_back({next, count});
    next += count + 1 + (i * i) % 90;
  }
  const AxisShift deleting = Deleting(runs);
  const AxisShift inserting = Inserting(runs);
  int kept = 0;
  for (int row = 1; row <= next + 500; ++row) {
    const bool inRun = std::any_of(runs.begin(), runs.end(),
                                   [&](const engine::Run& run) { return run.first <= row && row <= run.last(); });
    EXPECT_EQ(deleting.Map(row), inRun ? std::nullopt : std::optional(++kept)) << row;
    if (inRun) continue;
    EXPECT_EQ(inserting.Map(kept), row);
  }
  EXPECT_EQ(deleting.Map(kMaxRow), kMaxRow - (next + 500 - kept));
}

}  // namespace
}  // namespace tolvane::engine
