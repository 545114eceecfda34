#include "src/host/Ribbon.h"

#include <map>

#include "tests/contract/cases/CaseFiles.h"

namespace tolvane::contract {
namespace {

using host::CutCopyMode;
using host::RibbonControl;

constexpr std::string_view kRibbonPage = "learn.microsoft.com: Customizing the Office Fluent ribbon for developers";
constexpr std::string_view kInvalidatePage = "learn.microsoft.com: IRibbonUI.InvalidateControl method (Office)";

constexpr std::string_view kDefinition =
    R"(<customUI xmlns="http://schemas.microsoft.com/office/2006/01/customui" onLoad="OnLoad">
         <commands><command idMso="Copy" onAction="OnCommand"/></commands>
         <ribbon><tabs><tab id="tabAccounts" label="Accounts"><group id="grpMain" label="Main">
           <button id="cmdLoad" getLabel="GetLabel" getEnabled="GetEnabled" getVisible="GetVisible" onAction="OnAction"/>
           <button id="cmdPlain" label="Plain" onAction="OnAction"/>
           <dynamicMenu id="mnuAccounts" label="Accounts" getContent="GetContent"/>
         </group></tab></tabs></ribbon>
       </customUI>)";

// Answers what it was told to, and counts what it was asked.
class Answers : public host::RibbonCallbacks {
 public:
  host::RibbonUI ribbon;
  bool enabled = true;
  bool visible = true;
  bool cancels = false;
  std::map<std::string, int> asked;  // "GetEnabled cmdLoad"
  std::string actions;

  void OnLoad(const host::RibbonUI& ui) override { ribbon = ui; }
  bool GetEnabled(const RibbonControl& control) override { return Ask("GetEnabled", control), enabled; }
  bool GetVisible(const RibbonControl& control) override { return Ask("GetVisible", control), visible; }
  std::string GetLabel(const RibbonControl& control) override { return Ask("GetLabel", control), "Label"; }
  std::optional<host::Picture> GetImage(const RibbonControl& control) override {
    return Ask("GetImage", control), std::nullopt;
  }
  std::string GetContent(const RibbonControl& control) override {
    Ask("GetContent", control);
    return R"(<menu xmlns="http://schemas.microsoft.com/office/2006/01/customui">
                <button id="cmdSavings" label="Savings" onAction="OnAction"/></menu>)";
  }
  void OnAction(const RibbonControl& control) override { actions += control.id + " "; }
  void OnCommand(const RibbonControl& control, bool& cancelDefault) override {
    actions += "command " + control.id + " ";
    cancelDefault = cancels;
  }

 private:
  void Ask(const std::string& what, const RibbonControl& control) { ++asked[what + " " + control.id]; }
};

}  // namespace

std::vector<ContractCase> RibbonCases() {
  Cases cases("Ribbon");

  cases.Add("ALoadedDefinitionHandsTheRibbonOver", {}, kRibbonPage, [](HostUnderTest& t) {
    const auto answers = std::make_shared<Answers>();
    t.LoadRibbon(kDefinition, answers);
    EXPECT_TRUE(answers->ribbon.IsAlive());
    t.user().ClickRibbonControl("cmdPlain");
    EXPECT_EQ(answers->actions, "cmdPlain ");
  });

  cases.Add("AControlIsAskedWhetherItIsThere", {"RibbonUI.InvalidateControl"}, kInvalidatePage, [](HostUnderTest& t) {
    const auto answers = std::make_shared<Answers>();
    t.LoadRibbon(kDefinition, answers);
    t.user().ClickRibbonControl("cmdLoad");
    EXPECT_EQ(answers->actions, "cmdLoad ");
    EXPECT_GE(answers->asked["GetEnabled cmdLoad"], 1);
    answers->enabled = false;  // not heard of until the ribbon is told
    t.user().ClickRibbonControl("cmdLoad");
    answers->ribbon.InvalidateControl("cmdLoad");
    EXPECT_TRUE(Refused([&] { t.user().ClickRibbonControl("cmdLoad"); }));
    answers->enabled = true;
    answers->visible = false;
    answers->ribbon.InvalidateControl("cmdLoad");
    EXPECT_TRUE(Refused([&] { t.user().ClickRibbonControl("cmdLoad"); }));
    EXPECT_EQ(answers->actions, "cmdLoad cmdLoad ");
  });

  cases.Add("AnswersAreKeptUntilTheyAreTakenBack", {"RibbonUI.Invalidate"}, kInvalidatePage, [](HostUnderTest& t) {
    const auto answers = std::make_shared<Answers>();
    t.LoadRibbon(kDefinition, answers);
    t.user().ClickRibbonControl("cmdLoad");
    const int asked = answers->asked["GetEnabled cmdLoad"];
    t.user().ClickRibbonControl("cmdLoad");
    EXPECT_EQ(answers->asked["GetEnabled cmdLoad"], asked);
    answers->ribbon.Invalidate();
    t.user().ClickRibbonControl("cmdLoad");
    EXPECT_GT(answers->asked["GetEnabled cmdLoad"], asked);
  });

  cases.Add("ADynamicMenuIsAskedForItsContent", {}, kRibbonPage, [](HostUnderTest& t) {
    const auto answers = std::make_shared<Answers>();
    t.LoadRibbon(kDefinition, answers);
    t.user().ClickRibbonControl("cmdSavings");
    EXPECT_EQ(answers->actions, "cmdSavings ");
    EXPECT_GE(answers->asked["GetContent mnuAccounts"], 1);
  });

  cases.Add("ARepurposedCommandCanKeepTheProgramFromItsOwn", {}, kRibbonPage, [](HostUnderTest& t) {
    const auto answers = std::make_shared<Answers>();
    t.LoadRibbon(kDefinition, answers);
    const Sheet s = t.NewSheet();
    s("A1").Select();
    answers->cancels = true;
    t.user().ClickRibbonCommand("Copy");
    EXPECT_EQ(t.application().CutCopyMode(), CutCopyMode::None);
    answers->cancels = false;
    t.user().ClickRibbonCommand("Copy");
    EXPECT_EQ(t.application().CutCopyMode(), CutCopyMode::Copy);
    EXPECT_EQ(answers->actions, "command Copy command Copy ");
  });

  cases.Add("AnUnknownControlIsAnError", {}, kPort, [](HostUnderTest& t) {
    const auto answers = std::make_shared<Answers>();
    t.LoadRibbon(kDefinition, answers);
    EXPECT_TRUE(Raises(host::ErrorNumber::InvalidCall, [&] { t.user().ClickRibbonControl("noSuchControl"); }));
    EXPECT_NO_THROW(answers->ribbon.InvalidateControl("noSuchControl"));
  });

  cases.Add("AWrongDefinitionIsRefused", {}, kPort, [](HostUnderTest& t) {
    const auto unasked = std::make_shared<Answers>();
    for (const std::string_view definition :
         {std::string_view(""), std::string_view("<customUI"), std::string_view("<other xmlns=\"urn:x\"/>")}) {
      EXPECT_TRUE(Refused([&] { t.LoadRibbon(definition, unasked); })) << definition;
    }
    EXPECT_TRUE(unasked->ribbon.IsNothing());
  });

  return std::move(cases).Take();
}

}  // namespace tolvane::contract
