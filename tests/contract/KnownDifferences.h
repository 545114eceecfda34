#pragma once

#include <map>
#include <string>
#include <string_view>

namespace tolvane::contract {

// A case that a host is known to fail, why that cannot be changed, and what keeps the add-in from being hurt by it.
struct KnownDifference {
  std::string reason;
  std::string guard;
};

// By the case's full name. The text has a header line and the columns case, reason, guard; lines that begin with "#"
// are comments. Throws std::runtime_error for a line that is no such thing, or names a case twice.
std::map<std::string, KnownDifference> ParseKnownDifferences(std::string_view text);
// known_differences_HOST.tsv of this folder.
std::map<std::string, KnownDifference> ReadKnownDifferences(const std::string& host);

}  // namespace tolvane::contract
