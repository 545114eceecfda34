#include "engine/model/Workbook.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "engine/model/Diff.h"
#include "engine/model/DifferencePrinter.h"
#include "engine/model/ExpressionBuilder.h"

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

std::vector<std::string> SheetNames(const Workbook& book) {
  std::vector<std::string> names;
  for (std::size_t i = 0; i < book.sheetCount(); ++i) names.push_back(book.sheetAt(i).name());
  return names;
}

class WorkbookTest : public testing::Test {
 protected:
  WorkbookTest() {
    for (const char* name : {"Jan", "Feb", "Mar", "Apr"}) book.AddSheet(name, book.sheetCount());
  }
  Sheet& On(std::string_view name) { return *book.FindSheet(name); }

  Workbook book;
};

// --- sheets
// --------------------------------------------------------------------------------------------------------------

TEST_F(WorkbookTest, SheetsAreFoundIgnoringCaseAndByNumber) {
  EXPECT_EQ(book.FindSheet("fEB")->name(), "Feb");
  EXPECT_EQ(book.FindSheet(On("Mar").id()), &On("Mar"));
  EXPECT_EQ(book.FindSheet("May"), nullptr);
  EXPECT_EQ(book.PositionOf(On("Apr").id()), 3u);
}

TEST_F(WorkbookTest, ASheetGetsTheNextFreeCodeName) {
  EXPECT_EQ(On("Jan").codeName, "Sheet1");
  EXPECT_EQ(On("Apr").codeName, "Sheet4");
  On("Feb").codeName = "shtFeb";
  EXPECT_EQ(book.AddSheet("May", 1).codeName, "Sheet2");
  EXPECT_EQ(book.AddSheet("Jun", 1).codeName, "Sheet5");
  EXPECT_THAT(SheetNames(book), ElementsAre("Jan", "Jun", "May", "Feb", "Mar", "Apr"));
}

TEST_F(WorkbookTest, RefusesBadAndTakenSheetNames) {
  EXPECT_THROW(book.AddSheet("jan", 0), std::invalid_argument);
  EXPECT_THROW(book.AddSheet("", 0), std::invalid_argument);
  EXPECT_THROW(book.RenameSheet(On("Feb").id(), "MAR"), std::invalid_argument);
  EXPECT_THROW(book.AddSheet("May", 9), std::invalid_argument);
  EXPECT_NO_THROW(book.RenameSheet(On("Feb").id(), "FEB"));
  EXPECT_THAT(SheetNames(book), ElementsAre("Jan", "FEB", "Mar", "Apr"));
}

TEST(SheetName, FollowsExcelsRules) {
  const auto isGood = [](std::string_view name) { return !Workbook::WhyBadSheetName(name).has_value(); };
  for (const char* name : {"a", "Q1 'n' Q2", "1234567890123456789012345678901", "Übersicht", "a!b", "#"}) {
    EXPECT_TRUE(isGood(name)) << name;
  }
  for (const char* name : {"", "a:b", "a\\b", "a/b", "a?", "*a", "[a", "a]", "'a", "a'", "History", "hISTORY",
                           "12345678901234567890123456789012"}) {
    EXPECT_FALSE(isGood(name)) << name;
  }
  // A character beyond U+FFFF counts twice.
  std::string bees;
  for (int i = 0; i < 15; ++i) bees.append("\xF0\x9F\x90\x9D");
  EXPECT_TRUE(isGood(bees + "a"));
  EXPECT_FALSE(isGood(bees + "ab"));
}

TEST_F(WorkbookTest, MovesSheets) {
  book.MoveSheet(On("Jan").id(), 2);
  EXPECT_THAT(SheetNames(book), ElementsAre("Feb", "Mar", "Jan", "Apr"));
  book.MoveSheet(On("Apr").id(), 0);
  EXPECT_THAT(SheetNames(book), ElementsAre("Apr", "Feb", "Mar", "Jan"));
  EXPECT_THROW(book.MoveSheet(On("Apr").id(), 4), std::invalid_argument);
}

TEST_F(WorkbookTest, ReferencesKeepTheirSheetThroughRenamesAndMoves) {
  PutSum(On("Jan"), "A1", "Mar!B2");
  book.RenameSheet(On("Mar").id(), "March");
  book.MoveSheet(On("March").id(), 0);
  EXPECT_EQ(FormulaIn(On("Jan"), "A1"), "SUM('March'!B2)");
}

