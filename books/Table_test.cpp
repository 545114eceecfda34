#include "books/Table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tolvane::books {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

std::string Problem(std::string_view text) {
  try {
    const Table table("t.tsv", text);
    table.rows().front()["missing"];
  } catch (const TableError& error) {
    return error.what();
  }
  return "none";
}

TEST(BookTable, ReadsCellsByTheirColumns) {
  const Table table("t.tsv", "# what it is\nname\tstyle\tlook\nA1\t\tbold\n");
  EXPECT_THAT(table.columns(), ElementsAre("name", "style", "look"));
  EXPECT_EQ(table.rows().front()["look"], "bold");
}

TEST(BookTable, LeavesOutWhatSaysNothing) {
  const Table table("t.tsv", "# what it is\nname\tstyle\r\n\nA1\tTitle\r\n   \n# between\nB2\n");
  ASSERT_EQ(table.rows().size(), 2U);
  EXPECT_EQ(table.rows()[0]["name"], "A1");
  EXPECT_EQ(table.rows()[0]["style"], "Title");
  EXPECT_EQ(table.rows()[1]["name"], "B2");
  EXPECT_EQ(table.rows()[1]["style"], "");  // left out at the line's end
  EXPECT_EQ(table.rows()[1].At(7), "");
}

TEST(BookTable, ReadsEscapes) {
  const Table table("t.tsv", "text\na\\r\\nb\\tc\\\\d\n");
  EXPECT_EQ(table.rows()[0]["text"], "a\r\nb\tc\\d");
}

TEST(BookTable, TellsWhatIsWrongAndWhere) {
  EXPECT_THAT(Problem("name\n# x\nA1\n"), HasSubstr("t.tsv, line 3: the table has no column \"missing\""));
  EXPECT_THAT(Problem("name\nA1\tB1\n"), HasSubstr("t.tsv, line 2: 2 cells, but the table has 1 columns"));
  EXPECT_THAT(Problem("name\nA\\q\n"), HasSubstr("t.tsv, line 2: after a backslash"));
  EXPECT_THAT(Problem("name\nA\\"), HasSubstr("t.tsv, line 2: after a backslash"));
  EXPECT_THAT(Problem("# nothing\n\n"), HasSubstr("its first line must name the columns"));
  EXPECT_THAT(Problem("name\n\xFF\n"), HasSubstr("UTF-8"));
}

TEST(BookTable, SplitsWords) {
  EXPECT_THAT(WordsOf("  left  width=12 "), ElementsAre("left", "width=12"));
  EXPECT_THAT(WordsOf(""), ElementsAre());
}

}  // namespace
}  // namespace tolvane::books
