#include "hosts/libreoffice/CalcWindow.h"

#include <algorithm>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/sheet/XCellRangeReferrer.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/sheet/XViewFreezable.hpp>
#include <com/sun/star/sheet/XViewPane.hpp>
#include <com/sun/star/view/DocumentZoomType.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>

#include "hosts/libreoffice/CalcRange.h"
#include "hosts/libreoffice/CalcWorksheet.h"

namespace tolvane::libreoffice {

namespace {

constexpr sal_Int16 kPlainZoom = 100;

void RequireOnSheet(int index, int least, bool rows) {
  if (least <= index && index <= (rows ? kMaxRow : kMaxColumn)) return;
  Refuse(std::string(rows ? "There is no row " : "There is no column ") + std::to_string(index) + ".");
}

// The part below and right of what is frozen or split off.
Reference<css::sheet::XViewPane> LastPane(const CalcWorkbook& book) {
  const auto panes = As<css::container::XIndexAccess>(book.controller());
  return Reference<css::sheet::XViewPane>(panes->getByIndex(panes->getCount() - 1), UNO_QUERY_THROW);
}

struct Division {
  int rows = 0, columns = 0;
};

// What lies above and left of the last pane, by what the first pane shows.
Division SplitOf(const CalcWorkbook& book) {
  return AtEdge([&]() -> Division {
    const auto panes = As<css::container::XIndexAccess>(book.controller());
    const sal_Int32 count = panes->getCount();
    if (count < 2) return {};
    const Reference<css::sheet::XViewPane> first(panes->getByIndex(0), UNO_QUERY_THROW);
    const auto shown = first->getVisibleRange();
    const bool across = count == 4 || LastPane(book)->getFirstVisibleColumn() > shown.EndColumn;
    const bool down = count == 4 || LastPane(book)->getFirstVisibleRow() > shown.EndRow;
    return {down ? shown.EndRow - shown.StartRow + 1 : 0, across ? shown.EndColumn - shown.StartColumn + 1 : 0};
  });
}

}  // namespace

void ShowSelection(const CalcWorksheet& sheet, const Rects& areas, CellPos activeCell) {
  CalcWorkbook& book = sheet.book();
  if (book.activeSheet().get() != &sheet) return;
  AtEdge([&] {
    const auto controller = book.controller();
    if (!controller.is()) return;
    const auto selection = As<css::view::XSelectionSupplier>(controller);
    // Calc puts its cursor on the cell that was selected alone last.
    const Rect cell{activeCell.row, activeCell.column, activeCell.row, activeCell.column};
    selection->select(Any(sheet.Cells(cell)));
    if (areas.size() == 1) {
      if (areas.front().count() > 1) selection->select(Any(sheet.Cells(areas.front())));
    } else {
      selection->select(Any(Collect(sheet, areas)));
    }
  });
}

void LeaveView(CalcWorksheet* sheet) {
  if (sheet == nullptr || !sheet->IsAlive()) return;
  const auto controller = sheet->book().controller();
  if (controller.is()) sheet->zoom = Get<sal_Int16>(controller, "ZoomValue", kPlainZoom);
}

void EnterView(CalcWorksheet& sheet) {
  AtEdge([&] {
    const auto controller = sheet.book().controller();
    if (!controller.is()) return;
    if (Get<sal_Int16>(controller, "ZoomValue", kPlainZoom) != sheet.zoom) {
      Set(controller, "ZoomType", sal_Int16{css::view::DocumentZoomType::BY_VALUE});
      Set(controller, "ZoomValue", static_cast<sal_Int16>(sheet.zoom));
    }
    // Selecting scrolls; what was in sight stays there.
    const auto pane = LastPane(sheet.book());
    const sal_Int32 row = pane->getFirstVisibleRow();
    const sal_Int32 column = pane->getFirstVisibleColumn();
    ShowSelection(sheet, sheet.Selected(), sheet.ActiveCell());
    pane->setFirstVisibleRow(row);
    pane->setFirstVisibleColumn(column);
  });
}

host::Range CalcWindow::ActiveCell() const {
  const auto sheet = book_->activeSheet();
  const CellPos cell = sheet->ActiveCell();
  return sheet->RangeOver({{cell.row, cell.column, cell.row, cell.column}});
}

host::Range CalcWindow::VisibleRange() const {
  return AtEdge([&] {
    const Rect visible = ToRect(LastPane(*book_)->getVisibleRange());
    return book_->activeSheet()->RangeOver(
        {{visible.top, visible.left, std::max(visible.top, visible.bottom), std::max(visible.left, visible.right)}});
  });
}

int CalcWindow::ScrollRow() const {
  return AtEdge([&] { return LastPane(*book_)->getFirstVisibleRow() + 1; });
}

void CalcWindow::SetScrollRow(int row) {
  Scroll(true, row);
}

int CalcWindow::ScrollColumn() const {
  return AtEdge([&] { return LastPane(*book_)->getFirstVisibleColumn() + 1; });
}

void CalcWindow::SetScrollColumn(int column) {
  Scroll(false, column);
}

// What is frozen cannot be scrolled to in the part below and right of it.
void CalcWindow::Scroll(bool rows, int index) {
  RequireOnSheet(index, 1, rows);
  const int frozen = !FreezePanes() ? 0 : rows ? SplitRow() : SplitColumn();
  const sal_Int32 first = std::max(index, frozen + 1) - 1;
  AtEdge([&] {
    const auto pane = LastPane(*book_);
    if (rows) {
      pane->setFirstVisibleRow(first);
    } else {
      pane->setFirstVisibleColumn(first);
    }
  });
}

int CalcWindow::Zoom() const {
  return Get<sal_Int16>(book_->controller(), "ZoomValue", 100);
}

void CalcWindow::SetZoom(int percent) {
  if (percent < 10 || percent > 400) {
    Refuse("A window can be zoomed to 10 to 400 percent, not to " + std::to_string(percent) + ".");
  }
  const auto controller = book_->controller();
  Set(controller, "ZoomType", sal_Int16{css::view::DocumentZoomType::BY_VALUE});
  Set(controller, "ZoomValue", static_cast<sal_Int16>(percent));
}

int CalcWindow::SplitRow() const {
  return SplitOf(*book_).rows;
}

int CalcWindow::SplitColumn() const {
  return SplitOf(*book_).columns;
}

void CalcWindow::SetSplitRow(int rows) {
  RequireOnSheet(rows, 0, true);
  Split(rows, SplitColumn());
}

void CalcWindow::SetSplitColumn(int columns) {
  RequireOnSheet(columns, 0, false);
  Split(SplitRow(), columns);
}

// Calc splits a window that is not frozen by pixels only, so a split is a frozen one.
void CalcWindow::Split(int rows, int columns) {
  AtEdge([&] { As<css::sheet::XViewFreezable>(book_->controller())->freezeAtPosition(columns, rows); });
}

bool CalcWindow::FreezePanes() const {
  return AtEdge([&] { return bool(As<css::sheet::XViewFreezable>(book_->controller())->hasFrozenPanes()); });
}

void CalcWindow::SetFreezePanes(bool on) {
  if (on == FreezePanes()) return;
  if (!on) return Split(0, 0);
  const CellPos cell = book_->activeSheet()->ActiveCell();
  Split(cell.row - ScrollRow(), cell.column - ScrollColumn());
}

bool CalcWindow::DisplayGridlines() const {
  return Get<bool>(book_->controller(), "ShowGrid", true);
}

void CalcWindow::SetDisplayGridlines(bool on) {
  Set(book_->controller(), "ShowGrid", on);
}

}  // namespace tolvane::libreoffice
