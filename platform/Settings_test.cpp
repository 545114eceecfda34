#include "platform/Settings.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <chrono>
#include <cstdlib>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

#include "platform/Files.h"
#include "platform/TemporaryFolder.h"

namespace tolvane::platform {
namespace {

namespace fs = std::filesystem;

// Gives an environment variable a value (or none) for one test.
class EnvironmentVariable {
 public:
  EnvironmentVariable(const char* name, const char* value) : name_(name) {
    if (const char* old = std::getenv(name)) old_ = old;
    Put(value);
  }
  ~EnvironmentVariable() { Put(old_ ? old_->c_str() : nullptr); }
  EnvironmentVariable(const EnvironmentVariable&) = delete;
  EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

 private:
  void Put(const char* value) {
    if (value != nullptr) {
      ::setenv(name_, value, 1);
    } else {
      ::unsetenv(name_);
    }
  }

  const char* name_;
  std::optional<std::string> old_;
};

// What holds for every store.
class AnySettings : public testing::TestWithParam<bool> {
 protected:
  AnySettings() {
    if (GetParam()) {
      settings_ = std::make_unique<FileSettings>(folder_.Path() / "made" / "settings.ini");
    } else {
      settings_ = std::make_unique<MemorySettings>();
    }
  }

  TemporaryFolder folder_;
  std::unique_ptr<Settings> settings_;
};

INSTANTIATE_TEST_SUITE_P(Stores, AnySettings, testing::Values(false, true),
                         [](const auto& store) { return store.param ? "File" : "Memory"; });

TEST_P(AnySettings, GivesTheDefaultUntilSet) {
  EXPECT_EQ(settings_->Get("App", "Window", "Left", "50"), "50");
  settings_->Set("App", "Window", "Left", "70");
  EXPECT_EQ(settings_->Get("App", "Window", "Left", "50"), "70");
  settings_->Set("App", "Window", "Left", "");
  EXPECT_EQ(settings_->Get("App", "Window", "Left", "50"), "");
}

TEST_P(AnySettings, TellsApplicationsSectionsAndKeysApart) {
  settings_->Set("A", "B", "C", "1");
  settings_->Set("A/B", "", "C", "2");
  settings_->Set("A", "B/C", "", "3");
  settings_->Set("A", "B", "C=", "4");
  settings_->Set("A", "B", "", "5");
  EXPECT_EQ(settings_->Get("A", "B", "C", ""), "1");
  EXPECT_EQ(settings_->Get("A/B", "", "C", ""), "2");
  EXPECT_EQ(settings_->Get("A", "B/C", "", ""), "3");
  EXPECT_EQ(settings_->Get("A", "B", "C=", ""), "4");
  EXPECT_EQ(settings_->Get("A", "B", "", ""), "5");
}

TEST_P(AnySettings, NamesAreEqualIgnoringCase) {
  settings_->Set("App", "Straße", "Key", "Value");
  EXPECT_EQ(settings_->Get("APP", "STRASSE", "key", ""), "Value");
  settings_->Set("aPP", "strasse", "KEY", "other");
  EXPECT_EQ(settings_->Get("App", "Straße", "Key", ""), "other");
}

TEST_P(AnySettings, RemovesOneSetting) {
  EXPECT_FALSE(settings_->Remove("A", "B", "C"));
  settings_->Set("A", "B", "C", "1");
  settings_->Set("A", "B", "D", "2");
  EXPECT_TRUE(settings_->Remove("a", "b", "c"));
  EXPECT_FALSE(settings_->Remove("A", "B", "C"));
  EXPECT_EQ(settings_->Get("A", "B", "C", "none"), "none");
  EXPECT_EQ(settings_->Get("A", "B", "D", "none"), "2");
}

TEST_P(AnySettings, RefusesTextThatIsNotUtf8) {
  EXPECT_THROW(settings_->Set("A", "B", "C", "\xFF"), std::invalid_argument);
  EXPECT_THROW(settings_->Set("\xFF", "B", "C", ""), std::invalid_argument);
  EXPECT_THROW(settings_->Get("A", "\xFF", "C", ""), std::invalid_argument);
  EXPECT_THROW(settings_->Remove("A", "B", "\xFF"), std::invalid_argument);
  EXPECT_EQ(settings_->Get("A", "B", "C", "none"), "none");
}

TEST_P(AnySettings, KeepsAnyCharacters) {
  EXPECT_TRUE(rc::check([this] {
    const auto piece = rc::gen::element<std::string>("a", "B", " ", "\t", "\r", "\n", "\\", "\\n", "\\x41", "=", "[",
                                                     "]", "/", ";", "#", std::string(1, '\0'), "\x7F", "\uFEFF", "é");
    const auto text = rc::gen::map(rc::gen::container<std::vector<std::string>>(piece), [](const auto& all) {
      std::string joined;
      for (const std::string& one : all) joined += one;
      return joined;
    });
    const std::string application = *text;
    const std::string section = *text;
    const std::string key = *text;
    const std::string value = *text;
    settings_->Set(application, section, key, value);
    RC_ASSERT(settings_->Get(application, section, key, value + "?") == value);
  }));
}

class FileSettingsTest : public testing::Test {
 protected:
  std::string Content() const { return ReadFile(file_); }

