// What Calc cannot hold and we carry: saved, closed and opened again, in both kinds of files.
#include "hosts/libreoffice/in_office/OfficeCase.h"

namespace tolvane::libreoffice {

namespace {

constexpr std::string_view kEndings[] = {".xlsx", ".ods"};

// Builds a book, saves, closes and opens it, looks at it, and does so once more with what was opened: what is carried
// must survive a book that was itself read from a file.
void ThroughFiles(OfficeUnderTest& office, const std::function<void(const host::Workbook&)>& build,
                  const std::function<void(const host::Workbook&)>& check) {
  for (const std::string_view ending : kEndings) {
    SCOPED_TRACE(ending);
    const std::string path = office.PathFor("Carried" + std::string(ending));
    const host::Workbook made = office.application().Workbooks().Add();
    build(made);
    made.SaveAs(path);
    made.Close(false);
    for (int time = 1; time <= 2; ++time) {
      SCOPED_TRACE(time);
      const host::Workbook opened = office.application().Workbooks().Open(path);
      check(opened);
      opened.Worksheets().Item(1).Range("Z9").SetValue(time);
      opened.Save();
      check(opened);
      opened.Close(false);
    }
  }
}

void CodeNames(OfficeUnderTest& office) {
  ThroughFiles(
      office,
      [](const host::Workbook& book) {
        book.Worksheets().Item(1).SetCodeName("wksFirst");
        const host::Worksheet second = book.Worksheets().Add();
        second.SetName("It's \"one\"; ok=1");
        second.SetCodeName("wksSecond");
        second.MoveBefore(book.Worksheets().Item(1));
      },
      [](const host::Workbook& book) {
        EXPECT_EQ(book.Worksheets().Item(1).CodeName(), "wksSecond");
        EXPECT_EQ(book.Worksheets().Item(2).CodeName(), "wksFirst");
      });
}

void VeryHiddenSheets(OfficeUnderTest& office) {
  ThroughFiles(
      office,
      [](const host::Workbook& book) {
        book.Worksheets().Add().SetVisible(host::SheetVisibility::VeryHidden);
        book.Worksheets().Add().SetVisible(host::SheetVisibility::Hidden);
      },
      [](const host::Workbook& book) {
        EXPECT_EQ(book.Worksheets().Item(1).Visible(), host::SheetVisibility::Visible);
        EXPECT_EQ(book.Worksheets().Item(2).Visible(), host::SheetVisibility::VeryHidden);
        EXPECT_EQ(book.Worksheets().Item(3).Visible(), host::SheetVisibility::Hidden);
      });
}

// Many and long ones: the texts in which they are carried reach over several parts.
void HiddenNames(OfficeUnderTest& office) {
  constexpr int kNames = 60;
  const auto nameOf = [](int i) { return "aRatherLongHiddenName" + std::to_string(i); };
  ThroughFiles(
      office,
      [&](const host::Workbook& book) {
        for (int i = 0; i < kNames; ++i) book.Names().Add(nameOf(i), "=" + std::to_string(i), i % 2 == 0);
        const host::Worksheet sheet = book.Worksheets().Item(1);
        sheet.Names().Add("ofSheet", "=" + sheet.Name() + "!$A$1", false);
        book.Names().Add("Überweisung", "=1", false);
      },
      [&](const host::Workbook& book) {
        EXPECT_EQ(book.Names().All().size(), static_cast<std::size_t>(kNames) + 1);
        for (int i = 0; i < kNames; ++i) EXPECT_EQ(book.Names().Item(nameOf(i)).Visible(), i % 2 == 0) << i;
        EXPECT_FALSE(book.Worksheets().Item(1).Names().Item("ofSheet").Visible());
        EXPECT_FALSE(book.Names().Item("Überweisung").Visible());
      });
}

void ProtectionsAllowances(OfficeUnderTest& office) {
  // Each allowance alone, on a sheet of its own, and all of them.
  const std::vector<bool host::Protection::*> flags = {
      &host::Protection::allowFormattingCells,  &host::Protection::allowFormattingColumns,
      &host::Protection::allowFormattingRows,   &host::Protection::allowInsertingColumns,
      &host::Protection::allowInsertingRows,    &host::Protection::allowInsertingHyperlinks,
      &host::Protection::allowDeletingColumns,  &host::Protection::allowDeletingRows,
      &host::Protection::allowSorting,          &host::Protection::allowFiltering,
      &host::Protection::allowUsingPivotTables,
  };
  const auto only = [&](std::size_t which) {
    host::Protection protection;
    for (std::size_t i = 0; i < flags.size(); ++i) protection.*flags[i] = i == which || which == flags.size();
    return protection;
  };
  ThroughFiles(
      office,
      [&](const host::Workbook& book) {
        for (std::size_t i = 0; i <= flags.size(); ++i) {
          const host::Worksheet sheet = i == 0 ? book.Worksheets().Item(1) : book.Worksheets().Add();
          sheet.Protect(only(i));
          if (i == flags.size()) sheet.Unprotect();
        }
        // The first sheet is written to below.
        book.Worksheets().Item(1).Unprotect();
        book.Worksheets().Item(1).Cells().SetLocked(false);
        book.Worksheets().Item(1).Protect(only(0));
      },
      [&](const host::Workbook& book) {
        for (std::size_t i = 0; i <= flags.size(); ++i) {
          const host::Worksheet sheet = book.Worksheets().Item(static_cast<int>(i) + 1);
          EXPECT_EQ(sheet.ProtectContents(), i != flags.size()) << i;
          for (std::size_t f = 0; f < flags.size(); ++f) {
            EXPECT_EQ(sheet.Protection().*flags[f], only(i).*flags[f]) << "sheet " << i << ", allowance " << f;
          }
        }
      });
}

void ConstantsInNames(OfficeUnderTest& office) {
  const std::vector<std::pair<std::string, std::string>> constants = {
      {"truth", "=TRUE"}, {"lie", "=FALSE"}, {"number", "=42.5"}, {"small", "=-0.001"}, {"text", "=\"a \"\"q\"\" b\""},
      {"empty", "=\"\""},
  };
  ThroughFiles(
      office,
      [&](const host::Workbook& book) {
        for (const auto& [name, content] : constants) book.Names().Add(name, content);
        const host::Worksheet sheet = book.Worksheets().Item(1);
        sheet.Range("A1").SetFormula("=IF(truth,number,0)");
        sheet.Range("A2").SetFormula("=text&\"!\"");
        sheet.Range("A3").SetFormula("=ISLOGICAL(lie)");
      },
      [&](const host::Workbook& book) {
        for (const auto& [name, content] : constants) EXPECT_EQ(book.Names().Item(name).RefersTo(), content) << name;
        const host::Worksheet sheet = book.Worksheets().Item(1);
        EXPECT_EQ(sheet.Range("A1").Value().single(), host::CellValue(42.5));
        EXPECT_EQ(sheet.Range("A2").Value().single(), host::CellValue("a \"q\" b!"));
        EXPECT_EQ(sheet.Range("A3").Value().single(), host::CellValue(true));
      });
}

void TheProtectionOfTheStructure(OfficeUnderTest& office) {
  ThroughFiles(
      office, [](const host::Workbook& book) { book.SetProtectStructure(true); },
      [](const host::Workbook& book) {
        EXPECT_TRUE(book.ProtectStructure());
        EXPECT_TRUE(Fails(host::ErrorNumber::ApplicationDefined, "protected", [&] { book.Worksheets().Add(); }));
      });
}

}  // namespace

std::vector<OfficeCase> CarriedCases() {
  return {
      {"Carried", "CodeNames", CodeNames},
      {"Carried", "VeryHiddenSheets", VeryHiddenSheets},
      {"Carried", "HiddenNames", HiddenNames},
      {"Carried", "ProtectionsAllowances", ProtectionsAllowances},
      {"Carried", "ConstantsInNames", ConstantsInNames},
      {"Carried", "TheProtectionOfTheStructure", TheProtectionOfTheStructure},
  };
}

}  // namespace tolvane::libreoffice
