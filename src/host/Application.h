#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "src/host/CellValue.h"
#include "src/host/CommandBars.h"
#include "src/host/Constants.h"
#include "src/host/Events.h"
#include "src/host/Handle.h"
#include "src/host/Range.h"
#include "src/host/Subscription.h"
#include "src/host/User.h"
#include "src/host/Window.h"
#include "src/host/Workbook.h"
#include "src/host/Worksheet.h"

namespace tolvane::host {

class ApplicationBody : public Body {
 public:
  virtual std::string Version() const = 0;
  virtual std::string Caption() const = 0;
  virtual std::string StatusBar() const = 0;
  virtual void SetStatusBar(const std::optional<std::string>& text) = 0;
  virtual bool ScreenUpdating() const = 0;
  virtual void SetScreenUpdating(bool on) = 0;
  virtual bool EnableEvents() const = 0;
  virtual void SetEnableEvents(bool on) = 0;
  virtual bool DisplayAlerts() const = 0;
  virtual void SetDisplayAlerts(bool on) = 0;
  virtual host::Cursor Cursor() const = 0;
  virtual void SetCursor(host::Cursor cursor) = 0;
  virtual CancelKey EnableCancelKey() const = 0;
  virtual void SetEnableCancelKey(CancelKey mode) = 0;
  virtual host::Calculation Calculation() const = 0;
  virtual void SetCalculation(host::Calculation mode) = 0;
  virtual host::ReferenceStyle ReferenceStyle() const = 0;
  virtual void SetReferenceStyle(host::ReferenceStyle style) = 0;
  virtual host::CutCopyMode CutCopyMode() const = 0;
  virtual void EndCutCopyMode() = 0;

  virtual std::vector<Workbook> WorkbooksAll() const = 0;
  virtual Workbook WorkbookNamed(std::string_view name) const = 0;
  virtual Workbook WorkbooksOpen(std::string_view path) = 0;
  virtual Workbook WorkbooksAdd(const std::optional<std::string>& templatePath) = 0;
  virtual Workbook ActiveWorkbook() const = 0;
  virtual Worksheet ActiveSheet() const = 0;
  virtual Range ActiveCell() const = 0;
  virtual Window ActiveWindow() const = 0;
  virtual Workbook ThisWorkbook() const = 0;
  virtual bool SelectionIsRange() const = 0;
  virtual Range SelectionRange() const = 0;
  virtual void SelectionCopy() = 0;
  virtual void SelectionCut() = 0;

  virtual Range Intersect(std::span<const Range> ranges) const = 0;
  virtual Range Union(std::span<const Range> ranges) const = 0;
  virtual host::CommandBars CommandBars() const = 0;
  virtual void OnKey(std::string_view key, const std::optional<std::string>& macro) = 0;
  virtual void SendKeys(std::string_view keys) = 0;
  virtual CellValue Run(std::string_view macro) = 0;
  virtual void OnUndo(std::string_view caption, std::string_view macro) = 0;
  virtual void OnRepeat(std::string_view caption, std::string_view macro) = 0;
  virtual Subscription Advise(ApplicationEvents& listener) = 0;
  virtual host::User User() const = 0;
};

// The open workbooks, add-ins included when asked for by name, left out of the walk.
class Workbooks : private Handle<ApplicationBody> {
 public:
  explicit Workbooks(std::shared_ptr<ApplicationBody> body) : Handle(std::move(body)) {}
  int Count() const;
  Workbook Item(int index) const;              // from 1, in the order of opening; SubscriptOutOfRange
  Workbook Item(std::string_view name) const;  // ignoring case; SubscriptOutOfRange
  std::vector<Workbook> All() const;
  // Opens a file; a template opens as a new workbook, unsaved, named after it with a number. Raises WorkbookOpen, then
  // WindowActivate. A missing file, a file of another kind: ApplicationDefined.
  Workbook Open(std::string_view path) const;
  // A new workbook, empty or from a template; raises no WorkbookOpen.
  Workbook Add(const std::optional<std::string>& templatePath = std::nullopt) const;
};

// What is selected in the active window: cells, or a thing that is no range.
class Selection : private Handle<ApplicationBody> {
 public:
  explicit Selection(std::shared_ptr<ApplicationBody> body) : Handle(std::move(body)) {}
  bool IsRange() const;
  host::Range Range() const;  // Nothing when the selection is no range, or no workbook is in front
  void Copy() const;
  void Cut() const;
};

class Application : public Handle<ApplicationBody> {
 public:
  using Handle::Handle;

  // --- state --------------------------------------------------------------------------------------------------------
  std::string Version() const;  // "16.0"; the first two characters give the major version
  std::string Caption() const;
  std::string StatusBar() const;                                    // empty while the program has the bar
  void SetStatusBar(const std::optional<std::string>& text) const;  // none gives the bar back
  bool ScreenUpdating() const;
  void SetScreenUpdating(bool on) const;
  bool EnableEvents() const;
  void SetEnableEvents(bool on) const;
  bool DisplayAlerts() const;
  void SetDisplayAlerts(bool on) const;
  host::Cursor Cursor() const;
  void SetCursor(host::Cursor cursor) const;
  // With ErrorHandler the cancel key raises UserInterrupt from the member that runs next. Back to Interrupt when the
  // outermost call into the add-in returns.
  CancelKey EnableCancelKey() const;
  void SetEnableCancelKey(CancelKey mode) const;
  host::Calculation Calculation() const;
  void SetCalculation(host::Calculation mode) const;  // Automatic calculates what is stale
  host::ReferenceStyle ReferenceStyle() const;
  void SetReferenceStyle(host::ReferenceStyle style) const;
  host::CutCopyMode CutCopyMode() const;  // ended by any change of a cell
  void EndCutCopyMode() const;

  // --- what is open and in front ------------------------------------------------------------------------------------
  host::Workbooks Workbooks() const { return host::Workbooks(body()); }
  Workbook ActiveWorkbook() const;  // Nothing without one, as are the next three
  Worksheet ActiveSheet() const;
  Range ActiveCell() const;
  Window ActiveWindow() const;
  Workbook ThisWorkbook() const;  // the add-in's
  host::Selection Selection() const { return host::Selection(body()); }

  // --- doing --------------------------------------------------------------------------------------------------------
  // Nothing where they do not overlap, or lie on different sheets.
  Range Intersect(const Range& a, const Range& b) const;
  // ApplicationDefined for ranges of different sheets. Nothing counts as no cells.
  Range Union(const Range& a, const Range& b) const;
  Range Union(std::span<const Range> ranges) const;  // many in one call
  host::CommandBars CommandBars() const;
  // `key` in Excel's notation ("^c", "+{INSERT}", "~"); without a macro the key is the program's again.
  void OnKey(std::string_view key, const std::optional<std::string>& macro = std::nullopt) const;
  void SendKeys(std::string_view keys) const;
  // "'Book.xlsx'!Macro" or "Macro". A macro that is not there is ApplicationDefined. `IsConnected` of an Accounts Book
  // is answered by every host.
  CellValue Run(std::string_view macro) const;
  // Puts one entry on the program's undo list, with the macro that it runs; the next edit by the user or a program
  // takes it away.
  void OnUndo(std::string_view caption, std::string_view macro) const;
  void OnRepeat(std::string_view caption, std::string_view macro) const;  // empty texts clear it
  Subscription Advise(ApplicationEvents& listener) const;
  host::User User() const;
};

}  // namespace tolvane::host
