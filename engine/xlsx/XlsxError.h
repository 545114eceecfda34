#pragma once

#include <stdexcept>
#include <string>

namespace tolvane::engine {

// A file that cannot be read as a workbook, or a workbook that cannot be written as such a file: what, where and, where
// there is something to do about it, what to do. Nothing was changed.
class XlsxError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace tolvane::engine
