#include "tests/formulas/CaseFile.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace tolvane::formulacases {

namespace {

// How each kind of source begins in the files.
constexpr std::array<std::pair<std::string_view, std::string_view>, 4> kSources{{
    {"the example of the help page", "help page"},
    {"memory of Excel", "memory"},
    {"calculated independently", "calculated"},
    {"LibreOffice Calc", "LibreOffice"},
}};

std::string SourceOf(std::string_view text, const std::string& where) {
  for (const auto& [start, name] : kSources) {
    if (text.starts_with(start)) return std::string(name);
  }
  throw std::runtime_error(where + "unknown source \"" + std::string(text) + "\".");
}

}  // namespace

std::vector<std::filesystem::path> CaseFiles() {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(TOLVANE_SOURCE_DIR "/tests/formulas")) {
    if (entry.path().extension() == ".txt" && entry.path().stem() != "CMakeLists") files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::vector<Group> ReadCaseFile(const std::filesystem::path& path) {
  constexpr std::string_view kSource = "# Source: ";
  constexpr std::string_view kGroup = "== ";
  constexpr std::string_view kName = "name ";
  const std::string name = path.stem().string();
  std::ifstream file(path);
  if (!file) throw std::runtime_error("Cannot read " + path.string() + ".");
  std::vector<Group> groups{{name, "", {}}};
  std::string text;
  std::string source;
  for (int number = 1; std::getline(file, text); ++number) {
    const std::string where = path.filename().string() + ":" + std::to_string(number) + ": ";
    if (text.starts_with(kSource)) source = SourceOf(std::string_view(text).substr(kSource.size()), where);
    if (text.empty() || text.starts_with('#')) continue;
    if (text.starts_with(kGroup)) {
      groups.push_back({name, text.substr(kGroup.size()), {}});
      continue;
    }
    const std::size_t tab = text.find('\t');
    if (tab == std::string::npos) throw std::runtime_error(where + "a tab is expected between the fields.");
    Line line{number, Line::Kind::Cell, text.substr(0, tab), text.substr(tab + 1), false, ""};
    if (line.left.starts_with('=') || line.left.starts_with('{')) {
      if (source.empty()) throw std::runtime_error(where + "no \"# Source: \" line stands above this case.");
      line.kind = Line::Kind::Case;
      line.source = source;
      line.isArray = line.left.starts_with('{') && line.left.ends_with('}');
      if (line.isArray) line.left = line.left.substr(1, line.left.size() - 2);
    } else if (line.left.starts_with(kName)) {
      line.kind = Line::Kind::Name;
      line.left.erase(0, kName.size());
    }
    groups.back().lines.push_back(std::move(line));
  }
  return groups;
}

}  // namespace tolvane::formulacases
