#pragma once

#include <com/sun/star/awt/KeyEvent.hpp>
#include <com/sun/star/awt/MouseEvent.hpp>
#include <com/sun/star/awt/XControl.hpp>
#include <com/sun/star/awt/XWindow.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <rtl/ref.hxx>
#include <string>

#include "hosts/libreoffice/Uno.h"
#include "hosts/libreoffice/dialogs/FormLayout.h"
#include "src/host/form/Colour.h"
#include "src/host/form/Control.h"

namespace tolvane::libreoffice {

class FormDialog;

// One control of a form as one of the office's. It tells the form what the user did and shows what the form holds; it
// decides nothing.
class ControlView {
 public:
  ControlView(FormDialog& dialog, host::Control& control);
  virtual ~ControlView();
  ControlView(const ControlView&) = delete;
  ControlView& operator=(const ControlView&) = delete;

  host::Control& control() const { return control_; }
  const Reference<css::awt::XWindow>& window() const { return window_; }

  // Puts the control into the dialog, as the one with that place in the tab order.
  void Create(int tabIndex);
  // The dialog has its windows: begins to listen, and to show.
  void Begin();
  // Shows what has changed since it was last shown; with `anyway` also what the user has changed against the form's
  // will. False: nothing had.
  bool Draw(bool anyway);
  virtual Need NeedIn(const host::Layout& cell) = 0;

  // It has its size for the first time.
  virtual void Settle() {}
  // Reports what has not been told yet, or of what the office tells nobody; `somethingFollows` when anything else is
  // reported next.
  virtual void CatchUp(bool /*somethingFollows*/) {}
  // Whether what the user did to the other one has changed how this one looks, whatever the form makes of it.
  virtual bool IsMovedBy(const ControlView& other) const { return this == &other; }
  // The dialog is being closed, and nothing is to be told any more.
  virtual void End() noexcept;

  // --- what the office tells; each only where a view listens for it -------------------------------------------------
  virtual void ActionPerformed() {}
  virtual void TextChanged() {}
  virtual void ItemChanged(int) {}
  virtual void SelectionChanged() {}
  virtual void ValueChanged() {}
  virtual void KeyPressed(const css::awt::KeyEvent&) {}
  virtual void MousePressed(const css::awt::MouseEvent&) {}
  void FocusGained();
  void KeyDown(const css::awt::KeyEvent& event);

 protected:
  // The service name behind "com.sun.star.awt.", without "Model".
  virtual const char* Service() const = 0;
  // Properties that the control has for good, set before its window is made.
  virtual void Furnish() {}
  virtual void Listen() {}
  virtual void Show() = 0;

  class Ears;
  const rtl::Reference<Ears>& ears() const { return ears_; }
  template <class Interface>
  Reference<Interface> Native() const {
    return As<Interface>(native_);
  }
  const Reference<css::awt::XControl>& native() const { return native_; }
  const Reference<css::beans::XPropertySet>& model() const { return model_; }
  template <class T>
  void SetOther(const char* property, const T& value) {
    T current{};
    if ((model_->getPropertyValue(OUString::createFromAscii(property)) >>= current) && current == value) return;
    model_->setPropertyValue(OUString::createFromAscii(property), Any(value));
  }
  void ShowBackColour(host::Colour colour, host::Colour::Kind usual);

  // As large as the office would have it, but no smaller than the form says; `frame` is what surrounds the text.
  Extent Sized(const host::Layout& cell, Extent natural, Extent frame) const;
  Extent Preferred() const;

  FormDialog& dialog_;

 private:
  host::Control& control_;
  Reference<css::beans::XPropertySet> model_;
  Reference<css::awt::XControl> native_;
  Reference<css::awt::XWindow> window_;
  rtl::Reference<Ears> ears_;
  std::optional<std::uint64_t> drawn_;
};

}  // namespace tolvane::libreoffice
