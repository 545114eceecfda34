#include "hosts/shell/Keys.h"

#include <utility>
#include <vector>

#include "hosts/shell/Refusal.h"

namespace tolvane::shell {

void Keys::Hook(std::string_view key, const std::optional<std::string>& macro) {
  KeyStroke stroke = ParseKey(key);
  if (macro.has_value()) {
    macros_.insert_or_assign(std::move(stroke), *macro);
  } else {
    macros_.erase(stroke);
  }
}

std::optional<std::string> Keys::MacroOf(const KeyStroke& key) const {
  const auto found = macros_.find(key);
  return found == macros_.end() ? std::nullopt : std::optional(found->second);
}

void Keys::Send(std::string_view keys) {
  std::vector<KeyStroke> strokes = ParseKeys(keys);
  if (strokes.size() > kMaxKeyStrokes - sent_.size()) {
    Refuse("More than " + std::to_string(kMaxKeyStrokes) + " keys would wait");
  }
  for (KeyStroke& stroke : strokes) sent_.push_back(std::move(stroke));
}

std::optional<KeyStroke> Keys::TakeSent() {
  if (sent_.empty()) return std::nullopt;
  KeyStroke next = std::move(sent_.front());
  sent_.pop_front();
  return next;
}

}  // namespace tolvane::shell
