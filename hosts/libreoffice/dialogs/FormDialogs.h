#pragma once

#include <com/sun/star/awt/XWindowPeer.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <vector>

#include "hosts/libreoffice/Uno.h"
#include "src/host/Form.h"

namespace tolvane::libreoffice {

class FormDialog;

// The forms that are up, each over the one before. On the office's main thread only.
class FormDialogs {
 public:
  explicit FormDialogs(const Reference<css::uno::XComponentContext>& context) : context_(context) {}

  // Shows a form until it is hidden or closed. No window of a document takes part meanwhile. What a handler of the form
  // throws comes out here. Without a screen (an office that shows no dialogs) the form is closed at once, by the host.
  void Show(host::Form& form);
  // The window that whatever comes up now belongs over: the front form, else the front document; null: neither.
  Reference<css::awt::XWindowPeer> Front() const;
  // Shows what has changed on any of them, before something else comes up over them.
  void Redraw() const;

 private:
  Reference<css::uno::XComponentContext> context_;
  std::vector<FormDialog*> up_;
};

}  // namespace tolvane::libreoffice
