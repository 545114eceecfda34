#pragma once

#include <map>
#include <string>

#include "books/Table.h"
#include "src/host/Workbook.h"

namespace tolvane::books {

// Gives a book the styles of a table: name, number, font, align, border, fill, protection. A group whose cell is empty
// is not part of the style.
void DefineStyles(const host::Workbook& book, const Table& styles);

// Number formats by the names that the other tables call them by: name, format.
class Formats {
 public:
  explicit Formats(const Table& table);
  const std::string& Of(const std::string& name, const Table::Row& asking) const;

 private:
  std::map<std::string, std::string> byName_;
};

// "left", "centre", "right" or "general".
host::Alignment AlignmentOf(const std::string& word, const Table::Row& row);

}  // namespace tolvane::books
