#include "engine/xlsx/BookLock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <optional>

#include "platform/Files.h"
#include "platform/TemporaryFolder.h"

namespace tolvane::engine {
namespace {

using ::testing::HasSubstr;

class FakeWorld : public LockWorld {
 public:
  LockHolder self{"Ann", "ann", "home", "05.03.2024 12:30", "tolvane:1:2"};
  bool isRunning = true;
  LockHolder Self() override { return self; }
  bool IsRunning(const LockHolder&) override { return isRunning; }
};

class BookLockTest : public ::testing::Test {
 protected:
  platform::TemporaryFolder folder_;
  std::string book_ = (folder_.Path() / "money, mine.xlsx").string();
  std::filesystem::path file_ = folder_.Path() / ".~lock.money, mine.xlsx#";
  FakeWorld world_;
};

TEST_F(BookLockTest, StandsWhileItIsHeld) {
  {
    const BookLock lock(book_, world_);
    EXPECT_EQ(platform::ReadFile(file_), "Ann,ann,home,05.03.2024 12:30,tolvane:1:2;");
  }
  EXPECT_TRUE(std::filesystem::is_empty(folder_.Path()));
}

TEST_F(BookLockTest, TellsWhoHasTheBookOpen) {
  platform::ReplaceFile(file_, ",bob,office,01.02.2024 08:00,file:///home/bob/.config/libreoffice/4;");
  try {
    const BookLock lock(book_, world_);
    FAIL() << "it is locked";
  } catch (const BookLocked& locked) {
    EXPECT_THAT(locked.what(), HasSubstr("bob on office since 01.02.2024 08:00"));
  }
  world_.isRunning = false;
  EXPECT_THROW(BookLock(book_, world_), BookLocked) << "nobody here knows what runs on another host";
  EXPECT_EQ(platform::ReadFile(file_).substr(0, 4), ",bob");
}

TEST_F(BookLockTest, TakesOverFromTheDead) {
  platform::ReplaceFile(file_, ",ann,home,01.02.2024 08:00,tolvane:99:9;");
  EXPECT_THROW(BookLock(book_, world_), BookLocked);
  world_.isRunning = false;
  {
    const BookLock lock(book_, world_);
    EXPECT_THAT(platform::ReadFile(file_), HasSubstr("tolvane:1:2"));
  }
  EXPECT_TRUE(std::filesystem::is_empty(folder_.Path()));
}

TEST_F(BookLockTest, LeavesTheLockOfOthersAlone) {
  std::optional<BookLock> lock(std::in_place, book_, world_);
  platform::ReplaceFile(file_, ",bob,office,,;");
  lock.reset();
  EXPECT_EQ(platform::ReadFile(file_), ",bob,office,,;");
}

TEST_F(BookLockTest, TextsComeBack) {
  const LockHolder odd{"A, B; C\\", "u", "h,", "", "x"};
  const LockHolder read = ReadLockText(LockText(odd));
  EXPECT_EQ(read.name, odd.name);
  EXPECT_EQ(read.host, odd.host);
  EXPECT_EQ(read.program, odd.program);
  EXPECT_EQ(ReadLockText("").name, "");
}

TEST_F(BookLockTest, ThroughALinkItIsTheSameLock) {
  std::filesystem::create_directory(folder_.Path() / "desk");
  const std::string link = (folder_.Path() / "desk" / "link.xlsx").string();
  std::filesystem::create_symlink(book_, link);
  const BookLock lock(link, world_);
  EXPECT_TRUE(platform::FileExists(file_));
  EXPECT_THROW(BookLock(book_, world_), BookLocked);
}

TEST_F(BookLockTest, WhereNoneCanBeWrittenItSaysSo) {
  EXPECT_THROW(BookLock((folder_.Path() / "none" / "book.xlsx").string(), world_), LockNotWritten);
}

// What this process tells of itself, with one part of "tolvane:PROCESS:START:BOOT:SPACE" changed.
LockHolder SelfWith(std::size_t part, const std::string& changed) {
  LockHolder holder = SystemLockWorld().Self();
  std::size_t at = 0;
  for (std::size_t i = 0; i < part; ++i) at = holder.program.find(':', at) + 1;
  const std::size_t end = std::min(holder.program.find(':', at), holder.program.size());
  holder.program.replace(at, end - at, changed);
  return holder;
}

TEST_F(BookLockTest, ThisProcessIsAliveAndAnotherOfItsNumberIsNot) {
  SystemLockWorld world;
  EXPECT_TRUE(world.IsRunning(world.Self()));
  EXPECT_FALSE(world.IsRunning(SelfWith(2, "1"))) << "one of the same number that is gone";
  EXPECT_FALSE(world.IsRunning(SelfWith(3, "an-earlier-start"))) << "of before the system was started";
  EXPECT_TRUE(world.IsRunning(SelfWith(4, "1"))) << "of another container: nobody knows";
  EXPECT_TRUE(world.IsRunning(SelfWith(1, "x"))) << "unreadable: nobody knows";
}

TEST_F(BookLockTest, AProcessThatEndedIsNotRunning) {
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  const pid_t child = ::fork();
  if (child == 0) {
    const std::string program = SystemLockWorld().Self().program;
    const bool told = ::write(ends[1], program.data(), program.size()) == static_cast<ssize_t>(program.size());
    ::_exit(told ? 0 : 1);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  ASSERT_EQ(status, 0);
  std::array<char, 512> text;
  const ssize_t size = ::read(ends[0], text.data(), text.size());
  ::close(ends[0]);
  ::close(ends[1]);
  LockHolder holder = SystemLockWorld().Self();
  holder.program.assign(text.data(), static_cast<std::size_t>(size));
  EXPECT_FALSE(SystemLockWorld().IsRunning(holder));
}

TEST_F(BookLockTest, ALockOfLibreOfficeFromBeforeTheSystemStartedIsStale) {
  LockHolder holder = SystemLockWorld().Self();
  holder.program = "file:///home/ann/.config/libreoffice/4";
  holder.since = "01.02.2001 08:00";
  EXPECT_FALSE(SystemLockWorld().IsRunning(holder));
}

}  // namespace
}  // namespace tolvane::engine
