#include "hosts/libreoffice/dialogs/FormDialog.h"

#include <algorithm>
#include <com/sun/star/accessibility/XAccessible.hpp>
#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/PosSize.hpp>
#include <com/sun/star/awt/Toolkit.hpp>
#include <com/sun/star/awt/XStyleSettingsSupplier.hpp>
#include <com/sun/star/awt/XToolkit.hpp>
#include <com/sun/star/awt/XTopWindow.hpp>
#include <com/sun/star/awt/XUnitConversion.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/util/MeasureUnit.hpp>
#include <cppuhelper/implbase2.hxx>
#include <utility>

#include "hosts/libreoffice/dialogs/ButtonViews.h"
#include "hosts/libreoffice/dialogs/ComboView.h"
#include "hosts/libreoffice/dialogs/ListGrid.h"
#include "hosts/libreoffice/dialogs/MainThread.h"
#include "hosts/libreoffice/dialogs/Notation.h"
#include "hosts/libreoffice/dialogs/TextViews.h"

namespace tolvane::libreoffice {

namespace {

Reference<css::uno::XInterface> Create(const Reference<css::uno::XComponentContext>& context, const char* service) {
  return context->getServiceManager()->createInstanceWithContext(OUString::createFromAscii(service), context);
}

}  // namespace

class FormDialog::Ears final : public cppu::WeakImplHelper2<css::awt::XTopWindowListener, css::awt::XWindowListener> {
 public:
  explicit Ears(FormDialog& dialog) : dialog_(&dialog) {}
  void Close() { dialog_ = nullptr; }

  void SAL_CALL windowClosing(const css::lang::EventObject&) override {
    if (dialog_ != nullptr) dialog_->Closing();
  }
  void SAL_CALL windowResized(const css::awt::WindowEvent&) override {
    if (dialog_ == nullptr || dialog_->IsDrawing()) return;
    dialog_->isSizedByUser_ = true;
    dialog_->Arrange();
  }
  void SAL_CALL windowOpened(const css::lang::EventObject&) override {}
  void SAL_CALL windowClosed(const css::lang::EventObject&) override {}
  void SAL_CALL windowMinimized(const css::lang::EventObject&) override {}
  void SAL_CALL windowNormalized(const css::lang::EventObject&) override {}
  void SAL_CALL windowActivated(const css::lang::EventObject&) override {}
  void SAL_CALL windowDeactivated(const css::lang::EventObject&) override {}
  void SAL_CALL windowMoved(const css::awt::WindowEvent&) override {}
  void SAL_CALL windowShown(const css::lang::EventObject&) override {}
  void SAL_CALL windowHidden(const css::lang::EventObject&) override {}
  void SAL_CALL disposing(const css::lang::EventObject&) override {}

 private:
  FormDialog* dialog_;
};

// A timer has no view.
class FormDialog::Maker final : public host::ControlVisitor {
 public:
  explicit Maker(FormDialog& dialog) : dialog_(dialog) {}
  std::unique_ptr<ControlView> Make(host::Control& control) {
    control.Accept(*this);
    return std::move(made_);
  }
  void Visit(host::Label& label) override { made_ = std::make_unique<LabelView>(dialog_, label); }
  void Visit(host::TextBox& box) override { made_ = std::make_unique<TextView>(dialog_, box); }
  void Visit(host::ReportBox& box) override { made_ = std::make_unique<ReportView>(dialog_, box); }
  void Visit(host::ColourBar& bar) override { made_ = std::make_unique<ColourBarView>(dialog_, bar); }
  void Visit(host::ComboBox& box) override { made_ = std::make_unique<ComboView>(dialog_, box); }
  void Visit(host::ListView& list) override { made_ = std::make_unique<ListGrid>(dialog_, list); }
  void Visit(host::CheckBox& box) override { made_ = std::make_unique<CheckView>(dialog_, box); }
  void Visit(host::OptionButton& button) override { made_ = std::make_unique<OptionView>(dialog_, button); }
  void Visit(host::Spin& spin) override { made_ = std::make_unique<SpinView>(dialog_, spin); }
  void Visit(host::Button& button) override { made_ = std::make_unique<ButtonView>(dialog_, button); }
  void Visit(host::Timer&) override {}

