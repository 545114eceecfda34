#pragma once

#include <span>
#include <string_view>

#include "src/host/Constants.h"

namespace tolvane::shell {

// What Excel's command bars hold from the start, as far as an add-in can meet it: the commands with Office's ids and
// captions, the menus that hold them and the bars that hold these.

// Commands that the host itself gives a meaning.
namespace builtin {
inline constexpr int kCopy = 19, kCut = 21, kPaste = 22, kPasteFormatting = 369, kPasteValues = 370,
                     kPasteSpecial = 755, kPasteButton = 6002, kProtectSheet = 893, kSort = 928, kSortAscending = 210,
                     kSortDescending = 211;
}  // namespace builtin

struct BuiltInItem {
  int id = 0;
  bool beginGroup = false;
};

struct BuiltInControl {
  int id = 0;
  std::string_view caption;
  std::string_view shortcut = {};
  std::span<const BuiltInItem> items = {};  // of a menu; never empty for one
  bool isPopup() const { return !items.empty(); }
};

struct BuiltInBar {
  std::string_view name;
  host::BarPosition position = host::BarPosition::Top;
  std::span<const BuiltInItem> items;
};

// None for an id that no built-in control has.
const BuiltInControl* FindBuiltInControl(int id);

// The menu bar comes first: searches go through the bars in this order.
std::span<const BuiltInBar> BuiltInBars();

// What the command of protection is called while the sheet in front is protected.
inline constexpr std::string_view kUnprotectSheetCaption = "Un&protect Sheet...";

}  // namespace tolvane::shell
