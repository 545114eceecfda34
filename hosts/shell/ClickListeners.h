#pragma once

#include <cstdint>
#include <map>
#include <memory>

#include "src/host/CommandBars.h"
#include "src/host/Subscription.h"

namespace tolvane::shell {

class Control;

// Who listens to clicks, in the order of subscribing. Subscriptions may outlive it.
class ClickListeners {
 public:
  host::Subscription Add(std::shared_ptr<const Control> control, host::ClickHandler handler);
  // All subscriptions are over.
  void Clear();

  // Calls all who hear a click on this control and tells whether one of them cancelled what would follow. They may
  // subscribe, unsubscribe and delete controls; one that has unsubscribed is not called, one that is new not yet. What
  // they throw goes nowhere.
  bool Call(const Control& control, const host::CommandBarControl& handle);

 private:
  struct Listener {
    std::shared_ptr<const Control> control;  // kept, since it counts even when it has been deleted
    host::ClickHandler handler;
    bool ended = false;
  };
  struct List {
    std::uint64_t next = 0;
    std::map<std::uint64_t, std::shared_ptr<Listener>> listeners;
  };
  std::shared_ptr<List> list_ = std::make_shared<List>();
};

}  // namespace tolvane::shell
