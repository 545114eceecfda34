#include "tests/contract/cases/CaseFiles.h"

namespace tolvane::contract {
namespace {

using host::Calculation;
using host::CancelKey;
using host::CellBlock;
using host::CellValue;
using host::Cursor;
using host::ErrorNumber;

constexpr std::string_view kApplicationPage = "learn.microsoft.com: Application object (Excel)";
constexpr std::string_view kCalculationPage = "learn.microsoft.com: Application.Calculation property (Excel)";
constexpr std::string_view kCancelKeyPage = "learn.microsoft.com: Application.EnableCancelKey property (Excel)";

}  // namespace

std::vector<ContractCase> ApplicationStateCases() {
  Cases cases("ApplicationState");

  cases.Add("Version", {"Application.Version", "Application.Caption"}, kPort, [](HostUnderTest& t) {
    const std::string version = t.application().Version();
    ASSERT_GE(version.size(), 2u);
    EXPECT_GE(std::stoi(version.substr(0, 2)), 8);
    EXPECT_NE(t.application().Caption(), "");
  });

  cases.Add("StatusBar", {"Application.StatusBar"}, "learn.microsoft.com: Application.StatusBar property (Excel)",
            [](HostUnderTest& t) {
              const auto app = t.application();
              EXPECT_EQ(app.StatusBar(), "");
              app.SetStatusBar("Calculating income statement...");
              EXPECT_EQ(app.StatusBar(), "Calculating income statement...");
              app.SetStatusBar(std::nullopt);
              EXPECT_EQ(app.StatusBar(), "");
            });

  cases.Add("Switches", {"Application.ScreenUpdating", "Application.EnableEvents", "Application.DisplayAlerts"},
            kApplicationPage, [](HostUnderTest& t) {
              const auto app = t.application();
              for (const bool on : {false, true}) {
                app.SetScreenUpdating(on);
                EXPECT_EQ(app.ScreenUpdating(), on);
                app.SetEnableEvents(on);
                EXPECT_EQ(app.EnableEvents(), on);
                app.SetDisplayAlerts(on);
                EXPECT_EQ(app.DisplayAlerts(), on);
              }
            });

  cases.Add("StateAfterTheStart",
            {"Application.ScreenUpdating", "Application.EnableEvents", "Application.DisplayAlerts",
             "Application.Cursor", "Application.Calculation", "Application.ReferenceStyle"},
            kMemory, [](HostUnderTest& t) {
              const auto app = t.application();
              EXPECT_TRUE(app.ScreenUpdating());
              EXPECT_TRUE(app.EnableEvents());
              EXPECT_TRUE(app.DisplayAlerts());
              EXPECT_EQ(app.Cursor(), Cursor::Default);
              EXPECT_EQ(app.Calculation(), Calculation::Automatic);
              EXPECT_EQ(app.ReferenceStyle(), host::ReferenceStyle::A1);
            });

  cases.Add("CursorAndReferenceStyle", {"Application.Cursor", "Application.ReferenceStyle"}, kApplicationPage,
            [](HostUnderTest& t) {
              const auto app = t.application();
              app.SetCursor(Cursor::Wait);
              EXPECT_EQ(app.Cursor(), Cursor::Wait);
              app.SetCursor(Cursor::Default);
              EXPECT_EQ(app.Cursor(), Cursor::Default);
              app.SetReferenceStyle(host::ReferenceStyle::R1C1);
              EXPECT_EQ(app.ReferenceStyle(), host::ReferenceStyle::R1C1);
              app.SetReferenceStyle(host::ReferenceStyle::A1);
              EXPECT_EQ(app.ReferenceStyle(), host::ReferenceStyle::A1);
            });

  cases.Add("ManualCalculationWaits", {"Application.Calculation", "Worksheet.Calculate"}, kCalculationPage,
            [](HostUnderTest& t) {
              const auto app = t.application();
              const Sheet s = t.NewSheet();
              s.Put("A1:B1", CellBlock{{1, "=A1*2"}});
              app.SetCalculation(Calculation::Manual);
              EXPECT_EQ(app.Calculation(), Calculation::Manual);
              s.Put("A1", 5);
              EXPECT_EQ(s.Value("B1"), 2);
              s.Calculate();
              EXPECT_EQ(s.Value("B1"), 10);
              s.Put("A1", 6);
              t.user().PressCalculate();
              EXPECT_EQ(s.Value("B1"), 12);
            });

  cases.Add("AFormulaIsCalculatedWhenWrittenEvenInManualMode", {"Range.Formula"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    t.application().SetCalculation(Calculation::Manual);
    s.Put("A1", 4);
    s.Put("B1", "=A1*2");
    EXPECT_EQ(s.Value("B1"), 8);
  });

  cases.Add("CalculateTakesOneSheetOnly", {"Worksheet.Calculate"},
            "learn.microsoft.com: Worksheet.Calculate method (Excel)", [](HostUnderTest& t) {
              const Sheet one = t.NewSheet();
              const Sheet two(one.Parent().Worksheets().Add());
              const std::string source = "='" + one.Name() + "'!A1*2";
              one.Put("A1:B1", CellBlock{{1, "=A1*2"}});
              two.Put("A1", host::CellValue(source));
              t.application().SetCalculation(Calculation::Manual);
              one.Put("A1", 5);
              one.Calculate();
              EXPECT_EQ(one.Value("B1"), 10);
              EXPECT_EQ(two.Value("A1"), 2);
            });

  cases.Add("BackToAutomaticCalculatesWhatIsStale", {"Application.Calculation"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s.Put("A1:B1", CellBlock{{1, "=A1*2"}});
    t.application().SetCalculation(Calculation::Manual);
    s.Put("A1", 5);
    t.application().SetCalculation(Calculation::Automatic);
    EXPECT_EQ(s.Value("B1"), 10);
  });

  cases.Add("TheCancelKeyRaisesInHandlerMode", {"Application.EnableCancelKey"}, kCancelKeyPage, [](HostUnderTest& t) {
    const auto app = t.application();
    const Sheet s = t.NewSheet();
    app.SetEnableCancelKey(CancelKey::ErrorHandler);
    EXPECT_EQ(app.EnableCancelKey(), CancelKey::ErrorHandler);
    t.user().PressCancelKey();
    EXPECT_TRUE(Raises(ErrorNumber::UserInterrupt, [&] { s("A1").SetValue(CellValue(1)); }));
    EXPECT_TRUE(s.Value("A1").isEmpty());
    s("A1").SetValue(CellValue(2));
    EXPECT_EQ(s.Value("A1"), 2);
  });

  cases.Add("TheCancelKeyWaitsForItsCall", {"Application.EnableCancelKey"}, kPort, [](HostUnderTest& t) {
    const auto app = t.application();
    app.SetEnableCancelKey(CancelKey::ErrorHandler);
    t.user().PressCancelKey(3);
    app.Version();
    app.Version();
    EXPECT_TRUE(Raises(ErrorNumber::UserInterrupt, [&] { app.Version(); }));
    EXPECT_NE(app.Version(), "");
  });

  cases.Add("TheCancelKeyRaisesInNoOtherMode", {"Application.EnableCancelKey", "User.EscPressed"}, kPort,
            [](HostUnderTest& t) {
              const auto app = t.application();
              for (const CancelKey mode : {CancelKey::Disabled, CancelKey::Interrupt}) {
                app.SetEnableCancelKey(mode);
                EXPECT_EQ(app.EnableCancelKey(), mode);
                t.user().PressCancelKey();
                EXPECT_NO_THROW(app.Version());
                EXPECT_TRUE(app.User().EscPressed());
                EXPECT_FALSE(app.User().EscPressed());
              }
            });

  cases.Add("TheCancelKeyIsTheProgramsAgainAfterAMacro", {"Application.EnableCancelKey", "Application.OnKey"}, kPort,
            [](HostUnderTest& t) {
              const auto app = t.application();
              CancelKey during = CancelKey::Interrupt;
              t.OfferMacro(t.addin(), "Work", [&] {
                app.SetEnableCancelKey(CancelKey::ErrorHandler);
                during = app.EnableCancelKey();
                return CellValue();
              });
              app.OnKey("^m", "Work");
              t.user().PressKey("^m");
              EXPECT_EQ(during, CancelKey::ErrorHandler);
              EXPECT_EQ(app.EnableCancelKey(), CancelKey::Interrupt);
            });

  cases.Add("WhatTheUserTypesIsRecognised", {"Range.Value", "Range.Formula"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    const std::pair<const char*, CellValue> typed[] = {
        {"12.5", 12.5}, {"-3", -3},     {"2009-03-15", 39887},       {"text", "text"},
        {"TRUE", true}, {"00123", 123}, {"2009 Jan x", "2009 Jan x"}};
    for (const auto& [text, value] : typed) {
      t.user().Type(s("A1"), text);
      EXPECT_EQ(s.Value("A1"), value) << text;
    }
    t.user().Type(s("A2"), "=1+2");
    EXPECT_EQ(s.Value("A2"), 3);
    EXPECT_EQ(s.Formula("A2"), "=1+2");
    t.user().Type(s("A3"), "00123", true);
    EXPECT_EQ(s.Value("A3"), "00123");
    t.user().Type(s("A1"), "");
    EXPECT_TRUE(s.Value("A1").isEmpty());
  });

  cases.Add("TypingAFormulaThatDoesNotParseChangesNothing", {"Range.Value"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s.Put("A1", 1);
    EXPECT_TRUE(Refused([&] { t.user().Type(s("A1"), "=1+"); }));
    EXPECT_EQ(s.Value("A1"), 1);
  });

  cases.Add("TheDeleteKeyClearsWhatIsGiven", {"Range.Value"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1:B2").SetValue(CellValue(1));
    t.user().PressDelete(s("A1:A2"));
    EXPECT_EQ(s("A1:B2").Value(), (CellBlock{{CellValue(), 1}, {CellValue(), 1}}));
  });

  return std::move(cases).Take();
}

}  // namespace tolvane::contract
