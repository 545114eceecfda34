#pragma once

#include "hosts/libreoffice/CalcProgram.h"

namespace tolvane::libreoffice {

// What controls of the spreadsheet program do by themselves, as far as an add-in can meet them; others do nothing.
void DoBuiltInControl(CalcProgram& program, int controlId);

}  // namespace tolvane::libreoffice
