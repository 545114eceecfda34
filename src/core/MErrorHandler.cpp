#include "src/core/MErrorHandler.h"

#include <fmt/format.h>

#include <new>

#include "src/core/AddIn.h"
#include "src/core/ComponentVersion.h"
#include "src/core/Dates.h"
#include "src/host/Errors.h"

namespace tolvane::accounts {

namespace {

constexpr std::string_view kEscKey = "27";
constexpr int kInternalError = 51;
// What the macro language says of a raised number that has no description.
constexpr const char* kNoDescription = "Application-defined or object-defined error";

struct Caught {
  int number = kInternalError;
  std::string description;
};

// What is being handled right now, as a number and a description.
Caught CurrentError() {
  try {
    throw;
  } catch (const AccountsError& error) {
    return {error.number(), error.what()};
  } catch (const host::HostError& error) {
    return {static_cast<int>(error.number()), error.what()};
  } catch (const std::bad_alloc&) {
    return {static_cast<int>(host::ErrorNumber::OutOfMemory), "Out of memory"};
  } catch (const std::exception& error) {
    return {kInternalError, std::string("Internal error: ") + error.what()};
  } catch (...) {
    return {kInternalError, "Internal error"};
  }
}

// A file has one line for one error, whatever its description holds.
std::string OneLine(std::string_view text) {
  std::string line;
  for (const char c : text) line.push_back(static_cast<unsigned char>(c) < 0x20 ? ' ' : c);
  return line;
}

void Log(std::string_view sModule, std::string_view sProc, std::string sFile, int lErr, const std::string& sText,
         bool bEntryPoint) {
  const MGlobals& globals = Globals();
  std::string version;
  // A program that is going down leaves the line shorter rather than none.
  Ignoring([&] {
    if (sFile.empty()) sFile = globals.gxlApp.ThisWorkbook().Name();
  });
  Ignoring([&] { version = globals.gxlApp.Version(); });
  std::string sNow;
  Ignoring([&] { sNow = sLogTime(globals.gxlApp.User().Now()); });
  const std::string line = fmt::format("{}  E{}A{}  [{}]{}.{}, Error {}: {}", sNow, version, sComponentVersion(), sFile,
                                       sModule, sProc, lErr, OneLine(sText));
  Ignoring([&] {
    const host::User user = globals.gxlApp.User();
    user.AppendLine(globals.gsAddinPath + "Error.log", line);
    if (bEntryPoint) user.AppendLine(globals.gsAddinPath + "Error.log", "");
  });
}

}  // namespace

void Require(bool bSucceeded) {
  if (!bSucceeded) throw AccountsError(kCallFailed, "");
}

void RaiseMessage(const std::string& sMessage) {
  throw AccountsError(kUserMessage, sMessage);
}

void RaiseInterrupt() {
  throw AccountsError(kInterrupted, host::kUserInterruptText);
}

bool Ignoring(const std::function<void()>& work) noexcept {
  try {
    work();
    return true;
  } catch (...) {
    return false;
  }
}

bool bGuarded(std::string_view sModule, std::string_view sProc, const std::function<void()>& work,
              const ClosingSteps& closing, EntryPoint entryPoint) {
  bool bSucceeded = true;
  const auto report = [&] {
    Caught caught = CurrentError();
    if (caught.number < kCallFailed) caught.description.append(" (").append(sProc).append(")");
    bSucceeded = bCentralError(sModule, sProc, "", entryPoint == EntryPoint::Yes, caught.number, caught.description);
  };
  try {
    work();
  } catch (...) {
    report();
  }
  for (const auto& step : closing) {
    try {
      step();
    } catch (...) {
      // After a failure that was reported, one more message would only hide the cause.
      if (bSucceeded) report();
    }
  }
  return bSucceeded;
}

bool Entry(std::string_view sModule, std::string_view sProc, const std::function<void()>& work,
           const ClosingSteps& closing) {
  return bGuarded(sModule, sProc, work, closing, EntryPoint::Yes);
}

bool bCentralError(std::string_view sModule, std::string_view sProc, std::string_view sFile, bool bEntryPoint,
                   int lErrorNumber, const std::string& sDescription) noexcept {
  try {
    ErrorInFlight& error = AddIn::Current().error;
    int lErr = lErrorNumber;
    Ignoring([&] {
      if (sPeekKey() == kEscKey) lErr = kInterrupted;
    });
    if (lErr == kInterrupted || error.mlErrorNumber == 0) {
      error.msErrorText = sDescription.empty() ? kNoDescription : sDescription;
      error.mlErrorNumber = lErr;
    }
    if (error.mlErrorNumber != kUserMessage && error.mlErrorNumber != kInterrupted) {
      Log(sModule, sProc, std::string(sFile), lErr, error.msErrorText, bEntryPoint);
    }
    if (!bEntryPoint) return false;
    // Forgotten before it is shown: what happens while the message is up is another error.
    const ErrorInFlight shown = std::exchange(error, ErrorInFlight{});
    if (shown.mlErrorNumber == kInterrupted) return false;
    Ignoring([] { gxlApp().SetScreenUpdating(true); });
    Ignoring([&] { gxlApp().User().MsgBox(shown.msErrorText, host::message::kCritical, kTitle); });
  } catch (...) {
    // Out of memory while reporting: there is nothing left to report with.
  }
  return false;
}

void CheckUserInterrupt(std::string_view sPrompt) {
  const host::Application app = gxlApp();
  if (!app.User().EscPressed()) return;
  sPeekKey();
  const bool bScreenUpdating = app.ScreenUpdating();
  app.SetScreenUpdating(true);
  const auto answer = app.User().MsgBox(sPrompt, host::message::kYesNo + host::message::kQuestion, kTitle);
  if (answer == host::MessageResult::Yes) RaiseInterrupt();
  app.SetScreenUpdating(bScreenUpdating);
}

std::string sPeekKey() {
  const auto key = gxlApp().User().PeekKey();
  return key ? std::to_string(*key) : std::string();
}

}  // namespace tolvane::accounts
