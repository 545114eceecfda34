#pragma once

#include <memory>
#include <utility>

#include "hosts/libreoffice/CalcWorkbook.h"
#include "src/host/Window.h"

namespace tolvane::libreoffice {

// The window of a workbook. Calc keeps the view of each sheet by itself.
class CalcWindow final : public host::WindowBody {
 public:
  explicit CalcWindow(std::shared_ptr<CalcWorkbook> book) : book_(std::move(book)) {}

  bool IsAlive() const noexcept override { return book_->IsAlive(); }
  host::Gate& gate() const noexcept override { return book_->gate(); }
  host::Range ActiveCell() const override;
  host::Range VisibleRange() const override;
  int ScrollRow() const override;
  void SetScrollRow(int row) override;
  int ScrollColumn() const override;
  void SetScrollColumn(int column) override;
  int Zoom() const override;
  void SetZoom(int percent) override;
  int SplitRow() const override;
  void SetSplitRow(int rows) override;
  int SplitColumn() const override;
  void SetSplitColumn(int columns) override;
  bool FreezePanes() const override;
  void SetFreezePanes(bool on) override;
  bool DisplayGridlines() const override;
  void SetDisplayGridlines(bool on) override;

 private:
  void Scroll(bool rows, int index);
  void Split(int rows, int columns);

  std::shared_ptr<CalcWorkbook> book_;
};

// Calc may show all sheets in one size, and selects nothing anew when a sheet comes to the front: each sheet keeps
// both.
void LeaveView(CalcWorksheet* sheet);  // null: nothing was in front
void EnterView(CalcWorksheet& sheet);

// Selects cells in the window of the sheet's book, if the sheet is in front there.
void ShowSelection(const CalcWorksheet& sheet, const Rects& areas, CellPos activeCell);

}  // namespace tolvane::libreoffice
