#include "hosts/shell/Clicking.h"

namespace tolvane::shell {

using host::ErrorNumber;
using host::HostError;

std::shared_ptr<Control> OwnBodyOf(const host::CommandBarControl& control) {
  if (control.IsNothing()) throw HostError(ErrorNumber::ObjectNotSet, host::kObjectNotSetText);
  if (!control.IsAlive()) throw HostError(ErrorNumber::ObjectRequired, host::kObjectRequiredText);
  auto own = std::dynamic_pointer_cast<Control>(control.body());
  if (own == nullptr) throw HostError(ErrorNumber::InvalidCall, "The control belongs to another program");
  return own;
}

void ClickOn(CommandBarWorld& world, const host::CommandBarControl& handle) {
  const auto control = OwnBodyOf(handle);
  control->RequireClickable();
  const host::CommandBarControl clicked = handle;  // a listener may set the caller's handle anew
  if (world.listeners.Call(*control, clicked)) return;
  // A listener may have deleted the control: the click happened all the same. The program itself may have ended.
  if (!world.open) return;
  if (const std::string macro = control->OnAction(); !macro.empty()) {
    world.runMacro(macro);
  } else if (control->BuiltIn()) {
    world.builtInEffect(control->Id());
  }
}

}  // namespace tolvane::shell
