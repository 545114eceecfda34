#include "hosts/shell/Macros.h"

#include <gtest/gtest.h>

namespace tolvane::shell {
namespace {

TEST(Macros, CallsNameABookOrNone) {
  EXPECT_EQ(MacroCall::Parse("Go").book, std::nullopt);
  EXPECT_EQ(MacroCall::Parse("Go").macro, "Go");
  EXPECT_EQ(MacroCall::Parse("Book.xlsx!Go").book, "Book.xlsx");
  EXPECT_EQ(MacroCall::Parse("'My Book.xlsx'!Go").book, "My Book.xlsx");
  EXPECT_EQ(MacroCall::Parse("'Joe''s!.xlsx'!Go").book, "Joe's!.xlsx");
  EXPECT_EQ(MacroCall::Parse("'Joe''s!.xlsx'!Go").macro, "Go");
}

TEST(Macros, BelongToTheirBook) {
  Macros macros;
  macros.Offer(1, "Go", [] { return host::CellValue(1); });
  macros.Offer(2, "Go", [] { return host::CellValue(2); });
  ASSERT_NE(macros.Find(1, "GO"), nullptr);
  EXPECT_EQ((*macros.Find(1, "go"))(), host::CellValue(1));
  macros.Forget(1);
  EXPECT_EQ(macros.Find(1, "Go"), nullptr);
  EXPECT_NE(macros.Find(2, "Go"), nullptr);
}

}  // namespace
}  // namespace tolvane::shell
