#include "tests/contract/cases/CaseFiles.h"

namespace tolvane::contract {
namespace {

using host::BarPosition;
using host::CellValue;
using host::CommandBar;
using host::CommandBarControl;
using host::CutCopyMode;

constexpr std::string_view kClickPage = "learn.microsoft.com: CommandBarButton.Click event (Office)";

CommandBarControl NewButton(const CommandBar& bar, std::string_view caption, std::string_view tag) {
  const CommandBarControl button = bar.Controls().Add({});
  button.SetCaption(caption);
  button.SetTag(tag);
  return button;
}

CommandBar ShownBar(HostUnderTest& t) {
  const CommandBar bar = t.application().CommandBars().Add({.name = "Bar"});
  bar.SetVisible(true);
  return bar;
}

}  // namespace

// Clicks on the controls of command bars, and popup bars.
std::vector<ContractCase> ClicksCases() {
  Cases cases("Clicks");

  cases.Add("HandlersThenTheMacro", {"CommandBarControl.Click", "CommandBarControl.OnAction"}, kPort,
            [](HostUnderTest& t) {
              std::string order;
              t.OfferMacro(t.addin(), "Work", [&] {
                order += "macro ";
                return CellValue();
              });
              const CommandBarControl button = NewButton(ShownBar(t), "A", "tag");
              button.SetOnAction("Work");
              const auto one = button.AdviseClick(
                  [&](const CommandBarControl& control, bool&) { order += "one(" + control.Caption() + ") "; });
              const auto two = button.AdviseClick([&](const CommandBarControl&, bool&) { order += "two "; });
              t.user().ClickControl(button);
              EXPECT_EQ(order, "one(A) two macro ");
            });

  cases.Add("ACancelledClickRunsNoMacro", {"CommandBarControl.Click"}, kPort, [](HostUnderTest& t) {
    int calls = 0;
    t.OfferMacro(t.addin(), "Work", [&] {
      ++calls;
      return CellValue();
    });
    const CommandBarControl button = NewButton(ShownBar(t), "A", "tag");
    button.SetOnAction("Work");
    const auto handler = button.AdviseClick([](const CommandBarControl&, bool& cancel) { cancel = true; });
    t.user().ClickControl(button);
    EXPECT_EQ(calls, 0);
  });

  cases.Add("ControlsOfOneTagShareTheirHandlers", {"CommandBarControl.Click", "CommandBarControl.Tag"}, kClickPage,
            [](HostUnderTest& t) {
              const CommandBar bar = ShownBar(t);
              const CommandBarControl a = NewButton(bar, "A", "shared"), b = NewButton(bar, "B", "shared"),
                                      c = NewButton(bar, "C", "another");
              std::string heard;
              auto handler =
                  a.AdviseClick([&](const CommandBarControl& control, bool&) { heard += control.Caption(); });
              for (const CommandBarControl& button : {a, b, c}) t.user().ClickControl(button);
              EXPECT_EQ(heard, "AB");
              handler.End();
              t.user().ClickControl(a);
              EXPECT_EQ(heard, "AB");
            });

  cases.Add("ABuiltInControlDoesItsWork", {"CommandBarControl.Click"}, kMemory, [](HostUnderTest& t) {
    const auto app = t.application();
    const Sheet s = t.NewSheet();
    s("A1").Select();
    const CommandBarControl copy = app.CommandBars().FindControl(19);
    t.user().ClickControl(copy);
    EXPECT_EQ(app.CutCopyMode(), CutCopyMode::Copy);
    app.EndCutCopyMode();
    bool cancels = false;
    int calls = 0;
    const auto handler = copy.AdviseClick([&](const CommandBarControl&, bool& cancel) {
      ++calls;
      cancel = cancels;
    });
    // Any other control of the same id tells the handler, too.
    const CommandBarControl another = ShownBar(t).Controls().Add(NewBuiltIn(19));
    t.user().ClickControl(another);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(app.CutCopyMode(), CutCopyMode::Copy);
    app.EndCutCopyMode();
    cancels = true;
    t.user().ClickControl(copy);
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(app.CutCopyMode(), CutCopyMode::None);
  });

  cases.Add("DisabledAndHiddenControlsAreNotClicked", {"CommandBarControl.Enabled", "CommandBarControl.Visible"}, kPort,
            [](HostUnderTest& t) {
              const CommandBarControl button = NewButton(ShownBar(t), "A", "tag");
              int calls = 0;
              const auto handler = button.AdviseClick([&](const CommandBarControl&, bool&) { ++calls; });
              button.SetEnabled(false);
              EXPECT_TRUE(Refused([&] { t.user().ClickControl(button); }));
              button.SetEnabled(true);
              button.SetVisible(false);
              EXPECT_TRUE(Refused([&] { t.user().ClickControl(button); }));
              button.SetVisible(true);
              t.application().CommandBars().Item("Bar").SetVisible(false);
              EXPECT_TRUE(Refused([&] { t.user().ClickControl(button); }));
              EXPECT_EQ(calls, 0);
            });

  cases.Add("AHandlerMayDeleteItsControl", {"CommandBarControl.Click", "CommandBarControl.Delete"}, kPort,
            [](HostUnderTest& t) {
              const CommandBarControl button = NewButton(ShownBar(t), "A", "tag");
              int calls = 0;
              const auto handler = button.AdviseClick([&](const CommandBarControl& control, bool&) {
                ++calls;
                control.Delete();
              });
              t.user().ClickControl(button);
              EXPECT_EQ(calls, 1);
              EXPECT_FALSE(button.IsAlive());
            });

  cases.Add(
      "APopupIsShownAndAnswered", {"CommandBar.ShowPopup"}, "learn.microsoft.com: CommandBar.ShowPopup method (Office)",
      [](HostUnderTest& t) {
        const CommandBar popup = t.application().CommandBars().Add({.name = "Popup", .position = BarPosition::Popup});
        EXPECT_EQ(popup.Position(), BarPosition::Popup);
        std::string heard;
        std::vector<host::Subscription> handlers;
        for (const char* caption : {"One", "Two"}) {
          handlers.push_back(NewButton(popup, caption, caption).AdviseClick([&](const CommandBarControl& c, bool&) {
            heard += c.Caption();
          }));
        }
        t.AnswerPopup("Two");
        popup.ShowPopup();
        EXPECT_EQ(heard, "Two");
        t.AnswerPopup(std::nullopt);
        popup.ShowPopup();
        EXPECT_EQ(heard, "Two");
      });

  cases.Add("OnlyAPopupCanBeShown", {}, kMemory, [](HostUnderTest& t) {
    const CommandBar bar = t.application().CommandBars().Add({.name = "Bar"});
    EXPECT_ANY_THROW(bar.ShowPopup());
  });

  cases.Add("TheCancelKeyModeEndsWithTheClick", {"CommandBarControl.Click", "Application.EnableCancelKey"}, kPort,
            [](HostUnderTest& t) {
              const auto app = t.application();
              const CommandBarControl button = NewButton(ShownBar(t), "A", "tag");
              const auto handler = button.AdviseClick(
                  [&](const CommandBarControl&, bool&) { app.SetEnableCancelKey(host::CancelKey::ErrorHandler); });
              t.user().ClickControl(button);
              EXPECT_EQ(app.EnableCancelKey(), host::CancelKey::Interrupt);
            });

  return std::move(cases).Take();
}

}  // namespace tolvane::contract
