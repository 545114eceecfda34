#include "hosts/shell/Keys.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <string>
#include <vector>

#include "testing/HostErrors.h"

namespace tolvane::shell {
namespace {

using host::ErrorNumber;
using ::testing::ElementsAre;

std::string Text(const KeyStroke& key) {
  return std::string(key.ctrl ? "Ctrl+" : "") + (key.alt ? "Alt+" : "") + (key.shift ? "Shift+" : "") + key.name;
}
std::vector<std::string> Texts(std::string_view keys) {
  std::vector<std::string> texts;
  for (const KeyStroke& key : ParseKeys(keys)) texts.push_back(Text(key));
  return texts;
}

TEST(KeyNotation, OneKey) {
  EXPECT_EQ(Text(ParseKey("^c")), "Ctrl+c");
  EXPECT_EQ(Text(ParseKey("^C")), "Ctrl+C");
  EXPECT_EQ(Text(ParseKey("+{INSERT}")), "Shift+INSERT");
  EXPECT_EQ(Text(ParseKey("~")), "RETURN");
  EXPECT_EQ(Text(ParseKey("^~")), "Ctrl+RETURN");
  EXPECT_EQ(Text(ParseKey("{ENTER}")), "ENTER");
  EXPECT_EQ(Text(ParseKey("%+^{F12}")), "Ctrl+Alt+Shift+F12");
  EXPECT_EQ(Text(ParseKey("{+}")), "+");
  EXPECT_EQ(Text(ParseKey("^{^}")), "Ctrl+^");
  EXPECT_EQ(Text(ParseKey("{}}")), "}");
  EXPECT_EQ(Text(ParseKey("{{}")), "{");
  EXPECT_EQ(Text(ParseKey("^ä")), "Ctrl+ä");
  EXPECT_EQ(Text(ParseKey("{é}")), "é");
}

TEST(KeyNotation, SpellingsOfOneKeyAreOneKey) {
  EXPECT_EQ(ParseKey("{DEL}"), ParseKey("{delete}"));
  EXPECT_EQ(ParseKey("{BS}"), ParseKey("{Backspace}"));
  EXPECT_EQ(ParseKey("{esc}"), ParseKey("{ESCAPE}"));
  EXPECT_EQ(ParseKey("{INS}"), ParseKey("{INSERT}"));
  EXPECT_EQ(ParseKey("^+x"), ParseKey("+^x"));
  EXPECT_EQ(ParseKey("{a}"), ParseKey("a"));
  EXPECT_NE(ParseKey("^x"), ParseKey("^X"));
  EXPECT_NE(ParseKey("~"), ParseKey("{ENTER}"));
}

TEST(KeyNotation, WhatIsNoKeyIsRefused) {
  for (const char* const text : {"", "^", "^+", "++a", "{", "{}", "{INSERT", "{FLY}", "{F16}", "ab", "^(ab)", "(", ")",
                                 "[", "}", "{a 3}", "\xff"}) {
    SCOPED_TRACE(text);
    EXPECT_HOST_ERROR(ParseKey(text), ErrorNumber::ApplicationDefined);
  }
}

TEST(KeyNotation, ManyKeys) {
  EXPECT_THAT(Texts("aB~{TAB}"), ElementsAre("a", "B", "RETURN", "TAB"));
  EXPECT_THAT(Texts("{LEFT 3}x"), ElementsAre("LEFT", "LEFT", "LEFT", "x"));
  EXPECT_THAT(Texts("^{x 2}"), ElementsAre("Ctrl+x", "Ctrl+x"));
  EXPECT_THAT(Texts("+(ec)d"), ElementsAre("Shift+e", "Shift+c", "d"));
  EXPECT_THAT(Texts("(a{UP})"), ElementsAre("a", "UP"));
  EXPECT_THAT(Texts("{ }"), ElementsAre(" "));
  EXPECT_THAT(Texts(""), ElementsAre());
}

TEST(KeyNotation, WhatAreNoKeysIsRefused) {
  for (const char* const text : {"+(ab", "(a(b))", "(^a)", "a)", "{LEFT }", "{LEFT x}", "{LEFT 0}", "{LEFT -1}", "ab^",
                                 "{LEFT 10001}", "{LEFT 99999999999999999999}", "{a 6000}{b 6000}"}) {
    SCOPED_TRACE(text);
    EXPECT_HOST_ERROR(ParseKeys(text), ErrorNumber::ApplicationDefined);
  }
  EXPECT_EQ(ParseKeys("{LEFT 10000}").size(), 10000U);
}

TEST(KeyNotation, AnyTextIsReadOrRefused) {
  EXPECT_TRUE(rc::check([] {
    const auto text = *rc::gen::container<std::string>(
        rc::gen::oneOf(rc::gen::elementOf(std::string("{}()+^%~ aB1INSERT")), rc::gen::arbitrary<char>()));
    try {
      for (const KeyStroke& key : ParseKeys(text)) RC_ASSERT(!key.name.empty());
    } catch (const host::HostError& error) {
      RC_ASSERT(error.number() == ErrorNumber::ApplicationDefined);
    }
  }));
}

TEST(Keys, AHookedKeyRunsItsMacroUntilItIsGivenBack) {
  Keys keys;
  EXPECT_EQ(keys.MacroOf("^c"), std::nullopt);
  keys.Hook("^c", "Copy");
  keys.Hook("{DEL}", "Delete");
  keys.Hook("%{F4}", "");
  EXPECT_EQ(keys.MacroOf("^c"), "Copy");
  EXPECT_EQ(keys.MacroOf("^C"), std::nullopt);
  EXPECT_EQ(keys.MacroOf("{DELETE}"), "Delete");
  EXPECT_EQ(keys.MacroOf("%{F4}"), "") << "it does nothing at all";
  keys.Hook("^c", "Other");
  EXPECT_EQ(keys.MacroOf("^c"), "Other");
  keys.Hook("^c", std::nullopt);
  EXPECT_EQ(keys.MacroOf("^c"), std::nullopt);
  EXPECT_HOST_ERROR(keys.Hook("{FLY}", "x"), ErrorNumber::ApplicationDefined);
}

TEST(Keys, SentKeysWaitInOrder) {
  Keys keys;
  keys.Send("a^b");
  EXPECT_HOST_ERROR(keys.Send("c{FLY}"), ErrorNumber::ApplicationDefined);
  EXPECT_HOST_ERROR(keys.Send("{x 9999}"), ErrorNumber::ApplicationDefined);
  keys.Send("~");
  EXPECT_EQ(keys.TakeSent(), ParseKey("a"));
  EXPECT_EQ(keys.TakeSent(), ParseKey("^b"));
  EXPECT_EQ(keys.TakeSent(), ParseKey("~"));
  EXPECT_EQ(keys.TakeSent(), std::nullopt);
}

}  // namespace
}  // namespace tolvane::shell
