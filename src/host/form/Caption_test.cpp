#include "src/host/form/Caption.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <string>

namespace tolvane::host {
namespace {

TEST(Caption, MarksTheCharacterBehindTheSign) {
  EXPECT_EQ(PlainCaption("&Quantity to add:"), "Quantity to add:");
  EXPECT_EQ(MnemonicOf("&Quantity to add:"), (Mnemonic{'q', 0}));
  EXPECT_EQ(PlainCaption("Period &end:"), "Period end:");
  EXPECT_EQ(MnemonicOf("Period &end:"), (Mnemonic{'e', 7}));
  EXPECT_EQ(MnemonicOf("Page &2"), (Mnemonic{'2', 5}));
}

TEST(Caption, HasNoMnemonicWithoutASign) {
  EXPECT_EQ(MnemonicOf("OK"), std::nullopt);
  EXPECT_EQ(MnemonicOf(""), std::nullopt);
}

TEST(Caption, ADoubleSignIsOne) {
  EXPECT_EQ(PlainCaption("Food && &drink"), "Food & drink");
  EXPECT_EQ(MnemonicOf("Food && &drink"), (Mnemonic{'d', 7}));
  EXPECT_EQ(PlainCaption("&&&A"), "&A");
}

TEST(Caption, ASignBeforeAnythingElseStandsForItself) {
  EXPECT_EQ(PlainCaption("Food & drink"), "Food & drink");
  EXPECT_EQ(MnemonicOf("Food & drink"), std::nullopt);
  EXPECT_EQ(PlainCaption("A&"), "A&");
  EXPECT_EQ(PlainCaption("&\xC3\x89tat"), "&\xC3\x89tat");
  EXPECT_EQ(MnemonicOf("&\xC3\x89tat"), std::nullopt);
}

TEST(Caption, TakesTheFirstOfSeveralMarks) {
  EXPECT_EQ(MnemonicOf("&One &Two"), (Mnemonic{'o', 0}));
}

TEST(Caption, AnyTextIsShownAsItIs) {
  EXPECT_TRUE(rc::check([](const std::string& text) {
    RC_ASSERT(PlainCaption(CaptionOf(text)) == text);
    RC_ASSERT(!MnemonicOf(CaptionOf(text)));
  }));
  EXPECT_EQ(PlainCaption(CaptionOf("&Food && drink&")), "&Food && drink&");
  EXPECT_EQ(MnemonicOf(CaptionOf("&Food")), std::nullopt);
}

}  // namespace
}  // namespace tolvane::host
