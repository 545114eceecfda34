#include "hosts/libreoffice/dialogs/Notation.h"

#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/KeyModifier.hpp>

#include "src/host/form/Caption.h"

namespace tolvane::libreoffice {

namespace {

namespace key = css::awt::Key;

struct KeyPair {
  sal_Int16 office;
  int number;
};
constexpr KeyPair kKeys[] = {
    {key::DOWN, 40}, {key::UP, 38},        {key::LEFT, 37},      {key::RIGHT, 39},   {key::HOME, 36},
    {key::END, 35},  {key::PAGEUP, 33},    {key::PAGEDOWN, 34},  {key::RETURN, 13},  {key::ESCAPE, 27},
    {key::TAB, 9},   {key::BACKSPACE, 8},  {key::SPACE, 32},     {key::INSERT, 45},  {key::DELETE, 46},
    {key::ADD, 107}, {key::SUBTRACT, 109}, {key::MULTIPLY, 106}, {key::DIVIDE, 111}, {key::CONTEXTMENU, 93},
};

}  // namespace

OUString ToLabel(std::string_view caption) {
  const auto mnemonic = host::MnemonicOf(caption);
  const std::string plain = host::PlainCaption(caption);
  if (!mnemonic) return ToPlainLabel(plain);
  return ToPlainLabel(std::string_view(plain).substr(0, mnemonic->position)) + "~" +
         ToPlainLabel(std::string_view(plain).substr(mnemonic->position));
}

OUString ToPlainLabel(std::string_view text) {
  return ToUno(text).replaceAll("~", "~~");
}

std::optional<host::Key> ToKey(const css::awt::KeyEvent& event) {
  namespace modifier = css::awt::KeyModifier;
  if ((event.Modifiers & (modifier::MOD1 | modifier::MOD2 | modifier::MOD3)) != 0) return std::nullopt;
  const auto within = [&](sal_Int16 first, sal_Int16 last) { return event.KeyCode >= first && event.KeyCode <= last; };
  if (within(key::A, key::Z)) return static_cast<host::Key>('A' + event.KeyCode - key::A);
  if (within(key::NUM0, key::NUM9)) return static_cast<host::Key>('0' + event.KeyCode - key::NUM0);
  constexpr int kF1 = 112;
  if (within(key::F1, key::F24)) return static_cast<host::Key>(kF1 + event.KeyCode - key::F1);
  for (const KeyPair& pair : kKeys) {
    if (pair.office == event.KeyCode) return static_cast<host::Key>(pair.number);
  }
  return std::nullopt;
}

}  // namespace tolvane::libreoffice
