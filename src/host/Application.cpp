#include "src/host/Application.h"

#include <array>
#include <cstddef>

namespace tolvane::host {

int Workbooks::Count() const {
  return Read("Workbooks.Count",
              [](const ApplicationBody& body) { return static_cast<int>(body.WorkbooksAll().size()); });
}
Workbook Workbooks::Item(int index) const {
  return Read("Workbooks.Item", [index](const ApplicationBody& body) {
    const std::vector<Workbook> books = body.WorkbooksAll();
    if (index < 1 || static_cast<std::size_t>(index) > books.size()) {
      throw HostError(ErrorNumber::SubscriptOutOfRange, kSubscriptText);
    }
    return books[static_cast<std::size_t>(index) - 1];
  });
}
Workbook Workbooks::Item(std::string_view name) const {
  return Read("Workbooks.Item", &ApplicationBody::WorkbookNamed, name);
}
std::vector<Workbook> Workbooks::All() const {
  return Read("Workbooks.All", &ApplicationBody::WorkbooksAll);
}
Workbook Workbooks::Open(std::string_view path) const {
  return Write("Workbooks.Open", &ApplicationBody::WorkbooksOpen, path);
}
Workbook Workbooks::Add(const std::optional<std::string>& templatePath) const {
  return Write("Workbooks.Add", &ApplicationBody::WorkbooksAdd, templatePath);
}

bool Selection::IsRange() const {
  return Read("Selection.IsRange", &ApplicationBody::SelectionIsRange);
}
host::Range Selection::Range() const {
  return Read("Selection.Range", &ApplicationBody::SelectionRange);
}
void Selection::Copy() const {
  Write("Selection.Copy", &ApplicationBody::SelectionCopy);
}
void Selection::Cut() const {
  Write("Selection.Cut", &ApplicationBody::SelectionCut);
}

std::string Application::Version() const {
  return Read("Application.Version", &ApplicationBody::Version);
}
std::string Application::Caption() const {
  return Read("Application.Caption", &ApplicationBody::Caption);
}
std::string Application::StatusBar() const {
  return Read("Application.StatusBar", &ApplicationBody::StatusBar);
}
void Application::SetStatusBar(const std::optional<std::string>& text) const {
  Write("Application.StatusBar", &ApplicationBody::SetStatusBar, text);
}
bool Application::ScreenUpdating() const {
  return Read("Application.ScreenUpdating", &ApplicationBody::ScreenUpdating);
}
void Application::SetScreenUpdating(bool on) const {
  Write("Application.ScreenUpdating", &ApplicationBody::SetScreenUpdating, on);
}
bool Application::EnableEvents() const {
  return Read("Application.EnableEvents", &ApplicationBody::EnableEvents);
}
void Application::SetEnableEvents(bool on) const {
  Write("Application.EnableEvents", &ApplicationBody::SetEnableEvents, on);
}
bool Application::DisplayAlerts() const {
  return Read("Application.DisplayAlerts", &ApplicationBody::DisplayAlerts);
}
void Application::SetDisplayAlerts(bool on) const {
  Write("Application.DisplayAlerts", &ApplicationBody::SetDisplayAlerts, on);
}
host::Cursor Application::Cursor() const {
  return Read("Application.Cursor", &ApplicationBody::Cursor);
}
void Application::SetCursor(host::Cursor cursor) const {
  Write("Application.Cursor", &ApplicationBody::SetCursor, cursor);
}
CancelKey Application::EnableCancelKey() const {
  return Read("Application.EnableCancelKey", &ApplicationBody::EnableCancelKey);
}
void Application::SetEnableCancelKey(CancelKey mode) const {
  Write("Application.EnableCancelKey", &ApplicationBody::SetEnableCancelKey, mode);
}
host::Calculation Application::Calculation() const {
  return Read("Application.Calculation", &ApplicationBody::Calculation);
}
void Application::SetCalculation(host::Calculation mode) const {
  Write("Application.Calculation", &ApplicationBody::SetCalculation, mode);
}
host::ReferenceStyle Application::ReferenceStyle() const {
  return Read("Application.ReferenceStyle", &ApplicationBody::ReferenceStyle);
}
void Application::SetReferenceStyle(host::ReferenceStyle style) const {
  Write("Application.ReferenceStyle", &ApplicationBody::SetReferenceStyle, style);
}
host::CutCopyMode Application::CutCopyMode() const {
  return Read("Application.CutCopyMode", &ApplicationBody::CutCopyMode);
}
void Application::EndCutCopyMode() const {
  Write("Application.CutCopyMode", &ApplicationBody::EndCutCopyMode);
}
Workbook Application::ActiveWorkbook() const {
  return Read("Application.ActiveWorkbook", &ApplicationBody::ActiveWorkbook);
}
Worksheet Application::ActiveSheet() const {
  return Read("Application.ActiveSheet", &ApplicationBody::ActiveSheet);
}
Range Application::ActiveCell() const {
  return Read("Application.ActiveCell", &ApplicationBody::ActiveCell);
}
Window Application::ActiveWindow() const {
  return Read("Application.ActiveWindow", &ApplicationBody::ActiveWindow);
}
Workbook Application::ThisWorkbook() const {
  return Read("Application.ThisWorkbook", &ApplicationBody::ThisWorkbook);
}
Range Application::Intersect(const Range& a, const Range& b) const {
  return Read("Application.Intersect", &ApplicationBody::Intersect, std::array{a, b});
}
Range Application::Union(const Range& a, const Range& b) const {
  return Read("Application.Union", &ApplicationBody::Union, std::array{a, b});
}
Range Application::Union(std::span<const Range> ranges) const {
  return Read("Application.Union", &ApplicationBody::Union, ranges);
}
host::CommandBars Application::CommandBars() const {
  return Read("Application.CommandBars", &ApplicationBody::CommandBars);
}
void Application::OnKey(std::string_view key, const std::optional<std::string>& macro) const {
  Write("Application.OnKey", &ApplicationBody::OnKey, key, macro);
}
void Application::SendKeys(std::string_view keys) const {
  Write("Application.SendKeys", &ApplicationBody::SendKeys, keys);
}
CellValue Application::Run(std::string_view macro) const {
  return Write("Application.Run", &ApplicationBody::Run, macro);
}
void Application::OnUndo(std::string_view caption, std::string_view macro) const {
  Write("Application.OnUndo", &ApplicationBody::OnUndo, caption, macro);
}
void Application::OnRepeat(std::string_view caption, std::string_view macro) const {
  Write("Application.OnRepeat", &ApplicationBody::OnRepeat, caption, macro);
}
Subscription Application::Advise(ApplicationEvents& listener) const {
  return Write("Application.Advise", &ApplicationBody::Advise, listener);
}
host::User Application::User() const {
  return Read("Application.User", &ApplicationBody::User);
}

}  // namespace tolvane::host
