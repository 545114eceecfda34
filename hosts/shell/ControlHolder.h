#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/shell/BuiltInControls.h"
#include "src/host/CommandBars.h"

namespace tolvane::shell {

class Control;
struct CommandBarWorld;

// How far menus may lie within each other; Office's own reach three levels down.
inline constexpr int kMaxMenuDepth = 32;

// A bar or a popup control, as that which controls lie in.
class ControlHolder {
 public:
  virtual ~ControlHolder() = default;

  // Throws ApplicationDefined when the user has no way to what lies in it; says why.
  virtual void RequireWithinReach() const = 0;
  virtual const ControlHolder* HeldBy() const noexcept = 0;  // null for a bar

  const std::vector<std::shared_ptr<Control>>& controls() const noexcept { return controls_; }
  void Remove(const Control& control);

 protected:
  explicit ControlHolder(std::shared_ptr<CommandBarWorld> world) : world_(std::move(world)) {}
  const std::shared_ptr<CommandBarWorld>& world() const noexcept { return world_; }

  std::vector<host::CommandBarControl> AllHandles() const;
  host::CommandBarControl HandleAt(int index) const;
  host::CommandBarControl HandleCalled(std::string_view caption) const;
  host::CommandBarControl AddControl(const host::NewControl& control);
  void Fill(std::span<const BuiltInItem> items);
  // The controls and all below them are gone.
  void KillControls() noexcept;

 private:
  int Depth() const noexcept;

  std::shared_ptr<CommandBarWorld> world_;
  std::vector<std::shared_ptr<Control>> controls_;
};

}  // namespace tolvane::shell
