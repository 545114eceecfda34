#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tests/contract/ContractCase.h"
#include "tests/contract/Coverage.h"
#include "tests/contract/KnownDifferences.h"

namespace tolvane::contract {

// One run of the suite against one host: what the tests share. A host without a ribbon is spared what is about it.
class Run {
 public:
  Run(std::unique_ptr<HostUnderTest> host, std::vector<ContractCase> cases, std::vector<Member> members,
      std::map<std::string, KnownDifference> differences);

  // Adds every case and the checks of the suite itself to GoogleTest's tests.
  void Register();

  // Runs one case on a fresh host; its failures are GoogleTest's. A known difference must fail: that is no failure
  // then, and passing is one.
  void RunCase(const ContractCase& one);

  const std::vector<ContractCase>& cases() const { return cases_; }
  const std::vector<Member>& members() const { return members_; }
  const std::map<std::string, KnownDifference>& differences() const { return differences_; }
  const std::map<std::string, Trace>& traces() const { return traces_; }
  int knownFailures() const { return knownFailures_; }
  int casesRun() const { return static_cast<int>(traces_.size()); }
  int casesFailed() const { return casesFailed_; }  // beyond the known differences

 private:
  // That the list of known differences works in both directions, tried on planted cases.
  void CheckKnownDifferences();

  std::unique_ptr<HostUnderTest> host_;
  std::vector<ContractCase> cases_;
  std::vector<Member> allMembers_;
  std::vector<Member> members_;  // that this host has to have
  std::map<std::string, KnownDifference> differences_;
  std::map<std::string, Trace> traces_;
  int knownFailures_ = 0;
  int casesFailed_ = 0;
};

// "embedded: 350 of 354 cases pass (98.9 %), 4 known differences"; of those that were run.
std::string Summary(const std::string& hostName, const Run& run);

}  // namespace tolvane::contract