TEST_F(WorkbookTest, DeletingASheetBreaksWhatPointsAtIt) {
  PutSum(On("Jan"), "A1", "Feb!B2,Mar!B2");
  On("Jan").SetFormula(At("A2"), UseOfName("total", On("Feb").id()));
  book.SetName(kOwnSheet, {"all", Sum("Feb!$A$1", At("A1"), book), false});
  book.SetName(On("Feb").id(), {"total", Sum("$A$1", At("A1"), book), false});
  Validation rule;
  rule.ranges = {Area("C1:C9")};
  rule.formula1 = Sum("Feb!$A$1:$A$9", At("C1"), book);
  On("Mar").AddValidation(rule);
  book.DeleteSheet(On("Feb").id());
  EXPECT_EQ(FormulaIn(On("Jan"), "A1"), "SUM(#REF!,'Mar'!B2)");
  EXPECT_EQ(FormulaIn(On("Jan"), "A2"), "#REF!");
  EXPECT_EQ(NameText(book, book.names, "all"), "SUM(#REF!)");
  EXPECT_EQ(DebugText(*On("Mar").validations[0].formula1, book, At("C1")), "SUM(#REF!)");
  EXPECT_EQ(book.ResolveName(On("Jan").id(), "total"), nullptr);
}

TEST_F(WorkbookTest, TheOnlySheetStays) {
  for (const char* name : {"Jan", "Feb", "Mar"}) book.DeleteSheet(On(name).id());
  EXPECT_THROW(book.DeleteSheet(On("Apr").id()), std::invalid_argument);
}

TEST_F(WorkbookTest, AReferenceOverSheetsShrinksWhenAnEndIsDeleted) {
  Sheet& sum = book.AddSheet("Sum", 4);
  PutSum(sum, "A1", "Jan:Mar!B2");
  book.DeleteSheet(On("Mar").id());
  EXPECT_EQ(FormulaIn(sum, "A1"), "SUM('Jan:Feb'!B2)");
  book.DeleteSheet(On("Jan").id());
  EXPECT_EQ(FormulaIn(sum, "A1"), "SUM('Feb'!B2)");
  book.DeleteSheet(On("Feb").id());
  EXPECT_EQ(FormulaIn(sum, "A1"), "SUM(#REF!)");
}

TEST_F(WorkbookTest, AReferenceOverSheetsGivesUpAnEndThatChangesSides) {
  Sheet& sum = book.AddSheet("Sum", 4);
  PutSum(sum, "A1", "Jan:Mar!B2");
  book.MoveSheet(On("Jan").id(), 3);
  EXPECT_EQ(FormulaIn(sum, "A1"), "SUM('Feb:Mar'!B2)");
  book.MoveSheet(On("Feb").id(), 4);
  EXPECT_EQ(FormulaIn(sum, "A1"), "SUM('Mar'!B2)");
}

TEST_F(WorkbookTest, AReferenceOverSheetsDoesNotFollowAChangeOnOneOfThem) {
  Sheet& sum = book.AddSheet("Sum", 4);
  PutSum(sum, "C5", "Jan:Mar!B5");
  const Runs top{{1, 1}};
  book.InsertRuns(On("Feb").id(), Axis::Rows, top);
  EXPECT_EQ(FormulaIn(sum, "C5"), "SUM('Jan:Mar'!B5)");
  book.InsertRuns(sum.id(), Axis::Rows, top);
  EXPECT_EQ(FormulaIn(sum, "C6"), "SUM('Jan:Mar'!B5)");
}

// --- names
// ---------------------------------------------------------------------------------------------------------------

TEST_F(WorkbookTest, ASheetsNameComesBeforeTheWorkbooks) {
  book.SetName(kOwnSheet, {"total", Sum("Jan!$A$1", At("A1"), book), false});
  book.SetName(On("Feb").id(), {"Total", Sum("Feb!$A$2", At("A1"), book), true});
  EXPECT_FALSE(book.ResolveName(On("Jan").id(), "TOTAL")->hidden);
  EXPECT_TRUE(book.ResolveName(On("Feb").id(), "TOTAL")->hidden);
  EXPECT_TRUE(book.RemoveName(On("Feb").id(), "total"));
  EXPECT_FALSE(book.RemoveName(On("Feb").id(), "total"));
  EXPECT_FALSE(book.ResolveName(On("Feb").id(), "TOTAL")->hidden);
  EXPECT_THROW(book.SetName(kOwnSheet, {"A1", nullptr, false}), std::invalid_argument);
}

