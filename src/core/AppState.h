#pragma once

namespace tolvane::accounts {

// How a command takes over the spreadsheet program and gives it back.

// Events off, calculation manual unless it is to be kept, the cancel key trapped.
void InitCommand(bool bKeepCalculation);
// The counterpart, at the end of each command, with the same bKeepCalculation. Never fails: each step is taken whatever
// became of the one before.
void ResetAppState(bool bKeepCalculation, bool bKeepScreenOff);

// A quiet screen within routines that call each other: the caller's state survives.
void SaveScreenUpdating(bool& bSaved);
void RestoreScreenUpdating(bool bSaved);

}  // namespace tolvane::accounts
