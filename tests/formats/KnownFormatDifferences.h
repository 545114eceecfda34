#pragma once

#include <optional>
#include <regex>
#include <string>
#include <string_view>
#include <vector>

#include "tests/formats/FormatCases.h"

namespace tolvane::formatstest {

// A kind of case that LibreOffice Calc shows in another way.
struct KnownFormatDifference {
  std::string name;  // as it is written, for messages
  std::regex format;
  std::regex value;
  std::regex ours;
  std::regex theirs;
  std::optional<std::string> theirsFromOurs;  // instead of `theirs`: the groups of `ours` put together in another way

  bool Fits(const FormatCase& one, const std::string& oursShown, const std::string& theirsShown) const;
};

// One a line, fields parted by tabs: which formats, which values, what we show, what Calc shows there, which of the two
// Excel shows by its documentation, the reason. The first four are regular expressions that fit as a whole; what Calc
// shows may be given as = and a pattern of the groups of ours, such as =$1$2. Throws std::runtime_error.
std::vector<KnownFormatDifference> ReadKnownFormatDifferences(std::string_view text);

}  // namespace tolvane::formatstest
