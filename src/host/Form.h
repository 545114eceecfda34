#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "src/host/form/Buttons.h"
#include "src/host/form/Caption.h"
#include "src/host/form/ComboBox.h"
#include "src/host/form/Control.h"
#include "src/host/form/Layout.h"
#include "src/host/form/ListView.h"
#include "src/host/form/TextControls.h"
#include "src/host/form/Timer.h"

namespace tolvane::host {

enum class CloseReason {
  User,  // the close box, or the end of input
  Host,  // the program is going down
};

// A dialog as plain logic: controls, what they hold, what happens when the user does something. It draws nothing and
// knows no toolkit; a renderer that knows no form shows any of them, be it for a person or for a script.
//
//   class FQuantity : public host::Form {
//     host::Label& lblQuantity = Add<host::Label>("lblQuantity", "&Quantity:");
//     host::TextBox& txtQuantity = Add<host::TextBox>("txtQuantity");
//     host::Button& cmdOK = Add<host::Button>("cmdOK", "OK");
//
// The life of a form. It is loaded once: by Load, or when it is shown for the first time. User::ShowForm shows it until
// it is hidden, by its own logic or because the user closed it. Hidden, it keeps all that it holds, to be read, or
// shown again. It is unloaded when it is destroyed.
class Form {
 public:
  Form(std::string name, std::string_view title);
  virtual ~Form();
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  const std::string& Name() const { return name_; }
  const std::string& Title() const { return title_; }
  void SetTitle(std::string_view title);

  // --- controls -----------------------------------------------------------------------------------------------------
  // In the order in which they were added, which is the tab order.
  const std::vector<std::unique_ptr<Control>>& Controls() const { return controls_; }
  Control* Find(std::string_view name) const;  // exactly that name; null when there is none
  // The control of that name and kind; std::logic_error says which of both is wrong.
  template <std::derived_from<Control> Kind>
  Kind& Get(std::string_view name) const {
    auto* const control = dynamic_cast<Kind*>(&MustFind(name));
    if (control == nullptr) ThrowOtherKind(name);
    return *control;
  }
  // The next control in tab order that can have the focus, usable or not; null behind the last.
  Control* NextInOrder(const Control& control) const;

  // --- layout -------------------------------------------------------------------------------------------------------
  // Takes each control of this form, timers apart, exactly once; else std::logic_error, and the layout stays as it was.
  // No control can be added afterwards.
  void SetLayout(Layout layout);
  const Layout& layout() const { return layout_; }  // as long as none was set: a column of all controls

  // --- buttons and keys ---------------------------------------------------------------------------------------------
  void SetDefaultButton(Button& button) { defaultButton_ = &Own(button); }
  void SetCancelButton(Button& button) { cancelButton_ = &Own(button); }
  Button* DefaultButton() const { return defaultButton_; }  // what Enter presses; null for none
  Button* CancelButton() const { return cancelButton_; }    // what Esc presses

  // The control that has the focus. When it can be used no more, the next one in tab order that can has it; null when
  // there is none.
  Control* Focus() const;
  // std::logic_error for a control that cannot have the focus now.
  void SetFocus(Control& control);

  // --- life ---------------------------------------------------------------------------------------------------------
  std::function<void()> OnLoad;  // once, before it is seen; may hide the form, which is then not shown
  std::function<void()> OnShow;  // each time, when it has come up
  // Before the user's closing takes effect; `cancel` keeps the form as it is. Code that hides the form is not asked.
  std::function<void(CloseReason reason, bool& cancel)> OnClose;

  void Load();
  bool IsLoaded() const { return loaded_; }
  void Hide();
  bool IsShown() const { return shown_; }

  // --- for renderers ------------------------------------------------------------------------------------------------
  // Brings the form up: loads it if need be, raises OnShow. False when it has been hidden by then: there is nothing to
  // show. std::logic_error when it is up already. Afterwards the renderer reports what the user does for as long as
  // IsShown, and hides the form if it has to give up.
  bool BeginShow();

  // Each is refused (ActionRefused) while the form is not up. While a label is being edited only closing is not
  // refused; the edit is given up then.
  void UserFocus(Control& control);
  void UserPressTab(bool backwards = false);
  // Enter presses the button that has the focus, else the default button; Esc the cancel button. False when there is
  // none that could be pressed.
  bool UserPressEnter();
  bool UserPressEscape();
  void UserPressMnemonic(char key);
  // False when the logic did not let it close.
  bool UserClose(CloseReason reason = CloseReason::User);

  // Throws ActionRefused unless the user could do something on the form right now.
  void MustTakeActions() const;

  // Grows with the title and the focus; the controls count for themselves.
  std::uint64_t Revision() const { return revision_; }

 protected:
  template <std::derived_from<Control> Kind, class... Arguments>
  Kind& Add(std::string name, Arguments&&... arguments) {
    auto control = std::make_unique<Kind>(*this, std::move(name), std::forward<Arguments>(arguments)...);
    Kind& added = *control;
    Take(std::move(control));
    return added;
  }

 private:
  void Take(std::unique_ptr<Control> control);
  Control& MustFind(std::string_view name) const;
  [[noreturn]] void ThrowOtherKind(std::string_view name) const;
  template <class Kind>
  Kind& Own(Kind& control) const {
    if (&control.form() != this) ThrowForeign(control);
    return control;
  }
  [[noreturn]] void ThrowForeign(const Control& control) const;
  std::size_t PositionOf(const Control& control) const;
  // The first usable tab stop from `start` on, in steps of `step`, once around; null when there is none.
  Control* TabStopFrom(std::size_t start, int step) const;
  ListView* OpenEdit() const;
  bool Press(Button* button);

  std::string name_;
  std::string title_;
  std::vector<std::unique_ptr<Control>> controls_;
  std::unordered_map<std::string_view, std::size_t> positions_;  // the names are the controls' own
  Layout layout_{Layout::Kind::Column, {}};
  Button* defaultButton_ = nullptr;
  Button* cancelButton_ = nullptr;
  Control* focus_ = nullptr;
  std::uint64_t revision_ = 0;
  bool loaded_ = false;
  bool shown_ = false;
  bool ownLayout_ = false;
  bool loading_ = false;
  bool hiddenWhileLoading_ = false;
};

}  // namespace tolvane::host
