#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "src/host/Events.h"
#include "src/host/Subscription.h"

namespace tolvane::shell {

// Delivers the program's events to who listens: at once, or when the outermost form is gone. Handlers may listen, stop
// listening and cause events of their own, which are delivered before those that still wait behind their cause.
// Handlers that cause themselves without end are cut off: what they cause more than 100 deep is not delivered.
class EventHub {
 public:
  using Event = std::function<void(host::ApplicationEvents&)>;
  using Question = std::function<void(host::ApplicationEvents&, bool& cancel)>;

  EventHub();
  host::Subscription Advise(host::ApplicationEvents& listener);
  // `enter` and `leave` are called around every call of a handler.
  void Watch(std::function<void()> enter, std::function<void()> leave);

  void Raise(const Event& event);
  // True when a handler cancelled. Its answer is needed now, so it does not wait for a form.
  bool Ask(const Question& question);

  void FormShown() { ++forms_; }
  void FormGone();
  // Nobody listens any more.
  void End();

 private:
  struct Listener {
    std::uint64_t id = 0;
    host::ApplicationEvents* target = nullptr;
  };
  struct Listeners {
    std::uint64_t nextId = 1;
    std::vector<Listener> all;
    host::ApplicationEvents* Find(std::uint64_t id) const;
  };
  void Deliver(const Event& event);

  std::shared_ptr<Listeners> listeners_;
  std::function<void()> enter_ = [] {};
  std::function<void()> leave_ = [] {};
  int forms_ = 0;
  int depth_ = 0;
  std::vector<Event> held_;
};

}  // namespace tolvane::shell
