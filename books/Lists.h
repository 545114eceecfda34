#pragma once

#include <map>
#include <string>

#include "books/Table.h"
#include "src/host/Range.h"

namespace tolvane::books {

// The drop-down lists of cells, by the names that sheets call them by: name, source, message.
class Lists {
 public:
  explicit Lists(const Table& table);
  const host::ValidationRule& Of(const std::string& name, const Table::Row& asking) const;

 private:
  std::map<std::string, host::ValidationRule> byName_;
};

}  // namespace tolvane::books
