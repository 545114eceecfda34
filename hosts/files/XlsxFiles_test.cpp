#include "hosts/files/XlsxFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/Files.h"
#include "platform/TemporaryFolder.h"
#include "src/host/Errors.h"

namespace tolvane::files {
namespace {

using ::testing::HasSubstr;

class OneUser : public engine::LockWorld {
 public:
  engine::LockHolder Self() override { return {"Ann", "ann", "home", "now", "tolvane:1:1"}; }
  bool IsRunning(const engine::LockHolder&) override { return true; }
};

class XlsxFilesTest : public ::testing::Test {
 protected:
  std::string Path(const char* name) const { return (folder_.Path() / name).string(); }
  std::string Problem(const std::string& path) {
    try {
      files_.Open(path);
    } catch (const host::HostError& error) {
      EXPECT_EQ(error.number(), host::ErrorNumber::ApplicationDefined);
      return error.what();
    }
    return "none";
  }

  platform::TemporaryFolder folder_;
  OneUser world_;
  XlsxFiles files_{world_};
};

TEST_F(XlsxFilesTest, SavesAndOpens) {
  auto book = std::make_unique<engine::Workbook>();
  book->AddSheet("Data", 0).SetValue({1, 1}, "x");
  files_.Save(*book, Path("book.xlsx"));
  EXPECT_TRUE(platform::FileExists(Path(".~lock.book.xlsx#")));
  book.reset();
  auto opened = files_.Open(Path("book.xlsx"));
  EXPECT_EQ(opened.book->sheetAt(0).ValueAt({1, 1}), engine::Value("x"));
  EXPECT_FALSE(opened.isTemplate);
  opened.book->sheetAt(0).SetValue({1, 1}, "y");
  files_.Save(*opened.book, Path("book.xlsx"));
  EXPECT_TRUE(platform::FileExists(Path("book.xlsx.bak1")));
  EXPECT_THAT(Problem(Path("book.xlsx")), HasSubstr("open by Ann on home"));
  files_.Save(*opened.book, Path("other.xlsm"));
  EXPECT_FALSE(platform::FileExists(Path(".~lock.book.xlsx#")));
  EXPECT_TRUE(platform::FileExists(Path(".~lock.other.xlsm#")));
  opened.book.reset();
  EXPECT_FALSE(platform::FileExists(Path(".~lock.other.xlsm#")));
}

TEST_F(XlsxFilesTest, ANewBookHasItsLockUntilItGoes) {
  auto book = std::make_unique<engine::Workbook>();
  book->AddSheet("Data", 0);
  files_.Save(*book, Path("a.xlsx"));
  EXPECT_THAT(Problem(Path("a.xlsx")), HasSubstr("open by Ann on home since now"));
  files_.Save(*book, Path("b.xlsx"));
  EXPECT_FALSE(platform::FileExists(Path(".~lock.a.xlsx#")));
  EXPECT_TRUE(platform::FileExists(Path(".~lock.b.xlsx#")));
  book.reset();
  EXPECT_FALSE(platform::FileExists(Path(".~lock.b.xlsx#")));
}

TEST_F(XlsxFilesTest, ABookThatCouldNotBeSavedElsewhereKeepsItsFile) {
  engine::Workbook book;
  book.AddSheet("Data", 0);
  files_.Save(book, Path("a.xlsx"));
  EXPECT_THROW(files_.Save(book, Path("none/b.xlsx")), host::HostError);
  std::filesystem::create_directory(Path("folder.xlsx"));
  EXPECT_THROW(files_.Save(book, Path("folder.xlsx")), host::HostError);
  EXPECT_FALSE(platform::FileExists(Path(".~lock.folder.xlsx#")));
  EXPECT_TRUE(platform::FileExists(Path(".~lock.a.xlsx#")));
  files_.Save(book, Path("a.xlsx"));
}

TEST_F(XlsxFilesTest, WhatAnotherProgramSavedMeanwhileStays) {
  engine::Workbook book;
  engine::Sheet& sheet = book.AddSheet("Data", 0);
  files_.Save(book, Path("a.xlsx"));
  sheet.SetValue({1, 1}, "ours");
  files_.Save(book, Path("a.xlsx"));  // what it saved itself it knows
  platform::ReplaceFile(Path("a.xlsx"), "theirs");
  try {
    files_.Save(book, Path("a.xlsx"));
    FAIL() << "it is another file";
  } catch (const host::HostError& error) {
    EXPECT_THAT(error.what(), HasSubstr("another program has changed it"));
  }
  EXPECT_EQ(platform::ReadFile(Path("a.xlsx")), "theirs");
  files_.Save(book, Path("b.xlsx"));
  EXPECT_EQ(platform::ReadFile(Path("b.xlsx")).substr(0, 2), "PK");
}

TEST_F(XlsxFilesTest, ReadingAloneNeedsNoLock) {
  engine::Workbook book;
  book.AddSheet("Data", 0);
  files_.Save(book, Path("a.xlsx"));
  XlsxFiles reader(world_, {.onlyReads = true});
  EXPECT_NE(reader.Open(Path("a.xlsx")).book, nullptr);
  EXPECT_TRUE(platform::FileExists(Path(".~lock.a.xlsx#"))) << "that of the book that is open";
  EXPECT_THROW(reader.Save(*reader.Open(Path("a.xlsx")).book, Path("a.xlsx")), host::HostError);
}

TEST_F(XlsxFilesTest, OneFileHasOneLockByWhateverName) {
  auto book = std::make_unique<engine::Workbook>();
  book->AddSheet("Data", 0);
  files_.Save(*book, Path("a.xlsx"));
  std::filesystem::create_symlink("a.xlsx", Path("link.xlsx"));
  EXPECT_THAT(Problem(Path("link.xlsx")), HasSubstr("open by Ann"));
  files_.Save(*book, Path("link.xlsx"));
  EXPECT_TRUE(std::filesystem::is_symlink(Path("link.xlsx")));
  book.reset();
  EXPECT_FALSE(platform::FileExists(Path(".~lock.a.xlsx#")));
}

TEST_F(XlsxFilesTest, TellsTemplatesAndAddins) {
  engine::Workbook book;
  book.AddSheet("Data", 0);
  files_.Save(book, Path("t.xltx"));
  files_.Save(book, Path("a.xlam"));
  EXPECT_TRUE(files_.Open(Path("t.xltx")).isTemplate);
  EXPECT_TRUE(files_.Open(Path("a.xlam")).isAddin);
  EXPECT_FALSE(platform::FileExists(Path(".~lock.a.xlam#")));
}

TEST_F(XlsxFilesTest, FailuresAreHostErrors) {
  EXPECT_THAT(Problem(Path("none.xlsx")), HasSubstr("none.xlsx"));
  platform::ReplaceFile(Path("bad.xlsx"), "hello");
  EXPECT_THAT(Problem(Path("bad.xlsx")), HasSubstr("too short for an archive"));
  EXPECT_FALSE(platform::FileExists(Path(".~lock.bad.xlsx#")));
  engine::Workbook book;
  book.AddSheet("Data", 0);
  EXPECT_THROW(files_.Save(book, Path("book.txt")), host::HostError);
}

}  // namespace
}  // namespace tolvane::files
