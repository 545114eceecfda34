#include "tests/contract/Coverage.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>
#include <utility>

namespace tolvane::contract {
namespace {

std::vector<std::string> Fields(const std::string& line) {
  std::vector<std::string> fields(1);
  for (const char c : line) {
    if (c == '\t') {
      fields.emplace_back();
    } else {
      fields.back() += c;
    }
  }
  return fields;
}

bool Called(const Trace& trace, const Member& member) {
  const bool read = trace.contains({member.name, host::Access::Read});
  const bool written = trace.contains({member.name, host::Access::Write});
  if (member.access == "get") return read;
  if (member.access == "set") return written;
  return read || written;
}

// The cases that are about a member and call it.
std::vector<std::string> CasesOf(const Member& member, const std::vector<ContractCase>& cases,
                                 const std::map<std::string, Trace>& traces) {
  std::vector<std::string> found;
  for (const ContractCase& one : cases) {
    if (std::find(one.members.begin(), one.members.end(), member.name) == one.members.end()) continue;
    const auto trace = traces.find(one.FullName());
    if (trace != traces.end() && Called(trace->second, member)) found.push_back(one.FullName());
  }
  return found;
}

}  // namespace

std::vector<Member> ReadMembers(const std::string& path) {
  std::ifstream file(path);
  if (!file) throw std::runtime_error("Cannot read the table of members, " + path + ".");
  std::vector<Member> members;
  std::string line;
  bool header = true;
  for (int number = 1; std::getline(file, line); ++number) {
    if (line.empty() || line[0] == '#') continue;
    const std::vector<std::string> fields = Fields(line);
    const std::string where = path + ", line " + std::to_string(number) + ": ";
    if (fields.size() != 3) throw std::runtime_error(where + "three columns are expected.");
    if (std::exchange(header, false)) continue;
    if (fields[1] != "get" && fields[1] != "set" && fields[1] != "call") {
      throw std::runtime_error(where + "the access is \"" + fields[1] + "\" instead of get, set or call.");
    }
    members.push_back({fields[0], fields[1], fields[2]});
  }
  return members;
}

std::vector<std::string> CoverageProblems(const std::vector<Member>& members, const std::vector<ContractCase>& cases,
                                          const std::map<std::string, Trace>& traces) {
  std::vector<std::string> problems;
  for (const Member& member : members) {
    if (CasesOf(member, cases, traces).empty()) {
      problems.push_back("No case is about " + member.name + " (" + member.access + ") and calls it.");
    }
  }
  std::set<std::string_view> names;
  for (const Member& member : members) names.insert(member.name);
  for (const ContractCase& one : cases) {
    const auto trace = traces.find(one.FullName());
    for (const std::string_view member : one.members) {
      const std::string text(member);
      if (!names.contains(member)) {
        problems.push_back(one.FullName() + " is about " + text + ", which the table of members lacks.");
      } else if (trace == traces.end() || (!trace->second.contains({text, host::Access::Read}) &&
                                           !trace->second.contains({text, host::Access::Write}))) {
        problems.push_back(one.FullName() + " is about " + text + ", which it never calls to an end.");
      }
    }
  }
  return problems;
}

std::string JointTable(const std::vector<Member>& members, const std::vector<ContractCase>& cases,
                       const std::map<std::string, Trace>& traces) {
  std::string table = "member\taccess\tneeded by\tcases\n";
  for (const Member& member : members) {
    table += member.name + '\t' + member.access + '\t' + member.neededBy + '\t';
    std::string separator;
    for (const std::string& name : CasesOf(member, cases, traces)) {
      table += separator + name;
      separator = ", ";
    }
    table += '\n';
  }
  return table;
}

}  // namespace tolvane::contract
