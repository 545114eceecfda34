#pragma once

#include <string_view>
#include <vector>

#include "engine/model/Sheet.h"

namespace tolvane::embedded {

// What a protected sheet refuses; each check throws ApplicationDefined and does nothing on an unprotected one.

// Contents of these cells are to change: no locked one may be among them.
void RequireUnlocked(const engine::Sheet& sheet, const std::vector<engine::Rect>& areas);
// Something is to be done that the protection allows only by the flag of this name.
void RequireAllowed(const engine::Sheet& sheet, bool engine::SheetProtection::*flag, std::string_view what);
// Something that no flag allows.
void RequireUnprotected(const engine::Sheet& sheet, std::string_view what);

}  // namespace tolvane::embedded
