#pragma once

#include <string>
#include <string_view>

namespace tolvane::shell {

// The last part of a path, after a separator of either kind: "Book" and ".xlsx", with the point.
struct FileName {
  std::string stem;
  std::string extension;
  std::string Whole() const { return stem + extension; }
};
FileName FileNameOf(std::string_view path);

}  // namespace tolvane::shell
