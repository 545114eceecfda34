#include "src/periods/MergedAmounts.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace tolvane::accounts {

namespace {

struct Part {
  std::string whole;  // without "="
  std::size_t of = 0;
};

bool IsPlainNumber(std::string_view text) {
  return !text.empty() &&
         std::all_of(text.begin(), text.end(), [](char c) { return (c >= '0' && c <= '9') || c == '.'; });
}

// What "=(A1+B1)/3" or "=1200/12" is a part of. A negative one is none: it is subtracted as it stands.
std::optional<Part> PartIn(std::string_view text) {
  const auto slash = text.rfind('/');
  if (slash == std::string_view::npos || !text.starts_with('=')) return std::nullopt;
  const std::string_view divisor = text.substr(slash + 1);
  Part part;
  const auto result = std::from_chars(divisor.data(), divisor.data() + divisor.size(), part.of);
  if (result.ec != std::errc() || result.ptr != divisor.data() + divisor.size() || divisor.size() > 2 || part.of < 2) {
    return std::nullopt;
  }
  const std::string_view whole = text.substr(1, slash - 1);
  if (IsPlainNumber(whole)) {
    part.whole = whole;
    return part;
  }
  if (whole.size() < 3 || whole.front() != '(' || whole.back() != ')') return std::nullopt;
  // The bracket that opens it must be the one that closes it: (A1)+(B1) is no whole.
  int depth = 0;
  for (std::size_t i = 0; i + 1 < whole.size(); ++i) {
    depth += whole[i] == '(' ? 1 : whole[i] == ')' ? -1 : 0;
    if (depth == 0) return std::nullopt;
  }
  part.whole = whole.substr(1, whole.size() - 2);
  return part;
}

// How many of the first amounts are all the parts of one whole; 0 when they are not.
std::size_t CompleteRun(std::span<const std::string> amounts, const std::optional<Part>& part) {
  if (!part || part->of > amounts.size()) return 0;
  const auto run = amounts.first(part->of);
  return std::all_of(run.begin(), run.end(), [&](const std::string& text) { return text == run.front(); }) ? part->of
                                                                                                           : 0;
}

}  // namespace

std::string sDividedAmount(std::string_view sAmount, int lDivisor) {
  const std::string divisor = "/" + std::to_string(lDivisor);
  if (!sAmount.starts_with('=')) return "=" + std::string(sAmount) + divisor;
  const bool bSum = sAmount.find_first_of("+-") != std::string_view::npos;
  return bSum ? "=(" + std::string(sAmount.substr(1)) + ")" + divisor : std::string(sAmount) + divisor;
}

std::string sMergedAmounts(std::span<const std::string> amounts) {
  if (amounts.empty()) return {};
  if (amounts.size() == 1) return amounts.front();
  const auto part = PartIn(amounts.front());
  const std::size_t run = CompleteRun(amounts, part);
  std::string merged = run > 0 ? "=" + part->whole : amounts.front();
  for (const std::string& amount : amounts.subspan(std::max<std::size_t>(run, 1))) {
    const std::string_view bare = std::string_view(amount).substr(amount.starts_with('=') ? 1 : 0);
    if (!bare.starts_with('-')) merged += '+';
    merged += bare;
  }
  return merged.starts_with('=') ? merged : "=" + merged;
}

}  // namespace tolvane::accounts
