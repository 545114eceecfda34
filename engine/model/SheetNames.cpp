#include "engine/model/SheetNames.h"

#include <set>

#include "engine/model/Workbook.h"
#include "platform/Text.h"

namespace tolvane::engine {

namespace {

// Excel counts a sheet name in UTF-16 code units.
constexpr std::size_t kLongestSheetName = 31;

bool IsContinuation(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

std::size_t Utf16Units(std::string_view text) {
  std::size_t units = 0;
  for (const char c : text) {
    if (IsContinuation(c)) continue;
    units += static_cast<unsigned char>(c) >= 0xF0 ? 2 : 1;
  }
  return units;
}

// Without a trailing " (2)".
std::string_view WithoutNumber(std::string_view name) {
  if (name.empty() || name.back() != ')') return name;
  std::size_t at = name.size() - 1;
  while (at > 0 && name[at - 1] >= '0' && name[at - 1] <= '9') --at;
  const bool hasNumber = at < name.size() - 1 && at >= 3 && name.substr(at - 2, 2) == " (";
  return hasNumber ? name.substr(0, at - 2) : name;
}

}  // namespace

std::optional<std::string> Workbook::WhyBadSheetName(std::string_view name) {
  if (name.empty()) return "A sheet's name must not be empty";
  const std::string quoted = std::string(1, '"').append(name).append(1, '"');
  if (Utf16Units(name) > kLongestSheetName) return "The sheet name " + quoted + " is longer than 31 characters";
  if (name.find_first_of(":\\/?*[]") != std::string_view::npos) {
    return "The sheet name " + quoted + " holds one of the characters : \\ / ? * [ ]";
  }
  if (name.front() == '\'' || name.back() == '\'') {
    return "The sheet name " + quoted + " begins or ends with an apostrophe";
  }
  if (platform::EqualIgnoringCase(name, "History")) return "The sheet name " + quoted + " is reserved";
  return std::nullopt;
}

std::string NameForCopy(const Workbook& book, std::string_view name) {
  const std::string_view base = WithoutNumber(name);
  for (int number = 2;; ++number) {
    const std::string suffix = std::string(" (").append(std::to_string(number)).append(1, ')');
    std::string_view shortened = base;
    while (Utf16Units(shortened) + suffix.size() > kLongestSheetName) {
      while (IsContinuation(shortened.back())) shortened.remove_suffix(1);
      shortened.remove_suffix(1);
    }
    std::string candidate = std::string(shortened) + suffix;
    if (book.FindSheet(candidate) == nullptr) return candidate;
  }
}

std::string FreeCodeName(const Workbook& book) {
  std::set<std::string> taken;
  for (std::size_t i = 0; i < book.sheetCount(); ++i) taken.insert(platform::FoldCase(book.sheetAt(i).codeName));
  for (int number = 1;; ++number) {
    const std::string candidate = std::string("Sheet").append(std::to_string(number));
    if (!taken.contains(platform::FoldCase(candidate))) return candidate;
  }
}

}  // namespace tolvane::engine
