#include "tests/formats/FormatCases.h"

#include <charconv>
#include <sstream>
#include <stdexcept>

namespace tolvane::formatstest {

engine::Value ReadValue(const std::string& written) {
  if (written == "TRUE" || written == "FALSE") return engine::Value(written == "TRUE");
  if (written.size() >= 2 && written.front() == '"' && written.back() == '"') {
    return engine::Value(std::string_view(written).substr(1, written.size() - 2));
  }
  double number = 0;
  const auto [end, error] = std::from_chars(written.data(), written.data() + written.size(), number);
  if (error != std::errc() || end != written.data() + written.size()) {
    throw std::runtime_error("This is no value: " + written);
  }
  return engine::Value(number);
}

std::vector<FormatCase> ReadFormatCases(std::string_view text) {
  std::vector<FormatCase> cases;
  std::vector<std::string> values;
  std::istringstream lines{std::string(text)};
  constexpr std::string_view kGroup = "== ";
  for (std::string line; std::getline(lines, line);) {
    if (line.empty() || line.starts_with("//")) continue;
    if (!line.starts_with(kGroup)) {
      for (const std::string& value : values) cases.push_back({line, value, ReadValue(value)});
      continue;
    }
    values.clear();
    std::istringstream parts(line.substr(kGroup.size()));
    for (std::string value; std::getline(parts, value, '\t');) values.push_back(value);
  }
  return cases;
}

}  // namespace tolvane::formatstest
