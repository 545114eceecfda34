#include "src/host/form/Timer.h"

#include <stdexcept>

#include "src/host/Form.h"

namespace tolvane::host {

void Timer::SetInterval(std::chrono::milliseconds interval) {
  if (interval.count() <= 0) throw std::invalid_argument("The interval of the timer " + Name() + " is not positive.");
  Change(interval_, interval);
}

bool Timer::Tick() {
  if (!Enabled() || !form().IsShown()) return false;
  Raise(OnTick);
  return true;
}

}  // namespace tolvane::host
