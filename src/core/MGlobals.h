#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "src/host/Application.h"
#include "src/host/Ribbon.h"

namespace tolvane::accounts {

// Of what kind the sheet in front is: rows of rngBookSheetsData counted from 0. The numbers are fixed; that table and
// the records of the books depend on them.
namespace kind {
inline constexpr int kNoBook = 0;
inline constexpr int kAccounts = 1;
inline constexpr int kBalanceSheet = 2;
inline constexpr int kIncomeStatement = 3;
inline constexpr int kAccountData = 4;  // one sheet for each account
inline constexpr int kAdjustments = 5;
inline constexpr int kLists = 6;
inline constexpr int kTechnical = 7;
inline constexpr int kSheetTemplate = 8;  // what an account's data sheet is copied from
inline constexpr int kBudgets = 9;
inline constexpr int kBreakdown = 10;
inline constexpr int kOther = 11;
}  // namespace kind

// One row of rngBookSheetsData: a kind of sheet.
struct TBookSheet {
  int lKind = 0;
  std::string sName;
  std::string sCodeName;  // empty for kinds that are not found by it
  std::string sMenuLabel;
  bool bMenuEnabled = false;
  std::string sGroup;  // a second key that a command's list of sheets may name
  std::string sImage;
};

// One row of rngCC: a command, whose number is the row's.
struct TCommandControl {
  std::string sCaption;  // with "&" before the access key
  std::string sRibbonID;
  std::string sImage;
  std::string sSheets;  // holds the code name or group of each kind of sheet that offers it
  std::string sScreenTip;
  std::string sSuperTip;
  bool bBeginGroup = false;
  bool bEnabled = true;
};

inline constexpr std::string_view kTitle = "Tolvane Accounts";  // of messages, and the name of the toolbar
inline constexpr std::string_view kSettingsApplication = "Tolvane";
inline constexpr std::string_view kSettingsSection = "Tolvane Accounts";

inline constexpr std::array<std::string_view, 12> gasMonths{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                            "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

// A sheet's protection that is held off; see StoredProtection.h.
struct TStoredProtection {
  host::Worksheet wksSheet;
  host::Protection objProtection;
  bool bStored = false;
  bool bWasProtected = false;
};

// What the whole add-in knows. Filled by the start, released by the shutdown.
struct MGlobals {
  host::Application gxlApp;
  bool gbRibbonExcel = false;  // version 12 or later: the ribbon; else toolbar and menus
  host::Workbook gwkbAddin;
  host::Worksheet gwksCommandBars, gwksData;  // of the add-in workbook
  std::string gsAddinPath;                    // its folder, with a separator at the end
  std::vector<TBookSheet> gaBookSheets;       // from 0
  std::vector<TCommandControl> gaCC;          // from 1: element 0 is none

  int genActiveSheetKind = kind::kNoBook;
  host::Workbook gwkbActive;  // the Accounts Book in front
  host::Worksheet gwksAccounts, gwksBalanceSheet, gwksIncomeStatement, gwksAdjustments, gwksLists, gwksTechnical,
      gwksSheetTemplate, gwksBudgets;  // of gwkbActive
  host::Worksheet gwksAccData;         // the account data sheet in front

  bool gbEventsEnabled = false;  // False while a command runs
  std::string gsCalculatedBook;  // the book whose reports are up to date; empty: a calculation is due
  bool gbHideToolbarWhenIdle = false;
  bool gbToolbarClosedInBook = false;
  bool gbHyperlinksRemoved = false;  // for printing; they must come back
  TStoredProtection gudtSortProtection;
  bool gbRehookKeys = false;
  bool gbShuttingDown = false;
  std::string gsAccountsBookTemplate, gsBreakdownTemplate;
  host::RibbonUI grxRibbon;
};

// The modes of the program that a command remembers to give back; see AppState.h.
struct SavedModes {
  std::optional<host::Calculation> mlSavedCalculation;
  host::ReferenceStyle mlSavedReferenceStyle = host::ReferenceStyle::A1;
};

// --- of the current add-in ------------------------------------------------------------------------------------------
MGlobals& Globals();
inline host::Application& gxlApp() {
  return Globals().gxlApp;
}
inline host::Workbook& gwkbActive() {
  return Globals().gwkbActive;
}
inline host::Workbook& gwkbAddin() {
  return Globals().gwkbAddin;
}
inline int& genActiveSheetKind() {
  return Globals().genActiveSheetKind;
}
inline std::string& gsCalculatedBook() {
  return Globals().gsCalculatedBook;
}
inline bool& gbEventsEnabled() {
  return Globals().gbEventsEnabled;
}

}  // namespace tolvane::accounts
