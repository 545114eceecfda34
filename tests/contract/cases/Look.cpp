#include "tests/contract/cases/CaseFiles.h"

namespace tolvane::contract {
namespace {

using host::Alignment;
using host::BorderIndex;
using host::CellValue;
using host::LineStyle;
using host::StyleDefinition;

constexpr std::string_view kStylePage = "learn.microsoft.com: Range.Style property (Excel)";
constexpr std::string_view kBordersPage = "learn.microsoft.com: Borders object (Excel)";

void DefineStyles(const host::Workbook& book) {
  StyleDefinition total;
  total.name = "TableCell_Total";
  total.numberFormat = "#,##0.00";
  total.font.emplace().bold = true;
  total.protection = StyleDefinition::ProtectionGroup{.locked = false};
  book.DefineStyle(total);
  StyleDefinition plain;  // says nothing about numbers
  plain.name = "TableCell";
  plain.font.emplace();
  plain.protection = StyleDefinition::ProtectionGroup{};
  book.DefineStyle(plain);
}

}  // namespace

std::vector<ContractCase> LookCases() {
  Cases cases("Look");

  cases.Add("ANewSheetIsPlain",
            {"Range.Style", "Range.NumberFormat", "Range.Locked", "Range.FormulaHidden", "Range.HorizontalAlignment",
             "Range.WrapText", "Interior.ColorIndex"},
            kMemory, [](HostUnderTest& t) {
              const Sheet s = t.NewSheet();
              EXPECT_EQ(s("A1:C3").Style(), "Normal");
              EXPECT_EQ(s("A1:C3").NumberFormat(), "General");
              EXPECT_EQ(s("A1:C3").Locked(), true);
              EXPECT_EQ(s("A1:C3").FormulaHidden(), false);
              EXPECT_EQ(s("A1:C3").HorizontalAlignment(), Alignment::General);
              EXPECT_EQ(s("A1:C3").WrapText(), false);
              EXPECT_EQ(s("A1:C3").Interior().ColorIndex(), host::kColorIndexNone);
            });

  cases.Add("DirectLooksComeBack",
            {"Range.NumberFormat", "Range.Locked", "Range.FormulaHidden", "Range.HorizontalAlignment", "Range.WrapText",
             "Interior.ColorIndex", "Font.Bold", "Font.Italic"},
            kMemory, [](HostUnderTest& t) {
              const Sheet s = t.NewSheet();
              const host::Range cells = s("A1:B2");
              cells.SetNumberFormat("#,##0;[Red](#,##0);-");
              cells.SetLocked(false);
              cells.SetFormulaHidden(true);
              cells.SetHorizontalAlignment(Alignment::Right);
              cells.SetWrapText(true);
              cells.Interior().SetColorIndex(36);
              cells.Font().SetBold(true);
              cells.Font().SetItalic(true);
              const host::Range cell = s("B2");
              EXPECT_EQ(cell.NumberFormat(), "#,##0;[Red](#,##0);-");
              EXPECT_EQ(cell.Locked(), false);
              EXPECT_EQ(cell.FormulaHidden(), true);
              EXPECT_EQ(cell.HorizontalAlignment(), Alignment::Right);
              EXPECT_EQ(cell.WrapText(), true);
              EXPECT_EQ(cell.Interior().ColorIndex(), 36);
              EXPECT_EQ(cell.Font().Bold(), true);
              EXPECT_EQ(cell.Font().Italic(), true);
              EXPECT_EQ(s("C3").Font().Bold(), false);
              cells.Interior().SetColorIndex(host::kColorIndexNone);
              EXPECT_EQ(cell.Interior().ColorIndex(), host::kColorIndexNone);
            });

  cases.Add("MixedLooksReadAsNothing", {"Range.Locked", "Range.Style", "Range.NumberFormat", "Font.Bold"},
            "learn.microsoft.com: Range.Locked property (Excel)", [](HostUnderTest& t) {
              const Sheet s = t.NewSheet();
              DefineStyles(s.Parent());
              const host::Range cells = s("A1:B2");
              const host::Range one = s("B2");
              one.SetStyle("TableCell_Total");
              one.SetFormulaHidden(true);
              one.SetHorizontalAlignment(Alignment::Center);
              one.SetWrapText(true);
              one.Interior().SetColorIndex(3);
              one.Font().SetItalic(true);
              EXPECT_FALSE(cells.Locked().has_value());
              EXPECT_FALSE(cells.Style().has_value());
              EXPECT_FALSE(cells.NumberFormat().has_value());
              EXPECT_FALSE(cells.FormulaHidden().has_value());
              EXPECT_FALSE(cells.HorizontalAlignment().has_value());
              EXPECT_FALSE(cells.WrapText().has_value());
              EXPECT_FALSE(cells.Interior().ColorIndex().has_value());
              EXPECT_FALSE(cells.Font().Bold().has_value());
              EXPECT_FALSE(cells.Font().Italic().has_value());
            });

  cases.Add("AStyleSetsWhatItIncludes", {"Range.Style", "Workbook.DefineStyle", "Workbook.StyleNames"}, kStylePage,
            [](HostUnderTest& t) {
              const Sheet s = t.NewSheet();
              DefineStyles(s.Parent());
              s("A1").SetStyle("TableCell_Total");
              EXPECT_EQ(s("A1").Style(), "TableCell_Total");
              EXPECT_EQ(s("A1").NumberFormat(), "#,##0.00");
              EXPECT_EQ(s("A1").Font().Bold(), true);
              EXPECT_EQ(s("A1").Locked(), false);
              const auto names = s.Parent().StyleNames();
              EXPECT_EQ(std::count(names.begin(), names.end(), "TableCell"), 1);
              EXPECT_EQ(std::count(names.begin(), names.end(), "Normal"), 1);
            });

  cases.Add("AStyleWithoutNumbersKeepsTheNumberFormat", {"Range.Style", "Range.NumberFormat"}, kPort,
            [](HostUnderTest& t) {
              const Sheet s = t.NewSheet();
              DefineStyles(s.Parent());
              s("A1").SetNumberFormat("@");
              s("A1").SetStyle("TableCell");
              EXPECT_EQ(s("A1").NumberFormat(), "@");
              s("A1").SetStyle("TableCell_Total");
              EXPECT_EQ(s("A1").NumberFormat(), "#,##0.00");
            });

  cases.Add("AStyleResetsDirectLooksOfItsGroups", {"Range.Style", "Font.Bold", "Range.Locked"}, kMemory,
            [](HostUnderTest& t) {
              const Sheet s = t.NewSheet();
              DefineStyles(s.Parent());
              s("A1").SetStyle("TableCell_Total");
              s("A1").Font().SetBold(false);
              s("A1").SetLocked(true);
              s("A1").Interior().SetColorIndex(15);
              EXPECT_EQ(s("A1").Style(), "TableCell_Total");
              EXPECT_EQ(s("A1").Font().Bold(), false);
              s("A1").SetStyle("TableCell_Total");
              EXPECT_EQ(s("A1").Font().Bold(), true);
              EXPECT_EQ(s("A1").Locked(), false);
              EXPECT_EQ(s("A1").Interior().ColorIndex(), 15);  // no group of the style
              s("A1").SetStyle("Normal");
              EXPECT_EQ(s("A1").Font().Bold(), false);
              EXPECT_EQ(s("A1").Interior().ColorIndex(), host::kColorIndexNone);
            });

  cases.Add("ChangingAStyleChangesItsCells", {"Workbook.DefineStyle"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    DefineStyles(s.Parent());
    s("A1:A2").SetStyle("TableCell_Total");
    s("A2").Font().SetBold(true);
    StyleDefinition changed;
    changed.name = "tablecell_total";
    changed.numberFormat = "0";
    changed.font.emplace().italic = true;
    s.Parent().DefineStyle(changed);
    EXPECT_EQ(s("A1").NumberFormat(), "0");
    EXPECT_EQ(s("A1").Font().Italic(), true);
    EXPECT_EQ(s("A1").Font().Bold(), false);
    EXPECT_EQ(s("A2").Font().Bold(), true);
  });

  cases.Add("AnUnknownStyleIsRefused", {"Range.Style"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    DefineStyles(s.Parent());
    s("A1").SetStyle("tablecell");
    EXPECT_TRUE(Refused([&] { s("A1").SetStyle("No such style"); }));
    EXPECT_TRUE(Refused([&] { s("A1").SetStyle(""); }));
    EXPECT_EQ(s("A1").Style(), "TableCell");
  });

  cases.Add("TextFormatKeepsWhatIsWrittenAText", {"Range.NumberFormat", "Range.Value"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1").SetNumberFormat("@");
    s("A1").SetValue(CellValue("00123"));
    EXPECT_EQ(s.Value("A1"), "00123");
    EXPECT_EQ(s("A1").Text(), "00123");
  });

  cases.Add("BordersAtTheEdges", {"Borders.LineStyle", "Borders.ColorIndex"}, kBordersPage, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    EXPECT_EQ(s("B2:D4").Borders(BorderIndex::EdgeTop).LineStyle(), LineStyle::None);
    s("B2:D4").Borders(BorderIndex::EdgeTop).SetLineStyle(LineStyle::Continuous);
    s("B2:D4").Borders(BorderIndex::EdgeTop).SetColorIndex(15);
    EXPECT_EQ(s("C2").Borders(BorderIndex::EdgeTop).LineStyle(), LineStyle::Continuous);
    EXPECT_EQ(s("C2").Borders(BorderIndex::EdgeTop).ColorIndex(), 15);
    EXPECT_EQ(s("C3").Borders(BorderIndex::EdgeTop).LineStyle(), LineStyle::None);
    s("B2:D4").Borders(BorderIndex::EdgeRight).SetLineStyle(LineStyle::Continuous);
    EXPECT_EQ(s("D3").Borders(BorderIndex::EdgeRight).LineStyle(), LineStyle::Continuous);
    EXPECT_EQ(s("C3").Borders(BorderIndex::EdgeRight).LineStyle(), LineStyle::None);
    s("D3").Borders(BorderIndex::EdgeRight).SetLineStyle(LineStyle::None);
    EXPECT_FALSE(s("B2:D4").Borders(BorderIndex::EdgeRight).LineStyle().has_value());
  });

