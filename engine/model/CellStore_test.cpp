#include "engine/model/CellStore.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <map>
#include <memory>
#include <tuple>
#include <vector>

#include "engine/model/ExpressionBuilder.h"

namespace tolvane::engine {
namespace {

using test::Area;
using test::At;
using test::Runs;

ExpressionPtr Numbered(int number) {
  auto expression = std::make_shared<Expression>();
  expression->constants.push_back(number);
  return expression;
}

TEST(CellStore, AnEmptyCellHoldsNothing) {
  const CellStore cells;
  EXPECT_TRUE(cells.ValueAt(At("B7")).isEmpty());
  EXPECT_EQ(cells.FormulaAt(At("B7")), nullptr);
  EXPECT_EQ(cells.UsedRange(), std::nullopt);
}

TEST(CellStore, AConstantEndsAFormulaAndAResultDoesNot) {
  CellStore cells;
  cells.SetFormula(At("B7"), {Numbered(1), {}, true});
  cells.StoreResult(At("B7"), 5);
  EXPECT_EQ(cells.ValueAt(At("B7")), Value(5));
  ASSERT_NE(cells.FormulaAt(At("B7")), nullptr);
  EXPECT_EQ(cells.formulaCount(), 1u);
  cells.SetValue(At("B7"), 6);
  EXPECT_EQ(cells.FormulaAt(At("B7")), nullptr);
  EXPECT_EQ(cells.formulaCount(), 0u);
}

TEST(CellStore, FormatsOutliveContents) {
  CellStore cells;
  cells.SetValue(At("B7"), 5);
  cells.SetFormat(At("C9"), 4);
  EXPECT_EQ(cells.UsedRange(), Area("B7:C9"));
  EXPECT_EQ(cells.UsedContents(), Area("B7"));
  cells.ClearContents(Area("A1:Z99"));
  EXPECT_EQ(cells.UsedContents(), std::nullopt);
  EXPECT_EQ(cells.UsedRange(), Area("C9"));
  cells.Clear(Area("A1:Z99"));
  EXPECT_EQ(cells.UsedRange(), std::nullopt);
}

TEST(CellStore, EqualTextsOfABlockAreOneText) {
  CellStore cells;
  const std::vector<Value> block{Value("Rent"), Value(1), Value("Rent"), Value(2)};
  cells.WriteValues(Area("A1:B2"), block);
  EXPECT_TRUE(cells.ValueAt(At("A1")).text().IsSame(cells.ValueAt(At("A2")).text()));
  EXPECT_FALSE(block[0].text().IsSame(block[2].text()));
}

TEST(CellStore, FarCellsOfEveryColumnCostLittle) {
  CellStore cells;
  for (int column = 1; column <= kMaxColumn; ++column) cells.SetValue({kMaxRow, column}, column);
  EXPECT_EQ(cells.UsedRange(), (Rect{kMaxRow, 1, kMaxRow, kMaxColumn}));
  cells.DeleteRuns(Axis::Rows, Runs{{5, 10}});
  EXPECT_EQ(cells.UsedRange(), (Rect{kMaxRow - 10, 1, kMaxRow - 10, kMaxColumn}));
  EXPECT_EQ(cells.ValueAt({kMaxRow - 10, 77}), Value(77));
}

TEST(CellStore, WalksColumnByColumnAndDownward) {
  CellStore cells;
  cells.SetValue(At("B200"), 3);
  cells.SetValue(At("B2"), 2);
  cells.SetFormula(At("A9"), {Numbered(1), {}, true});
  cells.SetFormat(At("A1"), 5);
  std::vector<CellPos> contents;
  cells.ForEachContent(Area("A1:C300"), [&](CellPos at, const Value&, const FormulaCell*) { contents.push_back(at); });
  EXPECT_EQ(contents, (std::vector<CellPos>{At("A9"), At("B2"), At("B200")}));
  int all = 0;
  cells.ForEachCell(Area("A1:C300"), [&](CellPos, const Value&, const FormulaCell*, FormatId) { ++all; });
  EXPECT_EQ(all, 4);
  int formulas = 0;
  cells.ForEachFormula(Area("A1:A9"), [&](CellPos, FormulaCell& cell) { formulas += cell.dirty ? 1 : 0; });
  EXPECT_EQ(formulas, 1);
}

// --- against a plain map of cells
// --------------------------------------------------------------------------------------

struct PlainCell {
  Value value;
  int formula = 0;
  FormatId format = 0;
  bool isAbsent() const { return value.isEmpty() && formula == 0 && format == 0; }
};
using PlainCells = std::map<std::pair<int, int>, PlainCell>;  // by column and row

// Every cell where `place` puts it; without one where that gives nothing.
template <class MapPlace>
PlainCells Rearranged(const PlainCells& cells, MapPlace&& place) {
  PlainCells result;
  for (const auto& [at, cell] : cells) {
    if (const auto to = place(CellPos{at.second, at.first})) result[{to->column, to->row}] = cell;
  }
  return result;
}

PlainCells Read(const CellStore& store) {
  PlainCells cells;
  store.ForEachCell(
      Rect::WholeSheet(), [&](CellPos at, const Value& value, const FormulaCell* formula, FormatId format) {
        const int number = formula == nullptr ? 0 : static_cast<int>(formula->expression->constants[0].number());
        cells[{at.column, at.row}] = {value, number, format};
      });
  return cells;
}

bool Same(const PlainCells& a, const PlainCells& b) {
  if (a.size() != b.size()) return false;
  for (auto x = a.begin(), y = b.begin(); x != a.end(); ++x, ++y) {
    if (x->first != y->first || !(x->second.value == y->second.value) || x->second.formula != y->second.formula ||
        x->second.format != y->second.format) {
      return false;
    }
  }
  return true;
}

Rect AnyArea() {
  const int top = *rc::gen::inRange(1, 200);
  const int left = *rc::gen::inRange(1, 7);
  return {top, left, top + *rc::gen::inRange(0, 150), left + *rc::gen::inRange(0, 4)};
}

// Deletes or inserts one row or column at a time.
std::optional<CellPos> Shifted(CellPos at, const Rect& area, Axis along, bool inserting) {
  const bool rows = along == Axis::Rows;
  const bool isInStrip =
      rows ? area.left <= at.column && at.column <= area.right : area.top <= at.row && at.row <= area.bottom;
  if (!isInStrip) return at;
  int& index = rows ? at.row : at.column;
  const int first = rows ? area.top : area.left;
  for (int n = rows ? area.rows() : area.columns(); n > 0; --n) {
    if (inserting) {
      if (index >= first) ++index;
    } else {
      if (index == first) return std::nullopt;
      if (index > first) --index;
    }
  }
  return at;
}

TEST(CellStore, AgreesWithAMapOfCells) {
  EXPECT_TRUE(rc::check([] {
    CellStore store;
    PlainCells plain;
    int number = 0;
    for (int step = *rc::gen::inRange(5, 40); step > 0; --step) {
      const Rect area = AnyArea();
      const auto contains = [&](const auto& entry) {
        return area.contains(CellPos{entry.first.second, entry.first.first});
      };
      const Axis axis = *rc::gen::element(Axis::Rows, Axis::Columns);
      switch (*rc::gen::inRange(0, 10)) {
        case 0:
        case 1: {  // a table
          std::vector<Value> values;
          for (int row = area.top; row <= area.bottom; ++row) {
            for (int column = area.left; column <= area.right; ++column) {
              const int kind = (row * 7 + column + number) % 4;
              values.push_back(kind == 0   ? Value()
                               : kind == 1 ? Value(row % 5 == 0 ? "Food" : "Rent")
                                           : Value(++number));
              PlainCell& cell = plain[{column, row}];
              cell.value = values.back();
              cell.formula = 0;
              if (cell.isAbsent()) plain.erase({column, row});
            }
          }
          store.WriteValues(area, values);
          std::vector<Value> back(values.size());
          store.ReadValues(area, back);
          RC_ASSERT(back == values);
          break;
        }
        case 2:
          for (int row = area.top; row <= area.bottom; row += 3) {
            ++number;
            store.SetFormula({row, area.left}, {Numbered(number), {}, true});
            plain[{area.left, row}].formula = number;
          }
          break;
        case 3:
          for (int row = area.top; row <= area.bottom; row += 2) {
            store.SetFormat({row, area.right}, 3);
            plain[{area.right, row}].format = 3;
          }
          break;
        case 4:
          store.Clear(area);
          std::erase_if(plain, contains);
          break;
        case 5:
          store.ClearContents(area);
          for (auto& entry : plain) {
            if (contains(entry)) entry.second = {Value(), 0, entry.second.format};
          }
          std::erase_if(plain, [](const auto& entry) { return entry.second.isAbsent(); });
          break;
        case 6:
          store.DeleteCells(area, axis);
          plain = Rearranged(plain, [&](CellPos at) { return Shifted(at, area, axis, false); });
          break;
        case 7:
          store.InsertCells(area, axis);
          plain = Rearranged(plain, [&](CellPos at) { return Shifted(at, area, axis, true); });
          break;
        case 8: {
          const Runs runs = axis == Axis::Rows ? Runs{{area.top, area.rows()}} : Runs{{area.left, area.columns()}};
          const bool inserting = *rc::gen::arbitrary<bool>();
          const Rect strip =
              axis == Axis::Rows ? Rect::Rows(area.top, area.bottom) : Rect::Columns(area.left, area.right);
          inserting ? store.InsertRuns(axis, runs) : store.DeleteRuns(axis, runs);
          plain = Rearranged(plain, [&](CellPos at) { return Shifted(at, strip, axis, inserting); });
          break;
        }
        case 9: {
          const CellPos target{*rc::gen::inRange(1, 200), *rc::gen::inRange(1, 9)};
          store.MoveBlock(area, store, target);
          const Rect there{target.row, target.column, target.row + area.rows() - 1, target.column + area.columns() - 1};
          plain = Rearranged(plain, [&](CellPos at) -> std::optional<CellPos> {
            if (area.contains(at))
              return CellPos{at.row + target.row - area.top, at.column + target.column - area.left};
            if (there.contains(at)) return std::nullopt;
            return at;
          });
          break;
        }
      }
      RC_ASSERT(Same(Read(store), plain));
      std::size_t formulas = 0;
      for (const auto& entry : plain) formulas += entry.second.formula != 0 ? 1 : 0;
      RC_ASSERT(store.formulaCount() == formulas);
    }
    const CellStore copy = store;
    store.Clear(Rect::WholeSheet());
    RC_ASSERT(Same(Read(copy), plain));
    RC_ASSERT(!store.UsedRange());
  }));
}

TEST(CellStore, MovingToAnotherStoreTakesFormulasAlong) {
  CellStore from;
  CellStore to;
  to.SetFormula(At("D4"), {Numbered(1), {}, true});
  to.SetValue(At("E5"), 9);
  from.SetFormula(At("A1"), {Numbered(2), {}, true});
  from.SetValue(At("B2"), 3);
  from.MoveBlock(Area("A1:B2"), to, At("D4"));
  EXPECT_EQ(from.UsedRange(), std::nullopt);
  EXPECT_EQ(from.formulaCount(), 0u);
  EXPECT_EQ(to.formulaCount(), 1u);
  EXPECT_EQ(to.FormulaAt(At("D4"))->expression->constants[0], Value(2));
  EXPECT_EQ(to.ValueAt(At("E5")), Value(3));
}

}  // namespace
}  // namespace tolvane::engine
