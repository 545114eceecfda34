#pragma once

#include <map>
#include <memory>
#include <string>

#include "engine/xlsx/BookLock.h"
#include "engine/xlsx/Xlsx.h"
#include "hosts/embedded/EmbeddedHost.h"

namespace tolvane::files {

// Workbook files of Excel's format for a host without a window. An open workbook carries what its file holds beyond it,
// and the lock on its file, until it is closed; so whoever holds a clone of it holds the lock too. Templates and
// add-ins are not locked: many read them at the same time. Failures are HostErrors.
class XlsxFiles : public embedded::BookFiles {
 public:
  struct Options {
    int backups = 3;
  };
  XlsxFiles(engine::LockWorld& world, Options options) : world_(world), options_(options) {}
  explicit XlsxFiles(engine::LockWorld& world) : XlsxFiles(world, Options{}) {}

  Opened Open(const std::string& path) override;
  void Save(const engine::Workbook& book, const std::string& path) override;

 private:
  void Lock(const engine::Workbook& book, const std::string& path);

  engine::LockWorld& world_;
  Options options_;
  // Locks of books that were new when they were saved first.
  std::map<std::string, std::unique_ptr<engine::BookLock>> locksOfNew_;
};

}  // namespace tolvane::files
