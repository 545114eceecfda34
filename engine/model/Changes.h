#pragma once

#include "engine/model/Geometry.h"
#include "engine/model/Reference.h"

namespace tolvane::engine {

// Told by a workbook after each change. Whoever listens must not change the workbook from within.
class ChangeListener {
 public:
  virtual ~ChangeListener() = default;
  // Values or formulas of these cells.
  virtual void CellsChanged(SheetId sheet, const Rect& area) = 0;
  // Rows, columns, cells or sheets were inserted, deleted, moved or copied, or a sheet was renamed: places that were
  // remembered are void.
  virtual void StructureChanged() = 0;
  // A defined name was added, changed or removed.
  virtual void NamesChanged() = 0;
  // Rows were hidden or shown (what SUBTOTAL skips).
  virtual void RowsHiddenChanged(SheetId sheet) = 0;
};

}  // namespace tolvane::engine
