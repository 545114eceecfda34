#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "src/core/ErrorInFlight.h"

namespace tolvane::accounts {

// All failure takes one road. A routine that can fail runs its work under bGuarded and returns whether it succeeded;
// its caller says Require(...) and so fails too, up to the entry point of the user's action, where the first
// description is shown, once. Each level leaves a line in "Error.log" beside the add-in.

// A caller's reaction to False: raises 9997.
void Require(bool bSucceeded);
// Raises 9998: the text is shown to the user as it stands.
[[noreturn]] void RaiseMessage(const std::string& sMessage);
// Raises 18: the action ends without a message.
[[noreturn]] void RaiseInterrupt();

// Which road an action takes at this level: on to the caller, or to the user.
enum class EntryPoint : bool { No = false, Yes = true };

// Steps that put things back. They run after success and, when the work failed, after the report; each runs although an
// earlier one has failed.
using ClosingSteps = std::vector<std::function<void()>>;

// Runs the work of a routine. Whatever comes out of it is reported with module and routine. False when the work failed,
// or a closing step after work that succeeded.
[[nodiscard]] bool bGuarded(std::string_view sModule, std::string_view sProc, const std::function<void()>& work,
                            const ClosingSteps& closing = {}, EntryPoint entryPoint = EntryPoint::No);
// The same at the entry point of a user's action: nobody is left to tell.
bool Entry(std::string_view sModule, std::string_view sProc, const std::function<void()>& work,
           const ClosingSteps& closing = {});
// Runs something whose failure must never disturb; true when it did not fail.
bool Ignoring(const std::function<void()>& work) noexcept;

// Takes note of an error and logs it; at the entry point shows it, once, and forgets it. An Esc key that waits turns
// any error into an interruption. Always False. Never fails.
bool bCentralError(std::string_view sModule, std::string_view sProc, std::string_view sFile, bool bEntryPoint,
                   int lErrorNumber, const std::string& sDescription) noexcept;

// Polled in long loops: when Esc was pressed, asks `sPrompt`, and raises 18 on Yes.
void CheckUserInterrupt(std::string_view sPrompt);
inline constexpr std::string_view kInterruptOperation = "Interrupt the operation?";
inline constexpr std::string_view kInterruptCalculation = "Interrupt the calculation?";
inline constexpr std::string_view kInterruptDeletion = "Interrupt deleting rows?";
inline constexpr int kRowsBetweenPolls = 1000;

// Takes one waiting key press away: its virtual key code in decimal ("27" is Esc); empty when none waits.
std::string sPeekKey();

}  // namespace tolvane::accounts
