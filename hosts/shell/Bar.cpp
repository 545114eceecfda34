#include "hosts/shell/Bar.h"

#include <utility>

#include "hosts/shell/Clicking.h"
#include "hosts/shell/CommandBarWorld.h"
#include "hosts/shell/Control.h"
#include "hosts/shell/Refusal.h"
#include "platform/Text.h"
#include "src/host/form/Caption.h"

namespace tolvane::shell {

using host::BarPosition;
using host::ErrorNumber;
using host::HostError;

namespace {

std::string Quoted(const std::string& name) {
  return "\"" + name + "\"";
}

}  // namespace

Bar::Bar(Key, std::shared_ptr<CommandBarWorld> world, std::string name, BarPosition position, bool builtIn,
         bool temporary)
    : ControlHolder(std::move(world)),
      name_(std::move(name)),
      foldedName_(platform::FoldCase(name_)),
      builtIn_(builtIn),
      temporary_(temporary),
      position_(position) {}

std::shared_ptr<Bar> Bar::MakeOwn(std::shared_ptr<CommandBarWorld> world, const host::NewCommandBar& bar) {
  return std::make_shared<Bar>(Key{}, std::move(world), bar.name, bar.position, false, bar.temporary);
}

std::shared_ptr<Bar> Bar::MakeBuiltIn(std::shared_ptr<CommandBarWorld> world, const BuiltInBar& bar) {
  auto made = std::make_shared<Bar>(Key{}, std::move(world), std::string(bar.name), bar.position, true, false);
  made->visible_ = bar.position != BarPosition::Popup;
  made->Fill(bar.items);
  return made;
}

void Bar::Kill() noexcept {
  alive_ = false;
  KillControls();
}

bool Bar::IsAlive() const noexcept {
  return alive_ && world()->open;
}

host::Gate& Bar::gate() const noexcept {
  return *world()->gate;
}

void Bar::RequireWithinReach() const {
  if (!enabled_) Refuse("The command bar " + Quoted(name_) + " is disabled");
  if (!visible_ && position_ != BarPosition::Popup) Refuse("The command bar " + Quoted(name_) + " is hidden");
}

void Bar::SetVisible(bool visible) {
  if (visible && position_ == BarPosition::Popup) {
    Refuse("The context menu " + Quoted(name_) + " cannot be made visible");
  }
  visible_ = visible;
}

void Bar::SetPosition(BarPosition position) {
  switch (position) {
    case BarPosition::Left:
    case BarPosition::Top:
    case BarPosition::Right:
    case BarPosition::Bottom:
    case BarPosition::Floating:
      if (position_ == BarPosition::Popup) Refuse("The context menu " + Quoted(name_) + " cannot be docked");
      position_ = position;
      return;
    case BarPosition::Popup:
    case BarPosition::MenuBar:
      if (position_ == position) return;
      Refuse("The command bar " + Quoted(name_) + " cannot be made another kind of bar");
  }
  throw HostError(ErrorNumber::InvalidCall, "There is no bar position " + std::to_string(static_cast<int>(position)));
}

void Bar::SetWidth(int width) {
  if (position_ == BarPosition::Floating) width_ = width;
}

void Bar::Delete() {
  if (builtIn_) Refuse("The built-in command bar " + Quoted(name_) + " cannot be deleted");
  const auto kept = shared_from_this();
  std::erase(world()->bars, kept);
  Kill();
}

void Bar::ShowPopup() {
  if (position_ != BarPosition::Popup) Refuse("The command bar " + Quoted(name_) + " is no context menu");
  RequireWithinReach();
  const auto kept = shared_from_this();
  const host::CommandBarControl chosen = world()->desk.ShowPopup(host::CommandBar(kept));
  if (chosen.IsNothing()) return;
  const auto control = OwnBodyOf(chosen);
  const ControlHolder* outermost = control->HeldBy();
  while (outermost->HeldBy() != nullptr) outermost = outermost->HeldBy();
  if (outermost != this) {
    Refuse("The control \"" + host::PlainCaption(control->Caption()) + "\" does not lie in " + Quoted(name_));
  }
  ClickOn(*world(), chosen);
}

}  // namespace tolvane::shell
