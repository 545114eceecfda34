#include "src/host/Gate.h"

#include <algorithm>
#include <cstddef>

namespace tolvane::host {

// While hooks are walked over, those behind the walk's back keep their places; the last walk closes the gaps.
class Gate::Walk {
 public:
  explicit Walk(Gate& gate) : gate_(gate) { ++gate_.walks_; }
  ~Walk() {
    if (--gate_.walks_ == 0) std::erase(gate_.hooks_, nullptr);
  }
  Walk(const Walk&) = delete;
  Walk& operator=(const Walk&) = delete;

 private:
  Gate& gate_;
};

void Gate::RemoveHook(GateHook& hook) {
  const auto found = std::find(hooks_.rbegin(), hooks_.rend(), &hook);
  if (found == hooks_.rend()) return;
  if (walks_ > 0) {
    *found = nullptr;
  } else {
    hooks_.erase(std::next(found).base());
  }
}

void Gate::CallBefore(const GateCall& call) {
  const Walk walk(*this);
  const std::size_t count = hooks_.size();
  for (std::size_t i = 0; i < count; ++i) {
    if (hooks_[i] != nullptr) hooks_[i]->Before(call);
  }
}

void Gate::CallAfter(const GateCall& call) {
  const Walk walk(*this);
  for (std::size_t i = hooks_.size(); i > 0; --i) {
    if (hooks_[i - 1] != nullptr) hooks_[i - 1]->After(call);
  }
}

}  // namespace tolvane::host
