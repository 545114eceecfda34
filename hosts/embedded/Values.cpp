#include "hosts/embedded/Values.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "hosts/embedded/Refusal.h"
#include "platform/Text.h"

namespace tolvane::embedded {

namespace {

constexpr std::size_t kLongestText = 32767;  // Excel's limit for a cell
constexpr std::size_t kRecentTexts = 4096;
constexpr std::size_t kSmallBlock = 512;  // cells; looking after texts would cost more than it saves

}  // namespace

host::CellValue ToHost(const engine::Value& value) {
  switch (value.kind()) {
    case engine::Value::Kind::Empty:
      return {};
    case engine::Value::Kind::Boolean:
      return value.boolean();
    case engine::Value::Kind::Number:
      return value.number();
    case engine::Value::Kind::Text:
      return value.text().view();
    case engine::Value::Kind::Error:
      return static_cast<host::CellError>(value.error());
  }
  return {};
}

engine::Value ToEngine(const host::CellValue& value) {
  switch (value.kind()) {
    case host::CellValue::Kind::Empty:
      return {};
    case host::CellValue::Kind::Boolean:
      return value.boolean();
    case host::CellValue::Kind::Number:
      if (!std::isfinite(value.number())) return engine::ErrorCode::Num;
      return value.number();
    case host::CellValue::Kind::Text:
      if (value.text().size() > kLongestText && platform::CharacterCount(value.text()) > kLongestText) {
        Refuse("A cell holds at most 32,767 characters; shorten the text that begins with \"" +
               std::string(value.text().substr(0, 40)) + "\".");
      }
      if (value.text().empty()) return {};
      return engine::Value(value.text());
    case host::CellValue::Kind::Error:
      return static_cast<engine::ErrorCode>(value.error());
  }
  return {};
}

BlockToEngine::BlockToEngine(std::size_t cells) : recent_(cells < kSmallBlock ? 0 : kRecentTexts) {}

engine::Value BlockToEngine::operator()(const host::CellValue& value) {
  if (recent_.empty() || !value.isText() || value.text().empty()) return ToEngine(value);
  engine::Text& known = recent_[std::hash<std::string_view>{}(value.text()) % kRecentTexts];
  if (known.view() != value.text()) known = ToEngine(value).text();
  return known;
}

BlockToHost::BlockToHost(std::size_t cells) : recent_(cells < kSmallBlock ? 0 : kRecentTexts) {}

host::CellValue BlockToHost::operator()(const engine::Value& value) {
  // Short texts stand in the value itself and need no sharing.
  constexpr std::size_t kShort = 15;
  if (recent_.empty() || !value.isText() || value.text().view().size() <= kShort) return ToHost(value);
  const auto place = reinterpret_cast<std::uintptr_t>(value.text().view().data());
  Known& known = recent_[place / alignof(std::max_align_t) % kRecentTexts];
  if (!known.from.IsSame(value.text())) known = {value.text(), ToHost(value)};
  return known.to;
}

}  // namespace tolvane::embedded
