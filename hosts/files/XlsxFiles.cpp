#include "hosts/files/XlsxFiles.h"

#include <filesystem>
#include <optional>
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
  std::optional<platform::FileStamp> seen;
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

// Templates and add-ins are not locked: many read them at the same time.
bool IsLocked(const std::string& path) {
  const auto kind = engine::FileKindOf(path);
  return kind && kind->kind == engine::BookKind::Book;
}

bool IsSameFile(const std::string& a, const std::string& b) {
  if (a == b) return true;
  std::error_code error;
  return std::filesystem::equivalent(platform::PathFromUtf8(a), platform::PathFromUtf8(b), error) && !error;
}

}  // namespace

std::unique_ptr<engine::BookLock> XlsxFiles::LockToRead(const std::string& path) {
  if (options_.onlyReads || !IsLocked(path) || !platform::FileExists(platform::PathFromUtf8(path))) return nullptr;
  try {
    return std::make_unique<engine::BookLock>(path, world_);
  } catch (const engine::LockNotWritten&) {
    return nullptr;  // it can be read there, and saved elsewhere
  }
}

embedded::BookFiles::Opened XlsxFiles::Open(const std::string& path) {
  return Translated([&] {
    auto file = std::make_shared<OpenFile>();
    file->path = path;
    file->lock = LockToRead(path);
    file->seen = platform::StampOf(platform::PathFromUtf8(path));
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

void XlsxFiles::Save(const engine::Workbook& book, const std::string& path) {
  Translated([&] {
    auto file = std::dynamic_pointer_cast<OpenFile>(book.keepsake);
    if (file == nullptr) file = std::make_shared<OpenFile>();
    const bool isSame = !file->path.empty() && IsSameFile(file->path, path);
    std::unique_ptr<engine::BookLock> lock;
    if (IsLocked(path) && !(isSame && file->lock != nullptr)) lock = std::make_unique<engine::BookLock>(path, world_);
    std::optional<platform::FileStamp> other = platform::StampOf(platform::PathFromUtf8(path));
    engine::SaveOptions options;
    options.backups = options_.backups;
    options.seen = isSame ? &file->seen : &other;
    const auto warning = engine::SaveXlsx(book, file->package, path, options);
    // Only now: a book that could not be saved under another name keeps the file, and the lock, that it has.
    if (!isSame) {
      file->seen = other;
      file->lock = nullptr;
    }
    if (lock != nullptr) file->lock = std::move(lock);
    file->path = path;
    book.keepsake = std::move(file);
    if (warning && options_.warn) options_.warn(*warning);
  });
}

}  // namespace tolvane::files
