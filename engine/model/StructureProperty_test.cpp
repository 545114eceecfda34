// References under structural changes, compared with a slow model that knows no arithmetic of references: a reference
// is the set of the tokens that it covers.
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "engine/model/ExpressionBuilder.h"
#include "engine/model/TokenGrid.h"
#include "engine/model/Workbook.h"

namespace tolvane::engine {
namespace {

using test::AnyArea;
using test::AnyStep;
using test::Hull;
using test::IsShift;
using test::kUsed;
using test::Step;
using test::Token;
using test::TokenGrid;
using test::Tokens;

// A shift of part of the grid takes along what lies wholly in its rows or columns; a move what lies wholly in its
// block. Other references stay where they are, but for those whose cells are all overwritten.
std::optional<Rect> Followed(const Rect& before, const TokenGrid& gridBefore, const Step& step,
                             const std::map<Token, CellPos>& places) {
  const bool ofCells = step.kind == Step::Kind::DeleteCells || step.kind == Step::Kind::InsertCells;
  if (ofCells) {
    const bool isWithin = step.axis == Axis::Rows ? step.area.left <= before.left && before.right <= step.area.right
                                                  : step.area.top <= before.top && before.bottom <= step.area.bottom;
    if (!isWithin) return before;
  }
  const auto hull = Hull(gridBefore.In(before), places);
  if (IsShift(step)) return hull;
  if (!hull || step.area.contains(before)) return hull;
  return before;
}

// Which references a move takes apart is told elsewhere; here they are left out.
bool IsCutByMove(const Rect& area, const Step& step) {
  return !IsShift(step) && step.area.intersects(area) && !step.area.contains(area);
}

// --- the subject -----------------------------------------------------------------------------------------------------

struct TrackedFormula {
  Token home;
  std::vector<std::optional<Rect>> targets;  // nothing: broken
};

struct TrackedName {
  std::string name;
  std::optional<Rect> target;
};

// A reference to an area from a cell, each bound absolute or relative.
Reference AnyReferenceTo(const Rect& area, CellPos home, SheetId sheet) {
  const auto bound = [](int index, int from) {
    const bool relative = *rc::gen::arbitrary<bool>();
    return Coordinate{relative ? index - from : index, relative};
  };
  Reference reference;
  reference.shape = area.isCell() ? Reference::Shape::Cell : Reference::Shape::Area;
  reference.sheet = sheet;
  reference.firstRow = bound(area.top, home.row);
  reference.firstColumn = bound(area.left, home.column);
  reference.lastRow = area.isCell() ? reference.firstRow : bound(area.bottom, home.row);
  reference.lastColumn = area.isCell() ? reference.firstColumn : bound(area.right, home.column);
  return reference;
}

class Subject {
 public:
  Subject() {
    for (int i = 0; i < 8; ++i) AddFormula();
    for (int i = 0; i < 4; ++i) AddName(i % 2 == 0 ? kOwnSheet : data_.id(), i);
    for (int i = 0; i < 10; ++i) {
      const CellPos at{*rc::gen::inRange(1, kUsed), *rc::gen::inRange(1, kUsed)};
      if (data_.FormulaAt(at) != nullptr) continue;
      data_.SetValue(at, grid_.At(at));
      values_.insert(grid_.At(at));
    }
  }

  void Do(const Step& step) {
    const TokenGrid before = grid_;
    Apply(step, grid_);
    Apply(step, book_, data_.id());
    const auto places = grid_.Places();
    std::erase_if(values_, [&](Token token) { return !places.contains(token); });
    std::erase_if(formulas_, [&](const TrackedFormula& formula) { return !places.contains(formula.home); });
    for (const bool here : {true, false}) {
      for (TrackedFormula& formula : here ? formulas_ : elsewhere_) {
        for (std::size_t i = 0; i < formula.targets.size(); ++i) {
          if (!formula.targets[i]) continue;
          if (IsCutByMove(*formula.targets[i], step)) {
            formula.targets[i] = EngineTarget(here, formula, i, places);
          } else {
            formula.targets[i] = Followed(*formula.targets[i], before, step, places);
          }
        }
      }
    }
    for (TrackedName& name : names_) {
      if (!name.target) continue;
      const bool isCut = IsCutByMove(*name.target, step);
      name.target = isCut ? EngineTarget(name) : Followed(*name.target, before, step, places);
    }
  }

