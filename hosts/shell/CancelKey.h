#pragma once

#include <utility>

#include "src/host/Constants.h"
#include "src/host/Gate.h"

namespace tolvane::shell {

// The cancel key, as the members of the port notice it: with EnableCancelKey = ErrorHandler the next member fails, and
// who asks for Esc hears of it in any case. In the other modes nobody else looks, and the key waits.
class CancelKeyWatch : public host::GateHook {
 public:
  host::CancelKey mode = host::CancelKey::Interrupt;

  // The key goes down at the N-th call from now that could notice it.
  void PressAt(int callsFromNow) { callsLeft_ = callsFromNow; }
  // Whether the key went down since the last poll.
  bool TakeEsc() { return std::exchange(esc_, false); }

  void Before(const host::GateCall& call) override;

 private:
  int callsLeft_ = 0;  // 0: it is not pressed
  bool esc_ = false;
};

}  // namespace tolvane::shell
