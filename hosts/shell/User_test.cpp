#include "hosts/shell/User.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "src/host/Form.h"
#include "testing/HostErrors.h"
#include "testing/ScriptedDesk.h"

namespace tolvane::shell {
namespace {

using host::ErrorNumber;
using host::MessageResult;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class UserTest : public ::testing::Test {
 protected:
  testing::ScriptedDesk desk_;
  std::optional<std::string> clipboard_;
  bool esc_ = false;
  std::vector<std::string> log_;
  std::shared_ptr<User> body_ = std::make_shared<User>(User::Surroundings{
      .gate = std::make_shared<host::Gate>(),
      .desk = desk_,
      .clipboardHasText = [this] { return clipboard_.has_value(); },
      .clipboardText = [this] { return *clipboard_; },
      .takeEsc = [this] { return std::exchange(esc_, false); },
      .formShown = [this] { log_.push_back("shown"); },
      .formGone = [this] { log_.push_back("gone"); },
  });
  host::User user_{body_};
};

TEST_F(UserTest, QuestionsGoToTheDesk) {
  desk_.Answer(MessageResult::Yes, "Sure?");
  desk_.AnswerOpenFilename("/in.ofx");
  desk_.AnswerSaveAsFilename(std::nullopt);
  desk_.PressKey(65);
  EXPECT_EQ(user_.MsgBox("Sure?", host::message::kYesNo, "Title"), MessageResult::Yes);
  EXPECT_EQ(user_.GetOpenFilename({.title = "Open", .filters = {}}), "/in.ofx");
  EXPECT_EQ(user_.GetSaveAsFilename({.title = "Save", .filters = {}}), std::nullopt);
  EXPECT_EQ(user_.PeekKey(), 65);
  EXPECT_EQ(user_.PeekKey(), std::nullopt);
  user_.OpenBrowser("http://example.org/");
  user_.ShowHelp("help.html", 7);
  EXPECT_THAT(desk_.Log(), ElementsAre("message \"Sure?\" (Title, 4): Yes", "open file \"Open\": /in.ofx",
                                       "save file as \"Save\": cancelled", "browser http://example.org/",
                                       "help help.html, topic 7"));
}

TEST_F(UserTest, TheMachineIsTheDesks) {
  desk_.PutPicture("logo", {"bytes"});
  desk_.PutPage("http://example.org/", "page");
  EXPECT_EQ(user_.Now(), testing::ScriptedDesk::kStart);
  user_.SaveSetting("App", "Section", "Key", "value");
  EXPECT_EQ(user_.Setting("app", "section", "key"), "value");
  EXPECT_EQ(user_.Setting("App", "Section", "Other"), std::nullopt);
  EXPECT_EQ(user_.HttpGet("http://example.org/"), "page");
  EXPECT_EQ(user_.LoadPicture("logo"), host::Picture{"bytes"});
  user_.AppendLine("/log", "one");
  user_.AppendLine("/log", "two");
  EXPECT_TRUE(user_.FileExists("/log"));
  EXPECT_EQ(user_.ReadFile("/log"), "one\r\ntwo\r\n");
  EXPECT_HOST_ERROR(user_.ReadFile("/none"), ErrorNumber::FileNotFound);
}

TEST_F(UserTest, EscComesFromTheProgramOrFromTheDesk) {
  EXPECT_FALSE(user_.EscPressed());
  esc_ = true;
  EXPECT_TRUE(user_.EscPressed());
  EXPECT_FALSE(user_.EscPressed());
  desk_.PressEscAtPoll(2);
  EXPECT_FALSE(user_.EscPressed());
  EXPECT_TRUE(user_.EscPressed());
  EXPECT_FALSE(user_.EscPressed());
  desk_.PressEscAtPoll();
  esc_ = true;
  EXPECT_TRUE(user_.EscPressed());
  EXPECT_FALSE(user_.EscPressed()) << "one press counts once";
}

TEST_F(UserTest, TheClipboardIsTheProgramsOwn) {
  EXPECT_FALSE(user_.ClipboardHasText());
  EXPECT_HOST_ERROR(user_.ClipboardText(), ErrorNumber::ApplicationDefined);
  clipboard_ = "a\tb\r\n";
  EXPECT_TRUE(user_.ClipboardHasText());
  EXPECT_EQ(user_.ClipboardText(), "a\tb\r\n");
}

TEST_F(UserTest, TheOutermostFormIsTold) {
  host::Form outer("FOuter", "Outer");
  host::Form inner("FInner", "Inner");
  desk_.OnForm("FOuter", [&](host::Form& form) {
    EXPECT_EQ(body_->FormDepth(), 1);
    user_.ShowForm(inner);
    EXPECT_EQ(body_->FormDepth(), 1);
    form.UserClose();
  });
  desk_.OnForm("FInner", [&](host::Form& form) {
    EXPECT_EQ(body_->FormDepth(), 2);
    form.UserClose();
  });
  user_.ShowForm(outer);
  EXPECT_EQ(body_->FormDepth(), 0);
  EXPECT_THAT(log_, ElementsAre("shown", "gone"));
}

TEST_F(UserTest, AFormThatFailsIsGone) {
  host::Form form("FForm", "Form");
  EXPECT_THROW(user_.ShowForm(form), testing::ScriptError);
  EXPECT_FALSE(form.IsShown());
  EXPECT_EQ(body_->FormDepth(), 0);
  EXPECT_THAT(log_, ElementsAre("shown", "gone"));
}

TEST_F(UserTest, HandlesAreDeadWhenTheProgramIsGone) {
  body_->Close();
  EXPECT_FALSE(user_.IsAlive());
  EXPECT_HOST_ERROR(user_.Now(), ErrorNumber::ObjectRequired);
  EXPECT_HOST_ERROR(user_.MsgBox("", 0, ""), ErrorNumber::ObjectRequired);
  EXPECT_THAT(desk_.Log(), IsEmpty());
}

}  // namespace
}  // namespace tolvane::shell
