#include "hosts/excel/ExcelWindow.h"

namespace tolvane::excel {

host::Range ExcelWindow::ActiveCell() const {
  return session().RangeOf(object().Get("ActiveCell"));
}
host::Range ExcelWindow::VisibleRange() const {
  return session().RangeOf(object().Get("VisibleRange"));
}
int ExcelWindow::ScrollRow() const {
  return object().Get("ScrollRow").AsInt();
}
void ExcelWindow::SetScrollRow(int row) {
  object().Put("ScrollRow", row);
}
int ExcelWindow::ScrollColumn() const {
  return object().Get("ScrollColumn").AsInt();
}
void ExcelWindow::SetScrollColumn(int column) {
  object().Put("ScrollColumn", column);
}
int ExcelWindow::Zoom() const {
  return object().Get("Zoom").AsInt();
}
void ExcelWindow::SetZoom(int percent) {
  object().Put("Zoom", percent);
}
int ExcelWindow::SplitRow() const {
  return object().Get("SplitRow").AsInt();
}
void ExcelWindow::SetSplitRow(int rows) {
  object().Put("SplitRow", rows);
}
int ExcelWindow::SplitColumn() const {
  return object().Get("SplitColumn").AsInt();
}
void ExcelWindow::SetSplitColumn(int columns) {
  object().Put("SplitColumn", columns);
}
bool ExcelWindow::FreezePanes() const {
  return object().Get("FreezePanes").AsBool();
}
void ExcelWindow::SetFreezePanes(bool on) {
  object().Put("FreezePanes", on);
}
bool ExcelWindow::DisplayGridlines() const {
  return object().Get("DisplayGridlines").AsBool();
}
void ExcelWindow::SetDisplayGridlines(bool on) {
  object().Put("DisplayGridlines", on);
}

}  // namespace tolvane::excel
