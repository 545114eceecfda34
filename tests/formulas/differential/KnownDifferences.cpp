#include "tests/formulas/differential/KnownDifferences.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "engine/formula/NumberText.h"

namespace tolvane::formulacases {

using engine::Value;

namespace {

constexpr std::string_view kVerdicts[] = {"ours: ", "theirs: ", "both: ", "unclear: "};

// "*" stands for anything; linear in the text for each star.
bool Fits(std::string_view pattern, std::string_view text) {
  std::size_t p = 0;
  std::size_t t = 0;
  std::size_t star = std::string_view::npos;
  std::size_t mark = 0;
  while (t < text.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      mark = t;
    } else if (p < pattern.size() && pattern[p] == text[t]) {
      ++p;
      ++t;
    } else if (star != std::string_view::npos) {
      p = star + 1;
      t = ++mark;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == '*') ++p;
  return p == pattern.size();
}

bool IsOf(std::string_view wanted, const Value& value, std::string_view described) {
  if (wanted == "*") return true;
  if (wanted == "number") return value.isNumber();
  if (wanted == "text") return value.isText();
  if (wanted == "boolean") return value.isBoolean();
  if (wanted == "error") return value.isError();
  return wanted == described;
}

// "<A|B>(*" stands for "A(*" and "B(*".
std::vector<std::string> Alternatives(const std::string& pattern) {
  const std::size_t end = pattern.find('>');
  if (!pattern.starts_with('<') || end == std::string::npos) return {pattern};
  std::vector<std::string> patterns;
  for (std::size_t from = 1; from < end;) {
    const std::size_t to = std::min(pattern.find('|', from), end);
    patterns.push_back(pattern.substr(from, to - from) + pattern.substr(end + 1));
    from = to + 1;
  }
  return patterns;
}

// Without the braces of an array formula and the equals sign.
std::string_view Bare(std::string_view theCase) {
  if (theCase.starts_with('{') && theCase.ends_with('}')) theCase = theCase.substr(1, theCase.size() - 2);
  if (theCase.starts_with('=')) theCase.remove_prefix(1);
  return theCase;
}

[[noreturn]] void Fail(int line, const std::string& what) {
  throw std::runtime_error("Known differences, line " + std::to_string(line) + ": " + what);
}

}  // namespace

KnownDifferences::KnownDifferences(std::string_view text) {
  std::istringstream lines{std::string(text)};
  std::string line;
  bool hasReason = false;
  for (int number = 1; std::getline(lines, line); ++number) {
    if (line.empty() || line.starts_with('#')) continue;
    if (line.starts_with("== ")) {
      const std::string_view title = std::string_view(line).substr(3);
      hasReason = std::any_of(std::begin(kVerdicts), std::end(kVerdicts),
                              [&](std::string_view verdict) { return title.starts_with(verdict); });
      if (!hasReason) Fail(number, "who is right (ours, theirs, both, unclear) and why is expected behind ==.");
      continue;
    }
    if (!hasReason) Fail(number, "an entry must stand below a line that tells its reason.");
    const std::size_t first = line.find('\t');
    const std::size_t second = first == std::string::npos ? first : line.find('\t', first + 1);
    if (second == std::string::npos || line.find('\t', second + 1) != std::string::npos) {
      Fail(number, "the case, our result and theirs are expected, parted by tabs.");
    }
    KnownDifference entry{number, line.substr(0, first), line.substr(first + 1, second - first - 1),
                          line.substr(second + 1), 0};
    const auto letters = std::count_if(entry.pattern.begin(), entry.pattern.end(), [](char c) { return c != '*'; });
    if (letters < 2) Fail(number, "the case must name a function or an operator.");
    if (entry.ours.empty() || entry.theirs.empty()) Fail(number, "both results must be told.");
    if (entry.ours == "*" && entry.theirs == "*") Fail(number, "one of the results must be told.");
    for (std::string& pattern : Alternatives(entry.pattern)) {
      entries_.push_back({entry.line, std::move(pattern), entry.ours, entry.theirs, 0});
    }
  }
}

KnownDifferences KnownDifferences::Of(const std::filesystem::path& path) {
  std::ifstream file(path);
  if (!file) throw std::runtime_error("Cannot read " + path.string() + ".");
  std::ostringstream text;
  text << file.rdbuf();
  return KnownDifferences(text.str());
}

bool KnownDifferences::Allow(std::string_view theCase, const Value& ours, const CalcResult& theirs) {
  const std::string our = Described(ours);
  const std::string their = Described(theirs);
  const auto entry = std::find_if(entries_.begin(), entries_.end(), [&](const KnownDifference& known) {
    return IsOf(known.ours, ours, our) && IsOf(known.theirs, theirs.value, their) && Fits(known.pattern, Bare(theCase));
  });
  if (entry == entries_.end()) return false;
  ++entry->used;
  return true;
}

std::vector<KnownDifference> KnownDifferences::Unused() const {
  std::vector<KnownDifference> unused;
  std::copy_if(entries_.begin(), entries_.end(), std::back_inserter(unused),
               [](const KnownDifference& entry) { return entry.used == 0; });
  return unused;
}

std::string Described(const Value& value) {
  switch (value.kind()) {
    case Value::Kind::Boolean:
      return value.boolean() ? "TRUE" : "FALSE";
    case Value::Kind::Number:
      return engine::DecimalText(value.number(), 15);
    case Value::Kind::Text:
      return "\"" + std::string(value.text().view()) + "\"";
    case Value::Kind::Error:
      return std::string(TextOf(value.error()));
    case Value::Kind::Empty:
      break;
  }
  return "nothing";
}

std::string Described(const CalcResult& result) {
  return result.error == 0 ? Described(result.value) : "Err:" + std::to_string(result.error);
}

bool IsSame(const Value& ours, const CalcResult& result) {
  const Value& theirs = result.value;
  if (ours.isNumber() && theirs.isNumber()) {
    const double a = ours.number();
    const double b = theirs.number();
    return a == b || std::abs(a - b) <= 1e-9 * std::max(std::abs(a), std::abs(b)) || std::abs(a - b) < 1e-11;
  }
  if (theirs.isEmpty()) return ours.isEmpty() || (ours.isText() && ours.text().view().empty());
  return ours == theirs;
}

}  // namespace tolvane::formulacases
