#include "engine/model/BandTable.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <vector>

namespace tolvane::engine {
namespace {

using Runs = std::vector<Run>;  // within a test, Run by itself is GoogleTest's

void SetSize(BandTable& bands, int first, int last, double size) {
  bands.Change(first, last, [size](Band& band) { band.size = size; });
}

TEST(BandTable, JoinsEqualNeighboursAndForgetsDefaults) {
  BandTable rows(Axis::Rows);
  SetSize(rows, 5, 9, 20);
  SetSize(rows, 10, 12, 20);
  ASSERT_EQ(rows.stretches().size(), 1u);
  EXPECT_EQ(rows.stretches()[0].first, 5);
  EXPECT_EQ(rows.stretches()[0].last, 12);
  rows.Change(1, kMaxRow, [](Band& band) { band.size.reset(); });
  EXPECT_TRUE(rows.stretches().empty());
}

TEST(BandTable, WalksDefaultsToo) {
  BandTable columns(Axis::Columns);
  SetSize(columns, 3, 4, 20);
  std::vector<std::pair<int, int>> walked;
  columns.ForEachStretch(1, 10, [&](int first, int last, const Band&) { walked.emplace_back(first, last); });
  EXPECT_EQ(walked, (std::vector<std::pair<int, int>>{{1, 2}, {3, 4}, {5, 10}}));
}

TEST(BandTable, InsertedBandsTakeAfterTheOneInFrontButNoFilterHasSeenThem) {
  BandTable rows(Axis::Rows);
  rows.Change(4, 4, [](Band& band) {
    band.size = 30;
    band.filtered = true;
  });
  rows.InsertRuns(Runs{{5, 2}});
  EXPECT_EQ(rows.At(6).size, 30);
  EXPECT_FALSE(rows.At(6).filtered);
  EXPECT_TRUE(rows.At(4).filtered);
  EXPECT_TRUE(rows.At(7).isDefault());
}

TEST(BandTable, KeepsWithinTheGrid) {
  BandTable columns(Axis::Columns);
  SetSize(columns, kMaxColumn - 1, kMaxColumn, 7);
  columns.InsertRuns(Runs{{1, 1}});
  ASSERT_EQ(columns.stretches().size(), 1u);
  EXPECT_EQ(columns.stretches()[0].first, kMaxColumn);
  EXPECT_EQ(columns.stretches()[0].last, kMaxColumn);
}

// A list of bands, changed one by one.
struct PlainBands {
  std::vector<Band> bands = std::vector<Band>(200);

  void Insert(const Runs& runs, bool plain) {
    for (const Run& run : runs) {
      Band inserted = plain || run.first == 1 ? Band{} : bands[static_cast<std::size_t>(run.first - 2)];
      inserted.filtered = false;
      for (int i = 0; i < run.count; ++i) bands.insert(bands.begin() + run.first - 1, inserted);
    }
  }
  void Delete(const Runs& runs) {
    for (auto run = runs.rbegin(); run != runs.rend(); ++run) {
      for (int i = 0; i < run->count; ++i) bands.erase(bands.begin() + run->first - 1);
    }
  }
};

Runs AnyRuns() {
  Runs runs;
  int next = 1;
  for (int i = *rc::gen::inRange(1, 5); i > 0; --i) {
    runs.push_back({next + *rc::gen::inRange(0, 8), *rc::gen::inRange(1, 4)});
    next = runs.back().last() + 2;
  }
  return runs;
}

TEST(BandTable, AgreesWithAListOfBands) {
  EXPECT_TRUE(rc::check([] {
    BandTable table(Axis::Rows);
    PlainBands plain;
    for (int step = *rc::gen::inRange(1, 10); step > 0; --step) {
      switch (*rc::gen::inRange(0, 4)) {
        case 0:
        case 1: {
          const int first = *rc::gen::inRange(1, 40);
          const int last = first + *rc::gen::inRange(0, 10);
          const double size = *rc::gen::inRange(0, 3);
          const auto change = [size](Band& band) {
            if (size == 0) {
              band.filtered = !band.filtered;
            } else {
              band.size = size;
            }
          };
          table.Change(first, last, change);
          for (int i = first; i <= last; ++i) change(plain.bands[static_cast<std::size_t>(i - 1)]);
          break;
        }
        case 2: {
          const auto runs = AnyRuns();
          const bool isPlain = *rc::gen::arbitrary<bool>();
          table.InsertRuns(runs, isPlain);
          plain.Insert(runs, isPlain);
          break;
        }
        case 3: {
          const auto runs = AnyRuns();
          table.DeleteRuns(runs);
          plain.Delete(runs);
          break;
        }
      }
      for (int i = 1; i <= 100; ++i) RC_ASSERT(table.At(i) == plain.bands[static_cast<std::size_t>(i - 1)]);
      for (std::size_t i = 0; i < table.stretches().size(); ++i) {
        const auto& stretch = table.stretches()[i];
        RC_ASSERT(stretch.first <= stretch.last && !stretch.band.isDefault());
        if (i == 0) continue;
        const auto& before = table.stretches()[i - 1];
        RC_ASSERT(before.last < stretch.first);
        RC_ASSERT(before.last + 1 < stretch.first || !(before.band == stretch.band));
      }
    }
  }));
}

}  // namespace
}  // namespace tolvane::engine
