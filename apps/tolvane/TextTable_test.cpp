#include "apps/tolvane/TextTable.h"

#include <gtest/gtest.h>

#include <sstream>

namespace tolvane::app {
namespace {

TEST(VisibleTextTest, TerminalControlsDoNotGetThrough) {
  EXPECT_EQ(VisibleText("Caf\xC3\xA9 \xE2\x82\xAC 5 \xF0\x9F\x98\x80"), "Caf\xC3\xA9 \xE2\x82\xAC 5 \xF0\x9F\x98\x80");
  EXPECT_EQ(VisibleText("\x1B[31mred"), "\xEF\xBF\xBD[31mred");
  EXPECT_EQ(VisibleText("a\nb\rc\x7F"),
            "a\xEF\xBF\xBD"
            "b\xEF\xBF\xBD"
            "c\xEF\xBF\xBD");
  EXPECT_EQ(VisibleText("\xC2\x9B"
                        "31m"),
            "\xEF\xBF\xBD"
            "31m")
      << "the one-byte form of the escape sequence";
  EXPECT_EQ(VisibleText("\xE2\x80\xAE"
                        "fdp.exe"),
            "\xEF\xBF\xBD"
            "fdp.exe")
      << "right-to-left override";
}

TEST(TextTableTest, NumbersStandRightAndColumnsAlignByCharacters) {
  TextTable table;
  table.AddRow({{"Caf\xC3\xA9"}, {"1.5", true}});
  table.AddRow({{"Tea"}, {"100", true}});
  table.AddRow({{"Nothing"}});
  std::ostringstream output;
  table.Print(output);
  EXPECT_EQ(output.str(),
            "Caf\xC3\xA9     1.5\n"
            "Tea      100\n"
            "Nothing\n");
}

}  // namespace
}  // namespace tolvane::app
