#pragma once

#include <string_view>

#include "hosts/libreoffice/CalcProgram.h"
#include "hosts/shell/KeyNotation.h"

namespace tolvane::libreoffice {

// What commands of the spreadsheet program do by themselves, as far as an add-in can meet them; others do nothing.
void DoBuiltInControl(CalcProgram& program, int controlId);
void DoBuiltInCommand(CalcProgram& program, std::string_view ribbonId);
void DoBuiltInKey(CalcProgram& program, const shell::KeyStroke& key);

}  // namespace tolvane::libreoffice
