#include "platform/ReplaceFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <map>
#include <set>

#include "platform/Files.h"
#include "platform/SideFile.h"
#include "platform/TemporaryFolder.h"

namespace tolvane::platform {
namespace {

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::HasSubstr;

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
  int AccessForWriting(const fs::path& path) override { return Fails() ? -1 : FileCalls::AccessForWriting(path); }
  int TryLock(int file) override { return Fails() ? -1 : FileCalls::TryLock(file); }
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
    EXPECT_EQ(ReplaceFileKeeping(folder.Path() / "book", content, {.backups = 3}, calls), std::nullopt);
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
  EXPECT_EQ(ReplaceFileKeeping(folder.Path() / "book", "4", {.backups = 3}, calls), std::nullopt);
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
  ReplaceFileKeeping(folder.Path() / "first", "1", {.backups = 1}, calls);
  ReplaceFileKeeping(folder.Path() / "first", "2", {.backups = 1}, calls);
  EXPECT_TRUE(fs::is_symlink(folder.Path() / "first"));
  EXPECT_EQ(FilesIn(folder.Path() / "real"), (std::map<std::string, std::string>{{"book", "2"}, {"book.bak1", "1"}}));
  fs::create_symlink("circle", folder.Path() / "circle");
  EXPECT_THROW(ReplaceFileKeeping(folder.Path() / "circle", "x", {.backups = 1}, calls), FileError);
}

TEST(ReplaceFileKeeping, KeepsMode) {
  const TemporaryFolder folder;
  ReplaceFile(folder.Path() / "book", "1");
  fs::permissions(folder.Path() / "book", fs::perms(0640));
  FileCalls calls;
  ReplaceFileKeeping(folder.Path() / "book", "2", {.backups = 1}, calls);
  EXPECT_EQ(fs::status(folder.Path() / "book").permissions(), fs::perms(0640));
  EXPECT_EQ(fs::status(folder.Path() / "book.bak1").permissions(), fs::perms(0640));
}

TEST(ReplaceFileKeeping, WritesInPiecesWhereTheSystemTakesNoMore) {
  const TemporaryFolder folder;
  FailingCalls calls(0);
  calls.writesShort = true;
  ReplaceFileKeeping(folder.Path() / "book", std::string(100000, 'x'), {.backups = 1}, calls);
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
      warning = ReplaceFileKeeping(book, "new", {.backups = 2}, failingCalls);
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
    std::set<std::string> known{"book", "book.bak1", "book.bak2"};
    if (warning) known.insert("book.bak0");
    for (const auto& [name, content] : files) {
      EXPECT_TRUE(known.contains(name)) << name << " after call " << failing;
    }
    if (now == "new") {
      EXPECT_TRUE(std::any_of(files.begin(), files.end(), [](const auto& file) { return file.second == "old"; }))
          << failing;
    }
    EXPECT_EQ(files.contains("book.bak1") || files.contains("book.bak2"), true) << failing;
    calls = failingCalls.count();
    if (failing > calls) break;
  }
  EXPECT_GT(calls, 14);
  EXPECT_GT(thrown, 6);
}

std::string ProblemWith(const fs::path& book, const ReplaceOptions& options, FileCalls& calls) {
  try {
    ReplaceFileKeeping(book, "new", options, calls);
  } catch (const FileError& error) {
    return error.what();
  }
  return "none";
}

TEST(ReplaceFileKeeping, KeepsOwner) {
  if (::geteuid() != 0) GTEST_SKIP() << "only the superuser may give files away";
  const TemporaryFolder folder;
  const fs::path book = folder.Path() / "book";
  ReplaceFile(book, "1");
  ASSERT_EQ(::chown(book.c_str(), 12345, 23456), 0);
  FileCalls calls;
  ReplaceFileKeeping(book, "2", {.backups = 1}, calls);
  struct stat status = {};
  ASSERT_EQ(::stat(book.c_str(), &status), 0);
  EXPECT_EQ(status.st_uid, 12345u);
  EXPECT_EQ(status.st_gid, 23456u);
}

TEST(ReplaceFileKeeping, PutsInOrderWhatAKilledProcessLeft) {
  const TemporaryFolder folder;
  const fs::path book = folder.Path() / "book";
  ReplaceFile(book, "2");
  ReplaceFile(folder.Path() / "book.bak1", "1");
  fs::create_hard_link(book, folder.Path() / "book.bak0");  // killed before the new file took the name over
  ReplaceFile(folder.Path() / ".~save.book#abc123", "hal");
  ReplaceFile(folder.Path() / ".~save.book2#abc123", "of another book");
  FileCalls calls;
  const SideFile another(book, calls);  // of a process that lives
  ReplaceFileKeeping(book, "3", {.backups = 3}, calls);
  const std::map<std::string, std::string> wanted{{"book", "3"},
                                                  {"book.bak1", "2"},
                                                  {"book.bak2", "1"},
                                                  {".~save.book2#abc123", "of another book"},
                                                  {fs::path(another.name()).filename().string(), ""}};
  EXPECT_EQ(FilesIn(folder.Path()), wanted);
}

