#include "engine/formula/Calculator.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "engine/formula/Arithmetic.h"
#include "engine/formula/DependencyIndex.h"
#include "engine/formula/Evaluator.h"
#include "engine/model/Workbook.h"
#include "platform/Text.h"

namespace tolvane::engine {

// Stale formulas carry FormulaCell::dirty, and what depends on a dirty formula is dirty too; `stale_` lists them. A
// change is carried on to its dependents at once, unless the index of dependencies is void: then it waits for the
// index.
class Calculator::Impl {
 public:
  Impl(Workbook& book, const CalculationWorld& world) : book_(book), world_(world), evaluator_(book, world) {
    evaluator_.SetKept(&kept_);
  }

  Workbook& book() { return book_; }

  // --- what changed
  // --------------------------------------------------------------------------------------------------------
  void CellsChanged(SheetId sheet, const Rect& area) {
    if (!isIndexed_) {
      NoteEntered(sheet, area);
      Postpone({Waiting::Kind::Cells, sheet, area});
      return;
    }
    Reindex(sheet, area);
    MarkDependents({{sheet, area}});
  }

  // Nothing tells which results a structural change leaves as they were: a sum over whole columns or ROW() changes
  // while its formula stays the same. So all formulas count as stale.
  void StructureChanged() {
    isIndexed_ = false;
    lastSheet_ = nullptr;
    kept_.clear();
    InvalidateAll();
  }

  void NamesChanged() {
    if (!isIndexed_) {
      Postpone({Waiting::Kind::Names, kOwnSheet, {}});
      return;
    }
    // What the names stand for, and so what the formulas depend on, may be another thing now.
    const std::vector<DependencyIndex::FormulaId> users = index_.nameUsers();
    for (const DependencyIndex::FormulaId id : users) {
      const DependencyIndex::Formula formula = index_.At(id);
      if (!formula.alive) continue;
      index_.Remove(id);
      index_.Add(formula.at, formula.cell, book_);
      MarkFormula(formula.at);
    }
    CarryOn();
  }

  void RowsHiddenChanged(SheetId sheet) {
    if (!isIndexed_) {
      Postpone({Waiting::Kind::Hidden, sheet, {}});
      return;
    }
    for (const DependencyIndex::FormulaId id : index_.subtotals()) {
      const DependencyIndex::Formula& formula = index_.At(id);
      if (!formula.alive) continue;
      const Precedents precedents = PrecedentsOf(*formula.cell.expression, formula.at, book_);
      const bool concerned = std::any_of(precedents.areas.begin(), precedents.areas.end(),
                                         [&](const Precedents::Area& area) { return area.sheet == sheet; });
      if (concerned || precedents.isVolatile) MarkFormula(formula.at);
    }
    CarryOn();
  }

  void InvalidateAll() {
    isAllStale_ = true;
    waiting_.clear();
    stale_.clear();
  }

  bool HasStale() {
    Prepare();
    while (!stale_.empty() && !IsDirty(stale_.back())) stale_.pop_back();
    return !stale_.empty();
  }

  bool IsNotComputed(SheetId sheet, CellPos cell) {
    const Sheet* place = book_.FindSheet(sheet);
    const FormulaCell* formula = place == nullptr ? nullptr : place->FormulaAt(cell);
    if (formula == nullptr) return false;
    if (formula->arrayArea) {
      cell = formula->arrayArea->topLeft();
      formula = place->FormulaAt(cell);
    }
    return (formula != nullptr && !formula->rawText.empty()) || kept_.contains({sheet, cell});
  }

  bool foundCircle() const { return foundCircle_; }

  // --- calculation
  // -----------------------------------------------------------------------------------------------------------
  std::vector<SheetId> Recalculate() {
    Prepare();
    MarkVolatiles(kOwnSheet);
    foundCircle_ = false;
    workedOut_.clear();
    Work(std::exchange(stale_, {}));
    std::vector<SheetId> sheets;
    for (std::size_t position = 0; position < book_.sheetCount(); ++position) {
      if (workedOut_.contains(book_.sheetAt(position).id())) sheets.push_back(book_.sheetAt(position).id());
    }
    return sheets;
  }

  void RecalculateSheet(SheetId sheet) {
    Prepare();
    MarkVolatiles(sheet);
    foundCircle_ = false;
    std::vector<CellAddress> here;
    std::copy_if(stale_.begin(), stale_.end(), std::back_inserter(here),
                 [&](const CellAddress& at) { return at.sheet == sheet; });
    Work(std::move(here));
    DropClean();
  }

