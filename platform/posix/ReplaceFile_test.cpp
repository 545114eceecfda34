#include "platform/ReplaceFile.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <map>
#include <set>

#include "platform/Files.h"
#include "platform/TemporaryFolder.h"

namespace tolvane::platform {
namespace {

namespace fs = std::filesystem;

// Lets the call of one number fail, and counts them.
class FailingCalls : public FileCalls {
 public:
  explicit FailingCalls(int failing, int error = EIO) : failing_(failing), error_(error) {}
  int count() const { return count_; }
  bool canLink = true;  // a disk may know no second names
  bool writesShort = false;

  ssize_t ReadLink(const fs::path& path, char* to, std::size_t most) override {
    return Fails() ? -1 : FileCalls::ReadLink(path, to, most);
  }
  int Stat(const fs::path& path, struct stat& status) override { return Fails() ? -1 : FileCalls::Stat(path, status); }
  int MakeTemporary(std::string& name) override { return Fails() ? -1 : FileCalls::MakeTemporary(name); }
  int Open(const fs::path& path, int flags) override { return Fails() ? -1 : FileCalls::Open(path, flags); }
  int OpenNew(const fs::path& path) override { return Fails() ? -1 : FileCalls::OpenNew(path); }
  ssize_t Read(int file, char* to, std::size_t most) override { return Fails() ? -1 : FileCalls::Read(file, to, most); }
  ssize_t Write(int file, const char* bytes, std::size_t size) override {
    if (Fails()) return -1;
    return FileCalls::Write(file, bytes, writesShort ? (size + 1) / 2 : size);
  }
  int ChangeMode(int file, mode_t mode) override { return Fails() ? -1 : FileCalls::ChangeMode(file, mode); }
  int ChangeOwner(int file, uid_t user, gid_t group) override {
    return Fails() ? -1 : FileCalls::ChangeOwner(file, user, group);
  }
  int Sync(int file) override { return Fails() ? -1 : FileCalls::Sync(file); }
  int Close(int file) override {
    const bool fails = Fails();
    const int result = FileCalls::Close(file);  // a file whose closing fails is closed nonetheless
    return fails ? -1 : result;
  }
  int Link(const fs::path& from, const fs::path& to) override {
    if (Fails()) return -1;
    if (canLink) return FileCalls::Link(from, to);
    errno = EPERM;
    return -1;
  }
  int Rename(const fs::path& from, const fs::path& to) override { return Fails() ? -1 : FileCalls::Rename(from, to); }
  int Unlink(const fs::path& path) override { return Fails() ? -1 : FileCalls::Unlink(path); }

