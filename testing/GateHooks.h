#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "src/host/Gate.h"

namespace tolvane::testing {

// How often the members of the port are used. A call counts when it enters, whether it succeeds or not.
class CallCounter final : public host::GateHook {
 public:
  struct Counts {
    int reads = 0;
    int writes = 0;
    int total() const { return reads + writes; }
    friend bool operator==(const Counts&, const Counts&) = default;
  };
  const Counts& Total() const { return total_; }
  Counts Of(std::string_view member) const;  // "Range.Value"
  const std::map<std::string, Counts, std::less<>>& ByMember() const { return byMember_; }
  void Reset();

  void Before(const host::GateCall& call) override;

 private:
  Counts total_;
  std::map<std::string, Counts, std::less<>> byMember_;
};

// The calls in their order.
class CallTrace final : public host::GateHook {
 public:
  struct Call {
    std::string member;
    host::Access access = host::Access::Read;
    int object = 0;  // the objects are numbered from 1 in the order in which they first came
  };
  const std::vector<Call>& Calls() const { return calls_; }
  std::vector<std::string> Members() const;  // their names only
  std::vector<std::string> Writes() const;   // those of the writing ones

  void Before(const host::GateCall& call) override;

 private:
  std::vector<Call> calls_;
  std::unordered_map<const void*, int> objects_;
};

enum class FaultMode : std::uint8_t {
  BeforeEffect,  // the call fails with ApplicationDefined and nothing has happened
  AfterEffect,   // the call fails likewise, but what it does has been done
  DyingObject,   // the call and all later ones on the same object fail with ObjectRequired, and nothing happens
};
std::string_view NameOf(FaultMode mode);

// Makes the N-th call fail. An object is told by its address: one that is made later may come to lie where a dying one
// has lain, and then dies as well.
class FaultAt final : public host::GateHook {
 public:
  FaultAt(int position, FaultMode mode) : position_(position), mode_(mode) {}

  // Whether that many calls were made. What failed by itself at that place, before its planted failure, counts.
  bool WasReached() const { return calls_ >= position_; }
  const std::string& Member() const { return member_; }  // of the call that failed
  int Calls() const { return calls_; }                   // all that came

  void Before(const host::GateCall& call) override;
  void After(const host::GateCall& call) override;

 private:
  [[noreturn]] void Fail() const;

  const int position_;
  const FaultMode mode_;
  int calls_ = 0;
  std::string member_;
  const host::GateCall* pending_ = nullptr;  // the call that is to fail when it comes back
  const void* dying_ = nullptr;
};

// Presses the cancel key: at the N-th call, or the first one after it for which `noticed` holds, UserInterrupt comes
// out of the call, once. `noticed` says whether the program listens to the key at all and must not pass the gate
// itself:
//
//   CancelKeyAt hook(3, [&] { return application.body()->EnableCancelKey() == host::CancelKey::ErrorHandler; });
class CancelKeyAt final : public host::GateHook {
 public:
  explicit CancelKeyAt(
      int position, std::function<bool()> noticed = [] { return true; })
      : position_(position), noticed_(std::move(noticed)) {}

  bool WasNoticed() const { return done_; }

  void Before(const host::GateCall& call) override;

 private:
  const int position_;
  std::function<bool()> noticed_;
  int calls_ = 0;
  bool done_ = false;
};

}  // namespace tolvane::testing
