#include "hosts/shell/BuiltInCommands.h"

#include <utility>

#include "hosts/shell/BuiltInControls.h"
#include "hosts/shell/Session.h"

namespace tolvane::shell {

void DoBuiltInCommand(Session& session, std::string_view ribbonId) {
  constexpr std::pair<std::string_view, int> kCommands[] = {
      {"Copy", builtin::kCopy},
      {"Cut", builtin::kCut},
      {"Paste", builtin::kPaste},
      {"PasteFormatting", builtin::kPasteFormatting},
      {"PasteValues", builtin::kPasteValues},
      {"SortAscendingExcel", builtin::kSortAscending},
      {"SortDescendingExcel", builtin::kSortDescending},
      {"SheetProtect", builtin::kProtectSheet},
  };
  for (const auto& [name, id] : kCommands) {
    if (name == ribbonId) return session.DoBuiltInControl(id);
  }
}

void DoBuiltInKey(Session& session, const KeyStroke& key) {
  if (key.name == "ESCAPE") return session.EndCutCopyMode();
  if (key.alt || key.shift) return;
  if (key.ctrl) {
    if (key.name == "c" || key.name == "C") return session.DoBuiltInControl(builtin::kCopy);
    if (key.name == "x" || key.name == "X") return session.DoBuiltInControl(builtin::kCut);
    if (key.name == "v" || key.name == "V") return session.DoBuiltInControl(builtin::kPaste);
    return;
  }
  if (key.name == "DELETE") return session.ClearSelection();
  // Enter pastes what was copied, once.
  const bool isEnter = key.name == "ENTER" || key.name == "RETURN";
  if (isEnter && session.IsCopying()) {
    session.DoBuiltInControl(builtin::kPaste);
    session.EndCutCopyMode();
  }
}

}  // namespace tolvane::shell
