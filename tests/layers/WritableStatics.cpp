#include "tests/layers/WritableStatics.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string_view>

namespace tolvane::layers {
namespace {

std::string OutputOf(const std::string& command) {
  const auto close = [](FILE* pipe) { pclose(pipe); };
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) throw std::runtime_error("Cannot run: " + command);
  std::unique_ptr<FILE, decltype(close)> owner(pipe, close);
  std::string output;
  std::array<char, 65536> buffer;
  while (const std::size_t read = fread(buffer.data(), 1, buffer.size(), pipe)) output.append(buffer.data(), read);
  if (output.empty()) throw std::runtime_error("No output from: " + command);
  return output;
}

bool StartsWith(std::string_view text, std::string_view start) {
  return text.substr(0, start.size()) == start;
}

bool IsWritable(std::string_view section) {
  if (StartsWith(section, ".data.rel.ro")) return false;
  // The compiler's own pointers for the handling of exceptions.
  if (section.find("DW.ref.") != std::string_view::npos) return false;
  return section == "*COM*" || StartsWith(section, ".data") || StartsWith(section, ".bss") ||
         StartsWith(section, ".tdata") || StartsWith(section, ".tbss");
}

}  // namespace

// A line of the symbol table: 16 digits, a blank, seven flag characters, a blank, section, tab, size, blank, name.
std::vector<std::string> WritableStatics(const std::string& objectFile) {
  std::istringstream table(OutputOf("objdump --syms --demangle '" + objectFile + "'"));
  std::vector<std::string> found;
  std::string line;
  constexpr std::size_t kFlags = 17, kSection = 25;
  while (std::getline(table, line)) {
    if (line.size() <= kSection || line[16] != ' ') continue;
    const std::size_t tab = line.find('\t', kSection);
    if (tab == std::string::npos) continue;
    const std::string section = line.substr(kSection, tab - kSection);
    const bool isVariable = line[kFlags + 6] == 'O' || (StartsWith(section, ".t") && line[kFlags + 5] != 'd');
    if (!isVariable || !IsWritable(section)) continue;
    const std::size_t name = line.find(' ', tab);
    found.push_back(name == std::string::npos ? line : line.substr(name + 1));
  }
  return found;
}

bool IsOfUnoHeaders(const std::string& variable) {
  std::string_view name = variable;
  for (const std::string_view prefix : {".hidden ", "guard variable for "}) {
    if (StartsWith(name, prefix)) name.remove_prefix(prefix.size());
  }
  if (name.find("tolvane") != std::string_view::npos) return false;
  constexpr std::array<std::string_view, 5> kOfUno = {
      "com::sun::star::", "cppu::", "rtl::StaticWithInit<com::sun::star::uno::Type*, com::sun::star::",
      "(anonymous namespace)::rtl_Instance<com::sun::star::uno::Type*, rtl::StaticWithInit<com::sun::star::",
      "(anonymous namespace)::rtl_Instance<cppu::class_data, cppu::"};
  return std::any_of(kOfUno.begin(), kOfUno.end(), [name](std::string_view start) { return StartsWith(name, start); });
}

}  // namespace tolvane::layers
