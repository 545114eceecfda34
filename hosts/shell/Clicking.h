#pragma once

#include <memory>

#include "hosts/shell/CommandBarWorld.h"
#include "hosts/shell/Control.h"
#include "src/host/CommandBars.h"

namespace tolvane::shell {

// The control behind a handle. ObjectNotSet for Nothing, ObjectRequired for a dead one, InvalidCall for one of another
// program.
std::shared_ptr<Control> OwnBodyOf(const host::CommandBarControl& control);

// A user clicks the control: its listeners are told; unless one of them cancels, its macro runs, and a built-in one
// does what it is there for. Hidden or disabled: ApplicationDefined.
void ClickOn(CommandBarWorld& world, const host::CommandBarControl& control);

}  // namespace tolvane::shell
