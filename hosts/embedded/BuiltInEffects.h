#pragma once

#include <string_view>

#include "hosts/embedded/EmbeddedKeys.h"
#include "hosts/embedded/Program.h"

namespace tolvane::embedded {

// What the program's own commands do when nobody has taken them over. Those that only open a dialog, or that concern
// what is not modelled, do nothing. Refusals as by the members that they correspond to.
void DoBuiltInControl(Program& program, int controlId);
void DoBuiltInCommand(Program& program, std::string_view ribbonId);
void DoBuiltInKey(Program& program, const KeyStroke& key);

}  // namespace tolvane::embedded