  // Formulas outside of the area keep their results, stale or not; what uses a stale one stays stale itself.
  void RecalculateCells(SheetId sheet, const Rect& area) {
    Sheet* changed = book_.FindSheet(sheet);
    if (changed == nullptr) return;
    foundCircle_ = false;
    std::vector<CellAddress> formulas;
    const CellStore& cells = changed->cells();
    cells.ForEachFormula(area, [&](CellPos at, const FormulaCell&) { formulas.push_back({sheet, at}); });
    if (formulas.empty()) return;
    if (isIndexed_) Prepare();
    for (const CellAddress& at : formulas) FormulaAt(at)->dirty = true;
    evaluator_.LimitStaleTo(sheet, area);
    Work(formulas);
    evaluator_.EndStaleLimit();
    if (!isIndexed_) {
      // The next calculation makes the index and finds what depends on these; until then it is not worth its price.
      Postpone({Waiting::Kind::Cells, sheet, area});
      for (const CellAddress& at : std::exchange(unsure_, {})) FormulaAt(at)->dirty = true;
      return;
    }
    for (const CellAddress& at : formulas) origins_.push_back({at.sheet, AreaOf(at)});
    for (const CellAddress& at : std::exchange(unsure_, {})) MarkFormula(at);
    CarryOn();
    // Now and then, so that a formula's entry does not cost a walk over all stale ones.
    if (stale_.size() > mostStale_) {
      DropClean();
      mostStale_ = 2 * stale_.size() + 1024;
    }
  }

  Value Evaluate(const Expression& expression, const FormulaHome& home) {
    const Sheet* sheet = home.sheet == kOwnSheet ? &book_.sheetAt(0) : book_.FindSheet(home.sheet);
    if (sheet == nullptr || expression.nodes.empty()) return ErrorCode::Ref;
    evaluator_.BeginPass();
    evaluator_.ForgetStale();
    evaluator_.LimitStaleTo(kOwnSheet, Rect{});
    const Frame frame{expression, *sheet, home.cell};
    const Operand result = evaluator_.Evaluate(frame, expression.root, Mode::Array);
    Value value;
    if (result.isReference()) {
      const Area& first = result.areas()[0];
      value = evaluator_.ValueAt(*first.sheet, first.rect.topLeft());
    } else {
      value = evaluator_.Single(frame, result);
    }
    evaluator_.EndStaleLimit();
    return value;
  }

 private:
  struct Waiting {
    enum class Kind : std::uint8_t { Cells, Names, Hidden };
    Kind kind;
    SheetId sheet;
    Rect area;
  };
  struct Origin {
    SheetId sheet;
    Rect area;
  };

  // --- index and marks
  // ----------------------------------------------------------------------------------------------------------
  void Postpone(const Waiting& change) {
    constexpr std::size_t kMostWaiting = 65536;
    if (isAllStale_) return;
    waiting_.push_back(change);
    if (waiting_.size() > kMostWaiting) InvalidateAll();
  }

  void NoteEntered(SheetId sheetId, const Rect& area) {
    const Sheet* sheet = book_.FindSheet(sheetId);
    if (sheet == nullptr) return;
    const std::function<void(CellPos, const FormulaCell&)> note = [&](CellPos at, const FormulaCell& formula) {
      if (formula.dirty) entered_.insert({sheetId, at});
    };
    sheet->cells().ForEachFormula(area, note);
  }

  void Prepare() {
    if (isIndexed_ && index_.isWorn()) BuildIndex();
    if (!isIndexed_) {
      BuildIndex();
      stale_.clear();
      // What formulas that cannot be read need is not known, so whatever rests on one is looked at once more.
      MarkDependents(unreadCells_);
      for (const Waiting& change : std::exchange(waiting_, {})) {
        switch (change.kind) {
          case Waiting::Kind::Cells:
            MarkDependents({{change.sheet, change.area}});
            break;
          case Waiting::Kind::Names:
            NamesChanged();
            break;
          case Waiting::Kind::Hidden:
            RowsHiddenChanged(change.sheet);
            break;
        }
      }
      // In the order of the sheets, so that columns of formulas are mostly met in the order in which they are needed.
      stale_.clear();
      CollectStale(isAllStale_);
    } else if (isAllStale_) {
      stale_.clear();
      CollectStale(true);
    }
    isAllStale_ = false;
  }

