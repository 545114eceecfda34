#include "tests/contract/cases/CaseFiles.h"

namespace tolvane::contract {
namespace {

using host::Window;
using host::Workbook;

constexpr std::string_view kWindowPage = "learn.microsoft.com: Window object (Excel)";
constexpr std::string_view kSelectPage = "learn.microsoft.com: Range.Select method (Excel)";

Window WindowOf(HostUnderTest& t) {
  return t.application().ActiveWindow();
}

}  // namespace

// Windows and what is selected in them.
std::vector<ContractCase> WindowsCases() {
  Cases cases("Windows");

  cases.Add("EveryBookHasAWindow", {"Workbook.Windows", "Application.ActiveWindow"}, kMemory, [](HostUnderTest& t) {
    const Workbook one = t.NewBook();
    t.NewBook();
    ASSERT_EQ(one.Windows().size(), 1u);
    one.Windows()[0].SetZoom(80);
    EXPECT_EQ(WindowOf(t).Zoom(), 100);
    one.Activate();
    EXPECT_EQ(WindowOf(t).Zoom(), 80);
  });

  cases.Add("ZoomWithinItsLimits", {"Window.Zoom"}, "learn.microsoft.com: Window.Zoom property (Excel)",
            [](HostUnderTest& t) {
              t.NewBook();
              const Window window = WindowOf(t);
              EXPECT_EQ(window.Zoom(), 100);
              for (const int zoom : {10, 85, 400}) {
                window.SetZoom(zoom);
                EXPECT_EQ(window.Zoom(), zoom);
              }
              for (const int zoom : {9, 401, 0, -1}) EXPECT_TRUE(Refused([&] { window.SetZoom(zoom); })) << zoom;
              EXPECT_EQ(window.Zoom(), 400);
            });

  cases.Add("Scrolled", {"Window.ScrollRow", "Window.ScrollColumn", "Window.VisibleRange"}, kMemory,
            [](HostUnderTest& t) {
              const Sheet s = t.NewSheet();
              const Window window = WindowOf(t);
              EXPECT_EQ(window.ScrollRow(), 1);
              window.SetScrollRow(50);
              window.SetScrollColumn(4);
              EXPECT_EQ(window.ScrollRow(), 50);
              EXPECT_EQ(window.ScrollColumn(), 4);
              EXPECT_EQ(window.VisibleRange().Row(), 50);
              EXPECT_EQ(window.VisibleRange().Column(), 4);
              EXPECT_TRUE(window.VisibleRange().Parent() == s);
              EXPECT_TRUE(Refused([&] { window.SetScrollRow(0); }));
              EXPECT_TRUE(Refused([&] { window.SetScrollColumn(0); }));
              EXPECT_TRUE(Refused([&] { window.SetScrollRow(s.Rows().Count() + 1); }));
            });

  cases.Add("FrozenPanes", {"Window.SplitRow", "Window.SplitColumn", "Window.FreezePanes"},
            "learn.microsoft.com: Window.FreezePanes property (Excel)", [](HostUnderTest& t) {
              t.NewBook();
              const Window window = WindowOf(t);
              EXPECT_FALSE(window.FreezePanes());
              window.SetSplitRow(3);
              window.SetSplitColumn(1);
              window.SetFreezePanes(true);
              EXPECT_TRUE(window.FreezePanes());
              EXPECT_EQ(window.SplitRow(), 3);
              EXPECT_EQ(window.SplitColumn(), 1);
              window.SetScrollRow(20);
              EXPECT_EQ(window.VisibleRange().Row(), 20);
              window.SetFreezePanes(false);
              EXPECT_FALSE(window.FreezePanes());
            });

  cases.Add("Gridlines", {"Window.DisplayGridlines"}, kWindowPage, [](HostUnderTest& t) {
    t.NewBook();
    EXPECT_TRUE(WindowOf(t).DisplayGridlines());
    WindowOf(t).SetDisplayGridlines(false);
    EXPECT_FALSE(WindowOf(t).DisplayGridlines());
  });

  cases.Add("EverySheetHasItsOwnView", {"Window.Zoom", "Window.ScrollRow", "Window.ActiveCell"}, kPort,
            [](HostUnderTest& t) {
              const Sheet one = t.NewSheet();
              const Window window = WindowOf(t);
              one("B2").Select();
              window.SetZoom(80);
              window.SetScrollRow(9);
              const Sheet two(one.Parent().Worksheets().Add());
              EXPECT_EQ(window.Zoom(), 100);
              EXPECT_EQ(window.ScrollRow(), 1);
              EXPECT_EQ(window.ActiveCell().Address(), "$A$1");
              two("D4").Select();
              one.Activate();
              EXPECT_EQ(window.Zoom(), 80);
              EXPECT_EQ(window.ScrollRow(), 9);
              EXPECT_EQ(window.ActiveCell().Address(), "$B$2");
            });

  cases.Add("SelectedRanges", {"Range.Select", "Selection.IsRange", "Selection.Range", "Application.ActiveCell"},
            kSelectPage, [](HostUnderTest& t) {
              const auto app = t.application();
              const Sheet s = t.NewSheet();
              s("C3:D4,F6").Select();
              EXPECT_TRUE(app.Selection().IsRange());
              EXPECT_EQ(app.Selection().Range().Address(), "$C$3:$D$4,$F$6");
              EXPECT_EQ(app.ActiveCell().Row(), 3);
              EXPECT_TRUE(app.ActiveCell().Parent() == s);
              s("5:6").Select();
              EXPECT_EQ(app.Selection().Range().Address(), "$5:$6");
              EXPECT_EQ(app.ActiveCell().Address(), "$A$5");
            });

  cases.Add("OnlyTheActiveSheetTakesASelection", {"Range.Select"}, kPort, [](HostUnderTest& t) {
    const Sheet one = t.NewSheet();
    const Sheet two(one.Parent().Worksheets().Add());
    two("B2").Select();
    EXPECT_TRUE(Refused([&] { one("C3").Select(); }));
    EXPECT_TRUE(Refused([&] { one("C3").Activate(); }));
    EXPECT_EQ(t.application().ActiveCell().Address(), "$B$2");
    t.NewBook();
    EXPECT_TRUE(Refused([&] { two("C3").Select(); }));
  });

  cases.Add("ActivatingACellWithinTheSelectionKeepsIt", {"Range.Activate", "Application.ActiveCell"},
            "learn.microsoft.com: Range.Activate method (Excel)", [](HostUnderTest& t) {
              const auto app = t.application();
              const Sheet s = t.NewSheet();
              s("A1:C3").Select();
              s("B2").Activate();
              EXPECT_EQ(app.ActiveCell().Address(), "$B$2");
              EXPECT_EQ(app.Selection().Range().Address(), "$A$1:$C$3");
              s("E5").Activate();
              EXPECT_EQ(app.ActiveCell().Address(), "$E$5");
              EXPECT_EQ(app.Selection().Range().Address(), "$E$5");
            });

  cases.Add("TheSelectionFollowsInsertedRows", {"Range.Select", "Selection.Range"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("B5").Select();
    s("B2").SetValue(host::CellValue(1));
    EXPECT_EQ(t.application().Selection().Range().Address(), "$B$5");
    const host::Range selected = t.application().Selection().Range();
    s("1:2").Insert();
    EXPECT_EQ(selected.Address(), "$B$7");
  });

  cases.Add("TheUserChangesTheFront", {"Application.ActiveSheet", "Application.ActiveWorkbook"}, kPort,
            [](HostUnderTest& t) {
              const Sheet one = t.NewSheet();
              const Sheet two(one.Parent().Worksheets().Add());
              t.user().ActivateSheet(one);
              EXPECT_TRUE(t.application().ActiveSheet() == one);
              t.NewBook();
              t.user().ActivateWorkbook(one.Parent());
              EXPECT_TRUE(t.application().ActiveWorkbook() == one.Parent());
              t.user().Select(one("C3"));
              EXPECT_EQ(t.application().ActiveCell().Address(), "$C$3");
            });

  return std::move(cases).Take();
}

}  // namespace tolvane::contract
