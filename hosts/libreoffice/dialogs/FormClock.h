#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <thread>

#include "src/host/form/Timer.h"

namespace tolvane::libreoffice {

// Counts the time for the timers of a form that is up, on a thread of its own, since the office has no timers to offer.
class FormClock {
 public:
  // `due` is told on that thread, once for each interval; the next begins with Set.
  explicit FormClock(std::function<void(host::Timer*)> due);
  ~FormClock();
  FormClock(const FormClock&) = delete;
  FormClock& operator=(const FormClock&) = delete;

  // The timer is due once the interval is over, counted from now.
  void Set(host::Timer& timer, std::chrono::milliseconds interval);
  void Drop(host::Timer& timer);

 private:
  using Time = std::chrono::steady_clock::time_point;
  void Run();

  std::function<void(host::Timer*)> due_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::map<host::Timer*, Time> times_;
  bool ends_ = false;
  std::thread thread_;  // none before the first timer is set
};

}  // namespace tolvane::libreoffice