  TemporaryFolder folder_;
  fs::path file_ = folder_.Path() / "settings.ini";
};

TEST_F(FileSettingsTest, WritesAReadableFile) {
  FileSettings settings(file_);
  settings.Set("App", "Window", "Left", "50");
  settings.Set("App", "Größe", "a=b", " C:\\x\n");
  settings.Set("app", "window", "Top", "60");
  EXPECT_EQ(Content(), "[App/Window]\nLeft=50\nTop=60\n[App/Größe]\na\\x3Db=\\x20C:\\\\x\\n\n");
}

TEST_F(FileSettingsTest, IsReadByTheNextProgram) {
  FileSettings(file_).Set("A", "B", "C", "1\n2");
  EXPECT_EQ(FileSettings(file_).Get("A", "B", "C", ""), "1\n2");
}

TEST_F(FileSettingsTest, SeesWhatOthersChange) {
  FileSettings mine(file_);
  FileSettings theirs(file_);
  EXPECT_EQ(mine.Get("A", "B", "C", "none"), "none");
  for (const std::string value : {"1", "2", "3"}) {
    theirs.Set("A", "B", "C", value);
    EXPECT_EQ(mine.Get("A", "B", "C", "none"), value);
  }
  theirs.Remove("A", "B", "C");
  EXPECT_EQ(mine.Get("A", "B", "C", "none"), "none");
}

TEST_F(FileSettingsTest, KeepsWhatItDoesNotUnderstand) {
  const std::string lost = "= lost\n[broken\nKey=not below App\n[no slash]\nKey=2\n[a/b/c]\nKey=3\n";
  const std::string text = "\xEF\xBB\xBF; mine\r\nstray=1\n" + lost +
                           "[App/Main]\r\n# note\n  Key = old \r\nno equals sign\nbad=\\q\nbad=\\x4\nbad=\\xFF\n"
                           "raw=\xFF\n\n[Other/Main]\nKey=6";
  ReplaceFile(file_, text);
  FileSettings settings(file_);
  EXPECT_EQ(settings.Get("App", "Main", "Key", ""), "old");
  EXPECT_EQ(settings.Get("App", "Main", "bad", "none"), "none");
  EXPECT_EQ(settings.Get("App", "Main", "raw", "none"), "none");
  EXPECT_EQ(settings.Get("Other", "Main", "Key", ""), "6");

  settings.Set("App", "Main", "Key", "new");
  settings.Set("App", "Main", "More", "7");
  std::string expected = text + "\n";
  expected.replace(expected.find("  Key = old \r"), 13, "Key=new");
  expected.insert(expected.find("\n\n[Other") + 1, "More=7\n");
  EXPECT_EQ(Content(), expected);
}

TEST_F(FileSettingsTest, AByteOrderMarkStaysBeforeTheFirstHeading) {
  ReplaceFile(file_, "\xEF\xBB\xBF[A/B]\nC=1\n");
  FileSettings settings(file_);
  EXPECT_EQ(settings.Get("A", "B", "C", ""), "1");
  settings.Set("A", "B", "D", "2");
  EXPECT_EQ(Content(), "\xEF\xBB\xBF[A/B]\nC=1\nD=2\n");
}

TEST_F(FileSettingsTest, TheLastOfTwoCounts) {
  ReplaceFile(file_, "[A/B]\nC=1\nc=2\n[X/Y]\n[a/b]\nC=3\n");
  FileSettings settings(file_);
  EXPECT_EQ(settings.Get("A", "B", "C", ""), "3");
  settings.Set("A", "B", "C", "4");
  EXPECT_EQ(Content(), "[A/B]\nC=1\nc=2\n[X/Y]\n[a/b]\nC=4\n");
  EXPECT_TRUE(settings.Remove("A", "B", "C"));
  EXPECT_EQ(Content(), "[A/B]\n[X/Y]\n[a/b]\n");
}

TEST_F(FileSettingsTest, IsForItsUserOnlyAndLeavesNothingBehind) {
  FileSettings(file_).Set("A", "B", "C", "1");
  EXPECT_EQ(fs::status(file_).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_.Path()), {}), 1);
}

