#include "tests/contract/cases/CaseFiles.h"

namespace tolvane::contract {
namespace {

using host::CellBlock;
using host::CellValue;
using host::CutCopyMode;
using host::PasteType;

constexpr std::string_view kPastePage = "learn.microsoft.com: Range.PasteSpecial method (Excel)";
constexpr std::string_view kCutCopyPage = "learn.microsoft.com: Application.CutCopyMode property (Excel)";

// B1 holds =A1*2 in bold with a validation.
Sheet Source(HostUnderTest& t) {
  const Sheet s = t.NewSheet();
  s.Put("A1:B1", CellBlock{{5, "=A1*2"}});
  s("B1").Font().SetBold(true);
  s("B1").Validation().Add(ListRule("=$A$1:$A$3"));
  return s;
}

std::string WithoutCarriageReturns(std::string text) {
  std::erase(text, '\r');
  while (!text.empty() && text.back() == '\n') text.pop_back();
  return text;
}

}  // namespace

std::vector<ContractCase> ClipboardCases() {
  Cases cases("Clipboard");

  cases.Add("PastingAll", {"Range.Copy", "Range.PasteSpecial"}, kPastePage, [](HostUnderTest& t) {
    const Sheet s = Source(t);
    s("B1").Copy();
    s("C2").PasteSpecial(PasteType::All);
    EXPECT_EQ(s.Formula("C2"), "=B2*2");
    EXPECT_EQ(s("C2").Font().Bold(), true);
    EXPECT_TRUE(s("C2").Validation().Rule().has_value());
    EXPECT_EQ(s.Formula("B1"), "=A1*2");
  });

  cases.Add("PastingFormulasOnly", {"Range.PasteSpecial"}, kPastePage, [](HostUnderTest& t) {
    const Sheet s = Source(t);
    s("B1").Copy();
    s("C2").PasteSpecial(PasteType::Formulas);
    EXPECT_EQ(s.Formula("C2"), "=B2*2");
    EXPECT_EQ(s("C2").Font().Bold(), false);
    EXPECT_FALSE(s("C2").Validation().Rule().has_value());
  });

  cases.Add("PastingValuesOnly", {"Range.PasteSpecial"}, kPastePage, [](HostUnderTest& t) {
    const Sheet s = Source(t);
    s("B1").Copy();
    s("C2").PasteSpecial(PasteType::Values);
    EXPECT_EQ(s("C2").Formula(), CellBlock(10));
    EXPECT_EQ(s("C2").Font().Bold(), false);
  });

  cases.Add("PastingFormatsOnly", {"Range.PasteSpecial"}, kPastePage, [](HostUnderTest& t) {
    const Sheet s = Source(t);
    s("C2").SetValue(CellValue("kept"));
    s("B1").Copy();
    s("C2").PasteSpecial(PasteType::Formats);
    EXPECT_EQ(s.Value("C2"), "kept");
    EXPECT_EQ(s("C2").Font().Bold(), true);
    EXPECT_FALSE(s("C2").Validation().Rule().has_value());
  });

  cases.Add("PastingValidationOnly", {"Range.PasteSpecial"}, kPastePage, [](HostUnderTest& t) {
    const Sheet s = Source(t);
    s("B1").Copy();
    s("C2").PasteSpecial(PasteType::Validation);
    EXPECT_TRUE(s.Value("C2").isEmpty());
    EXPECT_EQ(s("C2").Font().Bold(), false);
    EXPECT_EQ(s("C2").Validation().Rule()->source, "=$A$1:$A$3");
  });

  cases.Add("OneCellFillsALargerTarget", {"Range.PasteSpecial"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = Source(t);
    s("B1").Copy();
    s("C2:D4").PasteSpecial(PasteType::Formulas);
    EXPECT_EQ(s.Formula("D4"), "=C4*2");
    EXPECT_EQ(s.Formula("C2"), "=B2*2");
  });

  cases.Add("AMultipleOfTheSourceIsFilled", {"Range.PasteSpecial"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1:B1").SetValue(CellBlock{{1, 2}});
    s("A1:B1").Copy();
    s("A3:D4").PasteSpecial(PasteType::Values);
    EXPECT_EQ(s("A3:D4").Value(), (CellBlock{{1, 2, 1, 2}, {1, 2, 1, 2}}));
    s("A6:C6").PasteSpecial(PasteType::Values);  // no multiple: once
    EXPECT_EQ(s("A6:C6").Value(), (CellBlock{{1, 2, CellValue()}}));
    s("A8").PasteSpecial(PasteType::Values);  // one cell: as large as the source
    EXPECT_EQ(s("A8:B8").Value(), (CellBlock{{1, 2}}));
  });

  cases.Add("WholeRowsOverManyRows", {"Range.PasteSpecial"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = Source(t);
    s("1:1").SetRowHeight(25);
    s("1:1").Copy();
    s("3:5").PasteSpecial(PasteType::Formats);
    EXPECT_EQ(s("B3:B5").Font().Bold(), true);
    EXPECT_TRUE(s.Value("A3").isEmpty());
    s("7:8").PasteSpecial(PasteType::All);
    EXPECT_EQ(s("A7:B8").Formula(), (CellBlock{{5, "=A7*2"}, {5, "=A8*2"}}));
    EXPECT_TRUE(Refused([&] { s("B9").PasteSpecial(PasteType::All); }));
  });

  cases.Add("ACopyOutOfTheSheetIsRefused", {}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1:B1").SetValue(CellBlock{{1, 2}});
    s("A1:B1").Copy();
    EXPECT_TRUE(Refused([&] { s.Cells(1, s.Columns().Count()).PasteSpecial(PasteType::All); }));
  });

