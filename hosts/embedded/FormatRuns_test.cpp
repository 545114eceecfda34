#include "hosts/embedded/FormatRuns.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <map>

#include "engine/model/Workbook.h"

namespace tolvane::embedded {
namespace {

using engine::FormatId;
using engine::Rect;

// An area of a few cells by a few, now and then of whole rows or columns.
Rect SomeArea() {
  const int top = *rc::gen::inRange(1, 8);
  const int left = *rc::gen::inRange(1, 8);
  const Rect area{top, left, top + *rc::gen::inRange(0, 4), left + *rc::gen::inRange(0, 4)};
  switch (*rc::gen::inRange(0, 4)) {
    case 0:
      return Rect::Rows(area.top, area.bottom);
    case 1:
      return Rect::Columns(area.left, area.right);
    default:
      return area;
  }
}

TEST(FormatRuns, GiveEachCellOnceWithItsFormat) {
  EXPECT_TRUE(rc::check([] {
    engine::Workbook book;
    engine::Sheet& sheet = book.AddSheet("Cells", 0);
    for (int i = *rc::gen::inRange(0, 6); i > 0; --i) {
      const bool bold = *rc::gen::arbitrary<bool>();
      sheet.ChangeFormat(SomeArea(), [&](FormatId from) {
        return book.formats.With(from, engine::FormatGroup::Font, [bold](engine::Format& f) { f.font.bold = bold; });
      });
    }
    sheet.SetValue({3, 3}, 5);
    const Rect area{1, 1, 13, 13};
    std::map<engine::CellPos, FormatId> visited;
    ForEachFormatRun(sheet, area, [&](const Rect& run, FormatId format) {
      RC_ASSERT(area.contains(run));
      for (int row = run.top; row <= run.bottom; ++row) {
        for (int column = run.left; column <= run.right; ++column) {
          RC_ASSERT(visited.try_emplace({row, column}, format).second);
        }
      }
    });
    RC_ASSERT(static_cast<std::int64_t>(visited.size()) == area.cells());
    for (const auto& [at, format] : visited) {
      RC_ASSERT(book.formats.At(format) == book.formats.At(sheet.FormatAt(at)));
    }
  }));
}

TEST(FormatRuns, AWholeSheetCostsItsStretches) {
  engine::Workbook book;
  engine::Sheet& sheet = book.AddSheet("Cells", 0);
  int runs = 0;
  ForEachFormatRun(sheet, Rect::WholeSheet(), [&](const Rect& run, FormatId format) {
    ++runs;
    EXPECT_EQ(run, Rect::WholeSheet());
    EXPECT_EQ(format, engine::kDefaultFormat);
  });
  EXPECT_EQ(runs, 1);
}

}  // namespace
}  // namespace tolvane::embedded
