#include "hosts/shell/EventHub.h"

#include <algorithm>
#include <utility>

namespace tolvane::shell {

EventHub::EventHub() : listeners_(std::make_shared<Listeners>()) {}

host::ApplicationEvents* EventHub::Listeners::Find(std::uint64_t id) const {
  const auto found = std::find_if(all.begin(), all.end(), [id](const Listener& one) { return one.id == id; });
  return found == all.end() ? nullptr : found->target;
}

host::Subscription EventHub::Advise(host::ApplicationEvents& listener) {
  const std::uint64_t id = listeners_->nextId++;
  listeners_->all.push_back({id, &listener});
  return host::Subscription([weak = std::weak_ptr(listeners_), id] {
    const auto listeners = weak.lock();
    if (listeners == nullptr) return;
    std::erase_if(listeners->all, [id](const Listener& one) { return one.id == id; });
  });
}

void EventHub::Watch(std::function<void()> enter, std::function<void()> leave) {
  enter_ = std::move(enter);
  leave_ = std::move(leave);
}

void EventHub::Raise(const Event& event) {
  if (forms_ > 0) {
    held_.push_back(event);
  } else {
    Deliver(event);
  }
}

bool EventHub::Ask(const Question& question) {
  bool cancel = false;
  Deliver([&](host::ApplicationEvents& listener) { question(listener, cancel); });
  return cancel;
}

void EventHub::Deliver(const Event& event) {
  constexpr int kDeepest = 100;
  if (depth_ == kDeepest) return;
  ++depth_;
  const std::shared_ptr<Listeners> listeners = listeners_;
  std::vector<std::uint64_t> ids;
  for (const Listener& listener : listeners->all) ids.push_back(listener.id);
  for (const std::uint64_t id : ids) {
    host::ApplicationEvents* const target = listeners->Find(id);
    if (target == nullptr) continue;  // it stopped listening meanwhile
    enter_();
    try {
      event(*target);
    } catch (...) {
      // A failing handler is the listener's own affair; whoever caused the event does not see it.
    }
    leave_();
  }
  --depth_;
}

void EventHub::FormGone() {
  if (--forms_ > 0) return;
  // One by one: a handler may show the next form, and what waits then waits on.
  while (forms_ == 0 && !held_.empty()) {
    const Event event = std::move(held_.front());
    held_.erase(held_.begin());
    Deliver(event);
  }
}

void EventHub::End() {
  listeners_->all.clear();
  held_.clear();
}

}  // namespace tolvane::shell
