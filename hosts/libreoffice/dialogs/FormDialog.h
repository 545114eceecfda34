#pragma once

#include <chrono>
#include <com/sun/star/awt/KeyEvent.hpp>
#include <com/sun/star/awt/XControl.hpp>
#include <com/sun/star/awt/XControlContainer.hpp>
#include <com/sun/star/awt/XDialog.hpp>
#include <com/sun/star/awt/XWindowPeer.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XNameContainer.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <cstdint>
#include <deque>
#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "hosts/libreoffice/Uno.h"
#include "hosts/libreoffice/dialogs/ControlView.h"
#include "hosts/libreoffice/dialogs/FormClock.h"
#include "hosts/libreoffice/dialogs/FormLayout.h"
#include "src/host/Form.h"

namespace tolvane::libreoffice {

// A form while it is up, as a modal dialog of the office. It knows nothing of any one form: the form raises the events,
// the dialog reports what the user did and shows what has changed.
class FormDialog {
 public:
  // `redraw` shows what has changed on every form that is up; a handler may reach them all.
  FormDialog(const Reference<css::uno::XComponentContext>& context, host::Form& form,
             const Reference<css::awt::XWindowPeer>& parent, std::function<void()> redraw);
  ~FormDialog();
  FormDialog(const FormDialog&) = delete;
  FormDialog& operator=(const FormDialog&) = delete;

  // Until the form is hidden. What a handler throws ends the dialog and comes out here.
  void Run();
  Reference<css::awt::XWindowPeer> peer() const { return dialog_->getPeer(); }
  void Draw();

  // --- for the views of its controls --------------------------------------------------------------------------------
  const Reference<css::uno::XComponentContext>& context() const { return context_; }
  const Measures& measures() const { return measures_; }
  Reference<css::beans::XPropertySet> NewModel(const char* service) const;  // "UnoControlEdit"
  void Insert(const OUString& name, const Reference<css::beans::XPropertySet>& model);
  Reference<css::awt::XControl> Native(const OUString& name) const;
  sal_Int32 ToColour(host::Colour colour) const;
  bool IsDrawing() const { return drawing_ > 0; }

  // The user did this: `what` tells the form, which may do anything, even go. What was not told yet is told first.
  void Report(ControlView& from, const std::function<void()>& what);
  // The same, once the office has come to an end with what goes on: in the middle of a click or of a change of the
  // focus no dialog can come up. `what` may be null, for a view that catches up.
  void ReportSoon(ControlView& from, std::function<void()> what);
  void Afterwards(std::function<void()> what) const;
  void FocusCame(ControlView& view);
  void KeyCame(const css::awt::KeyEvent& event);
  // Enter and Esc where they press a button of the form, and the tab key.
  bool IsFormKey(host::Key key) const;
  // While a text is edited inside of a control, Enter is not the default button's, and the focus nobody's.
  void SetEditing(bool isEditing);
  // The Esc that the office is about to close the dialog for has had its effect.
  void SpendEscape();

 private:
  class Ears;
  class Maker;
  enum class Escape { Up, Down, Spent };

  void Build(const Reference<css::awt::XWindowPeer>& parent);
  void DivideGroups(int tabIndex);
  void MeasureFont();
  void Begin();
  void Guarded(const std::function<void()>& what);
  void Tell(const std::function<void()>& what);  // null: only what has not been told yet
  void Closing();
  void Ticked(host::Timer* timer);
  bool DrawControls();
  void DrawTimers();
  void DrawDefaultButton();
  void DrawFocus();
  void Arrange();
  void PutFrame(std::size_t number, const FormLayout::Placed& placed);
  std::string FrameName(std::size_t number) const;
  Extent Inside() const;

  Reference<css::uno::XComponentContext> context_;
  host::Form& form_;
  std::function<void()> redraw_;
  Reference<css::container::XNameContainer> model_;
  Reference<css::awt::XControl> dialog_;
  Reference<css::awt::XControlContainer> container_;
  rtl::Reference<Ears> ears_;
  Measures measures_;
  std::vector<std::unique_ptr<ControlView>> views_;
  std::map<const host::Control*, ControlView*> viewOf_;
  std::map<std::string, Box> places_;  // by name, as they are
  std::size_t frames_ = 0;
  std::optional<std::vector<const host::Control*>> visible_;  // when it was arranged last
  bool isSizedByUser_ = false;

  std::optional<std::uint64_t> drawn_;
  std::vector<const ControlView*> moved_;  // by the user, since the last drawing
  std::deque<std::function<void()>> untold_;
  ControlView* focus_ = nullptr;  // as the office has it; null: unknown
  Escape escape_ = Escape::Up;
  int drawing_ = 0;
  int telling_ = 0;
  bool isEditing_ = false;
  bool wasAsked_ = false;  // by the user, to close
  bool isEnding_ = false;
  std::exception_ptr failure_;

  std::map<host::Timer*, std::chrono::milliseconds> running_;
  std::shared_ptr<FormDialog*> self_;  // what is posted holds it weakly
  std::unique_ptr<FormClock> clock_;   // last: it goes first
};

}  // namespace tolvane::libreoffice
