// What follows when rows, columns and cells are inserted, deleted and moved.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "engine/model/Diff.h"
#include "engine/model/DifferencePrinter.h"
#include "engine/model/ExpressionBuilder.h"
#include "engine/model/Workbook.h"

namespace tolvane::engine {
namespace {

using test::Area;
using test::At;
using test::FormulaIn;
using test::NameText;
using test::PutSum;
using test::Runs;
using test::Sum;
using test::UseOfName;
using testing::ElementsAre;
using testing::IsEmpty;

class StructureTest : public testing::Test {
 protected:
  void DeleteRows(Runs runs) { book.DeleteRuns(data.id(), Axis::Rows, runs); }
  void InsertRows(Runs runs) { book.InsertRuns(data.id(), Axis::Rows, runs); }
  void DeleteColumns(Runs runs) { book.DeleteRuns(data.id(), Axis::Columns, runs); }
  void InsertColumns(Runs runs) { book.InsertRuns(data.id(), Axis::Columns, runs); }
  void Move(std::string_view area, std::string_view target) {
    book.MoveCells(data.id(), Area(area), data.id(), At(target));
  }
  void Name(SheetId scope, std::string name, std::string_view reference) {
    book.SetName(scope, {std::move(name), Sum(reference, At("A1"), book), false});
  }
  void Validate(std::string_view area, std::string_view formula) {
    Validation rule;
    rule.ranges = {Area(area)};
    rule.formula1 = Sum(formula, Area(area).topLeft(), book);
    data.AddValidation(rule);
  }
  // The formula of the rule on a cell, as it reads there.
  std::string RuleAt(std::string_view cell) {
    const Validation* rule = data.ValidationAt(At(cell));
    return rule == nullptr ? "" : DebugText(*rule->formula1, book, At(cell));
  }
  void SizeCell(std::string_view area, double size) {
    data.ChangeFormat(Area(area), [&](FormatId from) {
      return book.formats.With(from, FormatGroup::Font, [&](Format& format) { format.font.size = size; });
    });
  }
  double SizeAt(std::string_view cell) { return book.formats.At(data.FormatAt(At(cell))).format.font.size; }

