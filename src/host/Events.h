#pragma once

#include "src/host/Range.h"
#include "src/host/Window.h"
#include "src/host/Workbook.h"
#include "src/host/Worksheet.h"

namespace tolvane::host {

// What the spreadsheet program tells. A host delivers on the application's thread, once, in Excel's order, before the
// call that caused it returns; what is caused while EnableEvents is False is never delivered. While a form is up,
// events wait until it is gone. An exception that leaves a handler goes nowhere: the host swallows it.
class ApplicationEvents {
 public:
  virtual ~ApplicationEvents() = default;

  virtual void WorkbookOpen(const Workbook&) {}
  virtual void WorkbookBeforeSave(const Workbook&, [[maybe_unused]] bool saveAsUI, [[maybe_unused]] bool& cancel) {}
  virtual void WorkbookBeforeClose(const Workbook&, [[maybe_unused]] bool& cancel) {}
  virtual void WorkbookBeforePrint(const Workbook&, [[maybe_unused]] bool& cancel) {}
  virtual void WindowActivate(const Workbook&, const Window&) {}
  virtual void AddinInstall(const Workbook&) {}
  virtual void AddinUninstall(const Workbook&) {}

  virtual void SheetActivate(const Worksheet&) {}
  virtual void SheetCalculate(const Worksheet&) {}
  virtual void SheetChange(const Worksheet&, [[maybe_unused]] const Range& target) {}
  virtual void SheetSelectionChange(const Worksheet&, [[maybe_unused]] const Range& target) {}
  virtual void SheetBeforeDoubleClick(const Worksheet&, [[maybe_unused]] const Range& target,
                                      [[maybe_unused]] bool& cancel) {}
  virtual void SheetBeforeRightClick(const Worksheet&, [[maybe_unused]] const Range& target,
                                     [[maybe_unused]] bool& cancel) {}
};

}  // namespace tolvane::host
