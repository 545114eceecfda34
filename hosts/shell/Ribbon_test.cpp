#include "hosts/shell/Ribbon.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "testing/HostErrors.h"

namespace tolvane::shell {
namespace {

using host::ErrorNumber;
using host::RibbonControl;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* kNamespace = "http://schemas.microsoft.com/office/2009/07/customui";

std::string Wrap(const std::string& inner, const std::string& attributes = "") {
  return std::string("<customUI xmlns=\"") + kNamespace + "\" " + attributes + ">" + inner + "</customUI>";
}
std::string InGroup(const std::string& controls) {
  return Wrap("<ribbon><tabs><tab id=\"t\" label=\"Tab\"><group id=\"g\" label=\"Group\">" + controls +
              "</group></tab></tabs></ribbon>");
}
std::string Content(const std::string& items) {
  return std::string("<menu xmlns=\"") + kNamespace + "\">" + items + "</menu>";
}

// Answers from tables and writes down what it was asked.
class Answers final : public host::RibbonCallbacks {
 public:
  std::vector<std::string> log;
  std::set<std::string> disabled;
  std::set<std::string> hidden;
  std::map<std::string, std::string> labels;
  std::map<std::string, std::string> contents;
  std::set<std::string> cancels;
  std::function<void(const std::string& what)> onCall = [](const std::string&) {};
  host::RibbonUI ribbon;

  void OnLoad(const host::RibbonUI& loaded) override {
    ribbon = loaded;
    Note("load");
  }
  bool GetEnabled(const RibbonControl& control) override {
    Note("enabled " + control.id);
    return !disabled.contains(control.id);
  }
  bool GetVisible(const RibbonControl& control) override {
    Note("visible " + control.id);
    return !hidden.contains(control.id);
  }
  std::string GetLabel(const RibbonControl& control) override {
    Note("label " + control.id);
    return labels[control.id];
  }
  std::optional<host::Picture> GetImage(const RibbonControl& control) override {
    Note("image " + control.id);
    if (control.id == "pictured") return host::Picture{"bytes"};
    return std::nullopt;
  }
  std::string GetContent(const RibbonControl& control) override {
    Note("content " + control.id);
    return contents[control.id];
  }
  void OnAction(const RibbonControl& control) override { Note("action " + control.id); }
  void OnCommand(const RibbonControl& control, bool& cancelDefault) override {
    Note("command " + control.id);
    if (cancels.contains(control.id)) cancelDefault = true;
  }

