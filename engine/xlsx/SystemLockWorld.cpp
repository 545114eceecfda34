#include <dirent.h>
#include <pwd.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <ctime>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <vector>

#include "engine/xlsx/BookLock.h"
#include "engine/xlsx/XmlText.h"

namespace tolvane::engine {

namespace {

constexpr std::string_view kOurProgram = "tolvane";

std::string ContentOf(const std::string& systemFile) {
  std::ifstream file(systemFile);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

std::string FirstLineOf(const std::string& systemFile) {
  std::ifstream file(systemFile);
  std::string line;
  std::getline(file, line);
  return line;
}

// When a process began, in the system's ticks: numbers of processes come again. Empty when there is none.
std::string StartOf(std::string_view process) {
  const std::string text = ContentOf("/proc/" + std::string(process) + "/stat");
  // The command's name, in parentheses, may hold anything; the start is the 20th field behind it.
  std::size_t at = text.rfind(')');
  for (int field = 0; field < 20 && at != std::string::npos; ++field) at = text.find(' ', at + 1);
  if (at == std::string::npos) return {};
  return text.substr(at + 1, text.find(' ', at + 1) - at - 1);
}

// The numbers of processes count from anew with every start of the system, and in every container.
std::string Boot() {
  return FirstLineOf("/proc/sys/kernel/random/boot_id");
}
std::string ProcessSpace() {
  std::array<char, PATH_MAX> text;
  const ssize_t size = ::readlink("/proc/self/ns/pid", text.data(), text.size());
  std::string digits;
  for (ssize_t i = 0; i < size; ++i) {
    const char c = text[static_cast<std::size_t>(i)];
    if (c >= '0' && c <= '9') digits.push_back(c);
  }
  return digits;
}

bool IsProgramRunning(std::string_view command) {
  const auto close = [](DIR* folder) { ::closedir(folder); };
  std::unique_ptr<DIR, decltype(close)> folder(::opendir("/proc"), close);
  if (folder == nullptr) return true;  // nobody knows, so nobody may be pushed aside
  while (const dirent* entry = ::readdir(folder.get())) {
    if (FirstLineOf("/proc/" + std::string(entry->d_name) + "/comm") == command) return true;
  }
  return false;
}

// "05.03.2024 12:30"; nothing for another text.
std::optional<std::time_t> TimeOf(const std::string& since) {
  std::tm local = {};
  const char* end = ::strptime(since.c_str(), "%d.%m.%Y %H:%M", &local);
  if (end == nullptr || *end != '\0') return std::nullopt;
  local.tm_isdst = -1;
  return std::mktime(&local);
}

// Locks tell minutes, and the hour may be one of two in autumn.
bool IsOlderThanBoot(const std::string& since) {
  constexpr std::time_t kDoubt = 3660;
  const std::string status = ContentOf("/proc/stat");
  const std::size_t at = status.find("\nbtime ");
  const auto written = TimeOf(since);
  if (at == std::string::npos || !written) return false;
  const auto boot = xlsx::WholeOf(status.substr(at + 7, status.find('\n', at + 1) - at - 7));
  return boot && *written + kDoubt < *boot;
}

std::vector<std::string_view> Split(std::string_view text) {
  std::vector<std::string_view> parts;
  for (std::size_t colon = text.find(':'); colon != std::string_view::npos; colon = text.find(':')) {
    parts.push_back(text.substr(0, colon));
    text.remove_prefix(colon + 1);
  }
  parts.push_back(text);
  return parts;
}

}  // namespace

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
  self.program =
      std::string(kOurProgram) + ":" + process + ":" + StartOf(process) + ":" + Boot() + ":" + ProcessSpace();
  return self;
}

bool SystemLockWorld::IsRunning(const LockHolder& holder) {
  const std::vector<std::string_view> told = Split(holder.program);
  if (told[0] != kOurProgram) {
    // Other programs tell no process; of those that write such files one goes by this name.
    return IsProgramRunning("soffice.bin") && !IsOlderThanBoot(holder.since);
  }
  if (told.size() != 5 || !xlsx::WholeOf(told[1])) return true;
  if (told[3] != Boot()) return false;
  if (told[4] != ProcessSpace()) return true;  // it cannot be seen from here
  const std::string start = StartOf(told[1]);
  return !start.empty() && start == told[2];
}

}  // namespace tolvane::engine
