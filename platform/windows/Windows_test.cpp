// What stands in this folder, tried on the system that it is for.
#include "platform/windows/Handle.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/Files.h"
#include "platform/Settings.h"
#include "platform/SettingsFile.h"
#include "platform/Text.h"

namespace tolvane::platform {
namespace {

namespace fs = std::filesystem;

// A folder with a name beyond ASCII for one test.
class WindowsTest : public ::testing::Test {
 protected:
  WindowsTest() : folder_(fs::temp_directory_path() / (L"tolvane é東 " + std::to_wstring(GetCurrentProcessId()))) {
    fs::remove_all(folder_);
    fs::create_directories(folder_);
  }
  ~WindowsTest() override {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
  }

  const fs::path folder_;
};

TEST_F(WindowsTest, FilesAreReadReplacedAndAppendedTo) {
  const fs::path file = folder_ / L"Zürich.txt";
  EXPECT_FALSE(FileExists(file));
  EXPECT_THROW(ReadFile(file), FileError);
  EXPECT_THROW(ReadFile(folder_), FileError);
  const std::string content("a\r\nb\0c", 6);
  ReplaceFile(file, content);
  EXPECT_EQ(ReadFile(file), content);
  ReplaceFile(file, "new");
  AppendLine(file, "line");
  EXPECT_EQ(ReadFile(file), "newline\n");
  EXPECT_TRUE(PathFromUtf8(PathToUtf8(file)) == file);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()), 1) << "nothing is left over";
  EXPECT_THROW(ReplaceFile(folder_ / L"none" / L"file", "x"), FileError);
}

TEST_F(WindowsTest, SettingsOutliveTheirStore) {
  const fs::path file = folder_ / L"tolvane" / L"settings.ini";
  FileSettings one(file);
  one.Set("Accounts", "View", "Zoom", "größer");
  FileSettings two(file);
  EXPECT_EQ(two.Find("accounts", "VIEW", "zoom"), "größer");
  two.Set("Accounts", "View", "Zoom", "100");
  EXPECT_EQ(one.Find("Accounts", "View", "Zoom"), "100");
  EXPECT_TRUE(one.Remove("Accounts", "View", "Zoom"));
  EXPECT_EQ(two.Find("Accounts", "View", "Zoom"), std::nullopt);
  EXPECT_FALSE(fs::exists(folder_ / L"tolvane" / L"settings.lock"));
}

TEST_F(WindowsTest, OneAtATimeLocksTheSettings) {
  const fs::path lock = folder_ / L"settings.lock";
  const auto open = [&lock] {
    const HANDLE file = CreateFileW(lock.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS, 0, nullptr);
    if (file != INVALID_HANDLE_VALUE) CloseHandle(file);
    return file != INVALID_HANDLE_VALUE;
  };
  {
    const FolderLock held(folder_);
    EXPECT_FALSE(open());
  }
  EXPECT_TRUE(open());
}

TEST(WindowsTextTest, CaseBeyondAscii) {
  EXPECT_EQ(UpperCase("größe é ÿ ﬁ"), "GRÖSSE É Ÿ FI");
  EXPECT_EQ(LowerCase("ÄÖÜ ŽŁ ЖЯ ẞ"), "äöü žł жя ß");
  EXPECT_TRUE(EqualIgnoringCase("STRASSE", "straße"));
  EXPECT_TRUE(EqualIgnoringCase("STRAẞE", "straße"));
  EXPECT_TRUE(EqualIgnoringCase("ΣΑΣ", "σας"));
  EXPECT_FALSE(EqualIgnoringCase("e", "é"));
  EXPECT_EQ(FoldCase("\xC3\x84\xFF\xC3"), "\xC3\xA4\xFF\xC3") << "bytes that are no UTF-8 stay";
  EXPECT_EQ(UpperCase("😀é"), "😀É");
}

TEST(WindowsTextTest, KindsOfCharacters) {
  for (const char32_t letter : U"aZéßŁЖ東") {
    if (letter != 0) {
      EXPECT_TRUE(IsLetter(letter)) << static_cast<unsigned>(letter);
    }
  }
  for (const char32_t other : U"0 _-€😀") EXPECT_FALSE(IsLetter(other)) << static_cast<unsigned>(other);
  EXPECT_TRUE(IsLetterOrDigit(U'7'));
  EXPECT_EQ(TitleCharacter(U'é'), U'É');
  EXPECT_EQ(FoldCharacter(U'Ж'), U'ж');
  EXPECT_EQ(FoldCharacter(U'ς'), FoldCharacter(U'σ'));
}

}  // namespace
}  // namespace tolvane::platform
