#include "books/BookTables.h"

#include <utility>

#include "platform/Files.h"

namespace tolvane::books {

BookTables::BookTables(std::filesystem::path root) : root_(std::move(root)) {
  if (!platform::FileExists(root_ / "styles.tsv")) {
    throw TableError(platform::PathToUtf8(root_) + " holds no styles.tsv: it must be the folder of the books' tables.");
  }
}

const Table& BookTables::Read(const std::string& relative) const {
  std::unique_ptr<const Table>& table = read_[relative];
  if (table == nullptr) {
    table = std::make_unique<Table>(relative, platform::ReadFile(root_ / platform::PathFromUtf8(relative)));
  }
  return *table;
}

const Table& BookTables::Shared(const std::string& name) const {
  return Read(name + ".tsv");
}

const Table& BookTables::Of(const std::string& folder, const std::string& name) const {
  return Read(folder + "/" + name + ".tsv");
}

std::string BookTables::Text(const std::string& folder, const std::string& fileName) const {
  return platform::ReadFile(root_ / folder / fileName);
}

}  // namespace tolvane::books
