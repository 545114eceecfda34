#pragma once

#include <memory>

#include "hosts/excel/Com.h"
#include "hosts/excel/Session.h"

namespace tolvane::excel {

// The interface by which the program tells its application events, {00024413-0000-0000-C000-000000000046}, and the
// numbers of those that the port has.
inline constexpr GUID kApplicationEvents = {0x00024413, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
namespace event {
inline constexpr DISPID kWindowActivate = 1556, kSheetSelectionChange = 1558, kSheetBeforeDoubleClick = 1559,
                        kSheetBeforeRightClick = 1560, kSheetActivate = 1561, kSheetCalculate = 1563,
                        kSheetChange = 1564, kWorkbookOpen = 1567, kWorkbookBeforeClose = 1570,
                        kWorkbookBeforeSave = 1571, kWorkbookBeforePrint = 1572, kWorkbookAddinInstall = 1574,
                        kWorkbookAddinUninstall = 1575;
}  // namespace event

// Listens to the program for as long as this lives, and passes what it tells on to the session's listeners.
class EventConnection {
 public:
  explicit EventConnection(const std::shared_ptr<Session>& session);
  ~EventConnection();
  EventConnection(const EventConnection&) = delete;
  EventConnection& operator=(const EventConnection&) = delete;

 private:
  class Sink;
  ComPtr<IConnectionPoint> point_;
  ComPtr<Sink> sink_;
  DWORD cookie_ = 0;
};

}  // namespace tolvane::excel
