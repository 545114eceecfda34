#pragma once

#include <string_view>

#include "hosts/shell/KeyNotation.h"

namespace tolvane::shell {

class Session;

// What the program's own commands and keys do when nobody has taken them over, by the control that they stand for.
// Those that only open a dialog, or that concern what is not modelled, do nothing.
void DoBuiltInCommand(Session& session, std::string_view ribbonId);
void DoBuiltInKey(Session& session, const KeyStroke& key);

}  // namespace tolvane::shell