 private:
  void Note(const std::string& what) {
    log.push_back(what);
    onCall(what);
  }
};

class RibbonTest : public ::testing::Test {
 protected:
  Answers answers_;
  std::shared_ptr<Ribbon> Load(const std::string& definition) {
    return Ribbon::Load(std::make_shared<host::Gate>(), definition, answers_);
  }
  void ExpectRefused(const std::string& definition, const std::string& because) {
    SCOPED_TRACE(definition.substr(0, 400));
    try {
      Load(definition);
      ADD_FAILURE() << "it was loaded";
    } catch (const host::HostError& error) {
      EXPECT_EQ(error.number(), ErrorNumber::ApplicationDefined);
      EXPECT_THAT(error.what(), HasSubstr(because));
    }
    EXPECT_THAT(answers_.log, IsEmpty());
  }
};

TEST_F(RibbonTest, ATreeOfWhatTheDefinitionHolds) {
  const auto ribbon = Load(Wrap(
      R"(<ribbon startFromScratch="false"><tabs>
           <tab id="t" label="Accounts" keytip="A" insertAfterMso="TabView">
             <group id="g" label="Sheets">
               <button id="b" label="Go" screentip="Goes" supertip="Goes far" keytip="G" imageMso="Copy" size="large"
                       onAction="x"/>
               <separator id="s"/>
               <menu id="m" label="More"><button id="mb" label="Inner" enabled="0"/><menuSeparator title="-"/></menu>
               <box id="x"><control idMso="Paste"/></box>
             </group>
           </tab>
           <tab idMso="TabHome" visible="false"/>
         </tabs></ribbon>
         <contextMenus><contextMenu idMso="ContextMenuCell"><button id="c" label="Cell"/></contextMenu></contextMenus>)"));
  const auto items = ribbon->Look();
  ASSERT_EQ(items.size(), 3U);
  EXPECT_EQ(items[0].id, "t");
  EXPECT_EQ(items[0].kind, RibbonKind::Tab);
  EXPECT_EQ(items[0].label, "Accounts");
  EXPECT_EQ(items[0].keytip, "A");
  EXPECT_EQ(items[1].id, "TabHome");
  EXPECT_FALSE(items[1].visible);
  EXPECT_EQ(items[2].kind, RibbonKind::ContextMenu);
  EXPECT_EQ(items[2].children.at(0).id, "c");
  const RibbonItem& group = items[0].children.at(0);
  ASSERT_EQ(group.children.size(), 4U);
  const RibbonItem& button = group.children[0];
  EXPECT_EQ(button.label, "Go");
  EXPECT_EQ(button.screentip, "Goes");
  EXPECT_EQ(button.supertip, "Goes far");
  EXPECT_EQ(button.keytip, "G");
  EXPECT_TRUE(button.hasImage);
  EXPECT_TRUE(button.enabled);
  EXPECT_EQ(group.children[1].kind, RibbonKind::Separator);
  EXPECT_FALSE(group.children[2].children.at(0).enabled);
  EXPECT_EQ(group.children[2].children.at(1).kind, RibbonKind::MenuSeparator);
  EXPECT_EQ(group.children[3].children.at(0).id, "Paste");
  EXPECT_EQ(group.children[3].children.at(0).kind, RibbonKind::BuiltIn);
  EXPECT_THAT(answers_.log, IsEmpty()) << "all is fixed, and no onLoad is named";
}

TEST_F(RibbonTest, BothNamespacesAndPrefixes) {
  const auto old = Load(
      "<customUI xmlns=\"http://schemas.microsoft.com/office/2006/01/customui\"><ribbon><tabs><tab id=\"a\"/></tabs>"
      "</ribbon></customUI>");
  EXPECT_EQ(old->Look().at(0).id, "a");
  const auto prefixed = Load(std::string("<mso:customUI xmlns:mso=\"") + kNamespace +
                             "\"><mso:ribbon><mso:tabs><mso:tab id=\"a\"/></mso:tabs></mso:ribbon></mso:customUI>");
  EXPECT_EQ(prefixed->Look().at(0).id, "a");
}

TEST_F(RibbonTest, WhatIsWrongIsRefusedAndNobodyIsCalled) {
  ExpectRefused("", "cannot be read");
  ExpectRefused("<customUI", "line 1");
  ExpectRefused("<customUI/>", "namespace");
  ExpectRefused("<customUI xmlns=\"http://example.org/\"/>", "http://example.org/");
  ExpectRefused(std::string("<menu xmlns=\"") + kNamespace + "\"/>", "<customUI>");
  ExpectRefused(Wrap("<backstage/>", "onLoad=\"x\""), "<backstage>");
  ExpectRefused(Wrap("<ribbon><qat/></ribbon>"), "<qat>");
  ExpectRefused(Wrap("", "loadImage=\"x\""), "loadImage");
  ExpectRefused(InGroup("<gallery id=\"y\"/>"), "<gallery id=\"y\">");
  ExpectRefused(InGroup("<tab id=\"y\"/>"), "<tab id=\"y\">");
  ExpectRefused(InGroup("<button/>"), "exactly one of id");
  ExpectRefused(InGroup("<button id=\"\"/>"), "empty");
  ExpectRefused(InGroup("<button id=\"a\" idMso=\"b\"/>"), "exactly one of id");
  ExpectRefused(InGroup("<button id=\"g\"/>"), "\"g\" twice");
  ExpectRefused(InGroup("<button id=\"a\" enabled=\"maybe\"/>"), "maybe");
  ExpectRefused(InGroup("<button id=\"a\" label=\"A\" getLabel=\"B\"/>"), "both label and getLabel");
  ExpectRefused(InGroup("<button id=\"a\" imageMso=\"A\" getImage=\"B\"/>"), "both imageMso and getImage");
  ExpectRefused(InGroup("<button id=\"a\" getPressed=\"B\"/>"), "getPressed");
  ExpectRefused(InGroup("<button id=\"a\" getContent=\"B\"/>"), "getContent");
  ExpectRefused(InGroup("<dynamicMenu id=\"a\"/>"), "getContent");
  ExpectRefused(InGroup("<menu id=\"a\" onAction=\"B\"/>"), "onAction");
  ExpectRefused(InGroup("<control id=\"a\"/>"), "idMso");
  ExpectRefused(Wrap("<commands><command onAction=\"x\"/></commands>"), "without idMso");
  ExpectRefused(Wrap("<commands><command idMso=\"C\"/><command idMso=\"C\"/></commands>"), "\"C\" twice");
  ExpectRefused("<customUI xmlns=\"http://schemas.microsoft.com/office/2006/01/customui\"><contextMenus/></customUI>",
                "<contextMenus>");
  std::string deep;
  for (int i = 0; i < 500; ++i) deep.append("<menu id=\"d").append(std::to_string(i)).append("\">");
  for (int i = 0; i < 500; ++i) deep += "</menu>";
  ExpectRefused(InGroup(deep), "deep");
}

TEST_F(RibbonTest, OnLoadIsHandedTheRibbon) {
  const auto ribbon = Load(Wrap("", "onLoad=\"Loaded\""));
  EXPECT_THAT(answers_.log, ElementsAre("load"));
  EXPECT_EQ(answers_.ribbon.body(), ribbon);
  answers_.ribbon.Invalidate();
  ribbon->Close();
  EXPECT_HOST_ERROR(answers_.ribbon.Invalidate(), ErrorNumber::ObjectRequired);
}

TEST_F(RibbonTest, AFailureInOnLoadUnloads) {
  answers_.onCall = [](const std::string&) { throw std::runtime_error("no"); };
  EXPECT_THROW(Load(Wrap("", "onLoad=\"Loaded\"")), std::runtime_error);
  EXPECT_FALSE(answers_.ribbon.IsAlive());
}

TEST_F(RibbonTest, AnswersAreKeptUntilTheyAreTakenBack) {
  const auto ribbon = Load(InGroup(
      R"(<button id="pictured" getLabel="l" getEnabled="e" getVisible="v" getImage="i" onAction="a"/>
         <button id="plain" getLabel="l" getImage="i"/>)"));
  answers_.labels = {{"pictured", "One"}, {"plain", "Two"}};
  const auto look = [&] { return ribbon->Look()[0].children[0].children; };
  auto items = look();
  EXPECT_EQ(items[0].label, "One");
  EXPECT_TRUE(items[0].hasImage);
  EXPECT_FALSE(items[1].hasImage);
  EXPECT_THAT(answers_.log, ElementsAre("visible pictured", "enabled pictured", "label pictured", "image pictured",
                                        "label plain", "image plain"));
  answers_.log.clear();
  answers_.labels = {{"pictured", "Eins"}, {"plain", "Zwei"}};
  EXPECT_EQ(look()[0].label, "One");
  EXPECT_THAT(answers_.log, IsEmpty());
  ribbon->InvalidateControl("plain");
  ribbon->InvalidateControl("nobody");
  items = look();
  EXPECT_EQ(items[0].label, "One");
  EXPECT_EQ(items[1].label, "Zwei");
  EXPECT_THAT(answers_.log, ElementsAre("label plain", "image plain"));
  ribbon->Invalidate();
  EXPECT_EQ(look()[0].label, "Eins");
}

TEST_F(RibbonTest, NothingIsAskedAboutWhatIsHidden) {
  const auto ribbon = Load(InGroup(R"(<menu id="m" getLabel="l" getVisible="v"><button id="b" getLabel="l"/></menu>)"));
  answers_.hidden = {"m"};
  EXPECT_FALSE(ribbon->Look()[0].children[0].children[0].visible);
  EXPECT_THAT(answers_.log, ElementsAre("visible m"));
}

TEST_F(RibbonTest, AClickCallsTheAction) {
  const auto ribbon = Load(InGroup(R"(<button id="b" onAction="x"/><button id="idle"/>)"));
  ribbon->Click("b");
  ribbon->Click("idle");
  EXPECT_THAT(answers_.log, ElementsAre("action b"));
  EXPECT_HOST_ERROR(ribbon->Click("none"), ErrorNumber::InvalidCall);
  EXPECT_HOST_ERROR(ribbon->Click("g"), ErrorNumber::ApplicationDefined);
}

TEST_F(RibbonTest, WhatIsHiddenOrDisabledIsNotClicked) {
  const auto ribbon = Load(
      InGroup(R"(<menu id="m" getEnabled="e" getVisible="v"><button id="b" getEnabled="e" getVisible="v" onAction="x"/>
                 </menu>)"));
  for (const auto& [set, id] : {std::pair{&answers_.disabled, "b"}, std::pair{&answers_.hidden, "b"},
                                std::pair{&answers_.disabled, "m"}, std::pair{&answers_.hidden, "m"}}) {
    set->insert(id);
    ribbon->Invalidate();
    EXPECT_HOST_ERROR(ribbon->Click("b"), ErrorNumber::ApplicationDefined);
    set->clear();
  }
  ribbon->Invalidate();
  ribbon->Click("b");
  EXPECT_EQ(answers_.log.back(), "action b");
}

TEST_F(RibbonTest, ADynamicMenuIsFilledWhenItIsDropped) {
  const auto ribbon = Load(InGroup(R"(<dynamicMenu id="d" label="D" getContent="c"/>)"));
  answers_.contents["d"] = Content(R"(<button id="one" getLabel="l" onAction="x"/><menuSeparator id="s"/>
                                      <menu id="sub"><button id="two" onAction="x"/></menu>)");
  answers_.labels["one"] = "One";
  const auto look = [&] { return ribbon->Look()[0].children[0].children[0].children; };
  EXPECT_THAT(look(), IsEmpty());
  EXPECT_THAT(answers_.log, IsEmpty());
  const auto dropped = ribbon->Drop("d");
  ASSERT_EQ(dropped.size(), 3U);
  EXPECT_EQ(dropped[0].label, "One");
  EXPECT_EQ(dropped[2].children.at(0).id, "two");
  EXPECT_EQ(look().size(), 3U);
  ribbon->Drop("d");
  ribbon->Click("two");
  EXPECT_THAT(answers_.log, ElementsAre("content d", "label one", "action two"));
  ribbon->InvalidateControl("d");
  EXPECT_THAT(look(), IsEmpty());
  ribbon->Click("one");
  EXPECT_EQ(answers_.log.back(), "action one");
  ribbon->Invalidate();
  EXPECT_THAT(look(), IsEmpty());
  EXPECT_HOST_ERROR(ribbon->Drop("g"), ErrorNumber::InvalidCall);
}

TEST_F(RibbonTest, ContentIsAskedForAtEachDropWhereTheDefinitionSaysSo) {
  const auto ribbon = Load(InGroup(R"(<dynamicMenu id="d" getContent="c" invalidateContentOnDrop="true"/>)"));
  answers_.contents["d"] = Content(R"(<button id="one" onAction="x"/>)");
  ribbon->Click("one");
  ribbon->Click("one");
  EXPECT_THAT(answers_.log, ElementsAre("content d", "action one", "content d", "action one"));
  answers_.contents["d"] = Content(R"(<button id="two"/>)");
  EXPECT_HOST_ERROR(ribbon->Click("one"), ErrorNumber::InvalidCall);
}

TEST_F(RibbonTest, DynamicMenusLieWithinDynamicMenus) {
  const auto ribbon = Load(InGroup(R"(<dynamicMenu id="d" getContent="c"/>)"));
  answers_.contents["d"] = Content(R"(<dynamicMenu id="e" getContent="c" invalidateContentOnDrop="true"/>)");
  answers_.contents["e"] = Content(R"(<button id="deep" onAction="x"/>)");
  ribbon->Click("deep");
  EXPECT_THAT(answers_.log, ElementsAre("content d", "content e", "action deep"));
  answers_.log.clear();
  ribbon->Click("deep");
  EXPECT_THAT(answers_.log, ElementsAre("content e", "action deep"));
}

TEST_F(RibbonTest, DynamicMenusDoNotNestWithoutEnd) {
  const auto ribbon = Load(InGroup(R"(<dynamicMenu id="d0" getContent="c"/>)"));
  for (int i = 0; i < 100; ++i) {
    answers_.contents[std::string("d").append(std::to_string(i))] =
        Content(std::string("<dynamicMenu id=\"d").append(std::to_string(i + 1)).append("\" getContent=\"c\"/>"));
  }
  EXPECT_HOST_ERROR(ribbon->Click("none"), ErrorNumber::ApplicationDefined);
}

TEST_F(RibbonTest, WrongContentLeavesTheMenuAsItWas) {
  const auto ribbon =
      Load(InGroup(R"(<button id="b"/><dynamicMenu id="d" getContent="c" invalidateContentOnDrop="1"/>)"));
  answers_.contents["d"] = Content(R"(<button id="one"/>)");
  ribbon->Drop("d");
  for (const std::string& wrong :
       {std::string(), std::string("<menu"), std::string("<menu/>"), Content("<button id=\"b\"/>"),
        Content("<button id=\"x\"/><button id=\"x\"/>"), Content("<group id=\"x\"/>")}) {
    SCOPED_TRACE(wrong);
    answers_.contents["d"] = wrong;
    EXPECT_HOST_ERROR(ribbon->Drop("d"), ErrorNumber::ApplicationDefined);
    EXPECT_EQ(ribbon->Look()[0].children[0].children[1].children.at(0).id, "one");
  }
  answers_.contents["d"] = Content(R"(<button id="two"/><button id="one"/>)");
  EXPECT_EQ(ribbon->Drop("d").size(), 2U) << "its own ids it may use again";
}

TEST_F(RibbonTest, RepurposedCommands) {
  const auto ribbon = Load(Wrap(R"(<commands><command idMso="Copy" onAction="x"/><command idMso="Cut" onAction="x"/>
                                   <command idMso="Sort" enabled="false"/><command idMso="Paste" getEnabled="e"/>
                                   </commands>)"));
  answers_.cancels = {"Copy"};
  EXPECT_TRUE(ribbon->Command("Copy"));
  EXPECT_FALSE(ribbon->Command("Cut"));
  EXPECT_FALSE(ribbon->Command("Bold")) << "it is the program's own";
  EXPECT_HOST_ERROR(ribbon->Command("Sort"), ErrorNumber::ApplicationDefined);
  EXPECT_FALSE(ribbon->Command("Paste"));
  EXPECT_THAT(answers_.log, ElementsAre("command Copy", "command Cut", "enabled Paste"));
  answers_.disabled = {"Paste"};
  EXPECT_FALSE(ribbon->Command("Paste"));
  ribbon->InvalidateControl("Paste");
  EXPECT_HOST_ERROR(ribbon->Command("Paste"), ErrorNumber::ApplicationDefined);
}

TEST_F(RibbonTest, CallbacksMayInvalidateAndCloseAndFail) {
  const auto ribbon = Load(InGroup(R"(<dynamicMenu id="d" getContent="c"/>)"));
  answers_.contents["d"] = Content(R"(<button id="one" getLabel="l" onAction="x"/><button id="two" getLabel="l"/>)");
  answers_.onCall = [&](const std::string& what) {
    if (what == "label one") ribbon->Invalidate();
  };
  EXPECT_EQ(ribbon->Drop("d").size(), 2U);
  EXPECT_THAT(ribbon->Look()[0].children[0].children[0].children, IsEmpty());

  answers_.onCall = [&](const std::string& what) {
    if (what == "label one") throw std::runtime_error("bad");
  };
  EXPECT_THROW(ribbon->Drop("d"), std::runtime_error);
  answers_.onCall = [](const std::string&) {};
  EXPECT_EQ(ribbon->Drop("d").at(0).label, "") << "a failure is not kept";

  ribbon->Invalidate();
  answers_.onCall = [&](const std::string& what) {
    if (what == "content d") ribbon->Close();
  };
  EXPECT_HOST_ERROR(ribbon->Drop("d"), ErrorNumber::ObjectRequired);
}

}  // namespace
}  // namespace tolvane::shell