  cases.Add("BordersInside", {"Borders.LineStyle"}, kBordersPage, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("B2:D4").Borders(BorderIndex::InsideHorizontal).SetLineStyle(LineStyle::Continuous);
    EXPECT_EQ(s("B2:D4").Borders(BorderIndex::InsideHorizontal).LineStyle(), LineStyle::Continuous);
    EXPECT_EQ(s("B2:D4").Borders(BorderIndex::EdgeTop).LineStyle(), LineStyle::None);
    EXPECT_EQ(s("B2:D4").Borders(BorderIndex::EdgeBottom).LineStyle(), LineStyle::None);
    s("B2:D4").Borders(BorderIndex::InsideVertical).SetLineStyle(LineStyle::Continuous);
    EXPECT_EQ(s("B2:D4").Borders(BorderIndex::EdgeLeft).LineStyle(), LineStyle::None);
    s("B2:D4").Borders(BorderIndex::InsideHorizontal).SetLineStyle(LineStyle::None);
    EXPECT_EQ(s("C3").Borders(BorderIndex::EdgeTop).LineStyle(), LineStyle::None);
    EXPECT_EQ(s("C3").Borders(BorderIndex::EdgeLeft).LineStyle(), LineStyle::Continuous);
  });

  cases.Add("InsideOfASingleRowOrColumnIsHarmless", {"Borders.LineStyle"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1:C1").Borders(BorderIndex::InsideHorizontal).SetLineStyle(LineStyle::Continuous);
    s("A1:A3").Borders(BorderIndex::InsideVertical).SetLineStyle(LineStyle::Continuous);
    for (const BorderIndex edge : {BorderIndex::EdgeTop, BorderIndex::EdgeBottom, BorderIndex::EdgeLeft}) {
      EXPECT_EQ(s("A1").Borders(edge).LineStyle(), LineStyle::None);
    }
  });

  cases.Add("AColourDrawsALine", {"Borders.ColorIndex", "Borders.LineStyle"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1").Borders(BorderIndex::EdgeBottom).SetColorIndex(15);
    EXPECT_EQ(s("A1").Borders(BorderIndex::EdgeBottom).LineStyle(), LineStyle::Continuous);
    EXPECT_EQ(s("A1").Borders(BorderIndex::EdgeBottom).ColorIndex(), 15);
  });

  cases.Add("ColourIndicesAreThoseOfThePalette", {"Interior.ColorIndex"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    for (const int index : {1, 2, 3, 15, 19, 36, 56}) {
      s("A1").Interior().SetColorIndex(index);
      EXPECT_EQ(s("A1").Interior().ColorIndex(), index);
    }
    for (const int index : {0, 57, -1}) {
      EXPECT_TRUE(Refused([&] { s("A1").Interior().SetColorIndex(index); })) << index;
      EXPECT_TRUE(Refused([&] { s("A1").Borders(BorderIndex::EdgeTop).SetColorIndex(index); })) << index;
    }
    EXPECT_EQ(s("A1").Interior().ColorIndex(), 56);
  });

  cases.Add("ColoursThatStandTwiceInThePaletteReadAsEither", {"Interior.ColorIndex"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1").Interior().SetColorIndex(8);
    s("A2").Interior().SetColorIndex(28);
    for (const char* cell : {"A1", "A2"}) {
      const auto read = s(cell).Interior().ColorIndex();
      EXPECT_TRUE(read == 8 || read == 28) << cell;
    }
  });

  cases.Add("HiddenRowsAndColumns", {"Range.Hidden"}, "learn.microsoft.com: Range.Hidden property (Excel)",
            [](HostUnderTest& t) {
              const Sheet s = t.NewSheet();
              s("3:4").SetHidden(true);
              s("B:B").SetHidden(true);
              EXPECT_EQ(s("3:3").Hidden(), true);
              EXPECT_EQ(s("A3").EntireRow().Hidden(), true);
              EXPECT_EQ(s("5:5").Hidden(), false);
              EXPECT_FALSE(s("4:5").Hidden().has_value());
              EXPECT_EQ(s("B:B").Hidden(), true);
              s("1:5").SetHidden(false);
              EXPECT_EQ(s("1:5").Hidden(), false);
              EXPECT_TRUE(Refused([&] { s("A3").SetHidden(true); }));
              EXPECT_TRUE(Refused([&] { s("A1:B5").SetHidden(true); }));
            });

  cases.Add("WidthsAndHeights", {"Range.ColumnWidth", "Range.RowHeight"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("B2:C3").SetColumnWidth(20);
    s("B2:C3").SetRowHeight(30);
    EXPECT_EQ(s("C9").ColumnWidth(), 20);
    EXPECT_EQ(s("F3").RowHeight(), 30);
    EXPECT_FALSE(s("A1:C1").ColumnWidth().has_value());
    EXPECT_FALSE(s("A1:A3").RowHeight().has_value());
    EXPECT_TRUE(Refused([&] { s("A1").SetColumnWidth(256); }));
    EXPECT_TRUE(Refused([&] { s("A1").SetColumnWidth(-1); }));
    EXPECT_TRUE(Refused([&] { s("A1").SetRowHeight(410); }));
    EXPECT_TRUE(Refused([&] { s("A1").SetRowHeight(-1); }));
  });

  cases.Add("WholeColumnsTakeALookTheirCellsHave", {"Font.Bold", "Range.Style"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    DefineStyles(s.Parent());
    s("B:B").Font().SetBold(true);
    EXPECT_EQ(s("B100000").Font().Bold(), true);
    EXPECT_EQ(s("C1").Font().Bold(), false);
    s("5:5").SetStyle("TableCell_Total");
    EXPECT_EQ(s("B5").Style(), "TableCell_Total");
    EXPECT_EQ(s("XFD5").NumberFormat(), "#,##0.00");
    EXPECT_EQ(s("B6").Font().Bold(), true);
  });

  return std::move(cases).Take();
}

}  // namespace tolvane::contract
