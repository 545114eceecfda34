#pragma once

#include <map>
#include <vector>

#include "src/host/Events.h"
#include "src/host/Subscription.h"
#include "testing/excel/Object.h"

namespace tolvane::testing::excel {

// Excel's application events: what the program tells, passed on to the sinks that are connected.
class EventSource final : public host::ApplicationEvents {
 public:
  explicit EventSource(World& world);

  DWORD Connect(ComPtr<IDispatch> sink);
  bool Disconnect(DWORD cookie) { return sinks_.erase(cookie) > 0; }

  void WorkbookOpen(const host::Workbook& book) override;
  void WorkbookBeforeSave(const host::Workbook& book, bool saveAsUI, bool& cancel) override;
  void WorkbookBeforeClose(const host::Workbook& book, bool& cancel) override;
  void WorkbookBeforePrint(const host::Workbook& book, bool& cancel) override;
  void WindowActivate(const host::Workbook& book, const host::Window& window) override;
  void AddinInstall(const host::Workbook& book) override;
  void AddinUninstall(const host::Workbook& book) override;
  void SheetActivate(const host::Worksheet& sheet) override;
  void SheetCalculate(const host::Worksheet& sheet) override;
  void SheetChange(const host::Worksheet& sheet, const host::Range& target) override;
  void SheetSelectionChange(const host::Worksheet& sheet, const host::Range& target) override;
  void SheetBeforeDoubleClick(const host::Worksheet& sheet, const host::Range& target, bool& cancel) override;
  void SheetBeforeRightClick(const host::Worksheet& sheet, const host::Range& target, bool& cancel) override;

 private:
  // `cancel`, if there is one, is the last argument, given by reference.
  void Tell(DISPID event, std::vector<Variant> arguments, bool* cancel = nullptr);

  World& world_;
  std::map<DWORD, ComPtr<IDispatch>> sinks_;
  DWORD nextCookie_ = 1;
  host::Subscription subscription_;
};

}  // namespace tolvane::testing::excel