 private:
  FormDialog& dialog_;
  std::unique_ptr<ControlView> made_;
};

// --- making
// ---------------------------------------------------------------------------------------------------------------------

FormDialog::FormDialog(const Reference<css::uno::XComponentContext>& context, host::Form& form,
                       const Reference<css::awt::XWindowPeer>& parent, std::function<void()> redraw)
    : context_(context),
      form_(form),
      redraw_(std::move(redraw)),
      self_(std::make_shared<FormDialog*>(this)),
      clock_(std::make_unique<FormClock>([this, context, self = std::weak_ptr(self_)](host::Timer* timer) {
        PostToMainThread(context, [self, timer] {
          if (const auto dialog = self.lock()) (*dialog)->Ticked(timer);
        });
      })) {
  AtEdge([&] { Build(parent); });
}

FormDialog::~FormDialog() {
  clock_.reset();
  self_.reset();
  if (ears_.is()) ears_->Close();
  for (const auto& view : views_) view->End();
  try {
    if (!dialog_.is()) return;
    // A grid that assistive technology has looked at uses, while it goes, what nobody else may hold any more.
    std::vector<Reference<css::accessibility::XAccessible>> held;
    const Reference<css::accessibility::XAccessible> seen(dialog_->getPeer(), UNO_QUERY);
    if (const auto context = seen.is() ? seen->getAccessibleContext() : nullptr; context.is()) {
      for (sal_Int32 i = 0; i < context->getAccessibleChildCount(); ++i) held.push_back(context->getAccessibleChild(i));
    }
    dialog_->dispose();
  } catch (const css::uno::Exception&) {
    // The office went first.
  }
}

void FormDialog::Build(const Reference<css::awt::XWindowPeer>& parent) {
  model_ = As<css::container::XNameContainer>(Create(context_, "com.sun.star.awt.UnoControlDialogModel"));
  dialog_ = As<css::awt::XControl>(Create(context_, "com.sun.star.awt.UnoControlDialog"));
  dialog_->setModel(As<css::awt::XControlModel>(model_));
  container_ = As<css::awt::XControlContainer>(dialog_);
  Set(model_, "Sizeable", true);
  Set(model_, "Title", ToUno(form_.Title()));
  Maker maker(*this);
  // Behind those of the frames, which come first so that they lie underneath.
  int tabIndex = 1000;
  const host::OptionButton* before = nullptr;
  for (const auto& control : form_.Controls()) {
    auto view = maker.Make(*control);
    if (view == nullptr) continue;
    const auto* const option = dynamic_cast<const host::OptionButton*>(control.get());
    if (option != nullptr && before != nullptr && option->Group() != before->Group()) DivideGroups(tabIndex++);
    before = option;
    view->Create(tabIndex++);
    viewOf_[control.get()] = view.get();
    views_.push_back(std::move(view));
  }
  As<css::awt::XWindow>(dialog_)->setVisible(false);
  dialog_->createPeer(Reference<css::awt::XToolkit>(css::awt::Toolkit::create(context_), UNO_QUERY_THROW), parent);
  MeasureFont();
  ++drawing_;
  for (const auto& view : views_) view->Begin();
  --drawing_;
  Draw();
  for (const auto& view : views_) view->Settle();
  const auto window = As<css::awt::XWindow>(dialog_);
  if (const Reference<css::awt::XWindow> over(parent, UNO_QUERY); over.is()) {
    const auto below = over->getPosSize();
    const auto size = window->getPosSize();
    window->setPosSize(std::max(0, below.X + (below.Width - size.Width) / 2),
                       std::max(0, below.Y + (below.Height - size.Height) / 2), 0, 0, css::awt::PosSize::POS);
  }
  ears_ = new Ears(*this);
  As<css::awt::XTopWindow>(dialog_)->addTopWindowListener(ears_.get());
  window->addWindowListener(ears_.get());
}

// The office takes option buttons that follow each other for one group, whatever they are called.
void FormDialog::DivideGroups(int tabIndex) {
  const auto nothing = NewModel("UnoControlFixedText");
  nothing->setPropertyValue("TabIndex", Any(static_cast<sal_Int16>(tabIndex)));
  nothing->setPropertyValue("EnableVisible", Any(false));
  Insert(ToUno("\ndivider " + std::to_string(tabIndex)), nothing);
}

void FormDialog::MeasureFont() {
  // The office's unit is a quarter of a character wide and an eighth of a line high.
  constexpr int kMany = 100;
  const auto size = As<css::awt::XUnitConversion>(dialog_->getPeer())
                        ->convertSizeToPixel(css::awt::Size(4 * kMany, 8 * kMany), css::util::MeasureUnit::APPFONT);
  measures_.character = std::max<int>(1, (size.Width + kMany / 2) / kMany);
  measures_.line = std::max<int>(1, (size.Height + kMany / 2) / kMany);
  measures_.lineControl = 2 * measures_.line;
  measures_.gap = measures_.line / 2;
  measures_.wideGap = measures_.line;
  measures_.margin = measures_.line;
  measures_.groupTop = measures_.line * 3 / 2;
  measures_.groupMargin = measures_.line * 3 / 4;
}

Reference<css::beans::XPropertySet> FormDialog::NewModel(const char* service) const {
  return As<css::beans::XPropertySet>(As<css::lang::XMultiServiceFactory>(model_)->createInstance(
      "com.sun.star.awt." + OUString::createFromAscii(service) + "Model"));
}

void FormDialog::Insert(const OUString& name, const Reference<css::beans::XPropertySet>& model) {
  model_->insertByName(name, Any(model));
}

Reference<css::awt::XControl> FormDialog::Native(const OUString& name) const {
  return container_->getControl(name);
}

sal_Int32 FormDialog::ToColour(host::Colour colour) const {
  if (colour.kind == host::Colour::Kind::Rgb) return static_cast<sal_Int32>(colour.rgb);
  const auto style = As<css::awt::XStyleSettingsSupplier>(dialog_->getPeer())->getStyleSettings();
  return colour.kind == host::Colour::Kind::Window ? style->getFieldColor() : style->getDialogColor();
}

// --- the loop
// -------------------------------------------------------------------------------------------------------------------

void FormDialog::Run() {
  Afterwards([self = std::weak_ptr(self_)] {
    if (const auto dialog = self.lock()) (*dialog)->Begin();
  });
  const auto native = As<css::awt::XDialog>(dialog_);
  while (form_.IsShown()) {
    wasAsked_ = false;
    AtEdge([&] { native->execute(); });
    // The office takes a dialog down for whoever wants to close it; one that its form keeps comes up again. Is it taken
    // down unasked, then the office shows no dialogs, or goes.
    if (!form_.IsShown() || wasAsked_) continue;
    Guarded([&] { form_.UserClose(host::CloseReason::Host); });
    form_.Hide();
  }
  if (failure_) std::rethrow_exception(failure_);
}

// With its window up, the focus can be had.
void FormDialog::Begin() {
  focus_ = nullptr;
  Draw();
}

void FormDialog::Closing() {
  wasAsked_ = true;
  const Escape escape = std::exchange(escape_, Escape::Up);
  if (escape == Escape::Spent) return;
  if (escape == Escape::Down) {
    Tell([this] { form_.UserPressEscape(); });
  } else {
    Tell([this] { form_.UserClose(); });
  }
}

// What comes too late to be done is refused by the form, and forgotten: what is drawn next shows it.
void FormDialog::Guarded(const std::function<void()>& what) {
  if (!form_.IsShown()) return;
  try {
    what();
  } catch (const host::ActionRefused&) {
  } catch (...) {
    failure_ = std::current_exception();
    form_.Hide();
  }
}

void FormDialog::Tell(const std::function<void()>& what) {
  if (drawing_ > 0 || telling_ > 0) return;
  ++telling_;
  const bool somethingFollows = what != nullptr || !untold_.empty();
  for (const auto& view : views_) Guarded([&] { view->CatchUp(somethingFollows); });
  while (!untold_.empty()) {
    const auto next = std::move(untold_.front());
    untold_.pop_front();
    Guarded(next);
  }
  if (what) Guarded(what);
  --telling_;
  redraw_();
}

void FormDialog::Report(ControlView& from, const std::function<void()>& what) {
  if (drawing_ > 0) return;
  moved_.push_back(&from);
  Tell(what);
}

void FormDialog::ReportSoon(ControlView& from, std::function<void()> what) {
  if (drawing_ > 0) return;
  moved_.push_back(&from);
  if (what) untold_.push_back(std::move(what));
  Afterwards([self = std::weak_ptr(self_)] {
    if (const auto dialog = self.lock()) (*dialog)->Tell(nullptr);
  });
}

void FormDialog::Afterwards(std::function<void()> what) const {
  PostToMainThread(context_, std::move(what));
}

void FormDialog::FocusCame(ControlView& view) {
  focus_ = &view;
  if (drawing_ > 0 || form_.Focus() == &view.control()) return;
  ReportSoon(view, [this, &view] {
    if (focus_ == &view && form_.Focus() != &view.control()) form_.UserFocus(view.control());
  });
}

void FormDialog::KeyCame(const css::awt::KeyEvent& event) {
  if (event.KeyCode != css::awt::Key::ESCAPE || event.Modifiers != 0 || escape_ == Escape::Spent) return;
  escape_ = Escape::Down;
  // The office closes the dialog for it next, unless something else had a use for the key.
  Afterwards([self = std::weak_ptr(self_)] {
    if (const auto dialog = self.lock()) (*dialog)->escape_ = Escape::Up;
  });
}

void FormDialog::SpendEscape() {
  escape_ = Escape::Spent;
  Afterwards([self = std::weak_ptr(self_)] {
    if (const auto dialog = self.lock()) (*dialog)->escape_ = Escape::Up;
  });
}

bool FormDialog::IsFormKey(host::Key key) const {
  const auto presses = [](const host::Button* button) { return button != nullptr && button->Usable(); };
  if (key == host::Key::Enter) return presses(form_.DefaultButton());
  if (key == host::Key::Escape) return presses(form_.CancelButton());
  return key == host::Key::Tab;
}

void FormDialog::SetEditing(bool isEditing) {
  focus_ = nullptr;
  if (isEditing) {
    isEditing_ = true;
    return;
  }
  // The Enter that ended the edit may still be on its way to the default button.
  Afterwards([self = std::weak_ptr(self_)] {
    const auto dialog = self.lock();
    if (!dialog) return;
    (*dialog)->isEditing_ = false;
    (*dialog)->Draw();
  });
}

void FormDialog::Ticked(host::Timer* timer) {
  const auto running = running_.find(timer);
  if (running == running_.end()) return;
  // While a handler of this form has not come to its end, the tick is left out.
  if (telling_ == 0) {
    ++telling_;
    Guarded([&] { timer->Tick(); });
    --telling_;
  }
  if (timer->Enabled() && form_.IsShown()) {
    clock_->Set(*timer, timer->Interval());
  } else {
    running_.erase(timer);
  }
  redraw_();
}

// --- what is shown
// --------------------------------------------------------------------------------------------------------------

void FormDialog::Draw() {
  if (!form_.IsShown()) {
    if (!std::exchange(isEnding_, true)) AtEdge([&] { As<css::awt::XDialog>(dialog_)->endExecute(); });
    return;
  }
  if (drawing_ > 0) return;
  ++drawing_;
  try {
    AtEdge([&] {
      const bool formChanged = std::exchange(drawn_, form_.Revision()) != form_.Revision();
      if (formChanged) Set(model_, "Title", ToUno(form_.Title()));
      if (DrawControls() || formChanged || !visible_) Arrange();
      DrawDefaultButton();
      DrawTimers();
      DrawFocus();
    });
  } catch (...) {
    failure_ = std::current_exception();
    form_.Hide();
    As<css::awt::XDialog>(dialog_)->endExecute();
  }
  --drawing_;
}

bool FormDialog::DrawControls() {
  const auto moved = std::exchange(moved_, {});
  bool changed = false;
  for (const auto& view : views_) {
    const bool anyway =
        std::any_of(moved.begin(), moved.end(), [&](const ControlView* other) { return view->IsMovedBy(*other); });
    changed = view->Draw(anyway) || changed;
  }
  return changed;
}

void FormDialog::DrawTimers() {
  for (const auto& control : form_.Controls()) {
    auto* const timer = dynamic_cast<host::Timer*>(control.get());
    if (timer == nullptr) continue;
    const auto running = running_.find(timer);
    if (!timer->Enabled()) {
      if (running == running_.end()) continue;
      running_.erase(running);
      clock_->Drop(*timer);
    } else if (running == running_.end() || running->second != timer->Interval()) {
      running_[timer] = timer->Interval();
      clock_->Set(*timer, timer->Interval());
    }
  }
}

void FormDialog::DrawDefaultButton() {
  for (const auto& view : views_) {
    auto* const button = dynamic_cast<ButtonView*>(view.get());
    if (button != nullptr) button->ShowDefault(!isEditing_ && &button->control() == form_.DefaultButton());
  }
}

void FormDialog::DrawFocus() {
  const host::Control* const focus = form_.Focus();
  if (focus == nullptr || isEditing_ || (focus_ != nullptr && &focus_->control() == focus)) return;
  focus_ = viewOf_.at(focus);
  focus_->window()->setFocus();
}

Extent FormDialog::Inside() const {
  const auto size = As<css::awt::XWindow>(dialog_)->getPosSize();
  return {size.Width, size.Height};
}

// A window that the user has not sized himself is as large as its form needs; it never is smaller.
void FormDialog::Arrange() {
  ++drawing_;
  std::vector<const host::Control*> visible;
  for (const auto& view : views_) {
    if (view->control().Visible()) visible.push_back(&view->control());
  }
  const FormLayout layout(form_.layout(), measures_, [&](const host::Layout& cell) -> std::optional<Need> {
    if (!cell.control->Visible()) return std::nullopt;
    return viewOf_.at(cell.control)->NeedIn(cell);
  });
  const Extent least = layout.Least();
  Extent size = least;
  const bool isFirst = !visible_;
  const bool fits = !isFirst && (isSizedByUser_ || visible == *visible_);
  if (fits) {
    const Extent now = Inside();
    size = {std::max(least.width, now.width), std::max(least.height, now.height)};
  }
  if (isFirst || size != Inside()) {
    As<css::awt::XWindow>(dialog_)->setPosSize(0, 0, size.width, size.height, css::awt::PosSize::SIZE);
  }
  visible_ = std::move(visible);
  std::size_t frame = 0;
  for (const FormLayout::Placed& placed : layout.Place(size)) {
    if (placed.part->control == nullptr) {
      PutFrame(frame++, placed);
      continue;
    }
    Box& now = places_[placed.part->control->Name()];
    if (now == placed.box) continue;
    now = placed.box;
    viewOf_.at(placed.part->control)
        ->window()
        ->setPosSize(now.x, now.y, now.width, now.height, css::awt::PosSize::POSSIZE);
  }
  for (; frame < frames_; ++frame) As<css::awt::XWindow>(Native(ToUno(FrameName(frame))))->setVisible(false);
  --drawing_;
}

std::string FormDialog::FrameName(std::size_t number) const {
  return "\nframe " + std::to_string(number);  // no name of a control
}

void FormDialog::PutFrame(std::size_t number, const FormLayout::Placed& placed) {
  const OUString name = ToUno(FrameName(number));
  if (number == frames_) {
    const auto frame = NewModel("UnoControlGroupBox");
    frame->setPropertyValue("TabIndex", Any(static_cast<sal_Int16>(number)));
    Insert(name, frame);
    ++frames_;
  }
  const auto native = Native(name);
  Set(native->getModel(), "Label", ToPlainLabel(placed.part->caption));
  const auto window = As<css::awt::XWindow>(native);
  window->setPosSize(placed.box.x, placed.box.y, placed.box.width, placed.box.height, css::awt::PosSize::POSSIZE);
  window->setVisible(true);
}

}  // namespace tolvane::libreoffice
