#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "src/host/Constants.h"
#include "src/host/Handle.h"
#include "src/host/Subscription.h"

namespace tolvane::host {

class CommandBar;
class CommandBarControl;

// A picture from the program's resources, as the bytes of an image file.
struct Picture {
  std::string bytes;
  friend bool operator==(const Picture&, const Picture&) = default;
};

struct NewControl {
  ControlType type = ControlType::Button;
  int id = 1;                      // 1: a control of one's own, else the built-in control of that id
  std::optional<int> before = {};  // the position to stand at, from 1; none: at the end
  bool temporary = true;
};

struct NewCommandBar {
  std::string name;
  BarPosition position = BarPosition::Top;
  bool menuBar = false;
  bool temporary = true;
};

// Called when the user clicks. Setting `cancelDefault` keeps the host from what the control would do by itself.
using ClickHandler = std::function<void(const CommandBarControl& control, bool& cancelDefault)>;

class ControlsBody : public Body {
 public:
  virtual std::vector<CommandBarControl> ControlsAll() const = 0;
  virtual CommandBarControl ControlsItem(int index) const = 0;
  virtual CommandBarControl ControlsItem(std::string_view caption) const = 0;
  virtual CommandBarControl ControlsAdd(const NewControl& control) = 0;
};

// The controls of a bar or of a popup control.
class CommandBarControls : private Handle<ControlsBody> {
 public:
  explicit CommandBarControls(std::shared_ptr<ControlsBody> body) : Handle(std::move(body)) {}
  int Count() const;
  CommandBarControl Item(int index) const;                 // from 1; InvalidCall
  CommandBarControl Item(std::string_view caption) const;  // without "&", ignoring case; InvalidCall
  std::vector<CommandBarControl> All() const;
  CommandBarControl Add(const NewControl& control) const;
};

class ControlBody : public ControlsBody {
 public:
  virtual std::string Caption() const = 0;
  virtual void SetCaption(std::string_view caption) = 0;
  virtual int Id() const = 0;
  virtual ControlType Type() const = 0;
  virtual bool BuiltIn() const = 0;
  virtual bool Enabled() const = 0;
  virtual void SetEnabled(bool enabled) = 0;
  virtual bool Visible() const = 0;
  virtual void SetVisible(bool visible) = 0;
  virtual std::string Tag() const = 0;
  virtual void SetTag(std::string_view tag) = 0;
  virtual std::string Parameter() const = 0;
  virtual void SetParameter(std::string_view parameter) = 0;
  virtual std::string OnAction() const = 0;
  virtual void SetOnAction(std::string_view macro) = 0;
  virtual ButtonStyle Style() const = 0;
  virtual void SetStyle(ButtonStyle style) = 0;
  virtual ButtonState State() const = 0;
  virtual void SetState(ButtonState state) = 0;
  virtual int Width() const = 0;
  virtual void SetWidth(int width) = 0;
  virtual bool BeginGroup() const = 0;
  virtual void SetBeginGroup(bool begin) = 0;
  virtual std::string ShortcutText() const = 0;
  virtual void SetShortcutText(std::string_view text) = 0;
  virtual std::string TooltipText() const = 0;
  virtual void SetTooltipText(std::string_view text) = 0;
  virtual int FaceId() const = 0;
  virtual void SetFaceId(int id) = 0;
  virtual Picture Face() const = 0;
  virtual void SetFace(const Picture& picture, const Picture& mask) = 0;
  virtual std::vector<std::string> Items() const = 0;
  virtual void AddItem(std::string_view text) = 0;
  virtual void Delete() = 0;
  virtual Subscription AdviseClick(ClickHandler handler) = 0;
};

class CommandBarControl : public Handle<ControlBody> {
 public:
  using Handle::Handle;
  friend bool operator==(const CommandBarControl& a, const CommandBarControl& b) noexcept {
    return a.body() == b.body();
  }
  std::string Caption() const;  // with its "&"
  void SetCaption(std::string_view caption) const;
  int Id() const;
  ControlType Type() const;
  bool BuiltIn() const;
  bool Enabled() const;
  void SetEnabled(bool enabled) const;
  bool Visible() const;
  void SetVisible(bool visible) const;
  std::string Tag() const;
  void SetTag(std::string_view tag) const;
  std::string Parameter() const;
  void SetParameter(std::string_view parameter) const;
  std::string OnAction() const;
  void SetOnAction(std::string_view macro) const;
  ButtonStyle Style() const;
  void SetStyle(ButtonStyle style) const;
  ButtonState State() const;
  void SetState(ButtonState state) const;
  int Width() const;
  void SetWidth(int width) const;
  bool BeginGroup() const;
  void SetBeginGroup(bool begin) const;
  std::string ShortcutText() const;
  void SetShortcutText(std::string_view text) const;
  std::string TooltipText() const;
  void SetTooltipText(std::string_view text) const;
  int FaceId() const;
  void SetFaceId(int id) const;
  Picture Face() const;
  void SetFace(const Picture& picture, const Picture& mask) const;  // Excel's Picture and Mask
  std::vector<std::string> Items() const;                           // of a list
  void AddItem(std::string_view text) const;
  void Delete() const;
  CommandBarControls Controls() const { return CommandBarControls(body()); }  // of a popup control
  // The handler hears the clicks of all controls that share this one's tag (own ones) or id (built-in ones), until the
  // subscription ends.
  Subscription AdviseClick(ClickHandler handler) const;
};

class CommandBarBody : public ControlsBody {
 public:
  virtual std::string Name() const = 0;
  virtual bool BuiltIn() const = 0;
  virtual bool Visible() const = 0;
  virtual void SetVisible(bool visible) = 0;
  virtual bool Enabled() const = 0;
  virtual void SetEnabled(bool enabled) = 0;
  virtual BarPosition Position() const = 0;
  virtual void SetPosition(BarPosition position) = 0;
  virtual int Protection() const = 0;
  virtual void SetProtection(int bits) = 0;
  virtual int RowIndex() const = 0;
  virtual void SetRowIndex(int row) = 0;
  virtual int Left() const = 0;
  virtual void SetLeft(int left) = 0;
  virtual int Top() const = 0;
  virtual void SetTop(int top) = 0;
  virtual int Width() const = 0;
  virtual void SetWidth(int width) = 0;
  virtual int Height() const = 0;
  virtual void SetHeight(int height) = 0;
  virtual void Delete() = 0;
  virtual void ShowPopup() = 0;
};

class CommandBar : public Handle<CommandBarBody> {
 public:
  using Handle::Handle;
  std::string Name() const;
  bool BuiltIn() const;
  bool Visible() const;
  void SetVisible(bool visible) const;
  bool Enabled() const;
  void SetEnabled(bool enabled) const;
  BarPosition Position() const;
  void SetPosition(BarPosition position) const;
  int Protection() const;
  void SetProtection(int bits) const;
  int RowIndex() const;
  void SetRowIndex(int row) const;
  int Left() const;
  void SetLeft(int left) const;
  int Top() const;
  void SetTop(int top) const;
  int Width() const;
  void SetWidth(int width) const;
  int Height() const;
  void SetHeight(int height) const;
  void Delete() const;     // a built-in bar is ApplicationDefined
  void ShowPopup() const;  // at the pointer; returns when the user has chosen or gone away
  CommandBarControls Controls() const { return CommandBarControls(body()); }
};

class CommandBarsBody : public Body {
 public:
  virtual std::vector<CommandBar> All() const = 0;
  virtual CommandBar Item(std::string_view name) const = 0;
  virtual CommandBar Item(int index) const = 0;
  virtual CommandBar Add(const NewCommandBar& bar) = 0;
  virtual CommandBarControl FindControl(std::optional<int> id, std::optional<std::string> tag) const = 0;
  virtual bool DisplayTooltips() const = 0;
  virtual void SetDisplayTooltips(bool on) = 0;
  virtual bool DisplayKeysInTooltips() const = 0;
  virtual void SetDisplayKeysInTooltips(bool on) = 0;
};

class CommandBars : public Handle<CommandBarsBody> {
 public:
  using Handle::Handle;
  std::vector<CommandBar> All() const;
  CommandBar Item(std::string_view name) const;  // ignoring case; InvalidCall
  CommandBar Item(int index) const;              // from 1; InvalidCall
  CommandBar Add(const NewCommandBar& bar) const;
  // The first control, built-in or not, with this id and this tag; Nothing when there is none.
  CommandBarControl FindControl(std::optional<int> id, std::optional<std::string> tag = std::nullopt) const;
  bool DisplayTooltips() const;
  void SetDisplayTooltips(bool on) const;
  bool DisplayKeysInTooltips() const;
  void SetDisplayKeysInTooltips(bool on) const;
};

}  // namespace tolvane::host
