#include "hosts/shell/ControlHolder.h"

#include <algorithm>

#include "hosts/shell/CommandBarWorld.h"
#include "hosts/shell/Control.h"
#include "hosts/shell/Refusal.h"
#include "platform/Text.h"
#include "src/host/form/Caption.h"

namespace tolvane::shell {

using host::ControlType;
using host::ErrorNumber;
using host::HostError;

void ControlHolder::Remove(const Control& control) {
  std::erase_if(controls_, [&](const auto& held) { return held.get() == &control; });
}

std::vector<host::CommandBarControl> ControlHolder::AllHandles() const {
  std::vector<host::CommandBarControl> handles;
  handles.reserve(controls_.size());
  for (const auto& control : controls_) handles.emplace_back(control);
  return handles;
}

host::CommandBarControl ControlHolder::HandleAt(int index) const {
  if (index < 1 || static_cast<std::size_t>(index) > controls_.size()) {
    throw HostError(ErrorNumber::InvalidCall,
                    "There is no control " + std::to_string(index) + " among " + std::to_string(controls_.size()));
  }
  return host::CommandBarControl(controls_[static_cast<std::size_t>(index) - 1]);
}

host::CommandBarControl ControlHolder::HandleCalled(std::string_view caption) const {
  const std::string wanted = platform::FoldCase(host::PlainCaption(caption));
  for (const auto& control : controls_) {
    if (platform::FoldCase(host::PlainCaption(control->Caption())) == wanted) return host::CommandBarControl(control);
  }
  throw HostError(ErrorNumber::InvalidCall, "There is no control \"" + std::string(caption) + "\"");
}

host::CommandBarControl ControlHolder::AddControl(const host::NewControl& control) {
  const BuiltInControl* builtIn = nullptr;
  if (control.id != kOwnControlId) {
    builtIn = FindBuiltInControl(control.id);
    if (builtIn == nullptr) {
      throw HostError(ErrorNumber::InvalidCall, "There is no built-in control " + std::to_string(control.id));
    }
  }
  switch (control.type) {
    case ControlType::Button:
    case ControlType::Edit:
    case ControlType::Dropdown:
    case ControlType::ComboBox:
    case ControlType::Popup:
      break;
    default:
      throw HostError(ErrorNumber::InvalidCall,
                      "Controls of type " + std::to_string(static_cast<int>(control.type)) + " cannot be added");
  }
  std::size_t position = controls_.size();
  if (control.before.has_value()) {
    if (*control.before < 1 || static_cast<std::size_t>(*control.before) > controls_.size() + 1) {
      throw HostError(ErrorNumber::InvalidCall, "There is no position " + std::to_string(*control.before) + " among " +
                                                    std::to_string(controls_.size()) + " controls");
    }
    position = static_cast<std::size_t>(*control.before) - 1;
  }
  if (Depth() >= kMaxMenuDepth) {
    Refuse("Menus lie within each other at most " + std::to_string(kMaxMenuDepth) + " deep");
  }
  auto added = builtIn != nullptr ? Control::MakeBuiltIn(world_, *this, *builtIn, control.temporary)
                                  : Control::MakeOwn(world_, *this, control.type, control.temporary);
  controls_.insert(controls_.begin() + static_cast<std::ptrdiff_t>(position), added);
  return host::CommandBarControl(std::move(added));
}

void ControlHolder::Fill(std::span<const BuiltInItem> items) {
  controls_.reserve(items.size());
  for (const BuiltInItem& item : items) {
    auto control = Control::MakeBuiltIn(world_, *this, *FindBuiltInControl(item.id), false);
    control->SetBeginGroup(item.beginGroup);
    controls_.push_back(std::move(control));
  }
}

void ControlHolder::KillControls() noexcept {
  for (const auto& control : controls_) control->Kill();
  controls_.clear();
}

int ControlHolder::Depth() const noexcept {
  int depth = 0;
  for (const ControlHolder* above = HeldBy(); above != nullptr; above = above->HeldBy()) ++depth;
  return depth;
}

}  // namespace tolvane::shell
