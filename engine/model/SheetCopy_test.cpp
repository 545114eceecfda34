#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "engine/model/Diff.h"
#include "engine/model/ExpressionBuilder.h"
#include "engine/model/Workbook.h"

namespace tolvane::engine {
namespace {

using test::Area;
using test::At;
using test::FormulaIn;
using test::NameText;
using test::PutSum;
using test::Sum;
using test::UseOfName;
using testing::ElementsAre;

FormatId Sized(Workbook& book, double size) {
  return book.formats.With(kDefaultFormat, FormatGroup::Font, [&](Format& format) { format.font.size = size; });
}

// A sheet with something of each part, and another one beside it.
class SheetCopyTest : public testing::Test {
 protected:
  SheetCopyTest() {
    data.SetValue(At("A1"), "Rent");
    PutSum(data, "A2", "B2,Data!B3,Other!B4");
    data.SetFormula(At("A3"), UseOfName("total"));
    data.SetFormula(At("A4"), UseOfName("total", data.id()));
    data.SetFormula(At("A5"), UseOfName("bookwide"));
    data.ChangeFormat(Area("B2:B3"), [&](FormatId) { return Sized(book, 20); });
    data.ChangeFormat(Area("D:D"), [&](FormatId) { return Sized(book, 30); });
    book.SetName(data.id(), {"total", Sum("Data!$A$1,Other!$A$1", At("A1"), book), true});
    book.SetName(kOwnSheet, {"bookwide", Sum("Data!$A$1", At("A1"), book), false});
    Validation rule;
    rule.ranges = {Area("C1:C9")};
    rule.kind = Validation::Kind::List;
    rule.formula1 = Sum("Data!$E$1:$E$5", At("C1"), book);
    data.AddValidation(rule);
    data.merges = {Area("F1:G2")};
    data.autoFilter = AutoFilter{Area("A1:C9"), {{1, FilterCriteria::Join::None, ">5", {}, {}}}};
    data.hyperlinks = {{Area("H1"), "", "total", "go"}};
    data.protection.isProtected = true;
    data.view.zoom = 80;
    data.view.freeze.rows = 3;
    data.printAreas = {Area("A1:H20")};
    data.rows.Change(4, 6, [](Band& band) { band.size = 33; });
  }

