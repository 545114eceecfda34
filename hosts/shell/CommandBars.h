#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/shell/Desk.h"
#include "src/host/CommandBars.h"
#include "src/host/Gate.h"

namespace tolvane::shell {

class Bar;
struct CommandBarWorld;

// The command bars of a host: nothing is drawn, but everything can be looked at through the port and
// clicked.
class CommandBars final : public host::CommandBarsBody {
 public:
  struct Surroundings {
    std::shared_ptr<host::Gate> gate;  // shared: dead handles still pass it
    Desk& desk;                        // asked for the choice from a context menu; lives until Close
    std::function<void(std::string_view macro)> runMacro;    // of an OnAction
    std::function<void(int builtInId)> builtInEffect;        // what a built-in control does by itself; any id may come
    std::function<bool()> activeSheetIsProtected = nullptr;  // protecting is called unprotecting then
  };
  // With the built-in bars.
  explicit CommandBars(Surroundings surroundings);
  ~CommandBars() override;
  CommandBars(const CommandBars&) = delete;
  CommandBars& operator=(const CommandBars&) = delete;

  // The program ends: every handle is dead from now on, and no listener is called any more.
  void Close() noexcept;

  // A user clicks the control: those who listen to it or to its like are called in the order of subscribing; unless one
  // of them cancels, its OnAction macro runs, or, if it is built-in and has none, its own effect. ApplicationDefined
  // when it, or a menu or bar that it lies in, is hidden or disabled. Failures of the macro and the effect pass
  // through.
  void Click(const host::CommandBarControl& control);

  // What the program would find again when it starts next: the names of bars and "bar/caption" of controls that an
  // add-in added without making them temporary.
  std::vector<std::string> Lasting() const;

  bool IsAlive() const noexcept override;
  host::Gate& gate() const noexcept override;
  std::vector<host::CommandBar> All() const override;
  host::CommandBar Item(std::string_view name) const override;
  host::CommandBar Item(int index) const override;
  host::CommandBar Add(const host::NewCommandBar& bar) override;
  host::CommandBarControl FindControl(std::optional<int> id, std::optional<std::string> tag) const override;
  bool DisplayTooltips() const override { return displayTooltips_; }
  void SetDisplayTooltips(bool on) override { displayTooltips_ = on; }
  bool DisplayKeysInTooltips() const override { return displayKeysInTooltips_; }
  void SetDisplayKeysInTooltips(bool on) override { displayKeysInTooltips_ = on; }

 private:
  std::shared_ptr<Bar> Find(std::string_view name) const;
  std::string FreeName() const;

  std::shared_ptr<CommandBarWorld> world_;
  bool displayTooltips_ = true;
  bool displayKeysInTooltips_ = false;
};

}  // namespace tolvane::shell
