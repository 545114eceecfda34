#include "src/host/Form.h"

#include <gtest/gtest.h>

#include <chrono>
#include <stdexcept>
#include <string>
#include <vector>

namespace tolvane::host {
namespace {

// As the dialogs of the add-in are written: a box with its label, a choice, two buttons.
class QuantityForm : public Form {
 public:
  QuantityForm() : Form("FQuantity", "Add Rows") {
    SetDefaultButton(ok);
    SetCancelButton(cancel);
    ok.OnClick = [this] { Hide(); };
    cancel.OnClick = [this] {
      cancelled = true;
      Hide();
    };
  }
  using Form::Add;

  Label& label = Add<Label>("label", "&Quantity:");
  TextBox& quantity = Add<TextBox>("quantity");
  OptionButton& bottom = Add<OptionButton>("bottom", "At the &bottom");
  OptionButton& before = Add<OptionButton>("before", "Before the &selected row");
  Timer& timer = Add<Timer>("timer");
  Button& ok = Add<Button>("ok", "OK");
  Button& cancel = Add<Button>("cancel", "Cancel");
  bool cancelled = false;
};

// --- controls
// ---------------------------------------------------------------------------------------------------------

TEST(Form, FindsControlsByNameAndKind) {
  const QuantityForm form;
  EXPECT_EQ(form.Find("quantity"), &form.quantity);
  EXPECT_EQ(form.Find("Quantity"), nullptr);
  EXPECT_EQ(&form.Get<TextBox>("quantity"), &form.quantity);
  EXPECT_THROW(form.Get<Button>("quantity"), std::logic_error);
  EXPECT_THROW(form.Get<Button>("help"), std::logic_error);
}

TEST(Form, KeepsControlsInTheOrderOfAdding) {
  const QuantityForm form;
  std::vector<std::string> names;
  for (const auto& control : form.Controls()) names.push_back(control->Name());
  EXPECT_EQ(names, (std::vector<std::string>{"label", "quantity", "bottom", "before", "timer", "ok", "cancel"}));
}

TEST(Form, TakesEachNameOnce) {
  QuantityForm form;
  EXPECT_THROW(form.Add<Label>("ok"), std::logic_error);
  EXPECT_EQ(form.Controls().size(), 7u);
}

TEST(Form, TellsAVisitorTheKindOfEachControl) {
  struct Kinds : ControlVisitor {
    void Visit(Label&) override { seen += "L"; }
    void Visit(TextBox&) override { seen += "T"; }
    void Visit(ReportBox&) override { seen += "R"; }
    void Visit(ColourBar&) override { seen += "C"; }
    void Visit(ComboBox&) override { seen += "D"; }
    void Visit(ListView&) override { seen += "V"; }
    void Visit(CheckBox&) override { seen += "X"; }
    void Visit(OptionButton&) override { seen += "O"; }
    void Visit(Spin&) override { seen += "S"; }
    void Visit(Button&) override { seen += "B"; }
    void Visit(Timer&) override { seen += "t"; }
    std::string seen;
  } kinds;
  const QuantityForm form;
  for (const auto& control : form.Controls()) control->Accept(kinds);
  EXPECT_EQ(kinds.seen, "LTOOtBB");
}

// --- layout
// -----------------------------------------------------------------------------------------------------------

TEST(Form, StandsInAColumnByDefault) {
  const QuantityForm form;
  EXPECT_EQ(form.layout().kind, Layout::Kind::Column);
  ASSERT_EQ(form.layout().children.size(), 6u);  // all but the timer
  EXPECT_EQ(form.layout().children[1].control, &form.quantity);
}

TEST(Form, TakesALayoutOfAllItsControls) {
  QuantityForm form;
  form.SetLayout(Column({Row({form.label, Cell(form.quantity).Wide(8).Stretching()}),
                         Group("Where", {form.bottom, form.before}), Row({Stretch(), form.ok, form.cancel})}));
  const Layout& layout = form.layout();
  ASSERT_EQ(layout.children.size(), 3u);
  EXPECT_EQ(layout.children[0].kind, Layout::Kind::Row);
  EXPECT_EQ(layout.children[0].children[1].width, 8);
  EXPECT_TRUE(layout.children[0].children[1].stretches);
  EXPECT_EQ(layout.children[1].caption, "Where");
  EXPECT_EQ(layout.children[2].children[0].kind, Layout::Kind::Stretch);
  EXPECT_EQ(layout.children[2].children[2].control, &form.cancel);
  EXPECT_THROW(form.Add<Label>("late"), std::logic_error);
}

TEST(Form, RefusesALayoutThatLacksOrRepeatsAControl) {
  QuantityForm form;
  QuantityForm other;
  EXPECT_THROW(form.SetLayout(Column({form.label, form.quantity})), std::logic_error);
  EXPECT_THROW(
      form.SetLayout(Column({form.label, form.label, form.quantity, form.bottom, form.before, form.ok, form.cancel})),
      std::logic_error);
  EXPECT_THROW(
      form.SetLayout(Column({form.label, form.quantity, form.bottom, form.before, form.ok, form.cancel, other.label})),
      std::logic_error);
  EXPECT_THROW(
      form.SetLayout(Column({form.label, form.quantity, form.bottom, form.before, form.timer, form.ok, form.cancel})),
      std::logic_error);
  EXPECT_EQ(form.layout().children.size(), 6u);
}

// --- life
// -------------------------------------------------------------------------------------------------------------

TEST(Form, IsLoadedOnceAndShownOften) {
  QuantityForm form;
  std::vector<std::string> events;
  form.OnLoad = [&] { events.push_back("load"); };
  form.OnShow = [&] { events.push_back("show"); };
  EXPECT_FALSE(form.IsLoaded());
  EXPECT_TRUE(form.BeginShow());
  EXPECT_TRUE(form.IsShown());
  form.quantity.UserType("3");
  form.ok.UserClick();
  EXPECT_FALSE(form.IsShown());
  EXPECT_EQ(form.quantity.Text(), "3");
  EXPECT_TRUE(form.BeginShow());
  EXPECT_EQ(events, (std::vector<std::string>{"load", "show", "show"}));
}

TEST(Form, CannotBeShownTwiceAtOnce) {
  QuantityForm form;
  form.BeginShow();
  EXPECT_THROW(form.BeginShow(), std::logic_error);
  EXPECT_TRUE(form.IsShown());
}

TEST(Form, CanBeLoadedBeforeItIsShown) {
  QuantityForm form;
  int loads = 0;
  form.OnLoad = [&] { ++loads; };
  form.Load();
  form.Load();
  EXPECT_TRUE(form.BeginShow());
  EXPECT_EQ(loads, 1);
}

TEST(Form, IsNotShownWhenItHidesItselfWhileLoading) {
  for (const bool loadFirst : {false, true}) {
    QuantityForm form;
    bool shown = false;
    form.OnLoad = [&] { form.Hide(); };
    form.OnShow = [&] { shown = true; };
    if (loadFirst) form.Load();
    EXPECT_FALSE(form.BeginShow());
    EXPECT_FALSE(form.IsShown() || shown);
    EXPECT_TRUE(form.BeginShow());  // the next time it is asked for, it comes
  }
}

TEST(Form, MayHideItselfWhenItComesUp) {
  QuantityForm form;
  form.OnShow = [&] { form.Hide(); };
  EXPECT_FALSE(form.BeginShow());
}

TEST(Form, IsNotUpWhenComingUpFails) {
  QuantityForm form;
  form.OnLoad = [] { throw std::runtime_error("planted"); };
  EXPECT_THROW(form.BeginShow(), std::runtime_error);
  EXPECT_FALSE(form.IsLoaded() || form.IsShown());
  form.OnLoad = nullptr;
  form.OnShow = [] { throw std::runtime_error("planted"); };
  EXPECT_THROW(form.BeginShow(), std::runtime_error);
  EXPECT_FALSE(form.IsShown());
}

TEST(Form, IsClosedByTheUserUnlessItsLogicRefuses) {
  QuantityForm form;
  EXPECT_THROW(form.UserClose(), ActionRefused);
  form.BeginShow();
  std::vector<CloseReason> reasons;
  bool refuse = true;
  form.OnClose = [&](CloseReason reason, bool& cancel) {
    reasons.push_back(reason);
    cancel = refuse;
  };
  EXPECT_FALSE(form.UserClose());
  EXPECT_TRUE(form.IsShown());
  refuse = false;
  EXPECT_TRUE(form.UserClose(CloseReason::Host));
  EXPECT_FALSE(form.IsShown());
  EXPECT_EQ(reasons, (std::vector<CloseReason>{CloseReason::User, CloseReason::Host}));
}

TEST(Form, TreatsClosingAsCancellingWhenItsLogicSaysSo) {
  QuantityForm form;
  form.OnClose = [&](CloseReason, bool& cancel) {
    form.cancelled = true;
    form.Hide();
    cancel = true;
  };
  form.BeginShow();
  EXPECT_TRUE(form.UserClose());
  EXPECT_TRUE(form.cancelled);
}

TEST(Form, DoesNotAskItsLogicWhenThatHidesIt) {
  QuantityForm form;
  bool asked = false;
  form.OnClose = [&](CloseReason, bool&) { asked = true; };
  form.BeginShow();
  form.Hide();
  EXPECT_FALSE(asked);
}

// --- focus
// ------------------------------------------------------------------------------------------------------------

TEST(Form, BeginsWithTheFocusOnTheFirstControlThatCanHaveIt) {
  QuantityForm form;
  form.BeginShow();
  EXPECT_EQ(form.Focus(), &form.quantity);
  form.quantity.SetEnabled(false);
  EXPECT_EQ(form.Focus(), &form.bottom);
}

TEST(Form, TheTabKeyGoesRoundBothWays) {
  QuantityForm form;
  form.before.SetValue(true);
  form.BeginShow();
  std::vector<const Control*> stops;
  for (int i = 0; i < 4; ++i) {
    form.UserPressTab();
    stops.push_back(form.Focus());
  }
  // Of the option buttons only the chosen one.
  EXPECT_EQ(stops, (std::vector<const Control*>{&form.before, &form.ok, &form.cancel, &form.quantity}));
  form.UserPressTab(true);
  EXPECT_EQ(form.Focus(), &form.cancel);
  form.ok.SetTabStop(false);
  form.UserPressTab(true);
  EXPECT_EQ(form.Focus(), &form.before);
}

TEST(Form, TheTabKeyStopsAtTheFirstOptionWhileNoneIsChosen) {
  QuantityForm form;
  form.BeginShow();
  form.UserPressTab();
  EXPECT_EQ(form.Focus(), &form.bottom);
  form.UserPressTab();
  EXPECT_EQ(form.Focus(), &form.ok);
}

TEST(Form, TheFocusMovesOnWhenItsControlCanBeUsedNoMore) {
  QuantityForm form;
  form.BeginShow();
  form.SetFocus(form.ok);
  form.ok.SetEnabled(false);
  EXPECT_EQ(form.Focus(), &form.cancel);
  form.cancel.SetVisible(false);
  EXPECT_EQ(form.Focus(), &form.quantity);
  for (const auto& control : form.Controls()) control->SetEnabled(false);
  EXPECT_EQ(form.Focus(), nullptr);
  form.UserPressTab();
  EXPECT_FALSE(form.UserPressEnter());
}

TEST(Form, TheLogicCannotFocusWhatCannotHaveTheFocus) {
  QuantityForm form;
  QuantityForm other;
  EXPECT_THROW(form.SetFocus(form.label), std::logic_error);
  EXPECT_THROW(form.SetFocus(form.timer), std::logic_error);
  EXPECT_THROW(form.SetFocus(other.ok), std::logic_error);
  form.ok.SetEnabled(false);
  EXPECT_THROW(form.SetFocus(form.ok), std::logic_error);
  form.SetFocus(form.cancel);  // before it is shown
  form.BeginShow();
  EXPECT_EQ(form.Focus(), &form.cancel);
}

TEST(Form, WithoutControlsHasNoFocus) {
  class Empty : public Form {
   public:
    Empty() : Form("FEmpty", "") {}
  } form;
  form.BeginShow();
  EXPECT_EQ(form.Focus(), nullptr);
  form.UserPressTab();
  EXPECT_FALSE(form.UserPressEscape());
  EXPECT_THROW(form.UserPressMnemonic('a'), ActionRefused);
}

// --- keys
// -------------------------------------------------------------------------------------------------------------

TEST(Form, EnterPressesTheDefaultButtonAndEscTheCancelButton) {
  QuantityForm form;
  form.BeginShow();
  EXPECT_TRUE(form.UserPressEnter());
  EXPECT_FALSE(form.IsShown() || form.cancelled);
  form.BeginShow();
  EXPECT_TRUE(form.UserPressEscape());
  EXPECT_TRUE(form.cancelled);
  EXPECT_THROW(form.UserPressEnter(), ActionRefused);
}

TEST(Form, EnterPressesTheButtonThatHasTheFocus) {
  QuantityForm form;
  form.BeginShow();
  form.UserFocus(form.cancel);
  EXPECT_TRUE(form.UserPressEnter());
  EXPECT_TRUE(form.cancelled);
}

TEST(Form, EnterDoesNothingToADisabledDefaultButtonAndInABoxOfManyLines) {
  QuantityForm form;
  form.BeginShow();
  form.ok.SetEnabled(false);
  EXPECT_FALSE(form.UserPressEnter());
  form.ok.SetEnabled(true);
  form.quantity.SetMultiLine(true);
  EXPECT_FALSE(form.UserPressEnter());
  form.quantity.SetLocked(true);
  EXPECT_TRUE(form.UserPressEnter());
}

TEST(Form, AMnemonicClicksWhatCarriesIt) {
  QuantityForm form;
  form.BeginShow();
  form.UserPressMnemonic('s');
  EXPECT_TRUE(form.before.Value());
  form.UserPressMnemonic('B');
  EXPECT_TRUE(form.bottom.Value());
  form.before.SetVisible(false);
  EXPECT_THROW(form.UserPressMnemonic('s'), ActionRefused);
  EXPECT_THROW(form.UserPressMnemonic('z'), ActionRefused);
}

TEST(Form, AMnemonicThatSeveralCarryGoesRound) {
  QuantityForm form;
  form.ok.SetCaption("&Yes");
  form.cancel.SetCaption("&Yes, all");
  form.ok.OnClick = form.cancel.OnClick = nullptr;
  form.BeginShow();
  form.UserPressMnemonic('y');
  EXPECT_EQ(form.Focus(), &form.ok);
  form.UserPressMnemonic('y');
  EXPECT_EQ(form.Focus(), &form.cancel);
  form.UserPressMnemonic('y');
  EXPECT_EQ(form.Focus(), &form.ok);
}

TEST(Form, RefusesTheButtonsOfAnother) {
  QuantityForm form;
  QuantityForm other;
  EXPECT_THROW(form.SetDefaultButton(other.ok), std::logic_error);
  EXPECT_EQ(form.DefaultButton(), &form.ok);
}

// --- timers
// -----------------------------------------------------------------------------------------------------------

TEST(Timer, TicksWhileItIsEnabledAndItsFormIsUp) {
  QuantityForm form;
  int ticks = 0;
  form.timer.OnTick = [&] {
    ++ticks;
    form.timer.SetEnabled(false);  // once
  };
  form.timer.SetInterval(std::chrono::milliseconds(50));
  form.timer.SetEnabled(true);
  EXPECT_FALSE(form.timer.Tick());
  form.BeginShow();
  EXPECT_TRUE(form.timer.Tick());
  EXPECT_FALSE(form.timer.Tick());
  EXPECT_EQ(ticks, 1);
}

TEST(Timer, NeedsAnInterval) {
  QuantityForm form;
  EXPECT_THROW(form.timer.SetInterval(std::chrono::milliseconds(0)), std::invalid_argument);
  EXPECT_EQ(form.timer.Interval(), std::chrono::milliseconds(1000));
}

// --- what a renderer watches
// --------------------------------------------------------------------------------------------

TEST(Form, CountsItsChanges) {
  QuantityForm form;
  const auto before = form.Revision();
  form.SetTitle("Add Rows");
  EXPECT_EQ(form.Revision(), before);
  form.SetTitle("Add Adjustments");
  const auto titled = form.Revision();
  EXPECT_GT(titled, before);
  form.SetFocus(form.ok);
  EXPECT_GT(form.Revision(), titled);
  const auto control = form.ok.Revision();
  form.ok.SetEnabled(false);
  form.ok.SetToolTip("Adds the rows");
  EXPECT_EQ(form.ok.Revision(), control + 2);
  form.ok.SetToolTip("Adds the rows");
  EXPECT_EQ(form.ok.Revision(), control + 2);
}

}  // namespace
}  // namespace tolvane::host