  void Check() const {
    const auto places = grid_.Places();
    std::size_t contents = 0;
    data_.cells().ForEachContent(Rect::WholeSheet(), [&](CellPos, const Value&, const FormulaCell*) { ++contents; });
    RC_ASSERT(contents == values_.size() + formulas_.size());
    for (const Token token : values_) RC_ASSERT(data_.ValueAt(places.at(token)) == Value(token));
    for (const bool here : {true, false}) {
      for (const TrackedFormula& formula : here ? formulas_ : elsewhere_) {
        for (std::size_t i = 0; i < formula.targets.size(); ++i) {
          RC_ASSERT(EngineTarget(here, formula, i, places) == formula.targets[i]);
        }
      }
    }
    for (const TrackedName& name : names_) RC_ASSERT(EngineTarget(name) == name.target);
  }

 private:
  // Half of them on another sheet, where they stay; their home is then the number of their row.
  void AddFormula() {
    const bool here = *rc::gen::arbitrary<bool>();
    const CellPos home = here ? CellPos{*rc::gen::inRange(1, kUsed), *rc::gen::inRange(1, kUsed)}
                              : CellPos{static_cast<int>(elsewhere_.size()) + 1, 3};
    Sheet& sheet = here ? data_ : other_;
    if (sheet.FormulaAt(home) != nullptr) return;
    TrackedFormula formula{here ? grid_.At(home) : home.row, {}};
    std::vector<Reference> references;
    for (int i = 0; i < 2; ++i) {
      const Rect area = AnyArea(kUsed);
      formula.targets.push_back(area);
      references.push_back(AnyReferenceTo(area, home, here && i == 0 ? kOwnSheet : data_.id()));
    }
    sheet.SetFormula(home, test::SumOf(references));
    (here ? formulas_ : elsewhere_).push_back(formula);
  }

  void AddName(SheetId scope, int number) {
    const Rect area = AnyArea(kUsed);
    Reference reference = AnyReferenceTo(area, {0, 0}, scope == kOwnSheet ? data_.id() : kOwnSheet);
    for (Coordinate* bound : {&reference.firstRow, &reference.lastRow, &reference.firstColumn, &reference.lastColumn}) {
      bound->relative = false;
    }
    names_.push_back({std::string("name_").append(std::to_string(number)), area});
    book_.SetName(scope, {names_.back().name, test::SumOf({reference}), false});
  }

  std::optional<Rect> EngineTarget(bool here, const TrackedFormula& formula, std::size_t index,
                                   const std::map<Token, CellPos>& places) const {
    const CellPos home = here ? places.at(formula.home) : CellPos{formula.home, 3};
    const FormulaCell* cell = (here ? data_ : other_).FormulaAt(home);
    RC_ASSERT(cell != nullptr);
    return cell->expression->references.at(index).At(home);
  }

  std::optional<Rect> EngineTarget(const TrackedName& name) const {
    return book_.ResolveName(data_.id(), name.name)->refersTo->references.at(0).At({1, 1});
  }

  Workbook book_;
  Sheet& data_ = book_.AddSheet("Data", 0);
  Sheet& other_ = book_.AddSheet("Other", 1);
  TokenGrid grid_;
  Tokens values_;
  std::vector<TrackedFormula> formulas_;
  std::vector<TrackedFormula> elsewhere_;
  std::vector<TrackedName> names_;
};

TEST(StructureProperty, ReferencesFollowTheirCells) {
  EXPECT_TRUE(rc::check([] {
    Subject subject;
    subject.Check();
    for (int i = *rc::gen::inRange(1, 6); i > 0; --i) {
      const Step step = AnyStep(false);
      RC_LOG() << "step " << static_cast<int>(step.kind) << " axis " << static_cast<int>(step.axis) << "\n";
      subject.Do(step);
      subject.Check();
    }
  }));
}

}  // namespace
}  // namespace tolvane::engine
