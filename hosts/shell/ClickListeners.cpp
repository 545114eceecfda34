#include "hosts/shell/ClickListeners.h"

#include <utility>
#include <vector>

#include "hosts/shell/Control.h"

namespace tolvane::shell {

host::Subscription ClickListeners::Add(std::shared_ptr<const Control> control, host::ClickHandler handler) {
  const std::uint64_t key = list_->next++;
  list_->listeners.emplace(key, std::make_shared<Listener>(Listener{std::move(control), std::move(handler)}));
  return host::Subscription([weak = std::weak_ptr(list_), key] {
    const auto list = weak.lock();
    if (list == nullptr) return;
    const auto found = list->listeners.find(key);
    if (found == list->listeners.end()) return;
    const auto listener = std::move(found->second);  // what goes with the handler goes when the list is whole again
    list->listeners.erase(found);
    listener->ended = true;
  });
}

void ClickListeners::Clear() {
  const auto ended = std::exchange(list_->listeners, {});
  for (const auto& [key, listener] : ended) listener->ended = true;
}

bool ClickListeners::Call(const Control& control, const host::CommandBarControl& handle) {
  std::vector<std::shared_ptr<Listener>> hearing;
  for (const auto& [key, listener] : list_->listeners) {
    if (listener->control->SharesClicksWith(control)) hearing.push_back(listener);
  }
  bool cancelDefault = false;
  for (const auto& listener : hearing) {
    if (listener->ended) continue;
    try {
      listener->handler(handle, cancelDefault);
    } catch (...) {  // the program goes on, whatever an add-in does
    }
  }
  return cancelDefault;
}

}  // namespace tolvane::shell
