#include "engine/formula/Calculator.h"

#include <gmock/gmock.h>
#include <rapidcheck.h>

#include "engine/formula/FormulaFixture.h"

namespace tolvane::engine {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class CalculatorTest : public FormulaFixture {
 protected:
  SheetId first() { return book.sheetAt(0).id(); }
  SheetId second() { return book.sheetAt(1).id(); }
};

TEST_F(CalculatorTest, AChangeReachesWhatDependsOnIt) {
  Set("A1", 1);
  Set("A2", "=A1+1");
  Set("A3", "=SUM(A1:A2)");
  Set("Sheet2!B1", "=Sheet1!A3*10");
  EXPECT_EQ(Number("Sheet2!B1"), 30);
  Set("A1", 5);
  EXPECT_EQ(Stored("A3"), Value(3.0));  // nothing happens before the calculation
  EXPECT_EQ(Number("Sheet2!B1"), 110);
}

TEST_F(CalculatorTest, TellsOnWhichSheetsItWorked) {
  Set("A1", 1);
  Set("B1", "=A1");
  Set("Sheet2!A1", "=Sheet2!B1");
  EXPECT_THAT(calculator.Recalculate(), ElementsAre(first(), second()));
  EXPECT_THAT(calculator.Recalculate(), IsEmpty());
  EXPECT_FALSE(calculator.HasStale());
  Set("A1", 2);
  EXPECT_TRUE(calculator.HasStale());
  EXPECT_THAT(calculator.Recalculate(), ElementsAre(first()));
  Set("Sheet2!B1", 2);
  EXPECT_THAT(calculator.Recalculate(), ElementsAre(second()));
  Set("C7", 2);
  EXPECT_THAT(calculator.Recalculate(), IsEmpty());
}

TEST_F(CalculatorTest, FormulasBecomeConstantsAndBack) {
  Set("A1", 1);
  Set("B1", "=A1");
  Set("C1", "=B1");
  EXPECT_EQ(Number("C1"), 1);
  Set("B1", 7);
  EXPECT_EQ(Number("C1"), 7);
  Set("A1", 2);
  EXPECT_EQ(Number("C1"), 7);
  Set("B1", "=A1*100");
  EXPECT_EQ(Number("C1"), 200);
  At("B1").sheet.ClearContents(At("A1:B1").rect);
  EXPECT_EQ(Number("C1"), 0);
}

TEST_F(CalculatorTest, DeepChainsInEitherDirection) {
  constexpr int kDeep = 100000;
  Sheet& sheet = book.sheetAt(0);
  const ExpressionPtr above = ParseFormula("=R[-1]C+1", Notation::R1C1, {first(), {2, 1}}, book);
  const ExpressionPtr below = ParseFormula("=R[1]C+1", Notation::R1C1, {first(), {1, 2}}, book);
  for (int row = 2; row <= kDeep; ++row) sheet.SetFormula({row, 1}, above);
  for (int row = 1; row < kDeep; ++row) sheet.SetFormula({row, 2}, below);
  sheet.SetValue({1, 1}, Value(1.0));
  sheet.SetValue({kDeep, 2}, Value(1.0));
  calculator.Recalculate();
  EXPECT_EQ(sheet.ValueAt({kDeep, 1}), Value(double{kDeep}));
  EXPECT_EQ(sheet.ValueAt({1, 2}), Value(double{kDeep}));
  sheet.SetValue({1, 1}, Value(11.0));
  sheet.SetValue({kDeep, 2}, Value(11.0));
  calculator.Recalculate();
  EXPECT_EQ(sheet.ValueAt({kDeep, 1}), Value(double{kDeep + 10}));
  EXPECT_EQ(sheet.ValueAt({1, 2}), Value(double{kDeep + 10}));
}

TEST_F(CalculatorTest, RunningSumsFromTheWrongEnd) {
  constexpr int kRows = 1500;
  Sheet& sheet = book.sheetAt(0);
  sheet.SetValue({kRows + 1, 1}, Value(1.0));
  for (int row = 1; row <= kRows; ++row) {
    const std::string formula = "=SUM(R[1]C:R" + std::to_string(kRows + 1) + "C)*0+R[1]C+1";
    sheet.SetFormula({row, 1}, ParseFormula(formula, Notation::R1C1, {first(), {row, 1}}, book));
  }
  calculator.Recalculate();
  EXPECT_EQ(sheet.ValueAt({1, 1}), Value(double{kRows + 1}));
}

TEST_F(CalculatorTest, CirclesGiveZeroAndAreReported) {
  Set("A1", "=A1+1");
  EXPECT_EQ(Number("A1"), 0);
  EXPECT_TRUE(calculator.FoundCircle());
  Set("A1", 5);
  calculator.Recalculate();
  EXPECT_FALSE(calculator.FoundCircle());

  Set("B1", "=C1+1");
  Set("C1", "=D1+1");
  Set("D1", "=B1+1+A1");
  Set("E1", "=D1+7");  // leans on the circle, but is not in it
  EXPECT_EQ(Number("E1"), 7);
  EXPECT_TRUE(calculator.FoundCircle());
  for (const char* cell : {"B1", "C1", "D1"}) EXPECT_EQ(Stored(cell), Value(0.0)) << cell;
  Set("D1", 1);
  EXPECT_EQ(Number("B1"), 3);
  EXPECT_FALSE(calculator.FoundCircle());
}

TEST_F(CalculatorTest, CirclesThatShareCells) {
  Set("A1", "=B1+C1+1");
  Set("B1", "=A1+5");
  Set("C1", "=A1+7");
  Set("D1", "=SUM(A1:D2)");
  EXPECT_EQ(Number("D1"), 0);
  for (const char* cell : {"A1", "B1", "C1"}) EXPECT_EQ(Stored(cell), Value(0.0)) << cell;
}

TEST_F(CalculatorTest, ABranchNotTakenIsNoCircle) {
  Set("A1", 1);
  Set("B1", "=IF(A1=1,10,C1)");
  Set("C1", "=IF(A1=1,B1+1,20)");
  EXPECT_EQ(Number("C1"), 11);
  EXPECT_FALSE(calculator.FoundCircle());
  Set("A1", 2);
  EXPECT_EQ(Number("B1"), 20);
  EXPECT_FALSE(calculator.FoundCircle());
}

TEST_F(CalculatorTest, DynamicReferencesMeetStaleCells) {
  Set("A1", 1);
  Set("Z50", "=A1*2");
  Set("B1", "=INDIRECT(\"Z\"&50)");
  Set("C1", "=OFFSET(A1,49,25)");
  Set("D1", "=B1+C1");
  EXPECT_EQ(Number("D1"), 4);
  Set("A1", 10);
  EXPECT_EQ(Number("D1"), 40);
}

TEST_F(CalculatorTest, RangesBuiltFromIndexDependOnWhatLiesBetween) {
  Set("A1", 1);
  Set("C1", 3);
  Set("D1", "=SUM(A1:INDEX(C1:C5,1))");
  EXPECT_EQ(Number("D1"), 4);
  Set("B1", 2);
  EXPECT_EQ(Number("D1"), 6);
}

TEST_F(CalculatorTest, VolatileFunctionsFollowTheWorld) {
  Set("A1", "=TODAY()");
  Set("A2", "=A1+1");
  EXPECT_EQ(Number("A2"), 45001);
  world.now = 45010.25;
  EXPECT_EQ(Number("A2"), 45011);
}

TEST_F(CalculatorTest, NamesAreDependencies) {
  Set("A1", 3);
  Set("A2", 4);
  Set("B1", "=total+1");
  EXPECT_EQ(Text("B1"), "#NAME?");
  Name("total", "=Sheet1!$A$1");
  EXPECT_EQ(Number("B1"), 4);
  Set("A1", 10);
  EXPECT_EQ(Number("B1"), 11);
  Name("total", "=Sheet1!$A$2*100");
  EXPECT_EQ(Number("B1"), 401);
  Set("A2", 5);
  EXPECT_EQ(Number("B1"), 501);
  book.RemoveName(kOwnSheet, "total");
  EXPECT_EQ(Text("B1"), "#NAME?");
}

TEST_F(CalculatorTest, ASheetsOwnNameComesFirst) {
  Name("rate", "=1");
  book.SetName(second(), {"rate", ParseFormula("=2", Notation::A1, {kOwnSheet, kA1}, book), false});
  Set("A1", "=rate");
  Set("Sheet2!A1", "=rate");
  Set("A2", "=Sheet2!rate");
  EXPECT_EQ(Number("A1"), 1);
  EXPECT_EQ(Number("Sheet2!A1"), 2);
  EXPECT_EQ(Number("A2"), 2);
}

TEST_F(CalculatorTest, NamesWithoutEndDoNotHang) {
  Name("loop", "=loop+1");
  EXPECT_EQ(Result("=loop"), "#NAME?");
  // Each name uses the next one twice.
  for (int i = 40; i >= 0; --i) {
    const std::string next = "n" + std::to_string(i + 1) + "x";
    Name("n" + std::to_string(i) + "x", std::string("=").append(next).append("+").append(next));
  }
  Name("n41x", "=1");
  EXPECT_EQ(Result("=n0x"), "#VALUE!");
}

TEST_F(CalculatorTest, ArrayFormulasFillTheirArea) {
  Set("A1", 1);
  Set("A2", 2);
  Set("A3", 3);
  SetArray("C1:C4", "=A1:A3*10");
  EXPECT_EQ(Text("C1"), "10");
  EXPECT_EQ(Text("C3"), "30");
  EXPECT_EQ(Text("C4"), "#N/A");
  SetArray("D1:D2", "=SUM(A1:A3)");
  EXPECT_EQ(Text("D2"), "6");
  Set("E1", "=C3+1");
  EXPECT_EQ(Number("E1"), 31);
  Set("A3", 4);
  EXPECT_EQ(Number("E1"), 41);
}

TEST_F(CalculatorTest, SubtotalsFollowHiddenRows) {
  for (int row = 1; row <= 5; ++row) book.sheetAt(0).SetValue({row, 1}, Value(row));
  Set("B1", "=SUBTOTAL(9,A1:A5)");
  Set("B2", "=SUBTOTAL(109,A1:A5)");
  Set("Sheet2!A1", "=SUBTOTAL(9,A2:A3)");
  EXPECT_EQ(Number("B1"), 15);
  Sheet& sheet = book.sheetAt(0);
  sheet.rows.Change(2, 2, [](Band& band) { band.hidden = true; });
  sheet.rows.Change(4, 5, [](Band& band) { band.filtered = true; });
  book.TellRowsHiddenChanged(first());
  EXPECT_THAT(calculator.Recalculate(), ElementsAre(first()));
  EXPECT_EQ(Stored("B1"), Value(6.0));
  EXPECT_EQ(Stored("B2"), Value(4.0));
}

TEST_F(CalculatorTest, StructuralChangesMakeResultsRight) {
  Set("A1", 1);
  Set("A2", 2);
  Set("A3", 3);
  Set("B1", "=SUM(A1:A3)");
  Set("C1", "=SUM(A:A)");
  Set("D1", "=ROW(A3)");
  EXPECT_EQ(Number("B1"), 6);
  const engine::Run row{2, 1};
  book.DeleteRuns(first(), Axis::Rows, {&row, 1});
  EXPECT_EQ(Number("B1"), 4);
  EXPECT_EQ(Number("C1"), 4);
  EXPECT_EQ(Number("D1"), 2);
  book.InsertRuns(first(), Axis::Rows, {&row, 1});
  Set("A2", 100);
  EXPECT_EQ(Number("B1"), 104);
  EXPECT_EQ(Number("D1"), 3);
}

TEST_F(CalculatorTest, WritesBeforeAStructuralChangeCount) {
  Set("A1", 1);
  Set("B1", "=A1");
  Number("B1");
  Set("A1", 2);
  const engine::Run top{1, 1};
  book.InsertRuns(first(), Axis::Rows, {&top, 1});
  Set("A2", 3);
  book.InsertRuns(first(), Axis::Rows, {&top, 1});
  EXPECT_EQ(Number("B3"), 3);
}

TEST_F(CalculatorTest, DeletedSheetsLeaveErrors) {
  Set("Sheet2!A1", 5);
  Set("A1", "=Sheet2!A1");
  EXPECT_EQ(Number("A1"), 5);
  book.DeleteSheet(second());
  EXPECT_EQ(Text("A1"), "#REF!");
}

TEST_F(CalculatorTest, ResultsThatWereLoadedStayUntilSomethingChanges) {
  const ExpressionPtr formula = Parse("=A1+1", At("B1"));
  book.sheetAt(0).cells().SetFormula({1, 2}, {formula, std::nullopt, false});
  book.sheetAt(0).StoreResult({1, 2}, Value(99.0));
  Calculator fresh(book, world);
  EXPECT_FALSE(fresh.HasStale());
  fresh.Recalculate();
  EXPECT_EQ(Stored("B1"), Value(99.0));
  Set("A1", 1);
  fresh.Recalculate();
  EXPECT_EQ(Stored("B1"), Value(2.0));
  book.sheetAt(0).StoreResult({1, 2}, Value(99.0));
  fresh.InvalidateAll();
  fresh.Recalculate();
  EXPECT_EQ(Stored("B1"), Value(2.0));
}

TEST_F(CalculatorTest, EnteredFormulasShowAResultInManualMode) {
  Set("A1", 1);
  Set("B1", "=A1*2");
  calculator.Recalculate();
  Set("A1", 10);  // B1 is stale now
  Set("C1", "=B1+1");
  Set("C2", "=C1+1");
  calculator.RecalculateCells(first(), At("C1:C2").rect);
  EXPECT_EQ(Stored("B1"), Value(2.0));
  EXPECT_EQ(Stored("C1"), Value(3.0));
  EXPECT_EQ(Stored("C2"), Value(4.0));
  EXPECT_TRUE(calculator.HasStale());
  calculator.Recalculate();
  EXPECT_EQ(Stored("B1"), Value(20.0));
  EXPECT_EQ(Stored("C1"), Value(21.0));
  EXPECT_EQ(Stored("C2"), Value(22.0));
}

TEST_F(CalculatorTest, EnteringOneFormulaMarksItsDependents) {
  Set("A1", "=1");
  Set("B1", "=A1+1");
  calculator.Recalculate();
  Set("A1", "=5");
  calculator.RecalculateCells(first(), At("A1").rect);
  EXPECT_EQ(Stored("A1"), Value(5.0));
  EXPECT_EQ(Stored("B1"), Value(2.0));
  calculator.Recalculate();
  EXPECT_EQ(Stored("B1"), Value(6.0));
}

TEST_F(CalculatorTest, OneSheetWithWhatItNeeds) {
  Set("A1", 1);
  Set("A2", "=A1");
  Set("A3", "=A1");
  Set("Sheet2!A1", "=Sheet1!A2+1");
  calculator.Recalculate();
  Set("A1", 5);
  calculator.RecalculateSheet(second());
  EXPECT_EQ(Stored("Sheet2!A1"), Value(6.0));
  EXPECT_EQ(Stored("A2"), Value(5.0));
  EXPECT_EQ(Stored("A3"), Value(1.0));
  EXPECT_TRUE(calculator.HasStale());
  calculator.Recalculate();
  EXPECT_EQ(Stored("A3"), Value(5.0));
}

TEST_F(CalculatorTest, OtherWorkbooks) {
  Workbook other;
  if (other.sheetCount() == 0) other.AddSheet("Data", 0);
  if (other.sheetAt(0).name() != "Data") other.RenameSheet(other.sheetAt(0).id(), "Data");
  other.sheetAt(0).SetValue({1, 1}, Value(42.0));
  Set("A1", "=[Other.xlsx]Data!A1+1");
  EXPECT_EQ(Text("A1"), "#REF!");
  world.books["Other.xlsx"] = &other;
  EXPECT_EQ(Number("A1"), 43);
  other.sheetAt(0).SetValue({1, 1}, Value(50.0));
  EXPECT_EQ(Number("A1"), 51);
  // While the other workbook is closed the last result stays.
  world.books.clear();
  calculator.InvalidateAll();
  EXPECT_EQ(Number("A1"), 51);
  Set("A2", "=[Book.xlsx]Sheet1!A1");  // this very workbook
  EXPECT_EQ(Number("A2"), 51);
}

TEST_F(CalculatorTest, EvaluatesExpressionsOutsideOfCells) {
  Set("A1", 1);
  Set("A2", 2);
  const FormulaHome home{first(), {2, 3}};
  const auto value = [&](const char* text) {
    return calculator.Evaluate(*ParseFormula(text, Notation::A1, home, book), home);
  };
  EXPECT_EQ(value("=SUM(A1:A2)"), Value(3.0));
  EXPECT_EQ(value("=A1:A2"), Value(1.0));
  EXPECT_EQ(value("=A9"), Value());
}

// Whatever is written in whatever order, the results are those of a calculator that starts afresh.
TEST(CalculatorProperty, StepByStepEqualsAllAtOnce) {
  EXPECT_TRUE(rc::check([] {
    const auto between = [](int low, int high) {
      return *rc::gen::resize(rc::kNominalSize, rc::gen::inRange(low, high + 1));
    };
    Workbook book;
    if (book.sheetCount() == 0) book.AddSheet("Sheet1", 0);
    book.AddSheet("Other", 1);
    FakeWorld world;
    Calculator calculator(book, world);
    constexpr int kSize = 6;
    const auto cell = [&] { return CellPos{between(1, kSize), between(1, kSize)}; };
    const auto name = [&](CellPos at) { return ColumnLetters(at.column) + std::to_string(at.row); };
    // A cell of a row above, so that circles are rare.
    const auto before = [&](CellPos at) { return name({between(1, at.row - 1), between(1, kSize)}); };
    bool hadCircle = false;
    const auto recalculate = [&] {
      calculator.Recalculate();
      hadCircle = hadCircle || calculator.FoundCircle();
    };
    const int steps = between(1, 40);
    for (int step = 0; step < steps; ++step) {
      Sheet& sheet = book.sheetAt(static_cast<std::size_t>(between(0, 1)));
      const CellPos at = cell();
      switch (between(0, 9)) {
        case 0:
        case 1:
          sheet.SetValue(at, Value(between(0, 9)));
          break;
        case 2:
          sheet.ClearContents({at.row, at.column, std::min(at.row + 2, kSize), at.column});
          break;
        case 3: {
          const engine::Run run{between(1, kSize), 1};
          if (between(0, 1) == 0) {
            book.DeleteRuns(sheet.id(), Axis::Rows, {&run, 1});
          } else {
            book.InsertRuns(sheet.id(), Axis::Columns, {&run, 1});
          }
          break;
        }
        case 4:
          book.SetName(kOwnSheet,
                       {"total", ParseFormula("=Other!$A$1:$B$2", Notation::A1, {kOwnSheet, {1, 1}}, book), false});
          break;
        case 5:
          recalculate();
          break;
        default: {
          if (at.row == 1) break;
          std::string text = "=" + before(at) + "+1";
          const int kind = between(0, 4);
          if (kind == 1) text = "=SUM(A1:" + before(at) + ")";
          if (kind == 2) text = "=IF(" + before(at) + ">3," + before(at) + ",Other!" + before(at) + ")";
          if (kind == 3) text = "=SUM(total)+COUNTIF(1:1,1)";
          if (kind == 4) text = "=INDIRECT(\"" + before(at) + "\")*2";
          sheet.SetFormula(at, ParseFormula(text, Notation::A1, {sheet.id(), at}, book));
          break;
        }
      }
    }
    recalculate();
    // In circles with branches the result may depend on where one begins.
    RC_PRE(!hadCircle);
    const std::unique_ptr<Workbook> copy = book.Clone();
    Calculator fresh(*copy, world);
    fresh.InvalidateAll();
    fresh.Recalculate();
    RC_ASSERT(!fresh.FoundCircle());
    for (std::size_t position = 0; position < book.sheetCount(); ++position) {
      const Rect all{1, 1, 4 * kSize, 60};
      book.sheetAt(position).cells().ForEachContent(all, [&](CellPos at, const Value& value, const FormulaCell*) {
        RC_ASSERT(copy->sheetAt(position).ValueAt(at) == value);
      });
    }
  }));
}

}  // namespace
}  // namespace tolvane::engine
