#include "platform/Files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <iterator>
#include <string>
#include <thread>
#include <vector>

#include "platform/TemporaryFolder.h"

namespace tolvane::platform {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

std::string ReadProblem(const fs::path& path) {
  try {
    ReadFile(path);
  } catch (const FileError& error) {
    return error.what();
  }
  return "no error";
}

std::ptrdiff_t EntryCount(const fs::path& folder) {
  return std::distance(fs::directory_iterator(folder), {});
}

TEST(Files, PathsAreUtf8) {
  EXPECT_EQ(PathToUtf8(PathFromUtf8("/tmp/été/日.txt")), "/tmp/été/日.txt");
  const TemporaryFolder folder;
  const fs::path file = folder.Path() / PathFromUtf8("été.txt");
  ReplaceFile(file, "x");
  EXPECT_TRUE(FileExists(file));
}

TEST(Files, ExistTellsFilesFromFolders) {
  const TemporaryFolder folder;
  EXPECT_FALSE(FileExists(folder.Path()));
  EXPECT_FALSE(FileExists(folder.Path() / "none"));
  EXPECT_FALSE(FileExists(""));
  EXPECT_FALSE(FileExists(std::string(100'000, 'x')));
}

TEST(Files, ReadGivesAllBytes) {
  const TemporaryFolder folder;
  std::string content(200'001, 'x');
  content[100'000] = '\0';
  ReplaceFile(folder.Path() / "a", content);
  EXPECT_EQ(ReadFile(folder.Path() / "a"), content);
}

TEST(Files, ReadSaysWhatIsWrong) {
  const TemporaryFolder folder;
  EXPECT_EQ(ReadProblem(folder.Path() / "none"),
            "cannot read " + (folder.Path() / "none").string() + ": No such file or directory");
  EXPECT_THAT(ReadProblem(folder.Path()), HasSubstr("it is a folder"));
  const fs::path pipe = folder.Path() / "pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_THAT(ReadProblem(pipe), HasSubstr("it is a pipe or device"));
  EXPECT_THAT(ReadProblem("/dev/zero"), HasSubstr("it is a pipe or device"));
}

TEST(Files, AppendAddsLines) {
  const TemporaryFolder folder;
  AppendLine(folder.Path() / "log", "one");
  AppendLine(folder.Path() / "log", "");
  AppendLine(folder.Path() / "log", "zwö");
  EXPECT_EQ(ReadFile(folder.Path() / "log"), "one\n\nzwö\n");
  EXPECT_THROW(AppendLine(folder.Path() / "none" / "log", "x"), FileError);
}

TEST(Files, AppendedLinesDoNotMix) {
  const TemporaryFolder folder;
  std::vector<std::thread> threads;
  for (const char letter : {'a', 'b', 'c'}) {
    threads.emplace_back([&folder, letter] {
      for (int i = 0; i < 50; ++i) AppendLine(folder.Path() / "log", std::string(1000, letter));
    });
  }
  for (std::thread& thread : threads) thread.join();
  const std::string log = ReadFile(folder.Path() / "log");
  ASSERT_EQ(log.size(), 150U * 1001);
  for (std::size_t line = 0; line < 150; ++line) {
    const std::string text = log.substr(line * 1001, 1001);
    EXPECT_EQ(text, std::string(1000, text[0]) + '\n');
  }
}

TEST(Files, ReplaceKeepsPermissionsAndLeavesNothingBehind) {
  const TemporaryFolder folder;
  const fs::path file = folder.Path() / "a";
  ReplaceFile(file, "one");
  EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  fs::permissions(file, fs::perms(0640));
  ReplaceFile(file, "two");
  EXPECT_EQ(ReadFile(file), "two");
  EXPECT_EQ(fs::status(file).permissions(), fs::perms(0640));
  EXPECT_EQ(EntryCount(folder.Path()), 1);
}

TEST(Files, ReplaceFollowsSymbolicLinks) {
  const TemporaryFolder folder;
  fs::create_directory(folder.Path() / "real");
  ReplaceFile(folder.Path() / "real" / "a", "one");
  fs::create_symlink("real/a", folder.Path() / "link");
  ReplaceFile(folder.Path() / "link", "two");
  EXPECT_TRUE(fs::is_symlink(folder.Path() / "link"));
  EXPECT_EQ(ReadFile(folder.Path() / "real" / "a"), "two");
}

TEST(Files, ReplaceThatFailsLeavesAllAsItWas) {
  const TemporaryFolder folder;
  EXPECT_THROW(ReplaceFile(folder.Path() / "none" / "a", "x"), FileError);
  fs::create_directory(folder.Path() / "b");
  EXPECT_THROW(ReplaceFile(folder.Path() / "b", "x"), FileError);
  EXPECT_EQ(EntryCount(folder.Path()), 1);
}

}  // namespace
}  // namespace tolvane::platform
