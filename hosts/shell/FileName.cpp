#include "hosts/shell/FileName.h"

namespace tolvane::shell {

FileName FileNameOf(std::string_view path) {
  const std::size_t separator = path.find_last_of("/\\");
  if (separator != std::string_view::npos) path.remove_prefix(separator + 1);
  const std::size_t point = path.rfind('.');
  if (point == std::string_view::npos || point == 0) return {std::string(path), {}};
  return {std::string(path.substr(0, point)), std::string(path.substr(point))};
}

}  // namespace tolvane::shell
