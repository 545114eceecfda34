#include "hosts/libreoffice/dialogs/FormClock.h"

#include <algorithm>
#include <utility>

namespace tolvane::libreoffice {

FormClock::FormClock(std::function<void(host::Timer*)> due) : due_(std::move(due)) {}

FormClock::~FormClock() {
  {
    const std::lock_guard lock(mutex_);
    ends_ = true;
  }
  changed_.notify_all();
  if (thread_.joinable()) thread_.join();
}

void FormClock::Set(host::Timer& timer, std::chrono::milliseconds interval) {
  {
    const std::lock_guard lock(mutex_);
    times_[&timer] = std::chrono::steady_clock::now() + interval;
  }
  changed_.notify_all();
  if (!thread_.joinable()) thread_ = std::thread([this] { Run(); });
}

void FormClock::Drop(host::Timer& timer) {
  const std::lock_guard lock(mutex_);
  times_.erase(&timer);
}

void FormClock::Run() {
  std::unique_lock lock(mutex_);
  while (!ends_) {
    if (times_.empty()) {
      changed_.wait(lock);
      continue;
    }
    const auto next = std::min_element(times_.begin(), times_.end(),
                                       [](const auto& a, const auto& b) { return a.second < b.second; });
    if (const Time time = next->second; std::chrono::steady_clock::now() < time) {
      changed_.wait_until(lock, time);
      continue;
    }
    host::Timer* const timer = next->first;
    times_.erase(next);
    lock.unlock();
    due_(timer);
    lock.lock();
  }
}

}  // namespace tolvane::libreoffice
