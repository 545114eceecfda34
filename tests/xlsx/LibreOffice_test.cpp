// LibreOffice as the other side: it opens what is saved here, and what it saves is opened here. Where `soffice` is not
// installed these tests say so and are skipped.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>

#include "engine/formula/Parser.h"
#include "engine/formula/Printer.h"
#include "engine/model/Diff.h"
#include "engine/xlsx/Xlsx.h"
#include "tests/xlsx/Soffice.h"
#include "tests/xlsx/TestFile.h"

namespace tolvane::xlsxtest {
namespace {

using namespace engine;
namespace fs = std::filesystem;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

class LibreOffice : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!Soffice::IsThere()) GTEST_SKIP() << "soffice is not installed: nothing was checked against LibreOffice";
  }
  fs::path Convert(const fs::path& file, const std::string& kind) { return soffice_.Convert(file, kind); }

  Soffice soffice_;
};

constexpr const char* kXlsx = kSofficeXlsx;

ExpressionPtr Parse(std::string_view text, const Workbook& book, SheetId sheet = kOwnSheet, CellPos at = {}) {
  return ParseFormula(text, Notation::A1, {sheet, at}, book);
}

std::string Text(const ExpressionPtr& formula, const Workbook& book, SheetId sheet = kOwnSheet, CellPos at = {}) {
  return formula == nullptr ? "none" : PrintFormula(*formula, Notation::A1, {sheet, at}, book);
}

// A book as the accounts keep it.
std::unique_ptr<Workbook> MakeBook() {
  auto book = std::make_unique<Workbook>();
  Sheet& accounts = book->AddSheet("My accounts", 0);
  accounts.codeName = "wksAccounts";
  Sheet& lists = book->AddSheet("Lists", 1);
  lists.codeName = "wksLists";
  lists.visibility = Visibility::VeryHidden;
  const char* headers[] = {"Code", "Date", "Payee", "Amount", "Category"};
  for (int column = 1; column <= 5; ++column) accounts.SetValue({4, column}, headers[column - 1]);
  for (int row = 5; row <= 40; ++row) {
    accounts.SetValue({row, 1}, std::string_view(std::to_string(row) + "M"));
    accounts.SetValue({row, 2}, 39887 + row);
    accounts.SetValue({row, 3}, row % 2 == 0 ? "Grocer & Son <Ltd>" : "Caf\xC3\xA9");
    accounts.SetValue({row, 4}, row * -1.25);
    accounts.SetValue({row, 5}, row % 3 == 0 ? "Food" : "House");
  }
  accounts.SetFormula({42, 4}, Parse("=SUM(D5:D40)", *book, accounts.id(), {42, 4}));
  accounts.StoreResult({42, 4}, -1012.5);
  accounts.SetFormula({42, 5}, Parse("=IF(total<0,\"minus\",\"plus\")", *book, accounts.id(), {42, 5}));
  accounts.StoreResult({42, 5}, "minus");
  for (int row = 1; row <= 3; ++row) lists.SetValue({row, 1}, row == 1 ? "Food" : row == 2 ? "House" : "Car");
  book->SetName(kOwnSheet, {"total", Parse("='My accounts'!$D$42", *book), false});
  book->SetName(kOwnSheet, {"_keep", Parse("=\"kept\"", *book), true});
  book->SetName(accounts.id(), {"period", Parse("='My accounts'!$A$1", *book, accounts.id()), false});

  NamedStyle money{"Money", kAllFormatGroups, {}};
  money.format.numberFormat = "#,##0.00";
  money.format.font.bold = true;
  money.format.fill = {FillPattern::Solid, 0xFFEECC};
  money.format.protection.locked = false;
  const StyleId style = book->formats.AddStyle(money);
  accounts.ChangeFormat({5, 4, 40, 4}, [&](FormatId id) { return book->formats.WithStyle(id, style); });
  accounts.columns.Change(3, 3, [](Band& band) { band.size = 24; });

  Validation rule;
  rule.ranges = {{5, 5, 40, 5}};
  rule.kind = Validation::Kind::List;
  rule.formula1 = Parse("=Lists!$A$1:$A$3", *book, accounts.id(), {5, 5});
  rule.errorTitle = "Category";
  rule.errorMessage = "Choose one of the list";
  accounts.AddValidation(rule);
  accounts.SetValue({1, 1}, "the bank");  // LibreOffice keeps links of texts only
  accounts.SetValue({2, 1}, "the lists");
  accounts.hyperlinks.push_back({{1, 1, 1, 1}, "https://example.org/", "", "go"});
  accounts.hyperlinks.push_back({{2, 1, 2, 1}, "", "Lists!A1", ""});
  accounts.autoFilter = AutoFilter{{4, 1, 40, 5}, {{5, FilterCriteria::Join::Values, "", std::nullopt, {"Food"}}}};
  for (int row = 5; row <= 40; ++row) {
    if (row % 3 != 0) accounts.rows.Change(row, row, [](Band& band) { band.filtered = true; });
  }
  accounts.merges = {{1, 3, 1, 5}};
  accounts.protection.isProtected = true;
  accounts.protection.formatCells = true;
  accounts.view.freeze = {4, 0};
  accounts.view.scrollRow = 5;
  accounts.printAreas = {{1, 1, 42, 5}};
  book->structureProtected = true;
  return book;
}

