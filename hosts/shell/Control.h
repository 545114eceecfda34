#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/shell/ControlHolder.h"
#include "src/host/CommandBars.h"

namespace tolvane::shell {

inline constexpr int kOwnControlId = 1;  // of all controls that are no built-in ones

// A control of a bar: built-in or an add-in's own.
class Control final : public host::ControlBody, public ControlHolder, public std::enable_shared_from_this<Control> {
  struct Key {};

 public:
  static std::shared_ptr<Control> MakeOwn(std::shared_ptr<CommandBarWorld> world, ControlHolder& holder,
                                          host::ControlType type, bool temporary);
  // A menu comes with what it holds.
  static std::shared_ptr<Control> MakeBuiltIn(std::shared_ptr<CommandBarWorld> world, ControlHolder& holder,
                                              const BuiltInControl& builtIn, bool temporary);
  Control(Key, std::shared_ptr<CommandBarWorld> world, ControlHolder& holder, int id, host::ControlType type,
          bool temporary);

  // Whether one who listens to this control hears the clicks of the other: own ones by their tag, built-in ones by
  // their id.
  bool SharesClicksWith(const Control& other) const;
  // Throws ApplicationDefined when a user cannot click it; says why.
  void RequireClickable() const;
  bool IsTemporary() const noexcept { return temporary_; }
  void Kill() noexcept;

  bool IsAlive() const noexcept override;
  host::Gate& gate() const noexcept override;

  void RequireWithinReach() const override { RequireClickable(); }
  const ControlHolder* HeldBy() const noexcept override { return holder_; }

  std::vector<host::CommandBarControl> ControlsAll() const override;
  host::CommandBarControl ControlsItem(int index) const override;
  host::CommandBarControl ControlsItem(std::string_view caption) const override;
  host::CommandBarControl ControlsAdd(const host::NewControl& control) override;

  std::string Caption() const override;
  void SetCaption(std::string_view caption) override { caption_ = caption; }
  int Id() const override { return id_; }
  host::ControlType Type() const override { return type_; }
  bool BuiltIn() const override { return id_ != kOwnControlId; }
  bool Enabled() const override { return enabled_; }
  void SetEnabled(bool enabled) override { enabled_ = enabled; }
  bool Visible() const override { return visible_; }
  void SetVisible(bool visible) override { visible_ = visible; }
  std::string Tag() const override { return tag_; }
  void SetTag(std::string_view tag) override { tag_ = tag; }
  std::string Parameter() const override { return parameter_; }
  void SetParameter(std::string_view parameter) override { parameter_ = parameter; }
  std::string OnAction() const override { return onAction_; }
  void SetOnAction(std::string_view macro) override { onAction_ = macro; }
  host::ButtonStyle Style() const override { return style_; }
  void SetStyle(host::ButtonStyle style) override { style_ = style; }
  host::ButtonState State() const override { return state_; }
  void SetState(host::ButtonState state) override;  // the program's own buttons set theirs: ApplicationDefined
  int Width() const override { return width_; }
  void SetWidth(int width) override;
  bool BeginGroup() const override { return beginGroup_; }
  void SetBeginGroup(bool begin) override { beginGroup_ = begin; }
  std::string ShortcutText() const override { return shortcutText_; }
  void SetShortcutText(std::string_view text) override;
  std::string TooltipText() const override;
  void SetTooltipText(std::string_view text) override { tooltipText_ = text; }
  int FaceId() const override { return faceId_; }
  void SetFaceId(int id) override;
  host::Picture Face() const override { return face_; }
  void SetFace(const host::Picture& picture, const host::Picture& mask) override;  // nothing is drawn: no mask kept
  std::vector<std::string> Items() const override;
  void AddItem(std::string_view text) override;
  void Delete() override;
  host::Subscription AdviseClick(host::ClickHandler handler) override;

 private:
  void RequireButton(std::string_view member) const;
  void RequireList(std::string_view member) const;
  void RequirePopup() const;

  ControlHolder* holder_;  // null once it is gone
  const int id_;
  const host::ControlType type_;
  const bool temporary_;
  std::optional<std::string> caption_;
  bool enabled_ = true;
  bool visible_ = true;
  std::string tag_;
  std::string parameter_;
  std::string onAction_;
  host::ButtonStyle style_ = host::ButtonStyle::Automatic;
  host::ButtonState state_ = host::ButtonState::Up;
  int width_ = 0;
  bool beginGroup_ = false;
  std::string shortcutText_;
  std::optional<std::string> tooltipText_;
  int faceId_ = 0;
  host::Picture face_;
  std::vector<std::string> items_;
};

}  // namespace tolvane::shell
