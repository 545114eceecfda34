#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tolvane::shell {

// A key with the modifiers that are held down with it. Of a character key the name is the character as it was given, so
// that "^c" and "^C" are two keys; of another the name in capitals, one for all of its spellings.
struct KeyStroke {
  bool shift = false;
  bool ctrl = false;
  bool alt = false;
  std::string name;
  friend auto operator<=>(const KeyStroke&, const KeyStroke&) = default;
};

// Excel's notation of keys: + Shift, ^ Ctrl, % Alt before a character, before {NAME} or before ~, which is Enter.
// Characters that mean something here stand in braces: "{+}". What is no such text is ApplicationDefined.
//
// One key, as OnKey takes it.
KeyStroke ParseKey(std::string_view text);
// Any number of keys, as SendKeys takes them: also "{NAME 3}" for repeating and "+(abc)" for modifiers on several.
std::vector<KeyStroke> ParseKeys(std::string_view text);

// How many strokes one text may stand for: a slip of the finger in a repetition shall not fill the memory.
inline constexpr std::size_t kMaxKeyStrokes = 10'000;

}  // namespace tolvane::shell