// `byLibreOffice`: when it converts without a window, it drops panes.
void ExpectSound(const Workbook& book, bool byLibreOffice, const std::string& list = "=Lists!$A$1:$A$3") {
  const Sheet* accounts = book.FindSheet("My accounts");
  const Sheet* lists = book.FindSheet("Lists");
  ASSERT_NE(accounts, nullptr);
  ASSERT_NE(lists, nullptr);
  EXPECT_EQ(accounts->codeName, "wksAccounts");
  EXPECT_EQ(lists->codeName, "wksLists");
  EXPECT_EQ(lists->visibility, Visibility::VeryHidden);
  EXPECT_EQ(accounts->ValueAt({5, 3}), Value("Caf\xC3\xA9"));
  EXPECT_EQ(accounts->ValueAt({6, 3}), Value("Grocer & Son <Ltd>"));
  EXPECT_EQ(accounts->ValueAt({7, 2}), Value(39894));
  EXPECT_EQ(accounts->ValueAt({42, 4}), Value(-1012.5));
  ASSERT_NE(accounts->FormulaAt({42, 4}), nullptr);
  EXPECT_EQ(Text(accounts->FormulaAt({42, 4})->expression, book, accounts->id(), {42, 4}), "=SUM(D5:D40)");
  EXPECT_EQ(Text(accounts->FormulaAt({42, 5})->expression, book, accounts->id(), {42, 5}),
            "=IF(total<0,\"minus\",\"plus\")");

  ASSERT_NE(book.names.Find("total"), nullptr);
  EXPECT_EQ(Text(book.names.Find("total")->refersTo, book), "='My accounts'!$D$42");
  ASSERT_NE(book.names.Find("_keep"), nullptr);
  EXPECT_TRUE(book.names.Find("_keep")->hidden);
  EXPECT_TRUE(book.structureProtected);
  if (!byLibreOffice) {
    EXPECT_EQ(accounts->view.freeze, (Freeze{4, 0}));
  }
  ASSERT_NE(accounts->names.Find("period"), nullptr);

  const CellFormat& format = book.formats.At(accounts->FormatAt({9, 4}));
  EXPECT_EQ(book.formats.StyleAt(format.style).name, "Money");
  EXPECT_EQ(format.format.numberFormat, "#,##0.00");
  EXPECT_TRUE(format.format.font.bold);
  EXPECT_EQ(format.format.fill.colour, Colour(0xFFEECC));
  EXPECT_FALSE(format.format.protection.locked);
  EXPECT_NEAR(accounts->columns.At(3).size.value_or(0), 24, 0.5);

  const Validation* rule = accounts->ValidationAt({20, 5});
  ASSERT_NE(rule, nullptr);
  EXPECT_EQ(rule->kind, Validation::Kind::List);
  EXPECT_EQ(Text(rule->formula1, book, accounts->id(), rule->ranges.front().topLeft()), list);
  EXPECT_EQ(rule->errorMessage, "Choose one of the list");
  ASSERT_EQ(accounts->hyperlinks.size(), 2u);
  EXPECT_EQ(accounts->hyperlinks[0].address, "https://example.org/");
  EXPECT_THAT(accounts->hyperlinks[1].subAddress, ::testing::HasSubstr("Lists"));
  ASSERT_TRUE(accounts->autoFilter.has_value());
  EXPECT_EQ(accounts->autoFilter->range, (Rect{4, 1, 40, 5}));
  ASSERT_EQ(accounts->autoFilter->criteria.size(), 1u);
  EXPECT_EQ(accounts->autoFilter->criteria[0].field, 5);
  EXPECT_TRUE(accounts->rows.At(5).filtered);
  EXPECT_FALSE(accounts->IsRowHidden(6));
  EXPECT_EQ(accounts->merges, (std::vector<Rect>{{1, 3, 1, 5}}));
  EXPECT_TRUE(accounts->protection.isProtected);
  EXPECT_TRUE(accounts->protection.formatCells);
  EXPECT_FALSE(accounts->protection.sort);
  EXPECT_EQ(accounts->printAreas, (std::vector<Rect>{{1, 1, 42, 5}}));
}