TEST(ReplaceFileKeeping, LeavesAFileAloneThatAnotherProgramHasChanged) {
  const TemporaryFolder folder;
  const fs::path book = folder.Path() / "book";
  FileCalls calls;
  std::optional<FileStamp> seen;
  ReplaceFileKeeping(book, "1", {.seen = &seen}, calls);
  EXPECT_EQ(seen, StampOf(book));
  EXPECT_EQ(ProblemWith(book, {.seen = &seen}, calls), "none");
  ReplaceFile(book, "theirs");
  EXPECT_THAT(ProblemWith(book, {.backups = 1, .seen = &seen}, calls), HasSubstr("Save under another name"));
  EXPECT_EQ(FilesIn(folder.Path()), (std::map<std::string, std::string>{{"book", "theirs"}}));
  // One that is gone takes nothing with it.
  fs::remove(book);
  EXPECT_EQ(ProblemWith(book, {.seen = &seen}, calls), "none");
}

// Changes the file while its replacement is being written.
class MeddlingCalls : public FileCalls {
 public:
  explicit MeddlingCalls(fs::path book) : book_(std::move(book)) {}
  int Sync(int file) override {
    ReplaceFile(book_, "theirs");
    return FileCalls::Sync(file);
  }

 private:
  fs::path book_;
};

TEST(ReplaceFileKeeping, NoticesAChangeDuringTheWritingToo) {
  const TemporaryFolder folder;
  const fs::path book = folder.Path() / "book";
  ReplaceFile(book, "1");
  std::optional<FileStamp> seen = StampOf(book);
  MeddlingCalls calls(book);
  EXPECT_THAT(ProblemWith(book, {.backups = 1, .seen = &seen}, calls), HasSubstr("another program has changed it"));
  EXPECT_EQ(FilesIn(folder.Path()), (std::map<std::string, std::string>{{"book", "theirs"}}));
}

// The system as another user meets it.
class Refusing : public FileCalls {
 public:
  int access = 0;
  int making = 0;
  int writing = 0;
  int AccessForWriting(const fs::path& path) override {
    return access == 0 ? FileCalls::AccessForWriting(path) : No(access);
  }
  int MakeTemporary(std::string& name) override { return making == 0 ? FileCalls::MakeTemporary(name) : No(making); }
  ssize_t Write(int file, const char* bytes, std::size_t size) override {
    return writing == 0 ? FileCalls::Write(file, bytes, size) : No(writing);
  }

 private:
  static int No(int error) {
    errno = error;
    return -1;
  }
};

TEST(ReplaceFileKeeping, SaysWhyAndWhatToDo) {
  const TemporaryFolder folder;
  const fs::path book = folder.Path() / "book";
  ReplaceFile(book, "old");
  Refusing readOnlyFile;
  readOnlyFile.access = EACCES;
  EXPECT_THAT(ProblemWith(book, {}, readOnlyFile), AllOf(HasSubstr("Permission denied"), HasSubstr("another folder")));
  Refusing readOnlyDisk;
  readOnlyDisk.making = EROFS;
  EXPECT_THAT(ProblemWith(book, {}, readOnlyDisk), AllOf(HasSubstr("Read-only"), HasSubstr("another folder")));
  Refusing full;
  full.writing = ENOSPC;
  EXPECT_THAT(ProblemWith(book, {.backups = 1}, full),
              AllOf(HasSubstr("No space left"), HasSubstr("Make room"), HasSubstr("has not been changed")));
  EXPECT_EQ(FilesIn(folder.Path()), (std::map<std::string, std::string>{{"book", "old"}}));
  FileCalls calls;
  EXPECT_THAT(ProblemWith(folder.Path() / "none" / "book", {}, calls), HasSubstr("Make the folder first"));
  EXPECT_THAT(ProblemWith(folder.Path(), {}, calls), HasSubstr("directory"));
}

// The system's own limit stops the writing in the middle: a file that is cut off never takes the name over.
TEST(ReplaceFileKeeping, AHalfWrittenFileIsNoBook) {
  const TemporaryFolder folder;
  const fs::path book = folder.Path() / "book";
  ReplaceFile(book, "old");
  const auto before = std::signal(SIGXFSZ, SIG_IGN);
  rlimit limit = {};
  ::getrlimit(RLIMIT_FSIZE, &limit);
  const rlimit lower{4096, limit.rlim_max};
  ::setrlimit(RLIMIT_FSIZE, &lower);
  FileCalls calls;
  std::string problem = "none";
  try {
    ReplaceFileKeeping(book, std::string(10000, 'x'), {.backups = 1}, calls);
  } catch (const FileError& error) {
    problem = error.what();
  }
  ::setrlimit(RLIMIT_FSIZE, &limit);
  std::signal(SIGXFSZ, before);
  EXPECT_THAT(problem, HasSubstr("File too large"));
  EXPECT_EQ(FilesIn(folder.Path()), (std::map<std::string, std::string>{{"book", "old"}}));
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
