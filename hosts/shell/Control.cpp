#include "hosts/shell/Control.h"

#include <utility>

#include "hosts/shell/CommandBarWorld.h"
#include "hosts/shell/Refusal.h"
#include "src/host/form/Caption.h"

namespace tolvane::shell {

using host::ControlType;
using host::ErrorNumber;
using host::HostError;

namespace {

std::string Quoted(std::string_view caption) {
  return std::string("\"").append(host::PlainCaption(caption)).append("\"");
}

}  // namespace

Control::Control(Key, std::shared_ptr<CommandBarWorld> world, ControlHolder& holder, int id, ControlType type,
                 bool temporary)
    : ControlHolder(std::move(world)), holder_(&holder), id_(id), type_(type), temporary_(temporary) {}

std::shared_ptr<Control> Control::MakeOwn(std::shared_ptr<CommandBarWorld> world, ControlHolder& holder,
                                          ControlType type, bool temporary) {
  return std::make_shared<Control>(Key{}, std::move(world), holder, kOwnControlId, type, temporary);
}

std::shared_ptr<Control> Control::MakeBuiltIn(std::shared_ptr<CommandBarWorld> world, ControlHolder& holder,
                                              const BuiltInControl& builtIn, bool temporary) {
  auto control = std::make_shared<Control>(Key{}, std::move(world), holder, builtIn.id,
                                           builtIn.isPopup() ? ControlType::Popup : ControlType::Button, temporary);
  control->shortcutText_ = builtIn.shortcut;
  control->faceId_ = builtIn.id;  // Office numbers faces like the commands that they belong to
  control->Fill(builtIn.items);
  return control;
}

bool Control::SharesClicksWith(const Control& other) const {
  if (this == &other) return true;
  if (id_ != other.id_) return false;
  return BuiltIn() || (!tag_.empty() && tag_ == other.tag_);
}

void Control::RequireClickable() const {
  if (!visible_) Refuse("The control " + Quoted(Caption()) + " is hidden and cannot be clicked");
  if (!enabled_) Refuse("The control " + Quoted(Caption()) + " is disabled and cannot be clicked");
  holder_->RequireWithinReach();
}

void Control::Kill() noexcept {
  holder_ = nullptr;
  KillControls();
}

bool Control::IsAlive() const noexcept {
  return holder_ != nullptr && world()->open;
}

host::Gate& Control::gate() const noexcept {
  return *world()->gate;
}

std::vector<host::CommandBarControl> Control::ControlsAll() const {
  RequirePopup();
  return AllHandles();
}

host::CommandBarControl Control::ControlsItem(int index) const {
  RequirePopup();
  return HandleAt(index);
}

host::CommandBarControl Control::ControlsItem(std::string_view caption) const {
  RequirePopup();
  return HandleCalled(caption);
}

host::CommandBarControl Control::ControlsAdd(const host::NewControl& control) {
  RequirePopup();
  return AddControl(control);
}

std::string Control::Caption() const {
  if (caption_.has_value()) return *caption_;
  if (!BuiltIn()) return {};
  if (id_ == builtin::kProtectSheet && world()->open && world()->activeSheetIsProtected &&
      world()->activeSheetIsProtected()) {
    return std::string(kUnprotectSheetCaption);
  }
  return std::string(FindBuiltInControl(id_)->caption);
}

void Control::SetState(host::ButtonState state) {
  RequireButton("State");
  if (BuiltIn()) Refuse("The state of the built-in control " + Quoted(Caption()) + " cannot be set");
  state_ = state;
}

void Control::SetWidth(int width) {
  if (width < 0) throw HostError(ErrorNumber::InvalidCall, "A width of " + std::to_string(width) + " is none");
  width_ = width;
}

void Control::SetShortcutText(std::string_view text) {
  RequireButton("ShortcutText");
  shortcutText_ = text;
}

std::string Control::TooltipText() const {
  return tooltipText_.has_value() ? *tooltipText_ : host::PlainCaption(Caption());
}

void Control::SetFaceId(int id) {
  RequireButton("FaceId");
  if (id < 0) throw HostError(ErrorNumber::InvalidCall, "There is no face " + std::to_string(id));
  faceId_ = id;
  face_ = {};
}

void Control::SetFace(const host::Picture& picture, const host::Picture&) {
  RequireButton("Picture");
  face_ = picture;
}

std::vector<std::string> Control::Items() const {
  RequireList("List");
  return items_;
}

void Control::AddItem(std::string_view text) {
  RequireList("AddItem");
  items_.emplace_back(text);
}

void Control::Delete() {
  const auto kept = shared_from_this();  // the holder may be the last that has it
  holder_->Remove(*this);
  Kill();
}

host::Subscription Control::AdviseClick(host::ClickHandler handler) {
  if (!handler) throw HostError(ErrorNumber::InvalidCall, "A click needs a handler");
  return world()->listeners.Add(shared_from_this(), std::move(handler));
}

void Control::RequireButton(std::string_view member) const {
  if (type_ != ControlType::Button) {
    Refuse(std::string(member) + " belongs to buttons; " + Quoted(Caption()) + " is none");
  }
}

void Control::RequireList(std::string_view member) const {
  if (type_ != ControlType::Dropdown && type_ != ControlType::ComboBox) {
    Refuse(std::string(member) + " belongs to lists; " + Quoted(Caption()) + " is none");
  }
}

void Control::RequirePopup() const {
  if (type_ != ControlType::Popup) Refuse("Only a menu holds controls; " + Quoted(Caption()) + " is none");
}

}  // namespace tolvane::shell
