#pragma once

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "hosts/shell/ClickListeners.h"
#include "hosts/shell/Desk.h"
#include "src/host/Gate.h"

namespace tolvane::shell {

class Bar;

// What the bars and their controls share, held by each of them: a handle may outlive the program. The bars in it hold
// it in turn until the program closes.
struct CommandBarWorld {
  std::shared_ptr<host::Gate> gate;
  Desk& desk;
  std::function<void(std::string_view macro)> runMacro;
  std::function<void(int builtInId)> builtInEffect;
  std::function<bool()> activeSheetIsProtected;

  bool open = true;  // false once the program is gone: everything is dead then
  std::vector<std::shared_ptr<Bar>> bars;
  ClickListeners listeners;
};

}  // namespace tolvane::shell
