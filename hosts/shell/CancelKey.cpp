#include "hosts/shell/CancelKey.h"

#include "src/host/Errors.h"

namespace tolvane::shell {

void CancelKeyWatch::Before(const host::GateCall& call) {
  if (callsLeft_ == 0) return;
  const bool polls = call.member == "User.EscPressed";
  if (!polls && mode != host::CancelKey::ErrorHandler) return;
  if (--callsLeft_ > 0) return;
  if (mode == host::CancelKey::ErrorHandler) {
    throw host::HostError(host::ErrorNumber::UserInterrupt, host::kUserInterruptText);
  }
  esc_ = true;
}

}  // namespace tolvane::shell
