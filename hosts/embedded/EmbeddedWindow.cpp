#include "hosts/embedded/EmbeddedWindow.h"

#include <algorithm>
#include <string>

#include "hosts/embedded/EmbeddedWorksheet.h"
#include "hosts/embedded/Refusal.h"
#include "src/host/Range.h"

namespace tolvane::embedded {

using engine::Freeze;
using engine::SheetView;

namespace {

SheetView& ViewOf(const EmbeddedWorkbook& book) {
  return book.activeSheet()->sheet().view;
}

bool IsFrozen(const SheetView& view) {
  return view.freeze.rows > 0 || view.freeze.columns > 0;
}

const Freeze& SplitOf(const EmbeddedWorkbook& book) {
  const SheetView& view = ViewOf(book);
  return IsFrozen(view) ? view.freeze : book.activeSheet()->looseSplit;
}

// What is frozen cannot be scrolled to in the part below and right of it.
void KeepClearOfFrozen(SheetView& view) {
  view.scrollRow = std::max(view.scrollRow, view.freeze.rows + 1);
  view.scrollColumn = std::max(view.scrollColumn, view.freeze.columns + 1);
}

void RequireOnSheet(int index, int least, engine::Axis axis) {
  if (least <= index && index <= engine::LimitOf(axis)) return;
  Refuse(std::string(axis == engine::Axis::Rows ? "There is no row " : "There is no column ") + std::to_string(index) +
         ".");
}

void SetSplit(EmbeddedWorkbook& book, Freeze split) {
  SheetView& view = ViewOf(book);
  if (IsFrozen(view)) {
    view.freeze = split;
    KeepClearOfFrozen(view);
  } else {
    book.activeSheet()->looseSplit = split;
  }
}

}  // namespace

host::Range EmbeddedWindow::ActiveCell() const {
  return book_->activeSheet()->RangeOver(engine::Rect::Cell(ViewOf(*book_).activeCell));
}

host::Range EmbeddedWindow::VisibleRange() const {
  const SheetView& view = ViewOf(*book_);
  return book_->activeSheet()->RangeOver({view.scrollRow, view.scrollColumn,
                                          std::min(view.scrollRow + kRows - 1, engine::kMaxRow),
                                          std::min(view.scrollColumn + kColumns - 1, engine::kMaxColumn)});
}

int EmbeddedWindow::ScrollRow() const {
  return ViewOf(*book_).scrollRow;
}

void EmbeddedWindow::SetScrollRow(int row) {
  RequireOnSheet(row, 1, engine::Axis::Rows);
  SheetView& view = ViewOf(*book_);
  view.scrollRow = row;
  KeepClearOfFrozen(view);
}

int EmbeddedWindow::ScrollColumn() const {
  return ViewOf(*book_).scrollColumn;
}

void EmbeddedWindow::SetScrollColumn(int column) {
  RequireOnSheet(column, 1, engine::Axis::Columns);
  SheetView& view = ViewOf(*book_);
  view.scrollColumn = column;
  KeepClearOfFrozen(view);
}

int EmbeddedWindow::Zoom() const {
  return ViewOf(*book_).zoom;
}

void EmbeddedWindow::SetZoom(int percent) {
  if (percent < 10 || percent > 400)
    Refuse("A window can be zoomed to 10 to 400 percent, not to " + std::to_string(percent) + ".");
  ViewOf(*book_).zoom = percent;
}

int EmbeddedWindow::SplitRow() const {
  return SplitOf(*book_).rows;
}

void EmbeddedWindow::SetSplitRow(int rows) {
  RequireOnSheet(rows, 0, engine::Axis::Rows);
  SetSplit(*book_, {rows, SplitOf(*book_).columns});
}

int EmbeddedWindow::SplitColumn() const {
  return SplitOf(*book_).columns;
}

void EmbeddedWindow::SetSplitColumn(int columns) {
  RequireOnSheet(columns, 0, engine::Axis::Columns);
  SetSplit(*book_, {SplitOf(*book_).rows, columns});
}

bool EmbeddedWindow::FreezePanes() const {
  return IsFrozen(ViewOf(*book_));
}

void EmbeddedWindow::SetFreezePanes(bool on) {
  SheetView& view = ViewOf(*book_);
  if (on == IsFrozen(view)) return;
  Freeze& loose = book_->activeSheet()->looseSplit;
  if (!on) {
    loose = view.freeze;
    view.freeze = {};
    return;
  }
  if (loose.rows == 0 && loose.columns == 0) {
    // Without a split, what lies above and left of the active cell; with nothing there, half of the window.
    loose = {view.activeCell.row - view.scrollRow, view.activeCell.column - view.scrollColumn};
    const bool inSight = 0 <= loose.rows && loose.rows < kRows && 0 <= loose.columns && loose.columns < kColumns;
    if (!inSight || (loose.rows == 0 && loose.columns == 0)) loose = {kRows / 2, kColumns / 2};
  }
  view.freeze = loose;
  loose = {};
  KeepClearOfFrozen(view);
}

bool EmbeddedWindow::DisplayGridlines() const {
  return ViewOf(*book_).gridlines;
}

void EmbeddedWindow::SetDisplayGridlines(bool on) {
  ViewOf(*book_).gridlines = on;
}

}  // namespace tolvane::embedded
