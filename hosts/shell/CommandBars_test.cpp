#include "hosts/shell/CommandBars.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "hosts/shell/BuiltInControls.h"
#include "testing/HostErrors.h"
#include "testing/ScriptedDesk.h"

namespace tolvane::shell {
namespace {

using host::BarPosition;
using host::ButtonState;
using host::CommandBar;
using host::CommandBarControl;
using host::ControlType;
using host::ErrorNumber;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class CommandBarsTest : public ::testing::Test {
 protected:
  std::shared_ptr<host::Gate> gate_ = std::make_shared<host::Gate>();
  testing::ScriptedDesk desk_;
  std::vector<std::string> log_;  // what was called, in order
  bool protected_ = false;
  std::shared_ptr<CommandBars> program_ = std::make_shared<CommandBars>(CommandBars::Surroundings{
      .gate = gate_,
      .desk = desk_,
      .runMacro =
          [this](std::string_view macro) {
            if (macro == "Missing") {
              throw host::HostError(ErrorNumber::ApplicationDefined, "There is no macro Missing");
            }
            log_.push_back("macro " + std::string(macro));
          },
      .builtInEffect = [this](int id) { log_.push_back("effect " + std::to_string(id)); },
      .activeSheetIsProtected = [this] { return protected_; },
  });
  host::CommandBars bars_{program_};

  CommandBar AddBar(const std::string& name, BarPosition position = BarPosition::Top) {
    const CommandBar bar = bars_.Add({.name = name, .position = position});
    if (position != BarPosition::Popup) bar.SetVisible(true);
    return bar;
  }
  static CommandBarControl AddButton(const host::CommandBarControls& controls, const std::string& caption,
                                     const std::string& tag = "") {
    const CommandBarControl button = controls.Add({});
    button.SetCaption(caption);
    button.SetTag(tag);
    return button;
  }
  host::Subscription Log(const CommandBarControl& control, const std::string& name, bool cancel = false) {
    return control.AdviseClick([this, name, cancel](const CommandBarControl& clicked, bool& cancelDefault) {
      log_.push_back(name + ": " + clicked.Caption());
      if (cancel) cancelDefault = true;
    });
  }
};

TEST_F(CommandBarsTest, BuiltInBarsAreThereFromTheStart) {
  std::vector<std::string> names;
  for (const CommandBar& bar : bars_.All()) names.push_back(bar.Name());
  EXPECT_THAT(names, ElementsAre("Worksheet Menu Bar", "Standard", "Formatting", "Cell"));
  EXPECT_TRUE(bars_.Item("worksheet menu bar").BuiltIn());
  EXPECT_EQ(bars_.Item(2).Name(), "Standard");
  EXPECT_EQ(bars_.Item("Cell").Position(), BarPosition::Popup);

  std::vector<std::string> menus;
  for (const auto& menu : bars_.Item(1).Controls().All()) {
    menus.push_back(menu.Caption());
    EXPECT_EQ(menu.Type(), ControlType::Popup);
    EXPECT_GT(menu.Controls().Count(), 0);
  }
  EXPECT_THAT(menus,
              ElementsAre("&File", "&Edit", "&View", "&Insert", "F&ormat", "&Tools", "&Data", "&Window", "&Help"));
}

TEST_F(CommandBarsTest, TheCommandsWithAMeaningAreFoundByTheirIds) {
  for (const auto& [id, caption] : std::vector<std::pair<int, std::string>>{{21, "Cu&t"},
                                                                            {19, "&Copy"},
                                                                            {22, "&Paste"},
                                                                            {370, "Paste &Values"},
                                                                            {755, "Paste &Special..."},
                                                                            {369, "Paste Fo&rmatting"},
                                                                            {893, "&Protect Sheet..."},
                                                                            {928, "&Sort..."},
                                                                            {210, "Sort &Ascending"},
                                                                            {211, "Sort Des&cending"},
                                                                            {6002, "&Paste"}}) {
    const CommandBarControl control = bars_.FindControl(id);
    ASSERT_FALSE(control.IsNothing()) << id;
    EXPECT_EQ(control.Caption(), caption);
    EXPECT_TRUE(control.BuiltIn());
    EXPECT_EQ(control.Id(), id);
  }
  EXPECT_EQ(bars_.FindControl(6002).Type(), ControlType::Popup);
}

TEST_F(CommandBarsTest, EveryItemOfTheBuiltInTablesIsAControl) {
  for (const BuiltInBar& bar : BuiltInBars()) {
    for (const BuiltInItem& item : bar.items) {
      const BuiltInControl* const control = FindBuiltInControl(item.id);
      ASSERT_NE(control, nullptr) << bar.name << ": " << item.id;
      for (const BuiltInItem& inner : control->items) EXPECT_NE(FindBuiltInControl(inner.id), nullptr) << inner.id;
    }
  }
  EXPECT_EQ(FindBuiltInControl(0), nullptr);
  EXPECT_EQ(FindBuiltInControl(1), nullptr);
  EXPECT_EQ(FindBuiltInControl(99999), nullptr);
}

TEST_F(CommandBarsTest, ProtectingIsCalledUnprotectingOnAProtectedSheet) {
  const CommandBarControl protect = bars_.FindControl(893);
  protected_ = true;
  EXPECT_EQ(protect.Caption(), "Un&protect Sheet...");
  EXPECT_EQ(protect.TooltipText(), "Unprotect Sheet...");
  protected_ = false;
  EXPECT_EQ(protect.Caption(), "&Protect Sheet...");
  protect.SetCaption("Lock");
  protected_ = true;
  EXPECT_EQ(protect.Caption(), "Lock");
}

TEST_F(CommandBarsTest, WrongNamesAndPositionsAreInvalidCalls) {
  EXPECT_HOST_ERROR(bars_.Item("Nowhere"), ErrorNumber::InvalidCall);
  EXPECT_HOST_ERROR(bars_.Item(0), ErrorNumber::InvalidCall);
  EXPECT_HOST_ERROR(bars_.Item(5), ErrorNumber::InvalidCall);
  EXPECT_HOST_ERROR(bars_.Add({.name = "STANDARD"}), ErrorNumber::InvalidCall);
  EXPECT_HOST_ERROR((bars_.Add({.name = "New", .position = BarPosition::MenuBar})), ErrorNumber::InvalidCall);
  EXPECT_EQ(bars_.All().size(), 4U);

  const auto controls = bars_.Item("Cell").Controls();
  const int count = controls.Count();
  EXPECT_HOST_ERROR(controls.Item(0), ErrorNumber::InvalidCall);
  EXPECT_HOST_ERROR(controls.Item(count + 1), ErrorNumber::InvalidCall);
  EXPECT_HOST_ERROR(controls.Item("Fly"), ErrorNumber::InvalidCall);
  EXPECT_HOST_ERROR(controls.Add({.before = 0}), ErrorNumber::InvalidCall);
  EXPECT_HOST_ERROR(controls.Add({.before = count + 2}), ErrorNumber::InvalidCall);
  EXPECT_HOST_ERROR(controls.Add({.id = 99999}), ErrorNumber::InvalidCall);
  EXPECT_HOST_ERROR(controls.Add({.type = static_cast<ControlType>(77)}), ErrorNumber::InvalidCall);
  EXPECT_EQ(controls.Count(), count);
}

TEST_F(CommandBarsTest, ABarWithoutANameGetsOne) {
  EXPECT_EQ(bars_.Add({}).Name(), "Custom 1");
  EXPECT_EQ(bars_.Add({}).Name(), "Custom 2");
  bars_.Item("Custom 1").Delete();
  EXPECT_EQ(bars_.Add({}).Name(), "Custom 1");
}

TEST_F(CommandBarsTest, NewBarsAreHiddenAndKeepWhatIsSet) {
  const CommandBar bar = bars_.Add({.name = "Mine"});
  EXPECT_FALSE(bar.BuiltIn());
  EXPECT_FALSE(bar.Visible());
  bar.SetVisible(true);
  bar.SetRowIndex(3);
  bar.SetLeft(40);
  bar.SetTop(50);
  bar.SetHeight(60);
  bar.SetProtection(5);
  bar.SetWidth(70);
  EXPECT_EQ(bar.RowIndex(), 3);
  EXPECT_EQ(bar.Left(), 40);
  EXPECT_EQ(bar.Top(), 50);
  EXPECT_EQ(bar.Height(), 60);
  EXPECT_EQ(bar.Protection(), 5);
  EXPECT_EQ(bar.Width(), 0) << "a docked bar is as wide as it must be";
  bar.SetPosition(BarPosition::Floating);
  bar.SetWidth(70);
  EXPECT_EQ(bar.Width(), 70);
  EXPECT_HOST_ERROR(bar.SetPosition(BarPosition::Popup), ErrorNumber::ApplicationDefined);
  EXPECT_HOST_ERROR(bar.SetPosition(static_cast<BarPosition>(9)), ErrorNumber::InvalidCall);
  EXPECT_EQ(bar.Position(), BarPosition::Floating);
}

TEST_F(CommandBarsTest, ContextMenusAreNeitherDockedNorMadeVisible) {
  const CommandBar menu = AddBar("Context", BarPosition::Popup);
  EXPECT_HOST_ERROR(menu.SetVisible(true), ErrorNumber::ApplicationDefined);
  EXPECT_HOST_ERROR(menu.SetPosition(BarPosition::Top), ErrorNumber::ApplicationDefined);
  EXPECT_FALSE(menu.Visible());
}

TEST_F(CommandBarsTest, ControlsStandWhereTheyAreAdded) {
  const auto controls = AddBar("Mine").Controls();
  AddButton(controls, "&B");
  AddButton(controls, "D");
  const CommandBarControl first = controls.Add({.before = 1});
  first.SetCaption("A");
  controls.Add({.before = 3}).SetCaption("C");
  controls.Add({.before = 5}).SetCaption("E && F");
  std::vector<std::string> captions;
  for (const auto& control : controls.All()) captions.push_back(control.Caption());
  EXPECT_THAT(captions, ElementsAre("A", "&B", "C", "D", "E && F"));
  EXPECT_EQ(controls.Item(1), first);
  EXPECT_EQ(controls.Item("b").Caption(), "&B");
  EXPECT_EQ(controls.Item("e & f"), controls.Item("E && F")) << "a name is read like a caption";
}

TEST_F(CommandBarsTest, ControlsKeepWhatIsSet) {
  const auto controls = AddBar("Mine").Controls();
  const CommandBarControl button = AddButton(controls, "&Go", "go");
  EXPECT_EQ(button.Id(), 1);
  EXPECT_FALSE(button.BuiltIn());
  EXPECT_TRUE(button.Enabled());
  EXPECT_TRUE(button.Visible());
  EXPECT_EQ(button.TooltipText(), "Go");
  button.SetTooltipText("Goes");
  button.SetParameter("p");
  button.SetOnAction("Run");
  button.SetStyle(host::ButtonStyle::Caption);
  button.SetState(ButtonState::Down);
  button.SetWidth(33);
  button.SetBeginGroup(true);
  button.SetShortcutText("Ctrl+G");
  button.SetFaceId(59);
  button.SetFace({"picture"}, {"mask"});
  EXPECT_EQ(button.TooltipText(), "Goes");
  EXPECT_EQ(button.Tag(), "go");
  EXPECT_EQ(button.Parameter(), "p");
  EXPECT_EQ(button.OnAction(), "Run");
  EXPECT_EQ(button.Style(), host::ButtonStyle::Caption);
  EXPECT_EQ(button.State(), ButtonState::Down);
  EXPECT_EQ(button.Width(), 33);
  EXPECT_TRUE(button.BeginGroup());
  EXPECT_EQ(button.ShortcutText(), "Ctrl+G");
  EXPECT_EQ(button.FaceId(), 59);
  EXPECT_EQ(button.Face(), host::Picture{"picture"});
  EXPECT_HOST_ERROR(button.SetWidth(-1), ErrorNumber::InvalidCall);
  EXPECT_HOST_ERROR(button.AddItem("x"), ErrorNumber::ApplicationDefined);
  EXPECT_HOST_ERROR(button.Controls().Count(), ErrorNumber::ApplicationDefined);

  const CommandBarControl list = controls.Add({.type = ControlType::Dropdown});
  list.AddItem("one");
  list.AddItem("two");
  EXPECT_THAT(list.Items(), ElementsAre("one", "two"));
  EXPECT_HOST_ERROR(list.SetFaceId(1), ErrorNumber::ApplicationDefined);
  EXPECT_HOST_ERROR(bars_.FindControl(19).SetState(ButtonState::Down), ErrorNumber::ApplicationDefined);
}

TEST_F(CommandBarsTest, FindControlGoesDepthFirstThroughTheBarsInOrder) {
  const auto mine = AddBar("Mine").Controls();
  const CommandBarControl popup = mine.Add({.type = ControlType::Popup});
  const CommandBarControl inner = AddButton(popup.Controls(), "Inner", "x");
  const CommandBarControl outer = AddButton(mine, "Outer", "x");
  const CommandBarControl extra = AddButton(bars_.Item(1).Controls(), "Extra", "y");
  EXPECT_EQ(bars_.FindControl(std::nullopt, "x"), inner);
  EXPECT_EQ(bars_.FindControl(1, "x"), inner);
  EXPECT_EQ(bars_.FindControl(1), extra) << "the menu bar comes first";
  EXPECT_TRUE(bars_.FindControl(19, "x").IsNothing());
  EXPECT_TRUE(bars_.FindControl(std::nullopt, "X").IsNothing());
  inner.Delete();
  EXPECT_EQ(bars_.FindControl(std::nullopt, "x"), outer);
}

TEST_F(CommandBarsTest, DeletedBuiltInControlsAreNotFoundAgain) {
  int found = 0;
  for (CommandBarControl copy = bars_.FindControl(19); copy; copy = bars_.FindControl(19)) {
    copy.Delete();
    EXPECT_FALSE(copy.IsAlive());
    ++found;
  }
  EXPECT_EQ(found, 3) << "in the menu, on the bar, in the context menu";
  const CommandBarControl again = bars_.Item("Standard").Controls().Add({.id = 19, .before = 1});
  EXPECT_EQ(bars_.FindControl(19), again);
  EXPECT_TRUE(again.BuiltIn());
}

TEST_F(CommandBarsTest, ABuiltInMenuIsAddedWithWhatItHolds) {
  const CommandBarControl edit = AddBar("Mine").Controls().Add({.id = 30003});
  EXPECT_EQ(edit.Type(), ControlType::Popup);
  EXPECT_EQ(edit.Controls().Item("Copy").Id(), 19);
}

TEST_F(CommandBarsTest, WhatIsDeletedIsDeadWithAllThatLiesInIt) {
  const CommandBar bar = AddBar("Mine");
  const CommandBarControl popup = bar.Controls().Add({.type = ControlType::Popup});
  const CommandBarControl inner = AddButton(popup.Controls(), "Inner");
  const CommandBarControl other = AddButton(bar.Controls(), "Other");
  popup.Delete();
  EXPECT_FALSE(popup.IsAlive());
  EXPECT_FALSE(inner.IsAlive());
  EXPECT_TRUE(other.IsAlive());
  EXPECT_HOST_ERROR(inner.Caption(), ErrorNumber::ObjectRequired);
  bar.Delete();
  EXPECT_FALSE(other.IsAlive());
  EXPECT_HOST_ERROR(bar.Name(), ErrorNumber::ObjectRequired);
  EXPECT_HOST_ERROR(bars_.Item("Mine"), ErrorNumber::InvalidCall);
  EXPECT_HOST_ERROR(bars_.Item("Standard").Delete(), ErrorNumber::ApplicationDefined);
  EXPECT_TRUE(bars_.Item("Standard").IsAlive());
}

TEST_F(CommandBarsTest, MenusDoNotNestWithoutEnd) {
  CommandBarControl menu = AddBar("Mine").Controls().Add({.type = ControlType::Popup});
  EXPECT_HOST_ERROR(
      {
        for (int depth = 0; depth < 100'000; ++depth) menu = menu.Controls().Add({.type = ControlType::Popup});
      },
      ErrorNumber::ApplicationDefined);
}

TEST_F(CommandBarsTest, AClickTellsListenersThenRunsTheMacro) {
  const auto controls = AddBar("Mine").Controls();
  const CommandBarControl button = AddButton(controls, "Go", "go");
  button.SetOnAction("Macro");
  const auto first = Log(button, "first");
  const auto second = Log(button, "second");
  program_->Click(button);
  EXPECT_THAT(log_, ElementsAre("first: Go", "second: Go", "macro Macro"));
}

TEST_F(CommandBarsTest, ListenersHearTheControlsOfTheirTagOrId) {
  const auto controls = AddBar("Mine").Controls();
  const CommandBarControl a = AddButton(controls, "A", "t");
  const CommandBarControl b = AddButton(controls, "B", "t");
  const CommandBarControl other = AddButton(controls, "Other", "u");
  const CommandBarControl bare = AddButton(controls, "Bare");
  const CommandBarControl bare2 = AddButton(controls, "Bare 2");
  const auto hearsTag = Log(a, "tag");
  const auto hearsBare = Log(bare, "bare");
  const auto hearsCopy = Log(bars_.Item("Cell").Controls().Item("Copy"), "copy");
  for (const auto& control : {b, other, bare2, bare}) program_->Click(control);
  EXPECT_THAT(log_, ElementsAre("tag: B", "bare: Bare"));
  log_.clear();
  program_->Click(bars_.Item("Standard").Controls().Item("Copy"));
  program_->Click(bars_.FindControl(21));
  EXPECT_THAT(log_, ElementsAre("copy: &Copy", "effect 19", "effect 21"));
}

TEST_F(CommandBarsTest, AListenerStillHearsTheLikeOfADeletedControl) {
  const auto controls = AddBar("Mine").Controls();
  const CommandBarControl a = AddButton(controls, "A", "t");
  const CommandBarControl b = AddButton(controls, "B", "t");
  const auto hears = Log(a, "tag");
  a.Delete();
  program_->Click(b);
  EXPECT_THAT(log_, ElementsAre("tag: B"));
}

TEST_F(CommandBarsTest, AListenerCancelsTheMacroAndTheEffectButNotTheNextListeners) {
  const CommandBarControl copy = bars_.FindControl(19);
  copy.SetOnAction("Macro");
  const auto first = Log(copy, "first", true);
  auto second = Log(copy, "second");
  program_->Click(copy);
  EXPECT_THAT(log_, ElementsAre("first: &Copy", "second: &Copy"));
}

TEST_F(CommandBarsTest, AMacroTakesThePlaceOfABuiltInEffect) {
  const CommandBarControl copy = bars_.FindControl(19);
  copy.SetOnAction("Macro");
  program_->Click(copy);
  EXPECT_THAT(log_, ElementsAre("macro Macro"));
}

TEST_F(CommandBarsTest, WhatAListenerThrowsGoesNowhere) {
  const CommandBarControl copy = bars_.FindControl(19);
  const auto bad = copy.AdviseClick([](const CommandBarControl&, bool&) { throw std::runtime_error("bad"); });
  const auto good = Log(copy, "good");
  program_->Click(copy);
  EXPECT_THAT(log_, ElementsAre("good: &Copy", "effect 19"));
}

TEST_F(CommandBarsTest, WhatAMacroThrowsReachesWhoClicked) {
  const CommandBarControl copy = bars_.FindControl(19);
  copy.SetOnAction("Missing");
  EXPECT_HOST_ERROR(program_->Click(copy), ErrorNumber::ApplicationDefined);
  EXPECT_THAT(log_, IsEmpty()) << "no effect after a failed macro";
}

TEST_F(CommandBarsTest, ListenersMayDeleteSubscribeAndUnsubscribe) {
  const auto controls = AddBar("Mine").Controls();
  CommandBarControl button = AddButton(controls, "Go", "go");
  button.SetOnAction("Macro");
  host::Subscription self;
  host::Subscription later;
  host::Subscription added;
  self = button.AdviseClick([&](const CommandBarControl& clicked, bool&) {
    log_.push_back("self");
    self.End();
    later.End();
    added = Log(clicked, "added");
    clicked.Delete();
    button = CommandBarControl();
    EXPECT_FALSE(clicked.IsAlive());
  });
  later = Log(button, "later");
  program_->Click(button);
  EXPECT_THAT(log_, ElementsAre("self", "macro Macro"));
}

TEST_F(CommandBarsTest, AnEndedSubscriptionHearsNothing) {
  const CommandBarControl copy = bars_.FindControl(19);
  { const auto ends = Log(copy, "ends"); }
  program_->Click(copy);
  EXPECT_THAT(log_, ElementsAre("effect 19"));
}

TEST_F(CommandBarsTest, WhatTheUserCannotReachCannotBeClicked) {
  const CommandBar bar = AddBar("Mine");
  const CommandBarControl popup = bar.Controls().Add({.type = ControlType::Popup});
  const CommandBarControl button = AddButton(popup.Controls(), "Go");
  const auto hears = Log(button, "go");
  const auto refused = [&] { EXPECT_HOST_ERROR(program_->Click(button), ErrorNumber::ApplicationDefined); };
  button.SetEnabled(false);
  refused();
  button.SetEnabled(true);
  button.SetVisible(false);
  refused();
  button.SetVisible(true);
  popup.SetEnabled(false);
  refused();
  popup.SetEnabled(true);
  bar.SetVisible(false);
  refused();
  bar.SetVisible(true);
  bar.SetEnabled(false);
  refused();
  bar.SetEnabled(true);
  EXPECT_THAT(log_, IsEmpty());
  program_->Click(button);
  EXPECT_THAT(log_, ElementsAre("go: Go"));
  button.Delete();
  EXPECT_HOST_ERROR(program_->Click(button), ErrorNumber::ObjectRequired);
  EXPECT_HOST_ERROR(program_->Click(CommandBarControl()), ErrorNumber::ObjectNotSet);
}

TEST_F(CommandBarsTest, ShowPopupClicksWhatTheUserChooses) {
  const CommandBar menu = AddBar("Context", BarPosition::Popup);
  AddButton(menu.Controls(), "&One").SetOnAction("One");
  const CommandBarControl sub = menu.Controls().Add({.type = ControlType::Popup});
  sub.SetCaption("Sub");
  AddButton(sub.Controls(), "Two").SetOnAction("Two");
  desk_.ChoosePopup({"One"});
  desk_.ChoosePopup({"Sub", "Two"});
  desk_.LeavePopup();
  for (int i = 0; i < 3; ++i) menu.ShowPopup();
  EXPECT_THAT(log_, ElementsAre("macro One", "macro Two"));
  EXPECT_THAT(desk_.Leftovers(), IsEmpty());
}

TEST_F(CommandBarsTest, OnlyEnabledContextMenusAreShown) {
  EXPECT_HOST_ERROR(bars_.Item("Standard").ShowPopup(), ErrorNumber::ApplicationDefined);
  bars_.Item("Cell").SetEnabled(false);
  EXPECT_HOST_ERROR(bars_.Item("Cell").ShowPopup(), ErrorNumber::ApplicationDefined);
  EXPECT_THAT(desk_.Log(), IsEmpty());
}

TEST_F(CommandBarsTest, OnlyWhatWasMeantToStayLasts) {
  const CommandBar kept = bars_.Add({.name = "Kept", .temporary = false});
  AddButton(kept.Controls(), "Temporary");
  kept.Controls().Add({.temporary = false}).SetCaption("&Lasting");
  bars_.Add({.name = "Gone"}).Controls().Add({.temporary = false});
  const CommandBarControl data = bars_.Item(1).Controls().Item("Data");
  data.Controls().Add({.temporary = false}).SetCaption("Mine");
  EXPECT_THAT(program_->Lasting(), ElementsAre("Worksheet Menu Bar/Data/Mine", "Kept", "Kept/Lasting"));
}

TEST_F(CommandBarsTest, TooltipSettings) {
  EXPECT_TRUE(bars_.DisplayTooltips());
  EXPECT_FALSE(bars_.DisplayKeysInTooltips());
  bars_.SetDisplayTooltips(false);
  bars_.SetDisplayKeysInTooltips(true);
  EXPECT_FALSE(bars_.DisplayTooltips());
  EXPECT_TRUE(bars_.DisplayKeysInTooltips());
}

TEST_F(CommandBarsTest, HandlesAndSubscriptionsOutliveTheProgram) {
  const CommandBar bar = AddBar("Mine");
  const CommandBarControl button = AddButton(bar.Controls(), "Go", "go");
  auto hears = Log(button, "go");
  program_.reset();
  gate_.reset();
  CommandBars& program = dynamic_cast<CommandBars&>(*bars_.body());
  program.Close();
  EXPECT_FALSE(bars_.IsAlive());
  EXPECT_FALSE(bar.IsAlive());
  EXPECT_HOST_ERROR(button.SetCaption("x"), ErrorNumber::ObjectRequired);
  EXPECT_HOST_ERROR(program.Click(button), ErrorNumber::ObjectRequired);
  bars_ = host::CommandBars();
  EXPECT_HOST_ERROR(bar.Name(), ErrorNumber::ObjectRequired);
  hears.End();
  EXPECT_THAT(log_, IsEmpty());
}

TEST_F(CommandBarsTest, TheProgramMayEndInAListener) {
  const CommandBarControl copy = bars_.FindControl(19);
  copy.SetOnAction("Macro");
  const auto ends = copy.AdviseClick([&](const CommandBarControl&, bool&) { program_->Close(); });
  const auto next = Log(copy, "next");
  program_->Click(copy);
  EXPECT_THAT(log_, IsEmpty());
}

}  // namespace
}  // namespace tolvane::shell
