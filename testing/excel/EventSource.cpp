#include "testing/excel/EventSource.h"

#include "hosts/excel/EventSink.h"
#include "testing/excel/World.h"

namespace tolvane::testing::excel {

namespace event = tolvane::excel::event;

EventSource::EventSource(World& world) : world_(world), subscription_(world.program().Advise(*this)) {}

DWORD EventSource::Connect(ComPtr<IDispatch> sink) {
  sinks_.emplace(nextCookie_, std::move(sink));
  return nextCookie_++;
}

void EventSource::Tell(DISPID event, std::vector<Variant> arguments, bool* cancel) {
  VARIANT_BOOL cancelled = VARIANT_FALSE;
  std::vector<VARIANT> reversed;
  if (cancel != nullptr) {
    VARIANT place;
    V_VT(&place) = VT_BYREF | VT_BOOL;
    V_BOOLREF(&place) = &cancelled;
    reversed.push_back(place);
  }
  for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument)
    reversed.push_back(argument->get());
  // A sink may connect and disconnect others: they are found again by their cookies.
  std::vector<DWORD> cookies;
  for (const auto& [cookie, sink] : sinks_) cookies.push_back(cookie);
  for (const DWORD cookie : cookies) {
    const auto found = sinks_.find(cookie);
    if (found == sinks_.end()) continue;
    const ComPtr<IDispatch> sink = found->second;
    DISPPARAMS parameters = {reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    sink->Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr);
  }
  if (cancel != nullptr && cancelled != VARIANT_FALSE) *cancel = true;
}

void EventSource::WorkbookOpen(const host::Workbook& book) {
  Tell(event::kWorkbookOpen, {world_.Of(book)});
}
void EventSource::WorkbookBeforeSave(const host::Workbook& book, bool saveAsUI, bool& cancel) {
  Tell(event::kWorkbookBeforeSave, {world_.Of(book), Variant(saveAsUI)}, &cancel);
}
void EventSource::WorkbookBeforeClose(const host::Workbook& book, bool& cancel) {
  Tell(event::kWorkbookBeforeClose, {world_.Of(book)}, &cancel);
}
void EventSource::WorkbookBeforePrint(const host::Workbook& book, bool& cancel) {
  Tell(event::kWorkbookBeforePrint, {world_.Of(book)}, &cancel);
}
void EventSource::WindowActivate(const host::Workbook& book, const host::Window& window) {
  Tell(event::kWindowActivate, {world_.Of(book), world_.Of(window)});
}
void EventSource::AddinInstall(const host::Workbook& book) {
  Tell(event::kWorkbookAddinInstall, {world_.Of(book)});
}
void EventSource::AddinUninstall(const host::Workbook& book) {
  Tell(event::kWorkbookAddinUninstall, {world_.Of(book)});
}
void EventSource::SheetActivate(const host::Worksheet& sheet) {
  Tell(event::kSheetActivate, {world_.Of(sheet)});
}
void EventSource::SheetCalculate(const host::Worksheet& sheet) {
  Tell(event::kSheetCalculate, {world_.Of(sheet)});
}
void EventSource::SheetChange(const host::Worksheet& sheet, const host::Range& target) {
  Tell(event::kSheetChange, {world_.Of(sheet), world_.Of(target)});
}
void EventSource::SheetSelectionChange(const host::Worksheet& sheet, const host::Range& target) {
  Tell(event::kSheetSelectionChange, {world_.Of(sheet), world_.Of(target)});
}
void EventSource::SheetBeforeDoubleClick(const host::Worksheet& sheet, const host::Range& target, bool& cancel) {
  Tell(event::kSheetBeforeDoubleClick, {world_.Of(sheet), world_.Of(target)}, &cancel);
}
void EventSource::SheetBeforeRightClick(const host::Worksheet& sheet, const host::Range& target, bool& cancel) {
  Tell(event::kSheetBeforeRightClick, {world_.Of(sheet), world_.Of(target)}, &cancel);
}

}  // namespace tolvane::testing::excel
