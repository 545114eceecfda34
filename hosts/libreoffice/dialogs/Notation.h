#pragma once

#include <com/sun/star/awt/KeyEvent.hpp>
#include <optional>
#include <string_view>

#include "hosts/libreoffice/Uno.h"
#include "src/host/form/Control.h"

namespace tolvane::libreoffice {

// A caption as the office marks mnemonics: with "~" where the port has "&".
OUString ToLabel(std::string_view caption);
// A text that is shown as it is, whatever it contains.
OUString ToPlainLabel(std::string_view text);

// The number of a key in the macro language; none for a key that is pressed together with Ctrl or Alt, or that it has
// no number for.
std::optional<host::Key> ToKey(const css::awt::KeyEvent& event);

}  // namespace tolvane::libreoffice
