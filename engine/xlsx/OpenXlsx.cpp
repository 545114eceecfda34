#include "engine/xlsx/Xlsx.h"
#include "platform/Files.h"
#include "platform/ReplaceFile.h"

namespace tolvane::engine {

XlsxBook OpenXlsx(const std::string& path) {
  try {
    return ReadXlsx(platform::ReadFile(platform::PathFromUtf8(path)));
  } catch (const XlsxError& error) {
    throw XlsxError("Cannot open " + path + ". " + error.what());
  }
}

std::optional<std::string> SaveXlsx(const Workbook& workbook, const Package& package, const std::string& path,
                                    const SaveOptions& options) {
  const auto kind = FileKindOf(path);
  if (!kind) throw XlsxError("Cannot save " + path + ". Its name must end with .xlsx, .xlsm, .xltx, .xltm or .xlam");
  const std::string bytes = WriteXlsx(workbook, package, *kind, options.activeSheet);
  platform::FileCalls system;
  return platform::ReplaceFileKeeping(platform::PathFromUtf8(path), bytes, {options.backups, options.seen},
                                      options.calls == nullptr ? system : *options.calls);
}

}  // namespace tolvane::engine
