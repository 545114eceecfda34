#include "engine/xlsx/BookLock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

TEST_F(BookLockTest, ThisProcessIsAliveAndAnotherOfItsNumberIsNot) {
  SystemLockWorld world;
  LockHolder self = world.Self();
  EXPECT_TRUE(world.IsRunning(self));
  self.program += "1";
  EXPECT_FALSE(world.IsRunning(self));
}

}  // namespace
}  // namespace tolvane::engine
