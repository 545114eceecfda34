#include "engine/model/Reference.h"

#include <gtest/gtest.h>

#include "engine/model/ExpressionBuilder.h"

namespace tolvane::engine {
namespace {

using test::Area;
using test::At;

Reference Ref(const char* text, const char* home) {
  return test::Ref(text, At(home), Workbook());
}

TEST(Reference, RelativeBoundsCountFromTheFormula) {
  const Reference left = Ref("B5", "C5");
  EXPECT_EQ(left.At(At("C5")), Area("B5"));
  EXPECT_EQ(left.At(At("F9")), Area("E9"));
  EXPECT_EQ(Ref("$B$5", "C5").At(At("F9")), Area("B5"));
}

TEST(Reference, BoundsComeOutInOrder) {
  const Reference running = Ref("B$8:B8", "C8");
  EXPECT_EQ(running.At(At("C12")), Area("B8:B12"));
  EXPECT_EQ(running.At(At("C3")), Area("B3:B8"));
}

TEST(Reference, LeavingTheGridWrapsToItsOtherEnd) {
  EXPECT_EQ(Ref("A1", "B2").At(At("A1")), Area("XFD1048576"));
  EXPECT_EQ(Ref("A1:B2", "A1").At(At("A1048576")), Area("A1:B1048576"));
  EXPECT_EQ(WrapIndex(0, Axis::Rows), kMaxRow);
  EXPECT_EQ(WrapIndex(-kMaxRow, Axis::Rows), kMaxRow);
  EXPECT_EQ(WrapIndex(kMaxColumn + 1, Axis::Columns), 1);
}

TEST(Reference, WholeRowsAndColumnsReachAcrossTheSheet) {
  EXPECT_EQ(Ref("$5:$9", "A1").At(At("C3")), Area("5:9"));
  EXPECT_EQ(Ref("B:C", "A1").At(At("B1")), Area("C:D"));
}

TEST(Reference, BoundsThatDoNotCountMakeNoDifference) {
  Reference cell = Ref("B5", "A1");
  cell.lastRow = {77, false};
  EXPECT_EQ(cell, Ref("B5", "A1"));
  EXPECT_FALSE(Ref("B5", "A1") == Ref("$B5", "A1"));
  EXPECT_FALSE(Ref("B5:C6", "A1") == Ref("B5:C7", "A1"));
}

}  // namespace
}  // namespace tolvane::engine
