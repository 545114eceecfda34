#include "hosts/embedded/RangeTracker.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <set>
#include <vector>

#include "engine/model/Workbook.h"
#include "hosts/embedded/EmbeddedHost.h"
#include "testing/MemoryBookFiles.h"
#include "testing/ScriptedDesk.h"

namespace tolvane::embedded {
namespace {

using engine::Axis;
using engine::Rect;
using Runs = std::vector<engine::Run>;  // "Run" is a member of every test

class Tracked final : public TrackedAreas {
 public:
  using TrackedAreas::TrackedAreas;

 protected:
  void MovedTo(EmbeddedWorksheet&) override {}
};

// The rows that stay of an interval, counted one by one.
std::vector<int> RowsAfter(int first, int last, const Runs& deleted) {
  std::vector<int> rows;
  int gone = 0;
  std::size_t run = 0;
  for (int row = 1; row <= last; ++row) {
    while (run < deleted.size() && deleted[run].last() < row) ++run;
    if (run < deleted.size() && deleted[run].first <= row) {
      ++gone;
    } else if (row >= first) {
      rows.push_back(row - gone);
    }
  }
  return rows;
}

Runs SomeRuns() {
  Runs runs;
  int next = 1;
  for (int i = *rc::gen::inRange(1, 6); i > 0; --i) {
    const int first = next + *rc::gen::inRange(0, 5);
    const int count = *rc::gen::inRange(1, 5);
    runs.push_back({first, count});
    next = first + count + 1;
  }
  return runs;
}

TEST(RangeTracker, FollowsDeletedRowsAsIfCountedOneByOne) {
  EXPECT_TRUE(rc::check([] {
    const Runs runs = SomeRuns();
    const int first = *rc::gen::inRange(1, 40);
    const int last = first + *rc::gen::inRange(0, 10);
    RangeTracker tracker;
    const Tracked tracked(tracker, {{first, 2, last, 3}});
    tracker.DeleteRuns(Axis::Rows, runs);
    const std::vector<int> rows = RowsAfter(first, last, runs);
    if (rows.empty()) {
      RC_ASSERT(tracked.areas().empty());
    } else {
      RC_ASSERT((tracked.areas() == std::vector<Rect>{{rows.front(), 2, rows.back(), 3}}));
    }
  }));
}

TEST(RangeTracker, InsertingWhatWasDeletedBesideItBringsAnAreaBack) {
  EXPECT_TRUE(rc::check([] {
    const Runs runs = SomeRuns();
    const int row = *rc::gen::inRange(1, 60);
    const bool deleted = std::any_of(runs.begin(), runs.end(),
                                     [row](const engine::Run& run) { return run.first <= row && row <= run.last(); });
    RC_PRE(!deleted);
    RangeTracker tracker;
    const Tracked tracked(tracker, {Rect::Cell({row, 4})});
    tracker.DeleteRuns(Axis::Rows, runs);
    tracker.InsertRuns(Axis::Rows, runs);
    RC_ASSERT(tracked.areas() == std::vector<Rect>{Rect::Cell({row, 4})});
  }));
}

TEST(RangeTracker, CellsShiftWithinTheirLaneOnly) {
  RangeTracker tracker;
  const Tracked inside(tracker, {{5, 2, 6, 3}});
  const Tracked partly(tracker, {{5, 3, 6, 5}});
  tracker.InsertCells({2, 2, 3, 4}, Axis::Rows);
  EXPECT_EQ(inside.areas(), (std::vector<Rect>{{7, 2, 8, 3}}));
  EXPECT_EQ(partly.areas(), (std::vector<Rect>{{5, 3, 6, 5}}));
  tracker.DeleteCells({7, 2, 8, 4}, Axis::Rows);
  EXPECT_TRUE(inside.areas().empty());
}

TEST(RangeTracker, ForgetsWhatIsGone) {
  RangeTracker tracker;
  const Tracked kept(tracker, {Rect::Cell({9, 9})});
  {
    const Tracked passing(tracker, {Rect::Cell({3, 3})});
    const Tracked other(tracker, {Rect::Cell({4, 4})});
  }
  const engine::Run run{1, 2};
  tracker.DeleteRuns(Axis::Columns, {&run, 1});
  EXPECT_EQ(kept.areas(), std::vector<Rect>{Rect::Cell({9, 7})});
}

TEST(RangeTracker, HandlesFollowCellsToAnotherSheet) {
  testing::ScriptedDesk desk;
  testing::MemoryBookFiles files;
  EmbeddedHost host(desk, files);
  const host::Workbook book = host.application().Workbooks().Add();
  const host::Worksheet from = book.Worksheets().Item(1);
  const host::Worksheet to = book.Worksheets().Add();
  const host::Range moved = from.Range("B2:C3");
  const host::Range partly = from.Range("C3:D4");
  from.Range("A1:C3").Cut();
  to.Range("E5").PasteSpecial(host::PasteType::All);
  EXPECT_TRUE(moved.Parent() == to);
  EXPECT_EQ(moved.Address(), "$F$6:$G$7");
  EXPECT_TRUE(partly.Parent() == from);
  EXPECT_EQ(partly.Address(), "$C$3:$D$4");
  to.Rows().Item(1).Insert();
  EXPECT_EQ(moved.Address(), "$F$7:$G$8");
}

}  // namespace
}  // namespace tolvane::embedded
