#pragma once

#include <string_view>

#include "hosts/embedded/Program.h"
#include "hosts/shell/Keys.h"

namespace tolvane::embedded {

// What the program's own commands do when nobody has taken them over. Those that only open a dialog, or that concern
// what is not modelled, do nothing. Refusals as by the members that they correspond to.
void DoBuiltInControl(Program& program, int controlId);
void DoBuiltInCommand(Program& program, std::string_view ribbonId);
void DoBuiltInKey(Program& program, const shell::KeyStroke& key);

}  // namespace tolvane::embedded
