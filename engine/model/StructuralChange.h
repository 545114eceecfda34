#pragma once

#include <optional>
#include <vector>

#include "engine/model/AxisShift.h"
#include "engine/model/Geometry.h"
#include "engine/model/Reference.h"

namespace tolvane::engine {

// A cell, and an area, of a workbook.
struct Place {
  SheetId sheet = kOwnSheet;
  CellPos cell;
  bool operator==(const Place&) const = default;
};
struct SheetArea {
  SheetId sheet = kOwnSheet;
  Rect area;
  bool operator==(const SheetArea&) const = default;
};

// A change that gives cells other places. All that is told about the places before and after it is worked out here.
class StructuralChange {
 public:
  virtual ~StructuralChange() = default;

  // Where a cell comes to lie; nothing when it is deleted or overwritten.
  virtual std::optional<Place> Map(const Place& cell) const = 0;
  // What a reference to an area becomes: an area that the change does not take as a whole stays as it is. Nothing when
  // all its cells are gone.
  virtual std::optional<SheetArea> Map(const SheetArea& area) const = 0;
  // Where the cells of an area lie afterwards, each by itself, and cells inserted between them: what sticks to cells.
  virtual void MapCells(const SheetArea& area, std::vector<SheetArea>& parts) const = 0;
  // Where a cell was that lies here now; of an inserted one, where the cell was that it pushed on.
  virtual Place Unmap(const Place& cell) const = 0;
  // Whether the area's cells go different ways, so that it cannot stay one block.
  virtual bool Cuts(const SheetArea& area) const = 0;
  // Whether cells of this sheet get other places.
  virtual bool Touches(SheetId sheet) const = 0;
};

// A cell of something that lies on several areas, before a change and after it: the top left one of the first area or,
// where that one goes, the one that comes to be in its place among the `parts` left on the same sheet. Formulas that
// count from each cell of the areas change as they do for this one.
struct Anchor {
  Place before;
  Place after;
};
std::optional<Anchor> FindAnchor(SheetId sheet, const Rect& firstArea, const std::vector<Rect>& parts,
                                 const StructuralChange& change);

// Insertion or deletion, of whole rows or columns or of cells within some of them.
class RunShift final : public StructuralChange {
 public:
  // `across`: the columns, for a shift of rows, in which it happens, or the rows for one of columns.
  RunShift(SheetId sheet, Axis axis, AxisShift shift, Span across);
  static RunShift Runs(SheetId sheet, Axis axis, AxisShift::Kind kind, std::span<const Run> runs);
  static RunShift Cells(SheetId sheet, const Rect& area, Axis along, AxisShift::Kind kind);

  std::optional<Place> Map(const Place& cell) const override;
  std::optional<SheetArea> Map(const SheetArea& area) const override;
  void MapCells(const SheetArea& area, std::vector<SheetArea>& parts) const override;
  Place Unmap(const Place& cell) const override;
  bool Cuts(const SheetArea& area) const override;
  bool Touches(SheetId sheet) const override { return sheet == sheet_; }

 private:
  Span AlongOf(const Rect& area) const;
  Span AcrossOf(const Rect& area) const;
  bool IsWithin(const Rect& area) const;  // across
  Rect With(const Rect& area, Span along) const;

  SheetId sheet_;
  Axis axis_;
  AxisShift shift_;
  Span across_;
};

// Cut and paste of a block.
class BlockMove final : public StructuralChange {
 public:
  BlockMove(SheetId from, const Rect& area, SheetId to, CellPos target);

  std::optional<Place> Map(const Place& cell) const override;
  std::optional<SheetArea> Map(const SheetArea& area) const override;
  void MapCells(const SheetArea& area, std::vector<SheetArea>& parts) const override;
  Place Unmap(const Place& cell) const override;
  bool Cuts(const SheetArea& area) const override;
  bool Touches(SheetId sheet) const override { return sheet == source_.sheet || sheet == target_.sheet; }

  const SheetArea& source() const { return source_; }
  const SheetArea& target() const { return target_; }

 private:
  Rect Moved(const Rect& area) const;
  bool IsSource(const SheetArea& area) const;  // wholly
  std::optional<Rect> WithMovedEdge(const Rect& area) const;

  SheetArea source_;
  SheetArea target_;
  int down_;
  int right_;
};

}  // namespace tolvane::engine
