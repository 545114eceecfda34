#include "tests/layers/Arrows.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>

namespace tolvane::layers {
namespace {

enum class Outside {
  StandardOnly,  // the standard library and nothing else
  StandardAndFmt,
  Anything,
};

// One room of the tree. The longest folder that a path begins with decides.
struct Room {
  std::string_view folder;
  std::vector<std::string_view> mayInclude;  // folders; a room may always include itself
  Outside outside;
};

const std::vector<Room>& Rooms() {
  static const std::vector<Room> rooms = {
      {"platform/", {}, Outside::Anything},
      {"engine/model/", {"platform/"}, Outside::Anything},
      {"engine/formula/", {"engine/model/", "platform/"}, Outside::Anything},
      {"engine/xlsx/", {"engine/model/", "engine/formula/", "platform/"}, Outside::Anything},
      {"src/host/", {}, Outside::StandardOnly},
      {"src/", {"src/", "platform/"}, Outside::StandardAndFmt},
      {"hosts/shell/", {"src/host/", "platform/"}, Outside::Anything},
      {"hosts/embedded/", {"hosts/shell/", "engine/", "src/host/", "platform/"}, Outside::Anything},
      {"hosts/libreoffice/", {"hosts/shell/", "src/host/", "platform/"}, Outside::Anything},
      {"hosts/libreoffice/in_office/",
       {"hosts/libreoffice/", "hosts/shell/", "testing/", "src/host/", "platform/"},
       Outside::Anything},
      {"hosts/libreoffice/bench/",
       {"hosts/libreoffice/", "hosts/shell/", "testing/", "src/host/", "platform/"},
       Outside::Anything},
      {"hosts/libreoffice/contract/",
       {"hosts/libreoffice/", "hosts/shell/", "testing/", "tests/contract/", "src/host/", "platform/"},
       Outside::Anything},
      {"hosts/excel/", {"hosts/shell/EventHub.h", "src/host/"}, Outside::Anything},
      {"hosts/excel/contract/",
       {"hosts/excel/", "hosts/embedded/", "hosts/shell/", "testing/", "tests/contract/", "src/host/"},
       Outside::Anything},
      {"hosts/files/", {"hosts/embedded/", "hosts/shell/", "engine/", "src/host/", "platform/"}, Outside::Anything},
      // The books are made through the port alone; their program brings the host.
      {"books/", {"src/host/", "platform/"}, Outside::Anything},
      {"books/pictures/", {"apps/", "hosts/", "engine/", "src/", "platform/"}, Outside::Anything},
      {"books/program/", {"books/", "apps/", "hosts/", "engine/", "src/", "platform/"}, Outside::Anything},
      {"testing/", {"hosts/", "engine/", "src/", "platform/"}, Outside::Anything},
      {"tests/", {"testing/", "books/", "hosts/", "engine/", "src/", "platform/"}, Outside::Anything},
      {"fuzz/", {"tests/", "engine/", "platform/"}, Outside::Anything},
      {"bench/", {"testing/", "hosts/", "engine/", "src/", "platform/"}, Outside::Anything},
      {"apps/", {"hosts/", "engine/", "src/", "platform/"}, Outside::Anything},
  };
  return rooms;
}

// Headers of the C++ standard library have no extension; those that C left behind and the compiler's own have.
bool IsStandardHeader(std::string_view name) {
  return name.find('/') == std::string_view::npos && name.find('.') == std::string_view::npos;
}

bool StartsWith(std::string_view text, std::string_view start) {
  return text.substr(0, start.size()) == start;
}

bool EndsWith(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

const Room* RoomOf(std::string_view path) {
  const Room* best = nullptr;
  for (const Room& room : Rooms()) {
    if (StartsWith(path, room.folder) && (best == nullptr || room.folder.size() > best->folder.size())) best = &room;
  }
  return best;
}

struct Include {
  std::string name;
  bool quoted = false;
};

std::optional<Include> IncludeOn(std::string_view line) {
  const auto skipBlanks = [&line](std::size_t at) {
    while (at < line.size() && (line[at] == ' ' || line[at] == '\t')) ++at;
    return at;
  };
  std::size_t at = skipBlanks(0);
  if (at >= line.size() || line[at] != '#') return std::nullopt;
  at = skipBlanks(at + 1);
  constexpr std::string_view keyword = "include";
  if (line.substr(at, keyword.size()) != keyword) return std::nullopt;
  at = skipBlanks(at + keyword.size());
  if (at >= line.size() || (line[at] != '"' && line[at] != '<')) return std::nullopt;
  const bool quoted = line[at] == '"';
  const std::size_t end = line.find(quoted ? '"' : '>', at + 1);
  if (end == std::string_view::npos) return std::nullopt;
  return Include{std::string(line.substr(at + 1, end - at - 1)), quoted};
}

std::optional<std::string> WhyForbidden(const Source& source, const Room& room, const Include& include) {
  const bool isTest = EndsWith(source.path, "_test.cpp");
  if (!include.quoted) {
    if (room.outside == Outside::Anything || isTest || IsStandardHeader(include.name)) return std::nullopt;
    if (room.outside == Outside::StandardAndFmt && StartsWith(include.name, "fmt/")) return std::nullopt;
    return "<" + include.name + "> is not a library that " + std::string(room.folder) + " may know";
  }
  if (StartsWith(include.name, room.folder)) {
    const Room* own = RoomOf(include.name);
    if (own == &room) return std::nullopt;
  }
  for (const std::string_view folder : room.mayInclude) {
    if (StartsWith(include.name, folder)) return std::nullopt;
  }
  if (RoomOf(include.name) == nullptr) return "\"" + include.name + "\" does not name a header from the root";
  if (isTest && StartsWith(include.name, "testing/")) return std::nullopt;
  return std::string(room.folder) + " may not include \"" + include.name + "\"";
}

}  // namespace

std::vector<std::string> ForbiddenIncludes(const std::vector<Source>& sources) {
  std::vector<std::string> found;
  for (const Source& source : sources) {
    const Room* room = RoomOf(source.path);
    if (room == nullptr) {
      found.push_back(source.path + ": stands in no room that the architecture knows");
      continue;
    }
    std::istringstream lines(source.text);
    std::string line;
    for (int number = 1; std::getline(lines, line); ++number) {
      const std::optional<Include> include = IncludeOn(line);
      if (!include) continue;
      if (const auto why = WhyForbidden(source, *room, *include)) {
        found.push_back(source.path + ":" + std::to_string(number) + ": " + *why);
      }
    }
  }
  return found;
}

std::vector<Source> ReadTree(const std::string& root) {
  namespace fs = std::filesystem;
  constexpr std::array<std::string_view, 3> left = {"build", ".git", ".cache"};
  std::vector<Source> sources;
  for (auto entry = fs::recursive_directory_iterator(root); entry != fs::recursive_directory_iterator(); ++entry) {
    const fs::path& path = entry->path();
    if (entry->is_directory()) {
      if (entry.depth() == 0 && std::find(left.begin(), left.end(), path.filename().string()) != left.end()) {
        entry.disable_recursion_pending();
      }
      continue;
    }
    if (path.extension() != ".h" && path.extension() != ".cpp") continue;
    std::ifstream file(path, std::ios::binary);
    sources.push_back(
        {fs::relative(path, root).generic_string(), std::string(std::istreambuf_iterator<char>(file), {})});
  }
  std::sort(sources.begin(), sources.end(), [](const Source& a, const Source& b) { return a.path < b.path; });
  return sources;
}

}  // namespace tolvane::layers
