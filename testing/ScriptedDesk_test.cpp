#include "testing/ScriptedDesk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "src/host/Form.h"
#include "testing/HostErrors.h"

namespace tolvane::testing {
namespace {

using host::ErrorNumber;
using host::MessageResult;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
namespace message = host::message;

class FQuantity : public host::Form {
 public:
  FQuantity() : Form("FQuantity", "How many?") {
    cmdOK.OnClick = [this] { Hide(); };
  }
  host::TextBox& txtQuantity = Add<host::TextBox>("txtQuantity");
  host::Button& cmdOK = Add<host::Button>("cmdOK", "OK");
};

TEST(ScriptedDesk, AnswersComeInTheirOrder) {
  ScriptedDesk desk;
  desk.Answer(MessageResult::Yes, "First?");
  desk.Answer(MessageResult::No);
  desk.AnswerOpenFilename("/a");
  desk.AnswerSaveAsFilename(std::nullopt);
  EXPECT_THAT(desk.Leftovers(),
              ElementsAre("message \"First?\": Yes", "message: No", "open file: /a", "save file as: cancelled"));
  EXPECT_EQ(desk.MsgBox("First?", message::kYesNo + message::kQuestion, "T"), MessageResult::Yes);
  EXPECT_EQ(desk.MsgBox("Second?", message::kYesNoCancel, "T"), MessageResult::No);
  EXPECT_EQ(desk.GetOpenFilename({.title = "Open", .filters = {}}), "/a");
  EXPECT_EQ(desk.GetSaveAsFilename({.title = "Save", .filters = {}}), std::nullopt);
  EXPECT_THAT(desk.Leftovers(), IsEmpty());
  EXPECT_THAT(desk.Log(), ElementsAre("message \"First?\" (T, 36): Yes", "message \"Second?\" (T, 3): No",
                                      "open file \"Open\": /a", "save file as \"Save\": cancelled"));
}

TEST(ScriptedDesk, QuestionsThatNoAnswerFitsAreErrorsAndAreKept) {
  ScriptedDesk desk;
  EXPECT_THROW(desk.MsgBox("Why?", message::kOkOnly, "T"), ScriptError);
  EXPECT_THROW(desk.GetOpenFilename({}), ScriptError);
  desk.Answer(MessageResult::Ok, "This");
  EXPECT_THROW(desk.MsgBox("That", message::kOkOnly, "T"), ScriptError);
  EXPECT_THROW(desk.MsgBox("This", message::kYesNo, "T"), ScriptError);
  EXPECT_THROW(desk.GetSaveAsFilename({}), ScriptError);
  EXPECT_THAT(
      desk.Unanswered(),
      ElementsAre("no answer to message \"Why?\" (T, 0)", "no answer to open file \"\"",
                  "no answer to message \"That\" (T, 0); the next, for message \"This\": OK, expects another text",
                  "no answer to message \"This\" (T, 4); the next, for message \"This\": OK, presses a button "
                  "that it does not have",
                  "no answer to save file as \"\"; the next is for message \"This\": OK"));
  EXPECT_EQ(desk.MsgBox("This", message::kOkCancel, "T"), MessageResult::Ok) << "the answer still waits";
  EXPECT_THAT(desk.Log(), ElementsAre("message \"This\" (T, 1): OK"));
}

TEST(ScriptedDesk, EveryButtonSetHasItsButtons) {
  const auto accepts = [](int style, MessageResult button) {
    ScriptedDesk desk;
    desk.Answer(button);
    try {
      desk.MsgBox("?", style, "T");
      return true;
    } catch (const ScriptError&) {
      return false;
    }
  };
  const auto accepted = [&](int style) {
    std::string buttons;
    if (accepts(style, MessageResult::Ok)) buttons += "o";
    if (accepts(style, MessageResult::Cancel)) buttons += "c";
    if (accepts(style, MessageResult::Yes)) buttons += "y";
    if (accepts(style, MessageResult::No)) buttons += "n";
    return buttons;
  };
  EXPECT_EQ(accepted(message::kOkOnly + message::kInformation), "o");
  EXPECT_EQ(accepted(message::kOkCancel + message::kCritical), "oc");
  EXPECT_EQ(accepted(message::kYesNoCancel + message::kQuestion), "cyn");
  EXPECT_EQ(accepted(message::kYesNo + message::kExclamation + message::kDefaultButton2), "yn");
}

TEST(ScriptedDesk, AFormIsWorkedOnByItsScript) {
  ScriptedDesk desk;
  FQuantity form;
  desk.OnForm("FQuantity", [](host::Form& shown) {
    EXPECT_TRUE(shown.IsShown());
    shown.Get<host::TextBox>("txtQuantity").UserType("7");
    shown.Get<host::Button>("cmdOK").UserClick();
  });
  desk.ShowForm(form);
  EXPECT_EQ(form.txtQuantity.Text(), "7");
  EXPECT_THAT(desk.Log(), ElementsAre("form FQuantity \"How many?\""));
}

TEST(ScriptedDesk, AFormNeverStaysUp) {
  ScriptedDesk desk;
  FQuantity form;
  EXPECT_THROW(desk.ShowForm(form), ScriptError);
  EXPECT_FALSE(form.IsShown());
  desk.OnForm("FOther", [](host::Form&) {});
  EXPECT_THROW(desk.ShowForm(form), ScriptError);
  EXPECT_THAT(desk.Unanswered().back(), HasSubstr("form FOther, expects another form"));

  ScriptedDesk lazy;
  lazy.OnForm("FQuantity", [](host::Form&) {});
  EXPECT_THROW(lazy.ShowForm(form), ScriptError);
  EXPECT_FALSE(form.IsShown());
  lazy.OnForm("FQuantity", [](host::Form&) { throw std::runtime_error("stumbles"); });
  EXPECT_THROW(lazy.ShowForm(form), std::runtime_error);
  EXPECT_FALSE(form.IsShown());
}

TEST(ScriptedDesk, AFormThatHidesWhileItLoadsNeedsNoScript) {
  ScriptedDesk desk;
  FQuantity form;
  form.OnLoad = [&] { form.Hide(); };
  desk.ShowForm(form);
  EXPECT_THAT(desk.Log(), ElementsAre("form FQuantity \"How many?\" went before it was seen"));
}

TEST(ScriptedDesk, KeysAndEsc) {
  ScriptedDesk desk;
  desk.PressKey(27);
  desk.PressEscAtPoll(3);
  EXPECT_THAT(desk.Leftovers(), ElementsAre("key 27", "Esc at poll 3"));
  EXPECT_EQ(desk.PeekKey(), 27);
  EXPECT_EQ(desk.PeekKey(), std::nullopt);
  EXPECT_FALSE(desk.EscPressed());
  EXPECT_FALSE(desk.EscPressed());
  EXPECT_TRUE(desk.EscPressed());
  EXPECT_FALSE(desk.EscPressed());
  EXPECT_EQ(desk.EscPolls(), 4);
  EXPECT_THAT(desk.Leftovers(), IsEmpty());
}

TEST(ScriptedDesk, TheClockStandsStill) {
  ScriptedDesk desk;
  EXPECT_EQ(desk.Now(), 39887.5);
  desk.SetNow(40000);
  EXPECT_EQ(desk.Now(), 40000);
}

TEST(ScriptedDesk, SettingsIgnoreTheCaseOfTheirNames) {
  ScriptedDesk desk;
  desk.PutSetting("App", "S", "K", "1");
  EXPECT_EQ(desk.Setting("APP", "s", "k"), "1");
  desk.SaveSetting("app", "s", "k", "2");
  EXPECT_EQ(desk.Setting("App", "S", "K"), "2");
  EXPECT_EQ(desk.Setting("App", "S", "L"), std::nullopt);
  EXPECT_THAT(desk.Log(), ElementsAre("setting app/s/k = \"2\""));
}

TEST(ScriptedDesk, FilesInMemory) {
  ScriptedDesk desk;
  EXPECT_FALSE(desk.FileExists("/f"));
  EXPECT_HOST_ERROR(desk.ReadFile("/f"), ErrorNumber::FileNotFound);
  desk.PutFile("/f", "bytes\n");
  EXPECT_TRUE(desk.FileExists("/f"));
  desk.AppendLine("/f", "line");
  EXPECT_EQ(desk.ReadFile("/f"), "bytes\nline\r\n");
  desk.DenyFile("/f");
  EXPECT_HOST_ERROR(desk.ReadFile("/f"), ErrorNumber::PermissionDenied);
  EXPECT_HOST_ERROR(desk.AppendLine("/f", "more"), ErrorNumber::PermissionDenied);
  EXPECT_THAT(desk.Log(), ElementsAre("line to /f: line"));
}

TEST(ScriptedDesk, RealFilesWhereTheyAreWanted) {
  const std::filesystem::path folder = std::filesystem::path(::testing::TempDir()) / "tolvane_scripted_desk_test";
  std::filesystem::remove_all(folder);
  std::filesystem::create_directories(folder);
  const std::string path = (folder / "log.txt").string();
  std::ofstream(path) << "there\n";

  ScriptedDesk desk;
  EXPECT_FALSE(desk.FileExists(path));
  desk.UseRealFiles();
  EXPECT_EQ(desk.ReadFile(path), "there\n");
  desk.AppendLine(path, "line");
  EXPECT_EQ(desk.ReadFile(path), "there\nline\r\n");
  EXPECT_HOST_ERROR(desk.ReadFile((folder / "none").string()), ErrorNumber::FileNotFound);
  EXPECT_HOST_ERROR(desk.AppendLine((folder / "none" / "log").string(), "x"), ErrorNumber::PathNotFound);
  desk.PutFile(path, "memory");
  EXPECT_EQ(desk.ReadFile(path), "memory") << "what is in memory goes first";
  std::filesystem::remove_all(folder);
}

TEST(ScriptedDesk, PagesPicturesAndWhatLeavesTheProgram) {
  ScriptedDesk desk;
  desk.PutPage("http://a/", "text");
  desk.PutPicture("p", {"bytes"});
  EXPECT_EQ(desk.HttpGet("http://a/"), "text");
  EXPECT_EQ(desk.HttpGet("http://b/"), std::nullopt);
  EXPECT_EQ(desk.LoadPicture("p"), host::Picture{"bytes"});
  EXPECT_EQ(desk.LoadPicture("q"), std::nullopt);
  desk.OpenBrowser("http://c/");
  desk.ShowHelp("h.html", 3);
  EXPECT_THAT(desk.Log(),
              ElementsAre("http http://a/", "http http://b/: no answer", "browser http://c/", "help h.html, topic 3"));
}

}  // namespace
}  // namespace tolvane::testing
