#include "testing/GateHooks.h"

#include "src/host/Errors.h"

namespace tolvane::testing {

using host::Access;
using host::ErrorNumber;
using host::GateCall;
using host::HostError;

CallCounter::Counts CallCounter::Of(std::string_view member) const {
  const auto found = byMember_.find(member);
  return found == byMember_.end() ? Counts{} : found->second;
}

void CallCounter::Reset() {
  total_ = {};
  byMember_.clear();
}

void CallCounter::Before(const GateCall& call) {
  auto found = byMember_.find(call.member);
  if (found == byMember_.end()) found = byMember_.emplace(std::string(call.member), Counts{}).first;
  const auto member = call.access == Access::Read ? &Counts::reads : &Counts::writes;
  ++(found->second.*member);
  ++(total_.*member);
}

std::vector<std::string> CallTrace::Members() const {
  std::vector<std::string> members;
  members.reserve(calls_.size());
  for (const Call& call : calls_) members.push_back(call.member);
  return members;
}

std::vector<std::string> CallTrace::Writes() const {
  std::vector<std::string> members;
  for (const Call& call : calls_) {
    if (call.access == Access::Write) members.push_back(call.member);
  }
  return members;
}

void CallTrace::Before(const GateCall& call) {
  const int number = objects_.try_emplace(call.object, static_cast<int>(objects_.size()) + 1).first->second;
  calls_.push_back({std::string(call.member), call.access, number});
}

std::string_view NameOf(FaultMode mode) {
  switch (mode) {
    case FaultMode::BeforeEffect:
      return "fails before its effect";
    case FaultMode::AfterEffect:
      return "fails after its effect";
    case FaultMode::DyingObject:
      return "meets a dying object";
  }
  return {};
}

void FaultAt::Before(const GateCall& call) {
  ++calls_;
  if (dying_ != nullptr && call.object == dying_) Fail();
  // The call that was to fail has failed by itself: its place on the stack has gone to this one.
  if (&call == pending_) pending_ = nullptr;
  if (calls_ != position_) return;
  member_ = call.member;
  switch (mode_) {
    case FaultMode::BeforeEffect:
      Fail();
    case FaultMode::AfterEffect:
      pending_ = &call;
      return;
    case FaultMode::DyingObject:
      dying_ = call.object;
      Fail();
  }
}

void FaultAt::After(const GateCall& call) {
  if (&call != pending_) return;
  pending_ = nullptr;
  Fail();
}

void FaultAt::Fail() const {
  if (mode_ == FaultMode::DyingObject) throw HostError(ErrorNumber::ObjectRequired, host::kObjectRequiredText);
  throw HostError(ErrorNumber::ApplicationDefined,
                  "planted: call " + std::to_string(position_) + ", " + member_ + ", " + std::string(NameOf(mode_)));
}

void CancelKeyAt::Before(const GateCall&) {
  if (++calls_ < position_ || done_ || !noticed_()) return;
  done_ = true;
  throw HostError(ErrorNumber::UserInterrupt, host::kUserInterruptText);
}

}  // namespace tolvane::testing
