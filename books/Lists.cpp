#include "books/Lists.h"

namespace tolvane::books {

Lists::Lists(const Table& table) {
  for (const Table::Row& row : table.rows()) {
    host::ValidationRule rule;
    rule.source = row["source"];
    rule.showInput = false;
    rule.errorTitle = "Tolvane Accounts";
    rule.errorMessage = row["message"];
    if (!byName_.emplace(row["name"], rule).second) row.Fail("the list \"" + row["name"] + "\" stands twice.");
  }
}

const host::ValidationRule& Lists::Of(const std::string& name, const Table::Row& asking) const {
  const auto found = byName_.find(name);
  if (found == byName_.end()) asking.Fail("lists.tsv has no list \"" + name + "\".");
  return found->second;
}

}  // namespace tolvane::books
