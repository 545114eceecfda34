#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tolvane::layers {

// A source file of the tree: its path from the root, with forward slashes, and its text.
struct Source {
  std::string path;
  std::string text;
};

// An include that the architecture does not allow, as "path:line: why".
std::vector<std::string> ForbiddenIncludes(const std::vector<Source>& sources);

// All *.h and *.cpp files below a folder, in order of their paths.
std::vector<Source> ReadTree(const std::string& root);

}  // namespace tolvane::layers