  cases.Add("WithoutACopyNothingIsPasted", {}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    EXPECT_TRUE(Refused([&] { s("A1").PasteSpecial(PasteType::All); }));
    s("A1").Copy();
    t.application().EndCutCopyMode();
    EXPECT_TRUE(Refused([&] { s("A2").PasteSpecial(PasteType::All); }));
  });

  cases.Add("ModesOfTheClipboard", {"Application.CutCopyMode", "Range.Copy", "Range.Cut"}, kCutCopyPage,
            [](HostUnderTest& t) {
              const auto app = t.application();
              const Sheet s = t.NewSheet();
              EXPECT_EQ(app.CutCopyMode(), CutCopyMode::None);
              s("A1").Copy();
              EXPECT_EQ(app.CutCopyMode(), CutCopyMode::Copy);
              s("A1").Cut();
              EXPECT_EQ(app.CutCopyMode(), CutCopyMode::Cut);
              app.EndCutCopyMode();
              EXPECT_EQ(app.CutCopyMode(), CutCopyMode::None);
            });

  cases.Add("AnEditEndsTheMode", {"Application.CutCopyMode"}, kPort, [](HostUnderTest& t) {
    const auto app = t.application();
    const Sheet s = t.NewSheet();
    s("A1").Copy();
    s("C1").SetValue(CellValue(1));
    EXPECT_EQ(app.CutCopyMode(), CutCopyMode::None);
    s("A1").Copy();
    t.user().Type(s("C1"), "2");
    EXPECT_EQ(app.CutCopyMode(), CutCopyMode::None);
    s("A1").Copy();
    EXPECT_EQ(s.Value("C1"), 2);
    EXPECT_EQ(app.CutCopyMode(), CutCopyMode::Copy);
    s("C1").ClearContents();
    EXPECT_EQ(app.CutCopyMode(), CutCopyMode::None);
  });

  cases.Add("PastingACopyKeepsTheMode", {"Range.PasteSpecial", "Application.CutCopyMode"}, kMemory,
            [](HostUnderTest& t) {
              const Sheet s = Source(t);
              s("B1").Copy();
              s("C2").PasteSpecial(PasteType::Formats);
              EXPECT_EQ(t.application().CutCopyMode(), CutCopyMode::Copy);
              s("C2").PasteSpecial(PasteType::Validation);
              EXPECT_TRUE(s("C2").Validation().Rule().has_value());
            });

  cases.Add("CutCellsMoveWithWhatRefersToThem", {"Range.Cut", "Range.PasteSpecial"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = Source(t);
    s.Put("E1:E2", CellBlock{{"=A1+1"}, {"=SUM(A1:B1)"}});
    const host::Range handle = s("A1:B1");
    s("A1:B1").Cut();
    s("A10").PasteSpecial(PasteType::All);
    EXPECT_TRUE(s.Value("A1").isEmpty());
    EXPECT_EQ(s("A10:B10").Formula(), (CellBlock{{5, "=A10*2"}}));
    EXPECT_EQ(s.Formula("E1"), "=A10+1");
    EXPECT_EQ(s.Formula("E2"), "=SUM(A10:B10)");
    EXPECT_EQ(s("B10").Font().Bold(), true);
    EXPECT_EQ(s("B1").Font().Bold(), false);
    EXPECT_EQ(handle.Address(), "$A$10:$B$10");
    EXPECT_EQ(t.application().CutCopyMode(), CutCopyMode::None);
  });

  cases.Add("CutCellsMoveToAnotherSheet", {"Range.Cut", "Range.PasteSpecial"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s.SetName("From");
    const Sheet other(s.Parent().Worksheets().Add());
    other.SetName("To");
    s.Put("A1:A2", CellBlock{{1}, {"=A1+1"}});
    s("A1").Cut();
    other("C3").PasteSpecial(PasteType::All);
    EXPECT_EQ(s.Formula("A2"), "=To!C3+1");
    EXPECT_EQ(s.Value("A2"), 2);
  });

  cases.Add("CellsOnTheClipboardAreATextToOthers", {"User.ClipboardHasText", "User.ClipboardText", "Selection.Copy"},
            kMemory, [](HostUnderTest& t) {
              const auto user = t.application().User();
              const Sheet s = t.NewSheet();
              s("A1:B2").SetValue(CellBlock{{1.5, "a"}, {true, CellValue()}});
              s("A1:B2").Select();
              t.application().Selection().Copy();
              EXPECT_TRUE(user.ClipboardHasText());
              EXPECT_EQ(WithoutCarriageReturns(user.ClipboardText()), "1.5\ta\nTRUE\t");
            });

  cases.Add("AnotherProgramsTextEndsTheMode", {"User.ClipboardHasText", "User.ClipboardText"}, kPort,
            [](HostUnderTest& t) {
              const auto user = t.application().User();
              const Sheet s = t.NewSheet();
              EXPECT_FALSE(user.ClipboardHasText());
              s("A1").Copy();
              t.user().PutTextOnClipboard("one\ntwo");
              EXPECT_EQ(t.application().CutCopyMode(), CutCopyMode::None);
              EXPECT_TRUE(user.ClipboardHasText());
              EXPECT_EQ(user.ClipboardText(), "one\ntwo");
            });

  cases.Add("PastingTextRecognisesNumbersAndDates", {"Worksheet.PasteSpecial"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    t.user().PutTextOnClipboard("12.5\ttext\t2009-03-15\r\n=1+1\t00123\tTRUE\r\n");
    s("B2").Select();
    s.PasteSpecialText();
    EXPECT_EQ(s("B2:D3").Value(), (CellBlock{{12.5, "text", 39887}, {"=1+1", 123, true}}));
    EXPECT_TRUE(s.Value("B4").isEmpty());
  });

  cases.Add("PastingTextNeedsAText", {}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1").Select();
    EXPECT_TRUE(Refused([&] { s.PasteSpecialText(); }));
  });

  cases.Add("SelectionCutsAndCopies", {"Selection.Cut", "Selection.Copy"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1").SetValue(CellValue(1));
    s("A1").Select();
    t.application().Selection().Cut();
    EXPECT_EQ(t.application().CutCopyMode(), CutCopyMode::Cut);
    s("C3").PasteSpecial(PasteType::All);
    EXPECT_EQ(s("A1:C3").Value().at(3, 3), 1);
    EXPECT_TRUE(s.Value("A1").isEmpty());
    t.application().Selection().Copy();
    EXPECT_EQ(t.application().CutCopyMode(), CutCopyMode::Copy);
  });

  return std::move(cases).Take();
}

}  // namespace tolvane::contract
