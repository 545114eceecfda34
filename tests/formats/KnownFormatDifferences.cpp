#include "tests/formats/KnownFormatDifferences.h"

#include <sstream>
#include <stdexcept>

namespace tolvane::formatstest {

bool KnownFormatDifference::Fits(const FormatCase& one, const std::string& oursShown,
                                 const std::string& theirsShown) const {
  std::smatch parts;
  if (!std::regex_match(one.format, format) || !std::regex_match(one.written, value) ||
      !std::regex_match(oursShown, parts, ours)) {
    return false;
  }
  return theirsFromOurs ? parts.format(*theirsFromOurs) == theirsShown : std::regex_match(theirsShown, theirs);
}

std::vector<KnownFormatDifference> ReadKnownFormatDifferences(std::string_view text) {
  std::vector<KnownFormatDifference> known;
  std::istringstream lines{std::string(text)};
  std::string line;
  for (int number = 1; std::getline(lines, line); ++number) {
    if (line.empty() || line.starts_with("//")) continue;
    std::vector<std::string> fields;
    std::istringstream parts(line);
    for (std::string field; std::getline(parts, field, '\t');) fields.push_back(field);
    constexpr std::size_t kFields = 6;
    const std::string where = "Known differences, line " + std::to_string(number) + ": ";
    if (fields.size() != kFields || fields[4].empty() || fields[5].empty()) {
      throw std::runtime_error(where + "formats, values, ours, Calc's, who is right and the reason are expected.");
    }
    if (fields[2] == ".*" && fields[3] == ".*") {
      throw std::runtime_error(where + "what is shown there must be told, by us or by Calc.");
    }
    try {
      KnownFormatDifference difference{line.substr(0, line.rfind('\t')),
                                       std::regex(fields[0]),
                                       std::regex(fields[1]),
                                       std::regex(fields[2]),
                                       {},
                                       {}};
      if (fields[3].starts_with('=')) {
        difference.theirsFromOurs = fields[3].substr(1);
      } else {
        difference.theirs = std::regex(fields[3]);
      }
      known.push_back(std::move(difference));
    } catch (const std::regex_error& error) {
      throw std::runtime_error(where + error.what());
    }
  }
  return known;
}

}  // namespace tolvane::formatstest
