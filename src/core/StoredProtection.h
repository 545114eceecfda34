#pragma once

#include "src/core/MGlobals.h"

namespace tolvane::accounts {

// Lifts a sheet's protection for a while. What it allows is remembered, and given back with it; a sheet that was not
// protected stays so.
void UnprotectStored(const host::Worksheet& wksSheet, TStoredProtection& udtProt);
void ProtectStored(TStoredProtection& udtProt);

// Protects a sheet as its kind asks for, without a password; nothing when it is protected already, or of a kind that
// never is.
void ProtectSheet(const host::Worksheet& wksSheet, int lKind);

}  // namespace tolvane::accounts
