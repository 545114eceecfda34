#include "hosts/libreoffice/dialogs/LabelEditor.h"

#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/PosSize.hpp>
#include <com/sun/star/awt/Toolkit.hpp>
#include <com/sun/star/awt/WindowAttribute.hpp>
#include <com/sun/star/awt/WindowDescriptor.hpp>
#include <com/sun/star/awt/XFocusListener.hpp>
#include <com/sun/star/awt/XKeyHandler.hpp>
#include <com/sun/star/awt/XKeyListener.hpp>
#include <com/sun/star/awt/XTextComponent.hpp>
#include <com/sun/star/awt/XWindow.hpp>
#include <cppuhelper/implbase1.hxx>
#include <cppuhelper/implbase2.hxx>
#include <optional>
#include <utility>

namespace tolvane::libreoffice {

namespace {

using End = LabelEditor::End;

std::optional<End> EndBy(const css::awt::KeyEvent& event) {
  if (event.Modifiers != 0) return std::nullopt;
  if (event.KeyCode == css::awt::Key::ESCAPE) return End::GivenUp;
  if (event.KeyCode == css::awt::Key::RETURN) return End::Kept;
  return std::nullopt;
}

}  // namespace

class LabelEditor::Ears final : public cppu::WeakImplHelper2<css::awt::XKeyListener, css::awt::XFocusListener> {
 public:
  explicit Ears(std::function<void(End)> ended) : ended_(std::move(ended)) {}
  void Close() { ended_ = nullptr; }
  void Tell(End end) {
    if (const auto ended = std::exchange(ended_, nullptr)) ended(end);
  }

  void SAL_CALL keyPressed(const css::awt::KeyEvent& event) override {
    if (const auto end = EndBy(event)) Tell(*end);
  }
  void SAL_CALL keyReleased(const css::awt::KeyEvent&) override {}
  void SAL_CALL focusGained(const css::awt::FocusEvent&) override {}
  void SAL_CALL focusLost(const css::awt::FocusEvent&) override { Tell(End::Kept); }
  void SAL_CALL disposing(const css::lang::EventObject&) override {}

 private:
  std::function<void(End)> ended_;
};

// A listener hears Esc and Enter too late to keep them from the dialog around, where Esc closes and Enter presses a
// button. This hears what is pressed on the keyboard before anyone else.
class LabelEditor::FirstEar final : public cppu::WeakImplHelper1<css::awt::XKeyHandler> {
 public:
  FirstEar(rtl::Reference<Ears> ears) : ears_(std::move(ears)) {}
  sal_Bool SAL_CALL keyPressed(const css::awt::KeyEvent& event) override {
    const auto end = EndBy(event);
    if (end) ears_->Tell(*end);
    return end.has_value();
  }
  sal_Bool SAL_CALL keyReleased(const css::awt::KeyEvent&) override { return false; }
  void SAL_CALL disposing(const css::lang::EventObject&) override {}

 private:
  rtl::Reference<Ears> ears_;
};

LabelEditor::LabelEditor(const Reference<css::uno::XComponentContext>& context,
                         const Reference<css::awt::XWindowPeer>& under, const Box& box, std::string_view text,
                         std::function<void(End)> ended)
    : ears_(new Ears(std::move(ended))), firstEar_(new FirstEar(ears_)) {
  namespace attribute = css::awt::WindowAttribute;
  const auto toolkit = css::awt::Toolkit::create(context);
  toolkit_.set(toolkit, UNO_QUERY_THROW);
  css::awt::WindowDescriptor descriptor;
  descriptor.Type = css::awt::WindowClass_SIMPLE;
  descriptor.WindowServiceName = "edit";
  descriptor.Parent = under;
  descriptor.WindowAttributes = attribute::BORDER;
  window_ = toolkit->createWindow(descriptor);
  const auto content = As<css::awt::XTextComponent>(window_);
  content->setText(ToUno(text));
  content->setSelection(css::awt::Selection(0, content->getText().getLength()));
  const auto window = As<css::awt::XWindow>(window_);
  window->setPosSize(box.x, box.y, box.width, box.height, css::awt::PosSize::POSSIZE);
  window->setVisible(true);
  window->setFocus();
  window->addKeyListener(ears_.get());
  window->addFocusListener(ears_.get());
  ListenFirst(true);
}

LabelEditor::~LabelEditor() {
  ears_->Close();
  try {
    ListenFirst(false);
    window_->dispose();
  } catch (const css::uno::Exception&) {
    // The dialog went first.
  }
}

// The office calls these deprecated, and has nothing else for it.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
void LabelEditor::ListenFirst(bool on) {
  if (on) {
    toolkit_->addKeyHandler(firstEar_.get());
  } else {
    toolkit_->removeKeyHandler(firstEar_.get());
  }
}
#pragma GCC diagnostic pop

std::string LabelEditor::Text() const {
  return ToUtf8(As<css::awt::XTextComponent>(window_)->getText());
}

}  // namespace tolvane::libreoffice