  Workbook book;
  Sheet& data = book.AddSheet("Data", 0);
  Sheet& other = book.AddSheet("Other", 1);
};

// --- formulas --------------------------------------------------------------------------------------------------------

TEST_F(StructureTest, AreasShrinkWhenTheirRowsAreDeleted) {
  PutSum(data, "D20", "A2:A10,B$5,$C$7:$C$8");
  DeleteRows({{3, 2}, {7, 2}});
  EXPECT_EQ(FormulaIn(data, "D16"), "SUM(A2:A6,B$3,#REF!)");
}

TEST_F(StructureTest, AreasGrowOnlyFromInside) {
  PutSum(other, "A1", "Data!A5:A9");
  InsertRows({{10, 1}});
  EXPECT_EQ(FormulaIn(other, "A1"), "SUM('Data'!A5:A9)");
  InsertRows({{5, 1}});
  EXPECT_EQ(FormulaIn(other, "A1"), "SUM('Data'!A6:A10)");
  InsertRows({{7, 2}});
  EXPECT_EQ(FormulaIn(other, "A1"), "SUM('Data'!A6:A12)");
}

TEST_F(StructureTest, RelativeReferencesKeepTheirCellsThoughTheFormulaMoves) {
  PutSum(data, "C5", "B2,B8,$B$5");
  InsertRows({{4, 3}});
  EXPECT_EQ(FormulaIn(data, "C8"), "SUM(B2,B11,$B$8)");
}

TEST_F(StructureTest, WholeRowsAndColumnsFollowOnTheirAxisOnly) {
  PutSum(data, "H20", "5:9,B:C,$A$1:$A$1048576");
  InsertRows({{7, 1}});
  EXPECT_EQ(FormulaIn(data, "H21"), "SUM(5:10,B:C,$A$1:$A$1048576)");
  DeleteColumns({{2, 1}});
  EXPECT_EQ(FormulaIn(data, "G21"), "SUM(5:10,B:B,$A$1:$A$1048576)");
  DeleteRows({{5, 6}});
  EXPECT_EQ(FormulaIn(data, "G15"), "SUM(#REF!,B:B,$A$1:$A$1048576)");
}

TEST_F(StructureTest, WhatIsPushedOffTheGridIsBroken) {
  PutSum(data, "A1", "B1048576,B1048570:B1048576");
  InsertRows({{5, 1}});
  EXPECT_EQ(FormulaIn(data, "A1"), "SUM(#REF!,B1048571:B1048576)");
}

TEST_F(StructureTest, ReferencesThatWrapAroundStaySane) {
  // As typed in A1 and filled to A3: two rows above A1 is the last row but one.
  data.SetFormula(At("A3"), Sum("A1", At("A3"), book));
  const ExpressionPtr shared = data.FormulaAt(At("A3"))->expression;
  data.SetFormula(At("A1"), shared);
  EXPECT_EQ(FormulaIn(data, "A1"), "SUM(A1048575)");
  InsertRows({{2, 1}});
  EXPECT_EQ(FormulaIn(data, "A1"), "SUM(A1048576)");
  EXPECT_EQ(FormulaIn(data, "A4"), "SUM(A1)");
}

TEST_F(StructureTest, FormulasThatWereOneStayOne) {
  const ExpressionPtr running = Sum("B$2:B2,Other!$A$1", At("C2"), book);
  for (int row = 2; row <= 1000; ++row) data.SetFormula({row, 3}, running);
  InsertRows({{1, 1}});
  const ExpressionPtr moved = data.FormulaAt(At("C3"))->expression;
  EXPECT_NE(moved, running);
  for (int row = 3; row <= 1001; ++row) ASSERT_EQ(data.FormulaAt({row, 3})->expression, moved);
}

TEST_F(StructureTest, FormulasWhoseReferencesStayAreNotCopied) {
  const ExpressionPtr line = Sum("A2:B2", At("C2"), book);
  for (int row = 2; row <= 100; ++row) data.SetFormula({row, 3}, line);
  DeleteRows({{5, 1}, {9, 3}});
  InsertRows({{20, 2}});
  for (int row = 2; row <= 98; ++row) {
    if (row == 20 || row == 21) continue;
    ASSERT_EQ(data.FormulaAt({row, 3})->expression, line);
  }
}

TEST_F(StructureTest, MovedAndChangedFormulasAreStale) {
  PutSum(data, "A1", "B1");
  PutSum(data, "A9", "B1");
  PutSum(other, "A1", "Data!B7");
  for (Sheet* sheet : {&data, &other}) {
    sheet->cells().ForEachFormula(Rect::WholeSheet(), [](CellPos, FormulaCell& cell) { cell.dirty = false; });
  }
  DeleteRows({{5, 1}});
  EXPECT_FALSE(data.FormulaAt(At("A1"))->dirty);
  EXPECT_TRUE(data.FormulaAt(At("A8"))->dirty);
  EXPECT_TRUE(other.FormulaAt(At("A1"))->dirty);
}

// --- names
// -------------------------------------------------------------------------------------------------------------

TEST_F(StructureTest, NamesFollowOnBothLevels) {
  Name(kOwnSheet, "all", "Data!$A$5:$C$9");
  Name(data.id(), "rows", "$5:$9");
  Name(other.id(), "here", "$A$5");
  DeleteRows({{6, 2}});
  EXPECT_EQ(NameText(book, book.names, "all"), "SUM('Data'!$A$5:$C$7)");
  EXPECT_EQ(NameText(book, data.names, "rows"), "SUM($5:$7)");
  EXPECT_EQ(NameText(book, other.names, "here"), "SUM($A$5)");
}

TEST_F(StructureTest, RelativePartsOfNamesStay) {
  Name(kOwnSheet, "left", "Data!A1");
  Name(kOwnSheet, "row", "Data!B$5");
  Name(kOwnSheet, "running", "Data!$B$5:$B5");
  InsertRows({{1, 2}});
  EXPECT_EQ(NameText(book, book.names, "left"), "SUM('Data'!A1)");
  EXPECT_EQ(NameText(book, book.names, "row"), "SUM('Data'!B$7)");
  EXPECT_EQ(NameText(book, book.names, "running"), "SUM('Data'!$B$7:$B5)");
  DeleteColumns({{1, 5}});
  EXPECT_EQ(NameText(book, book.names, "left"), "SUM('Data'!A1)");
  EXPECT_EQ(NameText(book, book.names, "row"), "SUM('Data'!B$7)");
  DeleteRows({{7, 1}});
  EXPECT_EQ(NameText(book, book.names, "left"), "SUM('Data'!A1)");
  EXPECT_EQ(NameText(book, book.names, "row"), "SUM('Data'!#REF!)");
}

// --- what lies on the cells ------------------------------------------------------------------------------------------

TEST_F(StructureTest, ValidationsFollowWithTheirFormulas) {
  Validate("B5:B9", "$D$1:$D$4,A5");
  Validation elsewhere;
  elsewhere.ranges = {Area("A1")};
  elsewhere.formula1 = Sum("Data!$D$3:$D$4", At("A1"), book);
  other.AddValidation(elsewhere);
  DeleteRows({{2, 1}, {5, 1}});  // the second one is the rule's first row
  EXPECT_THAT(data.validations[0].ranges, ElementsAre(Area("B4:B7")));
  EXPECT_EQ(RuleAt("B4"), "SUM($D$1:$D$3,A4)");
  EXPECT_EQ(RuleAt("B7"), "SUM($D$1:$D$3,A7)");
  EXPECT_EQ(DebugText(*other.validations[0].formula1, book, At("A1")), "SUM('Data'!$D$2:$D$3)");
  DeleteRows({{4, 4}});
  EXPECT_TRUE(data.validations.empty());
}

TEST_F(StructureTest, AValidationOnWholeColumnsStaysOnThem) {
  Validate("B:B", "A1");
  InsertRows({{1, 1}});
  EXPECT_THAT(data.validations[0].ranges, ElementsAre(Area("B:B")));
  EXPECT_EQ(RuleAt("B2"), "SUM(A2)");
  DeleteRows({{1, 3}});
  EXPECT_THAT(data.validations[0].ranges, ElementsAre(Area("B:B")));
  EXPECT_EQ(RuleAt("B2"), "SUM(A2)");
}

TEST_F(StructureTest, AttachmentsKeepTheirMeaningWhenTheirFirstRowGoes) {
  data.attachments.push_back({1, Attachment::Hold::Cells, {Area("B5:B9")}, {Sum("A5,$D$1", At("B5"), book)}});
  DeleteRows({{5, 1}});
  ASSERT_EQ(data.attachments.size(), 1u);
  EXPECT_THAT(data.attachments[0].ranges, ElementsAre(Area("B5:B8")));
  EXPECT_EQ(DebugText(*data.attachments[0].formulas[0], book, At("B5")), "SUM(A5,$D$1)");
  DeleteRows({{5, 4}});
  EXPECT_TRUE(data.attachments.empty());
}

TEST_F(StructureTest, MergesShrinkAndGrowAndVanishAtOneCell) {
  data.merges = {Area("B2:C6"), Area("E4:E5"), Area("G9:H9")};
  DeleteRows({{4, 1}});
  EXPECT_THAT(data.merges, ElementsAre(Area("B2:C5"), Area("G8:H8")));
  InsertColumns({{3, 2}});
  EXPECT_THAT(data.merges, ElementsAre(Area("B2:E5"), Area("I8:J8")));
}

TEST_F(StructureTest, LinksAndPrintAreasFollow) {
  data.hyperlinks = {{Area("A5"), "", "total", ""}, {Area("B7"), "", "total", ""}};
  data.printAreas = {Area("A1:C9"), Area("E7:F7")};
  DeleteRows({{7, 1}});
  ASSERT_EQ(data.hyperlinks.size(), 1u);
  EXPECT_THAT(data.printAreas, ElementsAre(Area("A1:C8")));
  InsertRows({{1, 1}});
  EXPECT_EQ(data.hyperlinks[0].range, Area("A6"));
  EXPECT_THAT(data.printAreas, ElementsAre(Area("A2:C9")));
}

TEST_F(StructureTest, AFiltersCriteriaFollowTheirColumns) {
  data.autoFilter = AutoFilter{Area("B3:E20"), {{1, {}, "a", {}, {}}, {3, {}, "c", {}, {}}, {4, {}, "d", {}, {}}}};
  DeleteColumns({{4, 1}});
  EXPECT_EQ(data.autoFilter->range, Area("B3:D20"));
  ASSERT_EQ(data.autoFilter->criteria.size(), 2u);
  EXPECT_EQ(data.autoFilter->criteria[0].field, 1);
  EXPECT_EQ(data.autoFilter->criteria[1].field, 3);
  EXPECT_EQ(data.autoFilter->criteria[1].criterion1, "d");
  InsertColumns({{3, 1}});
  EXPECT_EQ(data.autoFilter->criteria[1].field, 4);
}

TEST_F(StructureTest, AFilterGoesWithItsHeaderRowAndShowsItsRows) {
  data.autoFilter = AutoFilter{Area("B3:E20"), {}};
  data.rows.Change(5, 6, [](Band& band) { band.filtered = true; });
  DeleteRows({{2, 1}});
  EXPECT_EQ(data.autoFilter->range, Area("B2:E19"));
  EXPECT_TRUE(data.IsRowHidden(4));
  DeleteRows({{2, 1}});
  EXPECT_FALSE(data.autoFilter);
  EXPECT_FALSE(data.IsRowHidden(3));
}

TEST_F(StructureTest, InsertedRowsTakeAfterTheRowInFront) {
  SizeCell("B4:C4", 20);
  SizeCell("6:6", 30);
  data.rows.Change(4, 4, [](Band& band) { band.size = 40; });
  InsertRows({{5, 2}, {9, 1}});
  EXPECT_EQ(SizeAt("B5"), 20);
  EXPECT_EQ(SizeAt("C6"), 20);
  EXPECT_EQ(SizeAt("D6"), 11);
  EXPECT_EQ(data.rows.At(6).size, 40);
  EXPECT_EQ(SizeAt("Z9"), 30);
  book.InsertRuns(data.id(), Axis::Rows, Runs{{5, 1}}, true);
  EXPECT_EQ(SizeAt("B5"), 11);
  EXPECT_EQ(data.rows.At(5).size, std::nullopt);
}

// --- refusals
// ----------------------------------------------------------------------------------------------------------

TEST_F(StructureTest, RefusesToPushContentsOffTheSheet) {
  data.SetValue({kMaxRow, 1}, 1);
  PutSum(data, "A1", "B7");
  const auto before = book.Clone();
  EXPECT_THROW(InsertRows({{5, 1}}), std::invalid_argument);
  EXPECT_THROW(book.InsertCells(data.id(), Area("A5:B6"), Axis::Rows), std::invalid_argument);
  EXPECT_THAT(Diff(*before, book), IsEmpty());
  EXPECT_NO_THROW(book.InsertCells(data.id(), Area("B5:C6"), Axis::Rows));
  EXPECT_NO_THROW(InsertColumns({{1, 1}}));
}

TEST_F(StructureTest, RefusesRunsOffTheSheetOrOutOfOrder) {
  for (const Runs& runs :
       {Runs{{0, 1}}, Runs{{5, 0}}, Runs{{kMaxRow, 2}}, Runs{{5, 2}, {6, 1}}, Runs{{5, 1}, {3, 1}}}) {
    EXPECT_THROW(DeleteRows(runs), std::invalid_argument);
    EXPECT_THROW(InsertRows(runs), std::invalid_argument);
  }
  EXPECT_THROW(book.DeleteRuns(99, Axis::Rows, Runs{{1, 1}}), std::invalid_argument);
  EXPECT_THROW(Move("A1:C3", "XFC1"), std::invalid_argument);
}

TEST_F(StructureTest, RefusesToTakeArraysAndMergesApart) {
  data.SetArrayFormula(Area("B5:B8"), Sum("A5:A8", At("B5"), book));
  data.merges = {Area("D5:E6")};
  const auto before = book.Clone();
  EXPECT_THROW(DeleteRows({{6, 1}}), std::invalid_argument);
  EXPECT_THROW(InsertRows({{6, 1}}), std::invalid_argument);
  EXPECT_THROW(Move("B5:B6", "G1"), std::invalid_argument);
  EXPECT_THROW(Move("G1:G2", "B8"), std::invalid_argument);
  EXPECT_THROW(book.DeleteCells(data.id(), Area("D2:D3"), Axis::Rows), std::invalid_argument);
  EXPECT_THROW(book.InsertCells(data.id(), Area("D6"), Axis::Columns), std::invalid_argument);
  EXPECT_THROW(Move("D5:D6", "G1"), std::invalid_argument);
  EXPECT_THAT(Diff(*before, book), IsEmpty());
}

TEST_F(StructureTest, ArraysMoveAndGoAsAWhole) {
  data.SetArrayFormula(Area("B5:B8"), Sum("A5:A8", At("B5"), book));
  InsertRows({{2, 1}});
  EXPECT_EQ(data.FormulaAt(At("B9"))->arrayArea, Area("B6:B9"));
  EXPECT_EQ(FormulaIn(data, "B6"), "SUM(A6:A9)");
  book.MoveCells(data.id(), Area("B6:B9"), other.id(), At("C1"));
  EXPECT_EQ(other.FormulaAt(At("C4"))->arrayArea, Area("C1:C4"));
  EXPECT_EQ(FormulaIn(other, "C1"), "SUM('Data'!A6:A9)");
  EXPECT_FALSE(data.cells().hasArrays());
  book.DeleteRuns(other.id(), Axis::Rows, Runs{{1, 4}});
  EXPECT_FALSE(other.cells().hasArrays());
}

// --- parts of the grid
// -------------------------------------------------------------------------------------------------

TEST_F(StructureTest, CellsShiftWithinTheirColumnsOnly) {
  data.SetValue(At("A9"), "a");
  data.SetValue(At("B9"), "b");
  PutSum(other, "A1", "Data!A9,Data!B9,Data!A8:B9,Data!B5:B9");
  book.DeleteCells(data.id(), Area("B2:B4"), Axis::Rows);
  EXPECT_EQ(data.ValueAt(At("A9")), Value("a"));
  EXPECT_EQ(data.ValueAt(At("B6")), Value("b"));
  EXPECT_EQ(FormulaIn(other, "A1"), "SUM('Data'!A9,'Data'!B6,'Data'!A8:B9,'Data'!B2:B6)");
  book.InsertCells(data.id(), Area("A9:A10"), Axis::Columns);
  EXPECT_EQ(data.ValueAt(At("B9")), Value("a"));
  EXPECT_EQ(FormulaIn(other, "A1"), "SUM('Data'!B9,'Data'!B6,'Data'!A8:B9,'Data'!B2:B6)");
}

TEST_F(StructureTest, AValidationThatIsCutGoesApart) {
  Validate("A1:C9", "$E$1");
  book.InsertCells(data.id(), Area("B4:B5"), Axis::Rows);
  EXPECT_THAT(data.validations[0].ranges, testing::UnorderedElementsAre(Area("A1:A9"), Area("C1:C9"), Area("B1:B11")));
  book.DeleteCells(data.id(), Area("A3:A9"), Axis::Columns);
  EXPECT_NE(data.ValidationAt(At("A5")), nullptr);
  EXPECT_EQ(data.ValidationAt(At("C5")), nullptr);
  EXPECT_NE(data.ValidationAt(At("C2")), nullptr);
}

// --- cut and paste
// -----------------------------------------------------------------------------------------------------

TEST_F(StructureTest, ReferencesToMovedCellsFollow) {
  PutSum(data, "A1", "C5,C5:D6,C5:C9,$D$6");
  PutSum(other, "A1", "Data!C5");
  Name(kOwnSheet, "block", "Data!$C$5:$D$6");
  Move("C5:D6", "H10");
  EXPECT_EQ(FormulaIn(data, "A1"), "SUM(H10,H10:I11,C5:C9,$I$11)");
  EXPECT_EQ(FormulaIn(other, "A1"), "SUM('Data'!H10)");
  EXPECT_EQ(NameText(book, book.names, "block"), "SUM('Data'!$H$10:$I$11)");
}

TEST_F(StructureTest, MovedFormulasKeepTheirTargets) {
  PutSum(data, "C5", "A1,C6,$B$2");
  Move("C5:C6", "E7");
  EXPECT_EQ(FormulaIn(data, "C5"), "");
  EXPECT_EQ(FormulaIn(data, "E7"), "SUM(A1,E8,$B$2)");
}

TEST_F(StructureTest, MovingToAnotherSheetNamesTheOldOne) {
  PutSum(data, "C5", "A1,C6,Other!B1");
  data.SetFormula(At("C6"), UseOfName("total"));
  Name(data.id(), "total", "$A$1");
  PutSum(data, "A9", "C5");
  book.MoveCells(data.id(), Area("C5:C6"), other.id(), At("B2"));
  EXPECT_EQ(FormulaIn(other, "B2"), "SUM('Data'!A1,B3,'Other'!B1)");
  EXPECT_EQ(FormulaIn(other, "B3"), "'Data'!total");
  EXPECT_EQ(FormulaIn(data, "A9"), "SUM('Other'!B2)");
}

TEST_F(StructureTest, OverwrittenCellsAreBroken) {
  PutSum(data, "A1", "H10,H10:H11,H9:H12");
  Move("C5:C6", "H10");
  EXPECT_EQ(FormulaIn(data, "A1"), "SUM(#REF!,#REF!,H9:H12)");
}

TEST_F(StructureTest, AnAreaFollowsTheMoveOfItsWholeEdge) {
  PutSum(data, "A1", "C2:D9");
  Move("C9:D9", "C12");
  EXPECT_EQ(FormulaIn(data, "A1"), "SUM(C2:D12)");
  Move("B2:E3", "B1");
  EXPECT_EQ(FormulaIn(data, "A1"), "SUM(C1:D12)");
  Move("D1:D12", "F1");
  EXPECT_EQ(FormulaIn(data, "A1"), "SUM(C1:F12)");
  Move("F12", "F14");
  EXPECT_EQ(FormulaIn(data, "A1"), "SUM(C1:F12)");
}

TEST_F(StructureTest, WhatLiesOnTheCellsMovesWithThem) {
  Validate("C1:C9", "$E$1,B1");
  data.merges = {Area("C5:D6"), Area("H10:H11")};
  data.hyperlinks = {{Area("C5"), "", "total", ""}, {Area("H10"), "", "gone", ""}};
  SizeCell("C5", 20);
  Move("C5:D6", "H10");
  EXPECT_THAT(data.merges, ElementsAre(Area("H10:I11")));
  ASSERT_EQ(data.hyperlinks.size(), 1u);
  EXPECT_EQ(data.hyperlinks[0].range, Area("H10"));
  EXPECT_EQ(SizeAt("H10"), 20);
  EXPECT_EQ(SizeAt("C5"), 11);
  EXPECT_EQ(RuleAt("C4"), "SUM($E$1,B4)");
  EXPECT_EQ(RuleAt("C5"), "");
  EXPECT_EQ(RuleAt("H11"), "SUM($E$1,B6)");  // it still means the cell beside its old place
}

TEST_F(StructureTest, WhatLiesOnTheCellsMovesToAnotherSheet) {
  Validate("C5", "$E$1");
  data.merges = {Area("C5:D6")};
  data.hyperlinks = {{Area("C5"), "", "total", ""}};
  book.MoveCells(data.id(), Area("C5:D6"), other.id(), At("A1"));
  EXPECT_THAT(data.merges, IsEmpty());
  EXPECT_THAT(other.merges, ElementsAre(Area("A1:B2")));
  EXPECT_TRUE(data.validations.empty());
  EXPECT_EQ(DebugText(*other.ValidationAt(At("A1"))->formula1, book, At("A1")), "SUM('Data'!$E$1)");
  EXPECT_EQ(data.hyperlinks.size(), 0u);
  EXPECT_EQ(other.hyperlinks.size(), 1u);
}

TEST_F(StructureTest, CellsKeepWhatTheyShowedInTheirColumn) {
  SizeCell("C:C", 20);
  SizeCell("H:H", 30);
  data.SetValue(At("C5"), 1);
  data.SetValue(At("D5"), 1);
  Move("C5:D5", "G5");
  EXPECT_EQ(SizeAt("G5"), 20);
  EXPECT_EQ(SizeAt("H5"), 11);
  EXPECT_EQ(SizeAt("H6"), 30);
}

TEST_F(StructureTest, WholeColumnsTakeTheirWidthsAlong) {
  data.columns.Change(3, 3, [](Band& band) { band.size = 40; });
  SizeCell("C:C", 20);
  data.SetValue(At("C5"), 1);
  Move("C:C", "F1");
  EXPECT_EQ(data.columns.At(6).size, 40);
  EXPECT_TRUE(data.columns.At(3).isDefault());
  EXPECT_EQ(SizeAt("F99"), 20);
  EXPECT_EQ(data.ValueAt(At("F5")), Value(1));
}

TEST_F(StructureTest, MovingOntoItselfChangesNothing) {
  PutSum(data, "C5", "A1");
  const auto before = book.Clone();
  Move("C5:D6", "C5");
  EXPECT_THAT(Diff(*before, book), IsEmpty());
}

}  // namespace
}  // namespace tolvane::engine
