#include "src/host/CommandBars.h"

#include <utility>

namespace tolvane::host {

int CommandBarControls::Count() const {
  return Read("CommandBarControls.Count",
              [](const ControlsBody& body) { return static_cast<int>(body.ControlsAll().size()); });
}
CommandBarControl CommandBarControls::Item(int index) const {
  return Read("CommandBarControls.Item", [index](const ControlsBody& body) { return body.ControlsItem(index); });
}
CommandBarControl CommandBarControls::Item(std::string_view caption) const {
  return Read("CommandBarControls.Item", [caption](const ControlsBody& body) { return body.ControlsItem(caption); });
}
std::vector<CommandBarControl> CommandBarControls::All() const {
  return Read("CommandBarControls.All", &ControlsBody::ControlsAll);
}
CommandBarControl CommandBarControls::Add(const NewControl& control) const {
  return Write("CommandBarControls.Add", &ControlsBody::ControlsAdd, control);
}

std::string CommandBarControl::Caption() const {
  return Read("CommandBarControl.Caption", &ControlBody::Caption);
}
void CommandBarControl::SetCaption(std::string_view caption) const {
  Write("CommandBarControl.Caption", &ControlBody::SetCaption, caption);
}
int CommandBarControl::Id() const {
  return Read("CommandBarControl.Id", &ControlBody::Id);
}
ControlType CommandBarControl::Type() const {
  return Read("CommandBarControl.Type", &ControlBody::Type);
}
bool CommandBarControl::BuiltIn() const {
  return Read("CommandBarControl.BuiltIn", &ControlBody::BuiltIn);
}
bool CommandBarControl::Enabled() const {
  return Read("CommandBarControl.Enabled", &ControlBody::Enabled);
}
void CommandBarControl::SetEnabled(bool enabled) const {
  Write("CommandBarControl.Enabled", &ControlBody::SetEnabled, enabled);
}
bool CommandBarControl::Visible() const {
  return Read("CommandBarControl.Visible", &ControlBody::Visible);
}
void CommandBarControl::SetVisible(bool visible) const {
  Write("CommandBarControl.Visible", &ControlBody::SetVisible, visible);
}
std::string CommandBarControl::Tag() const {
  return Read("CommandBarControl.Tag", &ControlBody::Tag);
}
void CommandBarControl::SetTag(std::string_view tag) const {
  Write("CommandBarControl.Tag", &ControlBody::SetTag, tag);
}
std::string CommandBarControl::Parameter() const {
  return Read("CommandBarControl.Parameter", &ControlBody::Parameter);
}
void CommandBarControl::SetParameter(std::string_view parameter) const {
  Write("CommandBarControl.Parameter", &ControlBody::SetParameter, parameter);
}
std::string CommandBarControl::OnAction() const {
  return Read("CommandBarControl.OnAction", &ControlBody::OnAction);
}
void CommandBarControl::SetOnAction(std::string_view macro) const {
  Write("CommandBarControl.OnAction", &ControlBody::SetOnAction, macro);
}
ButtonStyle CommandBarControl::Style() const {
  return Read("CommandBarControl.Style", &ControlBody::Style);
}
void CommandBarControl::SetStyle(ButtonStyle style) const {
  Write("CommandBarControl.Style", &ControlBody::SetStyle, style);
}
ButtonState CommandBarControl::State() const {
  return Read("CommandBarControl.State", &ControlBody::State);
}
void CommandBarControl::SetState(ButtonState state) const {
  Write("CommandBarControl.State", &ControlBody::SetState, state);
}
int CommandBarControl::Width() const {
  return Read("CommandBarControl.Width", &ControlBody::Width);
}
void CommandBarControl::SetWidth(int width) const {
  Write("CommandBarControl.Width", &ControlBody::SetWidth, width);
}
bool CommandBarControl::BeginGroup() const {
  return Read("CommandBarControl.BeginGroup", &ControlBody::BeginGroup);
}
void CommandBarControl::SetBeginGroup(bool begin) const {
  Write("CommandBarControl.BeginGroup", &ControlBody::SetBeginGroup, begin);
}
std::string CommandBarControl::ShortcutText() const {
  return Read("CommandBarControl.ShortcutText", &ControlBody::ShortcutText);
}
void CommandBarControl::SetShortcutText(std::string_view text) const {
  Write("CommandBarControl.ShortcutText", &ControlBody::SetShortcutText, text);
}
std::string CommandBarControl::TooltipText() const {
  return Read("CommandBarControl.TooltipText", &ControlBody::TooltipText);
}
void CommandBarControl::SetTooltipText(std::string_view text) const {
  Write("CommandBarControl.TooltipText", &ControlBody::SetTooltipText, text);
}
int CommandBarControl::FaceId() const {
  return Read("CommandBarControl.FaceId", &ControlBody::FaceId);
}
void CommandBarControl::SetFaceId(int id) const {
  Write("CommandBarControl.FaceId", &ControlBody::SetFaceId, id);
}
Picture CommandBarControl::Face() const {
  return Read("CommandBarControl.Picture", &ControlBody::Face);
}
void CommandBarControl::SetFace(const Picture& picture, const Picture& mask) const {
  Write("CommandBarControl.Picture", &ControlBody::SetFace, picture, mask);
}
std::vector<std::string> CommandBarControl::Items() const {
  return Read("CommandBarControl.List", &ControlBody::Items);
}
void CommandBarControl::AddItem(std::string_view text) const {
  Write("CommandBarControl.AddItem", &ControlBody::AddItem, text);
}
void CommandBarControl::Delete() const {
  Write("CommandBarControl.Delete", &ControlBody::Delete);
}
Subscription CommandBarControl::AdviseClick(ClickHandler handler) const {
  return Write("CommandBarControl.Click", &ControlBody::AdviseClick, std::move(handler));
}

std::string CommandBar::Name() const {
  return Read("CommandBar.Name", &CommandBarBody::Name);
}
bool CommandBar::BuiltIn() const {
  return Read("CommandBar.BuiltIn", &CommandBarBody::BuiltIn);
}
bool CommandBar::Visible() const {
  return Read("CommandBar.Visible", &CommandBarBody::Visible);
}
void CommandBar::SetVisible(bool visible) const {
  Write("CommandBar.Visible", &CommandBarBody::SetVisible, visible);
}
bool CommandBar::Enabled() const {
  return Read("CommandBar.Enabled", &CommandBarBody::Enabled);
}
void CommandBar::SetEnabled(bool enabled) const {
  Write("CommandBar.Enabled", &CommandBarBody::SetEnabled, enabled);
}
BarPosition CommandBar::Position() const {
  return Read("CommandBar.Position", &CommandBarBody::Position);
}
void CommandBar::SetPosition(BarPosition position) const {
  Write("CommandBar.Position", &CommandBarBody::SetPosition, position);
}
int CommandBar::Protection() const {
  return Read("CommandBar.Protection", &CommandBarBody::Protection);
}
void CommandBar::SetProtection(int bits) const {
  Write("CommandBar.Protection", &CommandBarBody::SetProtection, bits);
}
int CommandBar::RowIndex() const {
  return Read("CommandBar.RowIndex", &CommandBarBody::RowIndex);
}
void CommandBar::SetRowIndex(int row) const {
  Write("CommandBar.RowIndex", &CommandBarBody::SetRowIndex, row);
}
int CommandBar::Left() const {
  return Read("CommandBar.Left", &CommandBarBody::Left);
}
void CommandBar::SetLeft(int left) const {
  Write("CommandBar.Left", &CommandBarBody::SetLeft, left);
}
int CommandBar::Top() const {
  return Read("CommandBar.Top", &CommandBarBody::Top);
}
void CommandBar::SetTop(int top) const {
  Write("CommandBar.Top", &CommandBarBody::SetTop, top);
}
int CommandBar::Width() const {
  return Read("CommandBar.Width", &CommandBarBody::Width);
}
void CommandBar::SetWidth(int width) const {
  Write("CommandBar.Width", &CommandBarBody::SetWidth, width);
}
int CommandBar::Height() const {
  return Read("CommandBar.Height", &CommandBarBody::Height);
}
void CommandBar::SetHeight(int height) const {
  Write("CommandBar.Height", &CommandBarBody::SetHeight, height);
}
void CommandBar::Delete() const {
  Write("CommandBar.Delete", &CommandBarBody::Delete);
}
void CommandBar::ShowPopup() const {
  Write("CommandBar.ShowPopup", &CommandBarBody::ShowPopup);
}

std::vector<CommandBar> CommandBars::All() const {
  return Read("CommandBars.All", &CommandBarsBody::All);
}
CommandBar CommandBars::Item(std::string_view name) const {
  return Read("CommandBars.Item", [name](const CommandBarsBody& bars) { return bars.Item(name); });
}
CommandBar CommandBars::Item(int index) const {
  return Read("CommandBars.Item", [index](const CommandBarsBody& bars) { return bars.Item(index); });
}
CommandBar CommandBars::Add(const NewCommandBar& bar) const {
  return Write("CommandBars.Add", &CommandBarsBody::Add, bar);
}
CommandBarControl CommandBars::FindControl(std::optional<int> id, std::optional<std::string> tag) const {
  return Read("CommandBars.FindControl", &CommandBarsBody::FindControl, id, std::move(tag));
}
bool CommandBars::DisplayTooltips() const {
  return Read("CommandBars.DisplayTooltips", &CommandBarsBody::DisplayTooltips);
}
void CommandBars::SetDisplayTooltips(bool on) const {
  Write("CommandBars.DisplayTooltips", &CommandBarsBody::SetDisplayTooltips, on);
}
bool CommandBars::DisplayKeysInTooltips() const {
  return Read("CommandBars.DisplayKeysInTooltips", &CommandBarsBody::DisplayKeysInTooltips);
}
void CommandBars::SetDisplayKeysInTooltips(bool on) const {
  Write("CommandBars.DisplayKeysInTooltips", &CommandBarsBody::SetDisplayKeysInTooltips, on);
}

}  // namespace tolvane::host
