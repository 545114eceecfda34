#include "apps/tolvane/TableCommand.h"

#include <gtest/gtest.h>

#include <sstream>

namespace tolvane::app {
namespace {

struct Result {
  int status;
  std::string output;
};

Result Table(const std::string& text) {
  std::istringstream input(text);
  std::ostringstream output;
  const int status = RunTable("-", input, output);
  return {status, output.str()};
}

TEST(TableCommandTest, FormulasMayPointAtWhatComesLater) {
  const Result result = Table("Total\t=SUM(B2:B3)\nA\t1\nB\t2.5\n");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "Total  3.5\nA        1\nB      2.5\n");
}

TEST(TableCommandTest, AnErrorValueShowsInTheStatus) {
  EXPECT_EQ(Table("=NA()\n").status, 1);
  EXPECT_EQ(Table("").status, 0);
}

TEST(TableCommandTest, AnApostropheMakesAText) {
  EXPECT_EQ(Table("'=1+1\n").output, "=1+1\n");
}

TEST(TableCommandTest, ABrokenFormulaIsPlaced) {
  try {
    Table("1\n=SUM(\n");
    FAIL();
  } catch (const std::exception& error) {
    EXPECT_NE(std::string(error.what()).find("Cell A2"), std::string::npos) << error.what();
  }
}

TEST(TableCommandTest, WindowsLineEndsAndCodePages) {
  EXPECT_EQ(Table("Caf\xE9\t1\r\nTea\t2\r\n").output, "Caf\xC3\xA9  1\nTea   2\n");
}

}  // namespace
}  // namespace tolvane::app
