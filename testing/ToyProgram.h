#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "src/host/Errors.h"
#include "src/host/Gate.h"
#include "src/host/Handle.h"

namespace tolvane::testing {

// The smallest program that has a gate: a row of lamps.
class LampBody final : public host::Body {
 public:
  explicit LampBody(host::Gate& gate) : gate_(gate) {}
  bool IsAlive() const noexcept override { return true; }
  host::Gate& gate() const noexcept override { return gate_; }

  bool IsOn() const { return on_; }
  void Switch(bool on) { on_ = on; }
  void Break() { throw host::HostError(host::ErrorNumber::ApplicationDefined, "it is broken"); }
  // Passes the gate a second time before the first has been left.
  void SwitchOther(LampBody& other, bool on);

 private:
  host::Gate& gate_;
  bool on_ = false;
};

class Lamp : public host::Handle<LampBody> {
 public:
  using Handle::Handle;
  bool IsOn() const { return Read("Lamp.IsOn", &LampBody::IsOn); }
  void Switch(bool on) const { Write("Lamp.Switch", &LampBody::Switch, on); }
  void Break() const { Write("Lamp.Break", &LampBody::Break); }
  void SwitchOther(const Lamp& other, bool on) const {
    Write("Lamp.SwitchOther", &LampBody::SwitchOther, *other.body(), on);
  }
};

inline void LampBody::SwitchOther(LampBody& other, bool on) {
  // An alias without ownership: the other lamp outlives the call.
  Lamp(std::shared_ptr<LampBody>(std::shared_ptr<LampBody>(), &other)).Switch(on);
  on_ = on;
}

struct ToyProgram {
  host::Gate gate;
  Lamp first{std::make_shared<LampBody>(gate)};
  Lamp second{std::make_shared<LampBody>(gate)};
};

}  // namespace tolvane::testing
