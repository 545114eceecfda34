#include "hosts/libreoffice/dialogs/FormDialogs.h"

#include <com/sun/star/awt/XWindow2.hpp>
#include <com/sun/star/frame/Desktop.hpp>

#include "hosts/libreoffice/dialogs/FormDialog.h"

namespace tolvane::libreoffice {

namespace {

// The office's own dialogs leave the windows of other documents alone. A form has the whole program wait.
class OtherWindowsOff {
 public:
  OtherWindowsOff(const Reference<css::uno::XComponentContext>& context,
                  const Reference<css::awt::XWindowPeer>& except) {
    AtEdge([&] {
      const auto frames = css::frame::Desktop::create(context)->getFrames();
      for (sal_Int32 i = 0; i < frames->getCount(); ++i) {
        Reference<css::frame::XFrame> frame;
        if (!(frames->getByIndex(i) >>= frame) || !frame.is()) continue;
        const Reference<css::awt::XWindow2> window(frame->getContainerWindow(), UNO_QUERY);
        if (!window.is() || window == except || !window->isEnabled()) continue;
        off_.push_back(window);
      }
    });
    Enable(false);
  }
  ~OtherWindowsOff() { Enable(true); }
  OtherWindowsOff(const OtherWindowsOff&) = delete;
  OtherWindowsOff& operator=(const OtherWindowsOff&) = delete;

 private:
  void Enable(bool on) const noexcept {
    for (const auto& window : off_) {
      try {
        window->setEnable(on);
      } catch (const css::uno::Exception&) {
        // It has been closed meanwhile.
      }
    }
  }
  std::vector<Reference<css::awt::XWindow2>> off_;
};

class OnTop {
 public:
  OnTop(std::vector<FormDialog*>& up, FormDialog& dialog) : up_(up) { up_.push_back(&dialog); }
  ~OnTop() { up_.pop_back(); }
  OnTop(const OnTop&) = delete;
  OnTop& operator=(const OnTop&) = delete;

 private:
  std::vector<FormDialog*>& up_;
};

}  // namespace

void FormDialogs::Show(host::Form& form) {
  if (!form.BeginShow()) return;
  // However it goes wrong, the form is not left half up.
  class Hider {
   public:
    explicit Hider(host::Form& shown) : form_(shown) {}
    ~Hider() {
      if (form_.IsShown()) form_.Hide();
    }
    Hider(const Hider&) = delete;
    Hider& operator=(const Hider&) = delete;

   private:
    host::Form& form_;
  };
  const Hider hider(form);
  Redraw();
  const OtherWindowsOff off(context_, Front());
  FormDialog dialog(context_, form, Front(), [this] { Redraw(); });
  const OnTop onTop(up_, dialog);
  dialog.Run();
}

Reference<css::awt::XWindowPeer> FormDialogs::Front() const {
  if (!up_.empty()) return up_.back()->peer();
  return AtEdge([&] {
    const auto frame = css::frame::Desktop::create(context_)->getCurrentFrame();
    return Reference<css::awt::XWindowPeer>(frame.is() ? frame->getContainerWindow() : nullptr, UNO_QUERY);
  });
}

void FormDialogs::Redraw() const {
  for (FormDialog* const dialog : up_) dialog->Draw();
}

}  // namespace tolvane::libreoffice
