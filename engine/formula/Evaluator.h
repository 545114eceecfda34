#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <random>
#include <span>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "engine/formula/Calculator.h"
#include "engine/formula/CellAddress.h"
#include "engine/formula/FunctionTable.h"
#include "engine/formula/Operand.h"
#include "engine/formula/RangeIndex.h"
#include "engine/model/CellStore.h"
#include "engine/model/Expression.h"
#include "engine/model/Workbook.h"

namespace tolvane::engine {

// How a part of a formula is evaluated: where it stands, and whether operators work on whole ranges.
struct Frame {
  const Expression& expression;
  const Sheet& sheet;  // whose workbook is the one that names and sheets are looked up in
  CellPos cell;
  int nameDepth = 0;  // names within names
};

enum class Mode : std::uint8_t {
  Single,  // a range where one value is wanted gives the cell in the formula's own row or column
  Array,   // it gives all its values
};

// What a function throws to give an error as its result.
struct FunctionError {
  ErrorCode code;
};

// Works out formulas from the values in the cells. It changes nothing: when it meets a stale formula it notes the cell
// and its result counts for nothing; whoever asked works out those cells and asks again.
class Evaluator {
 public:
  Evaluator(const Workbook& book, const CalculationWorld& world) : book_(book), world_(world) {}

  // A formula of a cell. Mode::Array is for array formulas and gives all their values.
  Operand EvaluateFormula(const Expression& expression, const Sheet& sheet, CellPos cell, Mode mode);

  // Stale cells that the evaluations since the last ForgetStale have met.
  const std::vector<CellAddress>& stale() const { return stale_; }
  bool metStale() const { return !stale_.empty(); }
  void ForgetStale() {
    stale_.clear();
    usedStale_ = false;
    restsOnKept_ = false;
  }
  // From now on stale formulas count only in this area of a sheet; elsewhere (with kOwnSheet: everywhere) their last
  // results are used as they are.
  void LimitStaleTo(SheetId sheet, const Rect& area) { staleScope_ = {sheet, area}; }
  void EndStaleLimit() { staleScope_.reset(); }
  // Whether a result was used that is stale but outside of the limit.
  bool usedStale() const { return usedStale_; }
  // Whether the last formula refers to a workbook that is not open.
  bool missedBook() const { return missedBook_; }
  // Whether the last formula called a function that is not there, or used a name that could not be read.
  bool missedFunction() const { return missedFunction_; }
  // Whether, since the last ForgetStale, a cell was read whose result was kept instead of worked out.
  bool restsOnKept() const { return restsOnKept_; }
  // The cells whose results are so; the calculator's list.
  void SetKept(const std::unordered_set<CellAddress, CellAddressHash>* kept) { kept_ = kept; }
  // Forgets what was remembered of cells that may have changed since.
  void BeginPass();

  // --- for functions
  // -----------------------------------------------------------------------------------------------------
  const Workbook& book() const { return book_; }
  const CalculationWorld& world() const { return world_; }
  Operand Evaluate(const Frame& frame, std::uint32_t node, Mode mode);

  Value ValueAt(const Sheet& sheet, CellPos at);
  // The cells of an area that hold something, column by column and downward; their formulas too, null for constants.
  template <class Visit>
  void ForEachCell(const Area& area, Visit&& visit) {
    const bool own = &area.sheet->book() == &book_;
    const auto each = [&](CellPos at, const Value& value, const FormulaCell* formula) {
      if (own && formula != nullptr) NoteIfStale(*area.sheet, at, *formula);
      visit(at, value, formula);
    };
    area.sheet->cells().ForEachContent(area.rect, std::cref(each));
  }
  template <class Visit>
  void ForEachContent(const Area& area, Visit&& visit) {
    ForEachCell(area, [&visit](CellPos at, const Value& value, const FormulaCell*) { visit(at, value); });
  }

  // One value: of a range the one in the formula's own row or column, of an array the first.
  Value Single(const Frame& frame, const Operand& operand);
  // All values; a range of too many cells gives null.
  ArrayPtr ToArray(const Operand& operand);
  // Where the values of an area stand; null when walking it is the better way, or when it holds stale cells.
  const RangeIndex* IndexOf(const Area& area, Equality equality);
  // The sum of the numbers in one column's area; nothing when there is an error among them or when walking it is the
  // better way. Areas that begin in the same cell and grow, as in a column of SUM(D$2:D2), take up
  // each where the one before ended, so that all of them together cost one walk.
  std::optional<double> GrowingSum(const Area& area);
  // The part of a sheet that holds anything.
  const std::optional<Rect>& UsedContentsOf(const Sheet& sheet);
  // From 0 to less than 1.
  double Random() { return std::uniform_real_distribution<double>()(random_); }
  // As an operator wants it: a value, or an array for a range in Mode::Array.
  Operand Resolve(const Frame& frame, Operand operand, Mode mode);

