#include "tests/contract/cases/CaseFiles.h"

namespace tolvane::contract {
namespace {

using host::BarPosition;
using host::CommandBar;
using host::CommandBarControl;
using host::ControlType;
using host::ErrorNumber;

constexpr std::string_view kBarsPage = "learn.microsoft.com: CommandBars object (Office)";
constexpr std::string_view kControlsPage = "learn.microsoft.com: CommandBarControls object (Office)";
constexpr std::string_view kFindPage = "learn.microsoft.com: CommandBars.FindControl method (Office)";

CommandBar NewBar(HostUnderTest& t, const char* name = "Accounts") {
  return t.application().CommandBars().Add({.name = name});
}

CommandBarControl NewButton(const CommandBar& bar, std::string_view caption) {
  const CommandBarControl button = bar.Controls().Add({});
  button.SetCaption(caption);
  return button;
}

std::string Captions(const CommandBar& bar) {
  std::string captions;
  for (const CommandBarControl& control : bar.Controls().All()) captions += control.Caption();
  return captions;
}

}  // namespace

std::vector<ContractCase> CommandBarsCases() {
  Cases cases("CommandBars");

  cases.Add("ANewBar",
            {"CommandBars.Add", "CommandBars.Item", "CommandBar.Name", "CommandBar.BuiltIn", "CommandBar.Visible",
             "CommandBar.Enabled", "CommandBar.Position", "Application.CommandBars"},
            kBarsPage, [](HostUnderTest& t) {
              const CommandBar bar = NewBar(t);
              EXPECT_EQ(bar.Name(), "Accounts");
              EXPECT_FALSE(bar.BuiltIn());
              EXPECT_FALSE(bar.Visible());
              EXPECT_TRUE(bar.Enabled());
              EXPECT_EQ(bar.Position(), BarPosition::Top);
              EXPECT_EQ(t.application().CommandBars().Item("ACCOUNTS").Name(), "Accounts");
            });

  cases.Add("BarsByNumberAndName", {"CommandBars.All", "CommandBars.Item"}, kPort, [](HostUnderTest& t) {
    const auto bars = t.application().CommandBars();
    NewBar(t);
    const auto all = bars.All();
    EXPECT_EQ(bars.Item(1).Name(), all[0].Name());
    EXPECT_EQ(all.back().Name(), "Accounts");
    const int count = static_cast<int>(all.size());
    for (const int index : {0, -1, count + 1}) {
      EXPECT_TRUE(Raises(ErrorNumber::InvalidCall, [&] { bars.Item(index); }));
    }
    EXPECT_TRUE(Raises(ErrorNumber::InvalidCall, [&] { bars.Item("no such bar"); }));
  });

  cases.Add("ATakenNameIsRefused", {"CommandBars.Add"}, kMemory, [](HostUnderTest& t) {
    NewBar(t);
    EXPECT_TRUE(Raises(ErrorNumber::InvalidCall, [&] { NewBar(t, "accounts"); }));
  });

  cases.Add("WhatIsSetOnABarComesBack",
            {"CommandBar.Visible", "CommandBar.Enabled", "CommandBar.Position", "CommandBar.Protection",
             "CommandBar.RowIndex", "CommandBar.Left", "CommandBar.Top", "CommandBar.Width", "CommandBar.Height"},
            kBarsPage, [](HostUnderTest& t) {
              const CommandBar bar = NewBar(t);
              bar.SetVisible(true);
              bar.SetEnabled(false);
              bar.SetPosition(BarPosition::Floating);
              bar.SetProtection(3);
              bar.SetRowIndex(2);
              bar.SetLeft(10);
              bar.SetTop(20);
              bar.SetWidth(300);
              bar.SetHeight(40);
              EXPECT_TRUE(bar.Visible());
              EXPECT_FALSE(bar.Enabled());
              EXPECT_EQ(bar.Position(), BarPosition::Floating);
              EXPECT_EQ(bar.Protection(), 3);
              EXPECT_EQ(bar.RowIndex(), 2);
              EXPECT_EQ(bar.Left(), 10);
              EXPECT_EQ(bar.Top(), 20);
              EXPECT_EQ(bar.Width(), 300);
              EXPECT_EQ(bar.Height(), 40);
            });

  cases.Add("DeletedBarsAreGoneBuiltInOnesStay", {"CommandBar.Delete", "CommandBar.BuiltIn"}, kPort,
            [](HostUnderTest& t) {
              const auto bars = t.application().CommandBars();
              const CommandBar bar = NewBar(t);
              const CommandBarControl button = NewButton(bar, "One");
              bar.Delete();
              EXPECT_FALSE(bar.IsAlive());
              EXPECT_FALSE(button.IsAlive());
              EXPECT_TRUE(Raises(ErrorNumber::InvalidCall, [&] { bars.Item("Accounts"); }));
              const CommandBar builtIn = bars.Item("Standard");
              EXPECT_TRUE(builtIn.BuiltIn());
              EXPECT_TRUE(Refused([&] { builtIn.Delete(); }));
              EXPECT_TRUE(builtIn.IsAlive());
            });

  cases.Add("ControlsInTheirPlaces",
            {"CommandBarControls.Add", "CommandBarControls.All", "CommandBarControls.Count", "CommandBarControls.Item",
             "CommandBarControl.Caption"},
            kControlsPage, [](HostUnderTest& t) {
              const CommandBar bar = NewBar(t);
              NewButton(bar, "A");
              NewButton(bar, "C");
              bar.Controls().Add({.before = 2}).SetCaption("B");
              EXPECT_EQ(Captions(bar), "ABC");
              EXPECT_EQ(bar.Controls().Count(), 3);
              EXPECT_EQ(bar.Controls().Item(2).Caption(), "B");
              for (const int index : {0, 4}) {
                EXPECT_TRUE(Raises(ErrorNumber::InvalidCall, [&] { bar.Controls().Item(index); }));
              }
            });

  cases.Add("ControlsByCaption", {"CommandBarControls.Item", "CommandBarControl.Caption"}, kPort, [](HostUnderTest& t) {
    const CommandBar bar = NewBar(t);
    NewButton(bar, "&Load Statement...");
    EXPECT_EQ(bar.Controls().Item("load statement...").Caption(), "&Load Statement...");
    EXPECT_TRUE(Raises(ErrorNumber::InvalidCall, [&] { bar.Controls().Item("Load"); }));
  });

  cases.Add("WhatIsSetOnAControlComesBack",
            {"CommandBarControl.Caption", "CommandBarControl.Enabled", "CommandBarControl.Visible",
             "CommandBarControl.Tag", "CommandBarControl.Parameter", "CommandBarControl.OnAction",
             "CommandBarControl.Style", "CommandBarControl.State", "CommandBarControl.Width",
             "CommandBarControl.BeginGroup", "CommandBarControl.ShortcutText", "CommandBarControl.TooltipText",
             "CommandBarControl.FaceId", "CommandBarControl.Type", "CommandBarControl.Id", "CommandBarControl.BuiltIn"},
            "learn.microsoft.com: CommandBarButton object (Office)", [](HostUnderTest& t) {
              const CommandBarControl button = NewButton(NewBar(t), "&Undo");
              EXPECT_EQ(button.Type(), ControlType::Button);
              EXPECT_EQ(button.Id(), 1);
              EXPECT_FALSE(button.BuiltIn());
              EXPECT_TRUE(button.Enabled());
              EXPECT_TRUE(button.Visible());
              EXPECT_EQ(button.State(), host::ButtonState::Up);
              button.SetEnabled(false);
              button.SetVisible(false);
              button.SetTag("EP_Undo");
              button.SetParameter("parameter");
              button.SetOnAction("AccountsUndo");
              button.SetStyle(host::ButtonStyle::IconAndCaption);
              button.SetState(host::ButtonState::Down);
              button.SetWidth(80);
              button.SetBeginGroup(true);
              button.SetShortcutText("Ctrl+U");
              button.SetTooltipText("Takes the last change back");
              button.SetFaceId(128);
              EXPECT_EQ(button.Caption(), "&Undo");
              EXPECT_FALSE(button.Enabled());
              EXPECT_FALSE(button.Visible());
              EXPECT_EQ(button.Tag(), "EP_Undo");
              EXPECT_EQ(button.Parameter(), "parameter");
              EXPECT_EQ(button.OnAction(), "AccountsUndo");
              EXPECT_EQ(button.Style(), host::ButtonStyle::IconAndCaption);
              EXPECT_EQ(button.State(), host::ButtonState::Down);
              EXPECT_EQ(button.Width(), 80);
              EXPECT_TRUE(button.BeginGroup());
              EXPECT_EQ(button.ShortcutText(), "Ctrl+U");
              EXPECT_EQ(button.TooltipText(), "Takes the last change back");
              EXPECT_EQ(button.FaceId(), 128);
            });

  cases.Add("PicturesOnButtons", {"CommandBarControl.Picture"},
            "learn.microsoft.com: CommandBarButton.Picture property (Office)", [](HostUnderTest& t) {
              const CommandBarControl button = NewButton(NewBar(t), "One");
              const host::Picture picture{"picture bytes"};
              button.SetFace(picture, host::Picture{"mask bytes"});
              EXPECT_EQ(button.Face(), picture);
            });

  cases.Add("ListsOfEntries", {"CommandBarControl.List", "CommandBarControl.AddItem", "CommandBarControl.Type"},
            "learn.microsoft.com: CommandBarComboBox object (Office)", [](HostUnderTest& t) {
              const CommandBarControl list = NewBar(t).Controls().Add(NewOf(ControlType::Dropdown));
              EXPECT_EQ(list.Type(), ControlType::Dropdown);
              EXPECT_TRUE(list.Items().empty());
              list.AddItem("one");
              list.AddItem("two");
              EXPECT_EQ(list.Items(), (std::vector<std::string>{"one", "two"}));
            });

  cases.Add("PopupsHoldControls", {"CommandBarControls.Add", "CommandBarControls.Count", "CommandBarControl.Type"},
            "learn.microsoft.com: CommandBarPopup object (Office)", [](HostUnderTest& t) {
              const CommandBar bar = NewBar(t);
              const CommandBarControl menu = bar.Controls().Add(NewOf(ControlType::Popup));
              menu.SetCaption("Menu");
              EXPECT_EQ(menu.Type(), ControlType::Popup);
              const CommandBarControl item = menu.Controls().Add({});
              item.SetCaption("&Item");
              EXPECT_EQ(menu.Controls().Count(), 1);
              EXPECT_TRUE(menu.Controls().Item("item") == item);
              EXPECT_EQ(bar.Controls().Count(), 1);
              menu.Delete();
              EXPECT_FALSE(item.IsAlive());
            });

  cases.Add("DeletedControlsAreGone", {"CommandBarControl.Delete"}, kControlsPage, [](HostUnderTest& t) {
    const CommandBar bar = NewBar(t);
    const CommandBarControl a = NewButton(bar, "A");
    NewButton(bar, "B");
    a.Delete();
    EXPECT_FALSE(a.IsAlive());
    EXPECT_EQ(Captions(bar), "B");
  });

  cases.Add("FoundByTagAndId", {"CommandBars.FindControl"}, kFindPage, [](HostUnderTest& t) {
    const auto bars = t.application().CommandBars();
    const CommandBar bar = NewBar(t);
    const CommandBarControl menu = bar.Controls().Add(NewOf(ControlType::Popup));
    const CommandBarControl button = menu.Controls().Add({});
    button.SetTag("EP_Load");
    EXPECT_TRUE(bars.FindControl(std::nullopt, "EP_Load") == button);
    EXPECT_TRUE(bars.FindControl(1, "EP_Load") == button);
    EXPECT_TRUE(bars.FindControl(19, "EP_Load").IsNothing());
    EXPECT_TRUE(bars.FindControl(std::nullopt, "no such tag").IsNothing());
    button.Delete();
    EXPECT_TRUE(bars.FindControl(std::nullopt, "EP_Load").IsNothing());
  });

  cases.Add("BuiltInControls",
            {"CommandBars.FindControl", "CommandBarControl.Id", "CommandBarControl.BuiltIn", "CommandBarControls.Add"},
            kMemory, [](HostUnderTest& t) {
              const auto bars = t.application().CommandBars();
              const CommandBarControl copy = bars.FindControl(19);
              ASSERT_FALSE(copy.IsNothing());
              EXPECT_TRUE(copy.BuiltIn());
              EXPECT_EQ(copy.Id(), 19);
              EXPECT_NE(copy.Caption(), "");
              const CommandBarControl another = NewBar(t).Controls().Add(NewBuiltIn(19));
              EXPECT_TRUE(another.BuiltIn());
              EXPECT_EQ(another.Caption(), copy.Caption());
              EXPECT_FALSE(bars.Item("Cell").Controls().All().empty());
            });

  cases.Add("Tooltips", {"CommandBars.DisplayTooltips", "CommandBars.DisplayKeysInTooltips"}, kBarsPage,
            [](HostUnderTest& t) {
              const auto bars = t.application().CommandBars();
              for (const bool on : {false, true}) {
                bars.SetDisplayTooltips(on);
                bars.SetDisplayKeysInTooltips(!on);
                EXPECT_EQ(bars.DisplayTooltips(), on);
                EXPECT_EQ(bars.DisplayKeysInTooltips(), !on);
              }
            });

  return std::move(cases).Take();
}

}  // namespace tolvane::contract