  Workbook book;
  Sheet& data = book.AddSheet("Data", 0);
  Sheet& other = book.AddSheet("Other", 1);
};

TEST_F(SheetCopyTest, CopiesEverythingOnTheSheet) {
  Sheet& copy = book.CopySheet(data.id(), 1);
  EXPECT_EQ(copy.name(), "Data (2)");
  EXPECT_EQ(copy.codeName, "Sheet3");
  EXPECT_EQ(book.PositionOf(copy.id()), 1u);
  EXPECT_EQ(copy.ValueAt(At("A1")), Value("Rent"));
  EXPECT_EQ(copy.merges, data.merges);
  EXPECT_EQ(copy.autoFilter, data.autoFilter);
  EXPECT_EQ(copy.hyperlinks, data.hyperlinks);
  EXPECT_EQ(copy.protection, data.protection);
  EXPECT_EQ(copy.view, data.view);
  EXPECT_EQ(copy.printAreas, data.printAreas);
  EXPECT_EQ(copy.rows.At(5).size, 33);
  EXPECT_EQ(copy.FormatAt(At("B2")), data.FormatAt(At("B2")));
  EXPECT_EQ(copy.FormatAt(At("D9")), data.FormatAt(At("D9")));
}

TEST_F(SheetCopyTest, WhatPointsAtTheSheetPointsAtTheCopy) {
  const Sheet& copy = book.CopySheet(data.id(), 2);
  EXPECT_EQ(FormulaIn(copy, "A2"), "SUM(B2,'Data (2)'!B3,'Other'!B4)");
  EXPECT_EQ(FormulaIn(copy, "A4"), "'Data (2)'!total");
  EXPECT_EQ(NameText(book, copy.names, "total"), "SUM('Data (2)'!$A$1,'Other'!$A$1)");
  EXPECT_TRUE(copy.names.Find("total")->hidden);
  EXPECT_EQ(DebugText(*copy.validations[0].formula1, book, At("C1")), "SUM('Data (2)'!$E$1:$E$5)");
  EXPECT_EQ(FormulaIn(data, "A2"), "SUM(B2,'Data'!B3,'Other'!B4)");
}

TEST_F(SheetCopyTest, CopiesAreNumbered) {
  EXPECT_EQ(book.CopySheet(data.id(), 0).name(), "Data (2)");
  EXPECT_EQ(book.CopySheet(data.id(), 0).name(), "Data (3)");
  EXPECT_EQ(book.CopySheet(book.FindSheet("Data (2)")->id(), 0).name(), "Data (4)");
  Sheet& longNamed = book.AddSheet("1234567890123456789012345678901", 0);
  EXPECT_EQ(book.CopySheet(longNamed.id(), 0).name(), "123456789012345678901234567 (2)");
  EXPECT_EQ(book.CopySheet(longNamed.id(), 0).name(), "123456789012345678901234567 (3)");
  Sheet& bracketed = book.AddSheet("(7)", 0);
  EXPECT_EQ(book.CopySheet(bracketed.id(), 0).name(), "(7) (2)");
}

TEST_F(SheetCopyTest, WhatReachesOutOfACopyInAnotherBookNamesTheOldBook) {
  Workbook target;
  target.AddSheet("Other", 0);
  const Sheet& copy = target.CopySheetFrom(book, data.id(), 1, "Costs.xls");
  EXPECT_EQ(copy.name(), "Data");
  EXPECT_EQ(copy.codeName, "Sheet2");
  EXPECT_EQ(FormulaIn(copy, "A2"), "SUM(B2,'Data'!B3,'[Costs.xls]Other'!B4)");
  EXPECT_EQ(FormulaIn(copy, "A3"), "total");
  EXPECT_EQ(FormulaIn(copy, "A4"), "'Data'!total");
  EXPECT_EQ(FormulaIn(copy, "A5"), "'[Costs.xls]'!bookwide");
  EXPECT_EQ(NameText(target, copy.names, "total"), "SUM('Data'!$A$1,'[Costs.xls]Other'!$A$1)");
  // Nothing is left that would mean a sheet by its number in the old book.
  const Expression& formula = *copy.FormulaAt(At("A2"))->expression;
  ASSERT_EQ(formula.references.size(), 2u);
  EXPECT_EQ(formula.references[1].sheet, copy.id());
  EXPECT_EQ(formula.externals.size(), 1u);
}

TEST_F(SheetCopyTest, ANameOfTheBookStaysWhereTheTargetHasOneToo) {
  Workbook target;
  target.AddSheet("Here", 0);
  target.SetName(kOwnSheet, {"BookWide", Sum("Here!$A$1", At("A1"), target), false});
  EXPECT_EQ(FormulaIn(target.CopySheetFrom(book, data.id(), 0, "Costs.xls"), "A5"), "bookwide");
}

TEST_F(SheetCopyTest, FormatsAndStylesComeAlong) {
  NamedStyle style;
  style.name = "Heading";
  style.format.font.bold = true;
  const StyleId heading = book.formats.AddStyle(style);
  data.ChangeFormat(Area("E5"), [&](FormatId from) { return book.formats.WithStyle(from, heading); });

  Workbook target;
  target.AddSheet("Here", 0);
  Sized(target, 77);  // so that the numbers of the formats differ
  const Sheet& copy = target.CopySheetFrom(book, data.id(), 0, "Costs.xls");
  const CellFormat& styled = target.formats.At(copy.FormatAt(At("E5")));
  EXPECT_EQ(target.formats.StyleAt(styled.style).name, "Heading");
  EXPECT_TRUE(styled.format.font.bold);
  EXPECT_EQ(target.formats.At(copy.FormatAt(At("B2"))).format.font.size, 20);
  EXPECT_EQ(target.formats.At(copy.FormatAt(At("D99"))).format.font.size, 30);
  EXPECT_EQ(copy.FormatAt(At("A9")), kDefaultFormat);
}

TEST_F(SheetCopyTest, AStyleOfTheSameNameKeepsTheLooksOfBothBooks) {
  NamedStyle style;
  style.name = "Heading";
  style.format.font.size = 15;
  const StyleId there = book.formats.AddStyle(style);
  data.ChangeFormat(Area("E5"), [&](FormatId from) { return book.formats.WithStyle(from, there); });
  Workbook target;
  target.AddSheet("Here", 0);
  style.format.font.size = 25;
  const StyleId here = target.formats.AddStyle(style);
  const Sheet& copy = target.CopySheetFrom(book, data.id(), 0, "Costs.xls");
  const FormatId format = copy.FormatAt(At("E5"));
  EXPECT_EQ(target.formats.At(format).style, here);
  EXPECT_EQ(target.formats.At(format).format.font.size, 15);
  style.format.font.size = 35;
  target.formats.ChangeStyle(here, style);
  EXPECT_EQ(target.formats.At(format).format.font.size, 15);
}

TEST_F(SheetCopyTest, ACopyInAnotherBookIsOtherwiseTheSameSheet) {
  Workbook target;
  target.AddSheet("Other", 0);
  target.CopySheetFrom(book, data.id(), 0, "Costs.xls");
  // Both books have a sheet "Other"; only what reaches out differs.
  std::vector<std::string> where;
  for (const Difference& difference : Diff(book, target)) where.push_back(difference.where + " " + difference.what);
  EXPECT_THAT(where, testing::UnorderedElementsAre("name bookwide name", "name Data!total refers to", "Data!A2 formula",
                                                   "Data!A5 formula", "sheet Data code name", "sheet Other code name"));
}

}  // namespace
}  // namespace tolvane::engine
