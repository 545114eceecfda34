#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/contract/HostUnderTest.h"

namespace tolvane::contract {

// Where a rule comes from when no published page tells it: what we know of the program from using it, or our own port's
// documentation, which decides where the program is vague or the port differs on purpose. A page is named where it is
// about the rule; the examples are ours, and none has been run on the program itself yet.
inline constexpr std::string_view kMemory = "memory";
inline constexpr std::string_view kPort = "port";

// One rule of the port, as an example that every host has to pass.
struct ContractCase {
  std::string suite;
  std::string name;
  std::vector<std::string_view> members;  // those that it is about, as in the table of members; really called by it
  std::string_view source;                // a published page, kMemory or kPort
  std::function<void(HostUnderTest&)> run;

  std::string FullName() const { return suite + "." + name; }
};

// The cases of one file.
class Cases {
 public:
  explicit Cases(std::string suite) : suite_(std::move(suite)) {}
  void Add(std::string name, std::vector<std::string_view> members, std::string_view source,
           std::function<void(HostUnderTest&)> run) {
    cases_.push_back({suite_, std::move(name), std::move(members), source, std::move(run)});
  }
  std::vector<ContractCase> Take() && { return std::move(cases_); }

 private:
  std::string suite_;
  std::vector<ContractCase> cases_;
};

// Every case there is, in the order in which they run.
std::vector<ContractCase> AllCases();

}  // namespace tolvane::contract
