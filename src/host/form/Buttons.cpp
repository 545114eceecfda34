#include "src/host/form/Buttons.h"

#include <algorithm>
#include <stdexcept>

#include "src/host/Form.h"

namespace tolvane::host {

void Clickable::UserClick() {
  BeginUserAction();
  Clicked();
  Raise(OnClick);
}

void OptionButton::SetValue(bool value) {
  if (value) {
    for (const auto& control : form().Controls()) {
      auto* const other = dynamic_cast<OptionButton*>(control.get());
      if (other != nullptr && other != this && other->group_ == group_) other->SetValue(false);
    }
  }
  Change(value_, value);
}

Spin::Spin(Form& form, std::string name, int min, int max)
    : Control(form, std::move(name)), min_(min), max_(max), value_(min) {
  SetBounds(min, max);
}

void Spin::SetBounds(int min, int max) {
  if (min > max) {
    throw std::invalid_argument("The bounds of " + Name() + " are the wrong way round: " + std::to_string(min) +
                                " to " + std::to_string(max) + ".");
  }
  Change(min_, min);
  Change(max_, max);
  Change(value_, std::clamp(value_, min, max));
}

void Spin::SetValue(int value) {
  if (value < min_ || value > max_) {
    throw std::out_of_range(Name() + " goes from " + std::to_string(min_) + " to " + std::to_string(max_) +
                            " and cannot be " + std::to_string(value) + ".");
  }
  Change(value_, value);
}

void Spin::UserUp() {
  BeginUserAction();
  if (value_ == max_) return;
  SetValue(value_ + 1);
  Raise(OnUp);
}

void Spin::UserDown() {
  BeginUserAction();
  if (value_ == min_) return;
  SetValue(value_ - 1);
  Raise(OnDown);
}

}  // namespace tolvane::host
