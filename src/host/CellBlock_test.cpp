#include "src/host/CellBlock.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace tolvane::host {
namespace {

TEST(CellBlock, HasNoCellsByDefault) {
  const CellBlock block;
  EXPECT_EQ(block.rows(), 0);
  EXPECT_EQ(block.columns(), 0);
  EXPECT_TRUE(block.cells().empty());
  EXPECT_FALSE(block.isSingle());
  EXPECT_THROW(block.single(), std::out_of_range);
  EXPECT_THROW(block.at(1, 1), std::out_of_range);
}

TEST(CellBlock, BeginsWithEmptyCells) {
  const CellBlock block(2, 3);
  EXPECT_EQ(block.cells().size(), 6u);
  for (const CellValue& cell : block.cells()) EXPECT_TRUE(cell.isEmpty());
}

TEST(CellBlock, IsASingleValueWithOneRowAndColumn) {
  const CellBlock block(CellValue("alone"));
  EXPECT_TRUE(block.isSingle());
  EXPECT_EQ(block.single().text(), "alone");
  EXPECT_EQ(block.at(1, 1).text(), "alone");
  EXPECT_EQ(block, (CellBlock{{"alone"}}));
}

TEST(CellBlock, CountsRowsFirstFromOne) {
  CellBlock block{{1, 2, 3}, {4, 5, 6}};
  EXPECT_EQ(block.rows(), 2);
  EXPECT_EQ(block.columns(), 3);
  EXPECT_EQ(block.at(1, 3).number(), 3);
  EXPECT_EQ(block.at(2, 1).number(), 4);
  block.at(2, 1) = "four";
  EXPECT_EQ(block.cells()[3].text(), "four");
  EXPECT_THROW(block.single(), std::out_of_range);
}

TEST(CellBlock, RefusesPlacesOutsideAndSaysWhere) {
  CellBlock block(2, 3);
  for (const auto& [row, column] : {std::pair(0, 1), {1, 0}, {3, 1}, {1, 4}, {-1, -1}, {2, 1000000}}) {
    EXPECT_THROW(block.at(row, column), std::out_of_range) << row << " " << column;
  }
  try {
    block.at(3, 4);
    FAIL();
  } catch (const std::out_of_range& error) {
    EXPECT_STREQ(error.what(), "Row 3, column 4 lies outside of a block of 2 by 3.");
  }
}

TEST(CellBlock, RefusesRowsOfDifferentLengthsAndNegativeSizes) {
  EXPECT_THROW((CellBlock{{1, 2}, {3}}), std::invalid_argument);
  EXPECT_THROW((CellBlock{{1}, {2, 3}}), std::invalid_argument);
  EXPECT_THROW(CellBlock(-1, 2), std::invalid_argument);
  EXPECT_THROW(CellBlock(2, -1), std::invalid_argument);
}

TEST(CellBlock, IsEqualInShapeAndCells) {
  EXPECT_EQ((CellBlock{{1, "a"}}), (CellBlock{{1, "a"}}));
  EXPECT_NE((CellBlock{{1, 2}}), (CellBlock{{1}, {2}}));
  EXPECT_NE(CellBlock(0, 3), CellBlock(3, 0));
  EXPECT_NE((CellBlock{{1}}), (CellBlock{{2}}));
}

}  // namespace
}  // namespace tolvane::host
