#include "tests/xlsx/Confined.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <fstream>
#include <new>
#include <stdexcept>

namespace tolvane::xlsxtest {

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kHasSanitizer = true;
#else
constexpr bool kHasSanitizer = false;
#endif

// Of this process, as the limit counts it.
std::size_t DataBytes() {
  std::ifstream file("/proc/self/statm");
  std::size_t pages = 0;
  for (int field = 0; field < 6; ++field) file >> pages;
  return pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

void Confine(std::size_t mostBytes) {
  const rlimit limit = {DataBytes() + mostBytes, DataBytes() + mostBytes};
  if (setrlimit(RLIMIT_DATA, &limit) != 0) throw std::runtime_error("cannot limit the memory");
}

std::string Outcome(std::size_t mostBytes, const std::function<std::string()>& run) {
  try {
    if (mostBytes > 0 && !kHasSanitizer) Confine(mostBytes);
    return run();
  } catch (const std::bad_alloc&) {
    return "out of memory";
  } catch (const std::exception& error) {
    return error.what();
  }
}

}  // namespace

std::string InProcessOfItsOwn(std::size_t mostBytes, const std::function<std::string()>& run) {
  std::array<int, 2> ends = {};
  if (pipe(ends.data()) != 0) throw std::runtime_error("cannot make a pipe");
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("cannot start a process");
  if (child == 0) {
    close(ends[0]);
    const std::string text = Outcome(mostBytes, run);
    const ssize_t written = write(ends[1], text.data(), text.size());
    _exit(written == static_cast<ssize_t>(text.size()) ? 0 : 1);
  }
  close(ends[1]);
  std::string text;
  std::array<char, 4096> buffer = {};
  for (ssize_t got = 0; (got = read(ends[0], buffer.data(), buffer.size())) > 0;) {
    text.append(buffer.data(), static_cast<std::size_t>(got));
  }
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  if (WIFSIGNALED(status)) return "ended by signal " + std::to_string(WTERMSIG(status));
  return text;
}

}  // namespace tolvane::xlsxtest
