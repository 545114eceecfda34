#include "src/core/AppState.h"

#include "src/core/AddIn.h"
#include "src/core/MErrorHandler.h"

namespace tolvane::accounts {

void InitCommand(bool bKeepCalculation) {
  const host::Application app = gxlApp();
  SavedModes& saved = AddIn::Current().savedModes;
  app.SetCursor(host::Cursor::Default);
  app.SetDisplayAlerts(false);
  app.SetEnableEvents(false);
  app.SetEnableCancelKey(host::CancelKey::ErrorHandler);
  if (!bKeepCalculation && !saved.mlSavedCalculation) {
    saved.mlSavedCalculation = app.Calculation();
    app.SetCalculation(host::Calculation::Manual);
  }
  saved.mlSavedReferenceStyle = app.ReferenceStyle();
  gbEventsEnabled() = false;
}

void ResetAppState(bool bKeepCalculation, bool bKeepScreenOff) {
  const host::Application app = gxlApp();
  AddIn& addIn = AddIn::Current();
  Ignoring([] { sPeekKey(); });
  Ignoring([&] { app.SetStatusBar(std::nullopt); });
  if (!bKeepCalculation) {
    const auto mode = addIn.savedModes.mlSavedCalculation.value_or(host::Calculation::Automatic);
    addIn.savedModes.mlSavedCalculation.reset();
    Ignoring([&] { app.SetCalculation(mode); });
  }
  Ignoring([&] {
    if (addIn.seams.SelectionAction && app.Selection().IsRange()) {
      addIn.seams.SelectionAction(app.ActiveSheet(), app.Selection().Range());
    }
  });
  if (!bKeepScreenOff) Ignoring([&] { app.SetScreenUpdating(true); });
  Ignoring([&] { app.SetDisplayAlerts(true); });
  Ignoring([&] { app.SetEnableEvents(true); });
  Ignoring([&] { app.SetEnableCancelKey(host::CancelKey::Interrupt); });
  Ignoring([&] { app.SetCursor(host::Cursor::Default); });
  Ignoring([&] { app.SetReferenceStyle(addIn.savedModes.mlSavedReferenceStyle); });
  gbEventsEnabled() = true;
}

void SaveScreenUpdating(bool& bSaved) {
  bSaved = gxlApp().ScreenUpdating();
  gxlApp().SetScreenUpdating(false);
}

void RestoreScreenUpdating(bool bSaved) {
  gxlApp().SetScreenUpdating(bSaved);
}

}  // namespace tolvane::accounts
