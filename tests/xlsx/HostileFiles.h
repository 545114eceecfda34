#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tolvane::xlsxtest {

// A file that was damaged or made to do harm.
struct HostileFile {
  std::string name;
  std::function<std::string()> make;
  // What the error must say, beside the file's name: the part, where one is at fault, and the reason.
  std::vector<std::string> says;
};

std::vector<HostileFile> HostileFiles();

}  // namespace tolvane::xlsxtest
