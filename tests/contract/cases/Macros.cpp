#include "tests/contract/cases/CaseFiles.h"

namespace tolvane::contract {
namespace {

using host::CellValue;
using host::Workbook;

constexpr std::string_view kRunPage = "learn.microsoft.com: Application.Run method (Excel)";
constexpr std::string_view kOnKeyPage = "learn.microsoft.com: Application.OnKey method (Excel)";
constexpr std::string_view kOnUndoPage = "learn.microsoft.com: Application.OnUndo method (Excel)";

// A macro of the add-in that counts its calls.
std::shared_ptr<int> Counter(HostUnderTest& t, std::string_view name) {
  auto calls = std::make_shared<int>(0);
  t.OfferMacro(t.addin(), name, [calls] {
    ++*calls;
    return CellValue();
  });
  return calls;
}

}  // namespace

// Macros, and how they are reached: Run, keys, the undo list.
std::vector<ContractCase> MacrosCases() {
  Cases cases("Macros");

  cases.Add("RunAMacro", {"Application.Run"}, kRunPage, [](HostUnderTest& t) {
    t.OfferMacro(t.addin(), "Answer", [] { return CellValue(42); });
    const auto app = t.application();
    EXPECT_EQ(app.Run("Answer"), 42);
    EXPECT_EQ(app.Run("answer"), 42);
    EXPECT_EQ(app.Run("'" + t.addin().Name() + "'!Answer"), 42);
    EXPECT_EQ(app.Run(t.addin().Name() + "!Answer"), 42);
  });

  cases.Add("RunAMacroOfABook", {"Application.Run"}, kRunPage, [](HostUnderTest& t) {
    const Workbook book = t.NewBook();
    book.SaveAs(t.PathFor("Joe's Accounts.xlsx"));
    t.OfferMacro(book, "Where", [] { return CellValue("in the book"); });
    EXPECT_EQ(t.application().Run("'Joe''s Accounts.xlsx'!Where"), "in the book");
  });

  cases.Add("AMacroThatIsNotThereIsRefused", {}, kPort, [](HostUnderTest& t) {
    const auto app = t.application();
    const Workbook book = t.NewBook();
    EXPECT_TRUE(Refused([&] { app.Run("NoSuchMacro"); }));
    EXPECT_TRUE(Refused([&] { app.Run("'" + book.Name() + "'!NoSuchMacro"); }));
    EXPECT_TRUE(Refused([&] { app.Run("'no such book.xlsx'!Answer"); }));
    EXPECT_TRUE(Refused([&] { app.Run(""); }));
  });

  cases.Add("AnAccountsBookIsConnected", {"Application.Run"}, kPort, [](HostUnderTest& t) {
    const auto app = t.application();
    const Workbook book = t.NewBook();
    const std::string macro = "'" + book.Name() + "'!IsConnected";
    EXPECT_TRUE(Refused([&] { app.Run(macro); }));
    book.Names().Add("setIsTolvaneAccountsBook", "=TRUE", false);
    EXPECT_EQ(app.Run(macro), true);
    const Workbook other = t.NewBook();
    other.Worksheets().Item(1).Names().Add("setIsTolvaneAccountsBook", "=TRUE");
    EXPECT_TRUE(Refused([&] { app.Run("'" + other.Name() + "'!IsConnected"); }));
  });

  cases.Add("AHookedKeyRunsItsMacro", {"Application.OnKey"}, kOnKeyPage, [](HostUnderTest& t) {
    const auto app = t.application();
    const auto calls = Counter(t, "Work");
    for (const char* key : {"^c", "+{INSERT}", "~", "^%{F5}", "{DEL}"}) {
      *calls = 0;
      app.OnKey(key, "Work");
      t.user().PressKey(key);
      EXPECT_EQ(*calls, 1) << key;
      app.OnKey(key);
      t.NewSheet()("A1").Select();
      t.user().PressKey(key);
      EXPECT_EQ(*calls, 1) << key;
    }
  });

  cases.Add("AKeyOfTheProgramsCopies", {"Application.OnKey"}, kMemory, [](HostUnderTest& t) {
    const auto app = t.application();
    const auto calls = Counter(t, "Work");
    const Sheet s = t.NewSheet();
    s("A1").Select();
    app.OnKey("^c", "Work");
    t.user().PressKey("^c");
    EXPECT_EQ(app.CutCopyMode(), host::CutCopyMode::None);
    app.OnKey("^c");
    t.user().PressKey("^c");
    EXPECT_EQ(app.CutCopyMode(), host::CutCopyMode::Copy);
    EXPECT_EQ(*calls, 1);
  });

  cases.Add("SentKeysArePressed", {"Application.SendKeys"}, "learn.microsoft.com: Application.SendKeys method (Excel)",
            [](HostUnderTest& t) {
              const auto app = t.application();
              const auto calls = Counter(t, "Work");
              app.OnKey("^m", "Work");
              app.SendKeys("^m");
              EXPECT_EQ(*calls, 1);
            });

  cases.Add("WhatIsNoKeyIsRefused", {}, kMemory, [](HostUnderTest& t) {
    const auto app = t.application();
    Counter(t, "Work");
    for (const char* key : {"", "^", "{NOSUCHKEY}", "{"}) {
      EXPECT_TRUE(Refused([&] { app.OnKey(key, "Work"); })) << key;
    }
  });

  cases.Add("OneEntryOnTheUndoList", {"Application.OnUndo"}, kOnUndoPage, [](HostUnderTest& t) {
    const auto app = t.application();
    const auto calls = Counter(t, "AccountsUndo");
    t.NewBook();
    EXPECT_EQ(t.user().UndoCaption(), "");
    EXPECT_FALSE(t.user().PressUndo());
    app.OnUndo("&Undo Delete Transactions", "AccountsUndo");
    EXPECT_EQ(t.user().UndoCaption(), "&Undo Delete Transactions");
    app.OnUndo("&Undo Paste", "AccountsUndo");
    EXPECT_EQ(t.user().UndoCaption(), "&Undo Paste");
    EXPECT_TRUE(t.user().PressUndo());
    EXPECT_EQ(*calls, 1);
    EXPECT_FALSE(t.user().PressUndo());
    EXPECT_EQ(*calls, 1);
  });

  cases.Add("AnEditTakesTheUndoEntryAway", {"Application.OnUndo"}, kPort, [](HostUnderTest& t) {
    const auto app = t.application();
    const auto calls = Counter(t, "AccountsUndo");
    const Sheet s = t.NewSheet();
    const std::function<void()> edits[] = {[&] { s("A1").SetValue(CellValue(1)); },
                                           [&] { t.user().Type(s("A1"), "2"); }, [&] { s("2:2").Insert(); }};
    for (const auto& edit : edits) {
      app.OnUndo("&Undo Paste", "AccountsUndo");
      edit();
      EXPECT_NE(t.user().UndoCaption(), "&Undo Paste");
      t.user().PressUndo();
      EXPECT_EQ(*calls, 0);
    }
    app.OnUndo("&Undo Paste", "AccountsUndo");
    EXPECT_EQ(s.Value("A1").kind(), CellValue::Kind::Number);
    EXPECT_EQ(t.user().UndoCaption(), "&Undo Paste");
  });

  cases.Add("AnUndoMacroMayPutTheNextEntry", {"Application.OnUndo"}, kPort, [](HostUnderTest& t) {
    const auto app = t.application();
    const Sheet s = t.NewSheet();
    t.OfferMacro(t.addin(), "AccountsUndo", [&] {
      s("A1").SetValue(CellValue());
      app.OnUndo("&Undo Another", "AccountsUndo");
      return CellValue();
    });
    s("A1").SetValue(CellValue(1));
    app.OnUndo("&Undo One", "AccountsUndo");
    EXPECT_TRUE(t.user().PressUndo());
    EXPECT_EQ(t.user().UndoCaption(), "&Undo Another");
  });

  cases.Add("RepeatIsSetAndCleared", {"Application.OnRepeat"},
            "learn.microsoft.com: Application.OnRepeat method (Excel)", [](HostUnderTest& t) {
              Counter(t, "Again");
              EXPECT_NO_THROW(t.application().OnRepeat("&Repeat", "Again"));
              EXPECT_NO_THROW(t.application().OnRepeat("", ""));
            });

  return std::move(cases).Take();
}

}  // namespace tolvane::contract
