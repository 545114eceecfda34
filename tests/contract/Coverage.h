#pragma once

#include <compare>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "src/host/Gate.h"
#include "tests/contract/ContractCase.h"

namespace tolvane::contract {

// A line of src/host/members.tsv. "get" and "set" are two members that count separately.
struct Member {
  std::string name;
  std::string access;  // "get", "set" or "call"
  std::string neededBy;
};
// Throws std::runtime_error with the file and line when it cannot be read.
std::vector<Member> ReadMembers(const std::string& path);

// A member that was called, and came to its end without an error.
struct TracedCall {
  std::string member;
  host::Access access = host::Access::Read;
  auto operator<=>(const TracedCall&) const = default;
};
using Trace = std::set<TracedCall>;

// Writes down what passes a gate.
class Tracer : public host::GateHook {
 public:
  void After(const host::GateCall& call) override { trace_.insert({std::string(call.member), call.access}); }
  const Trace& trace() const { return trace_; }

 private:
  Trace trace_;
};

// What is wrong, a line each; nothing when all is well: a member that no case is about, a case that is about a member
// which the table lacks or which it never calls to an end.
std::vector<std::string> CoverageProblems(const std::vector<Member>& members, const std::vector<ContractCase>& cases,
                                          const std::map<std::string, Trace>& traces);

// Members, who needs them and the cases that really call them, as tab-separated text.
std::string JointTable(const std::vector<Member>& members, const std::vector<ContractCase>& cases,
                       const std::map<std::string, Trace>& traces);

}  // namespace tolvane::contract
