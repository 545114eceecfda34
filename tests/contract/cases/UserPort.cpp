#include "src/host/Form.h"
#include "src/host/form/Buttons.h"
#include "src/host/form/TextControls.h"
#include "tests/contract/cases/CaseFiles.h"

namespace tolvane::contract {
namespace {

using host::ErrorNumber;
using host::MessageResult;
using host::User;

constexpr std::string_view kMsgBoxPage = "learn.microsoft.com: MsgBox function (Visual Basic for Applications)";
constexpr std::string_view kOpenNamePage = "learn.microsoft.com: Application.GetOpenFilename method (Excel)";

User UserOf(HostUnderTest& t) {
  return t.application().User();
}

// Whether the only thing that the user was asked has this text in it.
bool AskedOnce(HostUnderTest& t, std::string_view text) {
  const auto asked = t.asked();
  return asked.size() == 1 && asked[0].find(text) != std::string::npos;
}

class QuantityForm : public host::Form {
 public:
  QuantityForm() : Form("FQuantity", "Add Transactions") {
    SetDefaultButton(ok);
    ok.OnClick = [this] {
      quantity = text.Text();
      Hide();
    };
  }
  host::TextBox& text = Add<host::TextBox>("txtQuantity");
  host::Button& ok = Add<host::Button>("cmdOK", "OK");
  std::string quantity;
};

}  // namespace

std::vector<ContractCase> UserPortCases() {
  Cases cases("UserPort");

  cases.Add("MessagesAreAnswered", {"User.MsgBox", "Application.User"}, kMsgBoxPage, [](HostUnderTest& t) {
    t.AnswerMessage(MessageResult::Yes);
    t.AnswerMessage(MessageResult::Cancel);
    t.AnswerMessage(MessageResult::Ok);
    const User user = UserOf(t);
    const int yesNo = host::message::kYesNo + host::message::kQuestion;
    EXPECT_EQ(user.MsgBox("Delete 3 rows?", yesNo, "Tolvane Accounts"), MessageResult::Yes);
    const int three = host::message::kYesNoCancel + host::message::kExclamation + host::message::kDefaultButton2;
    EXPECT_EQ(user.MsgBox("Split?", three, "Tolvane Accounts"), MessageResult::Cancel);
    EXPECT_EQ(user.MsgBox("Done.", host::message::kInformation, "Tolvane Accounts"), MessageResult::Ok);
    ASSERT_EQ(t.asked().size(), 3u);
    EXPECT_NE(t.asked()[0].find("Delete 3 rows?"), std::string::npos);
  });

  cases.Add("FilesAreChosenOrNot", {"User.GetOpenFilename"}, kOpenNamePage, [](HostUnderTest& t) {
    const User user = UserOf(t);
    const host::FileQuestion question{"Load Bank Statement", {{"Statements", {"*.ofx", "*.qif"}}}, 1};
    t.AnswerFile("/statements/march.ofx");
    EXPECT_EQ(user.GetOpenFilename(question), "/statements/march.ofx");
    t.AnswerFile(std::nullopt);
    EXPECT_FALSE(user.GetOpenFilename(question).has_value());
    EXPECT_NE(t.asked().back().find("Load Bank Statement"), std::string::npos);
  });

  cases.Add("NamesForSavingAreChosenOrNot", {"User.GetSaveAsFilename"}, kOpenNamePage, [](HostUnderTest& t) {
    const User user = UserOf(t);
    t.AnswerSaveFile("/books/accounts.xlsx");
    EXPECT_EQ(user.GetSaveAsFilename({"Save", {}, 1}), "/books/accounts.xlsx");
    t.AnswerSaveFile(std::nullopt);
    EXPECT_FALSE(user.GetSaveAsFilename({"Save", {}, 1}).has_value());
  });

  cases.Add("AFormIsShownAndKeepsItsState", {"User.ShowForm"}, kPort, [](HostUnderTest& t) {
    QuantityForm form;
    t.AnswerForm("FQuantity", [](host::Form& shown) {
      EXPECT_TRUE(shown.IsShown());
      shown.Get<host::TextBox>("txtQuantity").UserType("12");
      EXPECT_TRUE(shown.UserPressEnter());
      EXPECT_FALSE(shown.IsShown());
    });
    UserOf(t).ShowForm(form);
    EXPECT_EQ(form.quantity, "12");
    EXPECT_EQ(form.text.Text(), "12");
    t.AnswerForm("FQuantity", [](host::Form& shown) { shown.UserClose(); });
    UserOf(t).ShowForm(form);
    EXPECT_EQ(form.text.Text(), "12");
  });

  cases.Add("FormsNest", {"User.ShowForm", "User.MsgBox"}, kPort, [](HostUnderTest& t) {
    QuantityForm outer, inner;
    std::string order;
    outer.ok.OnClick = [&] {
      order += "outer ";
      UserOf(t).ShowForm(inner);
      UserOf(t).MsgBox("Between", host::message::kOkOnly, "Tolvane Accounts");
      EXPECT_TRUE(outer.IsShown());
      outer.Hide();
    };
    t.AnswerForm("FQuantity", [](host::Form& shown) { shown.UserPressEnter(); });
    t.AnswerForm("FQuantity", [&](host::Form& shown) {
      order += "inner ";
      shown.UserClose();
    });
    t.AnswerMessage(MessageResult::Ok);
    UserOf(t).ShowForm(outer);
    EXPECT_EQ(order, "outer inner ");
  });

  cases.Add("AFormThatHidesWhileLoadingIsNotShown", {"User.ShowForm"}, kPort, [](HostUnderTest& t) {
    QuantityForm form;
    form.OnLoad = [&] { form.Hide(); };
    UserOf(t).ShowForm(form);
    EXPECT_FALSE(form.IsShown());
  });

  cases.Add("KeysWaitToBeTaken", {"User.PeekKey"}, kPort, [](HostUnderTest& t) {
    const User user = UserOf(t);
    EXPECT_FALSE(user.PeekKey().has_value());
    t.PressKeyAhead(27);
    t.PressKeyAhead(65);
    EXPECT_EQ(user.PeekKey(), 27);
    EXPECT_EQ(user.PeekKey(), 65);
    EXPECT_FALSE(user.PeekKey().has_value());
  });

  cases.Add("EscIsToldOnce", {"User.EscPressed"}, kPort, [](HostUnderTest& t) {
    const User user = UserOf(t);
    EXPECT_FALSE(user.EscPressed());
    t.application().SetEnableCancelKey(host::CancelKey::Disabled);
    t.user().PressCancelKey();
    EXPECT_TRUE(user.EscPressed());
    EXPECT_FALSE(user.EscPressed());
  });

  cases.Add("TheClock", {"User.Now"}, kPort, [](HostUnderTest& t) {
    t.SetClock(39887.75);
    EXPECT_EQ(UserOf(t).Now(), 39887.75);
  });

  cases.Add("Settings", {"User.Setting", "User.SaveSetting"},
            "learn.microsoft.com: SaveSetting statement (Visual Basic for Applications)", [](HostUnderTest& t) {
              const User user = UserOf(t);
              EXPECT_FALSE(user.Setting("TolvaneContract", "Import", "Format").has_value());
              user.SaveSetting("TolvaneContract", "Import", "Format", "OFX");
              EXPECT_EQ(user.Setting("TolvaneContract", "Import", "Format"), "OFX");
              user.SaveSetting("TolvaneContract", "Import", "Format", "");
              EXPECT_EQ(user.Setting("TolvaneContract", "Import", "Format"), "");
              EXPECT_FALSE(user.Setting("TolvaneContract", "Other", "Format").has_value());
            });

  cases.Add("BrowserAndHelpAreShown", {"User.OpenBrowser", "User.ShowHelp"}, kPort, [](HostUnderTest& t) {
    UserOf(t).OpenBrowser("https://example.com/help");
    EXPECT_TRUE(AskedOnce(t, "https://example.com/help"));
    UserOf(t).ShowHelp("Accounts.chm", 12);
    EXPECT_NE(t.asked().back().find("Accounts.chm"), std::string::npos);
  });

  cases.Add("NoAnswerFromTheNetIsNone", {"User.HttpGet"}, kPort, [](HostUnderTest& t) {
    EXPECT_FALSE(UserOf(t).HttpGet("http://no-such-host.invalid/version.txt").has_value());
  });

  cases.Add("PicturesOfTheProgram", {"User.LoadPicture"}, kPort, [](HostUnderTest& t) {
    EXPECT_FALSE(UserOf(t).LoadPicture("no such picture").has_value());
    t.PutPicture("undo", "bytes of a picture");
    EXPECT_EQ(UserOf(t).LoadPicture("undo")->bytes, "bytes of a picture");
  });

  cases.Add("FilesAreRead", {"User.FileExists", "User.ReadFile"}, kPort, [](HostUnderTest& t) {
    const User user = UserOf(t);
    const std::string bytes("line\r\n\xEF\xBB\xBF\x00 end", 13);
    const std::string path = t.PutFile("statement.ofx", bytes);
    EXPECT_TRUE(user.FileExists(path));
    EXPECT_EQ(user.ReadFile(path), bytes);
    EXPECT_FALSE(user.FileExists(path + ".missing"));
    EXPECT_TRUE(Raises(ErrorNumber::FileNotFound, [&] { user.ReadFile(path + ".missing"); }));
  });

  cases.Add("LinesAreAppended", {"User.AppendLine"}, kPort, [](HostUnderTest& t) {
    const User user = UserOf(t);
    const std::string path = t.PathFor("errors.log");
    user.AppendLine(path, "first");
    user.AppendLine(path, "second");
    EXPECT_EQ(user.ReadFile(path), "first\r\nsecond\r\n");
  });

  cases.Add("DeniedFilesAreRefused", {}, kPort, [](HostUnderTest& t) {
    const User user = UserOf(t);
    const std::string path = t.PutFile("secret.ofx", "bytes");
    t.DenyFile(path);
    EXPECT_TRUE(Raises(ErrorNumber::PermissionDenied, [&] { user.ReadFile(path); }));
    EXPECT_TRUE(Raises(ErrorNumber::PermissionDenied, [&] { user.AppendLine(path, "line"); }));
  });

  return std::move(cases).Take();
}

}  // namespace tolvane::contract