TEST_F(FileSettingsTest, DoesNotWriteWhatIsThere) {
  FileSettings settings(file_);
  settings.Set("A", "B", "C", "1");
  const fs::file_time_type old = fs::file_time_type() + std::chrono::hours(1);
  fs::last_write_time(file_, old);
  settings.Set("A", "B", "C", "1");
  EXPECT_FALSE(settings.Remove("A", "B", "D"));
  EXPECT_EQ(fs::last_write_time(file_), old);
}

TEST_F(FileSettingsTest, ChangesOfSeveralThreadsAllArrive) {
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 3; ++thread) {
    threads.emplace_back([this, thread] {
      FileSettings settings(file_);
      for (int i = 0; i < 10; ++i) settings.Set("A", std::to_string(thread), std::to_string(i), "x");
    });
  }
  for (std::thread& thread : threads) thread.join();
  const FileSettings settings(file_);
  for (int thread = 0; thread < 3; ++thread) {
    for (int i = 0; i < 10; ++i) EXPECT_EQ(settings.Get("A", std::to_string(thread), std::to_string(i), ""), "x");
  }
}

TEST_F(FileSettingsTest, SaysWhatIsWrong) {
  fs::create_directory(file_);
  FileSettings folder(file_);
  EXPECT_THROW(folder.Get("A", "B", "C", ""), FileError);
  EXPECT_THROW(folder.Set("A", "B", "C", ""), FileError);
  EXPECT_THROW(folder.Remove("A", "B", "C"), FileError);
  EXPECT_TRUE(fs::is_directory(file_));

  ReplaceFile(folder_.Path() / "file", "");
  FileSettings below(folder_.Path() / "file" / "settings.ini");
  EXPECT_EQ(below.Get("A", "B", "C", "none"), "none");
  EXPECT_THROW(below.Set("A", "B", "C", ""), FileError);
}

TEST(UserSettingsFile, FollowsTheEnvironment) {
  const EnvironmentVariable home("HOME", "/home/ann");
  {
    const EnvironmentVariable configHome("XDG_CONFIG_HOME", "/etc/ann");
    EXPECT_EQ(UserSettingsFile(), "/etc/ann/tolvane/settings.ini");
  }
  {
    const EnvironmentVariable configHome("XDG_CONFIG_HOME", "relative");
    EXPECT_EQ(UserSettingsFile(), "/home/ann/.config/tolvane/settings.ini");
  }
  const EnvironmentVariable configHome("XDG_CONFIG_HOME", nullptr);
  EXPECT_EQ(UserSettingsFile(), "/home/ann/.config/tolvane/settings.ini");
  const EnvironmentVariable noHome("HOME", nullptr);
  EXPECT_THROW(UserSettingsFile(), FileError);
}

}  // namespace
}  // namespace tolvane::platform