  static constexpr std::int64_t kMostArrayValues = std::int64_t{1} << 23;

 private:
  Operand EvaluateReference(const Frame& frame, const Reference& reference);
  Operand EvaluateExternal(const Frame& frame, const ExternalReference& reference);
  Operand EvaluateName(const Frame& frame, const Workbook& book, SheetId sheet, std::string_view name);
  Operand EvaluateBinary(const Frame& frame, const Node& top, Mode mode);
  Operand EvaluateUnary(const Frame& frame, const Node& node, Mode mode);
  Operand EvaluateCall(const Frame& frame, const Node& node, Mode mode);
  Operand CombineReferences(Operator op, const Operand& left, const Operand& right);
  Operand SpanOf(const Workbook& book, const Sheet& first, const Sheet& last, const Rect& rect) const;
  void NoteIfStale(const Sheet& sheet, CellPos at, const FormulaCell& formula);

  const Workbook& book_;
  const CalculationWorld& world_;
  struct StaleScope {
    SheetId sheet;
    Rect area;
  };
  std::vector<CellAddress> stale_;
  std::optional<StaleScope> staleScope_;
  bool usedStale_ = false;
  bool missedBook_ = false;
  bool missedFunction_ = false;
  bool restsOnKept_ = false;
  const std::unordered_set<CellAddress, CellAddressHash>* kept_ = nullptr;
  RangeIndexes indexes_;
  struct SumSoFar {
    int bottom = 0;
    double sum = 0;
    bool usedStale = false;
    bool restsOnKept = false;
  };
  std::unordered_map<CellAddress, SumSoFar, CellAddressHash> growingSums_;  // by the first cell
  std::unordered_map<const Sheet*, std::optional<Rect>> usedContents_;
  std::mt19937_64 random_{std::random_device()()};
  int depth_ = 0;
  std::int64_t steps_ = 0;
};

// A function at work: its arguments, and what it may ask. Arguments count from 0.
class FunctionCall {
 public:
  FunctionCall(Evaluator& asker, const Frame& home, const Node& callNode, Mode callMode, std::span<Operand> operands)
      : evaluator(asker), frame(home), mode(callMode), node_(callNode), operands_(operands) {}

  Evaluator& evaluator;
  const Frame& frame;
  Mode mode;

  std::size_t count() const { return operands_.size(); }
  // Given, and not left empty between commas.
  bool Has(std::size_t i) const;

  // V and E parameters; an omitted one is empty, or what stands in `otherwise`.
  const Value& ValueAt(std::size_t i) const;
  double Number(std::size_t i) const;
  double Number(std::size_t i, double otherwise) const { return i < count() ? Number(i) : otherwise; }
  // Cut off towards zero, as functions do that want whole numbers. What is beyond 1E+15 comes out as that, so that each
  // function finds it beyond its own limits.
  std::int64_t Whole(std::size_t i) const;
  std::int64_t Whole(std::size_t i, std::int64_t otherwise) const { return i < count() ? Whole(i) : otherwise; }
  bool Boolean(std::size_t i) const;
  bool Boolean(std::size_t i, bool otherwise) const { return i < count() ? Boolean(i) : otherwise; }
  std::string Text(std::size_t i) const;

  // R and A parameters.
  const Operand& Argument(std::size_t i) const { return operands_[i]; }
  // The single area that an argument must be; #VALUE! otherwise.
  const Area& AreaAt(std::size_t i) const;

  // L parameters.
  Operand Evaluate(std::size_t i) { return Evaluate(i, mode); }
  Operand Evaluate(std::size_t i, Mode inMode);
  bool isOmitted(std::size_t i) const;

 private:
  std::uint32_t ChildAt(std::size_t i) const { return frame.expression.children[node_.firstChild + i]; }

  const Node& node_;
  std::span<Operand> operands_;
};

}  // namespace tolvane::engine
