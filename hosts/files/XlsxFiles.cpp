#include "hosts/files/XlsxFiles.h"

#include <utility>

#include "platform/Files.h"
#include "src/host/Errors.h"

namespace tolvane::files {

namespace {

// What an opened workbook carries with it.
struct OpenFile final : engine::FileKeepsake {
  engine::Package package;
  std::unique_ptr<engine::BookLock> lock;
  std::string path;
};

template <class Action>
auto Translated(Action&& action) {
  try {
    return action();
  } catch (const engine::XlsxError& error) {
    throw host::HostError(host::ErrorNumber::ApplicationDefined, error.what());
  } catch (const platform::FileError& error) {
    throw host::HostError(host::ErrorNumber::ApplicationDefined, error.what());
  }
}

bool IsLocked(const std::string& path) {
  const auto kind = engine::FileKindOf(path);
  return kind && kind->kind == engine::BookKind::Book;
}

}  // namespace

embedded::BookFiles::Opened XlsxFiles::Open(const std::string& path) {
  return Translated([&] {
    auto file = std::make_shared<OpenFile>();
    file->path = path;
    locksOfNew_.erase(path);
    if (IsLocked(path) && platform::FileExists(platform::PathFromUtf8(path))) {
      file->lock = std::make_unique<engine::BookLock>(path, world_);
    }
    engine::XlsxBook book = engine::OpenXlsx(path);
    file->package = book.package;
    Opened opened;
    opened.isTemplate = book.package.kind().kind == engine::BookKind::Template;
    opened.isAddin = book.package.kind().kind == engine::BookKind::Addin;
    opened.book = std::move(book.workbook);
    opened.book->keepsake = std::move(file);
    return opened;
  });
}

// A book that is saved under another name lets go of the file that it came from.
void XlsxFiles::Lock(const engine::Workbook& book, const std::string& path) {
  auto* file = dynamic_cast<OpenFile*>(book.keepsake.get());
  if (file == nullptr) {
    if (IsLocked(path) && !locksOfNew_.contains(path)) {
      locksOfNew_[path] = std::make_unique<engine::BookLock>(path, world_);
    }
    return;
  }
  if (file->path == path && file->lock != nullptr) return;
  file->lock = IsLocked(path) ? std::make_unique<engine::BookLock>(path, world_) : nullptr;
  file->path = path;
}

void XlsxFiles::Save(const engine::Workbook& book, const std::string& path) {
  Translated([&] {
    Lock(book, path);
    const auto* file = dynamic_cast<const OpenFile*>(book.keepsake.get());
    engine::SaveOptions options;
    options.backups = options_.backups;
    // The warning that a former version could not be kept has nobody to go to here: the book itself is saved.
    engine::SaveXlsx(book, file == nullptr ? engine::Package() : file->package, path, options);
  });
}

}  // namespace tolvane::files
