#include <gtest/gtest.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <fstream>
#include <iostream>

#include "tests/contract/Run.h"

namespace tolvane::contract {
namespace {

struct HostEntry {
  std::string_view name;
  std::unique_ptr<HostUnderTest> (*make)();
};
constexpr HostEntry kHosts[] = {{"embedded", MakeEmbeddedUnderTest}};

void List(const std::vector<ContractCase>& cases) {
  for (const ContractCase& one : cases) {
    std::cout << one.FullName() << '\t' << one.source << '\t';
    for (const std::string_view member : one.members) std::cout << member << ' ';
    std::cout << '\n';
  }
}

int Main(int argc, char** argv) {
  CLI::App options("Runs the contract suite of the port against a host.");
  std::string hostName = "embedded", filter, tablePath;
  bool list = false;
  options.add_option("--host", hostName, "the host to run against")->capture_default_str();
  options.add_option("--filter", filter, "only these cases: patterns as of --gtest_filter");
  options.add_option("--table", tablePath, "write members, who needs them and their cases to this file after the run");
  options.add_flag("--list", list, "only list the cases with their sources and members");
  options.allow_extras();
  CLI11_PARSE(options, argc, argv);

  if (list) {
    List(AllCases());
    return 0;
  }
  const auto host = std::find_if(std::begin(kHosts), std::end(kHosts),
                                 [&](const HostEntry& entry) { return entry.name == hostName; });
  if (host == std::end(kHosts)) {
    std::cerr << "There is no host called " << hostName << ".\n";
    return 2;
  }

  ::testing::InitGoogleTest(&argc, argv);
  if (!filter.empty()) ::testing::GTEST_FLAG(filter) = filter;
  Run run(host->make(), AllCases(), ReadMembers(std::string(TOLVANE_SOURCE_DIR) + "/src/host/members.tsv"),
          ReadKnownDifferences(hostName));
  run.Register();
  const int result = RUN_ALL_TESTS();

  const auto memory = std::count_if(run.cases().begin(), run.cases().end(),
                                    [](const ContractCase& one) { return one.source == kMemory; });
  const auto port = std::count_if(run.cases().begin(), run.cases().end(),
                                  [](const ContractCase& one) { return one.source == kPort; });
  std::cout << Summary(hostName, run) << "; " << memory << " rest on memory, " << port
            << " on the port's own documentation, " << static_cast<std::ptrdiff_t>(run.cases().size()) - memory - port
            << " on published pages.\n";
  if (!tablePath.empty()) {
    std::ofstream table(tablePath);
    table << JointTable(run.members(), run.cases(), run.traces());
    if (!table.flush()) {
      std::cerr << "Cannot write " << tablePath << ".\n";
      return 2;
    }
  }
  return result;
}

}  // namespace
}  // namespace tolvane::contract

int main(int argc, char** argv) {
  try {
    return tolvane::contract::Main(argc, argv);
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 2;
  }
}
