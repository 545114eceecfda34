#include "tests/contract/cases/CaseFiles.h"

namespace tolvane::contract {
namespace {

using host::Alignment;
using host::CellBlock;
using host::CellValue;
using host::PasteType;
using host::Protection;
using host::SelectionMode;

constexpr std::string_view kProtectPage = "learn.microsoft.com: Worksheet.Protect method (Excel)";

struct Flag {
  std::string_view name;
  bool Protection::*set;
};
constexpr Flag kFlags[] = {
    {"allowFormattingCells", &Protection::allowFormattingCells},
    {"allowFormattingColumns", &Protection::allowFormattingColumns},
    {"allowFormattingRows", &Protection::allowFormattingRows},
    {"allowInsertingColumns", &Protection::allowInsertingColumns},
    {"allowInsertingRows", &Protection::allowInsertingRows},
    {"allowInsertingHyperlinks", &Protection::allowInsertingHyperlinks},
    {"allowDeletingColumns", &Protection::allowDeletingColumns},
    {"allowDeletingRows", &Protection::allowDeletingRows},
    {"allowSorting", &Protection::allowSorting},
    {"allowFiltering", &Protection::allowFiltering},
    {"allowUsingPivotTables", &Protection::allowUsingPivotTables},
};

struct Operation {
  std::string_view name;
  bool Protection::*allowedBy;
  void (*run)(const Sheet& s);
};
constexpr Operation kOperations[] = {
    {"bold", &Protection::allowFormattingCells, [](const Sheet& s) { s("B2").Font().SetBold(true); }},
    {"number format", &Protection::allowFormattingCells, [](const Sheet& s) { s("B2").SetNumberFormat("0"); }},
    {"fill", &Protection::allowFormattingCells, [](const Sheet& s) { s("B2").Interior().SetColorIndex(3); }},
    {"column width", &Protection::allowFormattingColumns, [](const Sheet& s) { s("B2").SetColumnWidth(20); }},
    {"hide columns", &Protection::allowFormattingColumns, [](const Sheet& s) { s("G:G").SetHidden(true); }},
    {"row height", &Protection::allowFormattingRows, [](const Sheet& s) { s("B2").SetRowHeight(20); }},
    {"hide rows", &Protection::allowFormattingRows, [](const Sheet& s) { s("9:9").SetHidden(true); }},
    {"insert columns", &Protection::allowInsertingColumns, [](const Sheet& s) { s("G:G").Insert(); }},
    {"insert rows", &Protection::allowInsertingRows, [](const Sheet& s) { s("9:9").Insert(); }},
    {"insert many rows", &Protection::allowInsertingRows,
     [](const Sheet& s) {
       s.InsertRows(std::vector<host::RowRun>{{9, 1}});
     }},
    {"insert a link", &Protection::allowInsertingHyperlinks,
     [](const Sheet& s) { s("B2").Hyperlinks().Add(LinkTo("A1")); }},
    {"delete columns", &Protection::allowDeletingColumns, [](const Sheet& s) { s("G:G").Delete(); }},
    {"delete rows", &Protection::allowDeletingRows, [](const Sheet& s) { s("9:9").Delete(); }},
    {"delete many rows", &Protection::allowDeletingRows,
     [](const Sheet& s) {
       s.DeleteRows(std::vector<host::RowRun>{{9, 1}});
     }},
    {"sort", &Protection::allowSorting, [](const Sheet& s) { s("A2:A5").Sort({.column = 1}); }},
    {"filter a field", &Protection::allowFiltering, [](const Sheet& s) { s("A1:A5").AutoFilter(Where(1, ">2")); }},
};

// A sheet whose cells are all unlocked but A1, with a filter on A1:A5.
Sheet Prepared(HostUnderTest& t) {
  const Sheet s = t.NewSheet();
  s("A1:A5").SetValue(CellBlock{{"n"}, {3}, {1}, {2}, {4}});
  s.Cells().SetLocked(false);
  s("A1").SetLocked(true);
  s("A1:A5").AutoFilter();
  return s;
}

}  // namespace

std::vector<ContractCase> ProtectionCases() {
  Cases cases("Protection");

  cases.Add("FlagsAreKept",
            {"Worksheet.Protect", "Worksheet.Unprotect", "Worksheet.ProtectContents", "Worksheet.Protection"}, kPort,
            [](HostUnderTest& t) {
              const Sheet s = t.NewSheet();
              EXPECT_FALSE(s.ProtectContents());
              for (const Flag& flag : kFlags) {
                Protection allowed;
                allowed.*flag.set = true;
                s.Protect(allowed);
                EXPECT_TRUE(s.ProtectContents());
                EXPECT_EQ(s.Protection(), allowed) << flag.name;
                s.Unprotect();
                EXPECT_FALSE(s.ProtectContents());
                EXPECT_EQ(s.Protection(), allowed) << flag.name;
              }
              s.Unprotect();
              EXPECT_FALSE(s.ProtectContents());
            });

  cases.Add("LockedCellsAreNotWritten", {"Range.Value", "Worksheet.Protect"}, kProtectPage, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s.Put("A1:B1", CellBlock{{1, "=A1"}});
    s("C1").SetLocked(false);
    s.Protect({});
    const std::pair<const char*, std::function<void()>> writes[] = {
        {"Value", [&] { s("A1").SetValue(CellValue(2)); }},
        {"Formula", [&] { s("A1").SetFormula(CellValue("=1")); }},
        {"FormulaR1C1", [&] { s("A1").SetFormulaR1C1(CellValue("=R1C3")); }},
        {"ClearContents", [&] { s("A1").ClearContents(); }},
        {"Clear", [&] { s("A1").Clear(); }},
        {"Delete", [&] { s("A1").Delete(); }},
        {"Insert", [&] { s("A1").Insert(); }},
        {"Merge", [&] { s("A1:B1").Merge(); }},
        {"Locked", [&] { s("A1").SetLocked(false); }},
        {"FormulaHidden", [&] { s("A1").SetFormulaHidden(true); }},
        {"Style", [&] { s("A1").SetStyle("Normal"); }},
        {"Alignment", [&] { s("A1").SetHorizontalAlignment(Alignment::Right); }},
        {"Border", [&] { s("A1").Borders(host::BorderIndex::EdgeTop).SetLineStyle(host::LineStyle::Continuous); }},
        {"Validation.Add", [&] { s("A1").Validation().Add(ListRule("=$C$1")); }},
        {"Hyperlinks.Add", [&] { s("A1").Hyperlinks().Add(LinkTo("A1"), "x"); }},
        {"typing", [&] { t.user().Type(s("A1"), "2"); }},
        {"the delete key", [&] { t.user().PressDelete(s("A1")); }},
    };
    for (const auto& [name, write] : writes) EXPECT_TRUE(Refused(write)) << name;
    EXPECT_EQ(s("A1:C1").Formula(), (CellBlock{{1, "=A1", ""}}));
    EXPECT_EQ(s("A1").Locked(), true);
    s("C1").SetValue(CellValue(3));
    t.user().Type(s("C1"), "4");
    EXPECT_EQ(s.Value("C1"), 4);
  });

