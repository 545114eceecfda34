#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "src/host/form/Control.h"

namespace tolvane::host {

// A control with a caption of its own that answers to a click.
class Clickable : public Control {
 public:
  const std::string& Caption() const { return caption_; }  // with its "&"
  void SetCaption(std::string_view caption) { Change(caption_, caption); }

  std::function<void()> OnClick;

  std::string_view MnemonicCaption() const override { return caption_; }
  void UserPressMnemonic() override { UserClick(); }
  void UserClick();

 protected:
  Clickable(Form& form, std::string name, std::string_view caption)
      : Control(form, std::move(name)), caption_(caption) {}
  // What a click does to the control itself, before the event.
  virtual void Clicked() {}

 private:
  std::string caption_;
};

// Which button Enter and Esc press is told to the form.
class Button final : public Clickable {
 public:
  Button(Form& form, std::string name, std::string_view caption = {}) : Clickable(form, std::move(name), caption) {}
  void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }
};

class CheckBox final : public Clickable {
 public:
  CheckBox(Form& form, std::string name, std::string_view caption = {}) : Clickable(form, std::move(name), caption) {}

  bool Value() const { return value_; }
  void SetValue(bool value) { Change(value_, value); }

  void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

 protected:
  void Clicked() override { SetValue(!value_); }

 private:
  bool value_ = false;
};

// One of several: of the option buttons of a group at most one is chosen.
class OptionButton final : public Clickable {
 public:
  OptionButton(Form& form, std::string name, std::string_view caption = {}, std::string group = {})
      : Clickable(form, std::move(name), caption), group_(std::move(group)) {}

  const std::string& Group() const { return group_; }
  bool Value() const { return value_; }
  void SetValue(bool value);  // true takes the choice from the others of the group

  void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

 protected:
  void Clicked() override { SetValue(true); }

 private:
  std::string group_;
  bool value_ = false;
};

// Two arrows that step a number up and down between bounds.
class Spin final : public Control {
 public:
  Spin(Form& form, std::string name, int min = 0, int max = 100);

  int Min() const { return min_; }
  int Max() const { return max_; }
  void SetBounds(int min, int max);  // the value is brought within; std::invalid_argument when min exceeds max
  int Value() const { return value_; }
  void SetValue(int value);  // std::out_of_range beyond the bounds

  // Raised after the value has been stepped; at a bound nothing is left to step and neither is raised.
  std::function<void()> OnUp;
  std::function<void()> OnDown;
  void UserUp();
  void UserDown();

  void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

 private:
  int min_;
  int max_;
  int value_;
};

}  // namespace tolvane::host
