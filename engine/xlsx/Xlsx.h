#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "engine/model/Workbook.h"
#include "engine/xlsx/XlsxError.h"
#include "platform/FileCalls.h"
#include "platform/ReplaceFile.h"

namespace tolvane::engine {

namespace xlsx {
struct PackageData;
}

enum class BookKind : std::uint8_t { Book, Template, Addin };

struct FileKind {
  BookKind kind = BookKind::Book;
  bool macros = false;  // may hold macros; of an add-in always
  bool operator==(const FileKind&) const = default;
};

// By a file's extension, ignoring case: .xlsx .xlsm .xltx .xltm .xlam. Nothing for others.
std::optional<FileKind> FileKindOf(std::string_view fileName);

// All that a file held and the engine's workbook has no place for: charts, pictures, macros, themes, and the parts as
// they were, so that what nobody touched is written as it was read. It never changes; copies share it. A workbook can
// be saved with the package that it was opened with any number of times; so can its clones.
class Package {
 public:
  Package();  // of a new workbook: nothing kept
  explicit Package(std::shared_ptr<const xlsx::PackageData> data) : data_(std::move(data)) {}

  FileKind kind() const;
  bool hasMacros() const;
  // The sheet in front when the file was saved; nothing where that is no worksheet.
  std::optional<SheetId> activeSheet() const;

  const xlsx::PackageData& data() const { return *data_; }

 private:
  std::shared_ptr<const xlsx::PackageData> data_;
};

struct XlsxBook {
  std::unique_ptr<Workbook> workbook;
  Package package;
};

// Reads a workbook out of the bytes of its file. Throws XlsxError.
XlsxBook ReadXlsx(std::string bytes);
// The bytes of a file of that kind. `activeSheet`: the one in front; nothing leaves that as it was. Throws XlsxError.
std::string WriteXlsx(const Workbook& workbook, const Package& package, FileKind kind,
                      std::optional<SheetId> activeSheet = std::nullopt);

// The same with files. Saving replaces the file as a whole or not at all; see docs/file-format.md. Failures are
// XlsxErrors, of the file system platform::FileErrors.
XlsxBook OpenXlsx(const std::string& path);
struct SaveOptions {
  int backups = 3;  // generations of former versions that are kept beside the file, NAME.bak1 being the newest
  std::optional<SheetId> activeSheet = std::nullopt;
  // As the file was last seen; one that another program has changed since is not replaced (platform::ReplaceOptions).
  std::optional<platform::FileStamp>* seen = nullptr;
  platform::FileCalls* calls = nullptr;  // the system's, unless told otherwise
};
// A text when the book is saved but its former versions could not be moved up.
std::optional<std::string> SaveXlsx(const Workbook& workbook, const Package& package, const std::string& path,
                                    const SaveOptions& options = {});

}  // namespace tolvane::engine
