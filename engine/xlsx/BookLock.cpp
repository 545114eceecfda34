#include "engine/xlsx/BookLock.h"

#include <algorithm>
#include <cerrno>
#include <memory>
#include <optional>
#include <system_error>
#include <vector>

#include "platform/FileCalls.h"
#include "platform/Files.h"
#include "platform/SideFile.h"

namespace tolvane::engine {

namespace {

constexpr int kTries = 3;

std::string WithEscapes(std::string_view field) {
  std::string escaped;
  for (const char c : field) {
    if (c == ',' || c == ';' || c == '\\') escaped.push_back('\\');
    escaped.push_back(c);
  }
  return escaped;
}

std::string WhoHolds(const LockHolder& holder) {
  std::string who = !holder.name.empty() ? holder.name : !holder.systemUser.empty() ? holder.systemUser : "somebody";
  if (!holder.host.empty()) who += " on " + holder.host;
  if (!holder.since.empty()) who += " since " + holder.since;
  return who;
}

[[noreturn]] void FailToMark(const std::string& book) {
  throw LockNotWritten("cannot mark " + book + " as open: " + std::generic_category().message(errno) +
                       ". Save it under another name, in a folder that you may write to");
}

// What the lock file says; nothing where there is none.
std::optional<std::string> TextIn(const std::filesystem::path& lock) {
  try {
    if (!platform::FileExists(lock)) return std::nullopt;
    return platform::ReadFile(lock);
  } catch (const platform::FileError&) {
    // It went just now, or may not be read: then nobody is named.
    return platform::FileExists(lock) ? std::optional<std::string>(std::string()) : std::nullopt;
  }
}

}  // namespace

std::filesystem::path LockPathOf(const std::filesystem::path& book) {
  platform::FileCalls calls;
  std::filesystem::path file = platform::AtEndOfLinks(book, calls);
  if (file.empty()) file = std::filesystem::absolute(book);
  return file.parent_path() / (".~lock." + file.filename().string() + "#");
}

std::string LockText(const LockHolder& holder) {
  std::string text;
  for (const std::string* field : {&holder.name, &holder.systemUser, &holder.host, &holder.since, &holder.program}) {
    if (!text.empty() || field != &holder.name) text.push_back(',');
    text += WithEscapes(*field);
  }
  return text + ";";
}

LockHolder ReadLockText(std::string_view text) {
  std::vector<std::string> fields(1);
  for (std::size_t i = 0; i < text.size() && text[i] != ';'; ++i) {
    if (text[i] == '\\' && i + 1 < text.size()) {
      fields.back().push_back(text[++i]);
    } else if (text[i] == ',') {
      fields.emplace_back();
    } else {
      fields.back().push_back(text[i]);
    }
  }
  fields.resize(5);
  return {fields[0], fields[1], fields[2], fields[3], fields[4]};
}

BookLock::BookLock(const std::string& bookPath, LockWorld& world) {
  const std::filesystem::path given = platform::PathFromUtf8(bookPath);
  path_ = LockPathOf(given);
  platform::FileCalls calls;
  std::filesystem::path book = platform::AtEndOfLinks(given, calls);
  if (book.empty()) FailToMark(bookPath);
  const LockHolder self = world.Self();
  content_ = LockText(self);

  const auto isHeld = [&](const std::string& text) {
    const LockHolder holder = ReadLockText(text);
    return holder.systemUser != self.systemUser || holder.host != self.host || world.IsRunning(holder);
  };
  for (int attempt = 0; attempt < kTries; ++attempt) {
    // Looked at first, since a lock counts in folders too where none can be written.
    const std::optional<std::string> there = TextIn(path_);
    if (there && isHeld(*there)) {
      throw BookLocked("The workbook " + bookPath + " is open by " + WhoHolds(ReadLockText(*there)) +
                       ". Close it there, or work with a copy; if nobody has it open, delete the file " +
                       platform::PathToUtf8(path_));
    }
    // Written in full under another name first: nobody sees half a lock.
    platform::SideFile draft(book, calls);
    if (!draft.isOpen() || calls.ChangeMode(draft.file(), 0644) != 0 || !draft.Write(content_)) FailToMark(bookPath);
    if (there) {
      // Two may find the same dead lock: the one that takes away what it has read goes on.
      const std::string aside = draft.name() + ".old";
      if (calls.Rename(path_, aside) != 0) continue;
      if (platform::ReadFile(aside) != *there) calls.Link(aside, path_);
      calls.Unlink(aside);
    }
    if (calls.Link(draft.name(), path_) == 0) return;
    if (errno == EEXIST || platform::FileExists(path_)) continue;
    // Disks without second names: the rename takes the place where nobody is in it.
    if (!draft.RenameTo(path_)) FailToMark(bookPath);
    return;
  }
  throw BookLocked("The workbook " + bookPath + " is being opened elsewhere just now. Try again");
}

BookLock::~BookLock() {
  try {
    if (platform::ReadFile(path_) == content_) platform::FileCalls().Unlink(path_);
  } catch (const platform::FileError&) {
    // Somebody took the lock away; there is nothing left to remove.
  }
}

}  // namespace tolvane::engine
