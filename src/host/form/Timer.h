#pragma once

#include <chrono>
#include <functional>
#include <string>

#include "src/host/form/Control.h"

namespace tolvane::host {

// Ticks while it is enabled and its form is up. It counts no time itself: whoever shows the form does.
class Timer final : public Control {
 public:
  Timer(Form& form, std::string name) : Control(form, std::move(name)) { SetEnabled(false); }

  std::chrono::milliseconds Interval() const { return interval_; }
  // std::invalid_argument unless positive.
  void SetInterval(std::chrono::milliseconds interval);

  std::function<void()> OnTick;
  // One interval is over. A tick that was on its way when the timer was stopped or the form went is late, not wrong: it
  // does nothing, and false is returned.
  bool Tick();

  bool CanHaveFocus() const override { return false; }
  void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

 private:
  std::chrono::milliseconds interval_{1000};
};

}  // namespace tolvane::host
