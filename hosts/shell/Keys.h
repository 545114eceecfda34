#pragma once

#include <deque>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "hosts/shell/KeyNotation.h"

namespace tolvane::shell {

// The keys that macros have taken, and the keys that have been sent to the program.
class Keys {
 public:
  // OnKey: from now on the key runs the macro; an empty one makes it do nothing. None gives the key back.
  void Hook(std::string_view key, const std::optional<std::string>& macro);
  // What the key runs; none when it is the program's.
  std::optional<std::string> MacroOf(const KeyStroke& key) const;
  std::optional<std::string> MacroOf(std::string_view key) const { return MacroOf(ParseKey(key)); }

  // SendKeys: behind what is waiting. All of them or, where the text is wrong or too much would wait, none.
  void Send(std::string_view keys);
  std::optional<KeyStroke> TakeSent();  // the next one

 private:
  std::map<KeyStroke, std::string> macros_;
  std::deque<KeyStroke> sent_;
};

}  // namespace tolvane::shell
