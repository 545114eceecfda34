#include "src/host/form/TextControls.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "src/host/Form.h"

namespace tolvane::host {
namespace {

class TextForm : public Form {
 public:
  TextForm() : Form("FText", "Text") {
    text.OnChange = [this] { events.push_back("change " + text.Text()); };
    text.OnKeyDown = [this](Key key) { events.push_back("key " + std::to_string(static_cast<int>(key))); };
    label.OnClick = [this] { events.push_back("click"); };
    BeginShow();
  }
  Label& label = Add<Label>("label", "&Quantity:");
  TextBox& text = Add<TextBox>("text");
  ReportBox& report = Add<ReportBox>("report");
  ColourBar& light = Add<ColourBar>("light");
  std::vector<std::string> events;
};

struct Texts : testing::Test {
  TextForm form;
};

TEST_F(Texts, TypingRaisesChangeSettingDoesNot) {
  form.text.SetText("1");
  EXPECT_TRUE(form.events.empty());
  form.text.UserType("12");
  form.text.UserType("12");
  EXPECT_EQ(form.text.Text(), "12");
  EXPECT_EQ(form.events, std::vector<std::string>{"change 12"});
  EXPECT_EQ(form.Focus(), &form.text);
}

TEST_F(Texts, TheHandlerMayPutTheTextRight) {
  form.text.OnChange = [this] { form.text.SetText("0"); };
  form.text.UserType("x");
  EXPECT_EQ(form.text.Text(), "0");
}

TEST_F(Texts, ALockedBoxCanBeReadOnly) {
  form.text.SetText("fixed");
  form.text.SetLocked(true);
  EXPECT_THROW(form.text.UserType("changed"), ActionRefused);
  form.text.UserSelect(0, 3);
  EXPECT_EQ(form.text.Text(), "fixed");
  EXPECT_TRUE(form.events.empty());
}

TEST_F(Texts, OneLineTakesNoLineBreak) {
  EXPECT_THROW(form.text.UserType("a\nb"), ActionRefused);
  form.text.SetMultiLine(true);
  form.text.UserType("a\nb");
  EXPECT_EQ(form.text.Text(), "a\nb");
}

TEST_F(Texts, KeysThatTypeNothingReachTheHandler) {
  form.text.UserPressKey(Key::Up);
  form.text.UserPressKey(Key::Down);
  EXPECT_EQ(form.events, (std::vector<std::string>{"key 38", "key 40"}));
  form.text.SetEnabled(false);
  EXPECT_THROW(form.text.UserPressKey(Key::Up), ActionRefused);
}

TEST_F(Texts, TheSelectionStaysWithinTheText) {
  form.text.SetText("12345");
  form.text.SelectAll();
  EXPECT_EQ(form.text.SelectionLength(), 5u);
  form.text.SetSelection(3, 100);
  EXPECT_EQ(form.text.SelectionStart(), 3u);
  EXPECT_EQ(form.text.SelectionLength(), 2u);
  form.text.SetSelection(100, 1);
  EXPECT_EQ(form.text.SelectionStart(), 5u);
  EXPECT_EQ(form.text.SelectionLength(), 0u);
  form.text.SelectAll();
  form.text.SetText("1");
  EXPECT_EQ(form.text.SelectionLength(), 0u);
  form.text.UserType("123");
  EXPECT_EQ(form.text.SelectionStart(), 3u);
}

TEST_F(Texts, ColoursAreKept) {
  EXPECT_EQ(form.text.BackColour(), Colour::Window());
  form.text.SetBackColour(kInvalidMark);
  EXPECT_EQ(form.text.BackColour(), Colour::Rgb(255, 255, 0));
  EXPECT_EQ(kInvalidMark.rgb, 0xFFFF00u);
  form.light.SetBackColour(Colour::Rgb(122, 207, 65));
  EXPECT_EQ(form.light.BackColour().rgb, 0x7ACF41u);
  EXPECT_FALSE(Colour::Rgb(0, 0, 0) == Colour::Window());
}

TEST_F(Texts, OnlyALinkCanBeClicked) {
  EXPECT_THROW(form.label.UserClick(), ActionRefused);
  EXPECT_FALSE(form.label.CanHaveFocus());
  form.label.SetLink(true);
  form.label.UserClick();
  form.label.UserPressMnemonic();
  EXPECT_EQ(form.events, (std::vector<std::string>{"click", "click"}));
  EXPECT_EQ(form.Focus(), &form.label);
}

TEST_F(Texts, ALabelsMnemonicLeadsToTheNextControl) {
  form.SetFocus(form.report);
  form.UserPressMnemonic('Q');
  EXPECT_EQ(form.Focus(), &form.text);
  form.SetFocus(form.report);
  form.text.SetEnabled(false);
  EXPECT_THROW(form.UserPressMnemonic('q'), ActionRefused);
  EXPECT_EQ(form.Focus(), &form.report);
}

TEST_F(Texts, APlainCaptionShowsEverySign) {
  form.label.SetPlainCaption("&Food & drink");
  EXPECT_EQ(PlainCaption(form.label.Caption()), "&Food & drink");
}

TEST_F(Texts, AReportGrows) {
  form.report.SetText("one\n");
  form.report.Append("two\n");
  EXPECT_EQ(form.report.Text(), "one\ntwo\n");
  const auto before = form.report.Revision();
  form.report.Append("");
  EXPECT_EQ(form.report.Revision(), before);
  form.report.ScrollTo(0);
  EXPECT_GT(form.report.Revision(), before);
}

}  // namespace
}  // namespace tolvane::host
