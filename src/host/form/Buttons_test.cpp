#include "src/host/form/Buttons.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "src/host/Form.h"

namespace tolvane::host {
namespace {

class OptionsForm : public Form {
 public:
  OptionsForm() : Form("FOptions", "Options") {
    for (Clickable* const control : std::vector<Clickable*>{&ok, &check, &left, &right, &other}) {
      control->OnClick = [this, control] { clicks.push_back(control->Name()); };
    }
    spin.OnUp = [this] { clicks.push_back("up " + std::to_string(spin.Value())); };
    spin.OnDown = [this] { clicks.push_back("down " + std::to_string(spin.Value())); };
    BeginShow();
  }
  Button& ok = Add<Button>("ok", "OK");
  CheckBox& check = Add<CheckBox>("check", "&Group");
  OptionButton& left = Add<OptionButton>("left", "&Left");
  OptionButton& right = Add<OptionButton>("right", "&Right");
  OptionButton& other = Add<OptionButton>("other", "Other", "another group");
  Spin& spin = Add<Spin>("spin", 1, 3);
  std::vector<std::string> clicks;
};

TEST(Button, RaisesClickAndTakesTheFocus) {
  OptionsForm form;
  form.SetFocus(form.check);
  form.ok.UserClick();
  EXPECT_EQ(form.clicks, std::vector<std::string>{"ok"});
  EXPECT_EQ(form.Focus(), &form.ok);
}

TEST(Button, RefusesWhileDisabledHiddenOrNotUp) {
  OptionsForm form;
  form.ok.SetEnabled(false);
  try {
    form.ok.UserClick();
    FAIL();
  } catch (const ActionRefused& refusal) {
    EXPECT_STREQ(refusal.what(), "The control ok of the form FOptions is disabled.");
  }
  form.ok.SetEnabled(true);
  form.ok.SetVisible(false);
  EXPECT_THROW(form.ok.UserClick(), ActionRefused);
  form.ok.SetVisible(true);
  form.Hide();
  EXPECT_THROW(form.ok.UserClick(), ActionRefused);
  EXPECT_TRUE(form.clicks.empty());
}

TEST(Button, MayEndItsFormFromItsClick) {
  OptionsForm form;
  form.ok.OnClick = [&] { form.Hide(); };
  form.ok.UserClick();
  EXPECT_FALSE(form.IsShown());
}

TEST(CheckBox, TogglesWithAnEventForTheUserAndWithoutForTheLogic) {
  OptionsForm form;
  form.check.SetValue(true);
  EXPECT_TRUE(form.clicks.empty());
  form.check.UserClick();
  EXPECT_FALSE(form.check.Value());
  form.check.UserClick();
  EXPECT_TRUE(form.check.Value());
  EXPECT_EQ(form.clicks.size(), 2u);
  form.check.SetEnabled(false);
  EXPECT_THROW(form.check.UserClick(), ActionRefused);
  EXPECT_TRUE(form.check.Value());
}

TEST(OptionButton, IsChosenAloneInItsGroup) {
  OptionsForm form;
  form.other.SetValue(true);
  form.left.UserClick();
  form.right.UserClick();
  EXPECT_FALSE(form.left.Value());
  EXPECT_TRUE(form.right.Value());
  EXPECT_TRUE(form.other.Value());
  form.left.SetValue(true);
  EXPECT_FALSE(form.right.Value());
  EXPECT_EQ(form.clicks, (std::vector<std::string>{"left", "right"}));
  form.left.SetValue(false);
  EXPECT_FALSE(form.left.Value() || form.right.Value());
}

TEST(OptionButton, StaysChosenWhenItIsClickedAgain) {
  OptionsForm form;
  form.left.UserClick();
  form.left.UserClick();
  EXPECT_TRUE(form.left.Value());
}

TEST(Spin, StepsBetweenItsBounds) {
  OptionsForm form;
  EXPECT_EQ(form.spin.Value(), 1);
  form.spin.UserDown();
  form.spin.UserUp();
  form.spin.UserUp();
  form.spin.UserUp();
  form.spin.UserDown();
  EXPECT_EQ(form.clicks, (std::vector<std::string>{"up 2", "up 3", "down 2"}));
}

TEST(Spin, KeepsToItsBounds) {
  OptionsForm form;
  EXPECT_THROW(form.spin.SetValue(4), std::out_of_range);
  EXPECT_THROW(form.spin.SetValue(0), std::out_of_range);
  form.spin.SetValue(3);
  form.spin.SetBounds(-9999, 0);
  EXPECT_EQ(form.spin.Value(), 0);
  EXPECT_THROW(form.spin.SetBounds(2, 1), std::invalid_argument);
  EXPECT_EQ(form.spin.Min(), -9999);
  EXPECT_TRUE(form.clicks.empty());
  form.spin.SetEnabled(false);
  EXPECT_THROW(form.spin.UserDown(), ActionRefused);
}

}  // namespace
}  // namespace tolvane::host
