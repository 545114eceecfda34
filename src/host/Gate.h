#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace tolvane::host {

enum class Access : std::uint8_t {
  Read,   // changes nothing that a user could see
  Write,  // everything else
};

// One use of a member of the port. `member` is its name in the table of members ("Range.Value"); `object` tells one
// body from another and is never dereferenced.
struct GateCall {
  std::string_view member;
  Access access = Access::Read;
  const void* object = nullptr;
};

// Looks at every call that passes a gate; counters, traces and planted faults are hooks. Either may throw: Before, and
// the call has no effect; After, and its effect stays while the caller sees a failure. Of a call that fails by itself
// no After is told.
class GateHook {
 public:
  virtual ~GateHook() = default;
  virtual void Before(const GateCall&) {}
  virtual void After(const GateCall&) {}
};

// The one place that every member of every handle of one application passes. Hooks are called in the order in which
// they were added, afterwards in reverse. They may use handles themselves, and add and remove hooks at any time: one
// that is removed hears nothing more, one that is added while hooks are being called begins with what they are told
// next.
class Gate {
 public:
  void AddHook(GateHook& hook) { hooks_.push_back(&hook); }
  void RemoveHook(GateHook& hook);

  void Enter(const GateCall& call) {
    if (!hooks_.empty()) CallBefore(call);
  }
  void Leave(const GateCall& call) {
    if (!hooks_.empty()) CallAfter(call);
  }

 private:
  class Walk;
  void CallBefore(const GateCall& call);
  void CallAfter(const GateCall& call);

  std::vector<GateHook*> hooks_;  // null where one was removed during a walk
  int walks_ = 0;
};

// A hook in force for as long as a scope lasts.
class HookScope {
 public:
  HookScope(Gate& gate, GateHook& hook) : gate_(gate), hook_(hook) { gate_.AddHook(hook_); }
  ~HookScope() { gate_.RemoveHook(hook_); }
  HookScope(const HookScope&) = delete;
  HookScope& operator=(const HookScope&) = delete;

 private:
  Gate& gate_;
  GateHook& hook_;
};

}  // namespace tolvane::host
