#pragma once

#include <functional>
#include <memory>
#include <string>

#include "engine/xlsx/BookLock.h"
#include "engine/xlsx/Xlsx.h"
#include "hosts/embedded/EmbeddedHost.h"

namespace tolvane::files {

// Workbook files of Excel's format for a host without a window. An open workbook carries what its file holds beyond it,
// and the lock on its file, until it is closed; so whoever holds a clone of it holds the lock too. A book in a folder
// that may not be written to opens without a lock. A book whose file another program has changed since is not saved
// over it. Failures are HostErrors.
class XlsxFiles : public embedded::BookFiles {
 public:
  struct Options {
    int backups = 3;         // former versions beside a saved book
    bool onlyReads = false;  // takes no locks for books that are opened, and honours none
    std::function<void(const std::string&)> warn = nullptr;  // hears what went wrong though the book was saved
  };
  XlsxFiles(engine::LockWorld& world, Options options) : world_(world), options_(options) {}
  explicit XlsxFiles(engine::LockWorld& world) : XlsxFiles(world, Options{}) {}

  Opened Open(const std::string& path) override;
  void Save(const engine::Workbook& book, const std::string& path) override;

 private:
  std::unique_ptr<engine::BookLock> LockToRead(const std::string& path);

  engine::LockWorld& world_;
  Options options_;
};

}  // namespace tolvane::files
