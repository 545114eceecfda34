#include "hosts/shell/KeyNotation.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>

#include "hosts/shell/Refusal.h"
#include "platform/Text.h"

namespace tolvane::shell {
namespace {

struct KeyName {
  std::string_view spelling;  // in capitals
  std::string_view name;
};
// ENTER is the key of the numeric pad; ~ the other one, which goes by RETURN.
constexpr KeyName kKeyNames[] = {
    KeyName{"BACKSPACE", "BACKSPACE"},
    KeyName{"BKSP", "BACKSPACE"},
    KeyName{"BS", "BACKSPACE"},
    KeyName{"BREAK", "BREAK"},
    KeyName{"CAPSLOCK", "CAPSLOCK"},
    KeyName{"CLEAR", "CLEAR"},
    KeyName{"DELETE", "DELETE"},
    KeyName{"DEL", "DELETE"},
    KeyName{"DOWN", "DOWN"},
    KeyName{"END", "END"},
    KeyName{"ENTER", "ENTER"},
    KeyName{"ESCAPE", "ESCAPE"},
    KeyName{"ESC", "ESCAPE"},
    KeyName{"HELP", "HELP"},
    KeyName{"HOME", "HOME"},
    KeyName{"INSERT", "INSERT"},
    KeyName{"INS", "INSERT"},
    KeyName{"LEFT", "LEFT"},
    KeyName{"NUMLOCK", "NUMLOCK"},
    KeyName{"PGDN", "PGDN"},
    KeyName{"PGUP", "PGUP"},
    KeyName{"RETURN", "RETURN"},
    KeyName{"RIGHT", "RIGHT"},
    KeyName{"SCROLLLOCK", "SCROLLLOCK"},
    KeyName{"TAB", "TAB"},
    KeyName{"UP", "UP"},
    KeyName{"F1", "F1"},
    KeyName{"F2", "F2"},
    KeyName{"F3", "F3"},
    KeyName{"F4", "F4"},
    KeyName{"F5", "F5"},
    KeyName{"F6", "F6"},
    KeyName{"F7", "F7"},
    KeyName{"F8", "F8"},
    KeyName{"F9", "F9"},
    KeyName{"F10", "F10"},
    KeyName{"F11", "F11"},
    KeyName{"F12", "F12"},
    KeyName{"F13", "F13"},
    KeyName{"F14", "F14"},
    KeyName{"F15", "F15"},
};

std::size_t CharacterLength(unsigned char lead) {
  if (lead < 0x80) return 1;
  return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

class Parser {
 public:
  Parser(std::string_view text, bool many) : text_(text), many_(many) {
    if (!platform::IsValidUtf8(text)) Fail("it is no UTF-8");
  }

  std::vector<KeyStroke> Parse() {
    while (at_ < text_.size()) ParseOne();
    return std::move(strokes_);
  }

 private:
  void ParseOne() {
    KeyStroke modifiers;
    for (; at_ < text_.size(); ++at_) {
      bool& held = text_[at_] == '+' ? modifiers.shift : text_[at_] == '^' ? modifiers.ctrl : modifiers.alt;
      if (text_[at_] != '+' && text_[at_] != '^' && text_[at_] != '%') break;
      if (held) Fail("a modifier stands there twice");
      held = true;
    }
    if (at_ == text_.size()) Fail("no key follows the modifiers");
    if (text_[at_] == '(' && many_) {
      ParseGroup(modifiers);
    } else {
      ParseStroke(modifiers);
    }
  }

  // Modifiers inside of a group would add to those before it; Excel knows none there.
  void ParseGroup(const KeyStroke& modifiers) {
    const std::size_t opening = at_++;
    while (at_ < text_.size() && text_[at_] != ')') {
      if (std::string_view("+^%(").find(text_[at_]) != std::string_view::npos) Fail("it stands within parentheses");
      ParseStroke(modifiers);
    }
    if (at_ == text_.size()) {
      at_ = opening;
      Fail("the parenthesis is not closed");
    }
    ++at_;
  }

  void ParseStroke(const KeyStroke& modifiers) {
    const char c = text_[at_];
    if (c == '{') return ParseBraces(modifiers);
    if (c == '~') {
      ++at_;
      return Add(modifiers, "RETURN", 1);
    }
    if (std::string_view("}()[]").find(c) != std::string_view::npos) Fail("it must stand in braces");
    const std::size_t length = CharacterLength(static_cast<unsigned char>(c));
    Add(modifiers, std::string(text_.substr(at_, length)), 1);
    at_ += length;
  }

  void ParseBraces(const KeyStroke& modifiers) {
    // The first character belongs to the key in any case: "{}}" is the closing brace.
    const std::size_t closing = text_.find('}', std::min(at_ + 2, text_.size()));
    if (closing == std::string_view::npos) Fail("the brace is not closed");
    std::string_view inner = text_.substr(at_ + 1, closing - at_ - 1);
    std::size_t times = 1;
    if (const std::size_t space = inner.find(' ', 1); many_ && space != std::string_view::npos) {
      times = ParseCount(inner.substr(space + 1));
      inner = inner.substr(0, space);
    }
    const auto name = NameOf(inner);
    if (!name.has_value()) Fail("there is no key {" + std::string(inner) + "}");
    Add(modifiers, *name, times);
    at_ = closing + 1;
  }

  static std::optional<std::string> NameOf(std::string_view inner) {
    if (!inner.empty() && CharacterLength(static_cast<unsigned char>(inner[0])) == inner.size()) {
      return std::string(inner);
    }
    std::string capitals(inner);
    for (char& c : capitals) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    const auto* const found = std::find_if(std::begin(kKeyNames), std::end(kKeyNames),
                                           [&](const KeyName& known) { return known.spelling == capitals; });
    if (found == std::end(kKeyNames)) return std::nullopt;
    return std::string(found->name);
  }

  std::size_t ParseCount(std::string_view digits) const {
    std::size_t count = 0;
    for (const char c : digits) {
      if (c < '0' || c > '9') Fail("the number of repetitions is none");
      count = std::min(count * 10 + static_cast<std::size_t>(c - '0'), kMaxKeyStrokes + 1);
    }
    if (count == 0) Fail("the number of repetitions is none");
    return count;
  }

  void Add(KeyStroke modifiers, std::string name, std::size_t times) {
    if (!many_ && !strokes_.empty()) Fail("one key is expected, and here is a second");
    if (times > kMaxKeyStrokes - strokes_.size())
      Fail("these are more than " + std::to_string(kMaxKeyStrokes) + " keys");
    modifiers.name = std::move(name);
    strokes_.insert(strokes_.end(), times, modifiers);
  }

  [[noreturn]] void Fail(const std::string& problem) const {
    Refuse("\"" + std::string(text_.substr(0, 200)) + "\" names no key: at character " + std::to_string(at_ + 1) +
           ", " + problem);
  }

  std::string_view text_;
  const bool many_;
  std::size_t at_ = 0;
  std::vector<KeyStroke> strokes_;
};

}  // namespace

KeyStroke ParseKey(std::string_view text) {
  auto strokes = Parser(text, false).Parse();
  if (strokes.empty()) Refuse("An empty text names no key");
  return std::move(strokes.front());
}

std::vector<KeyStroke> ParseKeys(std::string_view text) {
  return Parser(text, true).Parse();
}

}  // namespace tolvane::shell