  void BuildIndex() {
    index_.Clear();
    unreadCells_.clear();
    for (std::size_t position = 0; position < book_.sheetCount(); ++position) {
      Sheet& sheet = book_.sheetAt(position);
      sheet.cells().ForEachFormula(Rect::WholeSheet(), [&](CellPos at, FormulaCell& formula) {
        if (formula.expression != nullptr) index_.Add({sheet.id(), at}, formula, book_);
        if (!formula.rawText.empty()) unreadCells_.push_back({sheet.id(), formula.arrayArea.value_or(Rect::Cell(at))});
      });
    }
    isIndexed_ = true;
  }

  void CollectStale(bool all) {
    for (std::size_t position = 0; position < book_.sheetCount(); ++position) {
      Sheet& sheet = book_.sheetAt(position);
      sheet.cells().ForEachFormula(Rect::WholeSheet(), [&](CellPos at, FormulaCell& formula) {
        formula.dirty = formula.dirty || all;
        if (formula.dirty) stale_.push_back({sheet.id(), at});
      });
    }
  }

  // Brings the index in line with the formulas that stand in an area now.
  void Reindex(SheetId sheetId, const Rect& area) {
    Sheet* sheet = book_.FindSheet(sheetId);
    if (sheet == nullptr) return;
    for (const DependencyIndex::FormulaId id : index_.In(sheetId, area)) {
      const DependencyIndex::Formula& known = index_.At(id);
      const FormulaCell* now = sheet->FormulaAt(known.at.cell);
      const bool same =
          now != nullptr && now->expression == known.cell.expression && now->arrayArea == known.cell.arrayArea;
      if (!same) index_.Remove(id);
    }
    const auto add = [&](CellPos at, const FormulaCell& formula) {
      if (formula.expression == nullptr) return;
      const CellAddress address{sheetId, at};
      if (index_.Find(address) == nullptr) index_.Add(address, formula, book_);
      if (!formula.dirty) return;
      entered_.insert(address);
      stale_.push_back(address);
    };
    if (area.isCell()) {
      if (const FormulaCell* formula = sheet->FormulaAt(area.topLeft())) add(area.topLeft(), *formula);
    } else {
      const CellStore& cells = sheet->cells();
      cells.ForEachFormula(area, std::function<void(CellPos, const FormulaCell&)>(add));
    }
  }

  FormulaCell* FormulaAt(const CellAddress& at) {
    // Neighbours in a list of formulas stand on the same sheet.
    if (lastSheet_ == nullptr || lastSheet_->id() != at.sheet) lastSheet_ = book_.FindSheet(at.sheet);
    return lastSheet_ == nullptr ? nullptr : lastSheet_->cells().FormulaAt(at.cell);
  }

  bool IsDirty(const CellAddress& at) {
    const FormulaCell* formula = FormulaAt(at);
    return formula != nullptr && formula->expression != nullptr && formula->dirty;
  }

  Rect AreaOf(const CellAddress& at) {
    const FormulaCell* formula = FormulaAt(at);
    return formula != nullptr && formula->arrayArea ? *formula->arrayArea : Rect::Cell(at.cell);
  }

  void MarkFormula(const CellAddress& at) {
    FormulaCell* formula = FormulaAt(at);
    if (formula == nullptr) return;
    if (!formula->dirty) {
      formula->dirty = true;
      stale_.push_back(at);
    }
    origins_.push_back({at.sheet, formula->arrayArea ? *formula->arrayArea : Rect::Cell(at.cell)});
  }

  void MarkDependents(std::vector<Origin> origins) {
    origins_ = std::move(origins);
    CarryOn();
  }

  // Marks whatever depends on `origins_`, near or far.
  void CarryOn() {
    index_.BeginSearch();
    while (!origins_.empty()) {
      // First come, first served: so the list of stale formulas begins with those nearest to the change.
      const std::vector<Origin> wave = std::exchange(origins_, {});
      for (const Origin& origin : wave) {
        index_.ForEachDependent(origin.sheet, origin.area, [&](DependencyIndex::FormulaId id) {
          const CellAddress& at = index_.At(id).at;
          FormulaCell* formula = FormulaAt(at);
          if (formula == nullptr || formula->dirty) return;
          formula->dirty = true;
          stale_.push_back(at);
          origins_.push_back({at.sheet, formula->arrayArea ? *formula->arrayArea : Rect::Cell(at.cell)});
        });
      }
    }
  }