// --- copies
// --------------------------------------------------------------------------------------------------------------

TEST_F(WorkbookTest, ACloneIsTheSameAndLivesByItself) {
  PutSum(On("Jan"), "A1", "Feb!B2:B9");
  On("Feb").SetValue(At("B2"), "Rent");
  book.SetName(On("Feb").id(), {"total", Sum("$A$1", At("A1"), book), true});
  On("Feb").ChangeFormat(Area("B:B"), [&](FormatId from) {
    return book.formats.With(from, FormatGroup::Font, [](Format& format) { format.font.bold = true; });
  });
  const auto clone = book.Clone();
  EXPECT_THAT(Diff(book, *clone), ElementsAre());
  EXPECT_EQ(&clone->FindSheet("Feb")->book(), clone.get());
  clone->FindSheet("Feb")->SetValue(At("B2"), "Food");
  clone->DeleteSheet(clone->FindSheet("Mar")->id());
  const Runs rows{{1, 3}};
  clone->DeleteRuns(clone->FindSheet("Feb")->id(), Axis::Rows, rows);
  EXPECT_EQ(On("Feb").ValueAt(At("B2")), Value("Rent"));
  EXPECT_EQ(FormulaIn(On("Jan"), "A1"), "SUM('Feb'!B2:B9)");
  EXPECT_EQ(book.sheetCount(), 4u);
  EXPECT_EQ(clone->AddSheet("New", 0).id(), book.AddSheet("New", 0).id());
}

// --- listeners
// -----------------------------------------------------------------------------------------------------------

class Recorder final : public ChangeListener {
 public:
  void CellsChanged(SheetId sheet, const Rect& area) override {
    heard.push_back("cells " + std::to_string(sheet) + " " + std::to_string(area.cells()));
  }
  void StructureChanged() override { heard.push_back("structure"); }
  void NamesChanged() override { heard.push_back("names"); }
  void RowsHiddenChanged(SheetId sheet) override { heard.push_back("hidden " + std::to_string(sheet)); }
  std::vector<std::string> Take() { return std::exchange(heard, {}); }

 private:
  std::vector<std::string> heard;
};

TEST_F(WorkbookTest, ListenersHearOfEachChangeOnce) {
  Recorder recorder;
  book.AddListener(&recorder);
  Sheet& jan = On("Jan");
  jan.SetValue(At("A1"), 1);
  jan.SetValues(Area("A1:B2"), std::vector<Value>(4));
  PutSum(jan, "A1", "B2");
  jan.ClearContents(Area("A1:A3"));
  EXPECT_THAT(recorder.Take(), ElementsAre("cells 1 1", "cells 1 4", "cells 1 1", "cells 1 3"));
  const Runs rows{{2, 1}};
  book.DeleteRuns(jan.id(), Axis::Rows, rows);
  book.InsertRuns(jan.id(), Axis::Columns, rows);
  book.MoveCells(jan.id(), Area("A1"), jan.id(), At("B1"));
  book.RenameSheet(jan.id(), "January");
  book.MoveSheet(jan.id(), 1);
  book.DeleteSheet(On("Feb").id());
  EXPECT_THAT(recorder.Take(), testing::AllOf(testing::SizeIs(6), testing::Each("structure")));
  book.SetName(kOwnSheet, {"x", nullptr, false});
  book.RemoveName(kOwnSheet, "x");
  book.RemoveName(kOwnSheet, "x");
  book.TellRowsHiddenChanged(3);
  EXPECT_THAT(recorder.Take(), ElementsAre("names", "names", "hidden 3"));
  jan.StoreResult(At("A1"), 5);
  EXPECT_THROW(book.RenameSheet(jan.id(), "Mar"), std::invalid_argument);
  EXPECT_THAT(recorder.Take(), ElementsAre());
  book.RemoveListener(&recorder);
  jan.SetValue(At("A1"), 1);
  EXPECT_THAT(recorder.Take(), ElementsAre());
}

}  // namespace
}  // namespace tolvane::engine
