#include <stdexcept>

#include "src/host/Form.h"
#include "tests/contract/cases/CaseFiles.h"
#include "tests/contract/cases/EventLog.h"

namespace tolvane::contract {
namespace {

using host::CellBlock;
using host::CellValue;
using host::Workbook;
using Lines = std::vector<std::string>;

// A sheet called S.
Sheet SheetS(HostUnderTest& t) {
  const Sheet s = t.NewSheet();
  s.SetName("S");
  return s;
}

}  // namespace

std::vector<ContractCase> EventsCases() {
  Cases cases("Events");

  cases.Add("OneWriteIsOneChange", {"Application.Advise", "Range.Value", "Range.Formula"}, kMemory,
            [](HostUnderTest& t) {
              const Sheet s = SheetS(t);
              EventLog log(t.application());
              s("A1:B2").SetValue(CellBlock{{1, 2}, {3, 4}});
              EXPECT_EQ(log.Take(), (Lines{"change S $A$1:$B$2"}));
              s("C3").SetFormula(CellValue("text"));
              EXPECT_EQ(log.Take(), (Lines{"change S $C$3"}));
              s("A1,C3").SetValue(CellValue(1));
              EXPECT_EQ(log.Take(), (Lines{"change S $A$1,$C$3"}));
              s("A1").ClearContents();
              EXPECT_EQ(log.Take("change"), (Lines{"change S $A$1"}));
            });

  cases.Add("AnAddinIsToldOfBeingInstalledAndUninstalled", {"Application.Advise"}, kMemory, [](HostUnderTest& t) {
    EventLog log(t.application());
    const std::string name = t.addin().Name();
    t.user().InstallAddin(t.addin(), true);
    t.user().InstallAddin(t.addin(), false);
    EXPECT_EQ(log.Take(), (Lines{"install " + name, "uninstall " + name}));
    t.application().SetEnableEvents(false);
    t.user().InstallAddin(t.addin(), true);
    EXPECT_EQ(log.Take(), Lines{});
    const Workbook book = t.NewBook();
    EXPECT_TRUE(Refused([&] { t.user().InstallAddin(book, true); }));
  });

  cases.Add("ChangeThenCalculate", {"Range.Value"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = SheetS(t);
    s.Put("B1", "=A1*2");
    EventLog log(t.application());
    s("A1").SetValue(CellValue(1));
    EXPECT_EQ(log.Take(), (Lines{"change S $A$1", "calculate S"}));
    t.user().Type(s("A1"), "2");
    EXPECT_EQ(log.Take(), (Lines{"change S $A$1", "calculate S"}));
  });

  cases.Add("TheNewResultIsThereWhenTheChangeIsTold", {"Range.Value"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = SheetS(t);
    s.Put("B1", "=A1*2");
    EventLog log(t.application());
    CellValue seen;
    log.then = [&](const std::string& line) {
      if (line.starts_with("change")) seen = s.Value("B1");
    };
    s("A1").SetValue(CellValue(21));
    EXPECT_EQ(seen, 42);
  });

  cases.Add("LooksAndNamesAreNoChanges", {"Font.Bold", "Names.Add"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = SheetS(t);
    EventLog log(t.application());
    s("A1").Font().SetBold(true);
    s("A1").SetNumberFormat("@");
    s("1:1").SetRowHeight(30);
    s.Names().Add("own", "=1");
    EXPECT_EQ(log.Take("change"), Lines{});
  });

  cases.Add("InsertedAndDeletedRowsAreChanges", {"Range.Insert", "Range.Delete"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = SheetS(t);
    s("A1:A5").SetValue(CellValue(1));
    EventLog log(t.application());
    s("2:3").Insert();
    EXPECT_EQ(log.Take("change"), (Lines{"change S $2:$3"}));
    s("2:3").Delete();
    EXPECT_EQ(log.Take("change"), (Lines{"change S $2:$3"}));
  });

  cases.Add("PastingIsOneChange", {"Range.PasteSpecial"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = SheetS(t);
    s("A1:A2").SetValue(CellValue(1));
    s("A1:A2").Copy();
    EventLog log(t.application());
    s("C1").PasteSpecial(host::PasteType::Values);
    EXPECT_EQ(log.Take("change"), (Lines{"change S $C$1:$C$2"}));
  });

  cases.Add("WhatTheUserDoesIsTold", {"Application.Advise"}, kPort, [](HostUnderTest& t) {
    const Sheet s = SheetS(t);
    const Sheet other(s.Parent().Worksheets().Add());
    other.SetName("O");
    EventLog log(t.application());
    t.user().ActivateSheet(s);
    EXPECT_EQ(log.Take("activate"), (Lines{"activate S"}));
    t.user().Select(s("B2:C3"));
    EXPECT_EQ(log.Take(), (Lines{"select S $B$2:$C$3"}));
    t.user().DoubleClick(s("B2"));
    EXPECT_EQ(log.Take("double"), (Lines{"double S $B$2"}));
    t.AnswerPopup(std::nullopt);  // the menu of cells
    t.user().RightClick(s("B2"));
    EXPECT_EQ(log.Take("right"), (Lines{"right S $B$2"}));
    t.user().PressDelete(s("B2"));
    EXPECT_EQ(log.Take("change"), (Lines{"change S $B$2"}));
  });

  cases.Add("WhatAProgramPutsInFrontIsTold",
            {"Worksheet.Activate", "Range.Select", "Workbook.Activate", "Worksheets.Add"}, kMemory,
            [](HostUnderTest& t) {
              const Sheet s = SheetS(t);
              EventLog log(t.application());
              s.Parent().Worksheets().Add().SetName("O");
              EXPECT_EQ(log.Take("activate").size(), 1u);
              s.Activate();
              EXPECT_EQ(log.Take("activate"), (Lines{"activate S"}));
              s.Activate();
              EXPECT_EQ(log.Take("activate"), Lines{});
              s("D4").Select();
              EXPECT_EQ(log.Take(), (Lines{"select S $D$4"}));
              const Workbook book = t.NewBook();
              log.Take();
              s.Parent().Activate();
              EXPECT_EQ(log.Take("window"), (Lines{"window " + s.Parent().Name()}));
              book.Activate();
              EXPECT_EQ(log.Take("window"), (Lines{"window " + book.Name()}));
            });

  cases.Add("OpeningIsToldThenTheWindow", {"Workbooks.Open", "Workbooks.Add"}, kPort, [](HostUnderTest& t) {
    const std::string path = t.SavedBook("one.xlsx", [](const Workbook&) {});
    EventLog log(t.application());
    t.application().Workbooks().Open(path);
    Lines opened = log.Take();
    std::erase_if(opened,
                  [](const std::string& line) { return !line.starts_with("open") && !line.starts_with("window"); });
    EXPECT_EQ(opened, (Lines{"open one.xlsx", "window one.xlsx"}));
    const Workbook added = t.application().Workbooks().Add();
    const Lines lines = log.Take();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "open " + added.Name()), 0);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "window " + added.Name()), 1);
  });

  cases.Add("EventsThatAreOffAreLostForGood", {"Application.EnableEvents"},
            "learn.microsoft.com: Application.EnableEvents property (Excel)", [](HostUnderTest& t) {
              const Sheet s = SheetS(t);
              s.Put("B1", "=A1");
              EventLog log(t.application());
              t.application().SetEnableEvents(false);
              s("A1").SetValue(CellValue(1));
              s("C3").Select();
              t.NewBook().Close(false);
              t.user().Type(s("A1"), "2");
              EXPECT_EQ(log.Take(), Lines{});
              t.application().SetEnableEvents(true);
              EXPECT_EQ(log.Take(), Lines{});
              s("A1").SetValue(CellValue(3));
              EXPECT_EQ(log.Take("change"), (Lines{"change S $A$1"}));
            });

  cases.Add("RefusedWritesAreNotTold", {"Worksheet.Protect"}, kPort, [](HostUnderTest& t) {
    const Sheet s = SheetS(t);
    s.Protect({});
    EventLog log(t.application());
    EXPECT_TRUE(Refused([&] { s("A1").SetValue(CellValue(1)); }));
    EXPECT_EQ(log.Take(), Lines{});
  });

  cases.Add("AThrowingHandlerHarmsNobody", {"Application.Advise"}, kPort, [](HostUnderTest& t) {
    const Sheet s = SheetS(t);
    EventLog bad(t.application()), good(t.application());
    bad.then = [](const std::string&) { throw std::runtime_error("from a handler"); };
    EXPECT_NO_THROW(s("A1").SetValue(CellValue(1)));
    EXPECT_EQ(bad.Take("change"), (Lines{"change S $A$1"}));
    EXPECT_EQ(good.Take("change"), (Lines{"change S $A$1"}));
    EXPECT_EQ(s.Value("A1"), 1);
    EXPECT_TRUE(t.application().EnableEvents());
  });

  cases.Add("AHandlerMayStopListening", {"Application.Advise"}, kPort, [](HostUnderTest& t) {
    const Sheet s = SheetS(t);
    EventLog first(t.application()), second(t.application()), third(t.application());
    first.then = [&](const std::string&) {
      first.End();
      second.End();
    };
    s("A1").SetValue(CellValue(1));
    EXPECT_EQ(first.Take().size(), 1u);
    EXPECT_EQ(second.Take().size(), 0u);
    EXPECT_EQ(third.Take("change").size(), 1u);
    s("A1").SetValue(CellValue(2));
    EXPECT_EQ(first.Take().size(), 0u);
    EXPECT_EQ(third.Take("change").size(), 1u);
  });

  cases.Add("AHandlerMayChangeCells", {"Range.Value"}, kPort, [](HostUnderTest& t) {
    const Sheet s = SheetS(t);
    EventLog log(t.application());
    log.then = [&](const std::string& line) {
      if (line == "change S $A$1") s("B1").SetValue(CellValue("stamp"));
    };
    s("A1").SetValue(CellValue(1));
    EXPECT_EQ(log.Take("change"), (Lines{"change S $A$1", "change S $B$1"}));
    EXPECT_EQ(s.Value("B1"), "stamp");
  });

  cases.Add("EventsWaitForAForm", {"User.ShowForm", "Range.Value"}, kPort, [](HostUnderTest& t) {
    const Sheet s = SheetS(t);
    EventLog log(t.application());
    Lines during{"untouched"};
    t.AnswerForm("FTest", [&](host::Form& form) {
      s("A1").SetValue(CellValue(1));
      s("A2").SetValue(CellValue(2));
      during = log.lines;
      form.Hide();
    });
    host::Form form("FTest", "A form");
    t.application().User().ShowForm(form);
    EXPECT_EQ(during, Lines{});
    EXPECT_EQ(log.Take("change"), (Lines{"change S $A$1", "change S $A$2"}));
  });

  cases.Add("SavingAndClosingCanBeCancelled", {"Application.Advise"},
            "learn.microsoft.com: Application.WorkbookBeforeClose event (Excel)", [](HostUnderTest& t) {
              const Workbook book = t.NewBook();
              book.SaveAs(t.PathFor("book.xlsx"));
              Sheet(book.Worksheets().Item(1))("A1").SetValue(CellValue(1));
              EventLog log(t.application());
              log.cancels = true;
              EXPECT_FALSE(t.user().Save(book));
              EXPECT_EQ(log.Take(), (Lines{"save book.xlsx"}));
              EXPECT_FALSE(book.Saved());
              EXPECT_FALSE(t.user().Close(book));
              EXPECT_EQ(log.Take(), (Lines{"close book.xlsx"}));
              EXPECT_TRUE(book.IsAlive());
              EXPECT_FALSE(t.user().Print(book));
              EXPECT_EQ(log.Take(), (Lines{"print book.xlsx"}));
              log.cancels = false;
              EXPECT_TRUE(t.user().Print(book));
              EXPECT_TRUE(t.user().Save(book));
              EXPECT_TRUE(book.Saved());
              EXPECT_TRUE(t.user().Close(book));
              EXPECT_FALSE(book.IsAlive());
            });

  cases.Add("AProgramsSaveAsksItsHandlersToo", {"Workbook.Save", "Workbook.Close"}, kMemory, [](HostUnderTest& t) {
    const Workbook book = t.NewBook();
    book.SaveAs(t.PathFor("book.xlsx"));
    EventLog log(t.application());
    book.Save();
    EXPECT_EQ(log.Take("save"), (Lines{"save book.xlsx"}));
    book.Close(false);
    EXPECT_EQ(log.Take("close"), (Lines{"close book.xlsx"}));
  });

  cases.Add("ClosingAsksAboutChanges", {"Workbook.Saved"}, kPort, [](HostUnderTest& t) {
    const Workbook book = t.NewBook();
    book.SaveAs(t.PathFor("book.xlsx"));
    EXPECT_EQ(t.asked().size(), 0u);
    Sheet(book.Worksheets().Item(1))("A1").SetValue(CellValue(1));
    t.AnswerMessage(host::MessageResult::Cancel);
    EXPECT_FALSE(t.user().Close(book));
    EXPECT_FALSE(book.Saved());
    t.AnswerMessage(host::MessageResult::No);
    EXPECT_TRUE(t.user().Close(book));
    EXPECT_EQ(t.asked().size(), 2u);
  });

  cases.Add("SavingANewBookAsksForAName", {"Workbook.FullName"}, kPort, [](HostUnderTest& t) {
    const Workbook book = t.NewBook();
    EventLog log(t.application());
    t.AnswerSaveFile(std::nullopt);
    EXPECT_FALSE(t.user().Save(book));
    EXPECT_EQ(log.Take("save"), (Lines{"save " + book.Name() + " as"}));
    const std::string path = t.PathFor("named.xlsx");
    t.AnswerSaveFile(path);
    EXPECT_TRUE(t.user().Save(book));
    EXPECT_EQ(book.FullName(), path);
  });

  cases.Add("ManualModeCalculatesLater", {"Application.Calculation"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = SheetS(t);
    s.Put("B1", "=A1*2");
    t.application().SetCalculation(host::Calculation::Manual);
    EventLog log(t.application());
    s("A1").SetValue(CellValue(1));
    EXPECT_EQ(log.Take(), (Lines{"change S $A$1"}));
    t.user().PressCalculate();
    EXPECT_EQ(log.Take(), (Lines{"calculate S"}));
    s("A1").SetValue(CellValue(2));
    log.Take();
    t.application().SetCalculation(host::Calculation::Automatic);
    EXPECT_EQ(log.Take(), (Lines{"calculate S"}));
  });

  return std::move(cases).Take();
}

}  // namespace tolvane::contract
