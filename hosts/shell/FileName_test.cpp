#include "hosts/shell/FileName.h"

#include <gtest/gtest.h>

namespace tolvane::shell {
namespace {

TEST(FileName, IsTheLastPartOfAPath) {
  EXPECT_EQ(FileNameOf("/home/me/My Book.v2.xlsx").stem, "My Book.v2");
  EXPECT_EQ(FileNameOf("/home/me/My Book.v2.xlsx").extension, ".xlsx");
  EXPECT_EQ(FileNameOf("C:\\Books\\Book.xlsx").Whole(), "Book.xlsx");
  EXPECT_EQ(FileNameOf("/some.folder/Book").stem, "Book");
  EXPECT_EQ(FileNameOf("/home/me/").Whole(), "");
}

TEST(FileName, APointInFrontBeginsNoExtension) {
  EXPECT_EQ(FileNameOf(".hidden").stem, ".hidden");
  EXPECT_EQ(FileNameOf(".hidden").extension, "");
}

}  // namespace
}  // namespace tolvane::shell
