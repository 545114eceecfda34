#pragma once

#include <map>
#include <memory>
#include <string>

#include "engine/model/Workbook.h"
#include "hosts/embedded/EmbeddedHost.h"

namespace tolvane::testing {

// Workbook files that exist in memory only: what is saved under a path is what is opened from it.
class MemoryBookFiles : public embedded::BookFiles {
 public:
  enum class Kind { Workbook, Template, Addin };

  // A file that is there from the start.
  void Put(const std::string& path, const engine::Workbook& book, Kind kind = Kind::Workbook);
  bool Has(const std::string& path) const { return files_.contains(path); }

  Opened Open(const std::string& path) override;
  void Save(const engine::Workbook& book, const std::string& path) override;

 private:
  struct File {
    std::unique_ptr<engine::Workbook> book;
    Kind kind = Kind::Workbook;
  };
  std::map<std::string, File> files_;
};

}  // namespace tolvane::testing
