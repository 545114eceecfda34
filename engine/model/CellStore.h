#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "engine/model/CellColumn.h"
#include "engine/model/Expression.h"
#include "engine/model/Format.h"
#include "engine/model/Geometry.h"
#include "engine/model/Value.h"

namespace tolvane::engine {

// A formula in a cell. `dirty`: its stored result is older than something that it depends on.
struct FormulaCell {
  // Null in the cells of an array formula but its top left one.
  ExpressionPtr expression;
  // For an array formula ({=...}): the area that it fills, told by each of its cells; the formula stands in the top
  // left.
  std::optional<Rect> arrayArea;
  bool dirty = true;
  // For a formula that the grammar does not know: its text with the leading "=", or, beginning with "<", what the
  // workbook's file has in its place. `expression` is then a constant, its last result.
  Text rawText = {};
};

// The cells of one sheet, column by column in chunks of neighbouring rows, so that a table reads as a few runs of
// memory, an empty stretch costs nothing, and one far cell costs one chunk. Places are on the grid; that is for callers
// to see to.
class CellStore {
 public:
  CellStore() = default;
  CellStore(const CellStore&);  // a deep copy
  CellStore(CellStore&&) noexcept = default;
  CellStore& operator=(CellStore) noexcept;
  ~CellStore() = default;

  const Value& ValueAt(CellPos at) const;
  const FormulaCell* FormulaAt(CellPos at) const;
  FormulaCell* FormulaAt(CellPos at);   // holds until a formula is set or the store moves its cells
  FormatId FormatAt(CellPos at) const;  // the cell's own; 0 for none

  void SetValue(CellPos at, Value value);  // ends a formula
  void SetFormula(CellPos at, FormulaCell formula);
  void StoreResult(CellPos at, Value value);  // keeps the formula
  void SetFormat(CellPos at, FormatId format);
  // Values row by row. Equal texts of one block become one text.
  void ReadValues(const Rect& area, std::span<Value> out) const;
  void WriteValues(const Rect& area, std::span<const Value> values);
  void ClearContents(const Rect& area);
  void Clear(const Rect& area);  // formats too

  std::optional<Rect> UsedRange() const;
  std::optional<Rect> UsedContents() const;
  // Cells that hold a formula, each cell of an array formula counting.
  std::size_t formulaCount() const { return formulas_.size() - freeFormulas_.size(); }
  // Whether an area holds some but not all of the cells of an array formula.
  bool CutsArray(const Rect& area) const;
  bool hasArrays() const { return arrayCells_ > 0; }

  // Walks what is there, column by column and downward; only cells that hold a value or formula (or, for ForEachCell, a
  // format). The callbacks must not change the store, except for the results and flags of formulas. ForEachFormula
  // visits the cells where a formula stands: of an array formula the top left one.
  void ForEachContent(const Rect& area,
                      const std::function<void(CellPos, const Value&, const FormulaCell*)>& visit) const;
  void ForEachFormula(const Rect& area, const std::function<void(CellPos, FormulaCell&)>& visit);
  void ForEachFormula(const Rect& area, const std::function<void(CellPos, const FormulaCell&)>& visit) const;
  void ForEachCell(const Rect& area,
                   const std::function<void(CellPos, const Value&, const FormulaCell*, FormatId)>& visit) const;
  // Changes the areas that the cells of array formulas tell.
  void ChangeArrayAreas(const std::function<Rect(const Rect&)>& change);

  // Sets the own format of each cell of an area, existing or not, to what `change` makes of it.
  void ChangeFormats(const Rect& area, const std::function<FormatId(CellPos, FormatId)>& change);
  // The same for the cells that have a format of their own.
  void ChangeOwnFormats(const Rect& area, const std::function<FormatId(CellPos, FormatId)>& change);

  // Moves cells only; references are the workbook's business. Runs are in ascending order and do not overlap. Deletion:
  // runs in the numbering before it. Insertion: in the numbering after it, so that the same runs undo a deletion. What
  // is pushed off the grid is gone.
  void DeleteRuns(Axis axis, std::span<const Run> runs);
  void InsertRuns(Axis axis, std::span<const Run> runs);
  // The same for part of the grid: cells right of or below `area` close the gap or make room.
  void DeleteCells(const Rect& area, Axis shiftAlong);
  void InsertCells(const Rect& area, Axis shiftAlong);
  // Gives the cells of inserted runs, as far as they lie in rows or columns `across`, the own formats of the cells in
  // front of the runs.
  void CarryFormats(Axis axis, std::span<const Run> runs, Run across);
  // Moves a block here or to another sheet's store, over what is there. Array formulas go as a whole or not at all.
  void MoveBlock(const Rect& area, CellStore& to, CellPos target);

 private:
  CellColumn* ColumnAt(int column);
  const CellColumn* ColumnAt(int column) const;
  CellColumn& ObtainColumn(int column);
  // Columns that exist, of those asked for.
  int LastColumnOf(const Rect& area) const { return std::min(area.right, static_cast<int>(columns_.size())); }
  const FormulaCell& FormulaOf(FormulaNumber number) const { return formulas_[number - 1]; }

  FormulaNumber AddFormula(FormulaCell formula);
  void ReleaseFormula(FormulaNumber number);
  void ReleaseFormulas(CellChunk& chunk, std::uint64_t mask);
  void ReleaseColumn(int column);
  void ReplaceColumn(int column, CellColumn cells);  // what it held is gone
  void ClearCells(CellChunk& chunk, std::uint64_t mask, bool formatsToo);
  void ClearRows(CellColumn& column, int firstRow, int lastRow, bool formatsToo);
  void DeleteRows(int column, std::span<const Run> runs);
  void InsertRows(int column, std::span<const Run> runs);
  template <class Visit>
  void VisitChunks(const Rect& area, Visit&& visit) const;
  template <class Mask>
  std::optional<Rect> Bounds(Mask&& mask) const;

  std::vector<std::unique_ptr<CellColumn>> columns_;
  // Formulas stand apart, since most cells hold none; a cell holds the number of its formula, 0 for none.
  std::vector<FormulaCell> formulas_;
  std::vector<FormulaNumber> freeFormulas_;
  std::size_t arrayCells_ = 0;
};

}  // namespace tolvane::engine
