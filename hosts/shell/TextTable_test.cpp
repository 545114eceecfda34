#include "hosts/shell/TextTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tolvane::shell {
namespace {

using ::testing::ElementsAre;
using Row = std::vector<std::string>;

TEST(TextTable, LinesAreRowsWhateverEndsThem) {
  EXPECT_THAT(SplitTable("a\tb\nc\r\nd\re"), ElementsAre(Row{"a", "b"}, Row{"c"}, Row{"d"}, Row{"e"}));
  EXPECT_THAT(SplitTable("a\r\n"), ElementsAre(Row{"a"}));
  EXPECT_THAT(SplitTable("a\n\nb"), ElementsAre(Row{"a"}, Row{""}, Row{"b"}));
  EXPECT_THAT(SplitTable(""), ElementsAre());
}

TEST(TextTable, EmptyCellsCount) {
  EXPECT_THAT(SplitTable("\ta\t\n"), ElementsAre(Row{"", "a", ""}));
}

TEST(TextTable, QuotationMarksEncloseWholeCells) {
  EXPECT_THAT(SplitTable("\"a\tb\"\tc"), ElementsAre(Row{"a\tb", "c"}));
  EXPECT_THAT(SplitTable("\"one\ntwo\""), ElementsAre(Row{"one\ntwo"}));
  EXPECT_THAT(SplitTable("\"say \"\"yes\"\"\"\tc"), ElementsAre(Row{"say \"yes\"", "c"}));
  EXPECT_THAT(SplitTable("\"Joe\" & Co\tc"), ElementsAre(Row{"\"Joe\" & Co", "c"}));
  EXPECT_THAT(SplitTable("5\"\t6\""), ElementsAre(Row{"5\"", "6\""}));
  EXPECT_THAT(SplitTable("\"open\nb"), ElementsAre(Row{"\"open"}, Row{"b"}));
}

}  // namespace
}  // namespace tolvane::shell
