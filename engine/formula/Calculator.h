#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "engine/formula/Notation.h"
#include "engine/model/Changes.h"
#include "engine/model/Expression.h"
#include "engine/model/Value.h"

namespace tolvane::engine {

class Workbook;

// What a calculation asks of the world outside its workbook.
class CalculationWorld {
 public:
  virtual ~CalculationWorld() = default;
  // The present date and time as a serial number (1.0 is 1 January 1900).
  virtual double Now() const = 0;
  // The name of the workbook's file and its folder with a trailing separator (empty while unsaved), for CELL.
  virtual std::string BookName() const = 0;
  virtual std::string BookFolder() const = 0;
  // Another open workbook by its file name; null when it is not open.
  virtual const Workbook* FindBook(std::string_view fileName) const = 0;
};

// Keeps the results of a workbook's formulas. It listens to the workbook, marks what a change makes stale, and works it
// out when told to: in automatic mode whoever drives it calls Recalculate after each change, in manual mode when the
// user asks. Circular references give 0.
class Calculator : public ChangeListener {
 public:
  Calculator(Workbook& book, const CalculationWorld& world);
  ~Calculator() override;

  // Works out every stale formula. The sheets on which a formula was worked out, in tab order.
  std::vector<SheetId> Recalculate();
  // Works out the stale and volatile formulas of one sheet, and what they need.
  void RecalculateSheet(SheetId sheet);
  // Works out the formulas in these cells now, whatever the mode; what an entered formula needs to show its result.
  void RecalculateCells(SheetId sheet, const Rect& area);
  // Treats every formula as stale.
  void InvalidateAll();
  bool HasStale() const;
  // A cell of a circle found by the last calculation, if there was one.
  bool FoundCircle() const;

  // Whether what a cell shows was not worked out from what the workbook holds now: its formula calls a function that is
  // not there or cannot be read at all, or it uses the result of such a formula. A formula that came with a result
  // keeps it; one that was entered by hand gives #NAME?.
  bool IsNotComputed(SheetId sheet, CellPos cell) const;

  // The value of an expression as if it stood in `home`: what names and validations use. A range gives its top left
  // cell.
  Value Evaluate(const Expression& expression, const FormulaHome& home);

  void CellsChanged(SheetId sheet, const Rect& area) override;
  void StructureChanged() override;
  void NamesChanged() override;
  void RowsHiddenChanged(SheetId sheet) override;

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace tolvane::engine
