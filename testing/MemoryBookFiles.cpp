#include "testing/MemoryBookFiles.h"

#include "src/host/Errors.h"

namespace tolvane::testing {

void MemoryBookFiles::Put(const std::string& path, const engine::Workbook& book, Kind kind) {
  files_[path] = File{book.Clone(), kind};
}

embedded::BookFiles::Opened MemoryBookFiles::Open(const std::string& path) {
  const auto found = files_.find(path);
  if (found == files_.end()) {
    throw host::HostError(host::ErrorNumber::ApplicationDefined, "There is no file \"" + path + "\".");
  }
  Opened opened;
  opened.book = found->second.book->Clone();
  opened.isTemplate = found->second.kind == Kind::Template;
  opened.isAddin = found->second.kind == Kind::Addin;
  return opened;
}

// A file that is replaced stays of its kind.
void MemoryBookFiles::Save(const engine::Workbook& book, const std::string& path) {
  if (path.empty()) {
    throw host::HostError(host::ErrorNumber::ApplicationDefined, "A file cannot be saved without a path.");
  }
  files_[path].book = book.Clone();
}

}  // namespace tolvane::testing
