#include "src/host/Window.h"

namespace tolvane::host {

Range Window::ActiveCell() const {
  return Read("Window.ActiveCell", &WindowBody::ActiveCell);
}
Range Window::VisibleRange() const {
  return Read("Window.VisibleRange", &WindowBody::VisibleRange);
}
int Window::ScrollRow() const {
  return Read("Window.ScrollRow", &WindowBody::ScrollRow);
}
void Window::SetScrollRow(int row) const {
  Write("Window.ScrollRow", &WindowBody::SetScrollRow, row);
}
int Window::ScrollColumn() const {
  return Read("Window.ScrollColumn", &WindowBody::ScrollColumn);
}
void Window::SetScrollColumn(int column) const {
  Write("Window.ScrollColumn", &WindowBody::SetScrollColumn, column);
}
int Window::Zoom() const {
  return Read("Window.Zoom", &WindowBody::Zoom);
}
void Window::SetZoom(int percent) const {
  Write("Window.Zoom", &WindowBody::SetZoom, percent);
}
int Window::SplitRow() const {
  return Read("Window.SplitRow", &WindowBody::SplitRow);
}
void Window::SetSplitRow(int rows) const {
  Write("Window.SplitRow", &WindowBody::SetSplitRow, rows);
}
int Window::SplitColumn() const {
  return Read("Window.SplitColumn", &WindowBody::SplitColumn);
}
void Window::SetSplitColumn(int columns) const {
  Write("Window.SplitColumn", &WindowBody::SetSplitColumn, columns);
}
bool Window::FreezePanes() const {
  return Read("Window.FreezePanes", &WindowBody::FreezePanes);
}
void Window::SetFreezePanes(bool on) const {
  Write("Window.FreezePanes", &WindowBody::SetFreezePanes, on);
}
bool Window::DisplayGridlines() const {
  return Read("Window.DisplayGridlines", &WindowBody::DisplayGridlines);
}
void Window::SetDisplayGridlines(bool on) const {
  Write("Window.DisplayGridlines", &WindowBody::SetDisplayGridlines, on);
}

}  // namespace tolvane::host
