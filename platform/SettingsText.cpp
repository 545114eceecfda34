#include "platform/SettingsText.h"

#include <algorithm>
#include <stdexcept>

#include "platform/Text.h"

namespace tolvane::platform {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kHexDigits = "0123456789ABCDEF";
constexpr std::string_view kNameSpecials = "=/[];#";

bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r';
}
bool IsControl(char c) {
  return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

std::string Escaped(std::string_view text, std::string_view specials) {
  std::string escaped;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char c = text[at];
    const bool trimmedAway = c == ' ' && (at == 0 || at + 1 == text.size());
    if (c == '\\') {
      escaped += "\\\\";
    } else if (c == '\n') {
      escaped += "\\n";
    } else if (trimmedAway || IsControl(c) || specials.find(c) != std::string_view::npos) {
      const auto byte = static_cast<unsigned char>(c);
      escaped += "\\x";
      escaped.push_back(kHexDigits[byte >> 4]);
      escaped.push_back(kHexDigits[byte & 0xF]);
    } else {
      escaped.push_back(c);
    }
  }
  return escaped;
}

std::optional<unsigned> HexDigit(char c) {
  if (c >= 'a' && c <= 'f') c = static_cast<char>(c - 'a' + 'A');
  const std::size_t digit = kHexDigits.find(c);
  if (digit == std::string_view::npos) return std::nullopt;
  return static_cast<unsigned>(digit);
}

// Nothing where an escape is broken or the result is not UTF-8.
std::optional<std::string> Unescaped(std::string_view text) {
  std::string plain;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] != '\\') {
      plain.push_back(text[at]);
      continue;
    }
    if (++at == text.size()) return std::nullopt;
    if (text[at] == '\\') {
      plain.push_back('\\');
    } else if (text[at] == 'n') {
      plain.push_back('\n');
    } else if (text[at] == 'x' && at + 2 < text.size()) {
      const std::optional<unsigned> high = HexDigit(text[at + 1]);
      const std::optional<unsigned> low = HexDigit(text[at + 2]);
      if (!high || !low) return std::nullopt;
      plain.push_back(static_cast<char>(*high << 4 | *low));
      at += 2;
    } else {
      return std::nullopt;
    }
  }
  if (!IsValidUtf8(plain)) return std::nullopt;
  return plain;
}

std::string Heading(std::string_view application, std::string_view section) {
  std::string heading = "[";
  heading += Escaped(application, kNameSpecials);
  heading += '/';
  heading += Escaped(section, kNameSpecials);
  heading += ']';
  return heading;
}

// Escaped names hold no line feed, so that one parts a heading from a key.
std::string SettingId(std::string_view headingId, std::string_view key) {
  return std::string(headingId) + '\n' + FoldCase(Escaped(key, kNameSpecials));
}

// The id of the heading on a trimmed line that begins with a bracket; empty for a broken one.
std::string ReadHeading(std::string_view line) {
  if (!line.ends_with(']')) return {};
  const std::string_view names = line.substr(1, line.size() - 2);
  const std::size_t slash = names.find('/');
  if (slash == std::string_view::npos || names.find('/', slash + 1) != std::string_view::npos) return {};
  const std::optional<std::string> application = Unescaped(Trimmed(names.substr(0, slash)));
  const std::optional<std::string> section = Unescaped(Trimmed(names.substr(slash + 1)));
  return application && section ? FoldCase(Heading(*application, *section)) : std::string();
}

}  // namespace

void RequireUtf8(std::string_view value) {
  if (!IsValidUtf8(value)) throw std::invalid_argument("a setting must be UTF-8: " + FromSystemCodePage(value));
}

SettingName::SettingName(std::string_view application, std::string_view section, std::string_view name) {
  RequireUtf8(application);
  RequireUtf8(section);
  RequireUtf8(name);
  heading = Heading(application, section);
  key = Escaped(name, kNameSpecials);
}

std::string SettingName::Id() const {
  return FoldCase(heading) + '\n' + FoldCase(key);
}

SettingsText::SettingsText(std::string_view text) {
  // Editors of other systems put the mark there; it must stay, but does not keep the first line from being a heading.
  const bool hasMark = text.starts_with(kByteOrderMark);
  if (hasMark) text.remove_prefix(kByteOrderMark.size());
  std::string headingId;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    lines_.push_back(ReadLine(text.substr(0, end), headingId));
    headingId = lines_.back().headingId;
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  if (hasMark && !lines_.empty()) lines_.front().text.insert(0, kByteOrderMark);
}

SettingsText::Line SettingsText::ReadLine(std::string_view text, std::string_view headingId) {
  Line line{std::string(text), std::string(headingId), {}, {}};
  text = Trimmed(text);
  if (text.starts_with('[')) {
    line.headingId = ReadHeading(text);
    return line;
  }
  const std::size_t equals = text.find('=');
  if (headingId.empty() || text.starts_with(';') || text.starts_with('#') || equals == std::string_view::npos) {
    return line;
  }
  const std::optional<std::string> key = Unescaped(Trimmed(text.substr(0, equals)));
  std::optional<std::string> value = Unescaped(Trimmed(text.substr(equals + 1)));
  if (key && value) {
    line.settingId = SettingId(headingId, *key);
    line.value = std::move(value);
  }
  return line;
}

std::unordered_map<std::string, std::string> SettingsText::Values() const {
  std::unordered_map<std::string, std::string> values;
  for (const Line& line : lines_) {
    if (line.value) values[line.settingId] = *line.value;
  }
  return values;
}

bool SettingsText::Set(const SettingName& name, std::string_view value) {
  const std::string headingId = FoldCase(name.heading);
  Line line{name.key + "=" + Escaped(value, ""), headingId, name.Id(), std::string(value)};
  // The last of them is the one that counts.
  const auto old = std::find_if(lines_.rbegin(), lines_.rend(),
                                [&](const Line& other) { return other.value && other.settingId == line.settingId; });
  if (old != lines_.rend()) {
    if (old->value == line.value) return false;
    *old = std::move(line);
    return true;
  }
  // Blank lines at the end of a section part it from the next.
  const auto below = std::find_if(lines_.rbegin(), lines_.rend(), [&](const Line& other) {
    return other.headingId == headingId && !Trimmed(other.text).empty();
  });
  if (below != lines_.rend()) {
    lines_.insert(below.base(), std::move(line));
  } else {
    lines_.push_back({name.heading, headingId, {}, {}});
    lines_.push_back(std::move(line));
  }
  return true;
}

bool SettingsText::Remove(const SettingName& name) {
  const std::string id = name.Id();
  return std::erase_if(lines_, [&](const Line& line) { return line.value && line.settingId == id; }) > 0;
}

std::string SettingsText::ToText() const {
  std::string text;
  for (const Line& line : lines_) {
    text += line.text;
    text += '\n';
  }
  return text;
}

}  // namespace tolvane::platform
