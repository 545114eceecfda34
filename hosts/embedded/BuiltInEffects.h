#pragma once

#include "hosts/embedded/Program.h"

namespace tolvane::embedded {

// What the program's own controls do when nobody has taken them over. Those that only open a dialog, or that concern
// what is not modelled, do nothing. Refusals as by the members that they correspond to.
void DoBuiltInControl(Program& program, int controlId);

}  // namespace tolvane::embedded
