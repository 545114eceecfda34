// Starts a program that is an office on a private profile, has it do what it is for, and gives back its result. The
// office registers the component by a bootstrap variable: installing an extension is refused to root.
#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr int kRestart = 81;  // a fresh profile: the office asks to be started again
constexpr int kCannotRun = 2;

struct Options {
  fs::path office;
  fs::path component;
  fs::path profile;
  std::string arguments;  // for the program, separated by blanks
  bool windows = false;   // else a dialog is cancelled as soon as it comes up
  bool screen = false;    // windows come up on the display, to be looked at
  int timeoutSeconds = 280;
};

Options Read(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    const std::string value = i + 1 < argc ? argv[i + 1] : "";
    if (argument == "--office") {
      options.office = fs::absolute(value), ++i;
    } else if (argument == "--component") {
      options.component = fs::absolute(value), ++i;
    } else if (argument == "--profile") {
      options.profile = fs::absolute(value), ++i;
    } else if (argument == "--windows") {
      options.windows = true;
    } else if (argument == "--screen") {
      options.windows = options.screen = true;
    } else if (argument == "--timeout") {
      options.timeoutSeconds = std::stoi(value), ++i;
    } else {
      options.arguments += (options.arguments.empty() ? "" : " ") + argument;
    }
  }
  if (options.office.empty() || options.component.empty() || options.profile.empty()) {
    throw std::invalid_argument(
        "run_in_office --office FILE --component FILE --profile FOLDER [--windows|--screen] [--timeout SECONDS] "
        "[ARGUMENT ...]");
  }
  return options;
}

void WriteServices(const fs::path& file, const fs::path& component) {
  std::ofstream out(file);
  out << R"(<?xml version="1.0" encoding="UTF-8"?>
<components xmlns="http://openoffice.org/2010/uno-components">
  <component loader="com.sun.star.loader.SharedLibrary" environment="gcc3" uri="file://)"
      << component.string() << R"(">
    <implementation name="org.tolvane.office.Run" constructor="tolvane_OfficeService_get">
      <service name="org.tolvane.office.Run"/>
    </implementation>
  </component>
</components>
)";
  if (!out.flush()) throw std::runtime_error("Cannot write " + file.string() + ".");
}

// The office as a group of processes, which goes when this does.
class Office {
 public:
  explicit Office(const std::vector<std::string>& command) {
    std::vector<char*> arguments;
    for (const std::string& part : command) arguments.push_back(const_cast<char*>(part.c_str()));
    arguments.push_back(nullptr);
    const pid_t parent = getpid();
    group_ = fork();
    if (group_ < 0) throw std::runtime_error("Cannot start a process.");
    if (group_ == 0) {
      setpgid(0, 0);
      prctl(PR_SET_PDEATHSIG, SIGKILL);
      if (getppid() != parent) _exit(kCannotRun);
      execv(arguments[0], arguments.data());
      _exit(kCannotRun);
    }
    setpgid(group_, group_);
  }
  ~Office() {
    kill(-group_, SIGKILL);
    if (!reaped_) waitpid(group_, nullptr, 0);
  }
  Office(const Office&) = delete;
  Office& operator=(const Office&) = delete;

  // False when the time is over and it still runs.
  bool Wait(std::chrono::steady_clock::time_point end) {
    while (std::chrono::steady_clock::now() < end) {
      if (waitpid(group_, &status_, WNOHANG) == group_) return reaped_ = true;
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return false;
  }
  int status() const { return status_; }

 private:
  pid_t group_ = -1;
  int status_ = 0;
  bool reaped_ = false;
};

int Main(int argc, char** argv) {
  const Options options = Read(argc, argv);
  fs::remove_all(options.profile);
  fs::create_directories(options.profile);
  const fs::path services = options.profile / "office.rdb";
  const fs::path verdict = options.profile / "verdict";
  WriteServices(services, options.component);
  const std::string program = std::string("file://") + TOLVANE_OFFICE + "/program/";
  // Windows live in memory: no display is needed, and none of the user's is touched.
  setenv("SAL_USE_VCLPLUGIN", options.screen ? "gen" : "svp", 1);
  fs::create_directories(options.profile / "tmp");
  setenv("TMPDIR", (options.profile / "tmp").c_str(), 1);  // what a dying office leaves behind goes with the next run
  setenv("TOLVANE_OFFICE_VERDICT", verdict.c_str(), 1);
  setenv("TOLVANE_OFFICE_ARGUMENTS", options.arguments.c_str(), 1);
  std::vector<std::string> command = {options.office.string(),
                                      "--invisible",
                                      "--norestore",
                                      "--nologo",
                                      "--nodefault",
                                      "-env:UserInstallation=file://" + (options.profile / "user").string(),
                                      "-env:URE_BOOTSTRAP=" + program + "fundamentalrc",
                                      "-env:URE_MORE_SERVICES=<" + program + "services>* file://" + services.string(),
                                      "service:org.tolvane.office.Run"};
  if (!options.windows) command.push_back("--headless");
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(options.timeoutSeconds);
  constexpr int kStarts = 3;
  for (int start = 0; start < kStarts; ++start) {
    Office running(command);
    if (!running.Wait(end)) {
      std::cerr << "The office did not end within " << options.timeoutSeconds << " seconds and was stopped.\n";
      return kCannotRun;
    }
    const int status = running.status();
    if (WIFEXITED(status) && WEXITSTATUS(status) == kRestart && !fs::exists(verdict)) continue;
    int result = kCannotRun;
    if (std::ifstream(verdict) >> result) return result;
    if (WIFSIGNALED(status)) {
      std::cerr << "The office died by signal " << WTERMSIG(status)
                << " before what it was started for had come to its end.\n";
    } else {
      std::cerr << "The office ended with " << WEXITSTATUS(status)
                << " before what it was started for had come to its end.\n";
    }
    return kCannotRun;
  }
  std::cerr << "The office only ever asks to be started again.\n";
  return kCannotRun;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Main(argc, argv);
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return kCannotRun;
  }
}