TEST_F(LibreOffice, SavesOurBookAndItIsSoundStill) {
  const fs::path ours = soffice_.Folder() / "book.xlsx";
  SaveXlsx(*MakeBook(), Package(), ours.string());
  ExpectSound(*OpenXlsx(ours.string()).workbook, false);
  const XlsxBook theirs = OpenXlsx(Convert(ours, kXlsx).string());
  ExpectSound(*theirs.workbook, true);

  // Back and forth: ours over theirs, with a change on either side of LibreOffice.
  theirs.workbook->FindSheet("My accounts")->SetValue({50, 1}, "added");
  const fs::path second = soffice_.Folder() / "second.xlsx";
  SaveXlsx(*theirs.workbook, theirs.package, second.string());
  const XlsxBook again = OpenXlsx(Convert(second, kXlsx).string());
  ExpectSound(*again.workbook, true);
  EXPECT_EQ(again.workbook->FindSheet("My accounts")->ValueAt({50, 1}), Value("added"));
}

TEST_F(LibreOffice, ChangesOurBookAndItIsSoundStill) {
  const fs::path ours = soffice_.Folder() / "book.xlsx";
  SaveXlsx(*MakeBook(), Package(), ours.string());
  const fs::path changed = soffice_.ConvertChanged(ours,
                                                   "sheet = book.Sheets.getByName(\"Lists\")\n"
                                                   "sheet.Rows.insertByIndex(0, 1)\n"
                                                   "sheet.getCellRangeByName(\"A6\").setString(\"by hand\")\n"
                                                   "book.Sheets.insertNewByName(\"Added\", 0)");
  // What it drops; the names of ours bring it back.
  std::ifstream stream(changed, std::ios::binary);
  const std::string bytes(std::istreambuf_iterator<char>(stream), {});
  const std::string bookPart = PartOf(bytes, "xl/workbook.xml"), accounts = PartOf(bytes, "xl/worksheets/sheet2.xml");
  EXPECT_THAT(accounts, HasSubstr("Lists!$A$2:$A$4")) << "that is the part meant here";
  EXPECT_THAT(accounts, Not(HasSubstr("codeName")));
  EXPECT_THAT(bookPart, Not(HasSubstr("veryHidden\"")));
  EXPECT_THAT(bookPart, HasSubstr("<workbookProtection/>"));
  EXPECT_THAT(bookPart, HasSubstr("hidden=\"false\" name=\"_keep\""));

  const XlsxBook theirs = OpenXlsx(changed.string());
  ASSERT_EQ(theirs.workbook->sheetCount(), 3u);
  EXPECT_EQ(theirs.workbook->sheetAt(0).name(), "Added");
  EXPECT_EQ(theirs.workbook->FindSheet("Lists")->ValueAt({6, 1}), Value("by hand"));
  ExpectSound(*theirs.workbook, true, "=Lists!$A$2:$A$4");
  EXPECT_TRUE(theirs.workbook->sheetAt(0).names.byFoldedName().empty()) << "none of ours is the user's";
  // All other differences are ones of looks.
  const auto wanted = MakeBook();
  const std::set<std::string> looks = {"sheet",     "style",        "default column width", "validation",
                                       "hyperlink", "frozen panes", "scroll position",      "row height",
                                       "font",      "value"};
  for (const Difference& d : Diff(*wanted, *theirs.workbook)) {
    EXPECT_THAT(looks, Contains(d.what)) << d.where << ": " << d.left << " | " << d.right;
    if (d.what == "value") {
      EXPECT_THAT(d.where, StartsWith("Lists!"));
    }
  }
}

TEST_F(LibreOffice, ItsFilesOpenAndStayTheSame) {
  const fs::path csv = soffice_.Folder() / "table.csv";
  std::ofstream file(csv);
  for (int row = 1; row <= 300; ++row) file << row << ",text " << row << "," << row * 0.5 << ",2010-03-15\n";
  file.close();
  const fs::path made = Convert(csv, kXlsx);
  const XlsxBook book = OpenXlsx(made.string());
  const Sheet& sheet = book.workbook->sheetAt(0);
  for (int row = 1; row <= 300; ++row) {
    EXPECT_EQ(sheet.ValueAt({row, 1}), Value(row));
    EXPECT_EQ(sheet.ValueAt({row, 2}), Value(std::string_view("text " + std::to_string(row))));
    EXPECT_EQ(sheet.ValueAt({row, 3}), Value(row * 0.5));
    EXPECT_EQ(sheet.ValueAt({row, 4}), Value(40252));
  }
  const fs::path copy = soffice_.Folder() / "copy.xlsx";
  SaveXlsx(*book.workbook, book.package, copy.string());
  std::ifstream a(made, std::ios::binary), b(copy, std::ios::binary);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(a), {}), std::string(std::istreambuf_iterator<char>(b), {}));

  // By way of its own format.
  const XlsxBook second = OpenXlsx(Convert(Convert(made, "ods"), kXlsx).string());
  for (const Difference& difference : Diff(*book.workbook, *second.workbook)) {
    EXPECT_NE(difference.what, "value") << difference.where << ": " << difference.left << " | " << difference.right;
  }
}

}  // namespace
}  // namespace tolvane::xlsxtest
