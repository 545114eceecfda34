#include "src/host/Form.h"

#include <stdexcept>
#include <unordered_set>

namespace tolvane::host {

namespace {

void Gather(const Layout& layout, std::unordered_set<const Control*>& found, const Form& form) {
  if (layout.control != nullptr && !found.insert(layout.control).second) {
    throw std::logic_error("The control " + layout.control->Name() + " stands twice in the layout of the form " +
                           form.Name() + ".");
  }
  for (const Layout& child : layout.children) Gather(child, found, form);
}

bool IsTimer(const Control& control) {
  return dynamic_cast<const Timer*>(&control) != nullptr;
}

}  // namespace

Form::Form(std::string name, std::string_view title) : name_(std::move(name)), title_(title) {}
Form::~Form() = default;

void Form::SetTitle(std::string_view title) {
  if (title_ == title) return;
  title_ = title;
  ++revision_;
}

// --- controls
// ---------------------------------------------------------------------------------------------------------

void Form::Take(std::unique_ptr<Control> control) {
  if (ownLayout_) {
    throw std::logic_error("The control " + control->Name() + " comes too late for the layout of the form " + name_ +
                           ".");
  }
  if (positions_.contains(control->Name())) {
    throw std::logic_error("The form " + name_ + " has a control " + control->Name() + " already.");
  }
  controls_.push_back(std::move(control));
  Control& added = *controls_.back();
  positions_.emplace(added.Name(), controls_.size() - 1);
  if (!IsTimer(added)) layout_.children.emplace_back(added);
}

Control* Form::Find(std::string_view name) const {
  const auto found = positions_.find(name);
  return found == positions_.end() ? nullptr : controls_[found->second].get();
}

Control& Form::MustFind(std::string_view name) const {
  if (Control* const control = Find(name)) return *control;
  throw std::logic_error("The form " + name_ + " has no control " + std::string(name) + ".");
}

void Form::ThrowOtherKind(std::string_view name) const {
  throw std::logic_error("The control " + std::string(name) + " of the form " + name_ + " is of another kind.");
}

void Form::ThrowForeign(const Control& control) const {
  throw std::logic_error("The control " + control.Name() + " is not one of the form " + name_ + ".");
}

std::size_t Form::PositionOf(const Control& control) const {
  return positions_.at(Own(control).Name());
}

Control* Form::NextInOrder(const Control& control) const {
  for (std::size_t i = PositionOf(control) + 1; i < controls_.size(); ++i) {
    if (controls_[i]->CanHaveFocus()) return controls_[i].get();
  }
  return nullptr;
}

// --- layout
// -----------------------------------------------------------------------------------------------------------

void Form::SetLayout(Layout layout) {
  std::unordered_set<const Control*> found;
  Gather(layout, found, *this);
  for (const Control* const control : found) {
    if (IsTimer(Own(*control))) {
      throw std::logic_error("The timer " + control->Name() + " has no place in the layout of the form " + name_ + ".");
    }
  }
  for (const auto& control : controls_) {
    if (!IsTimer(*control) && !found.contains(control.get())) {
      throw std::logic_error("The control " + control->Name() + " stands nowhere in the layout of the form " + name_ +
                             ".");
    }
  }
  layout_ = std::move(layout);
  ownLayout_ = true;
  ++revision_;
}

// --- focus and keys
// ---------------------------------------------------------------------------------------------------

Control* Form::TabStopFrom(std::size_t start, int step) const {
  // Of a group of option buttons only the chosen one is a stop, or the first while none is chosen.
  std::unordered_map<std::string_view, const OptionButton*> stops;
  for (const auto& control : controls_) {
    const auto* const option = dynamic_cast<const OptionButton*>(control.get());
    if (option == nullptr || !option->Usable()) continue;
    const auto [stop, isFirst] = stops.emplace(option->Group(), option);
    if (!isFirst && option->Value()) stop->second = option;
  }
  const std::size_t count = controls_.size();
  for (std::size_t walked = 0, i = start % count; walked < count; ++walked) {
    Control& control = *controls_[i];
    const auto* const option = dynamic_cast<const OptionButton*>(&control);
    if (control.Usable() && control.CanHaveFocus() && control.TabStop() &&
        (option == nullptr || stops.at(option->Group()) == option)) {
      return &control;
    }
    i = step > 0 ? (i + 1) % count : (i + count - 1) % count;
  }
  return nullptr;
}

Control* Form::Focus() const {
  if (controls_.empty()) return nullptr;
  if (focus_ == nullptr) return TabStopFrom(0, 1);
  if (focus_->Usable() && focus_->CanHaveFocus()) return focus_;
  return TabStopFrom(PositionOf(*focus_) + 1, 1);
}

void Form::SetFocus(Control& control) {
  if (!Own(control).Usable() || !control.CanHaveFocus()) {
    throw std::logic_error("The control " + control.Name() + " of the form " + name_ + " cannot have the focus now.");
  }
  if (focus_ == &control) return;
  focus_ = &control;
  ++revision_;
}

void Form::UserFocus(Control& control) {
  MustTakeActions();
  if (!Own(control).Visible()) control.Refuse("is hidden");
  if (!control.Enabled()) control.Refuse("is disabled");
  if (!control.CanHaveFocus()) control.Refuse("cannot have the focus");
  SetFocus(control);
}

void Form::UserPressTab(bool backwards) {
  MustTakeActions();
  const Control* const focus = Focus();
  if (focus == nullptr) return;
  const std::size_t position = PositionOf(*focus);
  Control* const next = backwards ? TabStopFrom(position + controls_.size() - 1, -1) : TabStopFrom(position + 1, 1);
  if (next != nullptr) SetFocus(*next);
}

bool Form::Press(Button* button) {
  if (button == nullptr || !button->Usable()) return false;
  button->UserClick();
  return true;
}

bool Form::UserPressEnter() {
  MustTakeActions();
  Control* const focus = Focus();
  if (auto* const button = dynamic_cast<Button*>(focus)) return Press(button);
  // There Enter begins a line.
  const auto* const box = dynamic_cast<const TextBox*>(focus);
  if (box != nullptr && box->MultiLine() && !box->Locked()) return false;
  return Press(defaultButton_);
}

bool Form::UserPressEscape() {
  MustTakeActions();
  return Press(cancelButton_);
}

void Form::UserPressMnemonic(char key) {
  MustTakeActions();
  if (key >= 'A' && key <= 'Z') key = static_cast<char>(key - 'A' + 'a');
  const Control* const focus = Focus();
  const std::size_t start = focus == nullptr ? 0 : PositionOf(*focus) + 1;
  for (std::size_t walked = 0; walked < controls_.size(); ++walked) {
    Control& control = *controls_[(start + walked) % controls_.size()];
    const auto mnemonic = MnemonicOf(control.MnemonicCaption());
    if (mnemonic && mnemonic->key == key && control.Usable()) {
      control.UserPressMnemonic();
      return;
    }
  }
  throw ActionRefused("Nothing that can be used on the form " + name_ + " has the key " + std::string(1, key) + ".");
}

// --- life
// -------------------------------------------------------------------------------------------------------------

void Form::Load() {
  if (loaded_ || loading_) return;
  loading_ = true;
  hiddenWhileLoading_ = false;
  try {
    if (const auto handler = OnLoad) handler();
  } catch (...) {
    loading_ = false;
    throw;
  }
  loading_ = false;
  loaded_ = true;
}

void Form::Hide() {
  if (loading_) hiddenWhileLoading_ = true;
  if (ListView* const list = OpenEdit()) list->DropLabelEdit();
  shown_ = false;
}

bool Form::BeginShow() {
  if (shown_ || loading_) throw std::logic_error("The form " + name_ + " is up or on its way already.");
  Load();
  if (std::exchange(hiddenWhileLoading_, false)) return false;
  shown_ = true;
  try {
    if (const auto handler = OnShow) handler();
  } catch (...) {
    Hide();
    throw;
  }
  return shown_;
}

ListView* Form::OpenEdit() const {
  for (const auto& control : controls_) {
    auto* const list = dynamic_cast<ListView*>(control.get());
    if (list != nullptr && list->IsEditing()) return list;
  }
  return nullptr;
}

void Form::MustTakeActions() const {
  if (!shown_) throw ActionRefused("The form " + name_ + " is not up.");
  if (const ListView* const list = OpenEdit()) list->Refuse("has an item that is being edited");
}

bool Form::UserClose(CloseReason reason) {
  if (!shown_) throw ActionRefused("The form " + name_ + " is not up.");
  if (ListView* const list = OpenEdit()) list->UserAbandonLabelEdit();
  bool cancel = false;
  if (const auto handler = OnClose; handler && shown_) handler(reason, cancel);
  if (!cancel) Hide();
  return !shown_;
}

}  // namespace tolvane::host