  cases.Add("OneLockedCellRefusesTheBlock", {"Range.Value"}, kPort, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1:B3").SetValue(CellValue(1));
    s("A1:B3").SetLocked(false);
    s("B3").SetLocked(true);
    s.Protect({});
    EXPECT_TRUE(Refused([&] { s("A1:B3").SetValue(CellValue(2)); }));
    EXPECT_TRUE(Refused([&] { s("A1:B3").SetFormula(CellValue("=2")); }));
    EXPECT_TRUE(Refused([&] { s("A1:B3").SetFormulaR1C1(CellValue("=2")); }));
    EXPECT_TRUE(Refused([&] { s("A1:B3").ClearContents(); }));
    EXPECT_TRUE(Refused([&] { s("A1:A2,B3").SetValue(CellValue(2)); }));
    s("C9").Copy();
    EXPECT_TRUE(Refused([&] { s("A1:B3").PasteSpecial(PasteType::Values); }));
    EXPECT_EQ(s("A1:B3").Value(), (CellBlock{{1, 1}, {1, 1}, {1, 1}}));
    s("A1:B2").SetValue(CellValue(2));
    EXPECT_EQ(s("A1:B3").Value(), (CellBlock{{2, 2}, {2, 2}, {1, 1}}));
  });

  cases.Add("EachFlagAllowsItsOperationsOnly", {"Worksheet.Protect"}, kProtectPage, [](HostUnderTest& t) {
    for (const Operation& operation : kOperations) {
      for (const Flag& flag : kFlags) {
        const Sheet s = Prepared(t);
        Protection allowed;
        allowed.*flag.set = true;
        s.Protect(allowed);
        if (flag.set == operation.allowedBy) {
          EXPECT_NO_THROW(operation.run(s)) << operation.name << " with " << flag.name;
        } else {
          EXPECT_TRUE(Refused([&] { operation.run(s); })) << operation.name << " with " << flag.name;
        }
        s.Parent().Close(false);
      }
    }
  });

  cases.Add("RowsWithLockedCellsAreNotDeleted", {"Worksheet.Protect"}, kProtectPage, [](HostUnderTest& t) {
    const Sheet s = Prepared(t);
    Protection allowed;
    allowed.allowDeletingRows = allowed.allowDeletingColumns = allowed.allowSorting = true;
    s.Protect(allowed);
    EXPECT_TRUE(Refused([&] { s("1:1").Delete(); }));
    EXPECT_TRUE(Refused([&] { s("A:A").Delete(); }));
    EXPECT_TRUE(Refused([&] { s("A1:A5").Sort({.column = 1}); }));
    EXPECT_EQ(s.Value("A1"), "n");
  });

  cases.Add("AFilterIsNeitherPutOnNorTakenAway", {"Worksheet.Protect"}, kProtectPage, [](HostUnderTest& t) {
    const Sheet s = Prepared(t);
    Protection allowed;
    allowed.allowFiltering = true;
    s.Protect(allowed);
    EXPECT_TRUE(Refused([&] { s("A1:A5").AutoFilter(); }));
    EXPECT_TRUE(s.AutoFilterMode());
    s("A1:A5").AutoFilter(Where(1, ">2"));
    EXPECT_EQ(s("3:3").Hidden(), true);
    const Sheet bare = t.NewSheet();
    bare.Protect(allowed);
    EXPECT_TRUE(Refused([&] { bare("A1:A5").AutoFilter(); }));
    EXPECT_FALSE(bare.AutoFilterMode());
  });

  cases.Add("ReadingAndCopyingStayFree", {"Range.Copy", "Range.Value", "Worksheet.Protect"}, kMemory,
            [](HostUnderTest& t) {
              const Sheet s = t.NewSheet();
              s.Put("A1:A2", CellBlock{{1}, {"=A1+1"}});
              const Sheet other(s.Parent().Worksheets().Add());
              s.Protect({});
              EXPECT_EQ(s.Value("A2"), 2);
              s("A1:A2").Copy();
              other("A1").PasteSpecial(PasteType::Values);
              EXPECT_EQ(other.Value("A2"), 2);
              s.Names().Add("own", "=1");
              s.SetName("Still mine");
              EXPECT_EQ(s.Name(), "Still mine");
            });

  cases.Add("FormulasGoOnCalculating", {"Worksheet.Protect"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    s("A1").SetLocked(false);
    s.Put("B1", "=A1*2");
    s.Protect({});
    s("A1").SetValue(CellValue(21));
    EXPECT_EQ(s.Value("B1"), 42);
  });

  cases.Add("OtherSheetsMayMoveReferencesOfAProtectedOne", {"Range.Insert"}, kMemory, [](HostUnderTest& t) {
    const Sheet s = t.NewSheet();
    const Sheet other(s.Parent().Worksheets().Add());
    other.SetName("Other");
    s.Put("A1", "=Other!A5");
    s.Protect({});
    other("1:1").Insert();
    EXPECT_EQ(s.Formula("A1"), "=Other!A6");
  });

  cases.Add("WhatMayBeSelected", {"Worksheet.EnableSelection"},
            "learn.microsoft.com: Worksheet.EnableSelection property (Excel)", [](HostUnderTest& t) {
              const Sheet s = t.NewSheet();
              s("B2").SetLocked(false);
              EXPECT_EQ(s.EnableSelection(), SelectionMode::NoRestrictions);
              s.SetEnableSelection(SelectionMode::UnlockedCells);
              EXPECT_EQ(s.EnableSelection(), SelectionMode::UnlockedCells);
              t.user().Select(s("A1"));
              s.Protect({});
              EXPECT_TRUE(Refused([&] { t.user().Select(s("C3")); }));
              t.user().Select(s("B2"));
              EXPECT_EQ(t.application().ActiveCell().Address(), "$B$2");
              s.SetEnableSelection(SelectionMode::NoSelection);
              EXPECT_TRUE(Refused([&] { t.user().Select(s("B2")); }));
            });

  return std::move(cases).Take();
}

}  // namespace tolvane::contract