 private:
  bool Fails() {
    if (++count_ != failing_) return false;
    errno = error_;
    return true;
  }
  int failing_;
  int error_;
  int count_ = 0;
};

std::map<std::string, std::string> FilesIn(const fs::path& folder) {
  std::map<std::string, std::string> files;
  for (const auto& entry : fs::directory_iterator(folder))
    files[entry.path().filename().string()] = ReadFile(entry.path());
  return files;
}

TEST(ReplaceFileKeeping, KeepsSoManyGenerations) {
  const TemporaryFolder folder;
  FileCalls calls;
  for (const char* content : {"1", "2", "3", "4", "5"}) {
    EXPECT_EQ(ReplaceFileKeeping(folder.Path() / "book", content, 3, calls), std::nullopt);
  }
  const std::map<std::string, std::string> wanted{
      {"book", "5"}, {"book.bak1", "4"}, {"book.bak2", "3"}, {"book.bak3", "2"}};
  EXPECT_EQ(FilesIn(folder.Path()), wanted);
}

TEST(ReplaceFileKeeping, FinishesWhatWasCutOff) {
  const TemporaryFolder folder;
  ReplaceFile(folder.Path() / "book", "3");
  ReplaceFile(folder.Path() / "book.bak0", "2");  // the power went before it could move up
  ReplaceFile(folder.Path() / "book.bak1", "1");
  FileCalls calls;
  EXPECT_EQ(ReplaceFileKeeping(folder.Path() / "book", "4", 3, calls), std::nullopt);
  const std::map<std::string, std::string> wanted{
      {"book", "4"}, {"book.bak1", "3"}, {"book.bak2", "2"}, {"book.bak3", "1"}};
  EXPECT_EQ(FilesIn(folder.Path()), wanted);
}

TEST(ReplaceFileKeeping, FollowsLinksAlsoToWhatIsNotThereYet) {
  const TemporaryFolder folder;
  fs::create_directory(folder.Path() / "real");
  fs::create_symlink("real/book", folder.Path() / "second");
  fs::create_symlink("second", folder.Path() / "first");
  FileCalls calls;
  ReplaceFileKeeping(folder.Path() / "first", "1", 1, calls);
  ReplaceFileKeeping(folder.Path() / "first", "2", 1, calls);
  EXPECT_TRUE(fs::is_symlink(folder.Path() / "first"));
  EXPECT_EQ(FilesIn(folder.Path() / "real"), (std::map<std::string, std::string>{{"book", "2"}, {"book.bak1", "1"}}));
  fs::create_symlink("circle", folder.Path() / "circle");
  EXPECT_THROW(ReplaceFileKeeping(folder.Path() / "circle", "x", 1, calls), FileError);
}

TEST(ReplaceFileKeeping, KeepsMode) {
  const TemporaryFolder folder;
  ReplaceFile(folder.Path() / "book", "1");
  fs::permissions(folder.Path() / "book", fs::perms(0640));
  FileCalls calls;
  ReplaceFileKeeping(folder.Path() / "book", "2", 1, calls);
  EXPECT_EQ(fs::status(folder.Path() / "book").permissions(), fs::perms(0640));
  EXPECT_EQ(fs::status(folder.Path() / "book.bak1").permissions(), fs::perms(0640));
}

TEST(ReplaceFileKeeping, WritesInPiecesWhereTheSystemTakesNoMore) {
  const TemporaryFolder folder;
  FailingCalls calls(0);
  calls.writesShort = true;
  ReplaceFileKeeping(folder.Path() / "book", std::string(100000, 'x'), 1, calls);
  EXPECT_EQ(ReadFile(folder.Path() / "book"), std::string(100000, 'x'));
}

// Every system call fails once: the book is the old one or the new one, and nothing lies beside it but backups.
void FailEach(bool canLink, int error) {
  int calls = 0;
  int thrown = 0;
  for (int failing = 1;; ++failing) {
    const TemporaryFolder folder;
    const fs::path book = folder.Path() / "book";
    ReplaceFile(book, "old");
    ReplaceFile(folder.Path() / "book.bak1", "older");
    fs::permissions(book, fs::perms(0644));
    FailingCalls failingCalls(failing, error);
    failingCalls.canLink = canLink;
    std::optional<std::string> warning;
    bool failed = false;
    try {
      warning = ReplaceFileKeeping(book, "new", 2, failingCalls);
    } catch (const FileError&) {
      failed = true;
      ++thrown;
    }
    const auto files = FilesIn(folder.Path());
    const std::string now = files.at("book");
    EXPECT_TRUE(now == "old" || now == "new") << now;
    if (!failed) {
      EXPECT_EQ(now, "new");
    }
    EXPECT_EQ(fs::status(book).permissions(), fs::perms(0644));
    for (const auto& [name, content] : files) {
      EXPECT_TRUE((std::set<std::string>{"book", "book.bak1", "book.bak2"}.contains(name)))
          << name << " after call " << failing;
    }
    // The version before is still somewhere, unless we were told.
    if (now == "new" && !warning) {
      EXPECT_EQ(files.at("book.bak1"), "old") << failing;
    }
    EXPECT_EQ(files.contains("book.bak1") || files.contains("book.bak2"), true) << failing;
    calls = failingCalls.count();
    if (failing > calls) break;
  }
  EXPECT_GT(calls, 14);
  EXPECT_GT(thrown, 6);
}

TEST(ReplaceFileKeeping, IsOldOrNewWhicheverCallFails) {
  FailEach(true, EIO);
  FailEach(true, ENOSPC);
}

TEST(ReplaceFileKeeping, IsOldOrNewOnDisksWithoutSecondNamesToo) {
  FailEach(false, EIO);
}

}  // namespace
}  // namespace tolvane::platform
