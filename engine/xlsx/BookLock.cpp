#include "engine/xlsx/BookLock.h"

#include <dirent.h>
#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <system_error>
#include <vector>

#include "engine/xlsx/XmlText.h"
#include "platform/FileCalls.h"
#include "platform/Files.h"

namespace tolvane::engine {

namespace {

constexpr std::string_view kOurProgram = "tolvane:";
constexpr int kTries = 3;

// When a process began, in the system's ticks: numbers of processes come again. Empty when there is none.
std::string StartOf(std::string_view process) {
  std::ifstream file("/proc/" + std::string(process) + "/stat");
  const std::string text(std::istreambuf_iterator<char>(file), {});
  // The command's name, in parentheses, may hold anything; the start is the 20th field behind it.
  std::size_t at = text.rfind(')');
  for (int field = 0; field < 20 && at != std::string::npos; ++field) at = text.find(' ', at + 1);
  if (at == std::string::npos) return {};
  return text.substr(at + 1, text.find(' ', at + 1) - at - 1);
}

bool IsProgramRunning(std::string_view command) {
  const auto close = [](DIR* folder) { ::closedir(folder); };
  std::unique_ptr<DIR, decltype(close)> folder(::opendir("/proc"), close);
  if (folder == nullptr) return true;  // nobody knows, so nobody may be pushed aside
  while (const dirent* entry = ::readdir(folder.get())) {
    std::ifstream file("/proc/" + std::string(entry->d_name) + "/comm");
    std::string name;
    if (std::getline(file, name) && name == command) return true;
  }
  return false;
}

std::string WithEscapes(std::string_view field) {
  std::string escaped;
  for (const char c : field) {
    if (c == ',' || c == ';' || c == '\\') escaped.push_back('\\');
    escaped.push_back(c);
  }
  return escaped;
}

std::string Problem(std::string_view action, const std::filesystem::path& path) {
  return "cannot " + std::string(action) + " " + platform::PathToUtf8(path) + ": " +
         std::generic_category().message(errno);
}

std::string WhoHolds(const LockHolder& holder) {
  std::string who = !holder.name.empty() ? holder.name : !holder.systemUser.empty() ? holder.systemUser : "somebody";
  if (!holder.host.empty()) who += " on " + holder.host;
  if (!holder.since.empty()) who += " since " + holder.since;
  return who;
}

}  // namespace

std::filesystem::path LockPathOf(const std::filesystem::path& book) {
  return std::filesystem::absolute(book).parent_path() / (".~lock." + book.filename().string() + "#");
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

LockHolder SystemLockWorld::Self() {
  LockHolder self;
  std::array<char, 16384> buffer;
  passwd entry = {};
  passwd* found = nullptr;
  if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found != nullptr) {
    self.systemUser = found->pw_name;
    const std::string_view about = found->pw_gecos == nullptr ? "" : found->pw_gecos;
    self.name = about.substr(0, about.find(','));
  }
  std::array<char, 256> host{};
  if (::gethostname(host.data(), host.size() - 1) == 0) self.host = host.data();
  const std::time_t now = std::time(nullptr);
  std::tm local = {};
  ::localtime_r(&now, &local);
  std::array<char, 32> time;
  self.since.assign(time.data(), std::strftime(time.data(), time.size(), "%d.%m.%Y %H:%M", &local));
  const std::string process = std::to_string(::getpid());
  self.program = std::string(kOurProgram) + process + ":" + StartOf(process);
  return self;
}

bool SystemLockWorld::IsRunning(const LockHolder& holder) {
  std::string_view program = holder.program;
  // Other programs tell no process; of those that write such files one goes by this name.
  if (!program.starts_with(kOurProgram)) return IsProgramRunning("soffice.bin");
  program.remove_prefix(kOurProgram.size());
  const std::size_t colon = program.find(':');
  if (colon == std::string_view::npos || !xlsx::WholeOf(program.substr(0, colon))) return true;
  const std::string start = StartOf(program.substr(0, colon));
  return !start.empty() && start == program.substr(colon + 1);
}

BookLock::BookLock(const std::string& bookPath, LockWorld& world)
    : path_(LockPathOf(platform::PathFromUtf8(bookPath))) {
  const LockHolder self = world.Self();
  content_ = LockText(self);
  platform::FileCalls calls;
  // Written in full under another name first: nobody sees half a lock.
  std::string draft = path_.native() + ".XXXXXX";
  const int file = calls.MakeTemporary(draft);
  if (file < 0) throw platform::FileError(Problem("write", path_));
  const bool isWritten = calls.ChangeMode(file, 0644) == 0 &&
                         calls.Write(file, content_.data(), content_.size()) == static_cast<ssize_t>(content_.size());
  const bool isClosed = calls.Close(file) == 0;
  struct Remover {
    platform::FileCalls& calls;
    std::string name;
    ~Remover() { calls.Unlink(name); }
  } remover{calls, draft};
  if (!isWritten || !isClosed) throw platform::FileError(Problem("write", path_));

  for (int attempt = 0; attempt < kTries; ++attempt) {
    if (calls.Link(draft, path_) == 0) return;
    if (errno != EEXIST) {
      // Disks without second names: the rename takes the place only where nobody is in it.
      if (platform::FileExists(path_)) continue;
      if (calls.Rename(draft, path_) != 0) throw platform::FileError(Problem("write", path_));
      return;
    }
    std::string there;
    try {
      there = platform::ReadFile(path_);
    } catch (const platform::FileError&) {
      continue;  // it went just now
    }
    const LockHolder holder = ReadLockText(there);
    const bool isMine = holder.systemUser == self.systemUser && holder.host == self.host;
    if (!isMine || world.IsRunning(holder)) {
      throw BookLocked("The workbook " + bookPath + " is open by " + WhoHolds(holder) +
                       ". Close it there first; if nobody has it open, delete the file " + platform::PathToUtf8(path_));
    }
    // Two may find the same dead lock: the one that takes away what it has read goes on.
    const std::string aside = draft + ".old";
    if (calls.Rename(path_, aside) != 0) continue;
    const bool isSame = platform::ReadFile(aside) == there;
    if (!isSame) calls.Link(aside, path_);
    calls.Unlink(aside);
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
