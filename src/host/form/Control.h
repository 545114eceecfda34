#pragma once

#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace tolvane::host {

class Form;
class ControlVisitor;

// Keys, with the numbers of the macro language's KeyDown events. Any other code fits in as well.
enum class Key : int {
  Tab = 9,
  Enter = 13,
  Escape = 27,
  Space = 32,
  Left = 37,
  Up = 38,
  Right = 39,
  Down = 40,
  Insert = 45,
  Delete = 46,
  F2 = 113,
};

// The user cannot do this: the form is not up, or the control is disabled, hidden or locked, or has no such item.
class ActionRefused : public std::logic_error {
 public:
  using std::logic_error::logic_error;
};

// What a form is made of. A control belongs to its form and lives as long.
//
// Members that begin with User are what a renderer reports: the user did this. They are refused (ActionRefused, nothing
// changed) where the user could not have done it; else they move the focus, change the state and then raise the event.
// Everything else is for the logic of the form: it is never refused and raises no event. After each report the renderer
// shows what has changed; `Revision` tells it where to look.
class Control {
 public:
  virtual ~Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  const std::string& Name() const { return name_; }
  Form& form() const { return form_; }

  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled) { Change(enabled_, enabled); }
  bool Visible() const { return visible_; }
  void SetVisible(bool visible) { Change(visible_, visible); }
  // Whether the tab key stops here, on a control that can have the focus at all.
  bool TabStop() const { return tabStop_; }
  void SetTabStop(bool stop) { Change(tabStop_, stop); }
  const std::string& ToolTip() const { return toolTip_; }
  void SetToolTip(std::string_view text) { Change(toolTip_, text); }

  // Can the user act on it, when its form is up?
  bool Usable() const { return enabled_ && visible_; }
  virtual bool CanHaveFocus() const { return true; }
  // The text that a mnemonic may stand in; empty when the control has none.
  virtual std::string_view MnemonicCaption() const { return {}; }
  // What pressing its mnemonic does. By default it takes the focus.
  virtual void UserPressMnemonic();

  virtual void Accept(ControlVisitor& visitor) = 0;

  // Grows whenever something that a user can see has changed.
  std::uint64_t Revision() const { return revision_; }

 protected:
  Control(Form& form, std::string name) : form_(form), name_(std::move(name)) {}

  void Touch() { ++revision_; }
  template <class T, class U>
  void Change(T& member, const U& value) {
    if (member == value) return;
    member = value;
    Touch();
  }

  // The start of every User... member: refuses, or moves the focus here.
  void BeginUserAction();
  [[noreturn]] void Refuse(std::string_view why) const;

  static void Raise(const std::function<void()>& event) {
    // A copy: the handler may set another one in its own place.
    if (const auto handler = event) handler();
  }

 private:
  friend class Form;  // refuses in the control's name

  Form& form_;
  std::string name_;
  std::string toolTip_;
  std::uint64_t revision_ = 0;
  bool enabled_ = true;
  bool visible_ = true;
  bool tabStop_ = true;
};

class Label;
class TextBox;
class ReportBox;
class ColourBar;
class ComboBox;
class ListView;
class CheckBox;
class OptionButton;
class Spin;
class Button;
class Timer;

// How a renderer tells one kind of control from another, and is told by the compiler when it has forgotten one.
class ControlVisitor {
 public:
  virtual ~ControlVisitor() = default;
  virtual void Visit(Label& label) = 0;
  virtual void Visit(TextBox& box) = 0;
  virtual void Visit(ReportBox& box) = 0;
  virtual void Visit(ColourBar& bar) = 0;
  virtual void Visit(ComboBox& box) = 0;
  virtual void Visit(ListView& list) = 0;
  virtual void Visit(CheckBox& box) = 0;
  virtual void Visit(OptionButton& button) = 0;
  virtual void Visit(Spin& spin) = 0;
  virtual void Visit(Button& button) = 0;
  virtual void Visit(Timer& timer) = 0;
};

}  // namespace tolvane::host