  // Volatile formulas are stale whenever there is a calculation, and so are those that look into other open workbooks,
  // whose changes nobody tells. kOwnSheet: on all sheets.
  void MarkVolatiles(SheetId sheet) {
    for (const DependencyIndex::FormulaId id : index_.volatiles()) {
      const DependencyIndex::Formula& formula = index_.At(id);
      if (formula.alive && (sheet == kOwnSheet || formula.at.sheet == sheet)) MarkFormula(formula.at);
    }
    for (const DependencyIndex::FormulaId id : index_.outsiders()) {
      const DependencyIndex::Formula& formula = index_.At(id);
      if (!formula.alive || (sheet != kOwnSheet && formula.at.sheet != sheet)) continue;
      const bool isOpen = std::any_of(formula.books.begin(), formula.books.end(), [&](const std::string& path) {
        const std::size_t slash = path.find_last_of("\\/");
        const std::string_view file = std::string_view(path).substr(slash == std::string::npos ? 0 : slash + 1);
        return world_.FindBook(file) != nullptr || platform::EqualIgnoringCase(file, world_.BookName());
      });
      if (isOpen) MarkFormula(formula.at);
    }
    CarryOn();
  }

  void DropClean() {
    std::erase_if(stale_, [&](const CellAddress& at) { return !IsDirty(at); });
  }

  // --- evaluation
  // --------------------------------------------------------------------------------------------------------------- A
  // formula that met stale ones and waits for them. Circles are found as strongly connected components: `low` is the
  // earliest visit that is reachable from here and still open.
  struct Visit {
    std::size_t number = 0;
    std::size_t low = 0;
    bool isSettled = false;  // known to belong to the circle of an earlier visit
  };

  void Work(const std::vector<CellAddress>& formulas) {
    visits_.clear();
    settled_.clear();
    nextVisit_ = 0;
    evaluator_.BeginPass();
    for (const CellAddress& at : formulas) {
      path_.push_back(at);
      while (!path_.empty()) Step();
    }
    evaluator_.BeginPass();
    std::erase_if(entered_, [&](const CellAddress& at) { return !IsDirty(at); });
  }

  // Evaluates the formula on top of the path, and either finishes it or puts what it needs on top of it.
  void Step() {
    const CellAddress at = path_.back();
    FormulaCell* formula = FormulaAt(at);
    if (formula == nullptr || formula->expression == nullptr || !formula->dirty) {
      path_.pop_back();
      return;
    }
    const auto known = visits_.empty() ? visits_.end() : visits_.find(at);
    if (known != visits_.end() && known->second.isSettled) {
      path_.pop_back();
      return;
    }
    evaluator_.ForgetStale();
    const Mode mode = formula->arrayArea ? Mode::Array : Mode::Single;
    const Operand result = evaluator_.EvaluateFormula(*formula->expression, *lastSheet_, at.cell, mode);
    if (!evaluator_.metStale()) {
      Finish(at, *formula, result);
      path_.pop_back();
      if (known != visits_.end()) Reopen(known);
      return;
    }
    Visit& visit = known != visits_.end() ? known->second : Begin(at);
    if (PushNeeded(visit)) return;
    path_.pop_back();
    Settle(at, visit);
  }

  Visit& Begin(const CellAddress& at) {
    const std::size_t number = nextVisit_++;
    return visits_[at] = {number, number, false};
  }

  // Whether there is anything to work out before this one.
  bool PushNeeded(Visit& visit) {
    constexpr std::size_t kLongPath = std::size_t{1} << 22;  // beyond, memory counts for more than time
    const std::vector<CellAddress>& needed = evaluator_.stale();
    const std::size_t before = path_.size();
    // Those met first come on top, since formulas mostly lean on what stands before them.
    for (auto at = needed.rbegin(); at != needed.rend(); ++at) {
      const auto known = visits_.find(*at);
      if (known == visits_.end()) {
        if (path_.size() > before && path_.size() > kLongPath) path_.pop_back();
        path_.push_back(*at);
      } else {
        visit.low = std::min(visit.low, known->second.isSettled ? known->second.low : known->second.number);
      }
    }
    return path_.size() > before;
  }

  // All that a formula needs has been looked at, and some of it leads back to it or to an earlier one.
  void Settle(const CellAddress& at, Visit& visit) {
    visit.isSettled = true;
    settled_.push_back(at);
    if (visit.low < visit.number) return;
    const std::size_t first = visit.number;
    while (!settled_.empty()) {
      const auto member = visits_.find(settled_.back());
      if (member->second.number < first) break;
      const CellAddress memberAt = settled_.back();
      settled_.pop_back();
      visits_.erase(member);
      FormulaCell* formula = FormulaAt(memberAt);
      if (formula == nullptr) continue;
      foundCircle_ = true;
      Finish(memberAt, *formula, Operand(0.0));
    }
  }

