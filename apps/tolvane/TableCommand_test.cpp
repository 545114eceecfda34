#include "apps/tolvane/TableCommand.h"

#include <gtest/gtest.h>

#include <sstream>

#include "engine/xlsx/Xlsx.h"
#include "platform/Files.h"
#include "platform/TemporaryFolder.h"

namespace tolvane::app {
namespace {

struct Result {
  int status;
  std::string output;
};

Result Table(const std::string& text) {
  std::istringstream input(text);
  std::ostringstream output;
  const int status = RunTable({.file = "-"}, input, output);
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

std::string Problem(const TableRequest& request) {
  std::istringstream input;
  std::ostringstream output;
  try {
    RunTable(request, input, output);
  } catch (const std::exception& error) {
    return error.what();
  }
  return "none";
}

TEST(TableCommandTest, ATableBecomesAWorkbookAndAWorkbookATable) {
  const platform::TemporaryFolder folder;
  const std::string file = (folder.Path() / "book.xlsx").string();
  std::istringstream input("Rent\t-850\t2009-03-15\nSum\t=B1*2\n");
  std::ostringstream said, table;
  EXPECT_EQ(RunTable({.file = "-", .saveAs = file}, input, said), 0);
  EXPECT_NE(said.str().find("book.xlsx"), std::string::npos);
  EXPECT_EQ(RunTable({.file = file}, input, table), 0);
  EXPECT_EQ(table.str().substr(0, 12), "Rent   -850 ");
  EXPECT_NE(table.str().find("Sum   -1700"), std::string::npos) << table.str();
  EXPECT_NE(Problem({.file = file, .sheet = "Nothing"}).find("It has: Sheet1"), std::string::npos);
  EXPECT_EQ(Problem({.file = file, .sheet = "Sheet1"}), "none");
}

TEST(TableCommandTest, AWorkbookThatIsOpenElsewhereCanBePrintedButNotReplaced) {
  const platform::TemporaryFolder folder;
  const std::string file = (folder.Path() / "book.xlsx").string();
  std::istringstream input("1\n");
  std::ostringstream output;
  RunTable({.file = "-", .saveAs = file}, input, output);
  platform::ReplaceFile(folder.Path() / ".~lock.book.xlsx#", "Bob,bob,office,01.02.2024 08:00,;");
  EXPECT_EQ(Problem({.file = file}), "none");
  EXPECT_NE(Problem({.file = file, .saveAs = file}).find("open by Bob on office"), std::string::npos);
}

TEST(TableCommandTest, WhatCannotBeDoneIsSaid) {
  const platform::TemporaryFolder folder;
  EXPECT_NE(Problem({.file = "-", .sheet = "x"}).find("--sheet is for workbook files"), std::string::npos);
  EXPECT_NE(Problem({.file = "-", .saveAs = (folder.Path() / "book.ods").string()}).find(".xlsx"), std::string::npos);
  const auto far = folder.Path() / "far.xlsx";
  engine::Workbook book;
  book.AddSheet("Far", 0).SetValue({1, 1}, 1);
  book.sheetAt(0).SetValue({engine::kMaxRow, engine::kMaxColumn}, 1);
  engine::SaveXlsx(book, engine::Package(), far.string());
  EXPECT_NE(Problem({.file = far.string()}).find("too many"), std::string::npos);
}

}  // namespace
}  // namespace tolvane::app
