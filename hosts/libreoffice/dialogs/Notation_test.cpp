#include "hosts/libreoffice/dialogs/Notation.h"

#include <gtest/gtest.h>

#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/KeyModifier.hpp>

namespace tolvane::libreoffice {
namespace {

namespace key = css::awt::Key;
namespace modifier = css::awt::KeyModifier;

TEST(ToLabel, MarksTheMnemonicTheOfficesWay) {
  EXPECT_EQ(ToUtf8(ToLabel("&Name:")), "~Name:");
  EXPECT_EQ(ToUtf8(ToLabel("Save && cl&ose")), "Save & cl~ose");
  EXPECT_EQ(ToUtf8(ToLabel("Größe &übrig &X")), "Größe &übrig ~X");
  EXPECT_EQ(ToUtf8(ToLabel("&A &B")), "~A B");
  EXPECT_EQ(ToUtf8(ToLabel("")), "");
}

TEST(ToLabel, TakesTildesForWhatTheyAre) {
  EXPECT_EQ(ToUtf8(ToLabel("~5 &items")), "~~5 ~items");
  EXPECT_EQ(ToUtf8(ToPlainLabel("~ & Co")), "~~ & Co");
}

std::optional<int> Number(sal_Int16 code, sal_Int16 modifiers = 0) {
  css::awt::KeyEvent event;
  event.KeyCode = code;
  event.Modifiers = modifiers;
  const auto found = ToKey(event);
  return found ? std::optional(static_cast<int>(*found)) : std::nullopt;
}

TEST(ToKey, GivesTheNumbersOfTheMacroLanguage) {
  EXPECT_EQ(Number(key::A), 65);
  EXPECT_EQ(Number(key::Z), 90);
  EXPECT_EQ(Number(key::NUM0), 48);
  EXPECT_EQ(Number(key::F2), static_cast<int>(host::Key::F2));
  EXPECT_EQ(Number(key::DELETE), static_cast<int>(host::Key::Delete));
  EXPECT_EQ(Number(key::DOWN, modifier::SHIFT), static_cast<int>(host::Key::Down));
}

TEST(ToKey, KnowsNoCommands) {
  EXPECT_EQ(Number(key::A, modifier::MOD1), std::nullopt);
  EXPECT_EQ(Number(key::DOWN, modifier::MOD2), std::nullopt);
  EXPECT_EQ(Number(key::HELP), std::nullopt);
}

}  // namespace
}  // namespace tolvane::libreoffice