  // A formula came through after all: what it needed before, another branch now does without. Those that had settled on
  // it are looked at afresh.
  void Reopen(std::unordered_map<CellAddress, Visit, CellAddressHash>::iterator known) {
    const std::size_t number = known->second.number;
    visits_.erase(known);
    while (!settled_.empty()) {
      const auto member = visits_.find(settled_.back());
      if (member->second.number < number) break;
      path_.push_back(settled_.back());
      settled_.pop_back();
      visits_.erase(member);
    }
  }

  void Finish(const CellAddress& at, FormulaCell& formula, const Operand& result) {
    Sheet& sheet = *lastSheet_;
    workedOut_.insert(at.sheet);
    formula.dirty = false;
    if (evaluator_.usedStale()) unsure_.push_back(at);
    if (evaluator_.missedFunction() || evaluator_.restsOnKept()) {
      kept_.insert(at);
    } else {
      kept_.erase(at);
    }
    if (evaluator_.missedBook() || evaluator_.missedFunction()) {
      // The result was worked out while the other workbook was open, or by a program that knows the function: better
      // than an error.
      if (!entered_.contains(at) && !sheet.ValueAt(at.cell).isEmpty()) return;
    }
    if (!formula.arrayArea) {
      sheet.StoreResult(at.cell, result.isValue() ? result.value() : Value(0.0));
      return;
    }
    const Rect area = *formula.arrayArea;
    for (int column = area.left; column <= area.right; ++column) {
      for (int row = area.top; row <= area.bottom; ++row) {
        Value value = ElementOf(result, row - area.top, column - area.left);
        if (value.isEmpty()) value = Value(0.0);
        sheet.StoreResult({row, column}, std::move(value));
        if (FormulaCell* part = sheet.cells().FormulaAt({row, column})) part->dirty = false;
      }
    }
  }

  Workbook& book_;
  const CalculationWorld& world_;
  Evaluator evaluator_;
  DependencyIndex index_;
  bool isIndexed_ = false;
  bool isAllStale_ = false;
  std::vector<Waiting> waiting_;
  std::vector<CellAddress> stale_;  // every dirty formula, and some that are clean again
  std::size_t mostStale_ = 1024;    // a longer list is worth cleaning
  // Formulas entered by hand since the last calculation: their cells show no result of theirs yet.
  std::unordered_set<CellAddress, CellAddressHash> entered_;
  std::vector<CellAddress> unsure_;  // worked out from stale results
  std::vector<Origin> origins_;      // changed, and not yet carried on
  std::vector<Origin> unreadCells_;  // whose formulas the grammar does not know
  // Formulas that call what is not there, and those that use their results; some no longer stand there.
  std::unordered_set<CellAddress, CellAddressHash> kept_;
  bool foundCircle_ = false;
  std::unordered_set<SheetId> workedOut_;

  std::vector<CellAddress> path_;
  std::unordered_map<CellAddress, Visit, CellAddressHash> visits_;
  std::vector<CellAddress> settled_;
  std::size_t nextVisit_ = 0;
  Sheet* lastSheet_ = nullptr;
};

Calculator::Calculator(Workbook& book, const CalculationWorld& world) : impl_(std::make_unique<Impl>(book, world)) {
  book.AddListener(this);
}
Calculator::~Calculator() {
  impl_->book().RemoveListener(this);
}

std::vector<SheetId> Calculator::Recalculate() {
  return impl_->Recalculate();
}
void Calculator::RecalculateSheet(SheetId sheet) {
  impl_->RecalculateSheet(sheet);
}
void Calculator::RecalculateCells(SheetId sheet, const Rect& area) {
  impl_->RecalculateCells(sheet, area);
}
void Calculator::InvalidateAll() {
  impl_->InvalidateAll();
}
bool Calculator::HasStale() const {
  return impl_->HasStale();
}
bool Calculator::IsNotComputed(SheetId sheet, CellPos cell) const {
  return impl_->IsNotComputed(sheet, cell);
}
bool Calculator::FoundCircle() const {
  return impl_->foundCircle();
}
Value Calculator::Evaluate(const Expression& expression, const FormulaHome& home) {
  return impl_->Evaluate(expression, home);
}

void Calculator::CellsChanged(SheetId sheet, const Rect& area) {
  impl_->CellsChanged(sheet, area);
}
void Calculator::StructureChanged() {
  impl_->StructureChanged();
}
void Calculator::NamesChanged() {
  impl_->NamesChanged();
}
void Calculator::RowsHiddenChanged(SheetId sheet) {
  impl_->RowsHiddenChanged(sheet);
}

}  // namespace tolvane::engine
