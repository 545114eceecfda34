#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>

#include "books/Table.h"

namespace tolvane::books {

// The tables that a folder of this one holds, with those that all books share (styles.tsv, formats.tsv, lists.tsv).
// Each is read once.
class BookTables {
 public:
  // `root`: the folder books/ of the source tree. TableError where it is missing.
  explicit BookTables(std::filesystem::path root);

  const Table& Shared(const std::string& name) const;                         // "styles"
  const Table& Of(const std::string& folder, const std::string& name) const;  // "accounts", "sheets"
  std::string Text(const std::string& folder, const std::string& fileName) const;

 private:
  const Table& Read(const std::string& relative) const;

  std::filesystem::path root_;
  mutable std::map<std::string, std::unique_ptr<const Table>> read_;
};

}  // namespace tolvane::books
