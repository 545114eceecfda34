#pragma once

#include <string>

#include "src/host/Handle.h"
#include "src/host/Range.h"

namespace tolvane::host {

class WindowBody : public Body {
 public:
  virtual Range ActiveCell() const = 0;
  virtual Range VisibleRange() const = 0;
  virtual int ScrollRow() const = 0;
  virtual void SetScrollRow(int row) = 0;
  virtual int ScrollColumn() const = 0;
  virtual void SetScrollColumn(int column) = 0;
  virtual int Zoom() const = 0;
  virtual void SetZoom(int percent) = 0;
  virtual int SplitRow() const = 0;
  virtual void SetSplitRow(int rows) = 0;
  virtual int SplitColumn() const = 0;
  virtual void SetSplitColumn(int columns) = 0;
  virtual bool FreezePanes() const = 0;
  virtual void SetFreezePanes(bool on) = 0;
  virtual bool DisplayGridlines() const = 0;
  virtual void SetDisplayGridlines(bool on) = 0;
};

// A window of a workbook; what it tells and sets belongs to the sheet in front of it.
class Window : public Handle<WindowBody> {
 public:
  using Handle::Handle;
  Range ActiveCell() const;
  Range VisibleRange() const;  // what can be seen below and right of the frozen part
  int ScrollRow() const;       // the first row of that
  void SetScrollRow(int row) const;
  int ScrollColumn() const;
  void SetScrollColumn(int column) const;
  int Zoom() const;  // percent, 10 to 400
  void SetZoom(int percent) const;
  int SplitRow() const;  // rows above the split
  void SetSplitRow(int rows) const;
  int SplitColumn() const;
  void SetSplitColumn(int columns) const;
  bool FreezePanes() const;
  void SetFreezePanes(bool on) const;
  bool DisplayGridlines() const;
  void SetDisplayGridlines(bool on) const;
};

}  // namespace tolvane::host
