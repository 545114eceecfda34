#include "tests/contract/KnownDifferences.h"

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace tolvane::contract {

std::map<std::string, KnownDifference> ParseKnownDifferences(std::string_view text) {
  std::map<std::string, KnownDifference> differences;
  std::istringstream lines{std::string(text)};
  std::string line;
  bool header = true;
  for (int number = 1; std::getline(lines, line); ++number) {
    if (line.empty() || line[0] == '#') continue;
    const std::size_t first = line.find('\t');
    const std::size_t second = first == std::string::npos ? first : line.find('\t', first + 1);
    const std::string where = "Known differences, line " + std::to_string(number) + ": ";
    if (second == std::string::npos || line.find('\t', second + 1) != std::string::npos) {
      throw std::runtime_error(where + "the columns case, reason and guard are expected.");
    }
    if (std::exchange(header, false)) continue;
    const std::string name = line.substr(0, first);
    const KnownDifference difference{line.substr(first + 1, second - first - 1), line.substr(second + 1)};
    if (name.empty() || difference.reason.empty() || difference.guard.empty()) {
      throw std::runtime_error(where + "the case, its reason and its guard must all be told.");
    }
    if (!differences.emplace(name, difference).second) throw std::runtime_error(where + name + " is there twice.");
  }
  return differences;
}

std::map<std::string, KnownDifference> ReadKnownDifferences(const std::string& host) {
  const std::string path = std::string(TOLVANE_SOURCE_DIR) + "/tests/contract/known_differences_" + host + ".tsv";
  std::ifstream file(path);
  if (!file) throw std::runtime_error("Cannot read " + path + ".");
  std::ostringstream text;
  text << file.rdbuf();
  return ParseKnownDifferences(text.str());
}

}  // namespace tolvane::contract
