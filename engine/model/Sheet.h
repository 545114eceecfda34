#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "engine/model/BandTable.h"
#include "engine/model/CellStore.h"
#include "engine/model/Expression.h"
#include "engine/model/Format.h"
#include "engine/model/Geometry.h"
#include "engine/model/Name.h"
#include "engine/model/SheetParts.h"
#include "engine/model/Value.h"

namespace tolvane::engine {

class Workbook;

// One sheet: its cells and all that lies on them. What changes other sheets too (inserting, deleting, moving, renaming)
// is the workbook's business. Nothing here checks protection: that is the rule of whoever stands between user and
// cells.
class Sheet {
 public:
  Sheet(Workbook& book, SheetId id, std::string name);

  Workbook& book() { return *book_; }
  const Workbook& book() const { return *book_; }
  SheetId id() const { return id_; }
  const std::string& name() const { return name_; }

  std::string codeName;
  Visibility visibility = Visibility::Visible;
  std::optional<std::uint32_t> tabColour;  // 0xRRGGBB
  NameTable names;
  SheetProtection protection;
  SheetView view;
  std::optional<AutoFilter> autoFilter;
  std::vector<Rect> merges;
  std::vector<Validation> validations;
  std::vector<Hyperlink> hyperlinks;
  std::vector<Rect> printAreas;
  PageSetup page;
  std::vector<Attachment> attachments;
  BandTable rows{Axis::Rows};
  BandTable columns{Axis::Columns};
  double defaultRowHeight = 15;      // points
  double defaultColumnWidth = 8.43;  // characters

  // --- cells -------------------------------------------------------------------------------------------------------
  // The value, of a formula its last result.
  const Value& ValueAt(CellPos at) const { return cells_.ValueAt(at); }
  // The formula; null for a constant or an empty cell.
  const FormulaCell* FormulaAt(CellPos at) const { return cells_.FormulaAt(at); }
  // The format that counts: the cell's, else its row's, else its column's, else the default.
  FormatId FormatAt(CellPos at) const;

  // Writers. A constant ends a formula. Each tells the workbook's listeners. What would change a part of an array
  // formula throws std::invalid_argument and changes nothing, as does a place off the grid.
  void SetValue(CellPos at, Value value);
  void SetFormula(CellPos at, ExpressionPtr formula);
  // One formula for a whole area ({=...}), relative to its top left cell.
  void SetArrayFormula(const Rect& area, ExpressionPtr formula);
  // values: rows by columns of `area`, row by row.
  void SetValues(const Rect& area, std::span<const Value> values);
  void ReadValues(const Rect& area, std::span<Value> values) const;
  void ClearContents(const Rect& area);
  // Sets the format of cells, or of the rows or columns themselves where `area` is whole rows or columns; `change` maps
  // a format to its successor and is called once per distinct format. Where a formatted row and a formatted column
  // cross, the later one wins. Throws std::invalid_argument when that would take more cells than a sheet can well hold.
  void ChangeFormat(const Rect& area, const std::function<FormatId(FormatId)>& change);

  // The result of a calculation. Tells nobody.
  void StoreResult(CellPos at, Value value) { cells_.StoreResult(at, std::move(value)); }

  // The smallest rectangle that holds every cell with a value, a formula or a format; nothing for an empty sheet.
  std::optional<Rect> UsedRange() const { return cells_.UsedRange(); }
  // The same for values and formulas alone.
  std::optional<Rect> UsedContents() const { return cells_.UsedContents(); }

  CellStore& cells() { return cells_; }
  const CellStore& cells() const { return cells_; }

  // The merge that covers a cell, if one does.
  std::optional<Rect> MergeAt(CellPos at) const;
  const Validation* ValidationAt(CellPos at) const;
  bool IsRowHidden(int row) const;
  bool IsColumnHidden(int column) const;

  // Takes the validation off an area; the rules keep their other cells.
  void RemoveValidation(const Rect& area);
  void AddValidation(Validation rule);
  void RemoveHyperlinks(const Rect& area);

 private:
  friend class Workbook;
  void RequireWritable(const Rect& area) const;

  Workbook* book_;
  SheetId id_;
  std::string name_;
  CellStore cells_;
};

}  // namespace tolvane::engine
